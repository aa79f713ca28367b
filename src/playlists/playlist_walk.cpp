#include "playlists/playlist_walk.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void PlaylistWalk::fill(Database& database, Pnid list)
{
    m_items.clear();
    m_hasDisc = false;
    m_index = 1;
    // Of equal positions the younger entry stands first, as everywhere.
    const auto rows =
        database.OpenRecordset(u"select * from VPL_FILL where pnid="_s +
                               sql::number(numberOf(list)) + u" order by sid asc, plid desc"_s);
    const int fid = rows->fieldIndex(u"FID");
    const int plid = rows->fieldIndex(u"PLID");
    const int sid = rows->fieldIndex(u"SID");
    const int drive = rows->fieldIndex(u"DriveTyp");
    for (; !rows->Eof(); rows->MoveNext()) {
        m_hasDisc |= rows->value(drive).toLong() == int(VolumeKind::Optical);
        m_items.push_back({rows->value(fid).toText(), Plid(rows->value(plid).toLong()), count() + 1,
                           Sid(rows->value(sid).toLong())});
    }
}

void PlaylistWalk::refresh(Database& database, Pnid list)
{
    const std::optional<MlvPlaylistField> former = current();
    fill(database, list);
    if (former) {
        const int found = indexOf(former->PLID);
        m_index = found <= count() ? found : 1;
    }
}

std::optional<MlvPlaylistField> PlaylistWalk::next()
{
    m_index = m_index < count() ? m_index + 1 : 1;
    return current();
}

std::optional<MlvPlaylistField> PlaylistWalk::setPosition(int index)
{
    if (index >= 1 && index <= count()) {
        m_index = index;
    }
    return current();
}

int PlaylistWalk::indexOf(Plid entry) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [&](const auto& item) { return item.PLID == entry; });
    return found == m_items.end() ? kNotInWalk : int(found - m_items.begin()) + 1;
}

std::optional<MlvPlaylistField> PlaylistWalk::current() const
{
    return m_index <= count() ? std::optional(m_items[size_t(m_index) - 1]) : std::nullopt;
}

} // namespace melovane
