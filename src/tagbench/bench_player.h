#pragma once

#include "platform/media/player.h"

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;

/// Lets the user listen to a track of the bench, on the sound card and with the volume that the
/// settings name for the monitor.
class BenchPlayer
{
public:
    /// All of it outlives this.
    struct Parts
    {
        Player& player; ///< its events are the bench's
        const GlobalSettings& settings;
        const ConfigObjects& texts;
        /// Where a stored file lies now; empty for nowhere.
        std::function<QString(const QString& stored)> placeOf;
        /// The monitors of other programs fall silent.
        std::function<void()> silenceOthers;
    };

    explicit BenchPlayer(Parts parts);

    /// Plays a file from its beginning, or from its middle; another one ends.
    /// \param stored its full name as the library stores it
    /// Why nothing is heard, in the user's words; empty when it plays.
    [[nodiscard]] QString play(const QString& stored, bool fromMiddle);

    /// Quiet while nothing plays.
    void stop() { m_parts.player.stop(); }

private:
    [[nodiscard]] QString takeCard();
    [[nodiscard]] QString told(PlayFault fault, const QString& stored) const;

    Parts m_parts;
};

} // namespace melovane
