#include "platform/qt/qt_worker.h"

namespace melovane {

QtWorker::QtWorker()
{
    m_thread.setMaxThreadCount(1);
}

QtWorker::~QtWorker()
{
    m_thread.clear();
    m_thread.waitForDone();
}

void QtWorker::run(std::function<void()> work, std::function<void()> done)
{
    m_thread.start([this, work = std::move(work), done = std::move(done)] {
        work();
        QMetaObject::invokeMethod(this, done, Qt::QueuedConnection);
    });
}

} // namespace melovane
