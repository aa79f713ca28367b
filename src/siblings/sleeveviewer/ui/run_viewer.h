#pragma once

#include <QString>

namespace melovane {

/// Runs the viewer until its window is closed. When one runs already, that one shows the image and
/// comes to the front.
///
/// \param image name of a cover; empty for the row of the console
/// \return exit code of the process
[[nodiscard]] int runViewer(int argc, char** argv, const QString& image);

} // namespace melovane
