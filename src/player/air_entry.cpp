#include "player/air_entry.h"

#include "player/entry_to_sound.h"
#include "player/playing_list.h"

namespace melovane {

AirEntry airEntryOfTrack(PlayingList& list, const QString& fid)
{
    AirEntry found;
    if (const auto entry = list.entryOf(fid)) {
        found.entry = list.detail(entry->PLID);
    } else {
        found.entry = list.track(fid);
        found.isFromList = false;
    }
    if (found.entry.FID.isEmpty()) {
        found.entry.FID = fid;
    }
    return found;
}

AirEntry airEntryLeftAt(PlayingList& list, Plid entry, const QString& fid, double positionMs)
{
    AirEntry left;
    list.goTo(entry);
    left.entry = list.detail(entry);
    if (left.entry.FID.isEmpty()) {
        left.entry = list.track(fid);
        left.isFromList = false;
    }
    // Heard so far ahead, it is as good as played: a crash counts no play twice.
    const int length = lengthOf(left.entry);
    left.isCounted = length > 0 && positionMs - startMs(left.entry) >= length / 2.0;
    left.fromMs = positionMs;
    return left;
}

} // namespace melovane
