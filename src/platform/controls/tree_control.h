#pragma once

#include "platform/controls/grid_control.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

/// The check box at the end of a row.
enum class RowTick : quint8
{
    None, ///< the row has no box
    Off,
    On
};

/// A row of a tree.
struct TreeRow
{
    QString key; ///< what the row is; hidden from the user
    QString text;
    QString picture;      ///< name of an icon, without regard to case; empty for none
    int level = 0;        ///< 0 for a root; a row stands below the nearest one above of less level
    bool heading = false; ///< bold, with a picture in the accent colour
    bool bold = false;
    bool dimmed = false; ///< steps back
    bool movable = false;
    /// Its rows are read when it is opened for the first time: it can be opened while none is
    /// below it.
    bool fillable = false;
    RowTick tick = RowTick::None;
    int countLetters = 0; ///< letters at the end of the text that are a count, in second text
    QString toolTip;      ///< said over the text, whether it fits or not
    /// Full path of a picture that stands in place of text and picture, as wide as the tree at
    /// most and never enlarged.
    QString image;

    bool operator==(const TreeRow&) const = default;
};

/// Where a row was dropped.
enum class DropPlace
{
    Above,
    Into, ///< on a row that may hold others
    Below
};

/// A tree as logic sees it: all its rows from top to bottom, whatever is folded away, counted from
/// 0. A row number that no row has is never an error: nothing happens, and what is asked for is
/// empty.
class TreeControl
{
public:
    virtual ~TreeControl() = default;

    /// Shows these rows instead of all others, unfolded; none is current, and no event tells of it.
    virtual void setRows(std::vector<TreeRow> rows) = 0;

    [[nodiscard]] virtual int rowCount() const = 0;
    [[nodiscard]] virtual TreeRow row(int index) const = 0;
    /// The first row of that key, or -1.
    [[nodiscard]] virtual int find(const QString& key) const = 0;
    /// The first one behind that row, or -1.
    [[nodiscard]] virtual int findNext(const QString& key, int behind) const = 0;

    /// The row keeps its level.
    virtual void setRow(int index, const TreeRow& row) = 0;
    /// Puts a row in front of another, or behind the last. It must not part a row from those below
    /// it.
    virtual void insertRow(int index, const TreeRow& row) = 0;
    /// The same with many, in their order; a row in front of them that had none below it stays
    /// closed.
    virtual void insertRows(int index, std::vector<TreeRow> rows) = 0;
    /// The rows below it go, too. The current row becomes one of its neighbours without an event.
    virtual void removeRow(int index) = 0;

    /// -1 when there is none.
    [[nodiscard]] virtual int currentRow() const = 0;
    /// Also brings it on the screen; -1 for none. No event tells of it.
    virtual void setCurrentRow(int index) = 0;

    /// From top to bottom; the current row alone while the user has not selected more.
    [[nodiscard]] virtual std::vector<int> selectedRows() const = 0;

    /// Lets the user change the text of a row.
    virtual void editRow(int index, const QString& text) = 0;
    /// Whether the user is changing a text.
    [[nodiscard]] virtual bool isEditing() const = 0;

    /// Keys of the rows that are folded.
    [[nodiscard]] virtual QStringList folded() const = 0;
    /// Folds the rows of these keys and unfolds all others.
    virtual void setFolded(const QStringList& keys) = 0;
    /// Folds the rows of some keys, then unfolds those of others, in one go however many they are;
    /// all other rows stay as they are.
    virtual void setFolds(const QStringList& folded, const QStringList& open) = 0;

    /// Whether the rows below a row are shown, as far as those above it are open, too. False
    /// without any.
    [[nodiscard]] virtual bool isOpen(int index) const = 0;
    virtual void setOpen(int index, bool open) = 0;
    /// Folds every row of that level and of deeper ones, and opens all others.
    virtual void foldTo(int level) = 0;

    /// The first row on the screen, or -1.
    [[nodiscard]] virtual int firstVisibleRow() const = 0;
    /// Scrolls so that it is the first one on the screen, as far as there are rows for that.
    virtual void setFirstVisibleRow(int index) = 0;

    /// Stands in front of the rows until an empty one comes; they keep what they are.
    virtual void setNote(const EmptyNote& note) = 0;

    /// Rows of a heading are bold in any font.
    virtual void setTreeFont(const GridFont& font) = 0;

    /// Gives it the keyboard.
    virtual void focus() = 0;
};

} // namespace melovane
