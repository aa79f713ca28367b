#pragma once

namespace melovane::test {

/// SQLite's memory with faults in it: the n-th request for memory is refused. While it lives, all
/// memory of SQLite is asked for one by one. No connection may be open when it begins or ends; one
/// at a time, one thread.
class FaultyMemory
{
public:
    FaultyMemory();
    ~FaultyMemory();
    FaultyMemory(const FaultyMemory&) = delete;
    FaultyMemory& operator=(const FaultyMemory&) = delete;

    /// \param nth from 1
    /// \param lasting all later requests are refused too
    void arm(int nth, bool lasting);

    /// Ends the faults. \return true when there was one
    bool disarm();

    /// Requests since arm().
    [[nodiscard]] int count() const;
};

} // namespace melovane::test
