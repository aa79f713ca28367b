#include "platform/qt/row_cargo.h"

#include <QUrl>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Marks rows; its data are empty.
const QString kRows = u"application/x-melovane-rows"_s;
const QString kFiles = u"text/uri-list"_s;

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

} // namespace melovane
