#pragma once

#include "platform/controls/tree_control.h"

#include <QElapsedTimer>
#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

class QMimeData;

namespace melovane {

class DropTarget;
class EmptyView;
class IconSet;
class OutlineDrags;
class OutlineModel;
class OutlinePainter;
struct OutlineWords;
class Skin;

/// A tree of rows: one line of text and a picture each, in the colours of the skin. All of it can
/// be done by keyboard: arrows, plus, minus, asterisk, Enter, space, F2, Delete, the menu key, and
/// typing a name.
///
/// It is a flat list of the lines that are not folded away, so that 300,000 rows cost what is on
/// the screen.
class OutlineTree : public QTableView, public TreeControl
{
    Q_OBJECT

public:
    OutlineTree(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);
    ~OutlineTree() override;

    void setRows(std::vector<TreeRow> rows) override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] TreeRow row(int index) const override;
    [[nodiscard]] int find(const QString& key) const override;
    [[nodiscard]] int findNext(const QString& key, int behind) const override;
    void setRow(int index, const TreeRow& row) override;
    void insertRow(int index, const TreeRow& row) override;
    void insertRows(int index, std::vector<TreeRow> rows) override;
    void removeRow(int index) override;
    [[nodiscard]] int currentRow() const override;
    void setCurrentRow(int index) override;
    [[nodiscard]] std::vector<int> selectedRows() const override;
    void editRow(int index, const QString& text) override;
    [[nodiscard]] bool isEditing() const override;
    [[nodiscard]] QStringList folded() const override;
    void setFolded(const QStringList& keys) override;
    void setFolds(const QStringList& folded, const QStringList& open) override;
    [[nodiscard]] bool isOpen(int index) const override;
    void setOpen(int index, bool open) override;
    void foldTo(int level) override;
    [[nodiscard]] int firstVisibleRow() const override;
    void setFirstVisibleRow(int index) override;
    void setNote(const EmptyNote& note) override;
    void setTreeFont(const GridFont& font) override;
    void focus() override;

    /// Whether several rows can be selected; at first only one can.
    void setMultiSelection(bool on);

    /// Narrows the tree to the rows whose text holds a text, without regard to case and to counts,
    /// and those above them. An empty text ends it: what was folded and the place on the screen are
    /// again what they were, and the current row stays. Rows can come and go meanwhile; a row that
    /// setCurrentRow brings is shown whether it fits or not. No event tells of it.
    void setFilter(const QString& text);
    /// Rows that hold the text of the filter; -1 without one.
    [[nodiscard]] int filterHits() const;
    /// Stands in the place of the rows while no row fits the filter.
    void setFilterNote(const QString& text);

    /// Lets drags of others be dropped on the rows: asks the target at each move, a refused place
    /// shows the forbidden pointer. A folded row unfolds when the pointer rests on it. The target
    /// outlives the last event of the tree.
    void setDropTarget(DropTarget& target);

    /// Asked when the user begins to drag rows that are not movable; they only leave as copies.
    void setDragSource(std::function<DragContent(const std::vector<int>& rows)> source);

    /// Asked for the tool tip over the box of a row.
    void setTickTip(std::function<QString(int row)> tip);

    /// What a reader of the screen says of rows.
    void setWords(const OutlineWords& words);

    /// What a drag of a movable row carries; only this tree understands it.
    [[nodiscard]] std::unique_ptr<QMimeData> cargo(int index) const;

    /// The place of a row on the viewport, its indentation left out; empty while it is folded away.
    [[nodiscard]] QRect placeOf(int index) const;
    /// The place of its box; empty without one.
    [[nodiscard]] QRect tickPlaceOf(int index) const;

    /// Goes to the next line that begins with what is typed in one go, or else holds it.
    void keyboardSearch(const QString& text) override;

signals:
    /// A single click on a row.
    void rowClicked(int row);
    /// The current row or the selected ones have changed by a key.
    void rowEntered(int row);
    /// A double click on a row, or Enter.
    void rowActivated(int row);
    /// The user opens a fillable row that has nothing below it: whoever fills it inserts rows and
    /// calls setOpen.
    void rowOpening(int row);
    /// The user has folded or opened a row that has rows below it. Told of the topmost one alone
    /// when several are opened at once.
    void rowToggled(int row, bool open);
    /// The box of a row was clicked, or Ctrl+Space pressed. The row shows it already.
    void rowTicked(int row, bool on);
    /// A key with a letter that means nothing to the tree. When nobody listens it searches.
    void letterTyped(const QString& text);
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
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    /// What the user has before him, over a change that makes all lines anew.
    struct Choice
    {
        int current = -1;
        int first = -1; ///< on the screen
        std::vector<int> selected;
    };

    /// A part of a line that answers clicks by itself.
    struct Part
    {
        enum class Kind
        {
            None,
            Mark,
            Tick
        };

        Kind kind = Kind::None;
        int row = -1;

        bool operator==(const Part&) const = default;
    };

    [[nodiscard]] Part partAt(const QPoint& place) const;
    void choose(const Choice& choice);
    void afterReset();
    void fitImages();
    void updateNote();
    [[nodiscard]] bool takesKey(const QKeyEvent& event);
    void typed(const QString& text);
    void openOrGoDown();
    void foldOrGoUp();
    void openBranch(int row);
    void toggle(int row, bool open);
    void flipTick(int row);

    OutlineModel* m_model;
    OutlinePainter* m_painter;
    OutlineDrags* m_drags;
    EmptyView* m_note;
    EmptyNote m_wantedNote;
    QString m_filterNote;
    Choice m_kept;               ///< over a reset
    QString m_currentUnfiltered; ///< keys of the rows that were current and first on the screen
    QString m_firstUnfiltered;   ///< before the filter
    Part m_pressed;
    QString m_typed;        ///< in one go
    QElapsedTimer m_typing; ///< since the last letter
    bool m_forgets = false; ///< a reset that leaves nothing of what there was
    bool m_selectionMoved = false;
};

} // namespace melovane
