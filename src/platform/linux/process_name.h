#pragma once

#include <QString>

namespace melovane {

/// What the system calls a process; "-" for one that is gone or unknown. May hold any letters.
[[nodiscard]] QString processName(qint64 process);

} // namespace melovane
