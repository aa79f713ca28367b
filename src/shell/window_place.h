#pragma once

#include "config/window_position.h"

#include <array>

namespace melovane {

class GlobalSettings;
class SplitControl;
class WindowFrame;

/// `ElasticOne1` upper and lower, `ElasticOne2` tree and library, `ElasticOne3` list tree and
/// playlist.
using SplitControls = std::array<SplitControl*, 3>;

/// Where the main window stands and how its splits lie, from one run to the next.
class WindowPlace
{
public:
    WindowPlace(GlobalSettings& settings, WindowFrame& window, SplitControls splits);

    /// Takes the stored place, maximised or not, if its right and lower edge lie inside the screen;
    /// else the window stays as it is.
    void restore();
    /// The middle of the screen, for an empty library.
    void centre();
    void save();

    void restoreSplits();
    void saveSplits();

private:
    GlobalSettings& m_settings;
    WindowFrame& m_window;
    SplitControls m_splits;
};

} // namespace melovane
