#pragma once

namespace melovane {

/// Name of a property: true for a control that takes every key for itself, because the user is
/// about to choose one. Keys of the whole program leave it alone.
inline constexpr char kTakesAllKeys[] = "takesAllKeys";

} // namespace melovane
