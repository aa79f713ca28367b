#include "shell/application.h"
#include "shell/ui/console_application.h"

int main(int argc, char** argv)
{
    melovane::ConsoleApplication application(argc, argv);
    // No display name: it would be appended to every title, and others find the main window by its
    // caption.
    QApplication::setApplicationName(QStringLiteral("MelovaneDB"));
    melovane::Application console(application);
    application.setGuard([&console](const auto& work) { console.guarded(work); });
    const int code = console.run();
    application.setGuard({});
    return code;
}
