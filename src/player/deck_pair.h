#pragma once

#include "player/air_engine.h"
#include "player/air_entry.h"
#include "player/entry_to_sound.h"

#include <functional>

namespace melovane {

/// The two decks that take turns with a list: the present one, and the other, on which the next
/// entry stands ready or the former one fades away.
class DeckPair
{
public:
    /// \param engine outlives the pair
    DeckPair(AirEngine& engine, std::function<AirSettings()> settings);

    [[nodiscard]] AirDeck present() const { return m_present; }

    [[nodiscard]] AirDeck other() const;

    [[nodiscard]] DeckReport presentReport() const { return m_engine.report(m_present); }

    [[nodiscard]] DeckReport otherReport() const { return m_engine.report(other()); }

    /// They change their parts; what sounds goes on.
    void swap() { m_present = other(); }

    /// Puts an entry on the other deck, and gives it the number of its load.
    void load(AirEntry& entry, const FadeStyle& fadeIn);
    void emptyOther();
    void stopOther();
    void startOther();
    /// Both fall silent within so many milliseconds.
    void fadeOut(int ms);

    /// Of the present one. \param glideMs time that the way takes
    void setPitch(int pitch, int glideMs);

    /// The other one begins now, the present one ends within so many milliseconds.
    void goOver(const AirEntry& present, const FadeStyle& fade);
    /// The other one begins where the present one has the length of its fade to go.
    void planMix(const AirEntry& present, const FadeStyle& fade);
    /// The present one plays to its end, and the other one waits.
    void planNone(const AirEntry& present);

private:
    [[nodiscard]] EntrySound soundOf(const AirEntry& entry, const FadeStyle& fadeOut) const;

    AirEngine& m_engine;
    std::function<AirSettings()> m_settings;
    AirDeck m_present = AirDeck::B;
};

/// A fade along the curve that was prepared for a mix.
[[nodiscard]] FadeStyle mixFade(const MLVMixStyle& style, int ms);

} // namespace melovane
