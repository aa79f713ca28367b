#include "player/jingle_pads.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "playlists/playlist_walk.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The list that plays, else the first that the user sees, else the first.
std::optional<Pnid> jingleList(Database& database)
{
    std::optional<Pnid> best;
    int bestRank = -1;
    const auto rows = database.OpenRecordset(
        u"select nid, isplay, activ from pl_name where grid=-1 order by sid, nid"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        const int rank =
            (rows->value(u"isplay").toBool() ? 2 : 0) + (rows->value(u"activ").toBool() ? 1 : 0);
        if (rank > bestRank) {
            bestRank = rank;
            best = Pnid(rows->value(u"nid").toLong());
        }
    }
    return best;
}

} // namespace

JinglePads::JinglePads(PlaylistParts parts, JingleDecks& decks)
    : m_parts(std::move(parts))
    , m_entries(m_parts)
    , m_decks(decks)
{}

void JinglePads::refresh()
{
    try {
        PlaylistWalk walk;
        quietly(m_parts.sink, u"Jingles"_s, [&] {
            const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
            if (const auto list = jingleList(*database)) {
                walk.fill(*database, *list);
            }
        });
        std::vector<MlvPlaylistDetail> pads;
        for (int index = 1; index <= std::min(kPads, walk.count()); ++index) {
            pads.push_back(m_entries.byEntry(walk.setPosition(index)->PLID));
        }
        m_pads = std::move(pads);
    } catch (const DbError&) {
        return; // lent to another program
    }
}

QStringList JinglePads::titles() const
{
    QStringList titles;
    for (const MlvPlaylistDetail& pad : m_pads) {
        titles.append(pad.Titel.isEmpty() ? pad.DName : pad.Titel);
    }
    return titles;
}

void JinglePads::play(int pad)
{
    if (pad < 0 || size_t(pad) >= m_pads.size() || m_pads[size_t(pad)].file.isEmpty()) {
        return;
    }
    JinglePlace& place = m_places[size_t(pad)];
    place = m_decks.play(m_pads[size_t(pad)], place);
}

bool JinglePads::sounds(int pad) const
{
    return pad >= 0 && pad < kPads && m_decks.sounds(m_places[size_t(pad)]);
}

} // namespace melovane
