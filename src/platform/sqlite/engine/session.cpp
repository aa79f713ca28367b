#include "platform/sqlite/engine/session.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/dialect.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Statements with pasted values come once; the cache is emptied when it is full of them.
constexpr qsizetype kMostPrepared = 512;
/// Longer texts are long lists of values and never come again.
constexpr qsizetype kLongestKept = 8192;

/// Notes the side files whose tables the translator asks for.
class NotingSource : public NameSource
{
public:
    NotingSource(const Catalogue& catalogue, QStringList& schemas)
        : m_catalogue(catalogue)
        , m_schemas(schemas)
    {}

    [[nodiscard]] std::optional<Source> find(const QString& name) const override
    {
        std::optional<Source> source = m_catalogue.find(name);
        const bool inSideFile =
            source && source->kind == Source::Kind::Table && source->schema != "main"_L1;
        if (inSideFile && !m_schemas.contains(source->schema)) {
            m_schemas.append(source->schema);
        }
        return source;
    }

private:
    const Catalogue& m_catalogue;
    QStringList& m_schemas;
};

} // namespace

Session::Session(const QString& path,
                 const ConnectionOptions& options,
                 std::shared_ptr<ColumnIndex> index)
    : m_connection(path, options)
    , m_attachments(m_connection)
    , m_catalogue(m_connection, m_attachments)
    , m_transactions(m_connection)
    , m_now(options.now)
    , m_index(std::move(index))
    , m_searchedTable(m_connection, m_catalogue)
{}

Catalogue& Session::catalogue()
{
    refreshCatalogue();
    return m_catalogue;
}

void Session::refreshCatalogue()
{
    // Inside a transaction nobody else changes the file; once is enough there.
    const qint64 transaction = m_transactions.isOpen() ? m_transactions.number() : 0;
    if (transaction == 0 || transaction != m_refreshedIn) {
        m_catalogue.refresh();
        m_refreshedIn = transaction;
    }
}

SchemaChange Session::schemaChange()
{
    return {m_connection, m_catalogue, m_transactions};
}

std::shared_ptr<const Prepared> Session::translate(const QString& text, bool allowParameters)
{
    return withStatement(text, [&]() -> std::shared_ptr<const Prepared> {
        refreshCatalogue();
        const QString key = (allowParameters ? u'p' : u'-') + text;
        if (const auto found = m_prepared.constFind(key);
            found != m_prepared.cend() && isCurrent(**found)) {
            (*found)->seenAgain = true;
            return *found;
        }
        std::shared_ptr<Prepared> made = makePrepared(text, allowParameters);
        if (text.size() <= kLongestKept) {
            if (m_prepared.size() >= kMostPrepared) {
                m_prepared.clear();
            }
            m_prepared.insert(key, made);
        }
        return made;
    });
}

std::shared_ptr<Prepared> Session::makePrepared(const QString& text, bool allowParameters)
{
    auto made = std::make_shared<Prepared>();
    QStringList schemas;
    made->text = text;
    const ParsedStatement parsed(text);
    made->translation =
        sqlite::translate(parsed, NotingSource(m_catalogue, schemas), allowParameters);
    for (const ResultColumn& column : made->translation.columns) {
        made->columns.add(column.field.Name);
    }
    for (const ParameterDef& parameter : made->translation.parameters) {
        made->parameters.add(parameter.Name);
    }
    made->catalogueVersion = m_catalogue.version();
    if (m_index && isOfSearchedTable(made->translation)) {
        made->search =
            searchStatement(parsed, m_catalogue.find(QString::fromUtf16(kSearchedTable))->fields);
    }
    for (const QString& schema : schemas) {
        made->sideFiles.emplace_back(schema, m_attachments.versionOf(schema));
    }
    return made;
}

bool Session::holds(const Prepared& statement)
{
    refreshCatalogue();
    return isCurrent(statement);
}

/// A cheap look at what the column index may be asked for.
bool Session::isOfSearchedTable(const Translation& translation) const
{
    const CatalogueObject* object = m_catalogue.object(QString::fromUtf16(kSearchedTable));
    if (!object || object->kind != CatalogueObject::Kind::Table ||
        translation.kind != StatementKind::Select || !translation.parameters.empty()) {
        return false;
    }
    return translation.keyed ? translation.tables.size() == 1 : translation.columns.size() == 1;
}

std::shared_ptr<const KeySource> Session::indexedKeys(const Prepared& statement)
{
    const bool asks = statement.search && !statement.search->isCount;
    return asks ? m_index->search(m_searchedTable, *statement.search) : nullptr;
}

std::optional<qint64> Session::indexedCount(const Prepared& statement)
{
    const bool asks = statement.search && statement.search->isCount;
    return asks ? m_index->count(m_searchedTable, *statement.search) : std::nullopt;
}

bool Session::isCurrent(const Prepared& statement)
{
    return statement.catalogueVersion == m_catalogue.version() &&
           std::all_of(statement.sideFiles.begin(), statement.sideFiles.end(),
                       [&](const std::pair<QString, qint64>& file) {
                           return m_attachments.versionOf(file.first) == file.second;
                       });
}

void Session::requireReadable(const Prepared& statement)
{
    for (const auto& [schema, version] : statement.sideFiles) {
        m_attachments.lockForTransaction(schema);
    }
}

int Session::execute(const Prepared& statement, const std::vector<Value>& parameters)
{
    return withStatement(statement.text, [&] {
        const Translation& translation = statement.translation;
        requireWritable();
        nextEpoch();
        if (translation.kind == StatementKind::MakeTable) {
            return makeTable(translation, parameters);
        }
        if (translation.ddl) {
            schemaChange().apply(*translation.ddl);
            return 0;
        }
        if (translation.kind == StatementKind::Select) {
            throw dbError(DbFault::SelectExecuted);
        }
        // One statement is one change by itself, and it takes its write lock before it reads.
        const auto action = m_connection.statements().take(translation.sql, statement.seenAgain);
        action->bindAll(parameters);
        action->run();
        return sqlite3_changes(m_connection.handle());
    });
}

int Session::makeTable(const Translation& translation, const std::vector<Value>& parameters)
{
    try {
        WriteScope scope(m_transactions);
        schemaChange().apply(*translation.ddl);
        int rows = 0;
        {
            const auto fill = m_connection.statements().take(translation.sql, false);
            fill->bindAll(parameters);
            fill->run();
            rows = sqlite3_changes(m_connection.handle());
        }
        scope.commit();
        return rows;
    } catch (...) {
        // The table was known for a moment and is gone again.
        m_catalogue.invalidate();
        throw;
    }
}

qint64 Session::dataVersion()
{
    const qint64 main = fileVersion();
    const qint64 side = m_attachments.foreignChanges();
    const bool mainChanged = std::exchange(m_mainVersion, main) != main;
    const bool sideChanged = std::exchange(m_sideVersion, side) != side;
    if (mainChanged || sideChanged) {
        ++m_foreignChanges;
    }
    return m_foreignChanges;
}

qint64 Session::fileVersion()
{
    return m_connection.number(u"PRAGMA main.data_version"_s);
}

void Session::rollback() noexcept
{
    m_transactions.rollback();
    // What was written is gone again, tables and queries too.
    m_catalogue.invalidate();
    nextEpoch();
}

void Session::settle() noexcept
{
    const bool wasOpen = m_connection.inTransaction();
    m_transactions.rollbackAll();
    if (wasOpen) {
        m_catalogue.invalidate();
    }
    nextEpoch();
}

Session& openSession(const std::weak_ptr<SessionLease>& lease)
{
    const std::shared_ptr<SessionLease> open = lease.lock();
    if (!open) {
        throw dbError(DbFault::DatabaseClosed);
    }
    return open->session();
}

} // namespace melovane::sqlite
