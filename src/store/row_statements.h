#pragma once

#include "platform/db/value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace melovane {

class Database;
class QueryDef;

/// A column that a statement writes.
struct WrittenColumn
{
    QString name;
    FieldType type = FieldType::Text;
};

/// The columns of these names, without regard to case, with the types that the table gives them.
/// \throws DbError kItemNotFound for a name that is no column
[[nodiscard]] std::vector<WrittenColumn>
writtenColumns(Database& database, const QString& table, const QStringList& names);

/// Adds row after row to a table: prepared once, many times faster than a recordset. Columns that
/// are not named get their defaults.
class RowInsert
{
public:
    RowInsert(Database& database, const QString& table, const std::vector<WrittenColumn>& columns);
    ~RowInsert();

    /// \param values in the order of the columns \throws DbError kDuplicateKey ...
    void run(const std::vector<Value>& values);

private:
    QStringList m_names;
    std::unique_ptr<QueryDef> m_query;
};

/// Changes the same columns of row after row, likewise.
class RowUpdate
{
public:
    RowUpdate(Database& database,
              const QString& table,
              const WrittenColumn& key,
              const std::vector<WrittenColumn>& columns);
    ~RowUpdate();
    RowUpdate(RowUpdate&&) noexcept;
    RowUpdate& operator=(RowUpdate&&) noexcept;

    /// A key that no row has changes nothing.
    void run(const Value& key, const std::vector<Value>& values);

private:
    QStringList m_names;
    std::unique_ptr<QueryDef> m_query;
};

} // namespace melovane
