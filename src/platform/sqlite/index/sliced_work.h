#pragma once

#include <cstddef>
#include <deque>
#include <functional>

namespace melovane::sqlite {

/// Long work that can stop anywhere: loops that follow each other, of which a few thousand items
/// are done at a time.
class SlicedWork
{
public:
    /// Items from `first` to before `end`.
    using Loop = std::function<void(std::size_t first, std::size_t end)>;

    /// A loop to be done behind those that are there.
    ///
    /// \param begin called when the loops before it have ended; returns the number of items
    /// \param atOnce items that take about a millisecond
    void add(std::function<std::size_t()> begin, std::size_t atOnce, Loop loop);

    /// Goes on for about a millisecond. False when nothing is left.
    [[nodiscard]] bool step();

private:
    struct Part
    {
        std::function<std::size_t()> begin;
        std::size_t atOnce = 1;
        Loop loop;
    };

    std::deque<Part> m_parts;
    std::size_t m_next = 0;
    std::size_t m_size = 0;
    bool m_begun = false; ///< the first of the parts
};

} // namespace melovane::sqlite
