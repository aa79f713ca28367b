#include "trackedit/cover_files.h"

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

/// Moves a waiting cover to its place. Quiet: one that cannot be moved is shown where it is.
QString takeOver(Files& files, const QString& waiting, const QString& place)
{
    try {
        files.copy(waiting, place);
        files.remove(waiting);
        return place;
    } catch (const IoError&) {
        return waiting;
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
    return waiting.isEmpty() ? QString() : takeOver(files, waiting, place);
}

QString coverName(const QString& fid, const QDateTime& pictureDate)
{
    // Both are read off a clock on the wall, as the date of a file is shown.
    const QDateTime epoch(QDate(1970, 1, 1), QTime(2, 0), Qt::UTC);
    const QDateTime date(pictureDate.date(), pictureDate.time(), Qt::UTC);
    return fid + u'_' + QString::number(epoch.secsTo(date));
}

} // namespace melovane
