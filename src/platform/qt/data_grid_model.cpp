#include "platform/qt/data_grid_model.h"

#include "platform/controls/grid_source.h"

#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

class RowOfModel : public RowValues
{
public:
    RowOfModel(const DataGridModel& model, qint64 row)
        : m_model(model)
        , m_row(row)
    {}

    [[nodiscard]] Value value(const QString& field) const override
    {
        return m_model.value(m_row, field);
    }

    [[nodiscard]] qint64 row() const override { return m_row; }

private:
    const DataGridModel& m_model;
    qint64 m_row;
};

QVariant alignmentFlags(CellAlignment alignment)
{
    switch (alignment) {
    case CellAlignment::Left:
        return {Qt::AlignLeft | Qt::AlignVCenter};
    case CellAlignment::Centre:
        return {Qt::AlignCenter};
    case CellAlignment::Right:
        return {Qt::AlignRight | Qt::AlignVCenter};
    }
    return {};
}

} // namespace

DataGridModel::DataGridModel(const GridSource& data,
                             const GridLook& look,
                             std::vector<GridColumn> columns,
                             QObject* parent)
    : QAbstractTableModel(parent)
    , m_data(data)
    , m_look(look)
{
    for (GridColumn& column : columns) {
        addColumn(std::move(column));
    }
    connect(&data, &GridSource::refreshed, this, &DataGridModel::takeRows);
    connect(&data, &GridSource::cellsChanged, this, &DataGridModel::repaintAll);
    takeRows();
}

void DataGridModel::takeRows()
{
    beginResetModel();
    m_fieldByName.clear();
    m_fieldAsSpelt.clear();
    for (int field = 0; field < m_data.columnCount(); ++field) {
        const QString name = m_data.columnName(field);
        m_fieldByName.insert(name.toLower(), field);
        if (!m_known.contains(name.toLower())) {
            addColumn({.field = name, .heading = name, .shown = false});
        }
    }
    for (size_t index = 0; index < m_columns.size(); ++index) {
        m_fields[index] = m_fieldByName.value(m_columns[index].field.toLower(), -1);
    }
    m_rows =
        static_cast<int>(std::min<qint64>(m_data.rowCount(), std::numeric_limits<int>::max() / 2));
    endResetModel();
}

void DataGridModel::addColumn(GridColumn column)
{
    m_known.insert(column.field.toLower());
    m_headings.append(column.heading);
    m_fields.push_back(-1);
    m_columns.push_back(std::move(column));
}

void DataGridModel::repaintAll()
{
    if (m_rows > 0) {
        emit dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1), {Qt::DisplayRole});
    }
}

int DataGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int DataGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

int DataGridModel::columnOf(const QString& field) const
{
    for (size_t index = 0; index < m_columns.size(); ++index) {
        if (m_columns[index].field.compare(field, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

Value DataGridModel::value(qint64 row, const QString& field) const
{
    // Looks ask some thousand times for a page, always in the same few spellings.
    auto found = m_fieldAsSpelt.constFind(field);
    if (found == m_fieldAsSpelt.cend()) {
        found = m_fieldAsSpelt.insert(field, m_fieldByName.value(field.toLower(), -1));
    }
    return *found < 0 ? Value() : m_data.cell(row, *found);
}

CellStyle DataGridModel::style(const QModelIndex& index) const
{
    return m_look.style(column(index.column()).field, RowOfModel(*this, index.row()));
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return alignmentFlags(column(index.column()).alignment);
    }
    const int field = m_fields[static_cast<size_t>(index.column())];
    if (role == Qt::EditRole && field >= 0) {
        return m_data.cell(index.row(), field).toText();
    }
    if ((role != Qt::DisplayRole && role != Qt::AccessibleTextRole) || field < 0) {
        return {};
    }
    const RowOfModel row(*this, index.row());
    const QString text =
        m_look.rowText(column(index.column()).field, m_data.cell(index.row(), field), row);
    const QString meaning = role == Qt::AccessibleTextRole ? style(index).iconText : QString();
    return text.isEmpty() || meaning.isEmpty() ? text + meaning : text + u", "_s + meaning;
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const Qt::ItemFlags plain = QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
    const bool known = m_fields[static_cast<size_t>(index.column())] >= 0;
    const bool editable =
        known && m_editing && m_editing->canEdit(index.row(), column(index.column()).field);
    return editable ? plain | Qt::ItemIsEditable : plain;
}

QStringList DataGridModel::choices(const QModelIndex& index) const
{
    return m_editing && index.isValid() ? m_editing->choices(column(index.column()).field)
                                        : QStringList();
}

bool DataGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    m_refused = false;
    const QString text = value.toString();
    if (role != Qt::EditRole || !m_editing || !index.isValid() ||
        text == data(index, Qt::EditRole).toString()) {
        return false;
    }
    m_refused = !m_editing->commit(index.row(), column(index.column()).field, text);
    return !m_refused;
}

void DataGridModel::setHeading(int column, const QString& heading)
{
    GridColumn& changed = m_columns[static_cast<size_t>(column)];
    changed.renamed = !heading.isEmpty() && heading != m_headings[column];
    changed.heading = changed.renamed ? heading : m_headings[column];
    emit headerDataChanged(Qt::Horizontal, column, column);
}

bool DataGridModel::setHeaderData(int section,
                                  Qt::Orientation orientation,
                                  const QVariant& value,
                                  int role)
{
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount()) {
        return false;
    }
    GridColumn& changed = m_columns[static_cast<size_t>(section)];
    if (role == Qt::ToolTipRole) {
        changed.headingTip = value.toString();
        return true;
    }
    m_headings[section] = value.toString();
    setHeading(section, changed.renamed ? changed.heading : QString());
    return true;
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return column(section).heading;
    }
    if (role == Qt::ToolTipRole) {
        return column(section).headingTip;
    }
    return role == Qt::TextAlignmentRole ? alignmentFlags(column(section).alignment) : QVariant();
}

} // namespace melovane
