#include "platform/sqlite/engine/database.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/bulk_insert.h"
#include "platform/sqlite/engine/pasted_insert.h"
#include "platform/sqlite/engine/query_def.h"
#include "platform/sqlite/engine/recordset.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// No text longer than this, brackets included, is the name of a query.
constexpr qsizetype kLongestName = 80;

[[noreturn]] void throwItemNotFound(const QString& name)
{
    throw dbError(DbFault::ItemNotFound, name);
}

/// True for a text that begins as a statement does; others are names of tables and queries.
bool isStatement(QStringView source)
{
    if (source.startsWith(u'(')) {
        return true;
    }
    for (const auto word :
         {"select"_L1, "parameters"_L1, "transform"_L1, "execute"_L1, "exec"_L1}) {
        if (source.startsWith(word, Qt::CaseInsensitive) && source.size() > word.size() &&
            !source[word.size()].isLetterOrNumber() && source[word.size()] != u'_') {
            return true;
        }
    }
    return false;
}

/// A name without the brackets it may stand in.
QString bareName(QStringView source)
{
    QStringView name = source.trimmed();
    if (name.startsWith(u'[') && name.endsWith(u']')) {
        name = name.sliced(1, name.size() - 2);
    }
    return name.toString();
}

TableDef tableOf(const Catalogue& catalogue, const CatalogueObject& object)
{
    if (object.kind == CatalogueObject::Kind::Table) {
        return catalogue.table(object);
    }
    TableDef link;
    try {
        link = catalogue.table(object);
    } catch (const DbError&) {
        // A link stands in the catalogue whether or not its file is there; its columns are unknown
        // then.
        link.Name = object.name;
    }
    link.Attributes = kTableLinked;
    link.Connect = object.connect;
    link.SourceTableName = object.source;
    return link;
}

/// The present row of a statement.
class StatementRow : public WalkedRow
{
public:
    explicit StatementRow(const Statement& statement)
        : m_statement(statement)
    {}

    [[nodiscard]] bool isNull(int column) const override { return m_statement.isNull(column); }

    [[nodiscard]] bool isNumber(int column) const override
    {
        const int type = sqlite3_column_type(m_statement.handle(), column);
        return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
    }

    [[nodiscard]] qint64 number(int column) const override { return m_statement.number(column); }

    [[nodiscard]] double real(int column) const override
    {
        return sqlite3_column_double(m_statement.handle(), column);
    }

    [[nodiscard]] std::string_view bytes(int column) const override
    {
        const auto* const begin =
            reinterpret_cast<const char*>(sqlite3_column_text(m_statement.handle(), column));
        return begin ? std::string_view(
                           begin, std::size_t(sqlite3_column_bytes(m_statement.handle(), column)))
                     : std::string_view();
    }

    [[nodiscard]] QString text(int column) const override { return m_statement.text(column); }

private:
    const Statement& m_statement;
};

const CatalogueObject* objectOf(const Catalogue& catalogue, const QString& name, bool query)
{
    const CatalogueObject* object = catalogue.object(name);
    const bool fits = object && (object->kind == CatalogueObject::Kind::Query) == query;
    return fits ? object : nullptr;
}

} // namespace

std::vector<TableDef> SqliteTableDefs::All() const
{
    std::vector<TableDef> tables;
    const Catalogue& catalogue = openSession(m_lease).catalogue();
    for (const CatalogueObject& object : catalogue.objects()) {
        if (object.kind != CatalogueObject::Kind::Query) {
            tables.push_back(tableOf(catalogue, object));
        }
    }
    return tables;
}

TableDef SqliteTableDefs::Item(const QString& name) const
{
    const Catalogue& catalogue = openSession(m_lease).catalogue();
    const CatalogueObject* object = objectOf(catalogue, name, false);
    if (!object) {
        throwItemNotFound(name);
    }
    return tableOf(catalogue, *object);
}

bool SqliteTableDefs::Contains(const QString& name) const
{
    return objectOf(openSession(m_lease).catalogue(), name, false) != nullptr;
}

QStringList SqliteTableDefs::ownNames() const
{
    QStringList names;
    for (const CatalogueObject& object : openSession(m_lease).catalogue().objects()) {
        if (object.kind == CatalogueObject::Kind::Table) {
            names.append(object.name);
        }
    }
    return names;
}

QString SqliteTableDefs::connectOf(const QString& name) const
{
    const CatalogueObject* object = objectOf(openSession(m_lease).catalogue(), name, false);
    if (!object) {
        throwItemNotFound(name);
    }
    return object->connect;
}

void SqliteTableDefs::Append(const TableDef& table)
{
    SchemaChange change = openSession(m_lease).schemaChange();
    if (table.isLink()) {
        change.createLink(table);
    } else {
        change.createTable(table);
    }
}

void SqliteTableDefs::Delete(const QString& name)
{
    openSession(m_lease).schemaChange().dropTable(name);
}

QStringList SqliteQueryDefs::Names() const
{
    QStringList names;
    for (const CatalogueObject& object : openSession(m_lease).catalogue().objects()) {
        if (object.kind == CatalogueObject::Kind::Query) {
            names.append(object.name);
        }
    }
    return names;
}

bool SqliteQueryDefs::Contains(const QString& name) const
{
    return objectOf(openSession(m_lease).catalogue(), name, true) != nullptr;
}

std::unique_ptr<QueryDef> SqliteQueryDefs::Item(const QString& name) const
{
    const CatalogueObject* object = objectOf(openSession(m_lease).catalogue(), name, true);
    if (!object) {
        throwItemNotFound(name);
    }
    return std::make_unique<SqliteQueryDef>(m_lease, object->name, object->sql, object->type);
}

void SqliteQueryDefs::Delete(const QString& name)
{
    openSession(m_lease).schemaChange().dropQuery(name);
}

SqliteDatabase::SqliteDatabase(QString path, std::shared_ptr<SessionLease> lease)
    : m_path(std::move(path))
    , m_lease(std::move(lease))
    , m_tableDefs(m_lease)
    , m_queryDefs(m_lease)
{}

std::unique_ptr<Recordset> SqliteDatabase::OpenRecordset(const QString& source)
{
    Session& open = session();
    QString text = source;
    if (!isStatement(QStringView(source).trimmed())) {
        const QString name = bareName(source);
        const CatalogueObject* object = open.catalogue().object(name);
        if (!object) {
            throw dbError(DbFault::SourceNotFound, name);
        }
        text = u"select * from [%1]"_s.arg(object->name);
    }
    const std::shared_ptr<const Prepared> statement = open.translate(text, false);
    if (!statement->translation.parameters.empty()) {
        throw dbError(DbFault::ParameterWithoutValue,
                      statement->translation.parameters.front().Name);
    }
    return openRecordset(m_lease, statement, {});
}

void SqliteDatabase::walkRows(const QString& statement, const RowVisit& visit)
{
    Session& open = session();
    const std::shared_ptr<const Prepared> prepared = open.translate(statement, false);
    withStatement(statement, [&] {
        if (prepared->translation.kind != StatementKind::Select) {
            throw dbError(DbFault::ActionOpened);
        }
        if (!prepared->translation.parameters.empty()) {
            throw dbError(DbFault::ParameterWithoutValue,
                          prepared->translation.parameters.front().Name);
        }
        open.requireReadable(*prepared);
        const auto rows =
            open.connection().statements().take(prepared->translation.sql, prepared->seenAgain);
        const StatementRow row(*rows);
        while (rows->step()) {
            visit(row);
        }
    });
}

std::unique_ptr<BulkInsert> SqliteDatabase::bulkInsert(const QString& table,
                                                       const QStringList& columns)
{
    return std::make_unique<SqliteBulkInsert>(m_lease, table, columns);
}

void SqliteDatabase::Execute(const QString& statement)
{
    Session& open = session();
    const bool mayBeName = statement.size() <= kLongestName;
    if (mayBeName && m_queryDefs.Contains(bareName(statement))) {
        const auto stored = m_queryDefs.Item(bareName(statement));
        stored->Execute();
        m_recordsAffected = stored->RecordsAffected();
        return;
    }
    if (executePasted(statement)) {
        return;
    }
    const std::shared_ptr<const Prepared> prepared = open.translate(statement, false);
    if (!prepared->translation.parameters.empty()) {
        throw dbError(DbFault::ParameterWithoutValue,
                      prepared->translation.parameters.front().Name);
    }
    m_recordsAffected = open.execute(*prepared, {});
}

bool SqliteDatabase::executePasted(const QString& statement)
{
    const std::optional<PastedInsert> apart = takeApart(statement);
    if (!apart) {
        return false;
    }
    Session& open = session();
    std::shared_ptr<const Prepared> shared;
    try {
        shared = open.translate(apart->statement, true);
    } catch (const DbError&) {
        return false; // the statement itself is to tell what is wrong with it
    }
    if (shared->translation.parameters.size() != apart->values.size()) {
        return false;
    }
    try {
        m_recordsAffected = open.execute(*shared, apart->values);
    } catch (const DbError& error) {
        throw DbError(error.number(), error.text(), statement);
    }
    return true;
}

std::unique_ptr<QueryDef> SqliteDatabase::CreateQueryDef(const QString& name, const QString& sql)
{
    Session& open = session();
    const QueryType type = queryTypeOf(open, sql);
    if (!name.isEmpty()) {
        open.schemaChange().createQuery(name, sql, type);
    }
    return std::make_unique<SqliteQueryDef>(m_lease, name, sql, type);
}

void SqliteDatabase::BeginTrans()
{
    session().transactions().begin();
}

void SqliteDatabase::BeginTransOn(const QString& table)
{
    Session& open = session();
    const std::optional<Source> source = open.catalogue().find(table);
    if (!source || source->kind != Source::Kind::Table) {
        throw dbError(DbFault::SourceNotFound, table);
    }
    open.transactions().begin(source->schema);
}

void SqliteDatabase::CommitTrans()
{
    session().transactions().commit();
}

void SqliteDatabase::Rollback()
{
    if (!m_lease) {
        return; // closing has undone it
    }
    session().rollback();
}

qint64 SqliteDatabase::DataVersion()
{
    return session().dataVersion();
}

qint64 SqliteDatabase::fileVersion()
{
    return session().fileVersion();
}

void SqliteDatabase::Close()
{
    m_lease.reset();
}

} // namespace melovane::sqlite
