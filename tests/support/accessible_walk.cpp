#include "support/accessible_walk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QSet>
#include <QTabBar>

#include <algorithm>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(const QWidget& control)
{
    const QString own = control.objectName();
    const QWidget* const parent = control.parentWidget();
    return QString::fromLatin1(control.metaObject()->className()) + u' ' +
           (own.isEmpty() && parent != nullptr ? u"in "_s + nameOf(*parent) : own);
}

/// A part that its control speaks for.
bool isPart(const QWidget& control)
{
    const QWidget* const parent = control.parentWidget();
    return qobject_cast<const QScrollBar*>(&control) != nullptr ||
           qobject_cast<const QHeaderView*>(&control) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(parent) != nullptr ||
           control.focusProxy() != nullptr ||
           // Words whose text can be marked with the mouse: they are read as words.
           (qobject_cast<const QLabel*>(&control) != nullptr &&
            (control.focusPolicy() & Qt::TabFocus) == 0) ||
           // The arrows of a row of tabs that has no room for all; the arrow keys go there.
           qobject_cast<const QTabBar*>(parent) != nullptr;
}

bool isControl(const QWidget& control)
{
    return !isPart(control) && (control.focusPolicy() != Qt::NoFocus ||
                                qobject_cast<const QAbstractButton*>(&control) != nullptr);
}

QList<QWidget*> controlsOf(const QWidget& window)
{
    QList<QWidget*> result;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window && isControl(*widget) &&
            !widget->size().isEmpty()) {
            result.append(widget);
        }
    }
    return result;
}

/// Tab around the window; the controls in their order.
QList<QWidget*> tabCycle(QWidget& window)
{
    QList<QWidget*> order;
    constexpr int kMax = 500;
    for (int i = 0; i < kMax; ++i) {
        QWidget* const present = window.focusWidget();
        if (present == nullptr) {
            break;
        }
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, u"\t"_s);
        QApplication::sendEvent(present, &tab);
        QWidget* const next = window.focusWidget();
        if (next == nullptr || order.contains(next)) {
            break;
        }
        order.append(next);
        if (next == present) {
            break;
        }
    }
    return order;
}

/// Of a group of buttons one has the keyboard; the arrow keys lead to the others.
bool standsBeside(const QAbstractButton& button, const QList<QWidget*>& reached)
{
    return std::any_of(reached.begin(), reached.end(), [&](const QWidget* widget) {
        const auto* const other = qobject_cast<const QAbstractButton*>(widget);
        return other != nullptr &&
               ((button.group() != nullptr && other->group() == button.group()) ||
                (button.autoExclusive() && other->autoExclusive() &&
                 other->parentWidget() == button.parentWidget()));
    });
}

bool hasKey(const QAbstractButton& button)
{
    return !button.shortcut().isEmpty();
}

/// The line itself is emptied by keys.
bool isClearButton(const QWidget& control)
{
    return qobject_cast<const QLineEdit*>(control.parentWidget()) != nullptr;
}

bool isReached(const QWidget& control, const QList<QWidget*>& reached)
{
    if (reached.contains(&control) || isClearButton(control)) {
        return true;
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&control);
    return button != nullptr && (hasKey(*button) || standsBeside(*button, reached));
}

} // namespace

QStringList AccessibleWalk::faults() const
{
    QStringList lines;
    for (const auto& [what, names] : {std::pair{u"no name: "_s, unnamed},
                                      {u"no role: "_s, faceless},
                                      {u"not reached: "_s, unreachable}}) {
        for (const QString& name : names) {
            lines.append(what + name);
        }
    }
    return lines;
}

AccessibleWalk walkAccessibly(QWidget& window)
{
    AccessibleWalk result;
    window.activateWindow();
    QApplication::processEvents();
    const QPointer<QWidget> before = window.focusWidget();
    if (before.isNull()) {
        for (QWidget* const control : controlsOf(window)) {
            if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0) {
                control->setFocus();
                break;
            }
        }
    }
    QList<QWidget*> reached = tabCycle(window);
    if (before) {
        before->setFocus();
        reached.append(before);
    }
    for (QWidget* const control : controlsOf(window)) {
        ++result.controls;
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(control);
        if (face == nullptr || face->text(QAccessible::Name).trimmed().isEmpty()) {
            result.unnamed.append(nameOf(*control));
        }
        if (face == nullptr || face->role() == QAccessible::NoRole ||
            face->role() == QAccessible::Client) {
            result.faceless.append(nameOf(*control));
        }
        if (control->isEnabled() && !isReached(*control, reached)) {
            result.unreachable.append(nameOf(*control));
        }
    }
    return result;
}

} // namespace melovane::test
