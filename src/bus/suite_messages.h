#pragma once

#include "bus/message_numbers.h"
#include "platform/message/message_control.h"
#include "store/error_sink.h"

#include <QString>

namespace melovane {

class DBEngine;
class GlobalSettings;
class Mod_API;

/// What one view says to the other programs of the suite, over its own message control.
///
/// Each operation reads the handles anew, since a program that was started again has another one.
/// A program that does not run is no error: nothing is sent then. The target of the control is
/// left at the last one that was written to.
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
    /// that runs does not answer: the window has waited a second for it, and waits for each further
    /// number a tenth of that until it answers again.
    bool SendToPlayer(const QString& fid, qint32 id);

    /// `Send` of a number to the player, such as kRefreshPlaylistTree; both numbers 0. The same
    /// result.
    bool sendToPlayer(qint32 id);
    /// The same by `Post`, such as kRefreshPlaylist.
    void postToPlayer(qint32 id);

    /// Sends kStopMonitor to every live control named in section "Message" but the console's own,
    /// and waits until each has stopped.
    void StopOtherMonitors();

    /// Answers kReleaseDatabase. \param asker the control that asked
    void answerDatabaseRelease(MessageHandle asker);

    /// True for the control of a program that runs.
    [[nodiscard]] bool isAlive(MessageHandle control) const;

    /// Asks the jobs program to end. False when it does not run.
    [[nodiscard]] bool endJobs();

    /// Has the volume monitor show its window. False when it does not run, for the caller to start
    /// it.
    [[nodiscard]] bool showVolumeMonitor();

    /// Tells the sample tool that an entry lies ready. False when it does not run.
    [[nodiscard]] bool editSample();

private:
    qint32 send(MessageHandle target, qint32 id, qint32 lParam = 0);
    [[nodiscard]] bool sendIfAlive(MessageHandle target, qint32 id);
    [[nodiscard]] MessageHandle player();
    bool ask(MessageHandle player, qint32 id);

    GlobalSettings& m_settings;
    DBEngine& m_engine;
    const Messages& m_messages;
    KSMessage& m_control;
    ErrorSink m_errors;
    MessageHandle m_silentPlayer = 0; ///< that has not answered the last number
};

} // namespace melovane
