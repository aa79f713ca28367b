#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace melovane::test {

/// What a window is to somebody who works with a screen reader and without a mouse.
struct AccessibleWalk
{
    int controls = 0;        ///< that are shown: what takes the keyboard, and every button
    QStringList unnamed;     ///< a screen reader has no name for these
    QStringList faceless;    ///< it cannot say what kind of control these are
    QStringList unreachable; ///< enabled, and neither Tab nor an arrow key nor a key of their own
                             ///< leads there

    /// A line for each fault; empty for a window without one.
    [[nodiscard]] QStringList faults() const;
};

/// Looks at every control of a shown window and goes round it by Tab. The control that had the
/// keyboard has it again behind that. Rows and cells are no controls.
[[nodiscard]] AccessibleWalk walkAccessibly(QWidget& window);

} // namespace melovane::test
