#pragma once

namespace melovane {

/// What the main window shows of the monitor player: where a track plays, and how loud.
class MonitorPanel
{
public:
    virtual ~MonitorPanel() = default;

    /// \param ms       where it plays
    /// \param lengthMs how long the file is
    virtual void showPlace(double ms, double lengthMs) = 0;

    /// Nothing plays.
    virtual void hidePlace() = 0;

    /// \param volume 0 to 10000
    virtual void showVolume(int volume) = 0;
};

} // namespace melovane
