#include "platform/qt/outline_pictures.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// As many as a tree shows at once, and those shown before.
constexpr std::size_t kMostKept = 4;

/// Largest side of a picture that is read.
constexpr int kLargestSide = 16000;

QImage read(const QString& file, int widest)
{
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QSize size = isTurned ? reader.size().transposed() : reader.size();
    if (size.isEmpty() || size.width() > kLargestSide || size.height() > kLargestSide) {
        return {};
    }
    if (size.width() > widest) {
        const int height = std::max(1, int(qint64(size.height()) * widest / size.width()));
        const QSize wanted(widest, height);
        reader.setScaledSize(isTurned ? wanted.transposed() : wanted);
    }
    return reader.read();
}

} // namespace

QPixmap OutlinePictures::picture(const QString& file, int room, double scale)
{
    const int widest = std::max(1, int(room * scale));
    const qint64 date = QFileInfo(file).lastModified().toMSecsSinceEpoch();
    const QString key = u"%1|%2|%3|%4"_s.arg(date).arg(widest).arg(scale).arg(file);
    const auto found = std::find_if(m_kept.begin(), m_kept.end(),
                                    [&](const Kept& kept) { return kept.key == key; });
    if (found != m_kept.end()) {
        std::rotate(found, found + 1, m_kept.end());
        return m_kept.back().picture;
    }
    QPixmap picture = QPixmap::fromImage(read(file, widest));
    picture.setDevicePixelRatio(scale);
    if (m_kept.size() == kMostKept) {
        m_kept.erase(m_kept.begin());
    }
    m_kept.push_back({key, picture});
    return picture;
}

} // namespace melovane
