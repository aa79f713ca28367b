#include "siblings/mlvconfig/applied_settings.h"

#include "bus/message_numbers.h"
#include "bus/published_controls.h"
#include "config/global_settings.h"
#include "settings/setting_draft.h"
#include "settings/setting_values.h"

#include <set>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The console's own number, for programs that show texts and colours or play by the settings.
void tellOthers(KSMessage& control, const Messages& messages, GlobalSettings& settings)
{
    std::set<MessageHandle> told{control.handle(), control.target()};
    for (const PublishedControl& other : publishedControls(settings.toolBox())) {
        if (told.insert(other.handle).second && messages.IsMsgWindow(other.handle)) {
            control.setTarget(other.handle);
            control.Post(message::kConfigChanged, 0, 0);
        }
    }
}

} // namespace

AppliedSettings appliedBy(const SettingDraft& draft, const SettingValues& values)
{
    const QString global = section::kGlobal.toString();
    const QString volume = u"Volume.Monitor"_s;
    AppliedSettings applied;
    applied.card = draft.holds(global, u"SCardNameMonitor"_s);
    if (draft.holds(global, volume)) {
        applied.volume = values.value(*findEntry(global, volume)).toInt();
    }
    applied.language = draft.holds(kValueSection.toString(), u"Sprach.Datei"_s);
    return applied;
}

void tellConsole(KSMessage& control,
                 const Messages& messages,
                 GlobalSettings& settings,
                 MessageHandle console,
                 const AppliedSettings& applied)
{
    settings.RefreshMessageHandle();
    control.setTarget(messages.IsMsgWindow(console) ? console : settings.MessageHandleDB());
    if (applied.card) {
        control.Post(message::kSoundCardChanged, 0, 0);
    }
    if (applied.volume) {
        control.Post(message::kMonitorVolume, message::kMonitorVolumeIcon, *applied.volume);
    }
    control.Post(message::kConfigChanged, 0, 0);
    tellOthers(control, messages, settings);
}

} // namespace melovane
