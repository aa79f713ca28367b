#include "platform/qt/qt_picture_maker.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <algorithm>

namespace melovane {

namespace {

/// Largest side of a picture that is read, in pixels.
constexpr int kLargestSide = 12'000;

/// Kinds of pictures that are taken, by what their bytes are. Others, such as drawings, may name
/// files that nobody meant to open.
bool isTaken(const QByteArray& format)
{
    return format == "jpeg" || format == "png" || format == "gif" || format == "bmp";
}

} // namespace

QByteArray QtPictureMaker::jpeg(const QByteArray& picture, int mostWidth, int quality) const
{
    QBuffer bytes;
    bytes.setData(picture);
    bytes.open(QIODevice::ReadOnly);
    QImageReader reader(&bytes);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!isTaken(reader.format())) {
        return {};
    }
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QSize size = isTurned ? reader.size().transposed() : reader.size();
    if (size.isEmpty() || std::max(size.width(), size.height()) > kLargestSide) {
        return {};
    }
    if (size.width() > mostWidth) {
        // Scaled while it is read: a large JPEG costs little then.
        const int height = std::max(1, int(qint64{size.height()} * mostWidth / size.width()));
        const QSize wanted(mostWidth, height);
        reader.setScaledSize(isTurned ? wanted.transposed() : wanted);
    }
    const QImage read = reader.read();
    if (read.isNull()) {
        return {};
    }
    QImage flat(read.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, read);
    QByteArray result;
    QBuffer out(&result);
    out.open(QIODevice::WriteOnly);
    return flat.save(&out, "JPEG", std::clamp(quality, 0, 100)) ? result : QByteArray();
}

} // namespace melovane
