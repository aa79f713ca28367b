#include "fuzz/dialect_check.h"

#include "platform/db/db_error.h"

#include <sqlite3.h>

#include <algorithm>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows that are looked at, and steps of SQLite's machine that one text may take.
constexpr int kMostRows = 50;
constexpr int kMostSteps = 200'000;

/// Notes what a statement touches while SQLite prepares it.
struct Touched
{
    QStringList read;
    QStringList written;
    QString forbidden;
};

bool isOfTheDialect(const QString& function)
{
    static const QStringList kBuiltIn{u"avg"_s,        u"count"_s, u"ifnull"_s, u"like"_s,
                                      u"max"_s,        u"min"_s,   u"nullif"_s, u"rank"_s,
                                      u"row_number"_s, u"sum"_s};
    return function.startsWith(u"mlv_") || kBuiltIn.contains(function);
}

int authorize(void* into,
              int action,
              const char* first,
              const char* second,
              const char*,
              const char*)
{
    auto& touched = *static_cast<Touched*>(into);
    const QString name = QString::fromUtf8(first).toLower();
    switch (action) {
    case SQLITE_SELECT:
        return SQLITE_OK;
    case SQLITE_READ:
        touched.read.append(name);
        return SQLITE_OK;
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
        touched.written.append(name);
        return SQLITE_OK;
    case SQLITE_FUNCTION:
        if (!isOfTheDialect(QString::fromUtf8(second).toLower())) {
            touched.forbidden = u"function "_s + QString::fromUtf8(second);
        }
        return SQLITE_OK;
    }
    touched.forbidden = u"action %1 on %2"_s.arg(action).arg(name);
    return SQLITE_OK;
}

int countSteps(void* left)
{
    constexpr int kStepsPerCall = 1000;
    *static_cast<int*>(left) -= kStepsPerCall;
    return *static_cast<int*>(left) < 0 ? 1 : 0;
}

/// One compiled statement with everything that was learned on the way.
class Prepared
{
public:
    Prepared(sqlite3* connection, const QString& sql)
        : m_connection(connection)
    {
        const QByteArray bytes = sql.toUtf8();
        const char* tail = nullptr;
        sqlite3_set_authorizer(connection, authorize, &touched);
        const int code = sqlite3_prepare_v2(connection, bytes.constData(), -1, &m_statement, &tail);
        sqlite3_set_authorizer(connection, nullptr, nullptr);
        if (code != SQLITE_OK) {
            trouble = u"not prepared: "_s + QString::fromUtf8(sqlite3_errmsg(connection));
        } else if (m_statement == nullptr || tail == nullptr || *tail != '\0') {
            trouble = u"not exactly one statement"_s;
        }
    }

    ~Prepared() { sqlite3_finalize(m_statement); }

    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    void bind(int parameter, const QString& value)
    {
        sqlite3_bind_text(m_statement, parameter, value.toUtf8().constData(), -1, SQLITE_TRANSIENT);
    }

    /// Rows as texts, cells behind the first `skipped`. \return false when it did not end
    bool run(QStringList& rows, int skipped = 0)
    {
        int left = kMostSteps;
        sqlite3_progress_handler(m_connection, 1000, countSteps, &left);
        int code = SQLITE_ROW;
        while (rows.size() < kMostRows && (code = sqlite3_step(m_statement)) == SQLITE_ROW) {
            QStringList cells;
            for (int i = skipped; i < sqlite3_column_count(m_statement); ++i) {
                const auto* cell = sqlite3_column_text(m_statement, i);
                cells.append(cell == nullptr
                                 ? u"-"_s
                                 : QString::fromUtf8(reinterpret_cast<const char*>(cell)));
            }
            rows.append(cells.join(u'|'));
        }
        sqlite3_progress_handler(m_connection, 0, nullptr, nullptr);
        if (code != SQLITE_DONE && code != SQLITE_ROW) {
            noteError(code);
        }
        sqlite3_reset(m_statement);
        return code == SQLITE_DONE;
    }

    Touched touched;
    QString trouble;

private:
    void noteError(int code)
    {
        const QString message = QString::fromUtf8(sqlite3_errmsg(m_connection));
        // What data may do to a statement: a limit of time or size, a function's own error, a key.
        const bool wanted = code == SQLITE_INTERRUPT || code == SQLITE_TOOBIG ||
                            code == SQLITE_CONSTRAINT || message.startsWith("MLV:"_L1) ||
                            message == "integer overflow"_L1 || message == "datatype mismatch"_L1;
        if (!wanted) {
            trouble = u"fault %1: %2"_s.arg(code).arg(message);
        }
    }

    sqlite3* m_connection;
    sqlite3_stmt* m_statement = nullptr;
};

/// The table behind the names of a text that a translation may touch.
QString notIn(const QStringList& allowed, const QStringList& tables)
{
    for (const QString& table : tables) {
        if (!allowed.contains(table) && table != "sqlite_sequence"_L1) {
            return table;
        }
    }
    return {};
}

} // namespace

QString DialectCheck::check(const QString& text)
{
    sqlite::Translation translation;
    try {
        translation = sqlite::translate(text, m_names);
    } catch (const DbError& error) {
        ++m_refused;
        return error.text().isEmpty() ? u"an error without a text"_s : QString();
    }
    ++m_translated;
    return judge(text, translation);
}

QString DialectCheck::judge(const QString& text, const sqlite::Translation& translation)
{
    const QString trouble =
        translation.ddl ? checkDefinition(text, translation) : checkTranslation(text, translation);
    return trouble.isEmpty() ? trouble : trouble + u"\n"_s + translation.sql;
}

QString DialectCheck::checkDefinition(const QString& text, const sqlite::Translation& translation)
{
    const QString name = translation.ddl->table.Name;
    if (!text.contains(name, Qt::CaseInsensitive)) {
        return u"changes a table that is not named: "_s + name;
    }
    if (translation.kind != sqlite::StatementKind::MakeTable) {
        return translation.sql.isEmpty() ? QString() : u"a definition with a statement"_s;
    }
    QStringList columns;
    for (const FieldDef& field : translation.ddl->table.Fields) {
        columns.append(u'"' + QString(field.Name).replace(u"\""_s, u"\"\""_s) + u'"');
    }
    QString trouble;
    m_names.run(u"SAVEPOINT made"_s);
    // A name that is taken, or a column named twice, is the engine's to refuse.
    const QString quoted = QString(name).replace(u"\""_s, u"\"\""_s);
    if (m_names.run(u"CREATE TABLE main.\"%1\" ("_s.arg(quoted) + columns.join(u", ") + u")"_s)) {
        trouble = checkTranslation(text, translation);
    }
    m_names.run(u"ROLLBACK TO made"_s);
    m_names.run(u"RELEASE made"_s);
    return trouble;
}

QString DialectCheck::checkTranslation(const QString& text, const sqlite::Translation& translation)
{
    QStringList reached = m_names.reached(text);
    QStringList writable;
    for (const sqlite::BaseTable& table : translation.written) {
        writable.append(table.name.toLower());
    }
    if (translation.kind == sqlite::StatementKind::MakeTable) {
        reached += writable;
    }
    m_names.run(u"SAVEPOINT tried"_s);
    QString trouble;
    {
        Prepared statement(m_names.connection(), translation.sql);
        const QString read = notIn(reached, statement.touched.read);
        const QString written = notIn(writable, statement.touched.written);
        trouble = statement.trouble;
        if (trouble.isEmpty() && !statement.touched.forbidden.isEmpty()) {
            trouble = u"calls "_s + statement.touched.forbidden;
        } else if (trouble.isEmpty() && !read.isEmpty()) {
            trouble = u"reads a table that the text does not reach: "_s + read;
        } else if (trouble.isEmpty() &&
                   !(written.isEmpty() && notIn(reached, writable).isEmpty())) {
            trouble = u"writes a table that it must not: "_s + written;
        } else if (trouble.isEmpty()) {
            QStringList rows;
            statement.run(rows);
            trouble = statement.trouble;
        }
    }
    m_names.run(u"ROLLBACK TO tried"_s);
    m_names.run(u"RELEASE tried"_s);
    return trouble.isEmpty() && translation.keyed ? checkKeys(text, translation) : trouble;
}

QString DialectCheck::checkKeys(const QString& text, const sqlite::Translation& translation) const
{
    Prepared direct(m_names.connection(), translation.sql);
    Prepared keys(m_names.connection(), translation.keySql);
    Prepared row(m_names.connection(), translation.rowSql);
    if (!keys.trouble.isEmpty() || !row.trouble.isEmpty()) {
        return keys.trouble + row.trouble;
    }
    const QString strange = notIn(m_names.reached(text), keys.touched.read + row.touched.read);
    if (!strange.isEmpty() || !keys.touched.written.isEmpty() || !row.touched.written.isEmpty()) {
        return u"keys touch "_s + strange;
    }
    QStringList rows;
    QStringList found;
    // Chance gives other rows each time, and without an order a limit may cut elsewhere.
    const bool repeatable = !text.contains(u"rnd"_s, Qt::CaseInsensitive) &&
                            !text.contains(u"top"_s, Qt::CaseInsensitive);
    if (!direct.run(rows) || !keys.run(found) || !repeatable) {
        return keys.trouble;
    }
    QStringList byKeys;
    for (const QString& key : found) {
        const QStringList ids = key.split(u'|');
        for (qsizetype i = 0; i < ids.size(); ++i) {
            row.bind(int(i) + 1, ids[i]);
        }
        if (!row.run(byKeys, int(ids.size()))) {
            return row.trouble;
        }
    }
    std::sort(rows.begin(), rows.end());
    std::sort(byKeys.begin(), byKeys.end());
    return rows == byKeys ? QString()
                          : u"other rows by keys:\n"_s + byKeys.join(u'\n') + u"\nthan:\n"_s +
                                rows.join(u'\n');
}

} // namespace melovane::fuzz
