#include "platform/sqlite/attachments.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/stored_text.h"

#include <QFile>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// SQLite's own limit as Debian builds it.
constexpr std::size_t kMostAttached = 10;

/// The path as a URI that opens an existing file and never makes one.
QString uriOf(const QString& path)
{
    const QByteArray encoded = QFile::encodeName(path).toPercentEncoding("/");
    return u"file:"_s + QString::fromLatin1(encoded) + u"?mode=rw"_s;
}

} // namespace

QString Attachments::schemaOf(const QString& path)
{
    const std::optional<FileId> id = fileId(path);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].path != path) {
            continue;
        }
        if (id && m_entries[i].id == *id) {
            m_entries[i].used = ++m_uses;
            return m_entries[i].schema;
        }
        detach(i);
        break;
    }
    if (!id) {
        throw dbError(DbFault::FileNotFound, path);
    }
    // A link to the own file must not become a second connection to it: the two would wait for
    // each other.
    return *id == m_connection.id() ? u"main"_s : attach(path, *id);
}

QString Attachments::attach(const QString& path, const FileId& id)
{
    checkDatabaseFile(path);
    if (m_entries.size() + std::size_t(m_leaving.size()) >= kMostAttached) {
        detachLeastUsed();
    }
    Entry entry;
    entry.schema = u"mlv%1"_s.arg(++m_made);
    entry.path = path;
    entry.id = id;
    entry.used = ++m_uses;
    {
        Statement statement(m_connection.handle(), u"ATTACH ?1 AS "_s + entry.schema);
        statement.bind(1, Value(uriOf(path)));
        statement.run();
    }
    m_entries.push_back(entry);
    try {
        m_entries.back().dataVersion = pragma(entry.schema, u"data_version"_s);
    } catch (const DbError&) {
        detach(m_entries.size() - 1);
        throw;
    }
    return entry.schema;
}

void Attachments::detach(std::size_t index)
{
    m_leaving.append(m_entries[index].schema);
    m_entries.erase(m_entries.begin() + std::ptrdiff_t(index));
    m_connection.statements().clear();
    for (const QString& schema : QStringList(m_leaving)) {
        try {
            m_connection.run(u"DETACH "_s + schema);
            m_leaving.removeOne(schema);
        } catch (const DbError&) {
            // Part of the open transaction; it goes with the next one.
            continue;
        }
    }
}

void Attachments::detachLeastUsed()
{
    const auto oldest =
        std::min_element(m_entries.begin(), m_entries.end(),
                         [](const Entry& a, const Entry& b) { return a.used < b.used; });
    if (oldest != m_entries.end()) {
        detach(std::size_t(oldest - m_entries.begin()));
    }
}

qint64 Attachments::versionOf(const QString& schema)
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& e) { return e.schema == schema; });
    if (entry == m_entries.end() || fileId(entry->path) != entry->id) {
        return -1;
    }
    entry->used = ++m_uses;
    return pragma(schema, u"schema_version"_s);
}

qint64 Attachments::foreignChanges()
{
    for (Entry& entry : m_entries) {
        const qint64 version = pragma(entry.schema, u"data_version"_s);
        if (std::exchange(entry.dataVersion, version) != version) {
            ++m_foreignChanges;
        }
    }
    return m_foreignChanges;
}

bool Attachments::holds(const QString& path) const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return entry.path == path; });
}

qint64 Attachments::pragma(const QString& schema, const QString& name)
{
    return m_connection.number(u"PRAGMA %1.%2"_s.arg(schema, name));
}

} // namespace melovane::sqlite
