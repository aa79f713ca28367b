#pragma once

#include "platform/db/definitions.h"

#include <QByteArray>
#include <QString>

#include <list>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace melovane::sqlite {

/// A compiled statement. Parameters are counted from 1, columns from 0.
class Statement
{
public:
    /// \throws DbError when SQLite does not understand the text or it holds two statements
    Statement(sqlite3* connection, const QString& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// The value is kept until the next bind or clearBindings().
    void bind(int parameter, const Value& value);
    /// Binds the cell of another statement's present row as it stands.
    void bindCell(int parameter, const Statement& source, int column);
    /// Binds the values to the parameters from 1 on.
    void bindAll(const std::vector<Value>& values);

    /// True when a row stands ready, false at the end. \throws DbError
    bool step();
    /// Runs to the end.
    void run();
    /// Lets go of all locks; bound values stay.
    void reset();
    void clearBindings();

    /// For reading many cells without a copy.
    [[nodiscard]] sqlite3_stmt* handle() const { return m_statement; }

    [[nodiscard]] int columnCount() const;
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] qint64 number(int column) const;
    [[nodiscard]] QString text(int column) const;
    /// The cell as a column of that type keeps it; what does not fit the type still reads sanely.
    [[nodiscard]] Value value(int column, FieldType type) const;
    /// The cell as it stands in the file.
    [[nodiscard]] Value plainValue(int column) const;

private:
    void bindText(int parameter, const QString& text);

    sqlite3* m_connection;
    sqlite3_stmt* m_statement = nullptr;
    std::vector<QByteArray> m_texts; ///< of the parameters, from 0; SQLite reads them from here
};

/// Keeps the statements of a connection that are likely to run again.
class StatementPool
{
public:
    explicit StatementPool(sqlite3* connection)
        : m_connection(connection)
    {}

    /// A statement in use. Its end resets the statement, so none stays open.
    class Lease
    {
    public:
        Lease(StatementPool& pool, QString sql, std::unique_ptr<Statement> statement, bool keep);
        ~Lease();
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;

        Statement* operator->() const { return m_statement.get(); }

        Statement& operator*() const { return *m_statement; }

    private:
        StatementPool& m_pool;
        QString m_sql;
        std::unique_ptr<Statement> m_statement;
        bool m_keep;
    };

    /// \param keep false for a text that will hardly be seen again
    [[nodiscard]] Lease take(const QString& sql, bool keep = true);

    void clear() { m_kept.clear(); }

private:
    struct Kept
    {
        QString sql;
        std::unique_ptr<Statement> statement;
    };

    sqlite3* m_connection;
    std::list<Kept> m_kept; ///< used last stands first
};

} // namespace melovane::sqlite
