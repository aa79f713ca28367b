#include "platform/qt/row_cargo.h"

#include "platform/qt/theme.h"

#include <QDrag>
#include <QPainter>
#include <QUrl>
#include <QWidget>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Marks rows; its data are empty.
const QString kRows = u"application/x-melovane-rows"_s;
const QString kFiles = u"text/uri-list"_s;

/// What hangs on the pointer during a drag: how many rows it carries.
QPixmap dragPicture(const Theme& theme, const QFont& font, qint64 rows, double ratio)
{
    const QString text = QString::number(rows);
    const QFontMetrics metrics(font);
    const QSize size(metrics.horizontalAdvance(text) + 16, metrics.height() + 6);
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.qcolor(ThemeRole::Accent));
    const QRect field(QPoint(), size);
    painter.drawRoundedRect(field, 4, 4);
    painter.setPen(
        toQColor(readableOn(theme.colour(ThemeRole::TextField), theme.colour(ThemeRole::Accent))));
    painter.drawText(field, Qt::AlignCenter, text);
    return picture;
}

} // namespace

RowCargo::RowCargo(DragContent content)
    : m_content(std::move(content))
{
    setText(m_content.text);
    setData(kRows, {});
}

bool RowCargo::isIn(const QMimeData& data)
{
    return data.hasFormat(kRows);
}

QStringList RowCargo::formats() const
{
    QStringList all = QMimeData::formats();
    if (m_content.files) {
        all.append(kFiles);
    }
    return all;
}

QVariant RowCargo::retrieveData(const QString& format, QMetaType type) const
{
    if (format != kFiles || !m_content.files) {
        return QMimeData::retrieveData(format, type);
    }
    if (!m_urls) {
        m_urls.emplace();
        for (const QString& file : m_content.files()) {
            m_urls->append(QUrl::fromLocalFile(file));
        }
    }
    return *m_urls;
}

void dragRows(QWidget& view, const Theme& theme, const DragContent& content, qint64 rows)
{
    auto* drag = new QDrag(&view);
    drag->setMimeData(new RowCargo(content));
    drag->setPixmap(dragPicture(theme, view.font(), rows, view.devicePixelRatioF()));
    drag->setHotSpot(QPoint(-10, -6));
    drag->exec(Qt::CopyAction);
}

} // namespace melovane
