#pragma once

class QWidget;

namespace melovane {

/// Shows the first window of a program as whoever has started it wants: minimised, normal, or not
/// at all. Later windows, and programs that this one starts, are not concerned.
void showAsStarted(QWidget& window);

} // namespace melovane
