#pragma once

#include "support/statement_engine.h"
#include "support/suite_fixture.h"
#include "trees/refresh_db.h"

#include <functional>

namespace melovane {

/// A library whose trees are rebuilt by the real engine, which notes the statements.
class RefreshDbTest : public test::SuiteFixture
{
protected:
    RefreshDbTest() { trees.SetDbName(suite.dbName()); }

    [[nodiscard]] bool isParkedFileThere() const
    {
        return suite.files.fileExists(suite.file(QStringLiteral("~tree.tmp")));
    }

    /// Every row of a statement, cells joined by "|"; null is "-".
    [[nodiscard]] QStringList rows(const QString& statement) const
    {
        QStringList texts;
        const auto database = suite.open();
        const auto set = database->OpenRecordset(statement);
        for (; !set->Eof(); set->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < set->fieldCount(); ++i) {
                const Value cell = set->value(i);
                cells.append(cell.isNull() ? QStringLiteral("-") : cell.toText());
            }
            texts.append(cells.join(u'|'));
        }
        return texts;
    }

    void favour(const QString& table, const QString& condition) const
    {
        suite.execute(QStringLiteral("update %1 set favorit=true, tstamp=#2026-03-01 20:15:30# "
                                     "where %2")
                          .arg(table, condition));
    }

    /// A row of a tree table that becomes a favourite.
    struct Favoured
    {
        QString table;
        QString condition;
    };

    /// The statements of a refill, once its tables are filled and hold these favourites.
    [[nodiscard]] QStringList statementsOf(const std::function<void()>& refill,
                                           const QList<Favoured>& favourites = {})
    {
        refill();
        for (const Favoured& row : favourites) {
            favour(row.table, row.condition);
        }
        engine.statements.take();
        refill();
        return engine.statements.take();
    }

    test::StatementEngine engine{*suite.engine};
    QStringList failures; ///< "where: what" of what passed quietly
    RefreshDB trees{{.engine = engine,
                     .files = suite.files,
                     .clock = suite.clock,
                     .dataFolder = suite.dataFolder(),
                     .sink = [this](const QString& where, const QString& what) {
                         failures.append(where + QStringLiteral(": ") + what);
                     }}};
};

} // namespace melovane
