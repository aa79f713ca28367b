#include "player/rehearsal.h"

#include "platform/system/timers.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace melovane {

namespace {

/// How often it decodes on and looks whether it is over.
constexpr std::chrono::milliseconds kTick{50};

/// After a stop the card is kept until the decks have faded away.
constexpr int kTicksToClose = 4;

/// Heard before and behind a mix that is longer than the rehearsal.
constexpr int kAroundMixMs = 2000;

/// The second entry is cut off where nobody meant it to end.
constexpr int kCutMs = 500;

int framesOf(int ms)
{
    return static_cast<int>(std::lround(ms / kFrameMs));
}

int scaled(int volume, int by)
{
    return static_cast<int>(std::lround(double(volume) * by / kUnchangedVolume));
}

} // namespace

Rehearsal::Rehearsal(Parts parts)
    : m_parts(std::move(parts))
    , m_timer(m_parts.loop.makeTimer(kTick, [this] { tick(); }))
{}

Rehearsal::~Rehearsal() = default;

void Rehearsal::play(const MlvPlaylistDetail& from,
                     const MlvPlaylistDetail& to,
                     const QString& card,
                     int volume)
{
    const AirSettings settings = m_parts.settings();
    const int mix = mixLength(from, to, settings);
    const int heard = framesOf(std::max(kLengthMs, mix + kAroundMixMs));
    EntrySound first = entryToSound(from, settings);
    first.frameStart = std::max(first.frameStart, first.frameStop - heard);
    first.fadeOut = {from.mixOutStyle, mix};
    first.volume = scaled(first.volume, volume);
    EntrySound second = entryToSound(to, settings);
    if (second.frameStop <= second.frameStart || second.frameStop > second.frameStart + heard) {
        second.frameStop = second.frameStart + heard;
        second.fadeOut = plainFade(kCutMs);
    }
    second.fadeIn = {to.mixInStyle, mix};
    second.volume = scaled(second.volume, volume);

    m_fromName = from.DName;
    m_toName = to.DName;
    m_isPlaying = true;
    m_ticksToClose = 0;
    m_parts.engine.openCards(card, {});
    m_parts.engine.load(AirDeck::A, first);
    m_parts.engine.load(AirDeck::B, second);
    m_parts.engine.startNow(AirDeck::A);
    m_parts.engine.startBeforeEnd(AirDeck::B, AirDeck::A, mix);
    m_parts.beat();
    m_timer->start();
}

void Rehearsal::stop()
{
    if (m_isPlaying) {
        m_isPlaying = false;
        m_ticksToClose = kTicksToClose;
        m_parts.engine.unload(AirDeck::A);
        m_parts.engine.unload(AirDeck::B);
        m_parts.beat();
    }
}

void Rehearsal::end(PlayFault fault, const QString& file)
{
    stop();
    m_parts.ended(fault, file);
}

/// Both are over, or the only one that there is.
bool Rehearsal::isAtEnd() const
{
    return m_parts.engine.report(AirDeck::A).state == DeckState::Ended &&
           m_parts.engine.report(AirDeck::B).state == DeckState::Ended;
}

void Rehearsal::tick()
{
    m_parts.beat();
    if (!m_isPlaying) {
        if (--m_ticksToClose <= 0) {
            m_timer->stop();
            m_parts.engine.closeCards();
            m_parts.beat();
        }
        return;
    }
    const DeckReport first = m_parts.engine.report(AirDeck::A);
    const DeckReport second = m_parts.engine.report(AirDeck::B);
    const CardReport card = m_parts.engine.card(0);
    if (first.state == DeckState::Failed) {
        end(first.fault, m_fromName);
    } else if (second.state == DeckState::Failed) {
        end(second.fault, m_toName);
    } else if (!card.isOpen || card.isLost) {
        // The system's choice may be the card that the audience hears.
        end(PlayFault::NoCard, m_fromName);
    } else if (isAtEnd()) {
        end(PlayFault::None, {});
    }
}

} // namespace melovane
