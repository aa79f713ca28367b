#pragma once

#include "platform/qt/outline_keys.h"
#include "platform/qt/outline_rows.h"
#include "platform/qt/outline_texts.h"
#include "platform/qt/outline_words.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <optional>
#include <string>
#include <vector>

namespace melovane {

/// The lines of an outline: what is neither folded away nor left out by the filter.
///
/// Rows are counted from top to bottom whatever is shown; an index stands for a line.
class OutlineModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit OutlineModel(QObject* parent = nullptr);
    ~OutlineModel() override;

    [[nodiscard]] const OutlineRows& rows() const { return m_rows; }

    void setRows(std::vector<TreeRow> rows);
    void setRow(int row, const TreeRow& value);
    void insertRows(int row, std::vector<TreeRow> rows);
    void removeRow(int row);

    /// The first row of a key, or -1.
    [[nodiscard]] int find(const QString& key) const;
    /// The first row of a key behind that row, or -1.
    [[nodiscard]] int findNext(const QString& key, int behind) const;

    /// -1 for no line.
    [[nodiscard]] int rowOf(const QModelIndex& index) const;
    /// No index for a row that is no line.
    [[nodiscard]] QModelIndex indexOf(int row) const;

    /// A row that it cannot be said of is left as it is.
    void setOpen(int row, bool open);
    void setBranchOpen(int row, bool open);
    void foldTo(int level);
    void foldOnly(const QStringList& keys);
    /// Folds some, then opens others; the rest stays as it is.
    void setFolds(const QStringList& folded, const QStringList& open);
    [[nodiscard]] QStringList folded() const;
    /// Opens all above a row and lets it through the filter.
    void reveal(int row);

    /// Only rows that hold the text, without regard to case, and those above them; an empty text
    /// ends it and what was folded is so again.
    void setFilter(const QString& text);
    /// Rows that hold the text of the filter; -1 without one.
    [[nodiscard]] int filterHits() const;

    /// The first line behind `line` - 1, round to it again, whose text begins with a text, or else
    /// holds it, without regard to case; -1 for none.
    [[nodiscard]] int findText(int line, const QString& text) const;

    /// The rows with an image, rising.
    [[nodiscard]] const std::vector<int>& imageRows() const { return m_imageRows; }

    /// The row that may be edited at present, or none.
    void setEdited(const QModelIndex& index, const QString& text);
    /// Whether all lines were made anew since. True once.
    [[nodiscard]] bool takeLostEdit();

    /// Rows that stay may be dragged, too.
    void setAllDraggable() { m_allDraggable = true; }

    void setWords(OutlineWords words) { m_words = std::move(words); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Lines have no headings, for a reader of the screen neither.
    [[nodiscard]] QVariant
    headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    /// The user has left this text in the row that was edited.
    void edited(int row, const QString& text);

private:
    [[nodiscard]] std::vector<int> rowsOf(const QStringList& keys) const;
    void showLines(const OutlineRows::NewLines& lines);
    void hideLines(const OutlineRows::Run& run);
    void becomeLines(const std::vector<std::uint32_t>& wanted);
    void filterAgain();
    void noteImages(int at, int gone, int come);
    [[nodiscard]] const std::vector<std::uint32_t>& findHits();
    [[nodiscard]] QString description(int row) const;
    [[nodiscard]] const OutlineTexts& texts() const;
    void prepare();

    OutlineRows m_rows;
    mutable OutlineKeys m_keys;
    mutable OutlineTexts m_texts;
    std::string m_filter;              ///< folded; empty for none
    std::vector<std::uint32_t> m_hits; ///< of the filter
    std::vector<int> m_imageRows;
    QPersistentModelIndex m_edited;
    QString m_editedText;
    std::vector<TreeRow> m_former; ///< not shown any more; to give back many takes its time
    QTimer m_preparing;            ///< runs until what is searched in large trees is made
    OutlineWords m_words;
    bool m_allDraggable = false;
    bool m_isEdited = false;
};

} // namespace melovane
