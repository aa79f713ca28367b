#include "playlists/mlv_function.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/system/leading_number.h"
#include "playlists/play_statistics.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

MLVFunction::MLVFunction(PlaylistParts parts, const Clock& clock)
    : m_parts(std::move(parts))
    , m_clock(clock)
    , m_entries(m_parts)
    , m_bulkEdits(m_parts)
    , m_catalogue(m_parts)
    , m_jobs(m_parts.engine, m_parts.settings)
    , m_favorites(m_parts.engine, m_parts.settings, m_parts.sink)
{}

MlvPlaylistDetail MLVFunction::GetPlaylistDetailByPLID(Plid entry) const
{
    return m_entries.byEntry(entry);
}

MlvPlaylistDetail MLVFunction::GetPlaylistDetailByFID(const QString& fid) const
{
    return m_entries.byTrack(fid);
}

void MLVFunction::PlaylistUpdate(MlvPlaylistDetail& detail)
{
    m_entries.update(detail);
}

void MLVFunction::PlaylistSaveStartStop(Plid entry, int start, int stop)
{
    m_entries.saveStartStop(entry, start, stop);
}

void MLVFunction::PlaylistSaveAktion(Plid entry, int aktion, const QString& command)
{
    m_entries.saveAktion(entry, aktion, command);
}

void MLVFunction::PlaylistSaveStartStopDefault(const MlvPlaylistDetail& detail)
{
    m_entries.saveStartStopDefault(detail);
}

void MLVFunction::PlaylistSaveMixIN(const MlvPlaylistDetail& detail)
{
    m_entries.saveMixIn(detail);
}

void MLVFunction::PlaylistSaveMixOUT(const MlvPlaylistDetail& detail)
{
    m_entries.saveMixOut(detail);
}

void MLVFunction::PlaylistSaveEQ(const MlvPlaylistDetail& detail)
{
    m_entries.saveEq(detail);
}

void MLVFunction::PlaylistSaveStatistik(const MlvPlaylistDetail& played)
{
    savePlayStatistics(m_parts, m_clock, played);
}

void MLVFunction::PlaylistSetAllMixStyle(const QString& list,
                                         const QString& outOf,
                                         const QString& inOf)
{
    m_bulkEdits.setAllMixStyle(list, outOf, inOf);
}

void MLVFunction::PlaylistReset(Pnid list)
{
    m_bulkEdits.reset(list);
}

void MLVFunction::PlaylistDeleteAllMixStyle(Pnid list)
{
    m_bulkEdits.deleteAllMixStyle(list);
}

void MLVFunction::PlayListFill()
{
    quietly(m_parts.sink, u"PlayListFill"_s,
            [&] { m_walk.fill(*m_parts.engine.OpenDatabase(m_parts.settings.DbName()), m_list); });
}

void MLVFunction::PlaylistRefresh()
{
    quietly(m_parts.sink, u"PlaylistRefresh"_s, [&] {
        m_walk.refresh(*m_parts.engine.OpenDatabase(m_parts.settings.DbName()), m_list);
    });
}

std::optional<MlvPlaylistField> MLVFunction::PlaylistGetNext()
{
    return m_walk.next();
}

std::optional<MlvPlaylistField> MLVFunction::PlaylistSetPosition(int index)
{
    return m_walk.setPosition(index);
}

int MLVFunction::PlaylistFindTrackNO(Plid entry) const
{
    return m_walk.indexOf(entry);
}

bool MLVFunction::KannGroupDel(const QString& group)
{
    return m_catalogue.deleteGroup(GroupId(leadingLong(group)));
}

GroupId MLVFunction::CreateNewGroup(const QString& name)
{
    return m_catalogue.newGroup(name);
}

void MLVFunction::UpdateGroupName(GroupId group, const QString& name)
{
    m_catalogue.renameGroup(group, name);
}

void MLVFunction::UpdatePlaylistName(Pnid list, const QString& name)
{
    m_catalogue.renameList(list, name);
}

void MLVFunction::DeletePlaylist(Pnid list)
{
    m_catalogue.deleteList(list);
}

void MLVFunction::SortPlaylistTree(Pnid list, const QString& column)
{
    m_catalogue.sortLists(list, column);
}

void MLVFunction::ChangeTree(const QString& tree)
{
    m_jobs.ChangeTree(tree);
}

} // namespace melovane
