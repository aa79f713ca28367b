#include "siblings/sleeveviewer/picture_reader.h"

#include "platform/system/path_text.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace melovane {

namespace {

/// Others are read by plug-ins that look up what the file tells them to, or unpack without end.
constexpr std::array kFormats{"jpeg", "png", "gif", "bmp"};

/// Of a picture that is unpacked as a whole: 120 MB.
constexpr qint64 kMaxPixels = 30'000'000;

bool isKnown(const QByteArray& format)
{
    return std::any_of(kFormats.begin(), kFormats.end(),
                       [&](const char* known) { return format == known; });
}

ReadPicture failed(PictureFault fault)
{
    return {.image = {}, .size = {}, .fault = fault};
}

ReadPicture decoded(QIODevice& device)
{
    if (device.size() > kMaxPictureBytes) {
        return failed(PictureFault::TooLarge);
    }
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!isKnown(reader.format())) {
        return failed(PictureFault::NoPicture);
    }
    const QSize stored = reader.size();
    if (stored.isEmpty()) {
        return failed(PictureFault::Damaged);
    }
    // Only a JPEG is made smaller while it is unpacked.
    const bool fits =
        reader.format() == "jpeg" || qint64(stored.width()) * stored.height() <= kMaxPixels;
    if (std::max(stored.width(), stored.height()) > kMaxPictureSide || !fits) {
        return failed(PictureFault::TooLarge);
    }
    if (std::max(stored.width(), stored.height()) > kKeptPictureSide) {
        reader.setScaledSize(stored.scaled(kKeptPictureSide, kKeptPictureSide, Qt::KeepAspectRatio)
                                 .expandedTo(QSize(1, 1)));
    }
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QImage image = reader.read();
    if (image.isNull()) {
        return failed(PictureFault::Damaged);
    }
    return {.image = image, .size = isTurned ? stored.transposed() : stored};
}

} // namespace

ReadPicture readPicture(const QString& name)
{
    QFile file(path::toSystem(name));
    // A pipe or a device would be waited for without end.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return failed(PictureFault::Missing);
    }
    return decoded(file);
}

ReadPicture readPictureBytes(QByteArray bytes)
{
    if (bytes.isEmpty()) {
        return failed(PictureFault::Missing);
    }
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return decoded(buffer);
}

} // namespace melovane
