// The volume of the monitor player, in a small window of its own.

#include "config/program_call.h"
#include "siblings/levelpanel/ui/run_level.h"

int main(int argc, char** argv)
{
    using namespace melovane;
    const QString name = QStringLiteral("LevelPanel");
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    if (const auto foreign = firstForeign(call)) {
        return refuseCall(name, *foreign);
    }
    return runLevel(argc, argv);
}
