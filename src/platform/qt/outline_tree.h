#pragma once

#include "platform/controls/tree_control.h"

#include <QTimer>
#include <QTreeView>

#include <memory>

class QMimeData;

namespace melovane {

class DropTarget;
struct DropOffer;
class EmptyView;
class IconSet;
class OutlineModel;
class Skin;

/// A tree of rows: one line of text and a picture each, in the colours of the skin. All of it can
/// be done by keyboard: arrows, Enter, F2, Delete, the menu key, and typing a name.
class OutlineTree : public QTreeView, public TreeControl
{
    Q_OBJECT

public:
    OutlineTree(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);
    ~OutlineTree() override;

    void setRows(std::vector<TreeRow> rows) override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] TreeRow row(int index) const override;
    [[nodiscard]] int find(const QString& key) const override;
    void setRow(int index, const TreeRow& row) override;
    void insertRow(int index, const TreeRow& row) override;
    void removeRow(int index) override;
    [[nodiscard]] int currentRow() const override;
    void setCurrentRow(int index) override;
    void editRow(int index, const QString& text) override;
    [[nodiscard]] bool isEditing() const override;
    [[nodiscard]] QStringList folded() const override;
    void setFolded(const QStringList& keys) override;
    [[nodiscard]] int firstVisibleRow() const override;
    void setFirstVisibleRow(int index) override;
    void setNote(const EmptyNote& note) override;
    void setTreeFont(const GridFont& font) override;
    void focus() override;

    /// Lets drags of others be dropped on the rows: asks the target at each move, a refused place
    /// shows the forbidden pointer. A folded row unfolds when the pointer rests on it. The target
    /// outlives the last event of the tree.
    void setDropTarget(DropTarget& target) { m_dropTarget = &target; }

    /// Units added to the height of a row by the font's settings.
    [[nodiscard]] int rowSpacing() const { return m_rowSpacing; }

    /// What a drag of a row carries; only this tree understands it.
    [[nodiscard]] std::unique_ptr<QMimeData> cargo(int index) const;

    /// The place of a row on the viewport, its indentation left out; empty while it is folded away.
    [[nodiscard]] QRect placeOf(int index) const;

signals:
    /// A single click on a row.
    void rowClicked(int row);
    /// The current row has changed by a key.
    void rowEntered(int row);
    /// A double click on a row, or Enter.
    void rowActivated(int row);
    /// F2.
    void editPressed(int row);
    /// The user has left another text in a row; the row does not show it by itself.
    void rowEdited(int row, const QString& text);
    /// The user is no longer changing a text, whether he has left it or not.
    void editEnded();
    /// The delete key was let go.
    void deletePressed(int row);
    /// A right click or the menu key; the row is the current one then. -1 beside all rows.
    void menuWanted(int row, const QPoint& place);
    /// The mouse was let go, or a drag has ended; comes behind rowClicked.
    void handLeft();
    /// A row was dropped on another.
    void rowDropped(int from, int to, DropPlace place);

protected:
    void drawRow(QPainter* painter,
                 const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    /// Where a drag would drop its row now.
    struct Target
    {
        int row = -1;
        DropPlace place = DropPlace::Into;

        bool operator==(const Target&) const = default;
    };

    void foldOrGoUp();
    [[nodiscard]] QColor ground(bool selected) const;
    [[nodiscard]] int draggedRow(const QMimeData* cargo) const;
    [[nodiscard]] Target targetAt(const QPoint& place, const QMimeData* cargo) const;
    void setTarget(const Target& target);
    [[nodiscard]] DropOffer offerOf(const QDropEvent& event) const;
    void moveOfOthers(QDragMoveEvent& event);
    void unfoldLater(int row);
    void paintTarget(QPainter& painter) const;

    const Skin& m_skin;
    const IconSet& m_icons;
    OutlineModel* m_model;
    Target m_target;
    EmptyView* m_note;
    DropTarget* m_dropTarget = nullptr;
    QTimer m_unfold;            ///< from the pointer's rest on a row to its unfolding
    int m_rowUnderPointer = -1; ///< of a drag of others
    int m_rowSpacing = 0;
};

} // namespace melovane
