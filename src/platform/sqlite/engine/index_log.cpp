#include "platform/sqlite/engine/index_log.h"

#include "platform/sqlite/engine/sqlite_error.h"

#include <QRandomGenerator>

#include <sqlite3.h>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Entries that stay when the list is shortened, so that other readers are not left behind.
constexpr qint64 kKeptEntries = 20'000;
/// A list that long is shortened.
constexpr qint64 kLongList = 60'000;

/// Nothing in them needs this program, so that every other can write. The first entry is a random
/// number, by which a list is told from that of another file. Keep.
const QString kParts[] = {
    u"CREATE TABLE mlv_change(id INTEGER PRIMARY KEY, key INTEGER NOT NULL)"_s,
    u"INSERT INTO mlv_change(key) VALUES(random())"_s,
    u"CREATE TRIGGER mlv_change_insert AFTER INSERT ON db_all BEGIN"
    " INSERT INTO mlv_change(key) VALUES(new._rowid_); END"_s,
    u"CREATE TRIGGER mlv_change_delete AFTER DELETE ON db_all BEGIN"
    " INSERT INTO mlv_change(key) VALUES(old._rowid_); END"_s,
    u"CREATE TRIGGER mlv_change_update AFTER UPDATE ON db_all BEGIN"
    " INSERT INTO mlv_change(key) VALUES(new._rowid_); END"_s,
    u"CREATE TRIGGER mlv_change_move AFTER UPDATE ON db_all WHEN old._rowid_<>new._rowid_ BEGIN"
    " INSERT INTO mlv_change(key) VALUES(old._rowid_); END"_s,
};
constexpr int kObjects = 5;

} // namespace

bool IndexLog::isThere()
{
    return m_connection.number(
               u"SELECT count(*) FROM main.sqlite_schema WHERE name IN ('mlv_change',"
               "'mlv_change_insert','mlv_change_delete','mlv_change_update','mlv_change_move')"_s) ==
           kObjects;
}

bool IndexLog::ensure()
{
    if (isThere()) {
        return true;
    }
    if (m_connection.isReadOnly() || m_connection.inTransaction()) {
        return false;
    }
    const Connection::WithoutWaiting impatient(m_connection);
    try {
        m_connection.run(u"BEGIN IMMEDIATE"_s);
        for (const char* name : {"insert", "delete", "update", "move"}) {
            m_connection.run(u"DROP TRIGGER IF EXISTS main.mlv_change_"_s +
                             QLatin1StringView(name));
        }
        m_connection.run(u"DROP TABLE IF EXISTS main.mlv_change"_s);
        for (const QString& part : kParts) {
            m_connection.run(part);
        }
        m_connection.run(u"COMMIT"_s);
        return true;
    } catch (const DbError&) {
        // Somebody writes, or the disk is full: the next search tries again.
        if (m_connection.inTransaction()) {
            m_connection.run(u"ROLLBACK"_s);
        }
        return false;
    }
}

std::optional<IndexLog::Position> IndexLog::mark()
{
    if (m_connection.isReadOnly() || m_connection.inTransaction()) {
        return {};
    }
    const Connection::WithoutWaiting impatient(m_connection);
    try {
        // The row of no track, or of one that is then read once more.
        const auto row = qint64(QRandomGenerator::system()->generate64());
        Statement add(m_connection.handle(), u"INSERT INTO main.mlv_change(key) VALUES(?1)"_s);
        add.bind(1, Value(row));
        add.run();
        return Position{sqlite3_last_insert_rowid(m_connection.handle()), row};
    } catch (const DbError&) {
        return {};
    }
}

IndexLog::Position IndexLog::end()
{
    const auto last = m_connection.statements().take(
        u"SELECT id, key FROM main.mlv_change ORDER BY id DESC LIMIT 1"_s);
    return last->step() ? Position{last->number(0), last->number(1)} : Position{};
}

bool IndexLog::knows(const Position& position)
{
    const auto entry =
        m_connection.statements().take(u"SELECT key FROM main.mlv_change WHERE id=?1"_s);
    entry->bind(1, Value(position.entry));
    return entry->step() && entry->number(0) == position.row;
}

std::optional<std::vector<qint64>> IndexLog::changedSince(const Position& position, qint64 max)
{
    if (!knows(position) || end().entry - position.entry > max) {
        return {};
    }
    std::vector<qint64> rows;
    const auto entries = m_connection.statements().take(
        u"SELECT DISTINCT key FROM main.mlv_change WHERE id>?1 ORDER BY key"_s);
    entries->bind(1, Value(position.entry));
    while (entries->step()) {
        rows.push_back(entries->number(0));
    }
    return rows;
}

void IndexLog::trim()
{
    const qint64 last = end().entry;
    const qint64 first = m_connection.number(u"SELECT min(id) FROM main.mlv_change"_s);
    if (last - first < kLongList || m_connection.isReadOnly() || m_connection.inTransaction()) {
        return;
    }
    const Connection::WithoutWaiting impatient(m_connection);
    try {
        Statement shorten(m_connection.handle(), u"DELETE FROM main.mlv_change WHERE id<=?1"_s);
        shorten.bind(1, Value(last - kKeptEntries));
        shorten.run();
    } catch (const DbError&) {
        // It stays long until the next time.
    }
}

} // namespace melovane::sqlite
