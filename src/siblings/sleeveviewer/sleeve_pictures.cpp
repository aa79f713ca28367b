#include "siblings/sleeveviewer/sleeve_pictures.h"

#include "platform/media/cover_reader.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "siblings/sleeveviewer/sleeve_track.h"
#include "store/file_locator.h"
#include "trackedit/cover_files.h"
#include "trackedit/kept_covers.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array kExtensions{u"jpg", u"jpeg", u"png", u"gif", u"bmp"};

/// Names that other programs give to a cover, the likeliest first.
constexpr std::array kCoverNames{u"cover", u"folder", u"front", u"album"};

/// Names in one folder that are looked at before somebody waits too long.
constexpr qsizetype kMaxNames = 20'000;

template <typename Words> size_t placeIn(const Words& words, const QString& name)
{
    return size_t(std::find_if(words.begin(), words.end(),
                               [&](const char16_t* word) { return name == QStringView(word); }) -
                  words.begin());
}

size_t rankOf(const QString& name)
{
    return placeIn(kCoverNames, lowerCase(path::baseName(name)));
}

} // namespace

QString withoutJpg(const QString& image)
{
    return image.endsWith(u".jpg"_s, Qt::CaseInsensitive) ? image.chopped(4) : image;
}

bool isPictureName(const QString& name)
{
    const QString last = path::fileName(name);
    return placeIn(kExtensions, lowerCase(path::extension(last))) < kExtensions.size() &&
           !last.startsWith(u'.');
}

QStringList sleevePictures(Files& files,
                           const CoverReader& tags,
                           const QString& dataFolder,
                           const SleeveTrack& track)
{
    QStringList pictures;
    const QString cover = coverPictureOf(files, dataFolder, withoutJpg(track.image));
    if (!cover.isEmpty()) {
        pictures.append(cover);
    }
    if (track.audioFile.isEmpty()) {
        return pictures;
    }
    // Folders of tracks have their separator at the end.
    QString stored = path::withSeparator(path::parent(track.audioFile));
    const QString audio =
        FileLocator(files, dataFolder).ExistFile(stored, path::fileName(track.audioFile));
    const bool isOff =
        KeptCovers(files, dataFolder, tags).isTakenOff(track.FID, track.image, audio);
    if (pictures.isEmpty() && !isOff && !tags.cover(audio).isEmpty()) {
        pictures.append(audio);
    }
    const QString folder = path::parent(audio);
    QStringList names = files.names(folder);
    names.resize(std::min(kMaxNames, names.size()));
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString& name) { return !isPictureName(name); }),
                names.end());
    std::stable_sort(names.begin(), names.end(), [](const QString& one, const QString& other) {
        return rankOf(one) < rankOf(other);
    });
    for (const QString& name : names.first(std::min(kMaxPictures, names.size()))) {
        pictures.append(path::join(folder, name));
    }
    return pictures;
}

} // namespace melovane
