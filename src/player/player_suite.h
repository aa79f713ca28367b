#pragma once

#include "platform/message/message_control.h"
#include "playlists/entry_records.h"

#include <QDateTime>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace melovane {

class AirSequence;
class Clock;
class PlayingList;

/// What the player hears from the other programs of the suite, and tells them.
///
/// The sound never waits for them: while another program has the library, plays wait in memory.
class PlayerSuite
{
public:
    struct Parts
    {
        GlobalSettings& settings;
        const Messages& messages;
        KSMessage& control;
        PlaylistParts playlists;
        const Clock& clock;
        PlayingList& list;
        AirSequence& sequence;
        /// Whether the console has lent the library to another program.
        std::function<bool(const QString& library)> isLent;
        std::function<void()> openCards;
        /// The settings or the list of playlists were read again.
        std::function<void()> changed;
        std::function<void()> bringToFront;
    };

    /// Hears messages from publish() on.
    explicit PlayerSuite(Parts parts);

    /// Writes `Handle.DJ`, `HandleDJ` and the key of this program: the player is found from now on.
    /// \param window number of the top-level window
    void publish(qint32 window);
    /// The player is gone; only its own number is removed.
    void withdraw();

    /// To the console: the entry that plays and the one that comes next, 0 for none.
    void tellPlaying(Plid playing, Plid next);

    /// Half of an entry was heard: counts it when the user wants plays to be counted.
    void countPlay(const MlvPlaylistDetail& entry);

    /// The console comes to the front.
    void showConsole();

    /// Asks the console to stand below the player, or to go back to its place.
    void dock(bool isDocked);

    /// Looks after what nobody tells: a program that died with the library, a console that was
    /// started again. About once a second.
    void watch();

    [[nodiscard]] bool isLibraryAway() const { return !m_givenAway.isEmpty(); }

    /// A number as it arrives; public for programs that start the player with an order.
    qint32 number(qint32 id, qint32 wParam, qint32 lParam);

private:
    struct Play
    {
        MlvPlaylistDetail entry;
        QDateTime moment;
    };

    void postToConsole(qint32 id, qint32 wParam, qint32 lParam);
    void giveAway(MessageHandle asker);
    void takeBack();
    void configChanged();
    void playOrdered(qint32 id);
    [[nodiscard]] QString takeTodo(qint32 id);
    void write(const Play& play);

    Parts m_parts;
    QString m_givenAway; ///< the library that another program has; empty for none
    std::vector<MessageHandle> m_askers;
    std::vector<Play> m_waiting;   ///< plays to be written
    std::optional<qint32> m_order; ///< kPlayNow or kPlayNext that came while the library is away
    std::pair<Plid, Plid> m_playing{};
    MessageHandle m_console = 0; ///< that was told
};

} // namespace melovane
