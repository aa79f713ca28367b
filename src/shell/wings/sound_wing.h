#pragma once

#include "monitor/monitor_player.h"
#include "platform/linux/mp3_cue_finder.h"
#include "platform/linux/mp3_player.h"
#include "platform/linux/sdl_output.h"

#include <memory>

namespace melovane {

class RehearsalSound;
struct Desk;
struct Machine;
struct MlvPlaylistDetail;
struct SuiteWing;

/// What the user hears without the player.
struct SoundWing
{
    SoundWing(Machine& machine, Desk& desk, SuiteWing& suite);
    ~SoundWing();
    SoundWing(const SoundWing&) = delete;
    SoundWing& operator=(const SoundWing&) = delete;

    /// Plays a transition on the monitor's card, as loud as the monitor; what the monitor plays
    /// stops. What cannot be played is told in the status line.
    void rehearse(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to);

    Machine& machine;
    SuiteWing& suite;
    linux_media::SdlOutput output;
    linux_media::Mp3Player player;
    linux_media::Mp3CueFinder cueFinder;
    Monitor monitor;
    std::unique_ptr<RehearsalSound> rehearsal; ///< made by the first one
};

} // namespace melovane
