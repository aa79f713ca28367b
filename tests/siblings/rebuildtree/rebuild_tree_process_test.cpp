#include "platform/linux/linux_file_lock.h"
#include "rebuildtree_process.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST_F(RebuildTreeProcess, RebuildsEverythingAndTellsTheConsole)
{
    EXPECT_EQ(run({u"1"_s}, 0), QString());
    for (const auto& [table, name] : {std::pair(u"tree_album"_s, u"Eins"_s),
                                      {u"tree_interpret"_s, u"Anna"_s},
                                      {u"tree_genre"_s, u"Pop"_s},
                                      {u"tree_genre_interpret"_s, u"Anna"_s}}) {
        EXPECT_EQ(names(table), QStringList{name});
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"1056 200 1111111"_s});
}

TEST_F(RebuildTreeProcess, IsQuietWhenNothingIsOutOfDate)
{
    EXPECT_EQ(run({}, 0), QString());
    EXPECT_EQ(run({QString()}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
    suite.execute(u"insert into ChangeTree ( TreeName ) values ( 'Album' )"_s);
    EXPECT_EQ(run({}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList{u"Eins"_s});
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard.size(), 1);
}

TEST_F(RebuildTreeProcess, RebuildsTheOneTreeThatItIsAskedFor)
{
    EXPECT_EQ(run({u"Interpret"_s}, 0), QString());
    EXPECT_EQ(names(u"tree_interpret"_s), QStringList{u"Anna"_s});
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
}

TEST_F(RebuildTreeProcess, WhenTheLibraryOfTheSettingsIsAwayItSaysSoAndTouchesNoOther)
{
    suite.write(u"melovane.ini"_s, "[Global]\nDBName=/away/club.mdb\n");
    EXPECT_TRUE(run({u"1"_s}, 1).contains(u"/away/club.mdb"_s));
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
}

TEST_F(RebuildTreeProcess, TwoAtOnceWorkOneBehindTheOtherAndAThirdWithTheSameWorkEnds)
{
    const FileFacts facts = suite.files.facts(suite.dbName()).value();
    const QString lock = LinuxEnvironment().runtimeFolder() +
                         u"/rebuildtree-%1-%2"_s.arg(facts.device, 0, 16).arg(facts.inode, 0, 16);
    auto running = lockFile(lock + u".lock"_s, std::chrono::milliseconds::zero());
    ASSERT_TRUE(running);
    QProcess second;
    second.start(m_program, {u"1"_s});
    ASSERT_TRUE(second.waitForStarted());
    const auto isWaiting = [&] {
        return !lockFile(lock + u"-1.lock"_s, std::chrono::milliseconds::zero());
    };
    ASSERT_TRUE(QTest::qWaitFor(isWaiting, 30'000));
    EXPECT_EQ(run({u"1"_s}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
    running.reset();
    EXPECT_TRUE(second.waitForFinished(60'000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(names(u"tree_album"_s), QStringList{u"Eins"_s});
}

const QStringList kTrees{u"tree_dir"_s,   u"tree_genre"_s,     u"tree_genre_interpret"_s,
                         u"tree_album"_s, u"tree_interpret"_s, u"tree_stimmung"_s};

/// Rebuilds that die while another one runs and the library is edited.
class KilledRebuild : public RebuildTreeProcess
{
protected:
    /// Rounds of a run: a few as a rule, more for tools/prove_rebuilds.sh.
    [[nodiscard]] static int rounds()
    {
        const int asked = qEnvironmentVariableIntValue("MLV_REBUILD_KILLS");
        return asked > 0 ? asked : 6;
    }

    void fill()
    {
        for (int i = 0; i < 200; ++i) {
            const QString name = u"\"%1\" [x]* "_s.arg(i % 50);
            m_fids.append(suite.library.add({.Interpret = name,
                                             .Album = name + u'\n',
                                             .Genre = u"Genre %1"_s.arg(i % 7),
                                             .Path = u"/m/%1/%2/"_s.arg(i % 7).arg(i % 50),
                                             .Stimmung = name}));
        }
        run({u"1"_s}, 0);
        for (const QString& tree : kTrees) {
            suite.execute(
                u"update %1 set favorit=true, tstamp=#2026-03-01# where id mod 3=0"_s.arg(tree));
        }
        m_whole = state();
    }

    /// Rows and favourites of every tree.
    [[nodiscard]] QStringList state() const
    {
        QStringList texts;
        const auto database = suite.open();
        for (const QString& tree : kTrees) {
            const auto row = database->OpenRecordset(
                u"select count(*), sum(anzahl), sum(favorit), count(tstamp) from "_s + tree);
            texts.append(u"%1: %2 rows, %3 tracks, %4 favourites, %5 stamps"_s.arg(
                tree, row->value(0).toText(), row->value(1).toText(), row->value(2).toText(),
                row->value(3).toText()));
        }
        return texts;
    }

    [[nodiscard]] int below(int limit)
    {
        m_random = m_random * 1664525 + 1013904223;
        return int((m_random >> 16) % quint32(limit));
    }

    /// Edits the library as a user would, so that the kill meets another moment each time.
    void edit(int times)
    {
        for (int i = 0; i < times; ++i) {
            suite.execute(u"update db_all set Note='%1' where FID='%2'"_s.arg(
                QString::number(1 + below(5)), m_fids[below(int(m_fids.size()))]));
        }
    }

    QStringList m_fids;
    QStringList m_whole;
    quint32 m_random = 20260314;
};

TEST_F(KilledRebuild, LosesNoFavouriteAndLeavesNoTreeEmptyOrHalf)
{
    fill();
    for (int round = 0; round < rounds(); ++round) {
        QProcess killed;
        QProcess other;
        killed.start(m_program, {u"1"_s});
        other.start(m_program, {u"Genre"_s});
        ASSERT_TRUE(killed.waitForStarted());
        ASSERT_TRUE(other.waitForStarted());
        edit(below(200));
        killed.kill();
        EXPECT_TRUE(killed.waitForFinished(60'000));
        ASSERT_EQ(state(), m_whole) << "round " << round;
        EXPECT_TRUE(other.waitForFinished(60'000));
        EXPECT_EQ(other.exitCode(), 0) << other.readAllStandardError().toStdString();
        ASSERT_EQ(state(), m_whole) << "round " << round;
    }
    run({u"1"_s}, 0);
    EXPECT_EQ(state(), m_whole);
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"~tree.tmp"_s)));
}

} // namespace
} // namespace melovane::test
