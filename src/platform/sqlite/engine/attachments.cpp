#include "platform/sqlite/engine/attachments.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/engine/sqlite_error.h"

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// SQLite's own limit as Debian builds it.
constexpr std::size_t kMostAttached = 10;

} // namespace

Attachments::~Attachments()
{
    // Those that were replaced must not be closed like the others.
    std::erase_if(m_entries, [&](Entry& entry) {
        const bool current = entry.file.isCurrent();
        if (!current) {
            m_leaving.push_back(std::move(entry));
        }
        return !current;
    });
    leave();
}

QString Attachments::schemaOf(const QString& path)
{
    const std::optional<FileId> id = fileId(path);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].file.path() != path) {
            continue;
        }
        if (m_entries[i].file.isCurrent()) {
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
    return *id == m_connection.id() ? u"main"_s : attach(path);
}

QString Attachments::attach(const QString& path)
{
    if (m_entries.size() + m_leaving.size() >= kMostAttached) {
        detachLeastUsed();
    }
    const QString schema = u"mlv%1"_s.arg(++m_made);
    m_entries.push_back({schema, m_connection.attach(path, schema), ++m_uses, 0});
    try {
        lockForTransaction(schema);
        m_entries.back().dataVersion = pragma(schema, u"data_version"_s);
    } catch (const DbError&) {
        detach(m_entries.size() - 1);
        throw;
    }
    return schema;
}

void Attachments::detach(std::size_t index)
{
    m_leaving.push_back(std::move(m_entries[index]));
    m_entries.erase(m_entries.begin() + std::ptrdiff_t(index));
    m_connection.statements().clear();
    leave();
}

/// What is part of the open transaction stays and goes with the next one.
void Attachments::leave()
{
    std::erase_if(m_leaving, [&](const Entry& entry) {
        try {
            m_connection.detach(entry.schema, entry.file);
            return true;
        } catch (const DbError&) {
            return false;
        }
    });
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
    if (entry == m_entries.end() || !entry->file.isCurrent()) {
        return -1;
    }
    entry->used = ++m_uses;
    lockForTransaction(schema);
    return pragma(schema, u"schema_version"_s);
}

qint64 Attachments::foreignChanges()
{
    for (Entry& entry : m_entries) {
        if (isUntouchedByTransaction(entry.schema)) {
            continue;
        }
        const qint64 version = pragma(entry.schema, u"data_version"_s);
        if (std::exchange(entry.dataVersion, version) != version) {
            ++m_foreignChanges;
        }
    }
    return m_foreignChanges;
}

bool Attachments::isUntouchedByTransaction(const QString& schema) const
{
    return m_connection.inTransaction() &&
           sqlite3_txn_state(m_connection.handle(), schema.toLatin1().constData()) ==
               SQLITE_TXN_NONE;
}

void Attachments::lockForTransaction(const QString& schema)
{
    if (!isUntouchedByTransaction(schema)) {
        return;
    }
    try {
        m_connection.lock(schema);
    } catch (const DbError& error) {
        if (error.number() != dberror::kReadOnly) {
            throw;
        }
    }
}

bool Attachments::holds(const FileId& file) const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return entry.file.id() == file; });
}

void Attachments::keepOnly(const QStringList& paths)
{
    for (std::size_t i = m_entries.size(); i-- > 0;) {
        if (!paths.contains(m_entries[i].file.path())) {
            detach(i);
        }
    }
}

qint64 Attachments::pragma(const QString& schema, const QString& name)
{
    return m_connection.number(u"PRAGMA %1.%2"_s.arg(schema, name));
}

} // namespace melovane::sqlite
