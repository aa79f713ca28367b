#pragma once

#include "platform/db/database.h"

#include <chrono>
#include <functional>
#include <memory>

namespace melovane {
class Clock;
}

namespace melovane::sqlite {

struct EngineOptions
{
    /// How long a write waits for another program before it fails with kLocked.
    std::chrono::milliseconds busyTimeout{3000};
    /// False for files on a network, where programs share no memory and WAL cannot be used. Empty:
    /// the kind of file system decides.
    std::function<bool(const QString& path)> sharesMemory = {};
};

/// The database engine of the suite over SQLite. `clock` gives `now`; it outlives the engine.
[[nodiscard]] std::unique_ptr<DBEngine> makeEngine(const Clock& clock, EngineOptions options = {});

} // namespace melovane::sqlite
