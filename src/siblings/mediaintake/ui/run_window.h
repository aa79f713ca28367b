#pragma once

namespace melovane {

struct IntakeCommand;

/// Runs the importer with its window until that is closed.
/// \return exit code of the process: 1 when another importer works on the same library, which then
/// comes to the front, or when the library of the settings is not there
[[nodiscard]] int runWindow(int argc, char** argv, const IntakeCommand& command);

} // namespace melovane
