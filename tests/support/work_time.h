#pragma once

#include <QtGlobal>

#include <time.h>

namespace melovane::test {

/// A stopwatch of the work of this process alone: what other programs do, and waiting, takes none.
class WorkTime
{
public:
    /// Milliseconds since it was made.
    [[nodiscard]] qint64 elapsed() const { return now() - m_begin; }

private:
    [[nodiscard]] static qint64 now()
    {
        timespec time = {};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
    }

    qint64 m_begin = now();
};

} // namespace melovane::test
