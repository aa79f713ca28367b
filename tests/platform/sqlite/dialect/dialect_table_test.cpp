#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/statement_table.h"
#include "support/suite_fixture.h"

#include <QSet>

#include <gtest/gtest.h>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList rowsOf(Recordset& set)
{
    QStringList rows;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < set.fieldCount(); ++i) {
            const Value value = set.value(i);
            cells.append(value.isNull() ? u"null"_s : value.toText());
        }
        rows.append(cells.join(u'|').replace(u'\n', u'\u21B5'));
    }
    return rows;
}

QString columnsOf(const Recordset& set)
{
    QStringList names;
    for (int i = 0; i < set.fieldCount(); ++i) {
        names.append(set.fieldDef(i).Name);
    }
    return names.join(u',');
}

/// The small library: a suite with three files, its tables, links and stored queries as they ship.
/// All cases share it; what a case changes is undone.
class SmallLibrary
{
public:
    SmallLibrary()
        : m_database(m_suite.open())
    {
        for (const QString& statement : smallLibrary()) {
            m_database->Execute(statement);
        }
        // A side file is taken in at its first use, which must not fall into a case's transaction.
        static_cast<void>(m_database->OpenRecordset(u"TEMP_MP3Edit"_s));
    }

    [[nodiscard]] Database& database() { return *m_database; }

private:
    Suite m_suite;
    std::unique_ptr<Database> m_database;
};

class StatementTable : public testing::TestWithParam<StatementCase>
{
protected:
    static void SetUpTestSuite() { s_library = new SmallLibrary; }

    static void TearDownTestSuite()
    {
        delete s_library;
        s_library = nullptr;
    }

    void SetUp() override { db().BeginTrans(); }

    void TearDown() override { db().Rollback(); }

    [[nodiscard]] static Database& db() { return s_library->database(); }

    /// Rows, or the error's number and text.
    void run(const StatementCase& test)
    {
        try {
            if (!test.affected) {
                const auto set = db().OpenRecordset(test.statement);
                columns = columnsOf(*set);
                rows = rowsOf(*set);
                return;
            }
            db().Execute(test.statement);
            affected = db().RecordsAffected();
            if (!test.look.isEmpty()) {
                rows = rowsOf(*db().OpenRecordset(test.look));
            }
        } catch (const DbError& failure) {
            error = failure.number();
            errorText = failure.text();
        }
    }

    QString columns;
    QStringList rows;
    int affected = 0;
    int error = 0;
    QString errorText;

private:
    static inline SmallLibrary* s_library = nullptr;
};

TEST_P(StatementTable, GivesItsRows)
{
    const StatementCase& test = GetParam();
    run(test);
    EXPECT_EQ(error, test.error) << errorText.toStdString();
    EXPECT_TRUE(errorText.contains(test.errorWord, Qt::CaseInsensitive)) << errorText.toStdString();
    EXPECT_EQ(rows.join(u'\n').toStdString(), test.rows.join(u'\n').toStdString());
    EXPECT_EQ(affected, test.affected.value_or(0));
    if (!test.columns.isEmpty()) {
        EXPECT_EQ(columns.toStdString(), test.columns.toStdString());
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheDialect,
                         StatementTable,
                         testing::ValuesIn(readStatementTable()),
                         [](const auto& test) {
                             return test.param.file.toStdString() + "_" +
                                    std::to_string(test.param.line);
                         });

TEST(SelectInto, MakesTheTableWithItsRowsOrNothing)
{
    const Suite suite;
    const auto database = suite.open();
    database->Execute(u"insert into todo (id, fid) values (1, 'kurz')"_s);
    database->Execute(u"insert into todo (id, fid) values (2, string(300, 'x'))"_s);
    try {
        database->Execute(u"select id, fid & '' as t into neu from todo"_s);
        ADD_FAILURE() << "the second text is longer than a text column";
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kFieldTooSmall);
    }
    EXPECT_FALSE(database->tableDefs().Contains(u"neu"_s));
    database->Execute(u"select id, fid & '' as t into neu from todo where id=1"_s);
    EXPECT_EQ(database->RecordsAffected(), 1);
    const auto sibling = suite.open();
    ASSERT_TRUE(sibling->tableDefs().Contains(u"neu"_s));
    EXPECT_EQ(rowsOf(*sibling->OpenRecordset(u"neu"_s)).join(u';').toStdString(), "1|kurz");
}

TEST(StatementTableSize, TriesEveryFunctionThatThePageAboutTheDialectLists)
{
    QString accepted;
    for (const StatementCase& test : readStatementTable()) {
        accepted += test.error == 0 ? test.statement.toLower() + u'\n' : QString();
    }
    const QStringList functions = describedFunctions();
    EXPECT_GE(functions.size(), 70);
    for (const QString& function : functions) {
        EXPECT_TRUE(accepted.contains(function + u'(')) << function.toStdString();
    }
}

TEST(StatementTableSize, HoldsMoreThanFourHundredStatements)
{
    const std::vector<StatementCase> cases = readStatementTable();
    EXPECT_GT(cases.size(), 400u);
    QSet<QString> different;
    for (const StatementCase& test : cases) {
        different.insert(test.statement);
        EXPECT_TRUE(test.error == 0 || !test.errorWord.isEmpty()) << test.line;
    }
    EXPECT_EQ(size_t(different.size()), cases.size());
}

} // namespace

} // namespace melovane::test
