#pragma once

#include "player/air_engine.h"
#include "player/entry_to_sound.h"

#include <functional>
#include <memory>

namespace melovane {

class MessageLoop;
class Timer;

/// Lets the user hear how one entry goes over into the next before anybody else does: the end of
/// the first, the mix as it is prepared, the beginning of the second.
class Rehearsal
{
public:
    /// Heard of either entry, or the mix and two seconds more where that is longer.
    static constexpr int kLengthMs = 10'000;

    struct Parts
    {
        AirEngine& engine; ///< used by nobody else, like the loop outlives the rehearsal
        /// Has the engine decode on. Called by the rehearsal's own timer, on the window's thread.
        std::function<void()> beat;
        MessageLoop& loop;
        std::function<AirSettings()> settings;
        /// It has ended by itself: None, or why, with the name of the file that cannot be played.
        std::function<void(PlayFault fault, const QString& file)> ended;
    };

    explicit Rehearsal(Parts parts);
    ~Rehearsal();
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;

    /// What is heard already stops.
    /// \param card   name, empty for the system's choice
    /// \param volume of the whole, 0 to 10000
    void play(const MlvPlaylistDetail& from,
              const MlvPlaylistDetail& to,
              const QString& card,
              int volume);
    /// Silence, within some milliseconds; nobody is told.
    void stop();

    /// Until both entries were heard, or stop().
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }

private:
    void tick();
    void end(PlayFault fault, const QString& file);
    [[nodiscard]] bool isAtEnd() const;

    Parts m_parts;
    std::unique_ptr<Timer> m_timer;
    bool m_isPlaying = false;
    int m_ticksToClose = 0;
    QString m_fromName;
    QString m_toName;
};

} // namespace melovane
