#include "platform/sqlite/engine/engine_fixture.h"
#include "support/as_nobody.h"
#include "support/fake_passing_time.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

/// What happens to the files under the engine's feet, and what it leaves beside them.
namespace melovane::test {
namespace {

class EngineFiles : public EngineTest
{
protected:
    EngineFiles() { makeSuite(); }

    /// A database of the suite with one genre of that name; nobody has it open.
    void makeOther(const QString& name, const QString& genre)
    {
        m_siblingEngine->BackupDatabase(path(), path(name));
        const auto other = m_siblingEngine->OpenDatabase(path(name));
        other->Execute(u"delete from genre"_s);
        other->Execute(u"insert into genre values (1, '%1')"_s.arg(genre));
        other->Close();
        m_siblingEngine->Release(path(name));
    }

    /// Links a table of another file into the database and reads it once.
    void linkGenresOfASideFile()
    {
        makeOther(u"side.mdb"_s, u"side"_s);
        TableDef linked = link(u"side_genre"_s, path(u"side.mdb"_s));
        linked.SourceTableName = u"genre"_s;
        db().tableDefs().Append(linked);
        EXPECT_EQ(rowsOf(db(), u"select name from side_genre"_s), QStringList{u"side"_s});
    }

    /// Puts a file in the place of another as a file manager does it.
    void replace(const QString& target, const QString& source)
    {
        ASSERT_EQ(std::rename(path(source).toUtf8().constData(), path(target).toUtf8().constData()),
                  0);
    }

    QStringList genres(Database& database) { return rowsOf(database, u"select name from genre"_s); }

    /// How SQLite itself finds a file of ours.
    QString ask(const QString& name, const char* pragma)
    {
        sqlite3* raw = nullptr;
        EXPECT_EQ(sqlite3_open(path(name).toUtf8().constData(), &raw), SQLITE_OK);
        QString answer;
        const auto take = [](void* result, int, char** cells, char**) {
            *static_cast<QString*>(result) = QString::fromUtf8(cells[0]);
            return 0;
        };
        sqlite3_exec(raw, pragma, take, &answer, nullptr);
        sqlite3_close(raw);
        return answer;
    }

    const QString kMain = u"melovane.mdb"_s;
    const QString kOther = u"other.mdb"_s;
};

// --- Replaced and removed

TEST_F(EngineFiles, AFileReplacedUnderAWaitingConnectionIsMetByTheNextOpen)
{
    db().Execute(u"insert into genre values (1, 'old')"_s);
    makeOther(kOther, u"new"_s);
    db().Execute(u"insert into genre values (2, 'old, in the journal')"_s);
    db().Close();
    ASSERT_TRUE(QFile::exists(path(kMain + u"-wal"_s)));
    replace(kMain, kOther);
    const auto again = m_engine->OpenDatabase(path());
    EXPECT_EQ(genres(*again), QStringList{u"new"_s});
    EXPECT_EQ(integrityOf(path()), u"ok"_s);
}

TEST_F(EngineFiles, AFileReplacedUnderAnOpenDatabaseTakesNoMoreChanges)
{
    makeOther(kOther, u"new"_s);
    replace(kMain, kOther);
    const QString statement = u"insert into genre values (1, 'lost')"_s;
    EXPECT_EQ(errorOf([&] { db().Execute(statement); }), dberror::kCannotOpen);
    EXPECT_EQ(errorOf([&] { db().BeginTrans(); }), dberror::kCannotOpen);
    EXPECT_EQ(errorOf([&] { db().tableDefs().Delete(u"todo"_s); }), dberror::kCannotOpen);
    const auto set = db().OpenRecordset(u"genre"_s);
    set->AddNew();
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kCannotOpen);
    db().Close();
    m_engine->OpenDatabase(path())->Execute(statement);
    EXPECT_EQ(genres(*sibling()), (QStringList{u"new"_s, u"lost"_s}));
}

TEST_F(EngineFiles, AFileReplacedInsideATransactionIsNotCommitted)
{
    makeOther(kOther, u"new"_s);
    Transaction transaction(db());
    db().Execute(u"insert into genre values (1, 'lost')"_s);
    replace(kMain, kOther);
    EXPECT_EQ(errorOf([&] { transaction.commit(); }), dberror::kCannotOpen);
    EXPECT_EQ(genres(*sibling()), QStringList{u"new"_s});
}

TEST_F(EngineFiles, ClosingAReplacedFileLeavesTheJournalOfTheNewOne)
{
    makeOther(kOther, u"new"_s);
    replace(kMain, kOther);
    // Another program that meets the new file; the first thing it does is to drop what is left of
    // the old one.
    QFile::remove(path(kMain + u"-wal"_s));
    QFile::remove(path(kMain + u"-shm"_s));
    const auto user = sibling();
    user->Execute(u"insert into genre values (2, 'in the new journal')"_s);
    db().Close();
    m_engine->Release(path());
    EXPECT_TRUE(QFile::exists(path(kMain + u"-wal"_s)));
    user->Execute(u"insert into genre values (3, 'too')"_s);
    const auto third = sqlite::makeEngine(m_clock);
    EXPECT_EQ(genres(*third->OpenDatabase(path())),
              (QStringList{u"new"_s, u"in the new journal"_s, u"too"_s}));
}

TEST_F(EngineFiles, AFileMovedAwayKeepsWhatStoodInItsJournal)
{
    db().Execute(u"insert into genre values (1, 'in the journal')"_s);
    replace(u"moved.mdb"_s, kMain);
    EXPECT_EQ(errorOf([&] { db().Execute(u"delete from genre"_s); }), dberror::kCannotOpen);
    db().Close();
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path()); }), dberror::kFileNotFound);
    EXPECT_FALSE(QFile::exists(path(kMain + u"-wal"_s)));
    EXPECT_EQ(genres(*sibling(u"moved.mdb"_s)), QStringList{u"in the journal"_s});
}

TEST_F(EngineFiles, AJournalRemovedByAnotherProgramStopsChangesUntilTheFileIsOpenedAnew)
{
    db().Execute(u"insert into genre values (1, 'x')"_s);
    ASSERT_TRUE(QFile::remove(path(kMain + u"-wal"_s)));
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into genre values (2, 'lost')"_s); }),
              dberror::kCannotOpen);
    db().Close();
    const auto again = m_engine->OpenDatabase(path());
    again->Execute(u"insert into genre values (3, 'new')"_s);
    EXPECT_EQ(genres(*sibling()), (QStringList{u"x"_s, u"new"_s}));
}

TEST_F(EngineFiles, ASideFileReplacedByRenamingIsMetByTheNextStatement)
{
    makeOther(u"side.mdb"_s, u"old side"_s);
    TableDef linked = link(u"side_genre"_s, path(u"side.mdb"_s));
    linked.SourceTableName = u"genre"_s;
    db().tableDefs().Append(linked);
    db().Execute(u"insert into side_genre values (2, 'in the journal')"_s);
    makeOther(kOther, u"new side"_s);
    replace(u"side.mdb"_s, kOther);
    EXPECT_EQ(rowsOf(db(), u"select name from side_genre"_s), QStringList{u"new side"_s});
    db().Execute(u"insert into side_genre values (3, 'kept')"_s);
    EXPECT_EQ(genres(*sibling(u"side.mdb"_s)), (QStringList{u"new side"_s, u"kept"_s}));
}

TEST_F(EngineFiles, ABackupOverAFileBroughtDownByAKillDropsItsJournal)
{
    makeOther(kOther, u"other"_s);
    {
        const auto killed = m_siblingEngine->OpenDatabase(path(kOther));
        killed->Execute(u"insert into genre values (2, 'in the journal')"_s);
        QFile::copy(path(kOther), path(u"left.mdb"_s));
        QFile::copy(path(kOther + u"-wal"_s), path(u"left.mdb-wal"_s));
    }
    db().Execute(u"insert into genre values (1, 'whole')"_s);
    m_engine->BackupDatabase(path(), path(u"left.mdb"_s));
    EXPECT_EQ(genres(*sibling(u"left.mdb"_s)), QStringList{u"whole"_s});
}

TEST_F(EngineFiles, AFailedBackupLeavesTheTargetWithItsJournal)
{
    db().Execute(u"insert into genre values (1, 'source')"_s);
    makeOther(kOther, u"other"_s);
    const auto user = m_siblingEngine->OpenDatabase(path(kOther));
    Transaction writing(*user);
    user->Execute(u"insert into genre values (2, 'being written')"_s);
    EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(), path(u"no/copy.mdb"_s)); }),
              dberror::kCannotOpen);
    writing.commit();
    EXPECT_EQ(genres(*user), (QStringList{u"other"_s, u"being written"_s}));
}

TEST_F(EngineFiles, WhatAKilledBackupLeftIsRemovedByALaterOne)
{
    constexpr int kNobody = 0x7FFFFFF0; // beyond any process number
    const QString left = u"copy.mdb.%1-1.new"_s.arg(kNobody);
    const QString fresh = u"copy.mdb.%1-2.new"_s.arg(kNobody);
    const QString running = u"copy.mdb.%1-3.new"_s.arg(::getpid());
    for (const QString& name : {left, left + u"-journal"_s, fresh, running, u"copy.mdb.new"_s}) {
        QFile file(m_folder.write(name, "x"));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const int age = name == fresh ? 0 : -2;
        ASSERT_TRUE(
            file.setFileTime(m_clock.now().addDays(age), QFileDevice::FileModificationTime));
    }
    m_engine->BackupDatabase(path(), path(u"copy.mdb"_s));
    QStringList kept{fresh, running, u"copy.mdb.new"_s};
    kept.sort(); // one of them begins with the number of this process
    EXPECT_EQ(QDir(m_folder.path()).entryList({u"copy.mdb.*"_s}, QDir::Files, QDir::Name), kept);
}

// --- Letting go

TEST_F(EngineFiles, ReleaseClosesTheLastConnectionAndItsSideFiles)
{
    db().Execute(u"insert into genre values (1, 'x')"_s);
    db().Close();
    EXPECT_TRUE(QFile::exists(path(kMain + u"-wal"_s))) << "kept for the next use";
    m_engine->Release(m_folder.path() + u"/./nowhere/../melovane.mdb"_s);
    EXPECT_FALSE(QFile::exists(path(kMain + u"-wal"_s)));
    EXPECT_FALSE(QFile::exists(path(kMain + u"-shm"_s)));
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode=DELETE"), u"delete"_s) << "needs the file alone";
}

TEST_F(EngineFiles, ReleaseKnowsAFileByItsOtherName)
{
    ASSERT_EQ(::symlink(path().toUtf8().constData(), path(u"link.mdb"_s).toUtf8().constData()), 0);
    m_engine->OpenDatabase(path(u"link.mdb"_s))->Execute(u"insert into genre values (1, 'x')"_s);
    db().Close();
    m_engine->Release(path());
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode=DELETE"), u"delete"_s);
}

TEST_F(EngineFiles, ADatabaseThatWasGivenAwayIsNotOpenedByAnyNameUntilItIsTakenBack)
{
    ASSERT_EQ(::symlink(path().toUtf8().constData(), path(u"link.mdb"_s).toUtf8().constData()), 0);
    makeOther(kOther, u"other"_s);
    m_siblingEngine->Release(path());
    db().Close();
    m_engine->GiveAway(m_folder.path() + u"/./nowhere/../melovane.mdb"_s);
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode=DELETE"), u"delete"_s) << "needs the file alone";
    for (const QString& name : {kMain, u"link.mdb"_s}) {
        EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(name)); }), dberror::kReleased);
        EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(name), path(u"copy.mdb"_s)); }),
                  dberror::kReleased);
        EXPECT_EQ(errorOf([&] { m_engine->BackupDatabase(path(kOther), path(name)); }),
                  dberror::kReleased);
    }
    EXPECT_EQ(genres(*m_engine->OpenDatabase(path(kOther))), QStringList{u"other"_s});

    // Also when another file stands in its place by then, or none at all.
    replace(kMain, kOther);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"link.mdb"_s)); }),
              dberror::kReleased);
    m_engine->TakeBack(path());
    EXPECT_EQ(genres(*m_engine->OpenDatabase(path(u"link.mdb"_s))), QStringList{u"other"_s});
    EXPECT_EQ(genres(*m_engine->OpenDatabase(path())), QStringList{u"other"_s});
}

TEST_F(EngineFiles, AConnectionInUseWhileItsDatabaseIsGivenAwayIsNotKeptForTheNextUse)
{
    linkGenresOfASideFile();
    m_siblingEngine->Release(path());
    m_engine->GiveAway(path());
    m_engine->GiveAway(path(u"side.mdb"_s));
    db().Close();
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode=DELETE"), u"delete"_s);
    EXPECT_EQ(ask(u"side.mdb"_s, "PRAGMA journal_mode=DELETE"), u"delete"_s);
}

TEST_F(EngineFiles, ReleaseOfASideFileClosesTheConnectionsThatHoldIt)
{
    linkGenresOfASideFile();
    db().Close();
    m_engine->Release(path(u"side.mdb"_s));
    EXPECT_EQ(ask(u"side.mdb"_s, "PRAGMA journal_mode=DELETE"), u"delete"_s);
}

TEST_F(EngineFiles, IdleShowsWhatOthersCommitted)
{
    db().Execute(u"insert into genre values (1, 'own')"_s);
    const auto set = db().OpenRecordset(u"genre"_s);
    EXPECT_EQ(set->value(u"name").toText(), u"own"_s);
    sibling()->Execute(u"update genre set name='foreign'"_s);
    m_engine->Idle(dbRefreshCache);
    EXPECT_EQ(set->value(u"name").toText(), u"foreign"_s);
}

// --- Locks

class EngineLocks : public EngineFiles
{
protected:
    EngineLocks()
    {
        makeOther(u"side.mdb"_s, u"side"_s);
        TableDef linked = link(u"side_genre"_s, path(u"side.mdb"_s));
        linked.SourceTableName = u"genre"_s;
        db().tableDefs().Append(linked);
        m_siblingEngine = sqlite::makeEngine(m_clock, {.busyTimeout = kTimeout, .time = m_time});
    }

    static constexpr std::chrono::milliseconds kTimeout{60};
    std::shared_ptr<FakePassingTime> m_time = std::make_shared<FakePassingTime>();
};

TEST_F(EngineLocks, AFileThatStaysBusyIsToldAfterTheTimeOutAndNotLater)
{
    const auto other = sibling();
    db().BeginTrans();
    for (const auto& work : std::vector<std::function<void()>>{
             [&] { other->BeginTrans(); },
             [&] { other->Execute(u"delete from genre"_s); },
             [&] { other->tableDefs().Delete(u"todo"_s); },
         }) {
        const std::chrono::microseconds before = m_time->paused();
        EXPECT_EQ(errorOf(work), dberror::kLocked);
        EXPECT_GE(m_time->paused() - before, kTimeout);
        // A pause that was begun is ended.
        EXPECT_LE(m_time->paused() - before, kTimeout + std::chrono::milliseconds(5));
    }
}

TEST_F(EngineLocks, ATransactionLeavesSideFilesThatItDoesNotNeedToOthers)
{
    EXPECT_EQ(rowsOf(db(), u"select name from side_genre"_s), QStringList{u"side"_s});
    const auto other = sibling(u"side.mdb"_s);
    Transaction transaction(db());
    db().Execute(u"insert into genre values (1, 'x')"_s);
    other->Execute(u"insert into genre values (2, 'not stopped')"_s);
    EXPECT_EQ(rowsOf(db(), u"select name from side_genre"_s),
              (QStringList{u"side"_s, u"not stopped"_s}));
    EXPECT_EQ(errorOf([&] { other->Execute(u"delete from genre"_s); }), dberror::kLocked)
        << "what the transaction has read stays as it is";
    db().Execute(u"update side_genre set name=name+'!'"_s);
    transaction.commit();
    EXPECT_EQ(genres(*other), (QStringList{u"side!"_s, u"not stopped!"_s}));
}

TEST_F(EngineLocks, ALongChangeOfASideFileStopsNoChangeOfTheMainFile)
{
    EXPECT_EQ(rowsOf(db(), u"select name from side_genre"_s), QStringList{u"side"_s});
    const auto other = sibling(u"side.mdb"_s);
    const Transaction rebuild(*other);
    other->Execute(u"delete from genre"_s);
    Transaction transaction(db());
    db().Execute(u"insert into genre values (1, 'x')"_s);
    transaction.commit();
    EXPECT_EQ(genres(db()), QStringList{u"x"_s});
}

TEST_F(EngineLocks, ARowReadInsideATransactionIsNotStaleWhenItIsWritten)
{
    const auto set = db().OpenRecordset(u"select * from side_genre"_s);
    const auto other = sibling(u"side.mdb"_s);
    Transaction transaction(db());
    EXPECT_EQ(set->value(u"name").toText(), u"side"_s);
    EXPECT_EQ(errorOf([&] { other->Execute(u"update genre set name='foreign'"_s); }),
              dberror::kLocked);
    set->Edit();
    set->setValue(u"name", u"own"_s);
    set->Update();
    transaction.commit();
    EXPECT_EQ(genres(*other), QStringList{u"own"_s});
}

TEST_F(EngineLocks, ASideFileIsAttachedInsideATransaction)
{
    Transaction transaction(db());
    db().Execute(u"insert into side_genre values (2, 'inside')"_s);
    transaction.commit();
    EXPECT_EQ(genres(*sibling(u"side.mdb"_s)), (QStringList{u"side"_s, u"inside"_s}));
}

// --- File systems

class EngineOnTheNetwork : public EngineFiles
{
protected:
    [[nodiscard]] std::unique_ptr<DBEngine> networkEngine() const
    {
        return sqlite::makeEngine(
            m_clock, {.sharesMemory = [](const QString&) { return false; }, .time = m_time});
    }

    std::shared_ptr<FakePassingTime> m_time = std::make_shared<FakePassingTime>();
    std::unique_ptr<DBEngine> m_network = networkEngine();
};

TEST_F(EngineOnTheNetwork, ANewFileHasNoSharedMemory)
{
    const auto made = m_network->Workspaces(0).CreateDatabase(path(u"new.mdb"_s), {});
    made->tableDefs().Append(table(u"t"_s, {textField(u"a"_s, 5)}));
    made->Execute(u"insert into t values ('x')"_s);
    EXPECT_FALSE(QFile::exists(path(u"new.mdb-shm"_s)));
    EXPECT_EQ(ask(u"new.mdb"_s, "PRAGMA journal_mode"), u"delete"_s);
}

TEST_F(EngineOnTheNetwork, AFileBroughtThereAndBackChangesItsJournal)
{
    db().Execute(u"insert into genre values (1, 'local')"_s);
    db().Close();
    m_engine->Release(path());
    m_network->OpenDatabase(path())->Execute(u"insert into genre values (2, 'there')"_s);
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode"), u"delete"_s);
    m_network->Release(path());
    const auto back = m_engine->OpenDatabase(path());
    EXPECT_EQ(genres(*back), (QStringList{u"local"_s, u"there"_s}));
    EXPECT_EQ(ask(kMain, "PRAGMA journal_mode"), u"wal"_s);
}

TEST_F(EngineOnTheNetwork, AFileThatOthersHoldIsOpenedAtOnceAsItIs)
{
    db().Execute(u"insert into genre values (1, 'local')"_s);
    const auto there = m_network->OpenDatabase(path());
    EXPECT_EQ(m_time->paused().count(), 0) << "nobody waits for the others to leave";
    there->Execute(u"insert into genre values (2, 'there')"_s);
    EXPECT_EQ(genres(db()), (QStringList{u"local"_s, u"there"_s}));
}

TEST_F(EngineOnTheNetwork, TwoProgramsShareAFile)
{
    db().Close();
    m_engine->Release(path());
    const auto other = networkEngine();
    const auto first = m_network->OpenDatabase(path());
    const auto second = other->OpenDatabase(path());
    const auto set = second->OpenRecordset(u"genre"_s);
    for (int i = 0; i < 20; ++i) {
        Transaction transaction(*first);
        first->Execute(u"insert into genre values (%1, 'a')"_s.arg(i));
        transaction.commit();
        second->Execute(u"update genre set name='b'"_s);
    }
    EXPECT_EQ(cellOf(*first, u"select count(*) as n from genre where name='b'"_s).toLong(), 20);
}

TEST_F(EngineFiles, AJournalLeftWriteProtectedByAKilledProgramIsMended)
{
    db().Execute(u"insert into genre values (1, 'in the journal')"_s);
    for (const auto& suffix : {u""_s, u"-wal"_s, u"-shm"_s}) {
        ASSERT_TRUE(QFile::copy(path(kMain + suffix), path(kOther + suffix)));
        const QByteArray name = path(kOther + suffix).toUtf8();
        ASSERT_EQ(::chmod(name.constData(), suffix.isEmpty() ? 0644 : 0444), 0);
        ASSERT_TRUE(AsNobody::give(name));
    }
    ASSERT_TRUE(AsNobody::give(m_folder.path().toUtf8()));
    {
        const AsNobody nobody;
        const auto database = m_engine->OpenDatabase(path(kOther));
        database->Execute(u"insert into genre values (2, 'written')"_s);
        EXPECT_EQ(genres(*database), (QStringList{u"in the journal"_s, u"written"_s}));
    }
    m_engine->Release(path(kOther));
}

TEST_F(EngineFiles, AJournalOnReadOnlyMediaIsReadToo)
{
    db().Execute(u"insert into genre values (1, 'in the journal')"_s);
    QDir().mkpath(path(u"disc"_s));
    for (const auto& suffix : {u""_s, u"-wal"_s}) {
        ASSERT_TRUE(QFile::copy(path(kMain + suffix), path(u"disc/melovane.mdb"_s + suffix)));
        ASSERT_EQ(::chmod(path(u"disc/melovane.mdb"_s + suffix).toUtf8().constData(), 0444), 0);
    }
    const QByteArray disc = path(u"disc"_s).toUtf8();
    const QByteArray before = m_folder.read(u"disc/melovane.mdb"_s);
    ASSERT_EQ(::chmod(m_folder.path().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(::chmod(disc.constData(), 0555), 0);
    {
        const AsNobody nobody;
        const auto database = m_engine->OpenDatabase(path(u"disc/melovane.mdb"_s));
        EXPECT_EQ(genres(*database), QStringList{u"in the journal"_s});
        EXPECT_EQ(errorOf([&] { database->Execute(u"delete from genre"_s); }), dberror::kReadOnly);
    }
    m_engine->Release(path(u"disc/melovane.mdb"_s));
    ASSERT_EQ(::chmod(disc.constData(), 0755), 0);
    EXPECT_EQ(m_folder.read(u"disc/melovane.mdb"_s), before);
}

TEST_F(EngineLocks, ASideFileOnReadOnlyMediaIsRead)
{
    db().Close();
    m_engine->Release(path());
    const QByteArray folder = m_folder.path().toUtf8();
    // Its owner has opened the library for everybody.
    for (const QString& name : QDir(m_folder.path()).entryList(QDir::Files)) {
        ASSERT_EQ(::chmod(m_folder.file(name).toUtf8().constData(), 0644), 0);
    }
    ASSERT_EQ(::chmod(folder.constData(), 0555), 0);
    {
        const AsNobody nobody;
        const auto database = m_engine->OpenDatabase(path());
        EXPECT_EQ(rowsOf(*database, u"select name from side_genre"_s), QStringList{u"side"_s});
        EXPECT_EQ(errorOf([&] { database->Execute(u"delete from side_genre"_s); }),
                  dberror::kReadOnly);
    }
    m_engine->Release(path());
    ASSERT_EQ(::chmod(folder.constData(), 0755), 0);
}

} // namespace
} // namespace melovane::test
