#pragma once

#include "platform/controls/grid_control.h"
#include "platform/qt/held_key.h"

#include <QTableView>

#include <functional>
#include <map>
#include <vector>

class QMenu;

namespace melovane {

class DataControl;
class DataGridModel;
class DropTarget;
class EmptyView;
class GridDropping;
class GridHeader;
class IconSet;
class Skin;

/// A grid of rows over a data control.
///
/// Rows are one line of text high, headings can be moved and hidden, and only the cells on the
/// screen are ever fetched. Has no rows before setSource.
class DataGrid : public QTableView, public GridControl
{
    Q_OBJECT

public:
    DataGrid(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);
    ~DataGrid() override;

    /// Once. `rows` and `look` outlive the grid's last paint.
    void setSource(const DataControl& rows, const GridLook& look, std::vector<GridColumn> columns);

    [[nodiscard]] qint64 currentRow() const override;
    [[nodiscard]] qint64 firstVisibleRow() const override;
    [[nodiscard]] qint64 visibleRows() const override;
    void showRow(qint64 row) override;
    void goToRow(qint64 row, qint64 firstVisible) override;
    [[nodiscard]] QString dataField(int column) const override;
    [[nodiscard]] int columnOf(const QString& field) const override;
    void setSortButtons(bool on) override;
    void setSortArrow(int column, SortArrow arrow) override;
    void setEmptyNote(const EmptyNote& note) override;
    [[nodiscard]] std::vector<RowRange> selection() const override;
    void select(const std::vector<RowRange>& rows) override;
    [[nodiscard]] int currentColumn() const override;
    void editCurrentCell() override;
    [[nodiscard]] std::vector<GridColumn> columns() const override;
    void arrange(const std::vector<GridColumn>& layout) override;
    void fitColumns(const QStringList& except, double most) override;
    void setGridFont(const GridFont& font) override;
    void focus() override;
    [[nodiscard]] bool hasKeyboard() const override;

    /// Without one, as at first, no cell can be changed. It outlives the grid's last event.
    void setEditing(GridEditing* editing);

    /// Asked when the user begins to drag the selected rows. Rows only leave as copies.
    void setDragSource(std::function<DragContent()> source);

    /// Lets things be dropped on the rows, and the user move a row with Ctrl and the arrow keys.
    /// `target` outlives the grid's last event.
    void setDropTarget(DropTarget& target);

    /// The delete key acts when it goes down, and not when it is let go.
    void setDeleteAtPress() { m_deleteKey.setAtPress(); }

    [[nodiscard]] SortArrow sortArrow(int column) const;
    [[nodiscard]] EmptyNote emptyNote() const;

    /// Adds one entry per column that shows and hides it; the last column shown cannot be hidden.
    void fillColumnMenu(QMenu& menu);

    /// Nothing: a search among the rows would read them all. Searching is the search line's.
    void keyboardSearch(const QString& text) override;

signals:
    void headerClicked(int column);
    /// A right click on a heading, or behind the last one.
    void headMenuWanted(const QPoint& place);
    /// A double click on a row, or Enter.
    void rowActivated(qint64 row);
    /// A right click on a row, which is then selected, or the menu key.
    void rowMenuWanted(qint64 row, const QPoint& place);
    /// The delete key was pressed and let go, or just pressed; once for as long as it is held.
    void deletePressed();
    /// The space bar, with a current row.
    void spacePressed();
    /// Ctrl with a digit.
    void digitPressed(int digit);
    /// Ctrl with an arrow key, in a grid with a drop target: -1 for up, 1 for down.
    void moveRowWanted(int step);
    /// The current row is another one; -1 for none.
    void currentRowChanged(qint64 row);
    void selectedRowsChanged();
    void escapePressed();
    void emptyButtonClicked();

protected:
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void takeNewColumns();
    void applyColumnWidths(int from);
    void fitStretchedColumns();
    [[nodiscard]] int roomForColumns() const;
    void noteColumnResized(int column, int oldWidth, int newWidth);
    void updateEmptyView();
    [[nodiscard]] int firstShownColumn() const;
    [[nodiscard]] int unitsOf(double figures) const;
    [[nodiscard]] double figuresOf(int units) const;
    void placeColumn(int column, int place);
    void setRowHeight();

    const Skin& m_skin;
    GridHeader* m_header;
    EmptyView* m_emptyView;
    GridDropping* m_dropping = nullptr; ///< null for a grid that only gives
    DataGridModel* m_model = nullptr;
    std::function<DragContent()> m_dragSource;
    int m_rowSpacing = 0;
    std::map<int, double> m_stretched; ///< columns that share the free width, their own in figures
    /// Width of a figure when the columns got their widths: a new style sheet changes the font
    /// before anybody can ask.
    int m_widthFigure = 0;
    bool m_fitting = false;
    int m_columnsTaken = 0;            ///< how many columns have their width
    std::vector<GridColumn> m_waiting; ///< a layout that shows columns which no rows had yet
    HeldKey m_deleteKey;
};

} // namespace melovane
