#pragma once

#include "care/merge_journal.h"
#include "care/recycle_run.h"

#include <atomic>

namespace melovane {

class Database;
class DBEngine;

/// Ends merges of doubles that were killed while their files were to go to the recycle folder:
/// files whose tracks are gone follow them. One thread calls run(), another one end().
class LeftMerges
{
public:
    LeftMerges(std::function<std::unique_ptr<DBEngine>()> makeEngine,
               QString library,
               RecycleTools tools);

    /// Moves what the journals beside the library name. A file stays that a row has again, that
    /// another one took the place of, or that cannot be moved. What lies on a volume that is away
    /// waits for the next time, and so does everything while the library cannot be asked.
    void run();

    /// run() ends at the next file; the rest waits for the next time.
    void end() { m_isEnded = true; }

private:
    using MakeEngine = std::function<std::unique_ptr<DBEngine>()>;

    [[nodiscard]] static std::vector<MergedFile> goneOf(Database& database,
                                                        std::vector<MergedFile> all);
    [[nodiscard]] bool moveAll(Files& files, const std::vector<MergedFile>& gone);

    const MakeEngine m_makeEngine;
    const QString m_library;
    const RecycleTools m_tools;
    std::atomic<bool> m_isEnded = false;
};

} // namespace melovane
