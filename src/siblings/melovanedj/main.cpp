// The player on air. A small process watches over the one that plays, and starts it again where it
// was when it crashes.

#include "config/program_call.h"
#include "platform/linux/linux_environment.h"
#include "siblings/melovanedj/night_state.h"
#include "siblings/melovanedj/night_watch.h"
#include "siblings/melovanedj/ui/run_player.h"

int main(int argc, char** argv)
{
    using namespace melovane;
    using namespace Qt::Literals::StringLiterals;
    const QString name = u"MelovaneDJ"_s;
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const QString order = call.join(u' ').trimmed();
    if (!order.isEmpty() && order != "next"_L1 && order != "now"_L1) {
        return refuseCall(name, order);
    }
    const NightStateFile state(nightStatePath(LinuxEnvironment().runtimeFolder()));
    const auto place = [&] {
        const NightState now = state.read().value_or(NightState());
        return NightPlace{int(numberOf(now.entry)), now.positionMs};
    };
    return watchOver(place, [&](const NightStart& start) {
        // What was asked for has begun, or made it crash.
        return runPlayer(argc, argv, start.isRestart ? QString() : order, start);
    });
}
