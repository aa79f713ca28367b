#pragma once

#include "platform/system/worker.h"

#include <deque>
#include <functional>
#include <utility>

namespace melovane::test {

/// Works when the test says so.
class HeldWorker : public Worker
{
public:
    void run(std::function<void()> work, std::function<void()> done) override
    {
        waiting.emplace_back(std::move(work), std::move(done));
    }

    void finish()
    {
        while (!waiting.empty()) {
            const auto [work, done] = waiting.front();
            waiting.pop_front();
            work();
            done();
        }
    }

    std::deque<std::pair<std::function<void()>, std::function<void()>>> waiting;
};

} // namespace melovane::test
