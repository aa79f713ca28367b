#pragma once

namespace melovane::windowstart {

/// Environment variable by which a program of the suite tells one that it starts how its first
/// window is to come up; absent for a normal one. Other programs pass it over. Keep, with its
/// words: siblings of other releases read them.
inline constexpr char kVariable[] = "MELOVANE_WINDOW";
/// There is a window, and it is not shown until somebody asks for it.
inline constexpr char kHidden[] = "hidden";
/// In the task bar.
inline constexpr char kMinimised[] = "minimised";

} // namespace melovane::windowstart
