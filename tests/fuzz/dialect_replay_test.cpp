#include "fuzz/dialect_check.h"
#include "platform/sqlite/dialect/statement_table.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(DialectReplay, NoKeptInputBreaksOut)
{
    DialectCheck check;
    const QDir folder(QString::fromUtf8(MLV_CORPUS_FOLDER) + u"/dialect"_s);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    EXPECT_GT(names.size(), 20);
    EXPECT_LT(names.size(), 200);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(check.check(QString::fromUtf8(file.readAll())).toStdString(), "")
            << name.toStdString();
    }
    EXPECT_GT(check.translated(), 0);
    EXPECT_GT(check.refused(), 0);
}

TEST(DialectReplay, NoStatementOfTheTableBreaksOut)
{
    DialectCheck check;
    for (const test::StatementCase& statement : test::readStatementTable()) {
        EXPECT_EQ(check.check(statement.statement).toStdString(), "")
            << statement.statement.toStdString();
    }
    // The names are those that ship, so hardly a good statement is refused for a missing one.
    EXPECT_GT(check.translated(), 700);
}

TEST(DialectReplay, TheCheckSeesWhatBreaksOut)
{
    ShippedNames names;
    EXPECT_EQ(names.reached(u"select * from [PL_NAME] where 'db_all'"_s).join(u' ').toStdString(),
              "db_all pl_name");
    EXPECT_TRUE(names.reached(u"select * from vpl_fill"_s).contains(u"db_all"_s));
    EXPECT_TRUE(names.reached(u"select * from VPL_REALMP3SPACE"_s).contains(u"pl_all"_s));
    EXPECT_EQ(names.reached(u"select * from xpl_all, pl_allx, mlv_hidden"_s).size(), 0);
    EXPECT_TRUE(names.run(u"SELECT secret FROM mlv_hidden"_s));
    EXPECT_FALSE(names.find(u"mlv_hidden"_s).has_value());
}

struct BrokenOut
{
    const char* sql;
    const char* trouble;
};

TEST(DialectReplay, TheCheckRefusesTextThatDoesMoreThanItMay)
{
    DialectCheck check;
    const QString text = u"select titel from db_all"_s;
    sqlite::Translation translation;
    translation.sql = u"SELECT Titel FROM main.db_all"_s;
    EXPECT_EQ(check.judge(text, translation).toStdString(), "");
    const BrokenOut kCases[] = {
        {"SELECT 1; SELECT 2", "not exactly one statement"},
        {"", "not exactly one statement"},
        {"SELECT Titel FROM", "not prepared"},
        {"SELECT secret FROM mlv_hidden", "mlv_hidden"},
        {"SELECT Titel FROM db_all UNION SELECT secret FROM side.mlv_hidden_too", "mlv_hidden_too"},
        {"SELECT Name FROM pl_name", "pl_name"},
        {"SELECT name FROM sqlite_master", "sqlite_master"},
        {"SELECT randomblob(5) FROM db_all", "randomblob"},
        {"DELETE FROM db_all", "db_all"},
        {"UPDATE pl_name SET Name = 'x'", "pl_name"},
        {"DROP TABLE todo", "action"},
        {"PRAGMA user_version", "action"},
        {"ATTACH 'x' AS y", "action"},
        {"SELECT abs(-9223372036854775808) FROM db_all", "abs"},
    };
    for (const BrokenOut& test : kCases) {
        translation.sql = QString::fromUtf8(test.sql);
        EXPECT_TRUE(check.judge(text, translation).contains(QString::fromUtf8(test.trouble)))
            << test.sql << ": " << check.judge(text, translation).toStdString();
    }
}

TEST(DialectReplay, TheCheckSeesKeysThatGiveOtherRows)
{
    DialectCheck check;
    sqlite::Translation translation;
    translation.sql = u"SELECT FID FROM db_all"_s;
    translation.keyed = true;
    translation.keySql = u"SELECT rowid FROM db_all"_s;
    translation.rowSql = u"SELECT rowid, FID FROM db_all WHERE rowid = ?1"_s;
    const QString text = u"select fid from db_all"_s;
    EXPECT_EQ(check.judge(text, translation).toStdString(), "");
    translation.keySql += u" LIMIT 1"_s;
    EXPECT_TRUE(check.judge(text, translation).startsWith(u"other rows"));
}

} // namespace

} // namespace melovane::fuzz
