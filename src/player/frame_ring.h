#pragma once

#include <QtGlobal>

#include <atomic>
#include <memory>
#include <span>

namespace melovane {

/// One moment of a file: 16 bits each side.
struct StereoFrame
{
    qint16 left = 0;
    qint16 right = 0;

    bool operator==(const StereoFrame&) const = default;
};

/// A stretch of a file on its way from the thread that decodes to the one that mixes.
///
/// Places are those of the file, in samples of one channel. One thread each side, no lock. Whoever
/// reads may go back and forth between what it has not released and end().
class FrameRing
{
public:
    /// More than ten seconds at every rate that MPEG knows.
    static constexpr qint64 kCapacity = qint64{1} << 19;

    FrameRing();

    // The side that decodes.

    /// Empties it; the next frame written is the file's `first`. Only while nobody reads.
    void reset(qint64 first);
    /// Free places.
    [[nodiscard]] qint64 space() const;
    /// Adds frames, at most space(); they can be read at once.
    void write(std::span<const StereoFrame> frames);

    // The side that mixes.

    /// One behind the last frame written.
    [[nodiscard]] qint64 end() const { return m_end.load(std::memory_order_acquire); }

    /// A frame that is there; before the first one it was silent.
    [[nodiscard]] StereoFrame at(qint64 place) const
    {
        return place < m_first ? StereoFrame() : m_frames[place & (kCapacity - 1)];
    }

    /// As many frames as `spare` has, one behind the other from there on: where they lie, or copied
    /// to `spare` around the end of the memory and before the first one.
    [[nodiscard]] const StereoFrame* stretch(qint64 place, std::span<StereoFrame> spare) const;

    /// What lies before is not read any more.
    void release(qint64 place) { m_released.store(place, std::memory_order_release); }

private:
    /// Not cleared, so that its memory is taken with the first file only.
    std::unique_ptr<StereoFrame[]> m_frames;
    qint64 m_first = 0;
    std::atomic<qint64> m_end = 0;
    std::atomic<qint64> m_released = 0;
};

} // namespace melovane
