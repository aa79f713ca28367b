#include "platform/linux/media/player_fixture.h"

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class Mp3PlayerCard : public PlayerFixture
{};

TEST_F(Mp3PlayerCard, TheChosenCardIsTakenWhenSomethingPlays)
{
    EXPECT_EQ(m_player.cards().size(), 2U);
    m_player.open(2);
    load();
    EXPECT_EQ(m_output.opened, 0);
    m_player.play();
    EXPECT_EQ(m_output.openCard, 2);
}

TEST_F(Mp3PlayerCard, AnotherCardStopsWhatPlaysAndKeepsTheFile)
{
    load();
    m_player.play();
    m_output.pull(4410);
    m_player.open(1);
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_FALSE(m_output.isOpen());
    EXPECT_TRUE(m_player.isLoaded());
    EXPECT_DOUBLE_EQ(m_player.positionMs(), 100);
    m_player.play();
    EXPECT_EQ(m_output.openCard, 1);
}

TEST_F(Mp3PlayerCard, WithoutACardPlayingIsRefusedAndTriedAgainNextTime)
{
    const QString file = load();
    m_output.refuses = true;
    EXPECT_EQ(m_player.play(), PlayFault::NoCard);
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_player.positionMs(), 0);
    m_output.refuses = false;
    EXPECT_EQ(m_player.play(), PlayFault::None);
    m_output.pull(1000);
    expectHeard(part(wholeSound(file), 0, 1000));
}

TEST_F(Mp3PlayerCard, ACardPulledOutWhilePlayingEndsWithItsReason)
{
    load();
    m_player.play();
    m_output.pull(4410);
    m_output.pulledOut = true;
    tick();
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_ended, PlayFault::NoCard);
    EXPECT_DOUBLE_EQ(m_player.positionMs(), 100);
    m_output.pulledOut = false;
    EXPECT_EQ(m_player.play(), PlayFault::None);
    EXPECT_EQ(m_output.opened, 2);
}

TEST_F(Mp3PlayerCard, ASeekOntoACardThatIsGoneTellsIt)
{
    load();
    m_player.play();
    m_output.pulledOut = true;
    m_output.refuses = true;
    m_player.seek(1000);
    tick();
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_ended, PlayFault::NoCard);
    EXPECT_DOUBLE_EQ(m_player.positionMs(), 1000);
}

TEST_F(Mp3PlayerCard, TracksOfOneFormatShareTheCardAndAnotherFormatOpensItAnew)
{
    load();
    m_player.play();
    load({44100, 2, 2, {u"-b"_s, u"96"_s}});
    m_player.play();
    EXPECT_EQ(m_output.opened, 1);
    const QString file = load({48000, 1, 2, {u"-b"_s, u"96"_s}});
    m_output.heard.clear();
    m_player.play();
    EXPECT_EQ(m_output.opened, 2);
    EXPECT_EQ(m_output.format, (AudioFormat{48000, 1}));
    m_output.pull(5000);
    expectHeard(part(wholeSound(file), 0, 5000, 1));
}

TEST_F(Mp3PlayerCard, TheCardIsGivenBackTenSecondsAfterTheLastSound)
{
    load();
    m_player.playRange(0, 50);
    playToTheEnd();
    for (int i = 0; i < 99; ++i) {
        tick();
    }
    EXPECT_TRUE(m_output.isOpen());
    tick();
    EXPECT_FALSE(m_output.isOpen());
    EXPECT_FALSE(m_loop.timers.front()->active);
}

TEST_F(Mp3PlayerCard, ACardPulledOutWhileNothingPlaysIsGivenBackAtOnce)
{
    load();
    m_player.playRange(0, 50);
    playToTheEnd();
    tick();
    EXPECT_NE(m_output.source, nullptr);
    m_output.pulledOut = true;
    tick();
    EXPECT_EQ(m_output.source, nullptr);
    EXPECT_FALSE(m_loop.timers.front()->active);
}

TEST_F(Mp3PlayerCard, PlayingAgainInTimeKeepsTheCard)
{
    load();
    m_player.playRange(0, 50);
    playToTheEnd();
    for (int i = 0; i < 60; ++i) {
        tick();
    }
    m_player.playRange(0, 50);
    playToTheEnd();
    for (int i = 0; i < 60; ++i) {
        tick();
    }
    EXPECT_TRUE(m_output.isOpen());
    EXPECT_EQ(m_output.opened, 1);
}

TEST_F(Mp3PlayerCard, APlayerThatEndsWhilePlayingClosesTheCardFirst)
{
    const QString file = m_folder.write(u"a.mp3"_s, soundingMp3());
    {
        linux_media::Mp3Player player(m_output, m_loop);
        ASSERT_EQ(player.load(file), PlayFault::None);
        ASSERT_EQ(player.play(), PlayFault::None);
    }
    EXPECT_FALSE(m_output.isOpen());
}

} // namespace
