#pragma once

#include "platform/media/audio_output.h"

#include <atomic>
#include <memory>

namespace melovane {

/// Volumes of the suite: 0 to 10000.
inline constexpr int kFullVolume = 10000;

/// Samples on their way from the message loop, which decodes ahead, to the audio thread.
///
/// One thread each side, no lock: neither side ever waits for the other. Samples are counted from
/// the making of the buffer and never wrap, so that a count tells which sample was heard.
class SampleBuffer final : public SampleSource
{
public:
    /// Samples that it holds: at 44100 Hz and two channels almost three seconds.
    static constexpr quint64 kCapacity = quint64{1} << 18;

    SampleBuffer();

    // The side of the message loop.

    /// Free places.
    [[nodiscard]] quint64 space() const;

    /// Adds samples, at most space(). They are not heard before publish(): a start is heard whole
    /// or not yet, never with a hole behind its first samples.
    void write(std::span<const qint16> samples);
    void publish();

    /// Drops what has not been handed over. No sample written before is heard afterwards.
    /// \return the count handed over just before; the count goes on behind the dropped ones
    quint64 discard();

    /// Samples that the audio thread has taken, dropped ones included.
    [[nodiscard]] quint64 handedOver() const { return m_read.load(std::memory_order_acquire); }

    /// Samples written, published or not.
    [[nodiscard]] quint64 written() const { return m_writing; }

    /// 0 to kFullVolume; beyond is taken as the nearest. Heard from the next block on, which glides
    /// to it.
    void setVolume(int volume);

    [[nodiscard]] int volume() const { return m_volume.load(std::memory_order_relaxed); }

    // The side of the audio thread.

    /// What there is, then silence.
    void fill(std::span<qint16> samples) noexcept override;

private:
    [[nodiscard]] std::atomic_ref<qint16> at(quint64 index) const noexcept;
    void amplify(std::span<qint16> samples) noexcept;

    /// Not cleared, so that its memory is taken with the first track only.
    std::unique_ptr<qint16[]> m_samples;
    quint64 m_writing = 0; ///< message loop alone
    std::atomic<quint64> m_write = 0;
    std::atomic<quint64> m_read = 0;
    std::atomic<int> m_volume = kFullVolume;
    int m_heardVolume = kFullVolume; ///< audio thread alone, like the next
    bool m_sounding = false;
};

} // namespace melovane
