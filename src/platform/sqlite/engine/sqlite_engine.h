#pragma once

#include "platform/db/database.h"
#include "platform/sqlite/index/index_figures.h"

#include <chrono>
#include <functional>
#include <memory>

namespace melovane {
class Clock;
class PassingTime;
} // namespace melovane

namespace melovane::sqlite {

struct EngineOptions
{
    /// How long a write waits for another program before it fails with kLocked.
    std::chrono::milliseconds busyTimeout{3000};
    /// Searches of the library are answered from memory: for a program whose user searches. The
    /// figures are counted up; null leaves every statement to SQLite.
    std::shared_ptr<IndexFigures> searchIndex = nullptr;
    /// Runs work from the message loop, a few milliseconds at a time, until it returns false: how a
    /// large library comes into memory. Without it the first search waits for that.
    std::function<void(std::function<bool()> work)> whenIdle = {};
    /// How long a search then waits for the library to come into memory before SQLite answers it;
    /// a small one is there sooner.
    std::chrono::milliseconds searchTimeout{60};
    /// Where the memory of a large library is kept for the next start, in files that may be deleted
    /// at any time; made when missing. Empty keeps none.
    QString snapshotFolder = {};
    /// False for files on a network, where programs share no memory and WAL cannot be used. Empty:
    /// the kind of file system decides.
    std::function<bool(const QString& path)> sharesMemory = {};
    /// What the waits above are measured by; null: the machine's time.
    std::shared_ptr<PassingTime> time = nullptr;
};

/// The database engine of the suite over SQLite. `clock` gives `now`; it outlives the engine.
[[nodiscard]] std::unique_ptr<DBEngine> makeEngine(const Clock& clock,
                                                   const EngineOptions& options = {});

} // namespace melovane::sqlite
