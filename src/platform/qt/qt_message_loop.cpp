#include "platform/qt/qt_message_loop.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>

namespace melovane {

namespace {

class QtTimer : public Timer
{
public:
    QtTimer(std::chrono::milliseconds interval, std::function<void()> handler)
    {
        m_timer.setInterval(interval);
        m_timer.callOnTimeout(&m_timer, std::move(handler));
    }

    void start() override { m_timer.start(); }

    void stop() override { m_timer.stop(); }

    [[nodiscard]] bool isActive() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
};

} // namespace

std::unique_ptr<Timer> QtMessageLoop::makeTimer(std::chrono::milliseconds interval,
                                                std::function<void()> handler)
{
    return std::make_unique<QtTimer>(interval, std::move(handler));
}

void QtMessageLoop::turn()
{
    ++m_turns;
    const QScopeGuard done([this] { --m_turns; });
    QCoreApplication::processEvents();
}

bool QtMessageLoop::isNested() const
{
    // The application's own loop is the first one.
    return m_turns > 0 || QThread::currentThread()->loopLevel() > 1;
}

} // namespace melovane
