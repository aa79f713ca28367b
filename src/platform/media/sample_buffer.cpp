#include "platform/media/sample_buffer.h"

#include <algorithm>

namespace melovane {

namespace {

constexpr quint64 kMask = SampleBuffer::kCapacity - 1;
static_assert((SampleBuffer::kCapacity & kMask) == 0, "a power of two");

qint16 scaled(qint16 sample, int volume)
{
    const int product = sample * volume;
    const int half = product < 0 ? -kFullVolume / 2 : kFullVolume / 2;
    return static_cast<qint16>((product + half) / kFullVolume);
}

} // namespace

SampleBuffer::SampleBuffer()
    : m_samples(std::make_unique_for_overwrite<qint16[]>(kCapacity))
{}

std::atomic_ref<qint16> SampleBuffer::at(quint64 index) const noexcept
{
    // After a discard the audio thread may still be reading what is written anew. It then drops its
    // block; only the single access must be whole.
    return std::atomic_ref(m_samples[index & kMask]);
}

quint64 SampleBuffer::space() const
{
    return kCapacity - (m_writing - handedOver());
}

void SampleBuffer::write(std::span<const qint16> samples)
{
    for (const qint16 sample : samples) {
        at(m_writing++).store(sample, std::memory_order_relaxed);
    }
}

void SampleBuffer::publish()
{
    m_write.store(m_writing, std::memory_order_release);
}

quint64 SampleBuffer::discard()
{
    publish();
    return m_read.exchange(m_writing, std::memory_order_acq_rel);
}

void SampleBuffer::setVolume(int volume)
{
    m_volume.store(std::clamp(volume, 0, kFullVolume), std::memory_order_relaxed);
}

void SampleBuffer::fill(std::span<qint16> samples) noexcept
{
    quint64 from = m_read.load(std::memory_order_acquire);
    const quint64 there = m_write.load(std::memory_order_acquire) - from;
    const auto count = static_cast<size_t>(std::min<quint64>(samples.size(), there));
    for (size_t i = 0; i < count; ++i) {
        samples[i] = at(from + i).load(std::memory_order_relaxed);
    }
    // Fails when the samples were discarded meanwhile: then none of them may be heard.
    const bool taken =
        m_read.compare_exchange_strong(from, from + count, std::memory_order_acq_rel);
    const auto sound = samples.first(taken ? count : 0);
    amplify(sound);
    std::ranges::fill(samples.subspan(sound.size()), qint16{0});
}

void SampleBuffer::amplify(std::span<qint16> samples) noexcept
{
    const int wanted = volume();
    // Out of silence nothing clicks, and the first block has its volume at once.
    const int before = m_sounding ? m_heardVolume : wanted;
    const auto size = static_cast<int>(samples.size());
    for (int i = 0; i < size; ++i) {
        qint16& sample = samples[static_cast<size_t>(i)];
        sample = scaled(sample, wanted - (wanted - before) * (size - i) / size);
    }
    m_heardVolume = wanted;
    m_sounding = size > 0;
}

} // namespace melovane
