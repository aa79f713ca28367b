#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace melovane {

class FileLock;
class Files;

/// Lets one rebuild at a time into a library, and one more of each kind wait for it: what waits
/// will see everything that was written before it begins, so a third has nothing to add.
///
/// The kernel frees the locks when a program ends, however it ends.
class RebuildLocks
{
public:
    /// \param folders of the lock files, the first that is there is used
    /// \param work    what is asked for; equal texts are the same work
    RebuildLocks(const Files& files,
                 const QStringList& folders,
                 const QString& library,
                 const QString& work);
    ~RebuildLocks();
    RebuildLocks(const RebuildLocks&) = delete;
    RebuildLocks& operator=(const RebuildLocks&) = delete;

    /// Waits for a rebuild that runs. False when another program waits for the same work already.
    /// Where no lock can be made, and when a rebuild takes longer than any should, it is true: the
    /// tables keep themselves whole.
    [[nodiscard]] bool claim();

private:
    QString m_running; ///< path of the lock of the one that works
    QString m_waiting; ///< path of the lock of the one that waits for the same work
    std::unique_ptr<FileLock> m_lock;
};

} // namespace melovane
