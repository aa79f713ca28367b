// The tag tool of the suite: changes tags and names of many tracks at once, or of new files before
// they are imported.

#include "config/program_call.h"
#include "siblings/tagbench/ui/run_bench.h"

int main(int argc, char** argv)
{
    using namespace melovane;
    using namespace Qt::Literals::StringLiterals;
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", u":/etc/localtime"_s).toUtf8());
    const QString name = u"tagbench"_s;
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const bool isImport = call == QStringList{u"import"_s};
    if (!isImport && !call.isEmpty() && call != QStringList{u"edit"_s}) {
        return refuseCall(name, call.join(u' '));
    }
    return runBench(argc, argv, isImport ? BenchMode::Import : BenchMode::Edit);
}
