#include "player/frame_ring.h"

namespace melovane {

static_assert((FrameRing::kCapacity & (FrameRing::kCapacity - 1)) == 0, "a power of two");

FrameRing::FrameRing()
    : m_frames(std::make_unique_for_overwrite<StereoFrame[]>(kCapacity))
{}

void FrameRing::reset(qint64 first)
{
    m_first = first;
    m_released.store(first, std::memory_order_relaxed);
    m_end.store(first, std::memory_order_release);
}

qint64 FrameRing::space() const
{
    return kCapacity -
           (m_end.load(std::memory_order_relaxed) - m_released.load(std::memory_order_acquire));
}

void FrameRing::write(std::span<const StereoFrame> frames)
{
    qint64 place = m_end.load(std::memory_order_relaxed);
    for (const StereoFrame& frame : frames) {
        m_frames[place++ & (kCapacity - 1)] = frame;
    }
    m_end.store(place, std::memory_order_release);
}

const StereoFrame* FrameRing::stretch(qint64 place, std::span<StereoFrame> spare) const
{
    const qint64 slot = place & (kCapacity - 1);
    if (place >= m_first && slot + std::ssize(spare) <= kCapacity) {
        return &m_frames[slot];
    }
    for (size_t i = 0; i < spare.size(); ++i) {
        spare[i] = at(place + static_cast<qint64>(i));
    }
    return spare.data();
}

} // namespace melovane
