#pragma once

#include "platform/sqlite/dialect/column_defaults.h"
#include "platform/sqlite/engine/row_set.h"

#include <map>

namespace melovane::sqlite {

/// The row that AddNew or Edit started: what was set so far, and how it reaches the tables.
///
/// A column can be set when it is a plain column of a table of the set. The same base column may
/// stand in a set twice under two names; both show what was set last. One writer serves all rows
/// that a set writes and keeps the statements that it made for the first of them.
class RowWriter
{
public:
    enum class Kind
    {
        NewRow,
        CurrentRow
    };

    /// \param set a keyed set
    explicit RowWriter(const RowSet& set);

    /// Begins a row. A new one gets its computed defaults here, so that what is shown is stored.
    void start(Session& session, Kind kind);

    void cancel();

    [[nodiscard]] bool isStarted() const { return m_kind.has_value(); }

    [[nodiscard]] bool isNewRow() const { return m_kind == Kind::NewRow; }

    /// \throws DbError kFieldReadOnly, kTypeMismatch, kFieldTooSmall, kZeroLength
    void set(int column, const Value& value);

    /// The value that was set or, in a new row, the default; nothing for other columns.
    [[nodiscard]] std::optional<Value> value(int column) const;

    struct Added
    {
        int table = 0;
        qint64 key = 0;
    };

    /// Writes the new row into the one table whose columns were set.
    Added insert(Session& session);

    /// Writes what was set into the row at the index. \throws DbError kRecordDeleted
    void update(Session& session, qint64 index);

    /// Deletes the row from the table of its first key. \throws DbError kRecordDeleted
    static void remove(Session& session, const RowSet& set, qint64 index);

private:
    /// Columns of the set by their numbers; of a base column that stands there twice, the first.
    using Slots = std::vector<int>;

    /// An insert into a table that gives these columns, and the computed defaults behind them.
    struct Insert
    {
        Slots given;
        std::vector<std::size_t> defaults;
        QString sql;
    };

    struct Defaults
    {
        bool known = false;
        std::vector<ComputedDefault> computed;
        std::vector<Value> values; ///< of the row that was started
    };

    [[nodiscard]] const ResultColumn& column(int slot) const;
    [[nodiscard]] const BaseTable& tableOf(int table) const;
    [[nodiscard]] int firstTable() const;
    [[nodiscard]] std::map<int, Slots> slotsByTable() const;
    void computeDefaults(Session& session);
    [[nodiscard]] const Insert& insertOf(int table);
    [[nodiscard]] const QString& updateOf(int table, const Slots& given);
    void updateTable(Session& session, int table, qint64 key, const Slots& given);

    const RowSet& m_set;
    Slots m_slots;               ///< by column number: the slot that stands for it
    std::vector<Value> m_values; ///< by slot
    std::vector<bool> m_isGiven; ///< by slot
    Slots m_given;               ///< in the order in which they were set
    std::optional<Kind> m_kind;
    std::vector<Defaults> m_defaults; ///< by table
    std::vector<Insert> m_inserts;    ///< by table: the one used last
    std::map<Slots, QString> m_updates;
};

} // namespace melovane::sqlite
