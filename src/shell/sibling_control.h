#pragma once

#include "platform/system/programs.h"

#include <QString>

#include <functional>

namespace melovane {

class Mod_API;

/// Pages of the program folder: the help, which says where the program comes from, too, and what
/// is to be known about versions.
inline const QString kHelpPage = QStringLiteral("Melovane.html");
inline const QString kVersionsPage = QStringLiteral("Versionen.html");

/// Starts the other programs of the suite, which lie in the program folder. Nothing waits for
/// their end.
///
/// Each start says whether there was something to start; the caller tells the user.
class SiblingControl
{
public:
    SiblingControl(Mod_API& paths, Files& files, Programs& processes);

    /// \param started called behind each start of a program that shows a window
    void setStarted(std::function<void()> started) { m_started = std::move(started); }

    /// Start lines, without the program folder in front. Siblings read the arguments: keep.
    /// \param setting "Section.Key" of the one that is shown first; empty for none
    bool startConfig(int ownHandle, const QString& setting = {});
    /// \param index 0 looks for new files, 1 opens the tag editor's import, 2 reads files again
    bool startImport(int index);
    bool startStorePlaylists();
    bool startWriteTags(int ownHandle);
    /// \param tree one of "Dir", "Genre", "Album", "Interpret"; "1" for all of them; empty for
    /// those that are noted as out of date
    bool startRebuildTree(const QString& tree = QStringLiteral("1"));
    bool startSleeveViewer(const QString& argument);

    bool startSampleTool();

    // Tested first: nothing is tried when the program is not there.
    bool startTagEditor();
    bool startLevelPanel();
    bool startJobs();
    /// \param order what the player does first: "next" or "now" with the track that lies ready for
    ///              it, nothing for an empty text
    bool startPlayer(const QString& order);

    /// A program that the user has added.
    ///
    /// \param argument empty for none
    bool startPlugIn(const QString& program, const QString& argument);
    [[nodiscard]] bool isInstalled(const QString& program) const;

    /// Shows a page with the desktop's program for it.
    bool openPage(const QString& name);
    /// The file of a page of the program folder; empty when it is not there.
    [[nodiscard]] QString pageFile(const QString& name) const;

    /// Has the tempo of a track found.
    ///
    /// \param cmd  "auto" or "manuell"; a repeated request for the same track is dropped unless it
    ///             is "manuell"
    /// \param plid passed on when it is a number above 0
    /// True also for a request that was dropped.
    bool StartBeatGauge(const QString& cmd, const QString& fid, const QString& plid);
    /// The same without a playlist entry, in the order in which messages name the arguments.
    bool findTempo(const QString& cmd, const QString& fid);

private:
    /// \param program   in the program folder, without ".exe"
    /// \param arguments with a blank in front of each
    bool start(const QString& program, const QString& arguments, Processes::WindowStyle style);
    bool startIfInstalled(const QString& program,
                          const QString& arguments,
                          Processes::WindowStyle style);

    Mod_API& m_paths;
    Files& m_files;
    Programs& m_processes;
    std::function<void()> m_started = [] {};
    QString m_lastFid;
};

} // namespace melovane
