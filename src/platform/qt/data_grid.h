#pragma once

#include "platform/controls/grid_control.h"

#include <QTableView>

#include <vector>

class QMenu;

namespace melovane {

class DataControl;
class DataGridModel;
class EmptyView;
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
    void goToRow(qint64 row, qint64 firstVisible) override;
    [[nodiscard]] QString dataField(int column) const override;
    [[nodiscard]] int columnOf(const QString& field) const override;
    void setSortArrow(int column, SortArrow arrow) override;
    void setEmptyNote(const EmptyNote& note) override;

    [[nodiscard]] SortArrow sortArrow(int column) const;
    [[nodiscard]] EmptyNote emptyNote() const;

    /// Adds one entry per column that shows and hides it; the last column shown cannot be hidden.
    void fillColumnMenu(QMenu& menu);

    /// Nothing: a search among the rows would read them all. Searching is the search line's.
    void keyboardSearch(const QString& text) override;

signals:
    void headerClicked(int column);
    void escapePressed();
    void emptyButtonClicked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void showColumnMenu(const QPoint& place);
    void applyColumnWidths();
    void fitStretchedColumn();
    void noteColumnResized(int column, int oldWidth, int newWidth);
    void updateEmptyView();
    [[nodiscard]] int firstShownColumn() const;

    const Skin& m_skin;
    GridHeader* m_header;
    EmptyView* m_emptyView;
    DataGridModel* m_model = nullptr;
    int m_stretchedColumn = -1;
    bool m_fitting = false;
};

} // namespace melovane
