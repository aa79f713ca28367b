#pragma once

#include "library/library_columns.h"
#include "platform/controls/grid_control.h"

namespace melovane::test {

/// A grid without a window: remembers what it was told.
class PlainGrid : public GridControl
{
public:
    [[nodiscard]] qint64 currentRow() const override { return current; }

    [[nodiscard]] qint64 firstVisibleRow() const override { return top; }

    [[nodiscard]] qint64 visibleRows() const override { return room; }

    void showRow(qint64 row) override { shownRow = row; }

    void goToRow(qint64 row, qint64 firstVisible) override
    {
        current = row;
        top = firstVisible;
    }

    [[nodiscard]] QString dataField(int column) const override
    {
        const bool known = column >= 0 && column < static_cast<int>(layout.size());
        return known ? layout[static_cast<size_t>(column)].field : QString();
    }

    [[nodiscard]] int columnOf(const QString& field) const override
    {
        for (size_t index = 0; index < layout.size(); ++index) {
            if (layout[index].field.compare(field, Qt::CaseInsensitive) == 0) {
                return static_cast<int>(index);
            }
        }
        return -1;
    }

    void setSortButtons(bool on) override { sortButtons = on; }

    void setSortArrow(int column, SortArrow arrow) override
    {
        arrowColumn = column;
        sortArrow = arrow;
    }

    void setEmptyNote(const EmptyNote& emptyNote) override { note = emptyNote; }

    [[nodiscard]] std::vector<RowRange> selection() const override { return selected; }

    void select(const std::vector<RowRange>& rows) override { selected = rows; }

    [[nodiscard]] int currentColumn() const override { return currentCell; }

    void editCurrentCell() override { ++edits; }

    [[nodiscard]] std::vector<GridColumn> columns() const override { return layout; }

    void arrange(const std::vector<GridColumn>& wanted) override { layout = wanted; }

    void fitColumns(const QStringList& except, double most) override
    {
        notFitted = except;
        widest = most;
        ++fits;
    }

    void setGridFont(const GridFont& wanted) override { font = wanted; }

    void focus() override { keyboard = true; }

    [[nodiscard]] bool hasKeyboard() const override { return keyboard; }

    std::vector<GridColumn> layout = libraryColumns();
    qint64 current = -1;
    qint64 top = 0;
    qint64 room = 20;
    qint64 shownRow = -1; ///< the last one asked for by showRow
    bool sortButtons = false;
    int arrowColumn = -1;
    SortArrow sortArrow = SortArrow::None;
    EmptyNote note;
    std::vector<RowRange> selected;
    int currentCell = -1;
    int edits = 0;
    int fits = 0;
    QStringList notFitted;
    double widest = 0;
    GridFont font;
    bool keyboard = false;
};

} // namespace melovane::test
