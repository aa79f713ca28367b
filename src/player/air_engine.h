#pragma once

#include "platform/media/player.h"
#include "player/entry_sound.h"

#include <QString>

#include <array>

namespace melovane {

/// A place for one file. Two take turns with the list, the others are for jingles.
enum class AirDeck : quint8
{
    A,
    B,
    Jingle1,
    Jingle2,
    Jingle3,
    Jingle4,
    Jingle5,
};

inline constexpr std::array kAirDecks = {AirDeck::A,       AirDeck::B,       AirDeck::Jingle1,
                                         AirDeck::Jingle2, AirDeck::Jingle3, AirDeck::Jingle4,
                                         AirDeck::Jingle5};

enum class DeckState
{
    Empty,
    Loading, ///< the file is being opened and measured
    Ready,   ///< the beginning is decoded, it starts to the sample
    Playing,
    Ended,  ///< played to its end, also when the file held less than it promised
    Failed, ///< the file cannot be played: known before it would be heard
};

/// What a deck does, as of the last block that its card took.
struct DeckReport
{
    DeckState state = DeckState::Empty;
    quint32 load = 0;                  ///< the number that load() gave
    PlayFault fault = PlayFault::None; ///< why it failed, or ended before its last frame
    bool startsLater = false;          ///< told to start, and not there yet
    bool fadesAway = false;            ///< told to stop, and still heard
    qint64 startedAt = -1;             ///< frame of the card of its first sample; -1 before
    double positionMs = 0;             ///< in the file
    double fromMs = 0;                 ///< in the file, of its first sample
    double toMs = 0;                   ///< in the file, of its end; shorter files told already
    double remainingMs = 0;            ///< until its end, at the speed that it has now
    int level = 0;                     ///< loudest sample of the last block, 0 to 32767
    int underruns = 0;                 ///< times that decoding came too late, since load()
};

/// An output of the engine. One without a card of its own has everything mixed into the first.
struct CardReport
{
    QString name;        ///< that was asked for, empty: the system's choice
    bool isOpen = false; ///< something takes the sound
    bool isLost = false; ///< the card asked for is gone, the system's choice stands in for it
    qint64 frames = 0;   ///< taken since it was opened first: the clock of startAt()
};

/// The sound on air: decks that are decoded ahead, mixed to the sample and sent to one or two
/// cards.
///
/// All operations belong to the thread of the window, return at once and throw nothing: opening
/// files and cards is done beside. So a report tells a little later what came of them. Whatever is
/// asked for, nothing clicks: what was not prepared comes and goes within six milliseconds.
class AirEngine
{
public:
    virtual ~AirEngine() = default;

    /// Opens the outputs: the same name twice, or an empty second one, mixes everything into the
    /// first. A card that is not there is replaced by the system's choice, which is told, and taken
    /// back as soon as it is there and nothing plays on it.
    virtual void openCards(const QString& player1, const QString& player2) = 0;
    virtual void closeCards() = 0;
    /// \param output 0 or 1
    [[nodiscard]] virtual CardReport card(int output) const = 0;

    /// Puts an entry on a deck, stopped at its first frame; what was there fades away first. The
    /// file is opened, walked through and decoded beside: Ready or Failed in the report with this
    /// number.
    /// \return a number that no load had before, never 0
    virtual quint32 load(AirDeck deck, const EntrySound& sound) = 0;
    /// Stops and empties the deck.
    virtual void unload(AirDeck deck) = 0;

    // Starting. A deck that is still loading starts as soon as it is ready; each replaces what was
    // said before. A deck that plays, ended or failed does not care.

    virtual void startNow(AirDeck deck) = 0;
    /// The first sample stands at that frame of the deck's card; a frame gone by is now.
    virtual void startAt(AirDeck deck, qint64 cardFrame) = 0;
    /// The first sample stands where `of` has so many milliseconds to go: to the sample on the same
    /// card, whatever pitch and end `of` gets until then, and also when its file breaks off. At
    /// once when `of` has less to go or does not play.
    virtual void startBeforeEnd(AirDeck deck, AirDeck of, int ms) = 0;
    /// Takes back a start that is still to come.
    virtual void cancelStart(AirDeck deck) = 0;

    /// Falls silent within so many milliseconds, at least six, and ends there. A deck that is
    /// ready stays so.
    virtual void fadeOut(AirDeck deck, int ms) = 0;

    void stop(AirDeck deck) { fadeOut(deck, 0); }

    /// Goes on from that place of the file, in milliseconds: outside the entry's frames from the
    /// nearest of them. Stopped or ready decks stand there then.
    virtual void seek(AirDeck deck, double ms) = 0;
    /// The entry was edited: end, volume, pitch, equaliser and the curve of its end are taken over
    /// while it plays, gliding; the file, the start and the curve of the start only by load().
    virtual void update(AirDeck deck, const EntrySound& sound) = 0;
    /// \param pitch   1/100 percent
    /// \param glideMs time that the way takes, 0 for at once
    virtual void setPitch(AirDeck deck, int pitch, int glideMs) = 0;
    /// 0 to 10000, gliding over some milliseconds.
    virtual void setVolume(AirDeck deck, int volume) = 0;

    /// Volume of all decks but the jingles, while somebody speaks; kUnchangedVolume ends it.
    virtual void setTalkover(int volume, int glideMs) = 0;

    [[nodiscard]] virtual DeckReport report(AirDeck deck) const = 0;
};

} // namespace melovane
