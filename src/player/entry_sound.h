#pragma once

#include "store/mix_style.h"

#include <QString>

namespace melovane {

/// Rate of everything that is mixed, in Hz: cards are opened with it.
inline constexpr int kAirRate = 44100;

/// A volume that leaves the sound as it is, to the bit.
inline constexpr int kUnchangedVolume = 10000;

/// How an entry comes or goes.
struct FadeStyle
{
    /// Unset, or with a length of 0: no curve, only the few milliseconds that keep it from
    /// clicking.
    MLVMixStyle style;
    int ms = 0; ///< length of the whole curve: the mix time, what is negative counts as 0
};

/// Everything that decides how one entry of a list sounds. Garbage is taken as the nearest value
/// that can be played.
struct EntrySound
{
    QString file; ///< path of the system

    // In frames of the lists (kFrameMs).
    int frameStart = 0;
    int frameStop = 0; ///< 0, and what does not lie behind the start: the end of the file

    int volume = kUnchangedVolume; ///< 0 to 10000
    int pitch = 0;                 ///< 1/100 percent, speed and key together
    FadeStyle fadeIn;              ///< from its first sample on
    FadeStyle fadeOut;             ///< up to its last sample
    MlvEQStyle eq;                 ///< unset: neutral
    int normalize = 0;             ///< loudness as the tracks keep it, 0 unknown: as it is
    int normalizeTuning = 0;       ///< 1/100 dB on top, only where the loudness is known
    /// Begins and ends without the few milliseconds that keep an end without a curve from
    /// clicking: each sample is the file's.
    bool exactEdges = false;
};

} // namespace melovane
