#pragma once

#include "platform/controls/colour.h"
#include "platform/db/value.h"

#include <QString>

#include <optional>

namespace melovane {

enum class CellAlignment
{
    Left,
    Centre,
    Right ///< numbers and times; their figures have equal width
};

/// A column of a grid. It shows the field of its name when the rows have one, else nothing.
struct GridColumn
{
    QString field; ///< `DataField`; letter case has no meaning
    QString heading;
    int width = 10; ///< in figures of the grid's font
    CellAlignment alignment = CellAlignment::Left;
    bool shown = true;
    bool stretched = false; ///< takes the free width; one column at most
};

/// How a cell differs from the plain ones. Text colours are moved towards black or white as far as
/// needed to be readable on the cell's ground.
struct CellStyle
{
    std::optional<Colour> text;
    std::optional<Colour> tint;  ///< laid thinly over the ground
    std::optional<Colour> badge; ///< a rounded field behind the text
    std::optional<Colour> badgeText;
    bool bold = false;
    bool struckOut = false;
};

/// The fields of the row being painted, by name without regard to case; an unknown name is null.
class RowValues
{
public:
    virtual ~RowValues() = default;

    [[nodiscard]] virtual Value value(const QString& field) const = 0;
};

/// Turns values into what a grid shows. Asked for the cells on the screen only, at each paint.
class GridLook
{
public:
    virtual ~GridLook() = default;

    [[nodiscard]] virtual QString text(const QString& field, const Value& value) const = 0;
    [[nodiscard]] virtual CellStyle style(const QString& field, const RowValues& row) const = 0;
};

enum class SortArrow
{
    None,
    Ascending,  ///< `ImageAsc`
    Descending, ///< `ImageDesc`
};

/// What an empty grid says: a title, a sentence, and a button when `button` is not empty.
struct EmptyNote
{
    QString title;
    QString text;
    QString button;

    bool operator==(const EmptyNote&) const = default;
};

/// A grid of rows over a data control, as logic sees it. Rows count from 0 in the order shown;
/// columns are the grid's own, whatever place the user has moved them to.
class GridControl
{
public:
    virtual ~GridControl() = default;

    /// -1 when there is none.
    [[nodiscard]] virtual qint64 currentRow() const = 0;
    [[nodiscard]] virtual qint64 firstVisibleRow() const = 0;

    /// Makes a row the current and only selected one and puts `firstVisible` at the top, as far as
    /// the row stays on the screen. A row outside the set clears the selection.
    virtual void goToRow(qint64 row, qint64 firstVisible) = 0;

    /// The field of a column; empty when there is no such column.
    [[nodiscard]] virtual QString dataField(int column) const = 0;
    /// The column of a field, or -1.
    [[nodiscard]] virtual int columnOf(const QString& field) const = 0;

    /// Puts the arrow on a column and takes it from all others.
    virtual void setSortArrow(int column, SortArrow arrow) = 0;

    /// Shown while the grid has no rows.
    virtual void setEmptyNote(const EmptyNote& note) = 0;
};

} // namespace melovane
