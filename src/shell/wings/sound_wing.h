#pragma once

#include "monitor/monitor_player.h"
#include "platform/linux/mp3_cue_finder.h"
#include "platform/linux/mp3_player.h"
#include "platform/linux/sdl_output.h"

namespace melovane {

struct Desk;
struct Machine;
struct SuiteWing;

/// What the user hears without the player.
struct SoundWing
{
    SoundWing(Machine& machine, Desk& desk, SuiteWing& suite);

    linux_media::SdlOutput output;
    linux_media::Mp3Player player;
    linux_media::Mp3CueFinder cueFinder;
    Monitor monitor;
};

} // namespace melovane
