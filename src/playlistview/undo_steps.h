#pragma once

#include "playlists/list_history.h"
#include "playlistview/playlist_view_parts.h"
#include "store/pending_jobs.h"

namespace melovane {

class BusSender;

/// Takes back the last change of a list or of tracks, or does it once more, with what the user has
/// to be asked and told. All of what it is made with outlives it.
class UndoSteps
{
public:
    /// \param jobs    for trees that are out of date with tracks
    /// \param changed told of each list whose entries are others now
    /// \param show    told of a step that was taken, behind that
    UndoSteps(PlaylistTools tools,
              PendingJobs jobs,
              const ConfigObjects& texts,
              Warnings& warnings,
              BusSender& bus,
              std::function<void(Pnid list)> changed,
              std::function<void(const ListHistory::Result& step)> show);

    /// Asks before it writes over what others have changed since. What was taken back, a locked
    /// list, and a step that fails are told in the status line. True when the steps that stand may
    /// be others now.
    bool undo();
    bool redo();

private:
    [[nodiscard]] ListHistory::Result take(bool isUndo, ListHistory::Force force);
    bool takeStep(bool isUndo);

    PlaylistTools m_tools;
    PendingJobs m_jobs;
    const ConfigObjects& m_texts;
    Warnings& m_warnings;
    BusSender& m_bus;
    std::function<void(Pnid list)> m_changed;
    std::function<void(const ListHistory::Result& step)> m_show;
};

} // namespace melovane
