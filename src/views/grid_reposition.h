#pragma once

#include <QtGlobal>

namespace melovane {

class DataControl;
class GridControl;

/// Keeps a grid on its rows while the rows behind it are read anew. Grid and rows outlive it.
class TDBGIDReposition
{
public:
    TDBGIDReposition(GridControl& grid, DataControl& rows)
        : m_grid(grid)
        , m_rows(rows)
    {}

    /// Notes which row is current and how far below the top of the screen it stands.
    void StartPosition();

    /// Back to the noted row, or to one so many rows behind it, at its place on the screen.
    ///
    /// \param last go to the last row instead; the offset then has no meaning
    /// Quiet: without a noted row, or when there is no such row now, grid and rows stay.
    void Reposition(bool last = false, qint64 offset = 0);

    /// Every column of the grid can be clicked for sorting.
    void SetAllSortButton();

private:
    void goTo(qint64 row);

    GridControl& m_grid;
    DataControl& m_rows;
    qint64 m_position = -1; ///< `AbsolutePosition`; -1 before StartPosition
    qint64 m_fromTop = 0;   ///< rows between the top of the screen and that row
};

} // namespace melovane
