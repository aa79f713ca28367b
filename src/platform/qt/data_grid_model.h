#pragma once

#include "platform/controls/grid_control.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QSet>

#include <vector>

namespace melovane {

class GridSource;

/// Rows of a source for a table view. Keeps nothing: a cell is fetched when it is painted.
///
/// The columns are the grid's own and stay when the statement changes; each finds its field by
/// name after every refresh. Fields that none of them shows get columns behind them, hidden.
class DataGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// `data` and `look` outlive the model.
    DataGridModel(const GridSource& data,
                  const GridLook& look,
                  std::vector<GridColumn> columns,
                  QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    /// Text, alignment, the stored value as text for editing, and the text again for assistive
    /// programs; all else is the painter's.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant
    headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] const GridColumn& column(int index) const
    {
        return m_columns[static_cast<size_t>(index)];
    }

    /// The first heading of a column, or its tip: another language. A heading that the user has
    /// given stays.
    bool setHeaderData(int section,
                       Qt::Orientation orientation,
                       const QVariant& value,
                       int role) override;

    /// Another heading for a column; an empty text gives it its first one back.
    void setHeading(int column, const QString& heading);

    /// Null, as at first, lets no cell be changed.
    void setEditing(GridEditing* editing) { m_editing = editing; }

    /// The texts that can be chosen for a cell; none lets any be typed.
    [[nodiscard]] QStringList choices(const QModelIndex& index) const;

    /// Gives a changed text of a cell to the editing.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// True when the editing has not taken the last text.
    [[nodiscard]] bool wasRefused() const { return m_refused; }

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] int columnOf(const QString& field) const;
    [[nodiscard]] CellStyle style(const QModelIndex& index) const;
    [[nodiscard]] Value value(qint64 row, const QString& field) const;

private:
    void takeRows();
    void addColumn(GridColumn column);
    void repaintAll();

    const GridSource& m_data;
    const GridLook& m_look;
    std::vector<GridColumn> m_columns;
    QSet<QString> m_known;                      ///< fields of the columns, in lower case
    QStringList m_headings;                     ///< as they were at first
    std::vector<int> m_fields;                  ///< field index of each column, -1 for none
    QHash<QString, int> m_fieldByName;          ///< names in lower case
    mutable QHash<QString, int> m_fieldAsSpelt; ///< as they were asked for, -1 for none
    int m_rows = 0;
    GridEditing* m_editing = nullptr;
    bool m_refused = false; ///< see wasRefused()
};

} // namespace melovane
