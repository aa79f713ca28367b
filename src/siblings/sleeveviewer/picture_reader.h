#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace melovane {

/// Why a picture is not shown.
enum class PictureFault
{
    None,
    Missing,   ///< no such file, or one that cannot be read
    TooLarge,  ///< its bytes or its size are beyond what is read
    NoPicture, ///< another kind of file, whatever its name says
    Damaged
};

struct ReadPicture
{
    QImage image; ///< upright; null with a fault
    QSize size;   ///< of the picture in the file, upright
    PictureFault fault = PictureFault::None;
};

/// Limits of what is read: larger files and sizes are refused before a pixel is unpacked.
inline constexpr qint64 kMaxPictureBytes = 30LL * 1024 * 1024;
inline constexpr int kMaxPictureSide = 12'000;

/// Pixels of the longer side that are kept: enough for a large screen and some looking closer.
inline constexpr int kKeptPictureSide = 4096;

/// Reads a JPEG, PNG, GIF or BMP, known by its content, turned as it says. May take a second.
[[nodiscard]] ReadPicture readPicture(const QString& file);
/// The same of a picture that stands in a tag; without bytes it is missing.
[[nodiscard]] ReadPicture readPictureBytes(QByteArray bytes);

} // namespace melovane
