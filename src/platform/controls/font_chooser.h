#pragma once

#include "platform/controls/grid_control.h"

#include <optional>

namespace melovane {

/// Asks the user for a font.
class FontChooser
{
public:
    virtual ~FontChooser() = default;

    /// Name, size and boldness as chosen, the rest as in `present`; nothing when the user did not
    /// choose.
    [[nodiscard]] virtual std::optional<GridFont> choose(const GridFont& present) = 0;
};

} // namespace melovane
