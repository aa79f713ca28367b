#pragma once

#include "platform/sqlite/engine/catalogue.h"
#include "platform/sqlite/engine/transactions.h"

namespace melovane::sqlite {

/// Changes the catalogue of the main file. Each operation is one transaction and is seen by other
/// connections at their next statement. Links and queries are changed here alone; tables of side
/// files only through a connection of their own.
class SchemaChange
{
public:
    SchemaChange(Connection& connection, Catalogue& catalogue, Transactions& transactions)
        : m_connection(connection)
        , m_catalogue(catalogue)
        , m_transactions(transactions)
    {}

    /// \throws DbError kObjectExists, kSyntax for a definition that makes no table
    void createTable(const TableDef& table);
    void createLink(const TableDef& link);
    void createQuery(const QString& name, const QString& sql, QueryType type);

    /// Drops a table with its rows, or forgets a link. \throws DbError kItemNotFound
    void dropTable(const QString& name);
    void dropQuery(const QString& name);

    void apply(const DdlAction& action);

private:
    void addColumn(const QString& table, const FieldDef& field);
    void alterColumn(const QString& table, const FieldDef& field);
    void dropColumn(const QString& table, const QString& name);
    void createIndex(const QString& table, const IndexDef& index);
    void dropIndex(const QString& table, const QString& name);

    /// Runs the work as one change and makes other connections look.
    void change(const std::function<void()>& work);
    void requireFree(const QString& name);
    const CatalogueObject& require(const QString& name, bool query);
    TableDef localTable(const QString& name);
    void addObject(const QString& kind, const CatalogueObject& object);
    void removeObject(const QString& name);

    Connection& m_connection;
    Catalogue& m_catalogue;
    Transactions& m_transactions;
};

} // namespace melovane::sqlite
