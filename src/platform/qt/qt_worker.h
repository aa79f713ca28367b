#pragma once

#include "platform/system/worker.h"

#include <QObject>
#include <QThreadPool>

namespace melovane {

/// One thread that begins with the first work and ends when there was none for a while.
class QtWorker : public QObject, public Worker
{
    Q_OBJECT

public:
    QtWorker();
    /// Waits for the work that is being done; what has not begun is dropped.
    ~QtWorker() override;

    QtWorker(const QtWorker&) = delete;
    QtWorker& operator=(const QtWorker&) = delete;

    void run(std::function<void()> work, std::function<void()> done) override;

private:
    QThreadPool m_thread;
};

} // namespace melovane
