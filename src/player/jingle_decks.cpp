#include "player/jingle_decks.h"

#include <algorithm>

namespace melovane {

namespace {

constexpr std::array kDecks = {AirDeck::Jingle1, AirDeck::Jingle2, AirDeck::Jingle3,
                               AirDeck::Jingle4, AirDeck::Jingle5};

bool isTaken(const DeckReport& report)
{
    return report.state == DeckState::Loading || report.state == DeckState::Ready ||
           report.state == DeckState::Playing;
}

} // namespace

JingleDecks::JingleDecks(AirEngine& engine, std::function<AirSettings()> settings)
    : m_engine(engine)
    , m_settings(std::move(settings))
{}

bool JingleDecks::holds(const JinglePlace& place) const
{
    return place.load != 0 && m_engine.report(place.deck).load == place.load;
}

AirDeck JingleDecks::take()
{
    const int players = std::clamp(m_settings().jinglePlayers, 1, int(kDecks.size()));
    int taken = m_next % players;
    for (int step = 0; step < players; ++step) {
        const int candidate = (m_next + step) % players;
        if (!isTaken(m_engine.report(kDecks[size_t(candidate)]))) {
            taken = candidate;
            break;
        }
    }
    m_next = (taken + 1) % players;
    return kDecks[size_t(taken)];
}

JinglePlace JingleDecks::play(const MlvPlaylistDetail& jingle, const JinglePlace& before)
{
    JinglePlace place;
    place.deck = holds(before) ? before.deck : take();
    place.load = m_engine.load(place.deck, entryToSound(jingle, m_settings()));
    m_engine.startNow(place.deck);
    return place;
}

bool JingleDecks::sounds(const JinglePlace& place) const
{
    return holds(place) && m_engine.report(place.deck).state == DeckState::Playing;
}

void JingleDecks::stop()
{
    for (const AirDeck deck : kDecks) {
        m_engine.fadeOut(deck, m_settings().fadeOut);
    }
}

} // namespace melovane
