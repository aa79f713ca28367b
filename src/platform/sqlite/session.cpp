#include "platform/sqlite/session.h"

#include "platform/sqlite/sqlite_error.h"

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

Session::Session(const QString& path, const ConnectionOptions& options)
    : m_connection(path, options)
    , m_attachments(m_connection)
    , m_catalogue(m_connection, m_attachments)
    , m_transactions(m_connection)
    , m_now(options.now)
{}

Catalogue& Session::catalogue()
{
    m_catalogue.refresh();
    return m_catalogue;
}

SchemaChange Session::schemaChange()
{
    return {m_connection, m_catalogue, m_transactions};
}

std::shared_ptr<const Prepared> Session::translate(const QString& text, bool allowParameters)
{
    return withStatement(text, [&]() -> std::shared_ptr<const Prepared> {
        m_catalogue.refresh();
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
    made->translation =
        sqlite::translate(text, NotingSource(m_catalogue, schemas), allowParameters);
    made->catalogueVersion = m_catalogue.version();
    for (const QString& schema : schemas) {
        made->sideFiles.emplace_back(schema, m_attachments.versionOf(schema));
    }
    return made;
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
        if (translation.ddl) {
            schemaChange().apply(*translation.ddl);
            return 0;
        }
        if (translation.kind == StatementKind::Select) {
            throw DbError(dberror::kSyntax, u"A statement that gives rows cannot be executed."_s);
        }
        // One statement is one change by itself, and it takes its write lock before it reads.
        const auto action = m_connection.statements().take(translation.sql, statement.seenAgain);
        action->bindAll(parameters);
        action->run();
        return sqlite3_changes(m_connection.handle());
    });
}

qint64 Session::dataVersion()
{
    const qint64 main = m_connection.number(u"PRAGMA main.data_version"_s);
    const qint64 side = m_attachments.foreignChanges();
    const bool mainChanged = std::exchange(m_mainVersion, main) != main;
    const bool sideChanged = std::exchange(m_sideVersion, side) != side;
    if (mainChanged || sideChanged) {
        ++m_foreignChanges;
    }
    return m_foreignChanges;
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
        throw DbError(dberror::kObjectClosed, u"The database was closed."_s);
    }
    return open->session();
}

} // namespace melovane::sqlite
