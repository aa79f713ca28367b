#include "player/card_mixer.h"

#include <algorithm>
#include <cmath>

namespace melovane {

namespace {

constexpr int kFramesBits = 32;
constexpr double kLoudest = 32767;

qint16 sample(double value)
{
    return static_cast<qint16>(
        std::lrint(std::clamp(value * kSampleScale, -kSampleScale, kLoudest)));
}

} // namespace

void CardMixer::setTalkover(int volume, int glideMs)
{
    const auto level = static_cast<quint64>(std::clamp(volume, 0, kUnchangedVolume));
    const auto frames =
        static_cast<quint64>(std::max<qint64>(kEdge, qint64{glideMs} * kAirRate / 1000));
    m_wantedTalkover.store(level << kFramesBits | frames, std::memory_order_relaxed);
}

void CardMixer::fill(std::span<qint16> samples) noexcept
{
    const quint64 wanted = m_wantedTalkover.load(std::memory_order_relaxed);
    if (wanted != m_takenTalkover) {
        m_takenTalkover = wanted;
        m_talkover.to(static_cast<double>(wanted >> kFramesBits) / kUnchangedVolume,
                      static_cast<int>(wanted & 0xffffffff));
    }
    for (AirVoice* voice : m_voices) {
        if (voice != nullptr) {
            voice->begin(samples.empty());
        }
    }
    qint64 frame = m_frames.load(std::memory_order_relaxed);
    for (size_t i = 0; i + 1 < samples.size(); i += 2) {
        // What goes into the limiter now is heard when it comes out.
        startDue(frame + Limiter::kDelay);
        const Stereo out = m_limiter.process(mixed());
        samples[i] = sample(out.left);
        samples[i + 1] = sample(out.right);
        ++frame;
    }
    m_frames.store(frame, std::memory_order_relaxed);
    for (AirVoice* voice : m_voices) {
        if (voice != nullptr) {
            voice->end();
        }
    }
}

/// Before any deck moves on by this frame: so it does not matter which deck comes first.
void CardMixer::startDue(qint64 frame)
{
    for (AirVoice* voice : m_voices) {
        if (voice != nullptr && voice->waits() && isDue(*voice, frame)) {
            voice->start(frame);
        }
    }
}

bool CardMixer::isDue(const AirVoice& voice, qint64 frame) const
{
    const StartRule& rule = voice.rule();
    switch (rule.when) {
    case StartRule::When::Never:
        return false;
    case StartRule::When::Now:
        return true;
    case StartRule::When::AtFrame:
        return frame >= rule.frames;
    case StartRule::When::BeforeEnd:
        return leaderLets(rule);
    }
    return false;
}

bool CardMixer::leaderLets(const StartRule& rule) const
{
    const auto number = static_cast<size_t>(rule.of);
    const auto frames = static_cast<double>(rule.frames);
    if (const AirVoice* leader = m_voices[number]) {
        return !leader->isComing() && (!leader->isPlaying() || leader->remaining() <= frames);
    }
    // On the other card: exact to one of its blocks.
    const VoiceLink& link = m_links[number];
    const bool isComing = link.startsLater.load(std::memory_order_relaxed);
    const bool plays = link.state.load(std::memory_order_relaxed) == DeckState::Playing;
    return !isComing && (!plays || link.remaining.load(std::memory_order_relaxed) <= frames);
}

Stereo CardMixer::mixed()
{
    const double talkover = m_talkover.next();
    Stereo sum;
    for (size_t i = 0; i < m_voices.size(); ++i) {
        if (m_voices[i] == nullptr || !m_voices[i]->isPlaying()) {
            continue;
        }
        const Stereo frame = m_voices[i]->next();
        const double gain = i < static_cast<size_t>(AirDeck::Jingle1) ? talkover : 1;
        sum.left += frame.left * gain;
        sum.right += frame.right * gain;
    }
    return sum;
}

} // namespace melovane
