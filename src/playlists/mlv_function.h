#pragma once

#include "playlists/bulk_edits.h"
#include "playlists/entry_records.h"
#include "playlists/list_catalogue.h"
#include "playlists/playlist_walk.h"
#include "playlists/tree_favorites.h"
#include "store/pending_jobs.h"

#include <memory>

namespace melovane {

class Clock;

/// What views and tools do with lists besides moving entries about: a face over one class per kind
/// of data, under the names that the suite knows.
///
/// Each operation opens the database that the settings name and closes it again. All are quiet.
class MLVFunction
{
public:
    MLVFunction(PlaylistParts parts, const Clock& clock);

    // One entry. \see EntryRecords

    [[nodiscard]] MlvPlaylistDetail GetPlaylistDetailByPLID(Plid entry) const;
    [[nodiscard]] MlvPlaylistDetail GetPlaylistDetailByFID(const QString& fid) const;
    void PlaylistUpdate(MlvPlaylistDetail& detail);
    void PlaylistSaveStartStop(Plid entry, int start, int stop);
    void PlaylistSaveAktion(Plid entry, int aktion, const QString& command);
    void PlaylistSaveStartStopDefault(const MlvPlaylistDetail& detail);
    void PlaylistSaveMixIN(const MlvPlaylistDetail& detail);
    void PlaylistSaveMixOUT(const MlvPlaylistDetail& detail);
    void PlaylistSaveEQ(const MlvPlaylistDetail& detail);
    void PlaylistSaveStatistik(const MlvPlaylistDetail& played);

    // All entries of a list. \see BulkEdits

    void PlaylistSetAllMixStyle(const QString& list, const QString& outOf, const QString& inOf);
    void PlaylistReset(Pnid list);
    void PlaylistDeleteAllMixStyle(Pnid list);

    // The walk over the list set before. \see PlaylistWalk

    void setPlaylist(Pnid list) { m_list = list; }

    void PlayListFill();
    void PlaylistRefresh();
    std::optional<MlvPlaylistField> PlaylistGetNext();
    std::optional<MlvPlaylistField> PlaylistSetPosition(int index);
    [[nodiscard]] int PlaylistFindTrackNO(Plid entry) const;

    [[nodiscard]] const PlaylistWalk& walk() const { return m_walk; }

    // Lists and groups. \see ListCatalogue

    /// \param group its number as a text
    [[nodiscard]] bool KannGroupDel(const QString& group);
    [[nodiscard]] GroupId CreateNewGroup(const QString& name);
    void UpdateGroupName(GroupId group, const QString& name);
    void UpdatePlaylistName(Pnid list, const QString& name);
    void DeletePlaylist(Pnid list);
    void SortPlaylistTree(Pnid list, const QString& column);

    /// What the trees do with lists beyond these.
    [[nodiscard]] ListCatalogue& catalogue() { return m_catalogue; }

    // The library tree. \see TreeFavorites

    /// Notes that a tree must be rebuilt. \see PendingJobs
    void ChangeTree(const QString& tree);

    [[nodiscard]] TreeFavorites& favorites() { return m_favorites; }

private:
    PlaylistParts m_parts;
    const Clock& m_clock;
    EntryRecords m_entries;
    BulkEdits m_bulkEdits;
    ListCatalogue m_catalogue;
    PlaylistWalk m_walk;
    PendingJobs m_jobs;
    TreeFavorites m_favorites;
    Pnid m_list{};
};

} // namespace melovane
