#include "player/air_rig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

constexpr double kFrameSamples = 1152;
constexpr double kMs = kAirRate / 1000.0;

/// The loudest that is heard above 2 kHz: of a deep tone nothing, of a click all.
double loudestAbove2Khz(std::vector<double> samples)
{
    const double angle = 2 * std::numbers::pi * 2000 / kAirRate;
    for (const double q : {0.5176, std::numbers::sqrt2 / 2, 1.9319}) {
        const double alpha = std::sin(angle) / (2 * q);
        const double b = (1 + std::cos(angle)) / 2;
        double z1 = 0;
        double z2 = 0;
        for (double& sample : samples) {
            const double in = sample / (1 + alpha);
            const double out = b * in + z1;
            z1 = -2 * b * in + 2 * std::cos(angle) / (1 + alpha) * out + z2;
            z2 = b * in - (1 - alpha) / (1 + alpha) * out;
            sample = out;
        }
    }
    double loudest = 0;
    for (const double sample : samples) {
        loudest = std::max(loudest, std::abs(sample));
    }
    return 20 * std::log10(loudest + 1e-12);
}

double loudest(const std::vector<double>& samples, size_t from, size_t to)
{
    double out = 0;
    for (size_t i = from; i < std::min(to, samples.size()); ++i) {
        out = std::max(out, std::abs(samples[i]));
    }
    return out;
}

class MixEngineTest : public testing::Test
{
protected:
    MixEngineTest()
    {
        rig.files.addTone(u"deep"_s, 100, 20, 0.5);
        rig.files.addTone(u"short"_s, 100, 2, 0.5);
    }

    static EntrySound sound(const QString& file)
    {
        EntrySound out;
        out.file = file;
        return out;
    }

    void play(AirDeck deck, const QString& file)
    {
        rig.engine.load(deck, sound(file));
        rig.engine.startNow(deck);
        rig.settle();
    }

    /// What is heard of a deep tone holds nothing high but the rounding to 16 bits, which alone
    /// peaks at -88, and less of the edges. Cut off hard it is -16.
    void expectNoClick() { EXPECT_LT(loudestAbove2Khz(rig.left()), -85); }

    DeckReport report(AirDeck deck = AirDeck::A) const { return rig.engine.report(deck); }

    AirRig rig;
};

TEST_F(MixEngineTest, FromItsFirstToItsLastFrameAnUnchangedEntryIsTheFilesOwnSamples)
{
    EntrySound exact = sound(u"deep"_s);
    exact.frameStart = 40;
    exact.frameStop = 100;
    exact.exactEdges = true;
    exact.eq = EQStyleSplit(kDefaultEqStyle);
    rig.engine.load(AirDeck::A, exact);
    rig.engine.startAt(AirDeck::A, 5000);
    rig.run(100'000);
    const auto& file = rig.files[u"deep"_s].samples;
    const auto& heard = rig.first.heard;
    for (size_t i = 0; i < size_t(60 * kFrameSamples) * 2; ++i) {
        ASSERT_EQ(file[size_t(40 * kFrameSamples) * 2 + i], heard[5000 * 2 + i]) << i;
    }
    EXPECT_EQ(0, loudest(rig.left(), 5000 + size_t(60 * kFrameSamples), 100'000));
    EXPECT_EQ(0, loudest(rig.left(), 0, 5000));
    EXPECT_EQ(5000, report().startedAt);
    EXPECT_EQ(DeckState::Ended, report().state);
}

TEST_F(MixEngineTest, StartStopSeekAndEndOfAnEntryDoNotClick)
{
    play(AirDeck::A, u"deep"_s);
    rig.run(10'000);
    rig.engine.seek(AirDeck::A, 7321.7);
    rig.run(30'000);
    EXPECT_EQ(DeckState::Playing, report().state);
    EXPECT_NEAR(7321.7 + 30'000 / kMs, report().positionMs, 100);
    rig.engine.stop(AirDeck::A);
    rig.run(10'000);
    EXPECT_EQ(DeckState::Ended, report().state);
    EXPECT_EQ(0, loudest(rig.left(), rig.left().size() - 5000, rig.left().size()));
    play(AirDeck::B, u"short"_s);
    rig.run(3 * kAirRate);
    EXPECT_EQ(DeckState::Ended, report(AirDeck::B).state);
    expectNoClick();
}

TEST_F(MixEngineTest, AnotherEntryOnADeckThatPlaysDoesNotClick)
{
    play(AirDeck::A, u"deep"_s);
    rig.run(9999);
    play(AirDeck::A, u"short"_s);
    rig.run(9999);
    EXPECT_EQ(DeckState::Playing, report().state);
    EXPECT_NEAR(2000, report().toMs, 1);
    rig.engine.unload(AirDeck::A);
    rig.run(9999);
    EXPECT_EQ(DeckState::Empty, report().state);
    expectNoClick();
}

TEST_F(MixEngineTest, VolumePitchAndTalkoverGlide)
{
    play(AirDeck::A, u"deep"_s);
    rig.run(20'000);
    rig.engine.setVolume(AirDeck::A, 5000);
    rig.run(20'000);
    const size_t now = rig.left().size();
    EXPECT_NEAR(0.25, loudest(rig.left(), now - 5000, now), 0.001);
    rig.engine.setTalkover(4000, 500);
    rig.run(40'000);
    EXPECT_NEAR(0.1, loudest(rig.left(), rig.left().size() - 5000, rig.left().size()), 0.001);
    rig.engine.setTalkover(kUnchangedVolume, 500);
    rig.engine.setPitch(AirDeck::A, 800, 0);
    rig.run(40'000);
    rig.engine.setPitch(AirDeck::A, 0, 300);
    rig.run(40'000);
    expectNoClick();
}

TEST_F(MixEngineTest, AJingleIsHeardInFullWhileTheOthersAreTalkedOver)
{
    rig.engine.setTalkover(0, 0);
    play(AirDeck::A, u"deep"_s);
    rig.run(5000);
    EXPECT_EQ(0, loudest(rig.left(), 2000, rig.left().size()));
    play(AirDeck::Jingle2, u"short"_s);
    rig.run(5000);
    EXPECT_NEAR(0.5, loudest(rig.left(), 2000, rig.left().size()), 0.001);
}

TEST_F(MixEngineTest, AMissingFileFailsAtItsLoadAndNothingIsHeard)
{
    const quint32 load = rig.engine.load(AirDeck::A, sound(u"gone"_s));
    rig.engine.startNow(AirDeck::A);
    rig.settle();
    EXPECT_EQ(DeckState::Failed, report().state);
    EXPECT_EQ(PlayFault::Missing, report().fault);
    EXPECT_EQ(load, report().load);
    EXPECT_EQ(0, loudest(rig.left(), 0, rig.left().size()));
}

TEST_F(MixEngineTest, WhereAFileBreaksOffTheNextEntryIsMixedInBefore)
{
    rig.files[u"deep"_s].breaksOffAt = 12 * kAirRate;
    EntrySound a = sound(u"deep"_s);
    a.volume = 4500; // both together stay below the limiter, whose work is heard above 2 kHz
    a.fadeOut = {MixStyleSplit(kDefaultMixStyleOut), 2000};
    EntrySound b = sound(u"short"_s);
    b.volume = 4500;
    rig.engine.load(AirDeck::A, a);
    rig.engine.load(AirDeck::B, b);
    rig.engine.startNow(AirDeck::A);
    rig.engine.startBeforeEnd(AirDeck::B, AirDeck::A, 2000);
    rig.run(11 * kAirRate);
    EXPECT_EQ(PlayFault::Broken, report().fault);
    EXPECT_NEAR(12'000, report().toMs, 0.1);
    EXPECT_EQ(report().startedAt + 10 * kAirRate, report(AirDeck::B).startedAt);
    rig.run(kAirRate);
    expectNoClick();
}

TEST_F(MixEngineTest, AnEndThatIsEditedIsFollowedWhileTheEntryPlays)
{
    EntrySound a = sound(u"deep"_s);
    a.frameStop = 400;
    rig.engine.load(AirDeck::A, a);
    rig.engine.load(AirDeck::B, sound(u"short"_s));
    rig.engine.startNow(AirDeck::A);
    rig.engine.startBeforeEnd(AirDeck::B, AirDeck::A, 1000);
    rig.run(kAirRate);
    a.frameStop = 200;
    rig.engine.update(AirDeck::A, a);
    rig.run(6 * kAirRate);
    EXPECT_EQ(report().startedAt + 200 * 1152 - kAirRate, report(AirDeck::B).startedAt);
    expectNoClick();
}

TEST_F(MixEngineTest, AnEndThatIsEditedBehindTheNeedleEndsWithoutAClick)
{
    play(AirDeck::A, u"deep"_s);
    rig.run(3 * kAirRate);
    EntrySound edited = sound(u"deep"_s);
    edited.frameStop = 10;
    rig.engine.update(AirDeck::A, edited);
    rig.run(4000);
    EXPECT_EQ(DeckState::Ended, report().state);
    expectNoClick();
}

TEST_F(MixEngineTest, DecodingThatComesTooLateIsCountedAndDoesNotClick)
{
    play(AirDeck::A, u"deep"_s);
    rig.run(kAirRate);
    // Nothing is decoded, longer than what lies ahead.
    for (int i = 0; i < 10 * 44; ++i) {
        rig.first.pull(1024);
    }
    EXPECT_EQ(1, report().underruns);
    EXPECT_EQ(DeckState::Playing, report().state);
    rig.run(kAirRate);
    EXPECT_EQ(1, report().underruns);
    EXPECT_GT(loudest(rig.left(), rig.left().size() - 10'000, rig.left().size()), 0.49);
    expectNoClick();
}

TEST_F(MixEngineTest, ADeckThatRanDryGoesToAnotherPlaceAndToAnotherEntry)
{
    const auto runDry = [this] {
        for (int i = 0; i < 10 * 44; ++i) {
            rig.first.pull(1024);
        }
    };
    play(AirDeck::A, u"deep"_s);
    runDry();
    ASSERT_EQ(1, report().underruns);
    rig.engine.seek(AirDeck::A, 3000);
    rig.run(20'000);
    EXPECT_EQ(DeckState::Playing, report().state);
    EXPECT_NEAR(3000 + 20'000 / kMs, report().positionMs, 100);
    EXPECT_GT(loudest(rig.left(), rig.left().size() - 5000, rig.left().size()), 0.49);
    runDry();
    play(AirDeck::A, u"short"_s);
    rig.run(20'000);
    EXPECT_EQ(DeckState::Playing, report().state);
    EXPECT_NEAR(2000, report().toMs, 1);
    expectNoClick();
}

TEST_F(MixEngineTest, GarbageInAnEntryIsPlayedAsTheNearestThatCanBe)
{
    EntrySound garbage = sound(u"short"_s);
    garbage.frameStart = -400;
    garbage.frameStop = -500;
    garbage.volume = 99'999'999;
    garbage.pitch = -2'000'000'000;
    garbage.fadeIn = {MixStyleSplit(u"-1,99999,x,,-7"), 2'000'000'000};
    garbage.fadeOut = {MixStyleSplit(u"0,0,0,0,0"), -5};
    garbage.eq = EQStyleSplit(u"9,-100,0,100000,7");
    garbage.normalize = -3;
    rig.engine.load(AirDeck::A, garbage);
    rig.engine.startNow(AirDeck::A);
    rig.run(5 * kAirRate);
    EXPECT_EQ(DeckState::Ended, report().state);
    EXPECT_NEAR(2000, report().toMs, 1);
    EXPECT_LE(loudest(rig.left(), 0, rig.left().size()), 0.98);
}

TEST_F(MixEngineTest, AnEntryThatBeginsBehindItsFileFails)
{
    EntrySound behind = sound(u"short"_s);
    behind.frameStart = 2'000'000'000;
    rig.engine.load(AirDeck::A, behind);
    rig.settle();
    EXPECT_EQ(DeckState::Failed, report().state);
    EXPECT_EQ(PlayFault::NoAudio, report().fault);
}

TEST_F(MixEngineTest, FilesInMonoAndAtAnotherRateKeepTheirSpeed)
{
    ToneFile& file = rig.files[u"other"_s];
    file.format = {48'000, 1};
    rig.files.addTone(u"other"_s, 1000, 2, 0.5);
    play(AirDeck::A, u"other"_s);
    rig.run(3 * kAirRate);
    EXPECT_EQ(DeckState::Ended, report().state);
    const auto heard = rig.left();
    int turns = 0;
    const auto from = size_t(report().startedAt + 441);
    for (size_t i = from; i < from + kAirRate; ++i) {
        turns += heard[i - 1] < 0 && heard[i] >= 0 ? 1 : 0;
    }
    EXPECT_NEAR(1000, turns, 1);
    EXPECT_EQ(rig.first.heard[(from + 100) * 2], rig.first.heard[(from + 100) * 2 + 1]);
}

TEST_F(MixEngineTest, BehindAReturnToItsOwnSpeedTheSamplesAreTheFilesAgain)
{
    play(AirDeck::A, u"deep"_s);
    rig.engine.setPitch(AirDeck::A, 1234, 0);
    rig.run(kAirRate);
    rig.engine.setPitch(AirDeck::A, 0, 100);
    rig.run(kAirRate);
    const auto& file = rig.files[u"deep"_s].samples;
    const auto& heard = rig.first.heard;
    const std::vector<qint16> tail(heard.end() - 2000, heard.end());
    EXPECT_NE(file.end(), std::search(file.begin(), file.end(), tail.begin(), tail.end()));
}

TEST_F(MixEngineTest, ACardThatIsLostIsReplacedBySystemsChoiceAndTakenBackInSilence)
{
    rig.engine.openCards(u"Zweite"_s, {});
    rig.run(4096);
    EXPECT_EQ(2, rig.first.openCard);
    play(AirDeck::A, u"deep"_s);
    rig.run(4096);
    rig.first.pulledOut = true;
    rig.first.installed.pop_back();
    rig.engine.beat();
    rig.first.pulledOut = false;
    rig.run(4096);
    EXPECT_EQ(kSystemCard, rig.first.openCard);
    EXPECT_TRUE(rig.engine.card(0).isLost);
    EXPECT_TRUE(rig.engine.card(0).isOpen);
    EXPECT_EQ(DeckState::Playing, report().state);
    rig.first.installed.push_back({u"Zweite"_s, 2});
    rig.run(5 * kAirRate);
    EXPECT_EQ(kSystemCard, rig.first.openCard);
    rig.engine.stop(AirDeck::A);
    rig.run(5 * kAirRate);
    EXPECT_EQ(2, rig.first.openCard);
    EXPECT_FALSE(rig.engine.card(0).isLost);
}

TEST_F(MixEngineTest, OnTwoCardsEachDeckHasItsOwnAndTheMixMeetsWithinABlock)
{
    rig.engine.openCards(u"Erste"_s, u"Zweite"_s);
    rig.engine.load(AirDeck::A, sound(u"short"_s));
    rig.engine.load(AirDeck::B, sound(u"deep"_s));
    rig.engine.startNow(AirDeck::A);
    rig.engine.startBeforeEnd(AirDeck::B, AirDeck::A, 500);
    rig.run(3 * kAirRate);
    EXPECT_EQ(1, rig.first.openCard);
    EXPECT_EQ(2, rig.second.openCard);
    EXPECT_NEAR(double(report().startedAt) + 1.5 * kAirRate, double(report(AirDeck::B).startedAt),
                2 * 1024);
    EXPECT_EQ(0, loudest(rig.left(), size_t(2.2 * kAirRate), rig.left().size()));
}

TEST_F(MixEngineTest, ADeckThatIsToldBeforeItIsLoadedStartsWhenItIs)
{
    rig.engine.load(AirDeck::A, sound(u"deep"_s));
    rig.engine.startNow(AirDeck::A);
    rig.engine.setVolume(AirDeck::A, 2000);
    rig.engine.load(AirDeck::B, sound(u"short"_s));
    rig.engine.startBeforeEnd(AirDeck::B, AirDeck::A, 0);
    rig.run(kAirRate);
    EXPECT_EQ(DeckState::Playing, report().state);
    EXPECT_EQ(DeckState::Ready, report(AirDeck::B).state);
    EXPECT_TRUE(report(AirDeck::B).startsLater);
    EXPECT_NEAR(0.1, loudest(rig.left(), 0, rig.left().size()), 0.001);
    rig.engine.cancelStart(AirDeck::B);
    rig.run(1024);
    EXPECT_FALSE(report(AirDeck::B).startsLater);
}

TEST_F(MixEngineTest, WithoutAnyCardDecksObeyAndGoOnWhenOneIsThere)
{
    rig.first.refuses = true;
    rig.engine.openCards({}, {});
    rig.engine.load(AirDeck::A, sound(u"deep"_s));
    rig.engine.startNow(AirDeck::A);
    rig.run(4096);
    EXPECT_FALSE(rig.engine.card(0).isOpen);
    EXPECT_TRUE(report().startsLater);
    rig.first.refuses = false;
    rig.run(5 * kAirRate);
    EXPECT_TRUE(rig.engine.card(0).isOpen);
    EXPECT_EQ(DeckState::Playing, report().state);
}

} // namespace
