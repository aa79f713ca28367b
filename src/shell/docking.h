#pragma once

#include "config/window_position.h"

namespace melovane {

class WindowFrame;

/// Puts the window beside the player on the player's request, and back.
class Docking
{
public:
    explicit Docking(WindowFrame& window);

    /// Gives the window the lower half of the desktop's work area. The place to go back to is the
    /// one that it has at the first of several calls.
    void dock();

    /// Back to its former place, maximised if it was; nothing when it is not docked.
    void undock();

    /// True from dock() to undock(): its place is then the player's choice and not to be kept.
    [[nodiscard]] bool isDocked() const { return m_before.Docked != 0; }

private:
    WindowFrame& m_window;
    WindowPosition m_before;
};

} // namespace melovane
