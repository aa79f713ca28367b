#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>

namespace melovane {

/// Commands from one thread to another, in order, without a lock on either side.
template <typename Command, size_t Capacity> class CommandQueue
{
public:
    /// False when it is full: nothing was added.
    bool push(const Command& command)
    {
        const size_t write = m_write.load(std::memory_order_relaxed);
        if (write - m_read.load(std::memory_order_acquire) == Capacity) {
            return false;
        }
        m_commands[write % Capacity] = command;
        m_write.store(write + 1, std::memory_order_release);
        return true;
    }

    /// The oldest that was not taken yet.
    std::optional<Command> take()
    {
        const size_t read = m_read.load(std::memory_order_relaxed);
        if (read == m_write.load(std::memory_order_acquire)) {
            return {};
        }
        const Command command = m_commands[read % Capacity];
        m_read.store(read + 1, std::memory_order_release);
        return command;
    }

private:
    std::array<Command, Capacity> m_commands;
    std::atomic<size_t> m_write = 0;
    std::atomic<size_t> m_read = 0;
};

} // namespace melovane
