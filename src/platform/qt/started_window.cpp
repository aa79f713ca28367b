#include "platform/qt/started_window.h"

#include "platform/system/window_start.h"

#include <QWidget>

namespace melovane {

void showAsStarted(QWidget& window)
{
    const QByteArray style = qgetenv(windowstart::kVariable);
    qunsetenv(windowstart::kVariable);
    if (style == windowstart::kMinimised) {
        window.showMinimized();
    } else if (style != windowstart::kHidden) {
        window.show();
    }
}

} // namespace melovane
