#include "tagbench/bench_tracks.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using F = TrackField;

BenchTrack track(const QString& title, const QString& artist, const QString& name)
{
    BenchTrack result;
    result.fid = u"1"_s;
    result.folder = u"/m/"_s;
    result.stored[0] = title;
    result.stored[1] = artist;
    result.stored.back() = result.folder + name;
    result.now = result.stored;
    return result;
}

class Bench : public testing::Test
{
protected:
    Bench()
    {
        tracks.setTracks(
            {track(u"Eins"_s, u"Wer"_s, u"1.mp3"_s), track(u"Zwei"_s, u"Wer"_s, u"2.mp3"_s)});
    }

    BenchTracks tracks;
    const std::vector<int> both{0, 1};
};

TEST_F(Bench, CommonValuesAreThoseThatAllHave)
{
    EXPECT_EQ(tracks.common(both, F::Interpret), u"Wer"_s);
    EXPECT_EQ(tracks.common(both, F::Titel), std::nullopt);
    EXPECT_EQ(tracks.common(both, F::Album), QString());
    EXPECT_EQ(tracks.common({}, F::Album), std::nullopt);
}

TEST_F(Bench, TypingChangesAllMarkedTracksInOneStep)
{
    EXPECT_TRUE(tracks.type(both, F::Album, u"P"_s));
    EXPECT_TRUE(tracks.type(both, F::Album, u"Prisma"_s));
    EXPECT_EQ(tracks.text(1, F::Album), u"Prisma"_s);
    EXPECT_EQ(tracks.changedCells(), 2);
    EXPECT_EQ(tracks.changedTracks(), 2);
    tracks.undo();
    EXPECT_EQ(tracks.text(0, F::Album), QString());
    EXPECT_EQ(tracks.changedCells(), 0);
    EXPECT_FALSE(tracks.canUndo());
    tracks.redo();
    EXPECT_EQ(tracks.text(0, F::Album), u"Prisma"_s);
}

TEST_F(Bench, TypingInAnotherFieldOrForOtherTracksIsAnotherStep)
{
    tracks.type(both, F::Album, u"A"_s);
    tracks.type({0}, F::Album, u"B"_s);
    tracks.type({0}, F::Jahr, u"1999"_s);
    tracks.undo();
    EXPECT_EQ(tracks.text(0, F::Album), u"B"_s);
    tracks.undo();
    EXPECT_EQ(tracks.text(0, F::Album), u"A"_s);
}

TEST_F(Bench, WhatIsTypedBackToTheStoredTextIsNoChange)
{
    tracks.type(both, F::Interpret, u"Wer?"_s);
    tracks.type(both, F::Interpret, u"Wer"_s);
    EXPECT_EQ(tracks.changedCells(), 0);
    EXPECT_FALSE(tracks.canUndo());
}

TEST_F(Bench, AFieldIsTakenBackAlone)
{
    tracks.change({{0, F::Titel, u"X"_s}, {0, F::Album, u"Y"_s}});
    EXPECT_TRUE(tracks.revert(both, F::Titel));
    EXPECT_EQ(tracks.text(0, F::Titel), u"Eins"_s);
    EXPECT_EQ(tracks.text(0, F::Album), u"Y"_s);
    EXPECT_FALSE(tracks.revert(both, F::Titel));
}

TEST_F(Bench, TheFilterLooksIntoFileAndFields)
{
    tracks.setFilter(u"zWEI"_s);
    ASSERT_EQ(tracks.rowCount(), 1);
    EXPECT_EQ(tracks.track(0), 1);
    EXPECT_EQ(tracks.cell(0, 0).toText(), u"Zwei"_s);
    tracks.setFilter(u"1.MP3"_s);
    EXPECT_EQ(tracks.track(0), 0);
    tracks.setFilter(QString());
    EXPECT_EQ(tracks.rowCount(), 2);
}

TEST_F(Bench, WhatIsStoredEndsTheSteps)
{
    tracks.change({{0, kBenchPlace, u"/m/neu/9.mp3"_s}, {0, F::Album, u"Y"_s}});
    EXPECT_EQ(tracks.at(0).shownPlace(), u"neu/9.mp3"_s);
    tracks.setStored({0});
    EXPECT_EQ(tracks.changedCells(), 0);
    EXPECT_FALSE(tracks.canUndo());
    EXPECT_EQ(tracks.at(0).folder, u"/m/neu/"_s);
    EXPECT_EQ(tracks.at(0).shownPlace(), u"9.mp3"_s);
}

TEST(BenchText, FieldsTakeWhatTheyCanHold)
{
    EXPECT_EQ(benchText(F::Titel, u"  a\tb\n"_s), u"a b"_s);
    EXPECT_EQ(benchText(F::Kommentar, u"a\nb"_s), u"a\nb"_s);
    EXPECT_EQ(benchText(F::Jahr, u"12345678901234"_s), u"1234567890"_s);
    EXPECT_EQ(benchText(F::Titel, QString(300, u'x'))->size(), 255);
    EXPECT_EQ(benchText(F::Titel, QString(254, u'x') + u"\U0001F3B5"_s)->size(), 254);
    EXPECT_EQ(benchText(F::Note, u"3"_s), u"3"_s);
    EXPECT_EQ(benchText(F::Note, u"0"_s), QString());
    EXPECT_EQ(benchText(F::Note, u"9"_s), std::nullopt);
    EXPECT_EQ(benchText(F::BPM, u"128.5"_s), u"128.5"_s);
    EXPECT_EQ(benchText(F::BPM, u"schnell"_s), QString());
    EXPECT_EQ(benchText(F::Track, u"3/12"_s), u"3/12"_s);
    EXPECT_EQ(benchText(F::Track, u"3/x"_s), u"3"_s);
    EXPECT_EQ(benchText(F::Track, u"03"_s), u"03"_s);
}

} // namespace
} // namespace melovane
