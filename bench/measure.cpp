#include "bench/measure.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <ctime>

namespace melovane::bench {

using namespace Qt::Literals::StringLiterals;

double cpuMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

Cost measured(const std::function<void()>& work)
{
    const double cpu = cpuMilliseconds();
    QElapsedTimer timer;
    timer.start();
    work();
    return {double(timer.nsecsElapsed()) / 1e6, cpuMilliseconds() - cpu};
}

Cost leastOf(int tries, const std::function<void()>& work)
{
    Cost least = measured(work);
    for (int run = 1; run < tries; ++run) {
        const Cost cost = measured(work);
        least = {std::min(least.wall, cost.wall), std::min(least.cpu, cost.cpu)};
    }
    return least;
}

double residentMegabytes()
{
    QFile status(u"/proc/self/statm"_s);
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    constexpr double kPage = 4096;
    return status.readAll().split(' ').value(1).toDouble() * kPage / 1e6;
}

} // namespace melovane::bench
