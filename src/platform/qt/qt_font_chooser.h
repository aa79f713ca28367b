#pragma once

#include "platform/controls/font_chooser.h"

class QWidget;

namespace melovane {

/// The font dialog of the tool kit, over a window.
class QtFontChooser : public FontChooser
{
public:
    /// \param title of the dialog
    QtFontChooser(QWidget* window, QString title);

    [[nodiscard]] std::optional<GridFont> choose(const GridFont& present) override;

private:
    QWidget* m_window;
    QString m_title;
};

} // namespace melovane
