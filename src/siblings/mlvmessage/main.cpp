#include "config/paths.h"
#include "config/program_call.h"
#include "config/tool_box.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/system/clock.h"
#include "siblings/mlvmessage/message_tool.h"
#include "siblings/mlvmessage/suite_health.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QTimer>

namespace {

using namespace melovane;

int carryOut(const QCoreApplication& application, const MessageCommand& command)
{
    const SystemClock clock;
    LinuxFiles files;
    LinuxEnvironment environment;
    IniProfile profile(files);
    Mod_API paths(environment, files);
    ToolBox settings(paths, profile);
    settings.INI_SetFilename(QStringLiteral("melovane.ini"), true);
    MessagePlace place(environment.runtimeFolder());
    place.patience = command.wait;
    LinuxMessages messages(place);
    QTextStream out(stdout);
    MessageTool tool(
        messages, settings, clock, [&out](const QString& line) { out << line << Qt::endl; },
        suiteHealth);
    const auto end = [](MessageResult result) { QCoreApplication::exit(int(result)); };
    if (const auto result = tool.run(command, end)) {
        return int(*result);
    }
    if (command.duration.count() > 0) {
        QTimer::singleShot(command.duration, &application, [&] { end(tool.timeIsOver()); });
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString name = QStringLiteral("mlvmessage");
    const QStringList arguments = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, arguments)) {
        return *code;
    }
    const auto command = parseCommandLine(arguments);
    if (!command) {
        return refuseCall(name, arguments.join(u' '));
    }
    return carryOut(application, *command);
}
