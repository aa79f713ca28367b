#pragma once

#include "platform/sqlite/engine/connection.h"

namespace melovane::sqlite {

/// Makes tables of the main file in the form that table_reader.h reads back. To be called inside a
/// transaction, with checked definitions.
class TableMaker
{
public:
    explicit TableMaker(Connection& connection)
        : m_connection(connection)
    {}

    void make(const TableDef& table);
    void addIndex(const TableDef& table, const IndexDef& index);

    /// Gives a table other columns or indexes; rows, row numbers and triggers stay. A column whose
    /// type or width changes is converted. \throws DbError when a value does not fit
    void rebuild(const TableDef& before, const TableDef& after);

private:
    void createTable(const TableDef& table, const QString& name);
    void createIndexes(const TableDef& table);
    void writeProperties(const TableDef& table);
    void copyRows(const TableDef& before, const TableDef& after);
    [[nodiscard]] QStringList triggersOf(const QString& table);
    [[nodiscard]] qint64 sequenceOf(const QString& table);
    void setSequence(const QString& table, qint64 value);

    Connection& m_connection;
};

} // namespace melovane::sqlite
