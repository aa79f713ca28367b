#pragma once

#include "platform/controls/grid_control.h"

#include <QMimeData>

#include <optional>

class QWidget;

namespace melovane {

class Theme;

/// What a drag of rows holds: the text for the suite, and files that are looked up when another
/// program asks for them.
class RowCargo : public QMimeData
{
    Q_OBJECT

public:
    explicit RowCargo(DragContent content);

    /// True for rows of a program of the suite: their text says all, and to ask for their files
    /// would search the disk.
    [[nodiscard]] static bool isIn(const QMimeData& data);

    [[nodiscard]] QStringList formats() const override;

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType type) const override;

private:
    DragContent m_content;
    mutable std::optional<QVariantList> m_urls;
};

/// Lets the user drag rows of a view as copies until he lets them go; their number hangs on the
/// pointer. `content` has a text.
void dragRows(QWidget& view, const Theme& theme, const DragContent& content, qint64 rows);

} // namespace melovane
