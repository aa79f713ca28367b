#pragma once

#include "platform/media/audio_output.h"
#include "platform/media/sound_stream.h"
#include "player/air_engine.h"
#include "player/card_keeper.h"
#include "player/card_mixer.h"
#include "player/deck_feeder.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace melovane {

/// The engine over files and cards.
///
/// Three sides: the window asks and reads reports, the cards' threads mix, and beat() opens files
/// and cards and decodes ahead. Whoever makes the engine has beat() called every kBeatMs, by one
/// thread of its own that may wait for discs; that thread ends before the engine does. A test calls
/// it between the blocks that it pulls out of an output without a clock.
class MixEngine final : public AirEngine
{
public:
    static constexpr int kBeatMs = 20;

    /// \param makeStream opens the files
    /// \param first,second outputs, outlive the engine; they are closed before it ends
    /// \param hurry has the next beat() come at once; may be empty
    MixEngine(const SoundStreamMaker& makeStream,
              AudioOutput& first,
              AudioOutput& second,
              std::function<void()> hurry = {});
    ~MixEngine() override;
    MixEngine(const MixEngine&) = delete;
    MixEngine& operator=(const MixEngine&) = delete;

    /// For an engine that is for one listener alone. \see CardKeeper; before the first beat
    void forbidStandIn();

    void openCards(const QString& player1, const QString& player2) override;
    void closeCards() override;
    [[nodiscard]] CardReport card(int output) const override;
    quint32 load(AirDeck deck, const EntrySound& sound) override;
    void unload(AirDeck deck) override;
    void startNow(AirDeck deck) override;
    void startAt(AirDeck deck, qint64 cardFrame) override;
    void startBeforeEnd(AirDeck deck, AirDeck of, int ms) override;
    void cancelStart(AirDeck deck) override;
    void fadeOut(AirDeck deck, int ms) override;
    void seek(AirDeck deck, double ms) override;
    void update(AirDeck deck, const EntrySound& sound) override;
    void setPitch(AirDeck deck, int pitch, int glideMs) override;
    void setVolume(AirDeck deck, int volume) override;
    void setTalkover(int volume, int glideMs) override;
    [[nodiscard]] DeckReport report(AirDeck deck) const override;

    /// Decodes ahead and looks after the cards. \see the class
    void beat();

private:
    static constexpr size_t kOutputs = 2;

    struct Deck
    {
        std::unique_ptr<DeckFeeder> feeder;
        std::unique_ptr<AirVoice> voice;
        quint32 load = 0; ///< 0 without any; the window's, as the next
        EntrySound sound;
    };

    [[nodiscard]] Deck& at(AirDeck deck);
    void send(AirDeck deck, VoiceCommand command);
    void start(AirDeck deck, const StartRule& rule);
    void reshape(AirDeck deck, int pitchMs);
    void hurry();
    void keepCards();
    void shareVoices(bool isTwo);
    [[nodiscard]] bool isSilent() const;

    SincTables m_tables;
    std::array<VoiceLink, kAirDecks.size()> m_links;
    std::array<Deck, kAirDecks.size()> m_decks;
    std::array<CardMixer, kOutputs> m_mixers;
    std::array<CardKeeper, kOutputs> m_keepers;
    std::function<void()> m_hurry;
    quint32 m_lastLoad = 0;
    std::atomic<bool> m_isTwo = false; ///< cards wanted
    bool m_sharesTwo = false;          ///< cards that the decks are shared over
};

} // namespace melovane
