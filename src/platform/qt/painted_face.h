#pragma once

#include <QAccessible>

#include <functional>

class QWidget;

namespace melovane {

/// Says to a screen reader what a control is that paints itself; without it such a control is a
/// nameless part of its window. Name and description are those of the widget.
///
/// \param press what a click on the control does; empty for one that is only looked at
void setPaintedFace(QWidget& control, QAccessible::Role role, std::function<void()> press = {});

} // namespace melovane
