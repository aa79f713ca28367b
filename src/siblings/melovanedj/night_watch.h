#pragma once

#include <functional>

namespace melovane {

/// How the player comes to run.
struct NightStart
{
    bool isRestart = false;  ///< the one before crashed
    bool skipsEntry = false; ///< it crashed three times within ten seconds: its entry may be why
};

/// Where the player is.
struct NightPlace
{
    int entry = 0;
    double positionMs = 0; ///< in its file
};

/// Runs the player in a process of its own and starts it again when it crashes; returns when it has
/// ended by itself. Asked to end, it asks the player. When this process is killed the player ends,
/// too.
///
/// To be called before anything has made a thread.
/// \param place where the player is, or was when it crashed; asked in this process
/// \param run what the player's process does; its result is its exit code
/// \return that code; 1 when it crashes ten times in a row within a second of its start, before it
/// has played anything
[[nodiscard]] int watchOver(const std::function<NightPlace()>& place,
                            const std::function<int(const NightStart& start)>& run);

} // namespace melovane
