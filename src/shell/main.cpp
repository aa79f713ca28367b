#include "config/program_call.h"
#include "shell/application.h"
#include "shell/ui/console_application.h"

int main(int argc, char** argv)
{
    const QString name = QStringLiteral("MelovaneDB");
    const QStringList arguments = melovane::argumentsOf(argc, argv);
    if (const auto code = melovane::answerCall(name, arguments)) {
        return *code;
    }
    if (const auto foreign = melovane::firstForeign(arguments)) {
        return melovane::refuseCall(name, *foreign);
    }
    melovane::ConsoleApplication application(argc, argv);
    // No display name: it would be appended to every title, and others find the main window by its
    // caption.
    QApplication::setApplicationName(name);
    melovane::Application console(application);
    application.setGuard([&console](const auto& work) { console.guarded(work); });
    const int code = console.run();
    application.setGuard({});
    return code;
}
