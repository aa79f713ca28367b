#pragma once

#include "platform/controls/tree_control.h"

#include <algorithm>

namespace melovane::test {

/// A tree without a window. What the user would type is said by `edited`.
class PlainTree : public TreeControl
{
public:
    void setTreeFont(const GridFont& wanted) override { font = wanted; }

    void setNote(const EmptyNote& wanted) override { note = wanted; }

    void setRows(std::vector<TreeRow> wanted) override
    {
        rows = std::move(wanted);
        current = -1;
        editing = false;
        foldedKeys.clear();
        ++fills;
    }

    [[nodiscard]] int rowCount() const override { return int(rows.size()); }

    [[nodiscard]] int findNext(const QString& key, int behind) const override
    {
        const auto found = std::find_if(rows.begin() + std::min(behind + 1, rowCount()), rows.end(),
                                        [&](const TreeRow& row) { return row.key == key; });
        return found == rows.end() ? -1 : int(found - rows.begin());
    }

    [[nodiscard]] TreeRow row(int index) const override
    {
        ++rowsAsked;
        return has(index) ? rows[size_t(index)] : TreeRow();
    }

    [[nodiscard]] int find(const QString& key) const override
    {
        const auto found = std::find_if(rows.begin(), rows.end(),
                                        [&](const TreeRow& row) { return row.key == key; });
        return found == rows.end() ? -1 : int(found - rows.begin());
    }

    void setRow(int index, const TreeRow& row) override
    {
        if (has(index)) {
            rows[size_t(index)] = row;
        }
    }

    void insertRow(int index, const TreeRow& row) override
    {
        rows.insert(rows.begin() + index, row);
    }

    void insertRows(int index, std::vector<TreeRow> wanted) override
    {
        rows.insert(rows.begin() + index, wanted.begin(), wanted.end());
    }

    void removeRow(int index) override
    {
        if (has(index)) {
            rows.erase(rows.begin() + index, rows.begin() + endOf(index));
            current = std::min(current, rowCount() - 1);
        }
    }

    [[nodiscard]] int currentRow() const override { return current; }

    void setCurrentRow(int index) override
    {
        current = has(index) ? index : -1;
        first = scrolls ? current : first;
    }

    void editRow(int index, const QString& text) override
    {
        editing = true;
        editedRow = index;
        editedText = text;
    }

    [[nodiscard]] bool isEditing() const override { return editing; }

    [[nodiscard]] std::vector<int> selectedRows() const override
    {
        return selected.empty() && current >= 0 ? std::vector<int>{current} : selected;
    }

    [[nodiscard]] bool isOpen(int index) const override
    {
        return has(index) && endOf(index) > index + 1 && !foldedKeys.contains(row(index).key);
    }

    void setOpen(int index, bool open) override
    {
        foldedKeys.removeAll(row(index).key);
        if (!open && has(index)) {
            foldedKeys.append(row(index).key);
        }
    }

    void foldTo(int level) override
    {
        foldedKeys.clear();
        for (int index = 0; index < rowCount(); ++index) {
            if (row(index).level >= level && endOf(index) > index + 1) {
                foldedKeys.append(row(index).key);
            }
        }
    }

    [[nodiscard]] QStringList folded() const override { return foldedKeys; }

    void setFolded(const QStringList& keys) override { foldedKeys = keys; }

    void setFolds(const QStringList& folded, const QStringList& open) override
    {
        for (const QString& key : folded) {
            setOpen(find(key), false);
        }
        for (const QString& key : open) {
            setOpen(find(key), true);
        }
    }

    [[nodiscard]] int firstVisibleRow() const override { return first; }

    void setFirstVisibleRow(int index) override { first = index; }

    void focus() override {}

    /// "text" of every row, two blanks before those below another.
    [[nodiscard]] QStringList texts() const
    {
        QStringList result;
        for (const TreeRow& row : rows) {
            result.append(QString(qsizetype{2} * row.level, u' ') + row.text);
        }
        return result;
    }

    std::vector<TreeRow> rows;
    std::vector<int> selected;
    QStringList foldedKeys;
    QString editedText;
    GridFont font;
    EmptyNote note;
    int current = -1;
    int first = -1;
    int editedRow = -1;
    int fills = 0;
    mutable int rowsAsked = 0;
    bool scrolls = false; ///< a row that becomes current comes to the top
    bool editing = false;

private:
    /// The row behind the last one below it.
    [[nodiscard]] int endOf(int index) const
    {
        int end = index + 1;
        while (end < rowCount() && rows[size_t(end)].level > rows[size_t(index)].level) {
            ++end;
        }
        return end;
    }

    [[nodiscard]] bool has(int index) const { return index >= 0 && index < rowCount(); }
};

} // namespace melovane::test
