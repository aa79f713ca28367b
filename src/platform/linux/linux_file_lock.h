#pragma once

#include "platform/system/files.h"

#include <chrono>
#include <memory>

namespace melovane {

/// Takes the exclusive lock on a file, which is made when missing and stays when the lock is gone.
/// The kernel frees it when the program ends, however it ends.
///
/// \param patience how long to wait while another program holds it; zero tries once
/// Null when the time is over or the file cannot be opened. Two locks on one file exclude each
/// other within one program, too. Started siblings do not inherit it.
[[nodiscard]] std::unique_ptr<FileLock> lockFile(const QString& path,
                                                 std::chrono::milliseconds patience);

} // namespace melovane
