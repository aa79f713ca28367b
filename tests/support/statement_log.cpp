#include "support/statement_log.h"

#include <sqlite3.h>

#include <utility>

namespace melovane::test {

namespace {

QStringList& statements()
{
    static QStringList texts;
    return texts;
}

bool isOn = false;

int note(unsigned /*event*/, void* /*context*/, void* /*statement*/, void* text)
{
    if (isOn) {
        statements().append(QString::fromUtf8(static_cast<const char*>(text)));
    }
    return 0;
}

int follow(sqlite3* connection, char** /*error*/, const void* /*routines*/)
{
    return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, note, nullptr);
}

/// The form in which SQLite takes the function.
auto entry()
{
    return reinterpret_cast<void (*)()>(follow);
}

} // namespace

StatementLog::StatementLog()
{
    isOn = true;
    sqlite3_auto_extension(entry());
}

StatementLog::~StatementLog()
{
    sqlite3_cancel_auto_extension(entry());
    isOn = false;
    statements().clear();
}

QStringList StatementLog::take()
{
    return std::exchange(statements(), {});
}

QStringList StatementLog::takeBehindCommit()
{
    const QStringList all = take();
    return all.mid(all.lastIndexOf(QStringLiteral("COMMIT")) + 1);
}

} // namespace melovane::test
