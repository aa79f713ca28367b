#include "config/program_call.h"
#include "siblings/mediaintake/command_line.h"
#include "siblings/mediaintake/intake_program.h"
#include "siblings/mediaintake/ui/run_window.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include <chrono>
#include <optional>

namespace {

using namespace melovane;

int runQuietly(const IntakeCommand& command)
{
    IntakeProgram program(command.mode);
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        QTextStream(stderr) << obstacle << '\n';
        return 1;
    }
    if (!program.claim()) {
        QTextStream(stderr) << program.texts().text(u"intake.running") << '\n';
        return 1;
    }
    IntakeSession& session = program.session();
    session.setFolders(command.folders);
    session.start();
    while (session.step(std::chrono::seconds(1))) {
    }
    QTextStream out(stdout);
    for (const QString& line : reportLines(program.texts(), session.report())) {
        out << line << '\n';
    }
    return session.report().failure.isEmpty() ? 0 : 1;
}

/// The first named folder that is none; nothing when all are there.
std::optional<QString> firstMissing(const QStringList& folders)
{
    for (const QString& folder : folders) {
        if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
            return folder;
        }
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", QStringLiteral(":/etc/localtime")).toUtf8());
    const QString name = QStringLiteral("mediaintake");
    const QStringList arguments = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, arguments)) {
        return *code;
    }
    auto command = parseCommandLine(arguments);
    if (!command) {
        return refuseCall(name, arguments.join(u' '));
    }
    if (const auto missing = firstMissing(command->folders)) {
        return refuseCall(name, QStringLiteral("--folder ") + *missing);
    }
    // The program leaves the folder that these names may count from.
    for (QString& folder : command->folders) {
        folder = QDir::current().absoluteFilePath(folder);
    }
    if (command->quiet) {
        const QCoreApplication application(argc, argv);
        return runQuietly(*command);
    }
    return runWindow(argc, argv, *command);
}
