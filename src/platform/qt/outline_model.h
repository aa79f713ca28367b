#pragma once

#include "platform/controls/tree_control.h"

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace melovane {

/// The rows of an outline, reachable by their number from top to bottom and as a tree.
class OutlineModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using QObject::parent;

    explicit OutlineModel(QObject* parent = nullptr);
    ~OutlineModel() override;

    void setRows(std::vector<TreeRow> rows);
    void setRow(int place, const TreeRow& row);
    void insertRow(int place, const TreeRow& row);
    void removeRow(int place);

    [[nodiscard]] int count() const { return int(m_nodes.size()); }

    [[nodiscard]] const TreeRow& row(int place) const { return m_nodes[size_t(place)]->row; }

    [[nodiscard]] bool has(int place) const { return place >= 0 && place < count(); }

    [[nodiscard]] int find(const QString& key) const;

    /// -1 for no row.
    [[nodiscard]] int placeOf(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(int place) const;

    /// The row that may be edited at present, or none.
    void setEdited(const QModelIndex& index, const QString& text);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    /// The user has left this text in the row that was edited.
    void edited(int place, const QString& text);

private:
    struct Node
    {
        TreeRow row;
        Node* parent = nullptr;
        std::vector<Node*> children;
        int place = 0; ///< among all rows
        int order = 0; ///< among the children of its parent
    };

    [[nodiscard]] static Node* nodeOf(const QModelIndex& index);
    [[nodiscard]] const Node& parentNode(const QModelIndex& parent) const;
    [[nodiscard]] Node* parentFor(int place, int level);
    void number(size_t from);

    std::vector<std::unique_ptr<Node>> m_nodes; ///< top to bottom
    Node m_root;
    QPersistentModelIndex m_edited;
    QString m_editedText;
};

} // namespace melovane
