#pragma once

#include <QString>

namespace melovane {

/// Opens the settings and works until their window is closed. A second copy brings the window of
/// the first to the front and ends.
///
/// \param console message control that is told what has changed; 0, or a dead one, for that of the
///                console that runs
/// \param setting "Section.Key" of the one that is shown first; any other text shows none
[[nodiscard]] int runConfig(int argc, char** argv, int console, const QString& setting);

} // namespace melovane
