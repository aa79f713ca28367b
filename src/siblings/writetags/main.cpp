// Writes changed tracks into the tags of their files and tells the console how many. Ends with 0
// when nothing failed.

#include "config/program_call.h"
#include "siblings/writetags/ui/run_window.h"
#include "siblings/writetags/write_report.h"
#include "siblings/writetags/write_tags_program.h"

#include <QCoreApplication>
#include <QTextStream>

#include <optional>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Files between two looks at whether the library is lent.
constexpr int kFilesPerStep = 64;

int runQuietly()
{
    WriteTagsProgram program;
    QTextStream errors(stderr);
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        errors << obstacle << Qt::endl;
        return 1;
    }
    if (!program.claim()) {
        errors << program.texts().text(u"writetags.running") << Qt::endl;
        return 1;
    }
    while (program.work().step(kFilesPerStep)) {
    }
    const WriteTagsReport& report = program.work().report();
    QTextStream out(stdout);
    for (const QString& line : reportLines(program.texts(), report, program.database())) {
        out << line << Qt::endl;
    }
    return report.isComplete() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", u":/etc/localtime"_s).toUtf8());
    const QString name = u"Task.WriteTags"_s;
    QStringList call = argumentsOf(argc, argv);
    call.removeAll(QString());
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const bool quiet = call.removeAll(u"--quiet"_s) > 0;
    bool isNumber = true;
    const MessageHandle console = call.isEmpty() ? 0 : call.first().toInt(&isNumber);
    if (call.size() > 1 || !isNumber) {
        return refuseCall(name, call.join(u' '));
    }
    if (quiet) {
        const QCoreApplication application(argc, argv);
        return runQuietly();
    }
    return runWindow(argc, argv, console);
}
