#pragma once

#include "platform/linux/mp3_stream.h"
#include "platform/media/player.h"
#include "platform/media/sample_buffer.h"
#include "platform/system/timers.h"

#include <memory>

namespace melovane::linux_media {

/// `KSMPlay` over an MP3 decoder and a sound card.
///
/// Decodes ahead on the message loop: a loop that stands still is not heard for some two seconds.
class Mp3Player : public Player
{
public:
    /// \param output is closed before this ends; it and the loop outlive the player
    Mp3Player(AudioOutput& output, MessageLoop& loop);
    ~Mp3Player() override;

    [[nodiscard]] std::vector<SoundCard> cards() override { return m_output.cards(); }

    void open(int card) override;
    void close() override;

    PlayFault load(const QString& file) override;

    [[nodiscard]] bool isLoaded() const override { return m_stream.isOpen(); }

    void unload() override;

    PlayFault play() override;
    PlayFault playRange(double fromMs, double toMs) override;
    void stop() override;
    void seek(double ms) override;

    [[nodiscard]] bool isPlaying() const override { return m_playing; }

    void setVolume(int volume) override { m_buffer.setVolume(volume); }

    [[nodiscard]] int volume() const override { return m_buffer.volume(); }

    [[nodiscard]] double positionMs() const override;
    [[nodiscard]] double lengthMs() const override;
    [[nodiscard]] int lengthFrames() const override;

    void setOnLoaded(std::function<void()> handler) override { m_onLoaded = std::move(handler); }

    void setOnPosition(std::function<void(double)> handler) override
    {
        m_onPosition = std::move(handler);
    }

    void setOnEnded(std::function<void(PlayFault)> handler) override
    {
        m_onEnded = std::move(handler);
    }

private:
    PlayFault begin(qint64 from, qint64 to);
    [[nodiscard]] bool takeCard();
    void halt();
    void decodeAhead();
    void announcePosition();
    void keepTicking();
    [[nodiscard]] std::optional<PlayFault> reasonToEnd() const;
    void tick();
    void waitIdle();

    [[nodiscard]] qint64 sampleAt(double ms) const;
    [[nodiscard]] double msAt(qint64 sample) const;
    [[nodiscard]] qint64 position() const;
    [[nodiscard]] qint64 position(quint64 handedOver) const;

    AudioOutput& m_output;
    SampleBuffer m_buffer;
    Mp3Stream m_stream;
    std::unique_ptr<Timer> m_timerPlay;
    int m_card = kSystemCard;
    AudioFormat m_cardFormat; ///< that the output was opened with
    bool m_playing = false;
    bool m_announce = false;             ///< a position is still to be told, though nothing plays
    PlayFault m_fault = PlayFault::None; ///< why the end comes early
    int m_idleTicks = 0;

    // Places of the file, in samples of one channel. What plays began at m_start, when the buffer
    // counted m_startCount.
    qint64 m_start = 0;
    quint64 m_startCount = 0;
    qint64 m_next = 0; ///< to be decoded next
    qint64 m_end = 0;

    std::function<void()> m_onLoaded;
    std::function<void(double)> m_onPosition;
    std::function<void(PlayFault)> m_onEnded;
};

} // namespace melovane::linux_media
