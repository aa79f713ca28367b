#include "bus/message_numbers.h"
#include "platform/linux/linux_messages.h"
#include "player/player_suite.h"
#include "player/sequence_stage.h"
#include "support/wait_for.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;
using test::SequenceStage;

/// The player among the suite's programs; the console is a control of this test.
class PlayerSuiteTest : public testing::Test
{
protected:
    PlayerSuiteTest()
    {
        stage.addPlaying(4);
        console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            seen.append(u"%1 %2 %3"_s.arg(id)
                            .arg(stage.trackOf(Plid(lParam)))
                            .arg(stage.trackOf(Plid(wParam))));
            answers.append(lParam);
            return 0;
        });
        stage.settings->SetMessageHandleDB(console->handle());
        suite.publish(77);
    }

    void setTodo(int id, const QString& fid)
    {
        stage.execute(u"insert into todo(id,fid)values(%1,'%2')"_s.arg(id).arg(fid));
    }

    [[nodiscard]] int plays() const
    {
        return stage.value(u"select count(*) as anz from pl_stat"_s).toLong();
    }

    SequenceStage stage;
    LinuxMessages messages{MessagePlace(stage.folders.environment().runtimeFolder())};
    std::unique_ptr<KSMessage> console = messages.makeControl();
    std::unique_ptr<KSMessage> control = messages.makeControl();
    QStringList seen; ///< "id, track of lParam, track of wParam"
    QList<qint32> answers;
    bool isLent = false;
    int fronts = 0;
    PlayerSuite suite{{.settings = *stage.settings,
                       .messages = messages,
                       .control = *control,
                       .playlists = stage.parts,
                       .clock = stage.clock,
                       .list = stage.playing,
                       .sequence = stage.sequence,
                       .isLent = [this](const QString&) { return isLent; },
                       .openCards = [] {},
                       .changed = [] {},
                       .bringToFront = [this] { ++fronts; }}};
};

TEST_F(PlayerSuiteTest, IsFoundByTheSuiteAndGoneAgain)
{
    EXPECT_EQ(stage.makeSettings()->MessageHandleDJ(), control->handle());
    EXPECT_EQ(stage.makeSettings()->HandleDj(), 77);
    EXPECT_EQ(stage.makeSettings()->GetKeyValueLong(u"Message.Handle"_s, u"MelovaneDJ.exe"_s, 0),
              control->handle());
    suite.withdraw();
    EXPECT_EQ(stage.makeSettings()->MessageHandleDJ(), 0);
}

TEST_F(PlayerSuiteTest, PlayNowTakesTheTrackOutOfItsMailboxRow)
{
    setTodo(1047, Lists::fid(3));
    suite.number(message::kPlayNow, 0, 0);
    stage.run(200);
    EXPECT_EQ(stage.heard(), u"3"_s);
    EXPECT_EQ(stage.value(u"select count(*) as anz from todo"_s).toLong(), 0);
    suite.number(message::kPlayNow, 0, 0);
    stage.run(500);
    EXPECT_EQ(stage.heard(), u"3"_s) << "a number without its row asks for nothing";
}

TEST_F(PlayerSuiteTest, PlayNextWaitsForTheEndOfThePresentOne)
{
    stage.sequence.play();
    stage.run(1000);
    setTodo(1046, Lists::fid(4));
    suite.number(message::kPlayNext, 0, 0);
    EXPECT_EQ(stage.told.last(), u"1>4"_s);
    stage.run(16'000);
    EXPECT_EQ(stage.heard(), u"1 4 2"_s);
}

TEST_F(PlayerSuiteTest, TheConsoleHearsWhatPlaysAndWhatComesNext)
{
    suite.tellPlaying(Plid(stage.plids(stage.list)[0].toInt()),
                      Plid(stage.plids(stage.list)[1].toInt()));
    ASSERT_TRUE(test::waitFor([this] { return !seen.isEmpty(); }));
    EXPECT_EQ(seen.last(), u"1045 1 2"_s);
}

TEST_F(PlayerSuiteTest, AConsoleThatWasStartedAgainIsToldAnew)
{
    suite.tellPlaying(Plid(stage.plids(stage.list)[0].toInt()), Plid{});
    std::unique_ptr<KSMessage> second = messages.makeControl();
    QList<qint32> heard;
    second->setMessageNumber([&](qint32 id, qint32, qint32) {
        heard.append(id);
        return 0;
    });
    stage.settings->SetMessageHandleDB(second->handle());
    suite.watch();
    EXPECT_TRUE(test::waitFor([&] { return heard == QList<qint32>{1045}; }));
}

TEST_F(PlayerSuiteTest, ALibraryThatIsAskedForIsGivenAwayAndTheSoundGoesOn)
{
    stage.sequence.play();
    stage.run(1000);
    suite.number(message::kReleaseDatabase, 0, console->handle());
    ASSERT_TRUE(test::waitFor([this] { return !answers.isEmpty(); }));
    EXPECT_EQ(answers.last(), message::kDatabaseIsFree);
    EXPECT_THROW((void)stage.open(), DbError);
    stage.run(20'000);
    EXPECT_EQ(stage.heard(), u"1 2 3"_s);
    suite.number(message::kReconnectDatabase, 0, 0);
    EXPECT_FALSE(suite.isLibraryAway());
    EXPECT_NO_THROW((void)stage.open());
}

TEST_F(PlayerSuiteTest, ALibraryWhoseAskerDiedIsTakenBack)
{
    suite.number(message::kReleaseDatabase, 0, console->handle());
    EXPECT_TRUE(suite.isLibraryAway());
    suite.watch();
    EXPECT_TRUE(suite.isLibraryAway()) << "the asker lives";
    console.reset();
    suite.watch();
    EXPECT_FALSE(suite.isLibraryAway());
}

TEST_F(PlayerSuiteTest, ALibraryThatTheConsoleHasLentIsLeftAloneFromTheBeginning)
{
    isLent = true;
    suite.watch();
    EXPECT_TRUE(suite.isLibraryAway());
    isLent = false;
    suite.watch();
    EXPECT_FALSE(suite.isLibraryAway());
}

TEST_F(PlayerSuiteTest, PlaysAreCountedWhenTheUserWantsIt)
{
    const MlvPlaylistDetail entry = stage.playing.track(Lists::fid(1));
    suite.countPlay(entry);
    EXPECT_EQ(plays(), 0);
    stage.settings->SetWriteStatistik(1);
    suite.countPlay(entry);
    EXPECT_EQ(plays(), 1);
    stage.settings->SetWriteStatistikAuto(1);
    stage.sequence.setMixMode(false);
    suite.countPlay(entry);
    EXPECT_EQ(plays(), 1);
    stage.sequence.setMixMode(true);
    suite.countPlay(entry);
    EXPECT_EQ(plays(), 2);
    EXPECT_EQ(stage.value(u"select playcountall from db_all where fid='%1'"_s.arg(Lists::fid(1)))
                  .toLong(),
              2);
}

TEST_F(PlayerSuiteTest, PlaysOfALentLibraryAreWrittenWhenItIsBack)
{
    stage.settings->SetWriteStatistik(1);
    const MlvPlaylistDetail entry = stage.playing.track(Lists::fid(1));
    suite.number(message::kReleaseDatabase, 0, console->handle());
    suite.countPlay(entry);
    suite.number(message::kReconnectDatabase, 0, 0);
    EXPECT_EQ(plays(), 1);
}

TEST_F(PlayerSuiteTest, AnOrderThatComesWhileTheLibraryIsAwayWaitsForIt)
{
    setTodo(1047, Lists::fid(3));
    suite.number(message::kReleaseDatabase, 0, console->handle());
    suite.number(message::kPlayNow, 0, 0);
    stage.run(500);
    EXPECT_EQ(stage.heard(), QString());
    suite.number(message::kReconnectDatabase, 0, 0);
    stage.run(500);
    EXPECT_EQ(stage.heard(), u"3"_s);
}

TEST_F(PlayerSuiteTest, ComesToTheFrontAndFollowsEditsWhenItIsAsked)
{
    suite.number(message::kBringToFront, 0, 0);
    EXPECT_EQ(fronts, 1);
    stage.sequence.play();
    stage.run(1000);
    stage.execute(u"delete from pl_all where fid='%1'"_s.arg(Lists::fid(2)));
    suite.number(message::kRefreshPlaylist, 0, 0);
    EXPECT_EQ(stage.told.last(), u"1>3"_s);
}

TEST_F(PlayerSuiteTest, AsksTheConsoleToStandBelowAndToGoBack)
{
    suite.dock(true);
    suite.dock(false);
    ASSERT_TRUE(test::waitFor([this] { return seen.size() == 2; }));
    EXPECT_EQ(seen, (QStringList{u"1049 0 0"_s, u"1051 0 0"_s}));
}

} // namespace
} // namespace melovane
