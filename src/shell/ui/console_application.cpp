#include "shell/ui/console_application.h"

namespace melovane {

bool ConsoleApplication::notify(QObject* receiver, QEvent* event)
{
    if (!m_guard) {
        return QApplication::notify(receiver, event);
    }
    bool taken = false;
    m_guard([&] { taken = QApplication::notify(receiver, event); });
    return taken;
}

} // namespace melovane
