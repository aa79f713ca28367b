// Tracks that are found again and doubles that are merged, killed at any moment. Longer:
// tools/prove_care.sh
#include "care/ber_db_fixture.h"
#include "care/doubles_fixture.h"
#include "care/find_again_fixture.h"
#include "care/killed_work.h"
#include "care/left_merges.h"
#include "care/recycle_folder.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class KilledRelink : public MovedMusic
{
protected:
    static constexpr int kTracks = 60;

    KilledRelink()
    {
        QStringList tracks;
        for (int i = 0; i < kTracks; ++i) {
            const QString name = u"Album %1/%2.mp3"_s.arg(i % 5).arg(i);
            tracks.append(addMoved(name, u"0/"_s + name, quint32(i)));
        }
        suite.library.addPlaylist({.tracks = tracks});
    }

    void relinkAll()
    {
        find.load();
        worker.finish();
        find.search(music.path());
        worker.finish();
        (void)find.apply(true);
        worker.finish();
    }

    [[nodiscard]] qint64 countAt(int place) const
    {
        return suite
            .value(u"select count(*) from db_all where Path like '%1/%2/*' and del=0"_s.arg(
                music.path(), QString::number(place)))
            .toInt64();
    }

    KilledWork work{suite};
};

TEST_F(KilledRelink, AllTracksAreAtTheirOldPlacesOrAllAtTheirNewOnes)
{
    work.finish([this] { relinkAll(); });
    ASSERT_EQ(countAt(0), kTracks);
    for (int round = 0; round < KilledWork::rounds(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        suite.files.rename(music.file(QString::number(round)),
                           music.file(QString::number(round + 1)));
        work.kill([this] { relinkAll(); });
        work.expectWhole();
        const qint64 moved = countAt(round + 1);
        EXPECT_TRUE(moved == 0 || moved == kTracks) << moved;
        EXPECT_EQ(countAt(round), kTracks - moved);
        work.finish([this] { relinkAll(); });
        work.expectWhole();
        EXPECT_EQ(countAt(round + 1), kTracks);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(work.killed(), KilledWork::rounds() / 2);
}

class KilledMerge : public DoubleMusic
{
protected:
    explicit KilledMerge(int count = 25)
        : pairs(count)
    {
        QStringList tracks;
        for (int i = 0; i < pairs; ++i) {
            for (const QString& name : {u"a%1.mp3"_s, u"b%1.mp3"_s}) {
                tracks.append(add(name.arg(i), quint32(i), u"Titel %1"_s.arg(i)));
                suite.library.addPlayback(tracks.last(), suite.clock.now());
            }
        }
        suite.library.addPlaylist({.tracks = tracks});
        before = state();
    }

    [[nodiscard]] std::string state()
    {
        const QStringList lines =
            suite.column(u"select FID & Path & DName from db_all order by FID"_s) +
            suite.column(u"select PLID & '|' & SID & '|' & FID from pl_all order by PLID"_s) +
            suite.column(u"select FID & tday from pl_stat order by FID"_s);
        return lines.join(u'\n').toStdString();
    }

    [[nodiscard]] RecycleTools tools() const
    {
        return {
            .makeFiles = [root = music.path()] { return std::make_unique<FilesOfOneVolume>(root); },
            .clock = suite.clock,
            .dataFolder = suite.dataFolder(),
            .homeFolder = home.path(),
            .systemName = [](const QString& file) { return QFile::encodeName(file); }};
    }

    void mergeAll(Files& files, const RecycleTools& recycler)
    {
        HeldWorker hand;
        Doubles all({.engine = *suite.engine,
                     .history = history,
                     .settings = *settings,
                     .files = files,
                     .audio = audio,
                     .worker = hand,
                     .makeEngine = [this] { return sqlite::makeEngine(suite.clock); },
                     .recycler = recycler});
        all.search(unsigned(DoubleKind::Sound));
        hand.finish();
        ASSERT_EQ(all.failure(), QString());
        (void)all.merge(true);
        hand.finish();
    }

    void mergeAll() { mergeAll(suite.files, tools()); }

    /// What the next start does.
    void endLeft()
    {
        LeftMerges([this] { return sqlite::makeEngine(suite.clock); }, suite.dbName(), tools())
            .run();
    }

    /// Brings the files of all that was removed back.
    void bringBack()
    {
        FilesOfOneVolume files(music.path());
        RecycleFolder folder(
            {files, suite.clock, suite.dataFolder(), home.path(), tools().systemName});
        for (const RecycledFile& file : folder.all()) {
            folder.putBack(file, [](qint64) { return true; });
        }
        folder.forget(folder.all());
    }

    /// Each file is there once: at its place with its row, or in the recycle folder with its
    /// record.
    void expectEveryFile()
    {
        FilesOfOneVolume files(music.path());
        const RecycleFolder folder(
            {files, suite.clock, suite.dataFolder(), home.path(), tools().systemName});
        QStringList recycled;
        for (const RecycledFile& file : folder.all()) {
            if (file.isHere) {
                recycled.append(file.from);
            }
        }
        const QStringList rows = suite.column(u"select DName from db_all"_s);
        for (int i = 0; i < pairs; ++i) {
            for (const QString& name : {u"a%1.mp3"_s, u"b%1.mp3"_s}) {
                const QString file = music.file(name.arg(i));
                EXPECT_NE(QFile::exists(file), recycled.contains(file)) << file.toStdString();
                EXPECT_EQ(QFile::exists(file), rows.contains(name.arg(i))) << file.toStdString();
            }
        }
        EXPECT_EQ(MergeJournal::left(suite.files, suite.dbName()), QStringList());
    }

    const int pairs;
    KilledWork work{suite};
    std::string before;
};

TEST_F(KilledMerge, AllDoublesAreOneOrTwoAndNoFileIsLostAndAllOfItIsTakenBack)
{
    work.finish([this] { mergeAll(); });
    for (int round = 0; round < KilledWork::rounds(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
        bringBack();
        ASSERT_EQ(state(), before);
        work.kill([this] { mergeAll(); });
        work.expectWhole();
        work.finish([this] { endLeft(); });
        expectEveryFile();
        const qint64 rows = suite.value(u"select count(*) from db_all"_s).toInt64();
        EXPECT_TRUE(rows == pairs || rows == 2 * pairs) << rows;
        EXPECT_EQ(suite.value(u"select count(*) from pl_all"_s).toInt64(), 2 * pairs);
        work.finish([this] { mergeAll(); });
        work.expectWhole();
        expectEveryFile();
        EXPECT_EQ(fids().size(), pairs);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(work.killed(), KilledWork::rounds() / 2);
}

/// Ends its process at the step of that number; each change of a file is one before and one behind
/// it.
class FilesThatDie : public FilesOfOneVolume
{
public:
    FilesThatDie(const QString& root, const std::shared_ptr<int>& left)
        : FilesOfOneVolume(root)
        , m_left(left)
    {}

    void writeWhole(const QString& path, const QByteArray& bytes) override
    {
        dying([&] { FilesOfOneVolume::writeWhole(path, bytes); });
    }

    void append(const QString& path, const QByteArray& bytes) override
    {
        dying([&] { FilesOfOneVolume::append(path, bytes); });
    }

    void rename(const QString& source, const QString& target) override
    {
        dying([&] { FilesOfOneVolume::rename(source, target); });
    }

    bool remove(const QString& path) override
    {
        bool isRemoved = false;
        dying([&] { isRemoved = FilesOfOneVolume::remove(path); });
        return isRemoved;
    }

private:
    void dying(const std::function<void()>& work)
    {
        step();
        work();
        step();
    }

    void step()
    {
        if (--*m_left == 0) {
            ::kill(::getpid(), SIGKILL);
        }
    }

    std::shared_ptr<int> m_left;
};

/// Few files, but each step between two changes of the disk.
class StoppedMerge : public KilledMerge
{
protected:
    StoppedMerge()
        : KilledMerge(3)
    {}

    /// \param step that is its last
    void mergeUntil(int step)
    {
        const auto left = std::make_shared<int>(step);
        FilesThatDie files(music.path(), left);
        RecycleTools recycler = tools();
        recycler.makeFiles = [left, root = music.path()] {
            return std::make_unique<FilesThatDie>(root, left);
        };
        mergeAll(files, recycler);
    }
};

TEST_F(StoppedMerge, ComesToItsEndAtTheNextStartWhateverStepWasItsLast)
{
    int merged = 0;
    for (int step = 1; work.killed() == step - 1; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        work.run([this, step] { mergeUntil(step); });
        work.finish([this] { endLeft(); });
        work.expectWhole();
        expectEveryFile();
        const qint64 rows = suite.value(u"select count(*) from db_all"_s).toInt64();
        EXPECT_TRUE(rows == pairs || rows == 2 * pairs) << rows;
        merged += rows == pairs ? 1 : 0;
        if (HasFailure()) {
            return;
        }
        if (rows == pairs) {
            ASSERT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
            bringBack();
        }
        ASSERT_EQ(state(), before);
    }
    EXPECT_GE(work.killed() - (merged - 1), 2) << "some before the rows are gone";
    EXPECT_GT(merged, 8 * pairs) << "and before and behind each of four changes for a file";
}

} // namespace
} // namespace melovane::test
