#include "platform/sqlite/engine/database_care.h"
#include "platform/sqlite/engine/engine_fixture.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;
using Depth = DatabaseCare::Depth;

namespace {

bool goOn(qint64, qint64)
{
    return true;
}

class Care : public testing::Test
{
protected:
    Care()
    {
        const auto database = engine->Workspaces(0).CreateDatabase(live, kLocale);
        TableDef tracks = test::keyedTable(
            u"db_all"_s, {test::textField(u"FID"_s, 12), test::textField(u"Titel"_s, 255)});
        tracks.Indexes.push_back({u"Title"_s, {u"Titel"_s}, false, false});
        database->tableDefs().Append(tracks);
        fill(*database, 0, 3000);
    }

    static void fill(Database& database, int from, int to)
    {
        Transaction change(database);
        for (int i = from; i < to; ++i) {
            database.Execute(u"insert into db_all (FID,Titel) values ('%1','%2')"_s.arg(i).arg(
                QString(200, QChar(u'a' + i % 26))));
        }
        change.commit();
    }

    [[nodiscard]] qint64 rows(const QString& name) const
    {
        const auto database = engine->OpenDatabase(name);
        return database->OpenRecordset(u"select count(*) as anz from db_all"_s)
            ->value(u"anz")
            .toInt64();
    }

    [[nodiscard]] QString file(const QString& name) const { return folder.path() + u'/' + name; }

    static void overwrite(const QString& name, qint64 at, const QByteArray& bytes)
    {
        QFile target(name);
        ASSERT_TRUE(target.open(QIODevice::ReadWrite));
        target.seek(at);
        target.write(bytes);
    }

    const QString kLocale = QString::fromUtf16(kDatabaseLocale);
    test::TempFolder folder;
    test::FakeClock clock;
    std::unique_ptr<DBEngine> engine = sqlite::makeEngine(clock);
    std::unique_ptr<DatabaseCare> care = sqlite::makeDatabaseCare(clock);
    QString live = file(u"live.mdb"_s);
    QString target = file(u"copy.mdb"_s);
};

} // namespace

TEST_F(Care, AWriterAtEverySliceNeitherStartsTheCopyOverNorEntersIt)
{
    int slices = 0;
    qint64 pages = 0;
    ASSERT_TRUE(care->copy(live, target, [&](qint64, qint64 whole) {
        pages = whole;
        fill(*engine->OpenDatabase(live), 3000 + slices, 3001 + slices);
        ++slices;
        return true;
    }));
    EXPECT_GT(slices, 3);
    EXPECT_LE(slices, pages / 64 + 1);
    EXPECT_EQ(rows(target), 3000);
    EXPECT_EQ(rows(live), 3000 + slices);
    EXPECT_EQ(care->check(target, Depth::Indexes, goOn), QStringList());
}

TEST_F(Care, TheCopyNeedsNoJournal)
{
    ASSERT_TRUE(care->copy(live, target, goOn));
    EXPECT_EQ(care->check(target, Depth::Pages, goOn), QStringList());
    EXPECT_EQ(care->rows(target, u"db_all"_s), 3000);
    EXPECT_FALSE(QFile::exists(target + u"-wal"_s));
    QFile copy(target);
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.read(20).at(18), 1) << "not the form that needs a journal";
}

TEST_F(Care, ACopyThatIsGivenUpLeavesNothing)
{
    int slices = 0;
    EXPECT_FALSE(care->copy(live, target, [&](qint64, qint64) { return ++slices < 2; }));
    EXPECT_EQ(QDir(folder.path()).entryList({u"copy*"_s}), QStringList());
}

TEST_F(Care, ATargetThatIsThereStays)
{
    overwrite(target, 0, "mine");
    EXPECT_NE(test::errorOf([&] { (void)care->copy(live, target, goOn); }), 0);
    EXPECT_EQ(QFile(target).size(), 4);
}

TEST_F(Care, AWholeFileHasNoFindings)
{
    EXPECT_EQ(care->check(live, Depth::Pages, goOn), QStringList());
    EXPECT_EQ(care->check(live, Depth::Indexes, goOn), QStringList());
}

TEST_F(Care, OverwrittenBytesOfAPageAreFound)
{
    engine->Release(live);
    overwrite(live, 4096 * 20, "\xFF\xFF\xFF\xFF");
    const auto found = care->check(live, Depth::Pages, goOn);
    ASSERT_TRUE(found.has_value());
    EXPECT_FALSE(found->isEmpty());
}

TEST_F(Care, AnIndexThatLacksARowIsFoundAndMadeAnew)
{
    engine->Release(live);
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(live.toUtf8().constData(), &raw), SQLITE_OK);
    // As a program that knows nothing of the index would leave it.
    ASSERT_EQ(sqlite3_exec(raw,
                           "PRAGMA writable_schema=ON;"
                           "CREATE TABLE kept AS SELECT * FROM sqlite_schema WHERE type='index'"
                           " AND sql IS NOT NULL;"
                           "DELETE FROM sqlite_schema WHERE type='index' AND sql IS NOT NULL;",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(raw);
    ASSERT_EQ(sqlite3_open(live.toUtf8().constData(), &raw), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(raw,
                           "DELETE FROM db_all WHERE rowid=7; PRAGMA writable_schema=ON;"
                           "INSERT INTO sqlite_schema SELECT * FROM kept; DROP TABLE kept;",
                           nullptr, nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(raw);
    sqlite3_close(raw);
    const auto found = care->check(live, Depth::Indexes, goOn);
    ASSERT_TRUE(found.has_value());
    EXPECT_FALSE(found->isEmpty());
    care->reindex(live);
    EXPECT_EQ(care->check(live, Depth::Indexes, goOn), QStringList());
}

TEST_F(Care, ACheckCanBeGivenUp)
{
    EXPECT_EQ(care->check(live, Depth::Indexes, [](qint64, qint64) { return false; }),
              std::nullopt);
}

TEST_F(Care, AForeignFileIsRefused)
{
    overwrite(target, 0, QByteArray(8192, 'x'));
    EXPECT_EQ(test::errorOf([&] { (void)care->check(target, Depth::Pages, goOn); }),
              dberror::kUnrecognisedFormat);
}

TEST_F(Care, WhoHasTheLibraryOpenSeesTheRestoredRowsAtOnce)
{
    ASSERT_TRUE(care->copy(live, target, goOn));
    const auto open = engine->OpenDatabase(live);
    fill(*open, 3000, 5000);
    const qint64 version = open->DataVersion();
    ASSERT_TRUE(care->restore(target, live, goOn));
    EXPECT_NE(open->DataVersion(), version);
    EXPECT_EQ(open->OpenRecordset(u"select count(*) as anz from db_all"_s)->value(u"anz").toInt64(),
              3000);
    EXPECT_EQ(care->check(live, Depth::Indexes, goOn), QStringList());
}

TEST_F(Care, ARestoringThatIsGivenUpLeavesTheLibraryAsItWas)
{
    ASSERT_TRUE(care->copy(live, target, goOn));
    fill(*engine->OpenDatabase(live), 3000, 5000);
    int slices = 0;
    EXPECT_FALSE(care->restore(target, live, [&](qint64, qint64) { return ++slices < 3; }));
    EXPECT_EQ(rows(live), 5000);
    EXPECT_EQ(care->check(live, Depth::Indexes, goOn), QStringList());
}

TEST_F(Care, PagesOfAnotherSizeAreRefusedWithTheirSizes)
{
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(target.toUtf8().constData(), &raw), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(raw, "PRAGMA page_size=1024; CREATE TABLE x(y)", nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(raw);
    try {
        (void)care->restore(target, live, goOn);
        FAIL();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kInvalidOperation);
        EXPECT_TRUE(error.text().contains(u"1024"_s) && error.text().contains(u"4096"_s))
            << error.text().toStdString();
    }
    EXPECT_EQ(rows(live), 3000);
}
