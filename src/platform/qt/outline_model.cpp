#include "platform/qt/outline_model.h"

#include <algorithm>

namespace melovane {

OutlineModel::OutlineModel(QObject* parent)
    : QAbstractItemModel(parent)
{}

OutlineModel::~OutlineModel() = default;

OutlineModel::Node* OutlineModel::nodeOf(const QModelIndex& index)
{
    return static_cast<Node*>(index.internalPointer());
}

const OutlineModel::Node& OutlineModel::parentNode(const QModelIndex& parent) const
{
    return parent.isValid() ? *nodeOf(parent) : m_root;
}

/// The row that one at `place` stands below.
OutlineModel::Node* OutlineModel::parentFor(int place, int level)
{
    for (int above = place - 1; above >= 0; --above) {
        Node& node = *m_nodes[size_t(above)];
        if (node.row.level < level) {
            return &node;
        }
    }
    return &m_root;
}

void OutlineModel::number(size_t from)
{
    for (size_t place = from; place < m_nodes.size(); ++place) {
        m_nodes[place]->place = int(place);
    }
}

void OutlineModel::setRows(std::vector<TreeRow> rows)
{
    beginResetModel();
    m_nodes.clear();
    m_nodes.reserve(rows.size());
    m_root.children.clear();
    std::vector<Node*> path; // the rows that a next one may stand below
    for (TreeRow& row : rows) {
        while (!path.empty() && path.back()->row.level >= row.level) {
            path.pop_back();
        }
        auto node = std::make_unique<Node>();
        node->row = std::move(row);
        node->parent = path.empty() ? &m_root : path.back();
        node->order = int(node->parent->children.size());
        node->parent->children.push_back(node.get());
        path.push_back(node.get());
        m_nodes.push_back(std::move(node));
    }
    number(0);
    endResetModel();
}

void OutlineModel::setRow(int place, const TreeRow& row)
{
    if (!has(place)) {
        return;
    }
    TreeRow& mine = m_nodes[size_t(place)]->row;
    const int level = mine.level;
    mine = row;
    mine.level = level;
    const QModelIndex index = indexOf(place);
    emit dataChanged(index, index);
}

void OutlineModel::insertRow(int place, const TreeRow& row)
{
    place = std::clamp(place, 0, count());
    Node* parent = parentFor(place, row.level);
    const auto order = std::count_if(parent->children.begin(), parent->children.end(),
                                     [&](const Node* child) { return child->place < place; });
    beginInsertRows(parent == &m_root ? QModelIndex() : indexOf(parent->place), int(order),
                    int(order));
    auto node = std::make_unique<Node>();
    node->row = row;
    node->parent = parent;
    parent->children.insert(parent->children.begin() + order, node.get());
    m_nodes.insert(m_nodes.begin() + place, std::move(node));
    number(size_t(place));
    for (size_t i = size_t(order); i < parent->children.size(); ++i) {
        parent->children[i]->order = int(i);
    }
    endInsertRows();
}

void OutlineModel::removeRow(int place)
{
    if (!has(place)) {
        return;
    }
    Node& node = *m_nodes[size_t(place)];
    Node& parent = *node.parent;
    const int order = node.order;
    beginRemoveRows(this->parent(indexOf(place)), order, order);
    auto end = m_nodes.begin() + place + 1;
    while (end != m_nodes.end() && (*end)->row.level > node.row.level) {
        ++end;
    }
    parent.children.erase(parent.children.begin() + order);
    for (size_t i = size_t(order); i < parent.children.size(); ++i) {
        parent.children[i]->order = int(i);
    }
    m_nodes.erase(m_nodes.begin() + place, end);
    number(size_t(place));
    endRemoveRows();
}

int OutlineModel::find(const QString& key) const
{
    const auto found = std::find_if(m_nodes.begin(), m_nodes.end(),
                                    [&](const auto& node) { return node->row.key == key; });
    return found == m_nodes.end() ? -1 : (*found)->place;
}

int OutlineModel::placeOf(const QModelIndex& index) const
{
    return index.isValid() ? nodeOf(index)->place : -1;
}

QModelIndex OutlineModel::indexOf(int place) const
{
    if (!has(place)) {
        return {};
    }
    Node& node = *m_nodes[size_t(place)];
    return createIndex(node.order, 0, &node);
}

void OutlineModel::setEdited(const QModelIndex& index, const QString& text)
{
    m_edited = index;
    m_editedText = text;
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const
{
    const Node& above = parentNode(parent);
    if (column != 0 || row < 0 || row >= int(above.children.size())) {
        return {};
    }
    return createIndex(row, 0, above.children[size_t(row)]);
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return {};
    }
    Node* above = nodeOf(index)->parent;
    return above == &m_root ? QModelIndex() : createIndex(above->order, 0, above);
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    return int(parentNode(parent).children.size());
}

int OutlineModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    return 1;
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return nodeOf(index)->row.text;
    case Qt::EditRole:
        return m_editedText;
    default:
        return {};
    }
}

bool OutlineModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || value.toString() == m_editedText) {
        return false;
    }
    emit edited(placeOf(index), value.toString());
    return true;
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    result.setFlag(Qt::ItemIsEditable, m_edited == index);
    result.setFlag(Qt::ItemIsDragEnabled, nodeOf(index)->row.movable);
    return result;
}

} // namespace melovane
