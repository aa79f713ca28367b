#pragma once

#include "platform/linux/job_locks.h"

#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

/// The job that runs, a program of the suite without a window. It takes the lock of the library
/// along, so that no other jobs program begins while it works, even when this one was killed.
class JobProcess
{
public:
    /// \param ended called from the message loop with whether the job did all of its work
    explicit JobProcess(std::function<void(bool allDone)> ended);

    /// \param lock path of the library's lock
    /// False when somebody holds the lock, or the program cannot be started.
    [[nodiscard]] bool
    start(const QString& program, const QStringList& arguments, const QString& lock);

    /// Asks it to end, makes it when it does not, and waits. Every job can be ended at any line.
    void stop();

private:
    std::function<void(bool)> m_ended;
    InheritedLock m_lock;
    QProcess m_process;
};

} // namespace melovane
