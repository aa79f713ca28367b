#pragma once

#include "bus/message_numbers.h"
#include "platform/message/message_control.h"
#include "store/error_sink.h"

#include <QString>

#include <set>

namespace melovane {

class DBEngine;
class GlobalSettings;
class Mod_API;

/// Key of section "Global" that holds the message control of the jobs program: keep.
inline constexpr QStringView kJobsHandleKey = u"MessageHandleJobs";

/// What one view says to the other programs of the suite, over its own message control.
///
/// Each operation reads the handles anew, since a program that was started again has another one.
/// A program that does not run is no error: nothing is sent then. One that hangs holds the window
/// for a second, and for a tenth of that at each further number until it answers again; what was
/// sent it gets when it goes on. The target of the control is left at the last one that was written
/// to.
class SuiteMessages
{
public:
    /// \param control the view's own `KSMessage1`; it outlives this, like all others
    /// \param errors  hears of a mailbox that could not be written; may be empty
    SuiteMessages(GlobalSettings& settings,
                  DBEngine& engine,
                  const Messages& messages,
                  KSMessage& control,
                  ErrorSink errors = {});

    /// Writes the control's handle under "Message.Handle", where any program of the suite finds
    /// it: key `MelovaneDB.exe`, with the name of the running program.
    void publishControl(const Mod_API& paths);

    /// Writes `Handle.DB` (the control) and `HandleDB`.
    /// \param window number of the top-level window
    void publishWindow(qint32 window);

    /// Removes `Handle.DB`: siblings see this program as gone. The other keys stay, they are never
    /// trusted without IsMsgWindow.
    void withdraw();

    /// True when the player runs.
    [[nodiscard]] bool playerIsAlive();

    /// Puts a track into the mailbox row of a message number, on a connection of its own, and
    /// makes it visible to others. Quiet: a database that fails keeps the old row.
    /// \throws DbError kReleased while another program has the library
    void SetTodo(qint32 id, const QString& fid);

    /// Asks the player something about a track: the mailbox row first, then `Send` of kPlayNext or
    /// kPlayNow. The number is sent even when the row could not be written. False when a player
    /// that runs does not answer.
    [[nodiscard]] bool SendToPlayer(const QString& fid, qint32 id);

    /// `Send` of a number to the player, such as kRefreshPlaylistTree; both numbers 0. The same
    /// result.
    [[nodiscard]] bool sendToPlayer(qint32 id);
    /// The same by `Post`, such as kRefreshPlaylist.
    void postToPlayer(qint32 id);

    /// Sends kStopMonitor to every live control named in section "Message" but the console's own,
    /// and waits until each has stopped. False when one of them does not answer: it may play on.
    [[nodiscard]] bool StopOtherMonitors();

    /// Answers kReleaseDatabase. \param asker the control that asked
    void answerDatabaseRelease(MessageHandle asker);

    /// True for the control of a program that runs.
    [[nodiscard]] bool isAlive(MessageHandle control) const;

    /// True for the volume monitor ("LevelPanel") or the sample tool ("Melovanekiv") that runs;
    /// they are the programs that get a number instead of being started.
    [[nodiscard]] bool isRunning(const QString& program);

    /// True while the jobs program runs.
    [[nodiscard]] bool hasJobs();

    /// Asks the jobs program to end. False when it does not run.
    [[nodiscard]] bool endJobs();

    /// Has the volume monitor show its window. False when it does not run, for the caller to start
    /// it.
    [[nodiscard]] bool showVolumeMonitor();

    /// Tells the sample tool that an entry lies ready. False when it does not run.
    [[nodiscard]] bool editSample();

private:
    [[nodiscard]] bool sendIfAlive(MessageHandle target, qint32 id);
    [[nodiscard]] MessageHandle player();
    [[nodiscard]] MessageHandle jobs();
    [[nodiscard]] MessageHandle volumeMonitor();
    [[nodiscard]] MessageHandle sampleTool();
    bool ask(MessageHandle target, qint32 id, qint32 lParam = 0);

    GlobalSettings& m_settings;
    DBEngine& m_engine;
    const Messages& m_messages;
    KSMessage& m_control;
    ErrorSink m_errors;
    std::set<MessageHandle> m_silent; ///< those that have not answered the last number
};

} // namespace melovane
