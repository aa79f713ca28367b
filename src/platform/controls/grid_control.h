#pragma once

#include "platform/controls/colour.h"
#include "platform/controls/grid_font.h"
#include "platform/db/value.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

enum class CellAlignment
{
    Left,
    Centre,
    Right ///< numbers and times; their figures have equal width
};

/// A column of a grid. It shows the field of its name when the rows have one, else nothing. A field
/// of the rows that no column was made for gets a hidden one of its own name.
struct GridColumn
{
    QString field; ///< `DataField`; letter case has no meaning
    QString heading;
    double width = 10; ///< in figures of the grid's font
    CellAlignment alignment = CellAlignment::Left;
    bool shown = true;
    bool stretched = false;  ///< shares the free width, by its own width
    bool renamed = false;    ///< the heading is one of the user's own
    bool fixed = false;      ///< keeps its width, whatever the user or a stored layout says
    QString headingTip = {}; ///< what the values mean, where the heading does not say it
};

/// What the whole ground of a cell tells; the theme has a colour for each.
enum class CellGround
{
    Plain,
    Favourite, ///< `GridColorFavorit`; the selection goes before it
    Playing,   ///< `GridColorAktivePlay`
    Next,      ///< `GridColorNextPlay`
    Heard,     ///< `GridColorAktiveFid`: the entry in the monitor player
};

/// How a cell differs from the plain ones. Text colours are moved towards black or white as far as
/// needed to be readable on the cell's ground.
struct CellStyle
{
    std::optional<Colour> text;
    std::optional<Colour> tint;  ///< laid thinly over the ground
    std::optional<Colour> badge; ///< a rounded field behind the text
    std::optional<Colour> badgeText;
    CellGround ground = CellGround::Plain;
    QString icon;        ///< name of a picture; alone in the middle, or in front of the text
    QString iconText;    ///< what the picture means
    bool dimmed = false; ///< in the colour of second texts, for rows that cannot be changed
    bool bold = false;
    bool struckOut = false;
};

/// The fields of the row being painted, by name without regard to case; an unknown name is null.
class RowValues
{
public:
    virtual ~RowValues() = default;

    [[nodiscard]] virtual Value value(const QString& field) const = 0;

    /// Its place in the grid, from 0.
    [[nodiscard]] virtual qint64 row() const { return 0; }
};

/// Turns values into what a grid shows. Asked for the cells on the screen only, at each paint.
class GridLook
{
public:
    virtual ~GridLook() = default;

    [[nodiscard]] virtual QString text(const QString& field, const Value& value) const = 0;

    /// The same for a column that is made of several fields, or of the place of its row.
    [[nodiscard]] virtual QString
    rowText(const QString& field, const Value& value, const RowValues& row) const
    {
        Q_UNUSED(row)
        return text(field, value);
    }

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

/// A run of rows, both ends belonging to it.
struct RowRange
{
    qint64 first = 0;
    qint64 last = 0;

    bool operator==(const RowRange&) const = default;
};

/// What happens to cells that the user changes in the grid.
class GridEditing
{
public:
    virtual ~GridEditing() = default;

    [[nodiscard]] virtual bool canEdit(qint64 row, const QString& field) const = 0;

    /// The texts that can be chosen for a field; none lets any text be typed.
    [[nodiscard]] virtual QStringList choices(const QString& field) const = 0;

    /// The user has finished with a cell and left another text in it. False when that was not
    /// taken, which was told: the cell stays open, with the text, until he mends it or leaves it.
    virtual bool commit(qint64 row, const QString& field, const QString& text) = 0;
};

/// What a drag carries.
struct DragContent
{
    QString text; ///< understood inside the suite; nothing is dragged when it is empty
    /// Full paths, for other programs; asked for once, when one takes them. May be empty.
    std::function<QStringList()> files;
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
    /// Rows that the grid has room for, at least one.
    [[nodiscard]] virtual qint64 visibleRows() const = 0;

    /// Scrolls as little as needed; current row and selection stay.
    virtual void showRow(qint64 row) = 0;

    /// Makes a row the current and only selected one and puts `firstVisible` at the top, as far as
    /// the row stays on the screen. A row outside the set clears the selection.
    virtual void goToRow(qint64 row, qint64 firstVisible) = 0;

    /// The field of a column; empty when there is no such column.
    [[nodiscard]] virtual QString dataField(int column) const = 0;
    /// The column of a field, or -1.
    [[nodiscard]] virtual int columnOf(const QString& field) const = 0;

    /// Whether a click on a heading asks for sorting.
    virtual void setSortButtons(bool on) = 0;

    /// Puts the arrow on a column and takes it from all others.
    virtual void setSortArrow(int column, SortArrow arrow) = 0;

    /// Shown while the grid has no rows.
    virtual void setEmptyNote(const EmptyNote& note) = 0;

    /// The selected rows in rising order, as runs that don't touch.
    [[nodiscard]] virtual std::vector<RowRange> selection() const = 0;
    /// Selects these rows and no others (runs may touch and stand in any order); the current row
    /// stays. Rows outside the set are left out.
    virtual void select(const std::vector<RowRange>& rows) = 0;

    /// -1 when there is none.
    [[nodiscard]] virtual int currentColumn() const = 0;
    /// Lets the user change the current cell, if it may be changed.
    virtual void editCurrentCell() = 0;

    /// All columns in the order shown, hidden ones behind the others.
    [[nodiscard]] virtual std::vector<GridColumn> columns() const = 0;
    /// Takes order, headings, widths and which are shown; a column that `layout` does not name is
    /// hidden, a name that the grid does not know is skipped. Without one column to show nothing
    /// changes.
    virtual void arrange(const std::vector<GridColumn>& layout) = 0;
    /// Makes each column shown as wide as what is on the screen of it needs, `most` figures at
    /// most, but for those of the fields `except`.
    virtual void fitColumns(const QStringList& except, double most) = 0;

    virtual void setGridFont(const GridFont& font) = 0;

    /// Gives it the keyboard.
    virtual void focus() = 0;
    /// Whether it, or a cell being edited in it, has the keyboard.
    [[nodiscard]] virtual bool hasKeyboard() const = 0;
};

} // namespace melovane
