#pragma once

namespace melovane {

/// Largest code of a key.
inline constexpr int kLastKeyCode = 255;

/// Which keys and mouse buttons are held down at this moment.
///
/// Keys are told by the codes that the stored key bindings were made with: 13 is Enter, 16 to 18
/// are the shift, control and alt keys of either side, 65 to 90 the letters; 1, 2 and 4 are the
/// left, right and middle mouse button. Keep: bindings stored by the user depend on them.
class Keyboard
{
public:
    virtual ~Keyboard() = default;

    /// \param code 1 to kLastKeyCode; any other is never down
    [[nodiscard]] virtual bool isDown(int code) const = 0;
};

} // namespace melovane
