#include "config/global_settings.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kVersionUnknown = u" (Fehler bei Versionskontrolle !!!) "_s;

class SettingsDatabase : public testing::Test
{
protected:
    SettingsDatabase()
        : database(engine->Workspaces(0).CreateDatabase(suite.configFile(u"melovane.mdb"_s),
                                                        QString::fromUtf16(kDatabaseLocale)))
        , settings(suite.makeSettings(*engine))
    {}

    /// Statements that make and fill tables.
    void run(const QStringList& statements)
    {
        for (const QString& statement : statements) {
            database->Execute(statement);
        }
    }

    void makeVersion(const QString& type, const QString& id, const QString& version)
    {
        run({u"create table db_version (id %1, Version text(50))"_s.arg(type),
             u"insert into db_version (id, Version) values (%1, '%2')"_s.arg(id, version)});
    }

    /// A track played some hours ago, with its day count.
    void addTrack(const QString& fid, int hoursAgo, const QString& count)
    {
        const QDateTime played = clock.now().addSecs(-3600LL * hoursAgo);
        run({u"insert into db_all (fid, play, PlayCountDay) values ('%1', cdate('%2'), %3)"_s.arg(
            fid, played.toString(u"dd.MM.yyyy HH:mm:ss"_s), count)});
    }

    void makeTracks()
    {
        run({u"create table db_all (FID text(12), play date, PlayCountDay long)"_s});
        addTrack(u"11"_s, 11, u"2"_s);
        addTrack(u"13"_s, 13, u"3"_s);
        addTrack(u"14"_s, 14, u"null"_s);
    }

    /// "11=2 13=null ..." in the order of the tracks.
    [[nodiscard]] QString counts()
    {
        QStringList result;
        const auto set = database->OpenRecordset(u"select * from db_all order by fid"_s);
        for (; !set->Eof(); set->MoveNext()) {
            const Value count = set->value(u"PlayCountDay");
            result.append(set->value(u"FID").toText() + u'=' +
                          (count.isNull() ? u"null"_s : count.toText()));
        }
        return result.join(u' ');
    }

    test::SuiteFolders suite;
    test::FakeClock clock;
    std::unique_ptr<DBEngine> engine = sqlite::makeEngine(clock);
    std::unique_ptr<Database> database;
    std::unique_ptr<GlobalSettings> settings;
};

TEST_F(SettingsDatabase, AVersionOfThisReleaseIsAccepted)
{
    makeVersion(u"text(50)"_s, u"'DB.Version'"_s, u"3.4"_s);
    EXPECT_EQ(settings->CheckDBVersion(), 0);
    EXPECT_EQ(settings->DBVersion(), u"3.4"_s);
}

TEST_F(SettingsDatabase, AnotherVersionIsRefusedAndNamed)
{
    makeVersion(u"text(50)"_s, u"'DB.Version'"_s, u"3.5"_s);
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_EQ(settings->DBVersion(), u"3.5"_s);
}

TEST_F(SettingsDatabase, AFileWithNumberedVersionsIsAskedForNumberOne)
{
    makeVersion(u"long"_s, u"1"_s, u"3.4"_s);
    EXPECT_EQ(settings->CheckDBVersion(), 0);
    EXPECT_EQ(settings->DBVersion(), u"3.4"_s);
}

TEST_F(SettingsDatabase, WithoutAVersionTheTextSaysThatTheCheckFailed)
{
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_EQ(settings->DBVersion(), kVersionUnknown);
    makeVersion(u"text(50)"_s, u"'DB.SubVersion'"_s, u"0"_s);
    settings->SetDBVersion(u"3.4"_s);
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_EQ(settings->DBVersion(), kVersionUnknown);
}

TEST_F(SettingsDatabase, AMissingOrForeignFileIsRefusedAndStays)
{
    settings->SetDbName(suite.folder().file(u"missing.mdb"_s));
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_FALSE(suite.files().fileExists(settings->DbName()));
    const QByteArray bytes(5000, '\x5A');
    settings->SetDbName(suite.folder().write(u"foreign.mdb"_s, bytes));
    EXPECT_EQ(settings->CheckDBVersion(), -1);
    EXPECT_EQ(settings->DBVersion(), kVersionUnknown);
    EXPECT_EQ(suite.folder().read(u"foreign.mdb"_s), bytes);
}

TEST_F(SettingsDatabase, ADayCountEndsTwelveHoursAfterTheLastPlay)
{
    makeTracks();
    settings->UpdateLastPlayDayCount();
    EXPECT_EQ(counts(), u"11=2 13=null 14=null"_s);
}

TEST_F(SettingsDatabase, AllDayCountsAreCleared)
{
    makeTracks();
    settings->DELPlayDayCount();
    EXPECT_EQ(counts(), u"11=null 13=null 14=null"_s);
}

TEST_F(SettingsDatabase, ADatabaseThatFailsKeepsItsCountsWithoutAWord)
{
    makeTracks();
    const auto other = suite.makeSettings();
    other->UpdateLastPlayDayCount();
    other->DELPlayDayCount();
    EXPECT_EQ(counts(), u"11=2 13=3 14=null"_s);
    run({u"drop table db_all"_s});
    settings->DELPlayDayCount();
}

} // namespace
} // namespace melovane
