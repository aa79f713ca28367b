#include "trackedit/former_cover.h"

#include "platform/media/cover_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "trackedit/cover_files.h"
#include "trackedit/kept_covers.h"

namespace melovane {

namespace {

/// Quality of a cover that is taken out of a tag.
constexpr int kTakenQuality = 90;

/// Width of a cover of a tag that is kept because another one takes its place.
constexpr int kKeptWidth = 1200;

} // namespace

bool takeCoverOut(const CoverSources& sources,
                  const QString& file,
                  const QString& image,
                  int mostWidth)
{
    const QString place = coverPlace(sources.dataFolder, image);
    const QByteArray jpeg =
        sources.pictures.jpeg(sources.reader.cover(file), mostWidth, kTakenQuality);
    if (place.isEmpty() || jpeg.isEmpty()) {
        return false;
    }
    try {
        sources.files.writeWhole(place, jpeg);
        return true;
    } catch (const IoError&) {
        return false;
    }
}

QString keepFormerCover(const CoverSources& sources,
                        KeptCovers& kept,
                        const QString& fid,
                        const QString& image,
                        const QString& file)
{
    const QString name = image.isEmpty() ? fid : image;
    sources.files.makeFolders(path::parent(coverPlace(sources.dataFolder, fid)));
    const bool isTaken = coverPictureOf(sources.files, sources.dataFolder, image).isEmpty() &&
                         !kept.isTakenOff(fid, image, file) &&
                         takeCoverOut(sources, file, name, kKeptWidth);
    kept.beforeChange(fid, isTaken ? name : image, file);
    return isTaken ? name : QString();
}

} // namespace melovane
