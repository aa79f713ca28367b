#include "shell/idle_work.h"

#include "platform/system/timers.h"

#include <QScopeGuard>

#include <algorithm>
#include <chrono>
#include <cstddef>
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
    std::vector<Slice> going;
    std::size_t next = 0;
    // Also when one of them fails: it is over then, the others go on.
    const auto keep = qScopeGuard([&] {
        std::move(present.begin() + std::ptrdiff_t(next), present.end(), std::back_inserter(going));
        m_work.insert(m_work.begin(), std::make_move_iterator(going.begin()),
                      std::make_move_iterator(going.end()));
        if (m_work.empty()) {
            m_timer->stop();
        }
    });
    while (next < present.size()) {
        Slice& slice = present[next++];
        if (slice()) {
            going.push_back(std::move(slice));
        }
    }
}

} // namespace melovane
