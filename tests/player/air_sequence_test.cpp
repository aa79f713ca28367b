#include "player/sequence_stage.h"

#include <QFile>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;
using test::SequenceStage;

class AirSequenceTest : public testing::Test
{
protected:
    void playFor(int ms)
    {
        stage.sequence.play();
        stage.run(ms);
    }

    SequenceStage stage;
};

TEST_F(AirSequenceTest, PlaysTheListRoundAndRoundAndMixesEachIntoTheNext)
{
    stage.addPlaying(3);
    playFor(33'000);
    EXPECT_EQ(stage.heard(), u"1 2 3 1 2"_s);
    const QList<qint64> begun = stage.begun();
    for (int index = 1; index < begun.size(); ++index) {
        EXPECT_NEAR(double(begun[index] - begun[index - 1]), 8000, 2);
    }
    EXPECT_EQ(stage.engineOfStage.heard[1].sound.fadeIn.ms, 2000);
}

TEST_F(AirSequenceTest, TellsWhatPlaysAndWhatComesNext)
{
    stage.addPlaying(3);
    playFor(18'000);
    EXPECT_EQ(stage.told, (QStringList{u"0>1"_s, u"1>2"_s, u"2>3"_s, u"3>1"_s}));
}

TEST_F(AirSequenceTest, AnEntryThatStopsEndsThereAndTheNextOneWaits)
{
    stage.addPlaying(3);
    stage.edit(1, u"aktion=1"_s);
    playFor(20'000);
    EXPECT_EQ(stage.heard(), u"1"_s);
    EXPECT_FALSE(stage.sequence.isPlaying());
    EXPECT_EQ(stage.told.last(), u"0>2"_s);
    playFor(100);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    EXPECT_EQ(stage.engineOfStage.heard[1].sound.fadeIn.ms, 0) << "from silence it begins at once";
}

TEST_F(AirSequenceTest, ALoopIsJoinedWithoutAGapAndEndsWhenItsActionIsTakenBack)
{
    stage.addPlaying(2);
    stage.edit(1, u"aktion=2"_s);
    playFor(25'000);
    EXPECT_EQ(stage.heard(), u"1 1 1"_s);
    EXPECT_NEAR(double(stage.begun()[2] - stage.begun()[1]), 10'000, 2);
    EXPECT_EQ(stage.played, QStringList{Lists::fid(1)}) << "all its rounds are one play";
    stage.edit(1, u"aktion=0"_s);
    stage.run(10'000);
    EXPECT_EQ(stage.heard(), u"1 1 1 2"_s);
}

TEST_F(AirSequenceTest, NextLeavesALoop)
{
    stage.addPlaying(2);
    stage.edit(1, u"aktion=2"_s);
    playFor(3000);
    stage.sequence.next();
    stage.run(1000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
}

TEST_F(AirSequenceTest, AJingleSoundsOverTheMixOfItsNeighbours)
{
    stage.addPlaying(3);
    stage.edit(2, u"aktion=3"_s);
    playFor(9000);
    EXPECT_EQ(stage.heard(), u"1 3 j2"_s);
}

TEST_F(AirSequenceTest, AListOfJinglesAlonePlaysThem)
{
    stage.addPlaying(2);
    stage.execute(u"update pl_all set aktion=11"_s);
    stage.sequence.listChanged();
    playFor(9000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
}

TEST_F(AirSequenceTest, WhatIsMissingOrDamagedIsLeftOutInTimeAndTold)
{
    stage.addPlaying(5);
    ASSERT_TRUE(QFile::remove(stage.file(u"t2.mp3"_s)));
    stage.engineOfStage.broken[stage.file(u"t3.mp3"_s)] = 0;
    playFor(20'000);
    EXPECT_EQ(stage.heard(), u"1 4 5"_s);
    EXPECT_NEAR(double(stage.begun()[1] - stage.begun()[0]), 8000, 2);
    EXPECT_EQ(stage.leftOut, (QStringList{Lists::fid(2), Lists::fid(3)}));
}

TEST_F(AirSequenceTest, AFileThatBreaksOffIsFollowedByTheNextAtOnce)
{
    stage.addPlaying(2);
    stage.engineOfStage.broken[stage.file(u"t1.mp3"_s)] = 4000;
    playFor(5000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    EXPECT_LE(stage.engineOfStage.longestSilenceMs, 100);
    EXPECT_EQ(stage.leftOut, QStringList{Lists::fid(1)});
}

TEST_F(AirSequenceTest, TheOnlyOneThatCanBePlayedIsPlayedAgain)
{
    stage.addPlaying(40);
    for (int track = 2; track <= 40; ++track) {
        ASSERT_TRUE(QFile::remove(stage.file(u"t%1.mp3"_s.arg(track))));
    }
    playFor(20'000);
    EXPECT_EQ(stage.heard(), u"1 1 1"_s);
}

TEST_F(AirSequenceTest, AListWithoutAnythingPlayableGoesOnAsSoonAsAFileIsBack)
{
    stage.addPlaying(2);
    for (const QString& name : {u"t1.mp3"_s, u"t2.mp3"_s}) {
        ASSERT_TRUE(QFile::rename(stage.file(name), stage.file(name + u".away"_s)));
    }
    stage.sequence.listChanged();
    playFor(3000);
    EXPECT_EQ(stage.heard(), QString());
    EXPECT_TRUE(stage.sequence.isStarved());
    EXPECT_EQ(stage.leftOut.size(), 2) << "told once";
    ASSERT_TRUE(QFile::rename(stage.file(u"t2.mp3.away"_s), stage.file(u"t2.mp3"_s)));
    stage.run(2000);
    EXPECT_EQ(stage.heard(), u"2"_s);
}

TEST_F(AirSequenceTest, ATrackAskedForNowBeginsAtOnceAndTheListGoesOnBehindIt)
{
    stage.addPlaying(5);
    playFor(3000);
    stage.sequence.playNow(Lists::fid(4));
    stage.run(8500);
    EXPECT_EQ(stage.heard(), u"1 4 5"_s);
    EXPECT_LE(stage.begun()[1], 3150);
    EXPECT_EQ(stage.told.last(), u"5>1"_s);
}

TEST_F(AirSequenceTest, ATrackAskedForNextComesBehindThePresentOneAndTheListGoesOnAsBefore)
{
    stage.addPlaying(3);
    stage.addTrack(9);
    playFor(3000);
    stage.sequence.playNext(Lists::fid(9));
    stage.run(14'000);
    EXPECT_EQ(stage.heard(), u"1 9 2"_s);
    EXPECT_EQ(stage.begun()[2] - stage.begun()[1], 5000) << "half of its length is mixed at most";
}

TEST_F(AirSequenceTest, ATrackThatIsNowhereIsToldAndChangesNothing)
{
    stage.addPlaying(2);
    playFor(3000);
    stage.sequence.playNow(u"899999999999"_s);
    stage.run(1000);
    EXPECT_EQ(stage.heard(), u"1"_s);
    EXPECT_EQ(stage.leftOut, QStringList{u"899999999999"_s});
}

TEST_F(AirSequenceTest, FollowsWhatIsAddedTakenOutAndMoved)
{
    stage.addPlaying(4);
    playFor(2000);
    stage.execute(u"delete from pl_all where fid='%1'"_s.arg(Lists::fid(2)));
    stage.sequence.listChanged();
    EXPECT_EQ(stage.told.last(), u"1>3"_s);
    stage.execute(u"update pl_all set sid=1 where fid='%1'"_s.arg(Lists::fid(4)));
    stage.execute(u"update pl_all set sid=0 where fid='%1'"_s.arg(Lists::fid(1)));
    stage.sequence.listChanged();
    stage.run(16'000);
    EXPECT_EQ(stage.heard(), u"1 4 3"_s);
}

TEST_F(AirSequenceTest, AnEntryThatIsTakenOutWhileItPlaysIsFollowedByTheOneBehindIt)
{
    stage.addPlaying(4);
    playFor(10'000);
    stage.execute(u"delete from pl_all where fid='%1'"_s.arg(Lists::fid(2)));
    stage.sequence.listChanged();
    stage.run(8000);
    EXPECT_EQ(stage.heard(), u"1 2 3"_s);
}

TEST_F(AirSequenceTest, AnotherListThatBecomesThePlayingOneFollowsFromItsBeginning)
{
    stage.addPlaying(2);
    stage.addTrack(7);
    stage.addTrack(8);
    const Pnid other = stage.addList({1, 2}, u"Zweite"_s);
    for (const int position : {1, 2}) {
        stage.execute(u"update pl_all set mixtime=2000, fid='%1' where pnid=%2 and sid=%3"_s
                          .arg(Lists::fid(position + 6))
                          .arg(numberOf(other))
                          .arg(position));
    }
    playFor(2000);
    stage.execute(u"update pl_name set isplay=false"_s);
    stage.execute(u"update pl_name set isplay=true where nid=%1"_s.arg(numberOf(other)));
    stage.sequence.listChanged();
    stage.run(18'000);
    EXPECT_EQ(stage.heard(), u"1 7 8"_s);
}

TEST_F(AirSequenceTest, PlaysOnWhileTheLibraryIsLent)
{
    stage.addPlaying(4);
    playFor(1000);
    stage.playing.keepAhead(30);
    stage.engine->GiveAway(stage.dbName());
    stage.run(20'000);
    EXPECT_EQ(stage.heard(), u"1 2 3"_s);
    stage.engine->TakeBack(stage.dbName());
    stage.sequence.listChanged();
    stage.run(8000);
    EXPECT_EQ(stage.heard(), u"1 2 3 4"_s);
}

TEST_F(AirSequenceTest, StopFadesOutAndPlayGoesOnWithTheNext)
{
    stage.addPlaying(3);
    playFor(3000);
    stage.sequence.stop();
    stage.run(3000);
    EXPECT_EQ(stage.told.last(), u"0>2"_s);
    EXPECT_GE(stage.engineOfStage.silentMs, 2400);
    playFor(500);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
}

TEST_F(AirSequenceTest, AStopInTheMiddleOfAMixSilencesBoth)
{
    stage.addPlaying(3);
    playFor(9000);
    stage.sequence.stop();
    stage.run(2000);
    EXPECT_GE(stage.engineOfStage.silentMs, 1400);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
}

TEST_F(AirSequenceTest, WithoutMixModeEachEntryEndsByItself)
{
    stage.addPlaying(2);
    stage.sequence.setMixMode(false);
    playFor(12'000);
    EXPECT_EQ(stage.heard(), u"1"_s);
    EXPECT_NEAR(stage.engineOfStage.silentMs, 2000, 100);
}

TEST_F(AirSequenceTest, TheMixCanBeginBeforeItsTime)
{
    stage.addPlaying(2);
    playFor(4000);
    stage.sequence.mixNow();
    stage.run(1000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    EXPECT_EQ(stage.engineOfStage.heard[1].sound.fadeIn.ms, 2000);
    EXPECT_EQ(stage.engineOfStage.report(AirDeck::A).state, DeckState::Playing);
    stage.run(1500);
    EXPECT_NE(stage.engineOfStage.report(AirDeck::A).state, DeckState::Playing);
}

TEST_F(AirSequenceTest, APlayCountsWhenHalfOfItWasHeard)
{
    stage.addPlaying(2);
    playFor(4900);
    EXPECT_EQ(stage.played, QStringList());
    stage.run(300);
    EXPECT_EQ(stage.played, QStringList{Lists::fid(1)});
    stage.run(20'000);
    EXPECT_EQ(stage.played, (QStringList{Lists::fid(1), Lists::fid(2), Lists::fid(1)}));
}

TEST_F(AirSequenceTest, GoesOnWhereItWasLeft)
{
    stage.addPlaying(3);
    ASSERT_TRUE(
        stage.sequence.resume(Plid(stage.plids(stage.list)[1].toInt()), Lists::fid(2), 6000));
    stage.run(3500);
    EXPECT_EQ(stage.heard(), u"2 3"_s);
    EXPECT_NEAR(stage.engineOfStage.heard[0].fromMs, 6000, 30);
    EXPECT_EQ(stage.played, QStringList()) << "it had been counted before";
}

TEST_F(AirSequenceTest, APauseIsLeftOnTheSameDeckAndAtTheSamePlace)
{
    stage.addPlaying(3);
    playFor(3000);
    const AirDeck deck = stage.sequence.deck();
    stage.sequence.pause();
    stage.run(5000);
    EXPECT_TRUE(stage.sequence.isPaused());
    EXPECT_FALSE(stage.sequence.isPlaying());
    EXPECT_EQ(stage.heard(), u"1"_s);
    EXPECT_EQ(stage.told.last(), u"0>1"_s);
    stage.edit(3, u"pitch=100"_s);
    playFor(500);
    EXPECT_EQ(stage.heard(), u"1 1"_s);
    EXPECT_EQ(stage.sequence.deck(), deck);
    EXPECT_NEAR(stage.engineOfStage.heard[1].fromMs, 3000, 60);
    stage.run(6000);
    EXPECT_EQ(stage.heard(), u"1 1 2"_s);
    EXPECT_EQ(stage.played, QStringList{Lists::fid(1)});
}

TEST_F(AirSequenceTest, APauseIsForgottenWhenSomethingElseIsAskedFor)
{
    stage.addPlaying(3);
    playFor(3000);
    stage.sequence.pause();
    stage.run(1000);
    stage.sequence.playNow(Lists::fid(3));
    stage.run(1000);
    EXPECT_EQ(stage.heard(), u"1 3"_s);
    stage.sequence.pause();
    stage.run(1000);
    stage.sequence.stop();
    EXPECT_FALSE(stage.sequence.isPaused());
    playFor(1000);
    EXPECT_EQ(stage.heard(), u"1 3 1"_s) << "behind the last one the list begins anew";
}

TEST_F(AirSequenceTest, ATrackThatIsAskedForDuringAPauseComesBehindIt)
{
    stage.addPlaying(3);
    playFor(3000);
    stage.sequence.pause();
    stage.run(1000);
    stage.sequence.playNext(Lists::fid(3));
    playFor(9000);
    EXPECT_EQ(stage.heard(), u"1 1 3"_s);
}

TEST_F(AirSequenceTest, TheUsersLoopGoesBeforeTheActionAndEndsWithTheSameWord)
{
    stage.addPlaying(3);
    playFor(1000);
    stage.sequence.setLoop(true);
    stage.run(11'000);
    EXPECT_EQ(stage.heard(), u"1 1"_s);
    stage.edit(2, u"pitch=100"_s);
    EXPECT_TRUE(stage.sequence.isLoop()) << "an edit does not end it";
    stage.sequence.setLoop(false);
    stage.run(8000);
    EXPECT_EQ(stage.heard(), u"1 1 2"_s);
    EXPECT_FALSE(stage.sequence.isLoop());
}

TEST_F(AirSequenceTest, TheSpeedThatTheUserGaveStaysUntilTheEntryIsOver)
{
    stage.addPlaying(2);
    playFor(1000);
    stage.sequence.setPitch(350, 0);
    stage.edit(2, u"volume=5000"_s);
    EXPECT_EQ(stage.engineOfStage.pitch(AirDeck::A), 350) << "an edit elsewhere takes it not away";
    stage.run(5000);
    EXPECT_EQ(stage.sequence.playing().Pitch, 350);
    stage.run(4000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    EXPECT_EQ(stage.sequence.playing().Pitch, 0);
}

TEST_F(AirSequenceTest, AnOrderThatCannotBePlayedCostsNoEntryOfTheList)
{
    stage.addPlaying(4);
    stage.engineOfStage.broken[stage.file(u"t4.mp3"_s)] = 0;
    playFor(1000);
    stage.sequence.playNow(Lists::fid(4));
    stage.run(9000);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
}

TEST_F(AirSequenceTest, NoMixIsLongerThanTheUserWants)
{
    stage.addPlaying(2);
    stage.options.maxMix = 1000;
    playFor(9500);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    EXPECT_NEAR(double(stage.begun()[1] - stage.begun()[0]), 9000, 2);
}

TEST_F(AirSequenceTest, GarbageInAnEntryStillPlays)
{
    stage.addPlaying(4);
    stage.edit(1, u"framestart=300, framestop=100, volume=-5, pitch=99999, mixtime=-7"_s);
    stage.edit(2, u"framestart=-3, framestop=1, mixin='x', mixout=',,,,', volume=99999999"_s);
    stage.edit(3, u"framestart=5000, framestop=5000"_s);
    playFor(4000);
    EXPECT_EQ(stage.heard().left(5), u"1 2 4"_s);
    EXPECT_EQ(stage.engineOfStage.heard[0].sound.pitch, 2000);
    EXPECT_LE(stage.engineOfStage.longestSilenceMs, 200);
}

} // namespace
} // namespace melovane
