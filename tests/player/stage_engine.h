#pragma once

#include "player/air_engine.h"

#include <algorithm>
#include <map>
#include <vector>

namespace melovane::test {

/// An engine without a clock: its decks move when the test lets time go by, in steps of a
/// millisecond. It remembers what began, and for how long nothing was heard.
class StageEngine : public AirEngine
{
public:
    struct Heard
    {
        AirDeck deck;
        EntrySound sound;
        qint64 atMs;
        double fromMs; ///< in its file
    };

    /// Lets a millisecond go by.
    virtual void tick() = 0;

    /// The speed that a deck was given last.
    [[nodiscard]] virtual int pitch(AirDeck deck) = 0;

    qint64 now = 0;   ///< ms
    int loadMs = 30;  ///< that opening a file takes
    int silentMs = 0; ///< since something sounded
    int longestSilenceMs = 0;
    int glidedMs = 0;               ///< of the last change of a speed
    std::map<QString, int> lengths; ///< of files, in ms; those that are not here last 200 s
    std::map<QString, int> broken;  ///< files that break off at that ms; 0: cannot be played
    std::vector<Heard> heard;

protected:
    void noteSound(bool sounds)
    {
        silentMs = sounds ? 0 : silentMs + 1;
        longestSilenceMs = std::max(longestSilenceMs, silentMs);
    }
};

} // namespace melovane::test
