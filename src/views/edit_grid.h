#pragma once

#include "platform/controls/grid_control.h"

#include <QString>

#include <vector>

namespace melovane {

class LayoutFiles;

/// One line of the list of all columns.
struct ColumnChoice
{
    QString field;
    QString heading;
    bool chosen = false;
};

/// Chooses the columns of a grid: `frmEditGrid`. Works on a grid of its own, in which the user
/// moves columns and changes their widths with the mouse.
class frmEditGrid
{
public:
    /// \param name  file name of the layout
    /// \param grid  `TDBGrid1`, already over rows; takes the layout of the file, or `present` when
    ///              there is none
    frmEditGrid(LayoutFiles& layouts,
                QString name,
                GridControl& grid,
                const std::vector<GridColumn>& present);

    /// All columns that the view has, by heading.
    [[nodiscard]] std::vector<ColumnChoice> choices() const;

    /// Shows a column behind the current one, or behind the last; one that is shown already stays.
    void addColumn(const QString& field);

    /// Hides a column; the last one shown stays.
    void removeColumn(const QString& field);

    /// Another heading for a column; an empty one gives it its first one back.
    void setHeading(const QString& field, const QString& heading);

    /// Writes the layout. False when the file could not be written; then nothing has changed.
    [[nodiscard]] bool save();

private:
    LayoutFiles& m_layouts;
    QString m_name;
    GridControl& m_grid;
};

} // namespace melovane
