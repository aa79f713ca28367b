#include "siblings/rebuildtree/rebuild_locks.h"

#include "platform/linux/linux_file_lock.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Longer than a rebuild of the largest library takes on the slowest disk.
constexpr std::chrono::minutes kLongestRebuild{5};

QString nameFor(const Files& files, const QString& library)
{
    const FileFacts facts = files.facts(library).value_or(FileFacts{});
    return u"rebuildtree-%1-%2"_s.arg(facts.device, 0, 16).arg(facts.inode, 0, 16);
}

} // namespace

RebuildLocks::RebuildLocks(const Files& files,
                           const QStringList& folders,
                           const QString& library,
                           const QString& work)
{
    const auto folder = std::find_if(folders.begin(), folders.end(), [&](const QString& path) {
        return !path.isEmpty() && files.folderExists(path);
    });
    if (folder != folders.end()) {
        m_running = path::join(*folder, nameFor(files, library) + u".lock"_s);
        m_waiting = path::join(*folder, nameFor(files, library) + u'-' + work + u".lock"_s);
    }
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
