#include "player/entry_search.h"

#include "player/playing_list.h"

#include <utility>

namespace melovane {

namespace {

/// Entries that are looked at in one turn: the whole list of a night within two seconds.
constexpr int kTriesPerTurn = 20;
/// About a second.
constexpr int kRestTurns = 20;

bool isJingle(const MlvPlaylistDetail& entry)
{
    return entry.Aktion == kAktionJinglePlay || entry.Aktion == kAktionJingle1 ||
           entry.Aktion == kAktionJingle2;
}

} // namespace

EntrySearch::EntrySearch(PlayingList& list, LeftOut leftOut)
    : m_list(list)
    , m_leftOut(std::move(leftOut))
{}

void EntrySearch::standAt(Plid entry)
{
    if (m_list.holds(entry)) {
        m_list.goTo(entry);
        m_isFresh = true;
    }
}

void EntrySearch::standBehind(Plid entry)
{
    m_list.goTo(entry);
    m_isFresh = false;
}

void EntrySearch::startOver()
{
    m_jingles.clear();
    m_places = 0;
    m_restTurns = 0;
    m_takesJingles = false;
}

std::optional<AirEntry> EntrySearch::turn()
{
    if (m_restTurns > 0) {
        --m_restTurns;
        return std::nullopt;
    }
    for (int tries = 0; tries < kTriesPerTurn; ++tries) {
        if (m_places >= m_list.count()) {
            lookedThrough();
            return std::nullopt;
        }
        if (auto found = look()) {
            return found;
        }
    }
    return std::nullopt;
}

/// Looks at one entry.
std::optional<AirEntry> EntrySearch::look()
{
    const auto field = m_list.ahead((m_isFresh ? 0 : 1) + m_places);
    AirEntry found;
    found.isFound = true;
    found.entry = m_list.detail(field->PLID);
    if (found.entry.FID.isEmpty() || found.entry.file.isEmpty()) {
        found.entry.PLID = field->PLID;
        found.entry.FID = field->FID;
        ++m_places;
        tellFault(found.entry, AirFault::Missing);
    } else if (isJingle(found.entry) && !m_takesJingles) {
        m_jingles.push_back(found.entry);
        ++m_places;
    } else {
        found.jingles = std::exchange(m_jingles, {});
        return found;
    }
    return std::nullopt;
}

/// Nothing but jingles are better than silence; with nothing at all the list is looked through
/// again a little later, for a drive may have come back.
void EntrySearch::lookedThrough()
{
    m_places = 0;
    m_takesJingles = !m_jingles.empty() && !m_takesJingles;
    m_restTurns = m_takesJingles ? 0 : kRestTurns;
    m_jingles.clear();
}

void EntrySearch::passOver(const AirEntry& found, AirFault fault)
{
    m_jingles = found.jingles;
    ++m_places;
    tellFault(found.entry, fault);
}

void EntrySearch::tellFault(const MlvPlaylistDetail& entry, AirFault fault)
{
    if (m_failed.insert(entry.PLID).second) {
        m_leftOut(entry, fault);
    }
}

Plid EntrySearch::first() const
{
    const auto field = m_list.ahead(m_isFresh ? 0 : 1);
    return field ? field->PLID : Plid{};
}

} // namespace melovane
