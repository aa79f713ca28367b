#include "playlistfiles/m3u_fixture.h"
#include "support/proof.h"

#include <QElapsedTimer>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Longest time in which the window may stand still, in milliseconds.
constexpr qint64 kStandstill = 1000;

class M3uMany : public M3uTest
{
protected:
    M3uMany()
    {
        const auto database = lists.open();
        Transaction all(*database);
        const auto set = database->OpenRecordset(u"db_all"_s);
        const QString folder = music.path() + u'/';
        for (int track = 1; track <= m_count; ++track) {
            set->AddNew();
            set->setValue(u"FID", Lists::fid(track));
            set->setValue(u"Path", folder);
            set->setValue(u"DName", u"%1.mp3"_s.arg(track));
            set->setValue(u"DTimeMsec", 60'000);
            set->Update();
        }
        all.commit();
        m3u.events.Message = {};
        m3u.events.goOn = [this](qint64, qint64) {
            m_longest = std::max(m_longest, m_sinceTurn.restart());
            return true;
        };
    }

    /// Loads a list of that many lines and appends it; tells how long both took.
    void run(const QByteArray& many, int failures)
    {
        const QString file = writeList(many);
        QElapsedTimer clock;
        clock.start();
        m_sinceTurn.start();
        EXPECT_EQ(m3u.LoadPlaylist(file), failures);
        const qint64 loaded = clock.restart();
        EXPECT_EQ(m3u.Append(list), m_count - failures);
        std::printf("%d lines: loaded in %lld ms, longest without a turn %lld ms, appended in %lld "
                    "ms\n",
                    m_count, loaded, m_longest, clock.elapsed());
        EXPECT_LT(m_longest, kStandstill);
        EXPECT_EQ(lists.entryCount(list), m_count - failures);
    }

    int m_count = repetitions(1000, 100'000);
    qint64 m_longest = 0;
    QElapsedTimer m_sinceTurn;
    Pnid list = Pnid(lists.library.addPlaylist({}));
};

/// Entries of a list that is written in several slices.
QByteArray linesOf(int count)
{
    QByteArray many;
    for (int line = 0; line < count; ++line) {
        many += "#MLV:FID=" + Lists::fid(1 + line % 7).toUtf8() + "\r\nx.mp3\r\n";
    }
    return many;
}

TEST_F(M3uMany, ALongListIsWrittenInSlicesBetweenWhichTheWindowTurnsAsOneStepOfUndo)
{
    constexpr int kCount = 5000;
    EXPECT_EQ(m3u.LoadPlaylist(writeList(linesOf(kCount))), 0);
    QList<qint64> turns;
    m3u.events.goOn = [&](qint64 done, qint64 whole) {
        EXPECT_EQ(whole, kCount);
        turns.append(done);
        return true;
    };
    EXPECT_EQ(m3u.Append(list), kCount);
    EXPECT_EQ(turns, (QList<qint64>{2000, 4000}));
    EXPECT_EQ(lists.value(u"select count(*) from pl_all where sid<>plid+1"_s).toLong(), 0)
        << "the order of the file";
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.entryCount(list), 0);
}

TEST_F(M3uMany, AListThatIsGivenUpWhileItIsWrittenLeavesNothing)
{
    const auto endsBehindTheFirstSlice = [](qint64, qint64) { return false; };
    for (const int way : {0, 1, 2}) {
        m3u.events.goOn = {};
        EXPECT_EQ(m3u.LoadPlaylist(writeList(linesOf(5000))), 0);
        m3u.events.goOn = endsBehindTheFirstSlice;
        if (way == 2) {
            EXPECT_EQ(m3u.importAsNewList(u"Neu"_s, GroupId(1)), Pnid{});
        } else {
            EXPECT_EQ(way == 0 ? m3u.Append(list) : m3u.Insert(Sid{0}, list), 0);
        }
        EXPECT_TRUE(m3u.wasGivenUp());
        EXPECT_EQ(lists.value(u"select count(*) from pl_all"_s).toLong(), 0);
        EXPECT_EQ(lists.value(u"select count(*) from pl_name"_s).toLong(), 1);
        EXPECT_FALSE(lists.history.nextUndo().has_value());
    }
}

TEST_F(M3uMany, LoadedRowsAreKeptInSlicesAndALoadThatIsGivenUpThereLeavesNothing)
{
    QList<std::pair<qint64, qint64>> turns;
    m3u.events.goOn = [&](qint64 done, qint64 whole) {
        turns.append({done, whole});
        return true;
    };
    const QString file = writeList(linesOf(5000));
    EXPECT_EQ(m3u.LoadPlaylist(file), 0);
    EXPECT_TRUE(turns.contains({2000, 5000}));
    EXPECT_TRUE(turns.contains({4000, 5000}));
    EXPECT_EQ(loaded().size(), 5000);
    m3u.events.goOn = [](qint64 done, qint64 whole) { return done != 4000 || whole != 5000; };
    EXPECT_EQ(m3u.LoadPlaylist(file), 0);
    EXPECT_TRUE(m3u.wasGivenUp());
    EXPECT_EQ(m3u.loaded(), 0);
    EXPECT_TRUE(loaded().isEmpty());
}

TEST_F(M3uMany, NewTracksEnterInSlicesAndNoneOfThemWhenThatIsGivenUp)
{
    constexpr int kNew = 250;
    QByteArray lines;
    for (int i = 0; i < kNew; ++i) {
        lines += addFile(u"neu%1.mp3"_s.arg(i)).toUtf8() + '\n';
    }
    const QString file = writeList(lines);
    m3u.events.goOn = [](qint64 done, qint64 whole) { return done != 200 || whole != kNew; };
    EXPECT_EQ(m3u.LoadPlaylist(file), 0);
    EXPECT_TRUE(m3u.wasGivenUp());
    EXPECT_EQ(m3u.entered(), 0);
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), m_count);
    EXPECT_TRUE(loaded().isEmpty());
    QList<qint64> turns;
    m3u.events.goOn = [&](qint64 done, qint64 whole) {
        if (whole == kNew) {
            turns.append(done);
        }
        return true;
    };
    EXPECT_EQ(m3u.LoadPlaylist(file), 0);
    EXPECT_EQ(turns, (QList<qint64>{100, 200}));
    EXPECT_EQ(m3u.entered(), kNew);
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), m_count + kNew);
}

TEST_F(M3uMany, LinesOfKnownIdentifiersLeaveTheWindowAlive)
{
    QByteArray many;
    for (int track = 1; track <= m_count; ++track) {
        many += "#MLV:FID=" + Lists::fid(track).toUtf8() +
                "\r\n#MLV:VOL= 0 | 0 |128| 216000 \r\nC:\\x\\" + QByteArray::number(track) +
                ".mp3\r\n";
    }
    run(many, 0);
}

TEST_F(M3uMany, LinesOfPathsLeaveTheWindowAlive)
{
    QByteArray many;
    for (int track = 1; track <= m_count; ++track) {
        music.write(u"%1.mp3"_s.arg(track), {});
        many += music.path().toUtf8() + '/' + QByteArray::number(track) + ".mp3\n";
    }
    run(many, 0);
}

TEST_F(M3uMany, LinesThatLeadNowhereLeaveTheWindowAlive)
{
    QByteArray many;
    for (int track = 1; track <= m_count; ++track) {
        many += "C:\\Music\\" + QByteArray::number(track) + ".mp3\n";
    }
    run(many, m_count);
    EXPECT_EQ(log().count('\n'), m_count);
}

} // namespace
} // namespace melovane::test
