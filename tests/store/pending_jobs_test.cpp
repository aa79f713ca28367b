#include "store/pending_jobs.h"
#include "support/suite_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class PendingJobsTest : public test::SuiteFixture
{
protected:
    PendingJobsTest() { settings->SetDbName(suite.dbName()); }

    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    PendingJobs jobs{*suite.engine, *settings};
};

TEST_F(PendingJobsTest, ATreeIsNotedOnceHoweverOftenItChanges)
{
    jobs.ChangeTree(u"Album"_s);
    jobs.ChangeTree(u"Album"_s);
    PendingJobs other(*suite.engine, *settings);
    other.ChangeTree(u"Album"_s);
    jobs.ChangeTree(u"Dir"_s);
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree order by TreeName"_s),
              (QStringList{u"Album"_s, u"Dir"_s}));
}

TEST_F(PendingJobsTest, ATreeThatTheJobHasDoneIsNotNotedAgainInTheSameRun)
{
    jobs.ChangeTree(u"Album"_s);
    suite.execute(u"delete * from ChangeTree"_s);
    jobs.ChangeTree(u"Album"_s);
    EXPECT_TRUE(suite.column(u"select TreeName from ChangeTree"_s).isEmpty());
}

TEST_F(PendingJobsTest, WhatWasNotedInOneLibraryIsStillToBeNotedInAnother)
{
    const QString other = suite.file(u"andere.mdb"_s);
    suite.engine->BackupDatabase(suite.dbName(), other);
    jobs.ChangeTree(u"Album"_s);
    settings->SetDbName(other);
    jobs.ChangeTree(u"Album"_s);
    const auto database = suite.engine->OpenDatabase(other);
    const auto noted = database->OpenRecordset(u"select TreeName from ChangeTree"_s);
    ASSERT_FALSE(noted->Eof());
    EXPECT_EQ(noted->value(0).toText(), u"Album"_s);
}

TEST_F(PendingJobsTest, ATrackIsEnteredEachTimeWithoutBlanksAroundItsId)
{
    jobs.SaveEditFID(u" 800000000001 "_s);
    jobs.SaveEditFID(u"800000000001"_s);
    EXPECT_EQ(suite.column(u"select FID from db_edit"_s),
              (QStringList{u"800000000001"_s, u"800000000001"_s}));
}

TEST_F(PendingJobsTest, AMissingDatabaseIsQuietAndIsNotedLater)
{
    settings->SetDbName(suite.file(u"fehlt.mdb"_s));
    jobs.ChangeTree(u"Genre"_s);
    jobs.SaveEditFID(u"800000000001"_s);
    settings->SetDbName(suite.dbName());
    jobs.ChangeTree(u"Genre"_s);
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree"_s), (QStringList{u"Genre"_s}));
}

} // namespace
} // namespace melovane
