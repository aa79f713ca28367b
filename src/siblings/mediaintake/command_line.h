#pragma once

#include "intake/intake_report.h"

#include <QStringList>

#include <optional>

namespace melovane {

/// What the program was started with.
struct IntakeCommand
{
    IntakeMode mode = IntakeMode::NewFiles;
    QStringList folders;
    bool quiet = false; ///< no window: work at once, print the report, end
};

/// Reads "1" or "2" (nothing means "1"), "--folder PATH" (any number of times) and "--quiet".
/// Nothing when there is anything else, or when a quiet import of new files names no folder.
///
/// \param arguments without the program's name
[[nodiscard]] std::optional<IntakeCommand> parseCommandLine(const QStringList& arguments);

} // namespace melovane
