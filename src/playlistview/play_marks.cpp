#include "playlistview/play_marks.h"

#include "config/global_settings.h"
#include "platform/controls/grid_control.h"
#include "playlistview/playlist_look.h"
#include "views/grid_rows.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

PlayMarks::PlayMarks(const GlobalSettings& settings,
                     GridControl& grid,
                     GridRows& rows,
                     PlaylistLook& look)
    : m_settings(settings)
    , m_grid(grid)
    , m_rows(rows)
    , m_look(look)
{}

void PlayMarks::set(Plid now, Plid next)
{
    m_now = now;
    m_next = next;
    m_look.setPlayed(now, next);
    m_rows.data().refreshCells();
    showNow();
}

void PlayMarks::setHeard(Plid entry, const QString& fid)
{
    m_heard = entry;
    m_heardTrack = fid;
    m_look.setHeard(entry, fid);
    m_rows.data().refreshCells();
}

void PlayMarks::setHeardTrack(const QString& fid)
{
    setHeard(fid == m_heardTrack ? m_heard : Plid{}, fid);
}

void PlayMarks::showNow()
{
    if (m_now == Plid{} ||
        m_settings.GetKeyValueLong(u"Global"_s, u"View.Current.Playlist.Pos"_s, 1) == 0) {
        return;
    }
    const qint64 row = m_rows.rowOf(u"PLID", numberOf(m_now));
    if (row >= 0) {
        m_grid.showRow(row);
    }
}

} // namespace melovane
