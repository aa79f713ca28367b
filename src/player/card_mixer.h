#pragma once

#include "platform/media/audio_output.h"
#include "player/air_voice.h"
#include "player/limiter.h"

#include <vector>

namespace melovane {

/// Mixes the decks of one card; runs on the card's own thread.
class CardMixer final : public SampleSource
{
public:
    /// Form of what it fills.
    static constexpr AudioFormat kFormat{kAirRate, 2};

    /// \param links of all decks, by their number; outlive the mixer
    explicit CardMixer(std::span<VoiceLink> links)
        : m_links(links)
    {}

    /// The decks that it mixes, by their number, null for those of another card. Only while no
    /// card asks it.
    void setVoices(std::vector<AirVoice*> voices) { m_voices = std::move(voices); }

    /// Volume of all decks but the jingles. From any thread.
    void setTalkover(int volume, int glideMs);

    /// Frames taken so far. From any thread.
    [[nodiscard]] qint64 frames() const { return m_frames.load(std::memory_order_relaxed); }

    /// An empty span obeys what was asked for, and lets what has to end end at once.
    void fill(std::span<qint16> samples) noexcept override;

private:
    [[nodiscard]] bool isDue(const AirVoice& voice, qint64 frame) const;
    [[nodiscard]] bool leaderLets(const StartRule& rule) const;
    void startDue(qint64 frame);
    [[nodiscard]] Stereo mixed();

    std::span<VoiceLink> m_links;
    std::vector<AirVoice*> m_voices;
    Limiter m_limiter;
    Glide m_talkover;
    std::atomic<quint64> m_wantedTalkover = 0; ///< volume, and behind it frames
    quint64 m_takenTalkover = 0;
    std::atomic<qint64> m_frames = 0;
};

} // namespace melovane
