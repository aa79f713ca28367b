#include "platform/linux/media/player_fixture.h"

#include <thread>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class Mp3PlayerTest : public PlayerFixture
{};

TEST_F(Mp3PlayerTest, TellsTheLengthInFramesOfTheLibrary)
{
    const QString file = load();
    const double samples = static_cast<double>(wholeSound(file).size()) / 2;
    EXPECT_DOUBLE_EQ(m_player.lengthMs(), samples / 44.1);
    EXPECT_EQ(m_player.lengthFrames(), static_cast<int>(samples / 1152));
}

TEST_F(Mp3PlayerTest, TheLengthInFramesOf48KhzCountsTimeAndNotTheFilesOwnFrames)
{
    const QString file = load({48000, 2, 3, {u"-b"_s, u"128"_s}});
    const double samples = static_cast<double>(wholeSound(file).size()) / 2;
    EXPECT_EQ(m_player.lengthFrames(), std::lround(samples / 48.0 / kFrameMs));
    EXPECT_LT(m_player.lengthFrames(), samples / 1152);
}

TEST_F(Mp3PlayerTest, ALoadedFileStandsAtItsBeginningAndTakesNoCard)
{
    load();
    EXPECT_TRUE(m_player.isLoaded());
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_player.positionMs(), 0);
    EXPECT_EQ(m_output.opened, 0);
}

TEST_F(Mp3PlayerTest, EventsComeInTheOrderLoadedPositionEnded)
{
    load();
    EXPECT_EQ(m_events, QStringList(u"loaded"_s));
    m_player.playRange(0, 150);
    EXPECT_EQ(m_events.size(), 1);
    m_output.pull(4410);
    tick();
    EXPECT_EQ(m_events, (QStringList{u"loaded"_s, u"position"_s}));
    EXPECT_NEAR(m_lastPosition, 100, 0.1);
    playToTheEnd();
    EXPECT_EQ(m_events, (QStringList{u"loaded"_s, u"position"_s, u"position"_s, u"ended"_s}));
    EXPECT_EQ(m_ended, PlayFault::None);
    EXPECT_NEAR(m_lastPosition, 150, 0.1);
    tick();
    EXPECT_EQ(m_events.size(), 4);
}

TEST_F(Mp3PlayerTest, AStopIsSilentAtOnceAndKeepsThePlace)
{
    const QString file = load();
    m_player.play();
    m_output.pull(44100);
    m_player.stop();
    m_output.pull(2000);
    expectHeard(part(wholeSound(file), 0, 44100));
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_DOUBLE_EQ(m_player.positionMs(), 1000);
    tick();
    EXPECT_EQ(m_events.last(), u"position"_s);
    EXPECT_DOUBLE_EQ(m_lastPosition, 1000);
    EXPECT_FALSE(m_ended);
}

TEST_F(Mp3PlayerTest, PlayGoesOnWhereItWasStopped)
{
    const QString file = load();
    m_player.play();
    m_output.pull(30000);
    m_player.stop();
    m_player.play();
    m_output.pull(30000);
    expectHeard(part(wholeSound(file), 0, 60000));
}

TEST_F(Mp3PlayerTest, ASeekWhilePlayingLetsNoOldSampleBeHeard)
{
    const QString file = load();
    const auto all = wholeSound(file);
    m_player.play();
    m_output.pull(10000);
    m_player.seek(2000);
    m_output.pull(10000);
    std::vector<qint16> wanted = part(all, 0, 10000);
    const std::vector<qint16> later = part(all, 88200, 98200);
    wanted.insert(wanted.end(), later.begin(), later.end());
    expectHeard(wanted);
    EXPECT_TRUE(m_player.isPlaying());
}

TEST_F(Mp3PlayerTest, ASeekWithinARangeKeepsItsEndAndOneBehindItLeavesIt)
{
    const QString file = load();
    m_player.playRange(500, 1500);
    m_output.pull(1000);
    m_player.seek(1000);
    playToTheEnd();
    EXPECT_NEAR(m_player.positionMs(), 1500, 0.05);
    m_player.playRange(500, 1500);
    m_player.seek(1800);
    playToTheEnd();
    EXPECT_DOUBLE_EQ(m_player.positionMs(), m_player.lengthMs());
}

TEST_F(Mp3PlayerTest, ASeekOutsideTheFileGoesToItsNearerEnd)
{
    load();
    m_player.seek(-5);
    EXPECT_EQ(m_player.positionMs(), 0);
    m_player.seek(std::nan(""));
    EXPECT_EQ(m_player.positionMs(), 0);
    m_player.seek(1e18);
    EXPECT_DOUBLE_EQ(m_player.positionMs(), m_player.lengthMs());
    EXPECT_EQ(m_player.play(), PlayFault::None);
    tick();
    EXPECT_EQ(m_ended, PlayFault::None);
    EXPECT_EQ(m_output.opened, 0);
}

TEST_F(Mp3PlayerTest, ASeekBehindTheEndWhilePlayingEnds)
{
    load();
    m_player.play();
    m_output.pull(1000);
    m_player.seek(1e9);
    m_output.pull(1000);
    EXPECT_TRUE(std::all_of(m_output.heard.begin() + 2000, m_output.heard.end(),
                            [](qint16 s) { return s == 0; }));
    tick();
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_ended, PlayFault::None);
}

TEST_F(Mp3PlayerTest, ARangeWithoutSamplesEndsAtOnceAndTakesNoCard)
{
    load();
    for (const auto& [from, to] : {std::pair{1000.0, 1000.0}, {2000.0, 1000.0}, {1e9, 2e9}}) {
        m_ended.reset();
        EXPECT_EQ(m_player.playRange(from, to), PlayFault::None);
        tick();
        EXPECT_EQ(m_ended, PlayFault::None);
        EXPECT_FALSE(m_player.isPlaying());
    }
    EXPECT_EQ(m_output.opened, 0);
}

TEST_F(Mp3PlayerTest, WithoutAFileEveryCallIsHarmless)
{
    EXPECT_EQ(m_player.play(), PlayFault::Missing);
    EXPECT_EQ(m_player.playRange(0, 100), PlayFault::Missing);
    m_player.seek(1000);
    m_player.stop();
    m_player.unload();
    m_player.close();
    EXPECT_EQ(m_player.positionMs(), 0);
    EXPECT_EQ(m_player.lengthMs(), 0);
    EXPECT_EQ(m_player.lengthFrames(), 0);
    EXPECT_EQ(m_output.opened, 0);
}

TEST_F(Mp3PlayerTest, TheVolumeIsHeard)
{
    const QString file = load();
    m_player.setVolume(5000);
    m_player.playRange(0, 200);
    playToTheEnd();
    auto wanted = part(wholeSound(file), 0, 8820);
    for (qint16& sample : wanted) {
        sample = static_cast<qint16>(std::lround(sample / 2.0));
    }
    expectHeard(wanted);
}

TEST_F(Mp3PlayerTest, AThousandQuickCallsLeaveItExact)
{
    const QString file = load({8000, 1, 4, {u"-b"_s, u"16"_s}});
    for (int i = 0; i < 1000; ++i) {
        switch (i % 5) {
        case 0:
            m_player.play();
            break;
        case 1:
            m_player.seek(i * 4 % 4200);
            break;
        case 2:
            m_output.pull(64);
            break;
        case 3:
            m_player.playRange(i % 700, 4000);
            break;
        default:
            m_player.stop();
            break;
        }
    }
    m_player.stop();
    m_output.heard.clear();
    m_player.playRange(40 * kFrameMs, 100 * kFrameMs);
    playToTheEnd();
    expectHeard(part(wholeSound(file), sampleOf(40, 8000), sampleOf(100, 8000), 1),
                LastBit::MayDiffer);
    EXPECT_EQ(m_output.opened, 1);
}

TEST_F(Mp3PlayerTest, SeeksInQuickSuccessionDoNotKeepThePositionFromBeingTold)
{
    load();
    m_player.play();
    m_player.seek(100);
    const auto timer = m_loop.timers.front();
    EXPECT_TRUE(timer->active);
    m_events.clear();
    m_player.seek(200);
    tick();
    EXPECT_EQ(m_events, QStringList(u"position"_s));
}

TEST_F(Mp3PlayerTest, AHandlerMayCallThePlayerAgain)
{
    load();
    int rounds = 0;
    m_player.setOnEnded([&](PlayFault) {
        if (++rounds < 3) {
            m_player.playRange(0, 100);
        } else {
            m_player.unload();
        }
    });
    m_player.playRange(0, 100);
    for (int i = 0; i < 20; ++i) {
        m_output.pull(4410);
        tick();
    }
    EXPECT_EQ(rounds, 3);
    EXPECT_FALSE(m_player.isLoaded());
}

TEST_F(Mp3PlayerTest, AMessageLoopThatStandsStillForTwoSecondsIsNotHeard)
{
    const QString file = load();
    m_player.play();
    m_output.pull(44100 * 2);
    tick();
    m_output.pull(44100 * 2);
    expectHeard(part(wholeSound(file), 0, qint64{44100} * 4));
}

TEST_F(Mp3PlayerTest, ABlockedMessageLoopBesideARunningCardMakesNoGap)
{
    const QString file = load();
    m_player.play();
    // Blocks of a card of 23 ms of sound each, as many as are allowed and as fast as it can.
    std::atomic<int> allowed = 0;
    std::atomic<int> pulled = 0;
    constexpr int kAll = 34;
    std::thread card([&] {
        while (pulled < kAll) {
            if (pulled < allowed) {
                m_output.pull(1024);
                ++pulled;
            } else {
                std::this_thread::yield();
            }
        }
    });
    for (const int end : {kAll / 2, kAll}) { // the message loop is blocked for 395 ms of sound
        allowed = end;
        while (pulled < end) {
            std::this_thread::yield();
        }
        tick();
    }
    card.join();
    expectHeard(part(wholeSound(file), 0, qint64{kAll} * 1024));
}

} // namespace
