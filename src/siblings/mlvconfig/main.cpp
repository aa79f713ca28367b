// The settings of the suite. The first argument is the message control of the console that has
// started it, which is told what has changed; the second one, "Section.Key", the setting that is
// shown first.

#include "config/program_call.h"
#include "siblings/mlvconfig/ui/run_config.h"

int main(int argc, char** argv)
{
    using namespace melovane;
    const QString name = QStringLiteral("mlvconfig");
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    bool isNumber = true;
    const int console = call.isEmpty() ? 0 : call.first().toInt(&isNumber);
    if (call.size() > 2 || !isNumber || console < 0) {
        return refuseCall(name, call.join(u' '));
    }
    return runConfig(argc, argv, console, call.value(1));
}
