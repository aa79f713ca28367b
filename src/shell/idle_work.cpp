#include "shell/idle_work.h"

#include "platform/system/timers.h"

#include <chrono>
#include <iterator>
#include <utility>

namespace melovane {

namespace {

constexpr std::chrono::milliseconds kIdleInterval{2};

} // namespace

IdleWork::IdleWork(MessageLoop& loop)
    : m_timer(loop.makeTimer(kIdleInterval, [this] { runSlices(); }))
{}

IdleWork::~IdleWork() = default;

void IdleWork::add(Slice slice)
{
    m_work.push_back(std::move(slice));
    m_timer->start();
}

void IdleWork::runSlices()
{
    // Kept apart while they run: what a slice adds comes behind them.
    std::vector<Slice> present = std::exchange(m_work, {});
    std::erase_if(present, [](const Slice& slice) { return !slice(); });
    m_work.insert(m_work.begin(), std::make_move_iterator(present.begin()),
                  std::make_move_iterator(present.end()));
    if (m_work.empty()) {
        m_timer->stop();
    }
}

} // namespace melovane
