#pragma once

#include "platform/controls/colour.h"

namespace melovane {

/// Amber: of a text that warns, in both themes. Painters make it readable on their ground.
inline constexpr Colour kWarningColour{0xF0, 0xA2, 0x28};

} // namespace melovane
