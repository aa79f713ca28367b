#pragma once

#include <QSocketNotifier>

#include <csignal>
#include <functional>
#include <memory>
#include <vector>

namespace melovane {

/// Turns the signals that ask a program to end (SIGTERM of the desktop's session, SIGINT, SIGHUP)
/// into a call from the message loop, so that it ends as if its window had been closed. One at a
/// time; at its end the signals do again what they did before.
class EndSignals
{
public:
    /// \param asked called in the message loop, once for signals that come together. Without a
    ///        free descriptor the signals stay as they are
    explicit EndSignals(std::function<void()> asked);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    struct Former
    {
        int number;
        struct sigaction action;
    };

    void arrived();

    std::function<void()> m_asked;
    int m_reader = -1;
    std::vector<Former> m_former;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace melovane
