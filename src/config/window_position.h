#pragma once

#include <QRect>
#include <QString>

namespace melovane {

class ToolBox;

/// Where a window of the suite stood when it was closed, in the units of the window system. -1 in a
/// field means that nothing is stored.
struct WindowPosition
{
    QString name; ///< of the record and of its section: "DBPosition"
    int Height = -1;
    int Left = -1;
    int Top = -1;
    int Whidth = -1;      ///< "Whidth" is the key's spelling in the file
    int WindowState = -1; ///< 0 normal, 2 maximised

    // Working values of the running window, never stored.
    int StateBeforeDocking = 0; ///< 1 when it was maximised
    int Docked = 0;             ///< 1 while it is docked

    [[nodiscard]] QRect place() const { return {Left, Top, Whidth, Height}; }

    void setPlace(const QRect& place)
    {
        Left = place.left();
        Top = place.top();
        Whidth = place.width();
        Height = place.height();
    }

    /// Reads the five stored fields.
    void read(const ToolBox& file);
    /// Writes them, in the order Height, Top, Left, Whidth, WindowState.
    void write(ToolBox& file) const;
};

} // namespace melovane
