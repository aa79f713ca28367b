#pragma once

#include "platform/linux/sdl_output.h"
#include "player/mix_engine.h"
#include "player/rehearsal.h"

namespace melovane {

struct Machine;
struct SuiteWing;

/// The player's engine on the monitor's card.
class RehearsalSound
{
public:
    /// Both outlive it.
    RehearsalSound(Machine& machine, SuiteWing& suite);

    /// Other programs fall silent on the monitor first. A card that is not there is told, and
    /// nothing is heard: the system's choice may be in the hall.
    /// \param volume 0 to 10000
    void play(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to, int volume);

    void stop() { m_rehearsal.stop(); }

private:
    [[nodiscard]] bool isThere(const QString& card);
    void tell(PlayFault fault, const QString& file);

    Machine& m_machine;
    SuiteWing& m_suite;
    linux_media::SdlOutput m_output;
    linux_media::SdlOutput m_unused; ///< the monitor is one card
    MixEngine m_engine;
    Rehearsal m_rehearsal;
};

} // namespace melovane
