#pragma once

#include "platform/message/message_control.h"

#include <optional>

namespace melovane {

class GlobalSettings;
class SettingDraft;
class SettingValues;

/// What a write of the draft changes for programs that run.
struct AppliedSettings
{
    bool card = false;         ///< the sound card of the monitor
    std::optional<int> volume; ///< of the monitor, 0 to 10000
    bool language = false;
};

/// What the draft holds now; asked before it is written.
[[nodiscard]] AppliedSettings appliedBy(const SettingDraft& draft, const SettingValues& values);

/// Tells the console, without waiting: it opens libraries and cards meanwhile. Every other program
/// of the suite that has published its control hears, too, that the settings are other ones.
///
/// \param console that has started the settings; when it has ended, the one that runs now is told,
///                and without any nobody
void tellConsole(KSMessage& control,
                 const Messages& messages,
                 GlobalSettings& settings,
                 MessageHandle console,
                 const AppliedSettings& applied);

} // namespace melovane
