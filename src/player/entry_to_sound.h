#pragma once

#include "player/entry_sound.h"
#include "playlists/playlist_detail.h"

namespace melovane {

/// What the user has set for the player.
struct AirSettings
{
    int fadeIn = 500;              ///< ms, of what begins without being mixed
    int fadeOut = 500;             ///< ms, of what is cut off
    int mixPause = 0;              ///< ms by which each mix begins later
    int maxMix = 30'000;           ///< ms, of every mix
    int volume = kUnchangedVolume; ///< of entries that have none of their own
    int maxPitch = 2000;           ///< 1/100 percent, either way
    bool isNormalizing = false;
    int normalizeTuning = 0; ///< 1/100 dB
    int jinglePlayers = 5;   ///< jingles that sound over one another
};

/// A fade that is no mix: straight up or down.
[[nodiscard]] FadeStyle plainFade(int ms);

/// An entry as the engine plays it, without fades. A volume of 0 is none of its own.
[[nodiscard]] EntrySound entryToSound(const MlvPlaylistDetail& entry, const AirSettings& settings);

/// Where an entry begins in its file, in milliseconds.
[[nodiscard]] double startMs(const MlvPlaylistDetail& entry);

/// Milliseconds between the start and the stop of an entry; 0 when its stop says nothing.
[[nodiscard]] int lengthOf(const MlvPlaylistDetail& entry);

/// How long the mix of two entries lasts: the first one's mix time without the pause, but never
/// longer than the user lets a mix be, nor more than half of either, so that a mix is over before
/// the next one begins.
[[nodiscard]] int
mixLength(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to, const AirSettings& settings);

} // namespace melovane
