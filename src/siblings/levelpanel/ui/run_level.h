#pragma once

namespace melovane {

/// Opens the volume of the monitor and works until its window is closed. A second copy brings the
/// window of the first to the front and ends.
[[nodiscard]] int runLevel(int argc, char** argv);

} // namespace melovane
