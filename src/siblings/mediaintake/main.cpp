#include "siblings/mediaintake/command_line.h"
#include "siblings/mediaintake/intake_program.h"
#include "siblings/mediaintake/ui/run_window.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

#include <chrono>

namespace {

using namespace melovane;

int runQuietly(const IntakeCommand& command)
{
    IntakeProgram program(command.mode);
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

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", QStringLiteral(":/etc/localtime")).toUtf8());
    auto command = parseCommandLine(argumentsOf(argc, argv));
    if (!command) {
        const QCoreApplication application(argc, argv);
        const IntakeProgram program(IntakeMode::NewFiles);
        QTextStream(stderr) << commandLineHelp(program.texts()) << '\n';
        return 1;
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
