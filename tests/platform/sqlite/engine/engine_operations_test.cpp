#include "platform/sqlite/engine/engine_fixture.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

namespace melovane::test {
namespace {

class EngineOperations : public EngineTest
{
protected:
    EngineOperations() { makeSuite(); }
};

TEST_F(EngineOperations, OpenDatabaseLetsSeveralConnectionsShareTheFile)
{
    const auto first = m_engine->OpenDatabase(path());
    const auto second = m_engine->OpenDatabase(path());
    const auto foreign = sibling();
    first->Execute(u"insert into genre values (1, 'Blues')"_s);
    EXPECT_EQ(rowsOf(*second, u"select * from genre"_s), QStringList{u"1|Blues"_s});
    EXPECT_EQ(rowsOf(*foreign, u"select * from genre"_s), QStringList{u"1|Blues"_s});
    foreign->Execute(u"insert into genre values (2, 'Jazz')"_s);
    EXPECT_EQ(cellOf(*first, u"select count(*) as anz from genre"_s).toLong(), 2);
}

TEST_F(EngineOperations, OpenDatabaseNeverCreatesAFile)
{
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"absent.mdb"_s)); }),
              dberror::kFileNotFound);
    EXPECT_FALSE(QFile::exists(path(u"absent.mdb"_s)));
}

TEST_F(EngineOperations, IdleShowsAnOpenSetWhatOthersCommitted)
{
    addTrack(u"1"_s, u"before"_s);
    const auto set = db().OpenRecordset(u"select Titel from db_all"_s);
    EXPECT_EQ(set->value(0).toText(), u"before"_s);
    sibling()->Execute(u"update db_all set Titel='after'"_s);
    m_engine->Idle(dbRefreshCache);
    EXPECT_EQ(set->value(0).toText(), u"after"_s);
}

TEST_F(EngineOperations, CreateDatabaseMakesAnEmptyFileThatOpens)
{
    const auto made = m_engine->Workspaces(0).CreateDatabase(path(u"new ä%?#.mdb"_s), {});
    EXPECT_TRUE(made->tableDefs().All().empty());
    EXPECT_EQ(made->Name(), path(u"new ä%?#.mdb"_s));
    EXPECT_TRUE(sibling(u"new ä%?#.mdb"_s)->queryDefs().Names().isEmpty());
}

TEST_F(EngineOperations, CreateDatabaseLeavesAnExistingFileAlone)
{
    const QString file = m_folder.write(u"there.mdb"_s, "something");
    EXPECT_EQ(errorOf([&] { (void)m_engine->Workspaces(0).CreateDatabase(file, {}); }),
              dberror::kDatabaseExists);
    EXPECT_EQ(m_folder.read(u"there.mdb"_s), "something");
}

TEST_F(EngineOperations, CreateDatabaseDoesNotPlayTheJournalOfADeletedFile)
{
    const QString file = path(u"side.mdb"_s);
    const auto old = m_engine->Workspaces(0).CreateDatabase(file, {});
    old->tableDefs().Append(table(u"gone"_s, {textField(u"a"_s, 5)}));
    ASSERT_TRUE(QFile::exists(file + u"-wal"_s));
    ASSERT_TRUE(QFile::remove(file));
    const auto fresh = m_engine->Workspaces(0).CreateDatabase(file, {});
    EXPECT_FALSE(fresh->tableDefs().Contains(u"gone"_s));
    EXPECT_FALSE(sibling(u"side.mdb"_s)->tableDefs().Contains(u"gone"_s));
}

TEST_F(EngineOperations, ThereIsOnlyWorkspaceZero)
{
    EXPECT_EQ(errorOf([&] { (void)m_engine->Workspaces(1); }), dberror::kItemNotFound);
}

TEST_F(EngineOperations, OpenRecordsetTakesAStatementATableOrAQuery)
{
    addTrack(u"1"_s, u"one"_s);
    for (const auto& source :
         {u"select * from db_all"_s, u"DB_ALL"_s, u"[db_all]"_s, u"vdb_all"_s}) {
        const auto set = db().OpenRecordset(source);
        EXPECT_FALSE(set->Eof());
        EXPECT_TRUE(set->Updatable()) << source.toStdString();
        EXPECT_EQ(set->value(u"titel").toText(), u"one"_s);
    }
    EXPECT_EQ(errorOf([&] { (void)db().OpenRecordset(u"nosuch"_s); }), dberror::kObjectNotFound);
    EXPECT_EQ(errorOf([&] { (void)db().OpenRecordset(u"select * from nosuch"_s); }),
              dberror::kObjectNotFound);
}

TEST_F(EngineOperations, OpenRecordsetRefusesAnActionAndExecuteASelect)
{
    EXPECT_NE(errorOf([&] { (void)db().OpenRecordset(u"delete from genre"_s); }), 0);
    EXPECT_EQ(
        errorOf([&] { (void)db().CreateQueryDef({}, u"delete from genre"_s)->OpenRecordset(); }),
        dberror::kInvalidOperation);
    EXPECT_EQ(errorOf([&] { db().Execute(u"select * from genre"_s); }), dberror::kSelectExecuted);
}

TEST_F(EngineOperations, ARefusedStatementIsNamedInTheError)
{
    try {
        db().Execute(u"update genre sett name='x'"_s);
        FAIL();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kSyntax);
        EXPECT_EQ(error.statement(), u"update genre sett name='x'"_s);
    }
}

TEST_F(EngineOperations, ExecuteIsWholeOrNothing)
{
    db().Execute(u"insert into db_version values ('a','1')"_s);
    db().Execute(u"insert into db_version values ('b','2')"_s);
    EXPECT_EQ(errorOf([&] { db().Execute(u"update db_version set id='c'"_s); }),
              dberror::kDuplicateKey);
    EXPECT_EQ(rowsOf(db(), u"select id from db_version order by id"_s),
              (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(EngineOperations, RecordsAffectedServesUpdateOrInsert)
{
    db().Execute(u"update todo set fid='x' where id=77"_s);
    EXPECT_EQ(db().RecordsAffected(), 0);
    db().Execute(u"insert into todo(id,fid)values(77,'x')"_s);
    EXPECT_EQ(db().RecordsAffected(), 1);
    db().Execute(u"update todo set fid='y' where id=77"_s);
    EXPECT_EQ(db().RecordsAffected(), 1);
}

TEST_F(EngineOperations, CloseEndsTheConnectionAndItsSets)
{
    addTrack(u"1"_s, u"one"_s);
    const auto set = db().OpenRecordset(u"db_all"_s);
    const auto query = db().queryDefs().Item(u"VDB_ALL"_s);
    EXPECT_EQ(set->value(u"FID").toText(), u"1"_s);
    db().Close();
    EXPECT_EQ(errorOf([&] { (void)set->value(0); }), dberror::kObjectClosed);
    EXPECT_EQ(errorOf([&] { set->Edit(); }), dberror::kObjectClosed);
    EXPECT_EQ(errorOf([&] { (void)query->OpenRecordset(); }), dberror::kObjectClosed);
    EXPECT_EQ(errorOf([&] { (void)db().OpenRecordset(u"db_all"_s); }), dberror::kObjectClosed);
    db().Rollback();
}

TEST_F(EngineOperations, ReleaseReallyLetsGoOfTheFile)
{
    db().Close();
    m_engine->Release(path());
    EXPECT_FALSE(QFile::exists(path() + u"-wal"_s)) << "the last one to close removes it";
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &raw), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(raw, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(raw, "BEGIN EXCLUSIVE; COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(raw);
    EXPECT_TRUE(m_engine->OpenDatabase(path())->tableDefs().Contains(u"db_all"_s));
}

TEST_F(EngineOperations, AFileThatWasReplacedIsOpenedAnew)
{
    db().Close();
    QFile::remove(path());
    const auto other = m_siblingEngine->Workspaces(0).CreateDatabase(path(), {});
    other->tableDefs().Append(table(u"only"_s, {textField(u"a"_s, 5)}));
    const auto again = m_engine->OpenDatabase(path());
    EXPECT_EQ(again->tableDefs().All().size(), 1U);
}

TEST_F(EngineOperations, NoStatementStaysOpenBetweenTwoCalls)
{
    addTrack(u"1"_s, u"one"_s);
    addTrack(u"2"_s, u"two"_s);
    const auto set = db().OpenRecordset(u"select * from db_all"_s);
    const auto counted = db().OpenRecordset(u"select count(*) as anz from db_all"_s);
    EXPECT_FALSE(set->value(0).isNull());
    sibling()->Execute(u"insert into db_all (FID) values ('3')"_s);
    db().Execute(u"insert into db_all (FID) values ('4')"_s);
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &raw), SQLITE_OK);
    EXPECT_EQ(sqlite3_wal_checkpoint_v2(raw, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(raw);
}

TEST_F(EngineOperations, TransactionsNestAndOnlyTheOutermostWrites)
{
    db().BeginTrans();
    db().Execute(u"insert into genre values (1, 'kept')"_s);
    db().BeginTrans();
    db().Execute(u"insert into genre values (2, 'undone')"_s);
    db().Rollback();
    EXPECT_EQ(cellOf(*sibling(), u"select count(*) as anz from genre"_s).toLong(), 0);
    db().CommitTrans();
    EXPECT_EQ(rowsOf(*sibling(), u"select name from genre"_s), QStringList{u"kept"_s});
}

TEST_F(EngineOperations, ATransactionWithoutCommitIsUndone)
{
    {
        Transaction transaction(db());
        db().Execute(u"insert into genre values (1, 'x')"_s);
        db().tableDefs().Append(table(u"lost"_s, {textField(u"a"_s, 5)}));
    }
    EXPECT_FALSE(db().tableDefs().Contains(u"lost"_s));
    EXPECT_EQ(cellOf(db(), u"select count(*) as anz from genre"_s).toLong(), 0);
    EXPECT_EQ(errorOf([&] { db().CommitTrans(); }), dberror::kNoTransaction);
}

TEST_F(EngineOperations, AnOpenTransactionIsUndoneWhenTheDatabaseCloses)
{
    db().BeginTrans();
    db().Execute(u"insert into genre values (1, 'x')"_s);
    db().Close();
    const auto again = m_engine->OpenDatabase(path());
    EXPECT_EQ(cellOf(*again, u"select count(*) as anz from genre"_s).toLong(), 0);
    again->Execute(u"insert into genre values (1, 'x')"_s);
}

TEST_F(EngineOperations, AWriterThatWaitsTooLongIsToldThatTheFileIsLocked)
{
    const auto impatient = sqlite::makeEngine(m_clock, {std::chrono::milliseconds(20)});
    const auto other = impatient->OpenDatabase(path());
    db().BeginTrans();
    EXPECT_EQ(errorOf([&] { other->Execute(u"insert into genre values (1, 'x')"_s); }),
              dberror::kLocked);
    EXPECT_EQ(rowsOf(*other, u"select * from genre"_s), QStringList()) << "readers never wait";
    db().Rollback();
    other->Execute(u"insert into genre values (1, 'x')"_s);
}

TEST_F(EngineOperations, DataVersionChangesWithForeignCommitsOnly)
{
    const qint64 before = db().DataVersion();
    db().Execute(u"insert into genre values (1, 'own')"_s);
    EXPECT_EQ(db().DataVersion(), before);
    sibling()->Execute(u"insert into genre values (2, 'foreign')"_s);
    const qint64 after = db().DataVersion();
    EXPECT_GT(after, before);
    EXPECT_EQ(db().DataVersion(), after);
}

TEST_F(EngineOperations, BackupDatabaseCopiesAFileInUse)
{
    addTrack(u"1"_s, u"one"_s);
    m_folder.write(u"copy.mdb"_s, "an older copy");
    m_engine->BackupDatabase(path(), path(u"copy.mdb"_s));
    addTrack(u"2"_s, u"two"_s);
    EXPECT_EQ(rowsOf(*sibling(u"copy.mdb"_s), u"select FID from db_all"_s), QStringList{u"1"_s});
    EXPECT_EQ(QDir(m_folder.path()).entryList({u"*.new*"_s}), QStringList());
}

TEST_F(EngineOperations, AFailedBackupLeavesTheTargetAlone)
{
    m_folder.write(u"copy.mdb"_s, "an older copy");
    EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(u"no.mdb"_s), path(u"copy.mdb"_s)); }),
              dberror::kFileNotFound);
    EXPECT_EQ(m_folder.read(u"copy.mdb"_s), "an older copy");
    EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(), path(u"no/such/copy.mdb"_s)); }),
              dberror::kCannotOpen);
    EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(), path()); }), dberror::kCannotOpen);
}

TEST_F(EngineOperations, NowIsTheTimeOfTheClock)
{
    EXPECT_EQ(
        cellOf(db(), u"select now as t from (select count(*) as n from genre)"_s).toDateTime(),
        m_clock.now());
}

} // namespace
} // namespace melovane::test
