#include "config/program_call.h"
#include "platform/linux/crash_file.h"
#include "platform/linux/system_names.h"
#include "shell/application.h"
#include "shell/ui/console_application.h"

#include <QDir>

#include <algorithm>

namespace {

/// Files by the bytes of their names, which need not be text.
QStringList argumentsByBytes(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(melovane::linuxnames::decode(argv[i]));
    }
    return melovane::takeSuiteOptions(arguments);
}

} // namespace

int main(int argc, char** argv)
{
    const QString name = QStringLiteral("MelovaneDB");
    const QStringList arguments = argumentsByBytes(argc, argv);
    if (const auto code = melovane::answerCall(name, arguments)) {
        return *code;
    }
    QStringList files = melovane::foreignArguments(arguments);
    const auto option = std::find_if(files.begin(), files.end(), [](const QString& file) {
        return file.isEmpty() || file.startsWith(u'-');
    });
    if (option != files.end()) {
        return melovane::refuseCall(name, *option);
    }
    for (QString& file : files) {
        file = QDir::cleanPath(QDir::current().absoluteFilePath(file));
    }
    melovane::ConsoleApplication application(argc, argv);
    // No display name: it would be appended to every title, and others find the main window by its
    // caption.
    QApplication::setApplicationName(name);
    // The entry of the desktop's menu: its picture stands for the windows, also under Wayland.
    QGuiApplication::setDesktopFileName(QStringLiteral("melovane"));
    melovane::Application console(application, {}, files);
    application.setGuard([&console](const auto& work) { console.guarded(work); });
    const melovane::CrashFile crash(console.crashFile(), melovane::versionLine(name));
    const int code = console.run();
    application.setGuard({});
    return code;
}
