// A scan, a cleaning and the way back of what it removed, killed at any moment. Longer:
// tools/prove_care.sh
#include "care/ber_db_fixture.h"
#include "care/killed_work.h"
#include "care/missing_files.h"
#include "care/recycler.h"

#include <QDirIterator>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kTracks = 150;

class KilledCleaning : public BerDbTest
{
protected:
    class Bin : public RecyclerForm
    {
    public:
        void show(const RecyclerView&) override {}

        void close() override {}
    };

    KilledCleaning()
    {
        for (int i = 0; i < kTracks; ++i) {
            const QString folder = u"%1/"_s.arg(i % 7);
            tracks.append(addTrack({.DName = u"%1.mp3"_s.arg(i)}, folder));
            suite.library.addPlayback(tracks.last(), suite.clock.now());
        }
        mark();
        suite.library.addPlaylist({.Name = u"Abend"_s, .tracks = tracks});
        suite.library.addPlaylist({.Name = u"Weg"_s,
                                   .tracks = suite.column(u"select fid from db_all where del=-1"_s),
                                   .Activ = false});
        before = state();
        // A row of the table is not among what the cleaning would take for one of its own.
        EXPECT_EQ(count(u"todo"_s), 0);
    }

    /// A fifth is marked as deleted, a fifth is damaged.
    void mark()
    {
        for (int i = 0; i < kTracks; i += 5) {
            suite.execute(u"update db_all set del=-1 where fid='%1'"_s.arg(tracks[i]));
            suite.execute(
                u"update db_all set DTime='MP3ERROR' where fid='%1'"_s.arg(tracks[i + 1]));
        }
    }

    [[nodiscard]] std::string state() const
    {
        const QStringList tables[] = {
            suite.column(u"select FID & Path & DName & DTime from db_all order by FID"_s),
            suite.column(u"select PNID & '|' & SID & '|' & FID from pl_all order by PNID, SID"_s),
            suite.column(u"select NID & Name & '|' & anzahl & '|' & GRID from pl_name "
                         "order by NID"_s),
            suite.column(u"select GRID & Name from pl_group order by GRID"_s),
            suite.column(u"select FID & tday from pl_stat order by FID"_s)};
        QStringList lines;
        for (const QStringList& table : tables) {
            lines += table;
        }
        return lines.join(u'\n').toStdString();
    }

    void clean()
    {
        frmBerDB cleaning(parts(), form);
        cleaning.Show();
        for (const int box : {0, 1, 3, 4}) {
            cleaning.checkBer(box, true);
        }
        cleaning.cmdOk();
        ASSERT_TRUE(told.isEmpty()) << told.join(u'|').toStdString();
    }

    void bringBack()
    {
        Bin bin;
        Recycler recycler(recyclerParts(), bin);
        recycler.Show();
        recycler.putBackAll();
    }

    /// Each file is there once: at its place, or in the recycle folder and in its record.
    void expectEveryFile() const
    {
        QStringList recycled;
        FilesOfOneVolume files(disk.path());
        const RecycleTools tools{{}, suite.clock, suite.dataFolder(), home.path(), {}};
        const RecycleFolder folder(
            {files, suite.clock, suite.dataFolder(), home.path(), tools.systemName});
        for (const RecycledFile& file : folder.all()) {
            if (file.isHere) {
                recycled.append(file.to);
            }
        }
        QStringList met;
        QDirIterator walk(disk.path(), {u"*.mp3"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString file = walk.next();
            met.append(QString::fromUtf8(disk.read(file)));
            EXPECT_EQ(file.contains(u"/MelovaneRecycler/"_s), recycled.contains(file))
                << file.toStdString();
        }
        met.sort();
        QStringList all = tracks;
        all.sort();
        EXPECT_EQ(met, all);
    }

    KilledWork work{suite};
    QStringList tracks;
    std::string before;
};

TEST_F(KilledCleaning, NoFileIsLostAndTheNextRunEndsTheWorkAndAllOfItComesBack)
{
    for (int round = 0; round < KilledWork::rounds(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        work.kill([this] { clean(); });
        work.expectWhole();
        expectEveryFile();
        work.finish([this] { clean(); });
        work.expectWhole();
        expectEveryFile();
        EXPECT_EQ(count(u"db_all"_s), kTracks * 3 / 5);
        EXPECT_EQ(count(u"pl_name"_s), 1);
        EXPECT_EQ(count(u"pl_stat"_s), kTracks * 3 / 5);
        EXPECT_EQ(count(u"todo"_s), 0);
        work.kill([this] { bringBack(); });
        work.expectWhole();
        expectEveryFile();
        work.finish([this] { bringBack(); });
        work.expectWhole();
        expectEveryFile();
        EXPECT_EQ(state(), before);
        mark();
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(work.killed(), KilledWork::rounds() / 2);
}

class KilledScan : public CareTest
{
protected:
    KilledScan()
    {
        for (int i = 0; i < kTracks; ++i) {
            tracks.append(addTrack({.DName = u"%1.mp3"_s.arg(i), .DEL = i % 3 == 0 ? -1 : 0},
                                   u"%1/"_s.arg(i % 2)));
        }
    }

    void scan()
    {
        dialogs.expectMessage(u"Melovane"_s);
        MissingFiles(missingParts()).Scan();
    }

    KilledWork work{suite};
    QStringList tracks;
};

TEST_F(KilledScan, EachTrackIsMarkedOrNotYetAndTheNextRunMarksTheRest)
{
    for (int round = 0; round < KilledWork::rounds(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        // One half of the files goes, the other half comes back.
        const QString gone = QString::number(round % 2);
        const QString here = QString::number(1 - round % 2);
        if (QFile::exists(music(here + u".gone"_s))) {
            suite.files.rename(music(here + u".gone"_s), music(here));
        }
        suite.files.rename(music(gone), music(gone + u".gone"_s));
        work.kill([this] { scan(); });
        work.expectWhole();
        for (int i = 0; i < kTracks; ++i) {
            const bool isMarked = i % 3 == 0;
            EXPECT_TRUE(del(tracks[i]) == (isMarked ? -1 : 0) ||
                        del(tracks[i]) == (isMarked ? 3 : 2));
        }
        work.finish([this] { scan(); });
        for (int i = 0; i < kTracks; ++i) {
            const bool isMarked = i % 3 == 0;
            const bool isGone = i % 2 == round % 2;
            EXPECT_EQ(del(tracks[i]), isGone ? (isMarked ? 3 : 2) : (isMarked ? -1 : 0)) << i;
        }
        EXPECT_EQ(suite.read(kMissingList.toString()).count('\n'), kTracks / 2);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(work.killed(), KilledWork::rounds() / 2);
}

} // namespace
} // namespace melovane::test
