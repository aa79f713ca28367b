#pragma once

#include "platform/db/definitions.h"

#include <QString>

#include <optional>
#include <vector>

/// What goes into a translation and what comes out of it.
namespace melovane::sqlite {

/// A table, link or stored query as the translator sees it.
struct Source
{
    enum class Kind
    {
        Table,
        Query
    };

    Kind kind = Kind::Table;
    QString name;                 ///< as the catalogue spells it
    QString schema;               ///< tables: SQLite schema, "main" or that of an attached file
    QString table;                ///< tables: name in that schema
    std::vector<FieldDef> fields; ///< tables: columns in catalogue order
    QString sql;                  ///< queries: their text in the dialect
};

/// What the translator asks about names. Names have no regard to case.
class NameSource
{
public:
    virtual ~NameSource() = default;

    /// Null when there is nothing of that name. A link whose file or table is missing throws
    /// DbError kFileNotFound or kObjectNotFound.
    [[nodiscard]] virtual std::optional<Source> find(const QString& name) const = 0;
};

enum class StatementKind
{
    Select,
    Insert,
    Update,
    Delete,
    MakeTable, ///< `ddl` makes the table, then `sql` fills it: one change
    Ddl
};

/// A column of a result.
struct ResultColumn
{
    FieldDef field;
    int table =
        -1; ///< index into Translation::tables of the table that it is a plain column of, or -1
    QString column; ///< name of the column in that table
};

/// A table that rows of a result come from.
struct BaseTable
{
    QString name; ///< as the catalogue spells it
    QString schema;
    QString table;
    bool optional = false; ///< on the null-giving side of an outer join: its row id may be null
};

/// A change of the catalogue.
struct DdlAction
{
    enum class Kind
    {
        CreateTable, ///< table (with fields and indexes)
        DropTable,   ///< table.Name
        AddColumn,   ///< table.Name, field
        AlterColumn, ///< table.Name, field (new type and size)
        DropColumn,  ///< table.Name, field.Name
        CreateIndex, ///< table.Name, index
        DropIndex,   ///< table.Name, index.Name
    };

    Kind kind = Kind::CreateTable;
    TableDef table;
    FieldDef field;
    IndexDef index;
};

/// A translated statement.
struct Translation
{
    StatementKind kind = StatementKind::Select;

    /// The whole statement for SQLite; parameter n of `parameters` is "?n", counted from 1. Empty
    /// for Ddl. SQLite takes that of a MakeTable once its table is there.
    QString sql;
    std::vector<ParameterDef> parameters;

    // -- Select only --
    std::vector<ResultColumn> columns;

    /// True when each result row is one row of each of `tables` (no distinct, union, group by,
    /// aggregate or set of unknown origin). Then keySql and rowSql are filled.
    bool keyed = false;
    std::vector<BaseTable> tables;

    /// Row ids only, one column per entry of `tables`, same rows in the same order as `sql`; same
    /// parameters. Ends in no limit unless the statement has `top`.
    QString keySql;

    /// The result columns of one row, found by the row ids "?1", "?2" ... of `tables`, preceded by
    /// the row id of each table as found now. No row, or a null for a table that is not optional,
    /// says that the row is gone. No other parameters.
    QString rowSql;

    /// Tables written by an action statement, or by the update of a set.
    std::vector<BaseTable> written;

    std::optional<DdlAction> ddl;

    QueryType queryType = QueryType::Select;
};

} // namespace melovane::sqlite
