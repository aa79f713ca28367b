#include "siblings/rebuildtree/rebuild_locks.h"

#include "platform/linux/job_locks.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/system/files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Longer than a rebuild of the largest library takes on the slowest disk.
constexpr std::chrono::minutes kLongestRebuild{5};

const QString kEnd = u".lock"_s;

} // namespace

RebuildLocks::RebuildLocks(const Files& files,
                           const QStringList& folders,
                           const QString& library,
                           const QString& work)
{
    m_running = jobLockFile(files, folders, u"rebuildtree"_s, library);
    m_waiting = m_running.chopped(m_running.isEmpty() ? 0 : kEnd.size()) + u'-' + work + kEnd;
}

RebuildLocks::~RebuildLocks() = default;

bool RebuildLocks::claim()
{
    if (m_running.isEmpty()) {
        return true;
    }
    m_lock = lockFile(m_running, std::chrono::milliseconds::zero());
    if (m_lock) {
        return true;
    }
    const auto place = lockFile(m_waiting, std::chrono::milliseconds::zero());
    if (!place) {
        return false;
    }
    m_lock = lockFile(m_running, kLongestRebuild);
    return true;
}

} // namespace melovane
