#pragma once

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QStringList>
#include <QTextEdit>
#include <QWidget>

namespace melovane::test {

/// Whether it is what a user works with, and not a part of something else. Views are left out,
/// since a tip of the whole would stand in the way of those of its rows and heads; so is the button
/// of an empty view, which has its sentence right above.
inline bool isControl(const QWidget& widget)
{
    const bool isPart = qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr ||
                        qobject_cast<const QAbstractSpinBox*>(widget.parentWidget()) != nullptr ||
                        qobject_cast<const QLineEdit*>(widget.parentWidget()) != nullptr ||
                        widget.inherits("QHeaderView") || widget.inherits("QScrollBar") ||
                        widget.inherits("QComboBoxListView") ||
                        widget.inherits("QTableCornerButton") ||
                        widget.objectName() == QLatin1String("EmptyButton") ||
                        widget.objectName().startsWith(QLatin1String("qt_"));
    return !isPart && (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                       qobject_cast<const QLineEdit*>(&widget) != nullptr ||
                       qobject_cast<const QTextEdit*>(&widget) != nullptr ||
                       qobject_cast<const QComboBox*>(&widget) != nullptr ||
                       qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
                       qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr);
}

/// Object names (or classes) of the controls of a window that do not say under the pointer what
/// they are for; hidden ones, too.
/// \param count gets how many controls there are
inline QStringList controlsWithoutToolTip(const QWidget& window, int& count)
{
    QStringList result;
    count = 0;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!isControl(*widget)) {
            continue;
        }
        ++count;
        if (widget->toolTip().isEmpty()) {
            result.append(widget->objectName().isEmpty()
                              ? QString::fromLatin1(widget->metaObject()->className())
                              : widget->objectName());
        }
    }
    return result;
}

} // namespace melovane::test
