#include "shell/library_file.h"

#include <QCryptographicHash>
#include <QFile>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Milliseconds that a statement waits for one who writes.
constexpr int kBusyMs = 10'000;

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

int byLetters(void*, int oneSize, const void* one, int otherSize, const void* other)
{
    const int result = std::memcmp(one, other, size_t(std::min(oneSize, otherSize)));
    return result != 0 ? result : oneSize - otherSize;
}

Connection open(const QString& name)
{
    sqlite3* file = nullptr;
    EXPECT_EQ(sqlite3_open_v2(name.toUtf8().constData(), &file, SQLITE_OPEN_READWRITE, nullptr),
              SQLITE_OK)
        << qPrintable(name);
    sqlite3_busy_timeout(file, kBusyMs);
    // The program's own order of texts is only named here: nothing is looked up by it.
    sqlite3_create_collation(file, "MLV", SQLITE_UTF8, nullptr, &byLetters);
    return {file, &sqlite3_close};
}

void walk(sqlite3* file, const QByteArray& statement, const std::function<void(sqlite3_stmt*)>& row)
{
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(file, statement.constData(), -1, &prepared, nullptr), SQLITE_OK)
        << statement.constData() << ": " << sqlite3_errmsg(file);
    int result = SQLITE_DONE;
    while (prepared != nullptr && (result = sqlite3_step(prepared)) == SQLITE_ROW) {
        row(prepared);
    }
    EXPECT_EQ(result, SQLITE_DONE) << statement.constData() << ": " << sqlite3_errmsg(file);
    sqlite3_finalize(prepared);
}

QByteArray textOf(sqlite3_stmt* row, int column)
{
    const auto* const text = static_cast<const char*>(sqlite3_column_blob(row, column));
    return {text, sqlite3_column_bytes(row, column)};
}

QByteArray sumOf(sqlite3* file, const QByteArray& table)
{
    QCryptographicHash sum(QCryptographicHash::Sha1);
    walk(file, "select * from \"" + table + '"', [&](sqlite3_stmt* row) {
        for (int column = 0; column < sqlite3_column_count(row); ++column) {
            sum.addData(QByteArray::number(sqlite3_column_type(row, column)));
            sum.addData(textOf(row, column) + '\0');
        }
    });
    return sum.result();
}

} // namespace

QByteArray LibraryFile::bytes() const
{
    QCryptographicHash sum(QCryptographicHash::Sha1);
    for (const QString& name : {m_name, m_name + u"-wal"_s}) {
        QFile file(name);
        sum.addData(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("absent"));
    }
    return sum.result();
}

bool LibraryFile::isAlone() const
{
    return !QFile::exists(m_name + u"-wal"_s) && !QFile::exists(m_name + u"-journal"_s);
}

QMap<QString, QByteArray> LibraryFile::tables() const
{
    const Connection file = open(m_name);
    QList<QByteArray> names;
    walk(file.get(),
         "select name from sqlite_schema where type='table' and name not like 'sqlite\\_%' "
         "escape '\\' order by name",
         [&](sqlite3_stmt* row) { names.append(textOf(row, 0)); });
    QMap<QString, QByteArray> sums;
    for (const QByteArray& name : names) {
        sums.insert(QString::fromUtf8(name), sumOf(file.get(), name));
    }
    return sums;
}

QStringList LibraryFile::rows(const QByteArray& statement) const
{
    const Connection file = open(m_name);
    QStringList result;
    walk(file.get(), statement, [&](sqlite3_stmt* row) {
        QByteArrayList cells;
        for (int column = 0; column < sqlite3_column_count(row); ++column) {
            cells.append(textOf(row, column));
        }
        result.append(QString::fromUtf8(cells.join(' ')));
    });
    return result;
}

int LibraryFile::number(const QByteArray& statement) const
{
    return rows(statement).value(0).toInt();
}

} // namespace melovane::test
