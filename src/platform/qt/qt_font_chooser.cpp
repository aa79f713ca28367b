#include "platform/qt/qt_font_chooser.h"

#include <QFontDialog>

namespace melovane {

QtFontChooser::QtFontChooser(QWidget* window, QString title)
    : m_window(window)
    , m_title(std::move(title))
{}

std::optional<GridFont> QtFontChooser::choose(const GridFont& present)
{
    QFont start(present.name);
    start.setPointSize(std::max(1, present.size));
    start.setBold(present.bold);
    bool chosen = false;
    // The desktop's own font dialogs know faces in place of boldness.
    const QFont font =
        QFontDialog::getFont(&chosen, start, m_window, m_title, QFontDialog::DontUseNativeDialog);
    if (!chosen) {
        return std::nullopt;
    }
    return GridFont{font.family(), font.pointSize(), font.bold(), present.rowSpacing};
}

} // namespace melovane
