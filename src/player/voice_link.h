#pragma once

#include "player/air_engine.h"
#include "player/command_queue.h"
#include "player/equaliser.h"
#include "player/fade_curve.h"
#include "player/frame_ring.h"

#include <atomic>

namespace melovane {

/// How an entry sounds, as far as it may be changed while it plays.
struct VoiceShape
{
    double gain = 1;
    double pitch = 1; ///< speed, 1 is the file's own
    FadeCurve fadeOut;
    BandGains bands = {1, 1, 1, 1};
};

/// What plays next on a deck.
struct VoicePlan
{
    quint32 load = 0;
    int sampleRate = kAirRate;
    qint64 from = 0; ///< sample of the file
    FadeCurve fadeIn;
    VoiceShape shape;
};

/// When a deck starts.
struct StartRule
{
    enum class When
    {
        Never,
        Now,
        AtFrame,   ///< of the card
        BeforeEnd, ///< where another deck has so many frames of the card to go
    };

    When when = When::Never;
    qint64 frames = 0;
    AirDeck of = AirDeck::A;
};

/// What the window asks of a deck; meant for one load, a later one does not hear it.
struct VoiceCommand
{
    enum class Kind
    {
        Start,
        Fade,
        Shape
    };

    Kind kind = Kind::Start;
    quint32 load = 0;
    StartRule start;
    VoiceShape shape;
    int frames = 0; ///< of the fade, or of the way to another speed
};

/// What the three threads of a deck share: the window asks, the decoding thread fills, the card's
/// thread mixes and tells. No lock anywhere.
struct VoiceLink
{
    enum class Owner : quint8
    {
        Feeder,
        Mix
    };

    enum class Recall : quint8
    {
        None,
        Reload, ///< something else is to be played
        Seek,   ///< the same goes on from another place
    };

    // From the window to the mix.
    CommandQueue<VoiceCommand, 256> commands;

    /// Who may touch plan and the ring's beginning. The feeder gives them to the mix with a plan,
    /// the mix gives them back when it has played to the end or was told to by recall.
    std::atomic<Owner> owner = Owner::Feeder;
    std::atomic<Recall> recall = Recall::None;
    VoicePlan plan;
    FrameRing ring;
    /// Sample of the file behind the last to be heard. The ring holds SincTable::kAhead + 1 more.
    std::atomic<qint64> end = 0;

    /// The last load that could not be decoded: it never comes.
    std::atomic<quint32> failed = 0;

    // From the mix to the window, once a block.
    std::atomic<quint32> load = 0;
    std::atomic<DeckState> state = DeckState::Empty;
    std::atomic<bool> startsLater = false;
    std::atomic<bool> fadesAway = false;
    std::atomic<qint64> startedAt = -1;
    std::atomic<double> position = 0;  ///< sample of the file
    std::atomic<double> remaining = 0; ///< frames of the card
    std::atomic<int> level = 0;
    std::atomic<int> underruns = 0;
};

} // namespace melovane
