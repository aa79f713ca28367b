#include "player/playing_list.h"

#include "config/global_settings.h"
#include "platform/db/database.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kPlayingList = u"select min(nid) as pnid from pl_name where isplay=true and grid>0"_s;

/// Runs a step on the database. False when it fails or is lent to another program: the player then
/// goes on with what it has.
template <typename Step> bool onDatabase(const PlaylistParts& parts, Step&& step)
{
    try {
        return quietly(parts.sink, u"Player"_s,
                       [&] { step(*parts.engine.OpenDatabase(parts.settings.DbName())); }) == 0;
    } catch (const DbError&) {
        return false; // quietly() lets only the one of a lent database through
    }
}

} // namespace

PlayingList::PlayingList(PlaylistParts parts)
    : m_parts(std::move(parts))
    , m_entries(m_parts)
{}

bool PlayingList::refresh()
{
    PlaylistWalk fresh;
    Pnid list{};
    const bool isRead = onDatabase(m_parts, [&](Database& database) {
        list = Pnid(database.OpenRecordset(kPlayingList)->value(u"pnid").toLong());
        fresh.fill(database, list);
    });
    if (!isRead) {
        return false;
    }
    std::vector<Plid> before;
    const int place = m_walk.index();
    PlaylistWalk former = m_walk;
    for (int index = 1; index <= former.count(); ++index) {
        before.push_back(former.setPosition(index)->PLID);
    }
    const bool isSame = list == m_list;
    m_walk = std::move(fresh);
    m_list = list;
    if (isSame) {
        settle(before, place);
    } else {
        m_isGone = !before.empty();
    }
    return true;
}

/// Stands at the same entry again, or in front of the nearest one behind it that is still there.
void PlayingList::settle(const std::vector<Plid>& before, int place)
{
    const auto from = before.begin() + std::min<std::ptrdiff_t>(place - 1, std::ssize(before));
    const auto left = std::find_if(from, before.end(), [&](Plid entry) { return holds(entry); });
    if (left == before.end()) {
        m_isGone = m_isGone || !before.empty(); // the end was taken out: round to the first
        return;
    }
    m_isGone = m_isGone || left != from;
    m_walk.setPosition(m_walk.indexOf(*left));
}

void PlayingList::goTo(Plid entry)
{
    if (holds(entry)) {
        m_walk.setPosition(m_walk.indexOf(entry));
        m_isGone = false;
    }
}

std::optional<MlvPlaylistField> PlayingList::ahead(int places) const
{
    if (m_walk.count() == 0) {
        return std::nullopt;
    }
    PlaylistWalk walk = m_walk;
    const int steps = m_isGone && places > 0 ? places - 1 : places;
    for (int step = 0; step < steps % walk.count(); ++step) {
        (void)walk.next();
    }
    return walk.current();
}

std::optional<MlvPlaylistField> PlayingList::entryOf(const QString& fid) const
{
    for (int places = 0; places < m_walk.count(); ++places) {
        const auto entry = ahead(places);
        if (entry && entry->FID == fid) {
            return entry;
        }
    }
    return std::nullopt;
}

MlvPlaylistDetail PlayingList::read(Plid entry) const
{
    try {
        return m_entries.byEntry(entry);
    } catch (const DbError&) {
        return {}; // lent to another program
    }
}

MlvPlaylistDetail PlayingList::detail(Plid entry)
{
    const MlvPlaylistDetail fresh = read(entry);
    if (!fresh.FID.isEmpty()) {
        m_kept[entry] = fresh;
        return fresh;
    }
    const auto kept = m_kept.find(entry);
    return kept == m_kept.end() ? MlvPlaylistDetail() : kept->second;
}

MlvPlaylistDetail PlayingList::track(const QString& fid) const
{
    try {
        return m_entries.byTrack(fid);
    } catch (const DbError&) {
        return {}; // lent to another program
    }
}

void PlayingList::keepAhead(int count)
{
    std::map<Plid, MlvPlaylistDetail> kept;
    for (int places = 0; places < std::min(count, m_walk.count()); ++places) {
        const auto entry = ahead(places);
        if (entry) {
            kept[entry->PLID] = detail(entry->PLID);
        }
    }
    m_kept = std::move(kept);
}

} // namespace melovane
