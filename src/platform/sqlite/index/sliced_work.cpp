#include "platform/sqlite/index/sliced_work.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace melovane::sqlite {

namespace {

/// What it takes to begin a loop, of a step.
constexpr double kShareOfBegin = 0.02;

} // namespace

void SlicedWork::add(std::function<std::size_t()> begin, std::size_t atOnce, Loop loop)
{
    m_parts.push_back({std::move(begin), atOnce, std::move(loop)});
}

bool SlicedWork::step()
{
    // A loop that ends early leaves its share of the step to the next one.
    for (double share = 1; share > 0 && !m_parts.empty();) {
        const Part& part = m_parts.front();
        if (!std::exchange(m_begun, true)) {
            m_next = 0;
            m_size = part.begin();
        }
        const auto room = std::size_t(std::ceil(share * double(part.atOnce)));
        const std::size_t end = std::min(m_size, m_next + room);
        if (m_next < end) {
            part.loop(m_next, end);
        }
        share -= double(end - m_next) / double(part.atOnce);
        m_next = end;
        if (m_next == m_size) {
            m_parts.pop_front();
            m_begun = false;
            share -= kShareOfBegin;
        }
    }
    return !m_parts.empty();
}

} // namespace melovane::sqlite
