#pragma once

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "support/fake_clock.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

[[nodiscard]] FieldDef textField(const QString& name, int size);
[[nodiscard]] FieldDef field(const QString& name, FieldType type);
[[nodiscard]] FieldDef autoNumber(const QString& name);
[[nodiscard]] TableDef table(const QString& name, std::vector<FieldDef> fields);
[[nodiscard]] TableDef keyedTable(const QString& name, std::vector<FieldDef> fields);
[[nodiscard]] TableDef link(const QString& name, const QString& file);

/// The suite's tables that the statements of these tests need, and stored queries over them.
void makeSuiteTables(Database& database);
void makeSuiteQueries(Database& database);

/// The text of the stored query of that name, as the upgrade makes it.
[[nodiscard]] QString vplAllText();

/// The number of the DbError that the work throws, 0 when it throws none.
template <typename Work> int errorOf(Work&& work)
{
    try {
        work();
    } catch (const DbError& error) {
        EXPECT_FALSE(error.text().isEmpty());
        return error.number();
    }
    return 0;
}

/// Each row as its cells joined by "|", null cells as "null".
[[nodiscard]] QStringList rowsOf(Recordset& set);
[[nodiscard]] QStringList rowsOf(Database& database, const QString& statement);
[[nodiscard]] Value cellOf(Database& database, const QString& statement);

/// What SQLite's own check says of a file, with the suite's comparison of texts: "ok" when it is
/// whole.
[[nodiscard]] QString integrityOf(const QString& path);

/// A folder, an engine and one open database in it.
class EngineTest : public testing::Test
{
protected:
    EngineTest();

    /// A database of the suite: main file with its tables and queries.
    void makeSuite();

    [[nodiscard]] QString path(const QString& name = u"melovane.mdb"_s) const
    {
        return m_folder.file(name);
    }

    [[nodiscard]] Database& db() { return *m_database; }

    /// Another connection, made by an engine of its own, as a sibling would have it.
    [[nodiscard]] std::unique_ptr<Database> sibling(const QString& name = u"melovane.mdb"_s);

    void addTrack(const QString& fid, const QString& titel, const QString& interpret = u"A"_s);

    TempFolder m_folder;
    FakeClock m_clock;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<DBEngine> m_siblingEngine;
    std::unique_ptr<Database> m_database;
};

} // namespace melovane::test
