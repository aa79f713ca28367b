#pragma once

#include "player/air_engine.h"
#include "player/entry_to_sound.h"

#include <functional>

namespace melovane {

/// A jingle on its deck, as long as the deck has nothing else.
struct JinglePlace
{
    AirDeck deck = AirDeck::Jingle1;
    quint32 load = 0; ///< 0 for none
};

/// The decks that sound over the music. Whoever plays a jingle takes one of the free ones, or the
/// one that has been playing longest; as many as the user has set take turns.
class JingleDecks
{
public:
    /// \param engine outlives the decks
    JingleDecks(AirEngine& engine, std::function<AirSettings()> settings);

    /// Plays a jingle from its beginning.
    /// \param before where it was played last: there again, if nothing else came in between
    JinglePlace play(const MlvPlaylistDetail& jingle, const JinglePlace& before = {});

    [[nodiscard]] bool sounds(const JinglePlace& place) const;

    /// Fades all of them away.
    void stop();

private:
    [[nodiscard]] bool holds(const JinglePlace& place) const;
    [[nodiscard]] AirDeck take();

    AirEngine& m_engine;
    std::function<AirSettings()> m_settings;
    int m_next = 0;
};

} // namespace melovane
