#pragma once

#include "platform/sqlite/engine/connection.h"
#include "platform/sqlite/engine/engine_fixture.h"
#include "support/fake_passing_time.h"

namespace melovane::test {

/// A database of the suite and three programs that have it open: one whose searches are answered
/// from memory, one that leaves them to SQLite, and one that writes whatever SQLite takes.
class ColumnIndexTest : public EngineTest
{
protected:
    ColumnIndexTest()
    {
        makeSuite();
        m_indexed = m_indexedEngine->OpenDatabase(path());
        m_raw = std::make_unique<sqlite::Connection>(
            path(),
            sqlite::ConnectionOptions{std::chrono::seconds(3), [this] { return m_clock.now(); }});
    }

    /// Answered from memory.
    [[nodiscard]] Database& indexed() { return *m_indexed; }

    /// Answered by SQLite.
    [[nodiscard]] Database& plain() { return db(); }

    /// Runs a statement in SQLite's own words.
    void raw(const QString& sql) { m_raw->run(sql); }

    [[nodiscard]] const sqlite::IndexFigures& figures() const { return *m_figures; }

    /// The rows as the index finds them; fails when SQLite was asked.
    [[nodiscard]] QStringList found(const QString& statement)
    {
        const qint64 left = figures().left;
        const qint64 answers = figures().answers;
        const QStringList rows = rowsOf(indexed(), statement);
        EXPECT_EQ(figures().left, left) << statement.toStdString();
        EXPECT_EQ(figures().answers, answers + 1) << statement.toStdString();
        return rows;
    }

    std::shared_ptr<sqlite::IndexFigures> m_figures = std::make_shared<sqlite::IndexFigures>();
    std::shared_ptr<FakePassingTime> m_time = std::make_shared<FakePassingTime>();
    std::unique_ptr<DBEngine> m_indexedEngine =
        sqlite::makeEngine(m_clock, {.searchIndex = m_figures, .time = m_time});
    std::unique_ptr<Database> m_indexed;
    std::unique_ptr<sqlite::Connection> m_raw;
};

} // namespace melovane::test
