// Programs that are killed while they make or restore a backup. Longer: tools/prove_care.sh
#include "care/backups.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "support/suite_fixture.h"

#include <QProcess>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

struct Free : FileLock
{};

class KilledBackup : public test::SuiteFixture
{
protected:
    KilledBackup()
    {
        for (int i = 0; i < 400; ++i) {
            suite.library.add({.Titel = u"Titel %1"_s.arg(i), .Kommentar = QString(900, u'k')});
        }
        EXPECT_TRUE(run(u"make"_s, 1'000'000));
        backup = backups().list().front().name;
        suite.library.add();
    }

    [[nodiscard]] Backups backups()
    {
        return Backups(
            {*care, archives, suite.files, suite.clock, [] { return std::make_unique<Free>(); }},
            {suite.dbName(), suite.dataFolder(), 34150});
    }

    /// False when it was killed before its end.
    bool run(const QString& work, int steps)
    {
        suite.engine->Release(suite.dbName());
        QProcess process;
        process.start(QStringLiteral(MLV_BACKUP_HAND),
                      {suite.dbName(), suite.dataFolder(), work, QString::number(steps)});
        EXPECT_TRUE(process.waitForFinished(60'000));
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    /// Every backup that stands is whole, and the library holds one state or the other.
    void expectWhole(int steps)
    {
        const auto goOn = [](qint64, qint64) { return true; };
        ASSERT_EQ(care->check(suite.dbName(), DatabaseCare::Depth::Indexes, goOn), QStringList())
            << steps;
        const qint64 rows = suite.value(u"select count(*) from db_all"_s).toInt64();
        ASSERT_TRUE(rows == 400 || rows == 401) << rows << " after " << steps;
        for (const Backup& each : backups().list()) {
            ASSERT_EQ(backups().check(each.name, [](int) { return true; }), BackupOutcome::Done)
                << each.name.toStdString() << " after " << steps;
        }
    }

    std::unique_ptr<DatabaseCare> care = sqlite::makeDatabaseCare(suite.clock);
    ZstdArchives archives;
    QString backup;
};

} // namespace

TEST_F(KilledBackup, LeavesWholeBackupsAndAWholeLibraryAtEveryMoment)
{
    const int count = qMax(16, qEnvironmentVariableIntValue("MLV_BACKUP_KILLS"));
    QRandomGenerator random(3);
    int killed = 0;
    for (int round = 0; round < count; ++round) {
        const int steps = random.bounded(40);
        killed += run(round % 2 == 0 ? u"make"_s : backup, steps) ? 0 : 1;
        expectWhole(steps);
        for (const Backup& each : backups().list()) {
            if (each.name != backup) {
                suite.files.remove(backups().fullName(each.name));
            }
        }
    }
    EXPECT_GT(killed, count / 4);
    EXPECT_TRUE(run(backup, 1'000'000)) << "the next one comes to its end";
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toInt64(), 400);
}
