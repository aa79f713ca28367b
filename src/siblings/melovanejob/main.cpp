// Looks after the library behind the console: starts the jobs that have something to do when the
// console is idle, or at the times of day of MelovaneJob.ini. Shows nothing. Ends when it is asked
// to, when the library is lent, and when no console is alive any more.

#include "config/program_call.h"
#include "siblings/melovanejob/jobs_program.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    using namespace melovane;
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time.
    qputenv("TZ", qEnvironmentVariable("TZ", QStringLiteral(":/etc/localtime")).toUtf8());
    const QString name = QStringLiteral("MelovaneJob");
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    if (!call.isEmpty()) {
        return refuseCall(name, call.join(u' '));
    }
    const QCoreApplication application(argc, argv);
    JobsProgram program;
    if (!program.start()) {
        return 0;
    }
    const int code = QCoreApplication::exec();
    program.withdraw();
    return code;
}
