#include "trackedit/cover_files.h"

#include "platform/media/cover_reader.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString imageFolder(const QString& dataFolder)
{
    return path::join(dataFolder, u"Image");
}

/// Covers that wait to be taken over.
QString waitingFolder(const QString& dataFolder)
{
    return path::join(imageFolder(dataFolder), u"temp");
}

/// Moves a cover and gives its place. Quiet: one that cannot be moved stays where it is.
QString move(Files& files, const QString& from, const QString& to)
{
    try {
        files.copy(from, to);
        files.remove(from);
        return to;
    } catch (const IoError&) {
        return from;
    }
}

} // namespace

QString coverPlace(const QString& dataFolder, const QString& image)
{
    const bool leadsOut = std::any_of(image.begin(), image.end(), path::isSeparator);
    return image.isEmpty() || leadsOut ? QString()
                                       : path::join(imageFolder(dataFolder), image + u".jpg"_s);
}

QString coverFile(Files& files, const QString& dataFolder, const QString& image)
{
    const QString folder = imageFolder(dataFolder);
    if (!files.folderExists(folder) && !files.makeFolders(folder)) {
        return {};
    }
    const QString place = coverPlace(dataFolder, image);
    if (place.isEmpty()) {
        return {};
    }
    const QString there = files.resolve(place);
    if (!there.isEmpty()) {
        return there;
    }
    const QString waiting = files.resolve(path::join(waitingFolder(dataFolder), image + u".jpg"_s));
    return waiting.isEmpty() ? QString() : move(files, waiting, place);
}

QString coverPictureOf(const Files& files, const QString& dataFolder, const QString& image)
{
    const QString place = coverPlace(dataFolder, image);
    const QString there = place.isEmpty() ? QString() : files.resolve(place);
    return there.isEmpty() && !place.isEmpty()
               ? files.resolve(path::join(waitingFolder(dataFolder), path::fileName(place)))
               : there;
}

void setCoverAside(Files& files, const QString& dataFolder, const QString& image)
{
    const QString place = coverPlace(dataFolder, image);
    const QString there = place.isEmpty() ? QString() : files.resolve(place);
    if (!there.isEmpty() && files.makeFolders(waitingFolder(dataFolder))) {
        move(files, there, path::join(waitingFolder(dataFolder), path::fileName(there)));
    }
}

QString freeCoverName(const Files& files,
                      const QString& dataFolder,
                      const QString& fid,
                      const QDateTime& pictureDate,
                      const QByteArray& jpeg)
{
    constexpr int kMaxNames = 1000;
    for (int i = 0; i < kMaxNames; ++i) {
        const QString image = coverName(fid, pictureDate.addSecs(i));
        const QString there = coverPictureOf(files, dataFolder, image);
        if (there.isEmpty() || pictureBytes(files, there) == jpeg) {
            return image;
        }
    }
    return coverName(fid, pictureDate);
}

QByteArray pictureBytes(const Files& files, const QString& file)
{
    try {
        return files.read(file, kLargestPicture);
    } catch (const IoError&) {
        return {};
    }
}

QString coverName(const QString& fid, const QDateTime& pictureDate)
{
    // Both are read off a clock on the wall, as the date of a file is shown.
    const QDateTime epoch(QDate(1970, 1, 1), QTime(2, 0), Qt::UTC);
    const QDateTime date(pictureDate.date(), pictureDate.time(), Qt::UTC);
    return fid + u'_' + QString::number(epoch.secsTo(date));
}

} // namespace melovane
