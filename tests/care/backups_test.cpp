#include "care/backups.h"
#include "care/settings_return.h"
#include "config/paths.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "playlists/history_file.h"
#include "support/faulty_vfs.h"
#include "support/suite_fixture.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

#include <cerrno>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

bool goOn(int)
{
    return true;
}

/// Archives of a disk that gets full while they are written.
class FullArchives : public ZstdArchives
{
public:
    bool isFull = false;

    [[nodiscard]] bool write(const QString& archive,
                             const std::vector<ArchiveMember>& members,
                             const CopyStep& step) override
    {
        if (isFull) {
            throw IoError(archive, u"No space left on device"_s, ENOSPC);
        }
        return ZstdArchives::write(archive, members, step);
    }
};

class BackupsTest : public testing::Test
{
protected:
    BackupsTest()
    {
        for (int i = 0; i < 50; ++i) {
            tracks.append(suite.library.add({.Titel = u"Titel %1"_s.arg(i)}));
        }
        suite.library.addPlaylist({.Name = u"Abend"_s, .tracks = tracks});
        suite.execute(u"update pl_name set anzahl=50"_s);
    }

    [[nodiscard]] Backups backups()
    {
        return Backups({*care, archives, suite.files, suite.clock,
                        [this] {
                            return lockFile(suite.file(u"test.lock"_s),
                                            std::chrono::milliseconds::zero());
                        }},
                       {suite.dbName(), suite.dataFolder(), databaseLevelOfThisRelease()});
    }

    [[nodiscard]] QStringList names(const QString& filter = u"Melovane.Backup*"_s) const
    {
        return QDir(suite.dataFolder()).entryList({filter}, QDir::AllEntries);
    }

    /// Everything in the data folder but the library's own journals.
    [[nodiscard]] QStringList all() const
    {
        return QDir(suite.dataFolder())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot)
            .filter(QRegularExpression(u"^(?!.*(-wal|-shm|\\.lock)$)"_s));
    }

    /// The name of the new backup.
    QString make(BackupOccasion occasion = BackupOccasion::ByHand)
    {
        EXPECT_EQ(backups().make(occasion, goOn), BackupOutcome::Done);
        return backups().list().front().name;
    }

    [[nodiscard]] int titles() const
    {
        return suite.value(u"select count(*) from db_all"_s).toLong();
    }

    void damage(const QString& name, qint64 at, const QByteArray& bytes) const
    {
        QFile file(suite.file(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(at);
        file.write(bytes);
    }

    test::FaultyVfs disk;
    test::Suite suite;
    std::unique_ptr<DatabaseCare> care = sqlite::makeDatabaseCare(suite.clock);
    FullArchives archives;
    QStringList tracks;
};

} // namespace

TEST_F(BackupsTest, ABackupIsListedWithWhatItHolds)
{
    const QString name = make();
    EXPECT_EQ(name, u"Melovane.Backup.(34150).20260314_150926.tar.zst"_s);
    const Backup backup = backups().list().front();
    EXPECT_EQ(backup.tracks, 50);
    EXPECT_EQ(backup.lists, 1);
    EXPECT_EQ(backup.occasion, BackupOccasion::ByHand);
    EXPECT_EQ(backup.state, BackupState::Good);
    EXPECT_EQ(backup.checked, suite.clock.now());
    EXPECT_GT(backup.bytes, 1000);
    EXPECT_FALSE(names().contains(u"Melovane.Backup.work"_s));
}

TEST_F(BackupsTest, TwoOfOneSecondBothStand)
{
    make();
    make();
    EXPECT_EQ(backups().list().size(), 2U);
}

TEST_F(BackupsTest, OneADayIsDue)
{
    EXPECT_TRUE(backups().isDue());
    make(BackupOccasion::Daily);
    EXPECT_FALSE(backups().isDue());
    suite.clock.addSeconds(86400);
    EXPECT_TRUE(backups().isDue());
}

TEST_F(BackupsTest, ADamagedOneOfTodayLeavesItDue)
{
    const QString name = make();
    damage(name, 40, "xxxx");
    (void)backups().check(name, goOn);
    EXPECT_TRUE(backups().isDue());
}

TEST_F(BackupsTest, ACheckFindsEveryDamageOfAnArchive)
{
    const QString name = make();
    EXPECT_EQ(backups().check(name, goOn), BackupOutcome::Done);
    EXPECT_EQ(backups().list().front().state, BackupState::Good);
    damage(name, QFile(suite.file(name)).size() / 2, "xxxx");
    EXPECT_EQ(backups().check(name, goOn), BackupOutcome::Damaged);
    EXPECT_EQ(backups().list().front().state, BackupState::Damaged);
}

TEST_F(BackupsTest, OneThatWasReplacedSinceItsCheckCountsAsUnchecked)
{
    const QString name = make();
    QFile file(suite.file(name));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("more");
    file.close();
    EXPECT_EQ(backups().list().front().state, BackupState::Unchecked);
}

TEST_F(BackupsTest, ACopyOfAnUpgradeIsCountedByItsCheck)
{
    suite.check().backup(343);
    const Backup before = backups().list().front();
    EXPECT_EQ(before.occasion, BackupOccasion::Upgrade);
    EXPECT_EQ(before.tracks, -1);
    EXPECT_EQ(backups().check(before.name, goOn), BackupOutcome::Done);
    const Backup after = backups().list().front();
    EXPECT_EQ(after.tracks, 50);
    EXPECT_EQ(after.state, BackupState::Good);
}

TEST_F(BackupsTest, RestoringGivesBackAllRowsAndKeepsThePresentOnes)
{
    const QString name = make();
    const QStringList before = suite.column(u"select Titel from db_all order by FID"_s);
    const auto open = suite.open();
    suite.execute(u"delete from db_all where Titel like '*1*'"_s);
    suite.library.add({.Titel = u"Neu"_s});
    const int present = titles();
    EXPECT_EQ(backups().restore(name, false, goOn), BackupOutcome::Done);
    EXPECT_EQ(suite.column(u"select Titel from db_all order by FID"_s), before);
    EXPECT_EQ(open->OpenRecordset(u"select count(*) as anz from db_all"_s)->value(0).toLong(), 50);
    const Backup safety = backups().list().front();
    EXPECT_EQ(safety.occasion, BackupOccasion::Restore);
    EXPECT_EQ(safety.tracks, present);
}

TEST_F(BackupsTest, ADamagedBackupIsNotRestored)
{
    const QString name = make();
    damage(name, QFile(suite.file(name)).size() / 2, "xxxx");
    suite.library.add();
    EXPECT_EQ(backups().restore(name, true, goOn), BackupOutcome::Damaged);
    EXPECT_EQ(titles(), 51);
    EXPECT_EQ(backups().list().size(), 1U);
}

TEST_F(BackupsTest, ALibraryThatIsNoneIsKeptAsideAndReplaced)
{
    const QString name = make();
    suite.engine->Release(suite.dbName());
    damage(u"melovane.mdb"_s, 0, QByteArray(4096, 'x'));
    EXPECT_EQ(backups().restore(name, false, goOn), BackupOutcome::Done);
    EXPECT_EQ(titles(), 50);
    EXPECT_TRUE(suite.files.fileExists(suite.dbName() + u".damaged"_s));
    EXPECT_EQ(suite.check().openTest(), QString());
}

TEST_F(BackupsTest, ALibraryThatIsGoneComesBack)
{
    const QString name = make();
    suite.engine->Release(suite.dbName());
    for (const QString& ending : {u""_s, u"-wal"_s, u"-shm"_s}) {
        suite.files.remove(suite.dbName() + ending);
    }
    EXPECT_EQ(backups().restore(name, false, goOn), BackupOutcome::Done);
    EXPECT_EQ(titles(), 50);
}

TEST_F(BackupsTest, ADamagedLibraryTakesNoBackupsPlace)
{
    const QString good = make();
    suite.engine->Release(suite.dbName());
    for (int page = 20; page < 60; ++page) {
        damage(u"melovane.mdb"_s, 4096 * page, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF");
    }
    Backups all = backups();
    EXPECT_EQ(all.make(BackupOccasion::Daily, goOn), BackupOutcome::Damaged);
    EXPECT_FALSE(all.damages().isEmpty());
    ASSERT_EQ(all.list().size(), 1U);
    EXPECT_EQ(all.list().front().name, good);
    EXPECT_EQ(all.restore(good, false, goOn), BackupOutcome::Done);
    EXPECT_EQ(titles(), 50);
    EXPECT_TRUE(suite.files.fileExists(suite.dbName() + u".damaged"_s));
}

TEST_F(BackupsTest, PagesOfAnotherSizeAreToldAndChangeNothing)
{
    sqlite3* raw = nullptr;
    const QString plain = suite.file(u"Melovane.Backup.(343).20260101_000000.mdb"_s);
    suite.check().backup(343);
    ASSERT_TRUE(suite.files.fileExists(suite.file(names(u"*.mdb"_s).filter(u"(343)"_s).front())));
    QFile::rename(suite.file(names(u"*(343)*"_s).front()), plain);
    ASSERT_EQ(sqlite3_open(plain.toUtf8().constData(), &raw), SQLITE_OK);
    sqlite3_create_collation(raw, "MLV", SQLITE_UTF8, nullptr,
                             [](void*, int, const void*, int, const void*) { return 0; });
    ASSERT_EQ(sqlite3_exec(raw, "PRAGMA journal_mode=DELETE; PRAGMA page_size=8192; VACUUM",
                           nullptr, nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(raw);
    sqlite3_close(raw);
    suite.library.add();
    try {
        (void)backups().restore(u"Melovane.Backup.(343).20260101_000000.mdb"_s, false, goOn);
        FAIL();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kInvalidOperation);
    }
    EXPECT_EQ(titles(), 51);
}

TEST_F(BackupsTest, WhatIsGivenUpAtAnyMomentLeavesEverythingAsItWas)
{
    const QString name = make();
    const QStringList before = all();
    suite.library.add();
    const auto giveUpEverywhere = [&](const auto& work) {
        for (int limit = 0;; ++limit) {
            int calls = 0;
            const BackupOutcome outcome = work([&](int) { return calls++ < limit; });
            if (outcome == BackupOutcome::Done) {
                return limit;
            }
            EXPECT_EQ(outcome, BackupOutcome::GivenUp) << limit;
            EXPECT_EQ(all(), before) << limit;
            EXPECT_EQ(titles(), 51) << limit;
        }
    };
    EXPECT_GT(giveUpEverywhere([&](auto stop) { return backups().check(name, stop); }), 2);
    EXPECT_GT(
        giveUpEverywhere([&](auto stop) { return backups().make(BackupOccasion::Daily, stop); }),
        4);
}

TEST_F(BackupsTest, AFullDiskLeavesTheOtherBackups)
{
    const QString name = make();
    const QStringList before = all();
    suite.library.add();
    archives.isFull = true;
    EXPECT_THROW((void)backups().make(BackupOccasion::Daily, goOn), IoError);
    EXPECT_EQ(all(), before);
    archives.isFull = false;
    disk.arm({test::FileCall::Write, 1, SQLITE_FULL, true});
    EXPECT_THROW((void)backups().make(BackupOccasion::Daily, goOn), DbError);
    disk.disarm();
    EXPECT_EQ(all(), before);
    EXPECT_EQ(backups().check(name, goOn), BackupOutcome::Done);
}

TEST_F(BackupsTest, ADiskThatGetsFullInARestoringLeavesTheLibrary)
{
    const QString name = make();
    suite.library.add();
    int calls = 0;
    EXPECT_THROW(
        (void)backups().restore(name, false,
                                [&](int percent) {
                                    if (percent >= 76 && calls++ == 0) {
                                        disk.arm({test::FileCall::Write, 1, SQLITE_FULL, true});
                                    }
                                    return true;
                                }),
        DbError);
    disk.disarm();
    EXPECT_EQ(titles(), 51);
    EXPECT_EQ(suite.check().openTest(), QString());
}

TEST_F(BackupsTest, OneProgramAtATimeWorksOnThem)
{
    const QString name = make();
    const auto held = lockFile(suite.file(u"test.lock"_s), std::chrono::milliseconds::zero());
    EXPECT_EQ(backups().make(BackupOccasion::Daily, goOn), BackupOutcome::Busy);
    EXPECT_EQ(backups().check(name, goOn), BackupOutcome::Busy);
    EXPECT_EQ(backups().restore(name, false, goOn), BackupOutcome::Busy);
}

TEST_F(BackupsTest, WhatAKilledProgramLeftIsSwept)
{
    QDir(suite.dataFolder()).mkpath(u"Melovane.Backup.work/settings"_s);
    suite.write(u"Melovane.Backup.work/settings/old"_s, "x");
    suite.write(u"Melovane.Backup.work/melovane.mdb"_s, "x");
    make();
    EXPECT_FALSE(names().contains(u"Melovane.Backup.work"_s));
}

TEST_F(BackupsTest, BackupsOfAnotherLibraryAreNotListed)
{
    make();
    const QString other = suite.file(u"other.mdb"_s);
    ASSERT_TRUE(care->copy(suite.dbName(), other, [](qint64, qint64) { return true; }));
    Backups ofOther({*care, archives, suite.files, suite.clock,
                     [this] {
                         return lockFile(suite.file(u"test.lock"_s),
                                         std::chrono::milliseconds::zero());
                     }},
                    {other, suite.dataFolder(), 1});
    EXPECT_TRUE(ofOther.list().empty());
}

TEST_F(BackupsTest, OldOnesMakeRoomAfterANewOneStands)
{
    for (int day = 0; day < 40; ++day) {
        make(BackupOccasion::Daily);
        suite.clock.addSeconds(86400);
    }
    EXPECT_GE(backups().list().size(), 9U);
    EXPECT_LE(backups().list().size(), 12U);
}

TEST_F(BackupsTest, SettingsLayoutsAndUndoComeBackOnWish)
{
    suite.write(u"melovane.ini"_s,
                "[Global]\nLiveSuche=1\nHandleDB=17\nDBName=/old/melovane.mdb\n[Own]\na=b\n"
                "[Message]\nHandle.DB=55\n");
    QDir(suite.dataFolder()).mkdir(u"Layout"_s);
    suite.write(u"Layout/my.grx"_s, "old layout");
    suite.write(u"ChangeDir.conf"_s, "old rules");
    const QString history = historyFileOf(suite.dbName());
    ASSERT_TRUE(care->copy(suite.dbName(), history, [](qint64, qint64) { return true; }));
    const QString name = make();

    suite.write(u"melovane.ini"_s,
                "[Global]\nLiveSuche=0\nHandleDB=99\nDBName=/new/melovane.mdb\n[Message]\n"
                "Handle.DB=77\n[Later]\nx=y\n");
    suite.write(u"Layout/my.grx"_s, "new layout");
    suite.files.remove(history);
    EXPECT_EQ(backups().restore(name, true, goOn), BackupOutcome::Done);
    EXPECT_EQ(suite.read(u"Layout/my.grx"_s), "new layout") << "not before the next start";
    EXPECT_TRUE(suite.files.fileExists(history));

    IniProfile profile(suite.files);
    (void)takeReturningSettings(suite.files, profile, suite.dataFolder());
    EXPECT_EQ(suite.read(u"Layout/my.grx"_s), "old layout");
    EXPECT_EQ(suite.read(u"ChangeDir.conf"_s), "old rules");
    const auto value = [&](const QString& section, const QString& key) {
        return profile.value(suite.file(u"melovane.ini"_s), section, key).value_or(u"-"_s);
    };
    EXPECT_EQ(value(u"Global"_s, u"LiveSuche"_s), u"1"_s);
    EXPECT_EQ(value(u"Own"_s, u"a"_s), u"b"_s);
    EXPECT_EQ(value(u"Later"_s, u"x"_s), u"y"_s);
    EXPECT_EQ(value(u"Global"_s, u"HandleDB"_s), u"99"_s) << "of the program that runs now";
    EXPECT_EQ(value(u"Message"_s, u"Handle.DB"_s), u"77"_s);
    EXPECT_EQ(value(u"Global"_s, u"DBName"_s), u"/new/melovane.mdb"_s);
    EXPECT_FALSE(suite.files.folderExists(suite.file(kReturningSettings.toString())));
}

TEST_F(BackupsTest, WithoutTheWishSettingsStay)
{
    suite.write(u"ChangeDir.conf"_s, "old");
    const QString name = make();
    EXPECT_EQ(backups().restore(name, false, goOn), BackupOutcome::Done);
    EXPECT_FALSE(suite.files.folderExists(suite.file(kReturningSettings.toString())));
}
