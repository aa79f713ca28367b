#include "player/entry_to_sound.h"

#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane {

FadeStyle plainFade(int ms)
{
    FadeStyle fade;
    fade.style.MixValue1 = fade.style.MixValue5 = 10000;
    fade.style.IsSet = true;
    fade.ms = std::max(0, ms);
    return fade;
}

EntrySound entryToSound(const MlvPlaylistDetail& entry, const AirSettings& settings)
{
    EntrySound sound;
    sound.file = entry.file;
    sound.frameStart = std::max(0, entry.FrameStart);
    sound.frameStop = entry.FrameStop;
    const int own = entry.Volume > 0 ? entry.Volume : settings.volume;
    sound.volume = std::clamp(own, 0, kUnchangedVolume);
    const int widest = std::max(0, settings.maxPitch);
    sound.pitch = std::clamp(entry.Pitch, -widest, widest);
    sound.eq = entry.eqStyle;
    if (settings.isNormalizing) {
        sound.normalize = entry.Normalize;
        sound.normalizeTuning = settings.normalizeTuning;
    }
    return sound;
}

double startMs(const MlvPlaylistDetail& entry)
{
    return std::max(0, entry.FrameStart) * Mod_MilliSecToMin::kFrameMs;
}

int lengthOf(const MlvPlaylistDetail& entry)
{
    const int start = std::max(0, entry.FrameStart);
    if (entry.FrameStop <= start) {
        return 0;
    }
    const double ms = (entry.FrameStop - start) * Mod_MilliSecToMin::kFrameMs;
    return int(std::min<double>(ms, std::numeric_limits<int>::max()));
}

int mixLength(const MlvPlaylistDetail& from,
              const MlvPlaylistDetail& to,
              const AirSettings& settings)
{
    int ms = std::clamp(std::max(0, from.MixTime) - std::max(0, settings.mixPause), 0,
                        std::max(0, settings.maxMix));
    for (const int length : {lengthOf(from), lengthOf(to)}) {
        if (length > 0) {
            ms = std::min(ms, length / 2);
        }
    }
    return ms;
}

} // namespace melovane
