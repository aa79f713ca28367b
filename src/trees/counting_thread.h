#pragma once

#include "trees/track_block.h"

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace melovane {

/// Has blocks of tracks counted on a thread of its own while the next ones are read. That thread
/// sees the blocks and what the counting keeps, never the library.
class CountingThread
{
public:
    using Count = std::function<void(const TrackBlock& block)>;

    /// \param kinds of the columns of the blocks
    /// \param count is called there, with one block after the other; nobody else may touch what it
    /// works on until finish() has returned
    CountingThread(const std::vector<TrackBlock::Kind>& kinds, Count count);
    /// As forsake(); waits for the block that is counted at present.
    ~CountingThread();
    CountingThread(const CountingThread&) = delete;
    CountingThread& operator=(const CountingThread&) = delete;

    /// The block that is filled at present; an empty one behind each pass().
    [[nodiscard]] TrackBlock& block() { return m_blocks[m_passed % m_blocks.size()]; }

    /// Has the present block counted; waits while no other is free.
    void pass();

    /// Returns when all blocks that were passed are counted; the present one is not. To be called
    /// once, as the last. \throws what counting has thrown; the blocks behind are not counted then
    void finish();

    /// Blocks that still wait are not counted.
    void forsake();

private:
    void work();
    void end();

    std::vector<TrackBlock> m_blocks; ///< those from m_counted up to m_passed belong to the thread
    Count m_count;
    std::uint64_t m_passed = 0; ///< written by the reader alone, under the lock
    std::mutex m_lock;          ///< guards all below, and the change of m_passed
    std::condition_variable m_hasChanged;
    std::uint64_t m_counted = 0;
    bool m_isLast = false;      ///< no block will come
    bool m_isForsaken = false;  ///< blocks that wait are not wanted
    std::exception_ptr m_error; ///< of the counting
    std::thread m_thread;
};

} // namespace melovane
