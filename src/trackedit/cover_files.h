#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace melovane {

class Files;

/// The picture file of a track: its image name with ".jpg" in the folder "Image" of the data
/// folder, which is made when it is missing. A file that waits in the folder "temp" below is moved
/// there. Empty when there is no such file, and for a name that leads out of the folder.
[[nodiscard]] QString coverFile(Files& files, const QString& dataFolder, const QString& image);

/// The same without moving anything: where the picture file lies, also while it waits.
[[nodiscard]] QString
coverPictureOf(const Files& files, const QString& dataFolder, const QString& image);

/// Moves the picture file of that image name into the folder of covers that wait, if there is one;
/// quiet.
void setCoverAside(Files& files, const QString& dataFolder, const QString& image);

/// Where the picture file of that image name belongs, whether it is there or not. Empty for a name
/// that leads out of the folder.
[[nodiscard]] QString coverPlace(const QString& dataFolder, const QString& image);

/// The bytes of a picture file; empty when it cannot be read, or is larger than any picture.
[[nodiscard]] QByteArray pictureBytes(const Files& files, const QString& file);

/// The image name of a new cover: the track and the date of the picture file in seconds since
/// "01.01.1970 02:00:00", so that two pictures of a track get two names.
[[nodiscard]] QString coverName(const QString& fid, const QDateTime& pictureDate);

/// The same, but for a name that another picture has already: then that of the next second that is
/// free.
/// \param jpeg the picture that will bear it
[[nodiscard]] QString freeCoverName(const Files& files,
                                    const QString& dataFolder,
                                    const QString& fid,
                                    const QDateTime& pictureDate,
                                    const QByteArray& jpeg);

} // namespace melovane
