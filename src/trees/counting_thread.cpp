#include "trees/counting_thread.h"

#include <utility>

namespace melovane {

namespace {

/// Enough for neither side to wait while the other is held up for a moment.
constexpr std::size_t kBlocks = 16;

} // namespace

CountingThread::CountingThread(const std::vector<TrackBlock::Kind>& kinds, Count count)
    : m_blocks(kBlocks, TrackBlock(kinds))
    , m_count(std::move(count))
    , m_thread([this] { work(); })
{}

CountingThread::~CountingThread()
{
    forsake();
    end();
}

void CountingThread::forsake()
{
    const std::lock_guard guard(m_lock);
    m_isForsaken = true;
}

void CountingThread::pass()
{
    std::unique_lock guard(m_lock);
    ++m_passed;
    m_hasChanged.notify_all();
    m_hasChanged.wait(guard, [this] { return m_passed - m_counted < m_blocks.size(); });
    guard.unlock();
    block().clear();
}

void CountingThread::finish()
{
    end();
    if (m_error) {
        std::rethrow_exception(m_error);
    }
}

void CountingThread::end()
{
    {
        const std::lock_guard guard(m_lock);
        m_isLast = true;
    }
    m_hasChanged.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

/// A block stays the thread's until it is counted: the reader takes none that waits.
void CountingThread::work()
{
    std::unique_lock guard(m_lock);
    for (;;) {
        m_hasChanged.wait(guard, [this] { return m_counted < m_passed || m_isLast; });
        if (m_counted == m_passed) {
            return;
        }
        const bool isWanted = !m_isForsaken && !m_error;
        const TrackBlock& next = m_blocks[m_counted % m_blocks.size()];
        guard.unlock();
        std::exception_ptr error;
        if (isWanted) {
            try {
                m_count(next);
            } catch (...) { // the reader throws it on
                error = std::current_exception();
            }
        }
        guard.lock();
        ++m_counted;
        if (error) {
            m_error = error;
        }
        m_hasChanged.notify_all();
    }
}

} // namespace melovane
