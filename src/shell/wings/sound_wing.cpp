#include "shell/wings/sound_wing.h"

#include "bus/message_names.h"
#include "platform/qt/monitor_bars.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/rehearsal_sound.h"
#include "shell/wings/suite_wing.h"

namespace melovane {

SoundWing::SoundWing(Machine& machineOf, Desk& desk, SuiteWing& suiteOf)
    : machine(machineOf)
    , suite(suiteOf)
    , player(output, machine.loop)
    , monitor({.player = player,
               .status = desk.window.status(),
               .panel = desk.window.monitor(),
               .warnings = desk.warnings,
               .settings = machine.settings,
               .texts = machine.texts,
               .files = machine.files,
               .locator = machine.locator,
               .loop = machine.loop,
               .GetAllDataByFid =
                   [this](const QString& fid) { return machine.data.GetAllDataByFid(fid); },
               .StopOtherMonitors = [this] { return suite.suite.StopOtherMonitors(); },
               .showStatusText = [this](const QString& text) { suite.showStatusText(text); },
               .volumeChanged =
                   [this](int volume) {
                       suite.sender.SendMessage(bus::kVolumeMonitorChangeIcon, volume);
                   },
               .silenceRehearsal =
                   [this] {
                       if (rehearsal) {
                           rehearsal->stop();
                       }
                   }})
{
    MonitorBars& bars = desk.window.monitor();
    QObject::connect(&bars, &MonitorBars::placePicked, &bars,
                     [this](double ms) { monitor.seekTo(ms); });
    QObject::connect(&bars, &MonitorBars::placeOffered, &bars,
                     [this](double ms) { monitor.offerPlace(ms); });
    QObject::connect(&bars, &MonitorBars::moveWanted, &bars,
                     [this](double ms) { monitor.seekBy(ms); });
    QObject::connect(&bars, &MonitorBars::volumePicked, &bars,
                     [this](int volume) { monitor.chooseVolume(volume); });
    QObject::connect(&bars, &MonitorBars::volumeStepped, &bars,
                     [this](int steps) { monitor.changeVolume(steps); });
}

SoundWing::~SoundWing() = default;

void SoundWing::rehearse(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to)
{
    monitor.stop();
    if (!rehearsal) {
        rehearsal = std::make_unique<RehearsalSound>(machine, suite);
    }
    rehearsal->play(from, to, monitor.volumeOfSettings());
}

} // namespace melovane
