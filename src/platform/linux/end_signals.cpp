#include "platform/linux/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <utility>

namespace melovane {

namespace {

/// Written by the handler, which may do nothing else.
std::atomic<int> writer{-1};

void noteSignal(int)
{
    const int before = errno;
    const char sign = 1;
    // A full pipe has been told already.
    [[maybe_unused]] const ssize_t written = ::write(writer, &sign, 1);
    errno = before;
}

} // namespace

EndSignals::EndSignals(std::function<void()> asked)
    : m_asked(std::move(asked))
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    m_reader = ends[0];
    writer = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_reader, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { arrived(); });
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        action.sa_handler = noteSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        Former former{number, {}};
        if (::sigaction(number, &action, &former.action) == 0) {
            m_former.push_back(former);
        }
    }
}

EndSignals::~EndSignals()
{
    for (const Former& former : m_former) {
        ::sigaction(former.number, &former.action, nullptr);
    }
    m_notifier.reset();
    if (m_reader >= 0) {
        ::close(m_reader);
        ::close(writer.exchange(-1));
    }
}

void EndSignals::arrived()
{
    std::array<char, 64> signs{};
    while (::read(m_reader, signs.data(), signs.size()) > 0) {
    }
    m_asked();
}

} // namespace melovane
