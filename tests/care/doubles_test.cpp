#include "care/doubles_fixture.h"
#include "support/recycled_files.h"

#include <QFile>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr unsigned kSound = unsigned(DoubleKind::Sound);
constexpr unsigned kNames = unsigned(DoubleKind::Names);

using DoublesTest = test::DoubleMusic;

TEST_F(DoublesTest, FilesOfTheSameSoundAreAGroupWhateverTheirTagsSay)
{
    const QString one = add(u"a.mp3"_s, 1, u"Eins"_s);
    add(u"b.mp3"_s, 2);
    const QString two = add(u"c.mp3"_s, 1, u"Zwei"_s);
    search(kSound);
    ASSERT_EQ(doubles.groups().size(), 1U);
    const DoubleGroup& group = doubles.groups()[0];
    EXPECT_TRUE(group.isSameSound);
    EXPECT_TRUE(group.isChosen);
    ASSERT_EQ(group.tracks.size(), 2U);
    EXPECT_EQ(group.tracks[0].fid, one);
    EXPECT_EQ(group.tracks[1].fid, two);
    EXPECT_EQ(doubles.progress(), std::pair(0, 0));
    EXPECT_EQ(doubles.goingCount(), 1);
}

TEST_F(DoublesTest, ATrackThatDiffersInOneByteIsNone)
{
    add(u"a.mp3"_s, 1);
    QByteArray bytes = music.read(u"a.mp3"_s);
    bytes[bytes.size() / 10] = char(bytes[bytes.size() / 10] ^ 1);
    music.write(u"b.mp3"_s, bytes);
    addRow(u"b.mp3"_s, u"B"_s, test::millisecondsOf(kFrames));
    search(kSound);
    EXPECT_TRUE(doubles.groups().empty());
}

TEST_F(DoublesTest, TheSameNamesAndLengthAreAGroupThatWaitsForTheUser)
{
    addRow(u"a.mp3"_s, u"Über uns"_s, 200'000);
    addRow(u"b.mp3"_s, u"über Uns"_s, 200'900);
    addRow(u"c.mp3"_s, u"Über uns"_s, 210'000);
    addRow(u"d.mp3"_s, {}, 200'000);
    addRow(u"e.mp3"_s, {}, 200'000);
    search(kSound | kNames);
    ASSERT_EQ(doubles.groups().size(), 1U);
    EXPECT_FALSE(doubles.groups()[0].isSameSound);
    EXPECT_FALSE(doubles.groups()[0].isChosen);
    EXPECT_EQ(doubles.groups()[0].tracks.size(), 2U);
    EXPECT_EQ(doubles.spareCount(), 1);
    EXPECT_EQ(doubles.goingCount(), 0);
}

TEST_F(DoublesTest, MissingTracksAndDiscsAreNoDoubles)
{
    addRow(u"a.mp3"_s, u"T"_s, 200'000);
    const QString gone = addRow(u"b.mp3"_s, u"T"_s, 200'000);
    const QString disc = addRow(u"c.mp3"_s, u"T"_s, 200'000);
    suite.execute(u"update db_all set DEL=2 where FID='%1'"_s.arg(gone));
    suite.execute(u"update db_all set DriveTyp=4 where FID='%1'"_s.arg(disc));
    search(kNames);
    EXPECT_TRUE(doubles.groups().empty());
}

TEST(DoublesOrder, TheOneWorthMostIsProposed)
{
    DoubleTrack plain;
    plain.fid = u"300000000001"_s;
    plain.milliseconds = 1000;
    plain.bitRate = 128;
    DoubleTrack better = plain;
    better.bitRate = 320;
    DoubleTrack inLists = plain;
    inLists.entries = 3;
    DoubleTrack rated = plain;
    rated.note = u"4"_s;
    DoubleTrack younger = plain;
    younger.fid = u"300000000002"_s;
    EXPECT_EQ(bestOf({plain, inLists, better}), 2);
    EXPECT_EQ(bestOf({rated, plain, inLists}), 2);
    EXPECT_EQ(bestOf({plain, rated}), 1);
    EXPECT_EQ(bestOf({younger, plain}), 1);
    DoubleTrack variable = plain;
    variable.bitRate = -99;
    variable.size = 30'000;
    EXPECT_EQ(variable.rate(), 240);
    EXPECT_EQ(bestOf({plain, variable}), 1);
    DoubleTrack deleted = better;
    deleted.isDeleted = true;
    EXPECT_EQ(bestOf({deleted, plain}), 1) << "the next cleaning takes the other";
}

TEST_F(DoublesTest, ARowThatIsMarkedAsDeletedIsKnownAsOne)
{
    const QString deleted = add(u"a.mp3"_s, 1);
    const QString other = add(u"b.mp3"_s, 1);
    suite.execute(u"update db_all set DEL=-1 where FID='%1'"_s.arg(deleted));
    search(kSound);
    ASSERT_EQ(doubles.groups().size(), 1U);
    const DoubleGroup& group = doubles.groups()[0];
    EXPECT_EQ(group.tracks.at(size_t(group.kept)).fid, other);
}

TEST_F(DoublesTest, AFileThatAnotherRowHasStays)
{
    const QString kept = add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    addRow(u"b.mp3"_s, u"Anders"_s, 0);
    search(kSound);
    ASSERT_EQ(doubles.groups().size(), 1U);
    keep(kept);
    EXPECT_EQ(doubles.merge(true).removed, 1);
    worker.finish();
    EXPECT_TRUE(suite.files.fileExists(music.file(u"b.mp3"_s)));
}

TEST_F(DoublesTest, ListsAndStatisticsGoOverAndComeBackInOneStep)
{
    const QString kept = add(u"a.mp3"_s, 1);
    const QString other = add(u"b.mp3"_s, 1);
    const QString third = add(u"c.mp3"_s, 1);
    const int list = suite.library.addPlaylist({.tracks = {other, kept, third}});
    const int untouched = suite.library.addPlaylist({.tracks = {kept}});
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0));
    suite.library.addPlayback(other, noon);
    suite.library.addPlayback(kept, noon);
    suite.execute(u"update db_all set PlayCountAll=2 where FID='%1'"_s.arg(kept));
    suite.execute(u"update db_all set PlayCountAll=5, Play=#3/2/2026# where FID='%1'"_s.arg(other));
    suite.execute(u"update pl_name set sicherung=false"_s);
    const auto all = [&] {
        return suite.column(u"select PLID & ':' & FID & ':' & SID from pl_all order by PLID"_s) +
               suite.column(u"select FID & tstamp from pl_stat order by FID"_s) +
               suite.column(u"select FID & Titel & Path & DName & DLen & PlayCountAll & Play "
                            "from db_all order by FID"_s);
    };
    const QStringList before = all();
    search(kSound);
    keep(kept);
    const MergeResult result = doubles.merge(false);
    EXPECT_EQ(result.removed, 2);
    EXPECT_EQ(fids(), QStringList{kept});
    EXPECT_EQ(suite.column(u"select FID from pl_all where PNID=%1 order by SID"_s.arg(list)),
              (QStringList{kept, kept, kept}));
    EXPECT_EQ(suite.column(u"select FID from pl_stat"_s), (QStringList{kept, kept}));
    EXPECT_EQ(cell(kept, u"PlayCountAll"_s).toLong(), 7);
    EXPECT_EQ(cell(kept, u"Play"_s).toDateTime().date(), QDate(2026, 3, 2));
    const auto saved = u"select sicherung from pl_name where NID=%1"_s;
    EXPECT_TRUE(suite.value(saved.arg(list)).toBool());
    EXPECT_FALSE(suite.value(saved.arg(untouched)).toBool());
    const QStringList merged = all();
    ListHistory later(*suite.engine, suite.files, suite.clock, *settings, {});
    ASSERT_TRUE(later.nextUndo());
    EXPECT_EQ(later.nextUndo()->action, ListAction::Merge);
    EXPECT_EQ(later.nextUndo()->count, 2);
    EXPECT_EQ(later.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(all(), before);
    EXPECT_EQ(later.redo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(all(), merged);
    EXPECT_TRUE(suite.files.fileExists(music.file(u"b.mp3"_s)));
}

TEST_F(DoublesTest, FilesOfRemovedTracksGoToTheRecycleFolderAndNoOther)
{
    const QString kept = add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    // The same file under another name: it must not go.
    ASSERT_TRUE(QFile::link(music.file(u"a.mp3"_s), music.file(u"link.mp3"_s)));
    addRow(u"link.mp3"_s, u"L"_s, test::millisecondsOf(kFrames));
    search(kSound);
    ASSERT_EQ(doubles.groups().size(), 1U);
    EXPECT_EQ(doubles.groups()[0].tracks.size(), 3U);
    keep(kept);
    const QByteArray bytes = music.read(u"b.mp3"_s);
    EXPECT_EQ(doubles.merge(true).removed, 2);
    EXPECT_TRUE(doubles.isWorking());
    worker.finish();
    EXPECT_FALSE(doubles.isWorking());
    EXPECT_TRUE(suite.files.fileExists(music.file(u"a.mp3"_s)));
    EXPECT_TRUE(suite.files.fileExists(music.file(u"link.mp3"_s)));
    EXPECT_FALSE(suite.files.fileExists(music.file(u"b.mp3"_s)));
    RecycleFolder recycler(
        {.files = suite.files,
         .clock = suite.clock,
         .dataFolder = suite.dataFolder(),
         .homeFolder = home.path(),
         .systemName = [](const QString& file) { return QFile::encodeName(file); }});
    const auto recycled = test::recycledOf(recycler, music.path());
    ASSERT_EQ(recycled.size(), 1U);
    EXPECT_EQ(suite.files.read(recycled[0].to, bytes.size()), bytes);
    test::throwAway(suite.files, recycler, recycled);
}

TEST_F(DoublesTest, ARecycledDoubleComesBackWithoutTheEntriesThatWentOver)
{
    const QString kept = add(u"a.mp3"_s, 1);
    const QString other = add(u"b.mp3"_s, 1);
    suite.library.addPlaylist({.tracks = {other}});
    suite.library.addPlayback(other, suite.clock.now());
    search(kSound);
    keep(kept);
    const MergeResult merged = doubles.merge(false);
    ASSERT_EQ(merged.files.size(), 1U);
    const BroughtBack back = bringBack(*suite.open(), merged.files[0].rows);
    EXPECT_TRUE(back.hasTrack);
    EXPECT_EQ(back.entries + back.plays, 0);
    EXPECT_EQ(suite.column(u"select FID from pl_all"_s), QStringList{kept});
    EXPECT_EQ(suite.column(u"select FID from pl_stat"_s), QStringList{kept});
}

TEST_F(DoublesTest, FilesThatChangeDirLeadsToAreComparedMergedAndRecycled)
{
    suite.write(u"ChangeDir.conf"_s, "C:\\Music ?? " + music.path().toUtf8());
    const QString kept = add(u"a.mp3"_s, 1);
    const QString other = add(u"b.mp3"_s, 1);
    suite.execute(u"update db_all set Path='C:\\Music\\'"_s);
    search(kSound);
    ASSERT_EQ(doubles.groups().size(), 1U);
    keep(kept);
    const MergeResult result = doubles.merge(true);
    EXPECT_EQ(result.removed, 1);
    EXPECT_EQ(result.left, 0);
    worker.finish();
    EXPECT_TRUE(suite.files.fileExists(music.file(u"a.mp3"_s)));
    EXPECT_FALSE(suite.files.fileExists(music.file(u"b.mp3"_s)));
    EXPECT_TRUE(cell(other, u"FID"_s).isNull());
    RecycleFolder recycler(
        {.files = suite.files,
         .clock = suite.clock,
         .dataFolder = suite.dataFolder(),
         .homeFolder = home.path(),
         .systemName = [](const QString& file) { return QFile::encodeName(file); }});
    const auto recycled = test::recycledOf(recycler, music.path());
    ASSERT_EQ(recycled.size(), 1U);
    test::throwAway(suite.files, recycler, recycled);
}

TEST_F(DoublesTest, WhatHasChangedMeanwhileIsLeftAlone)
{
    const QString kept = add(u"a.mp3"_s, 1);
    const QString moved = add(u"b.mp3"_s, 1);
    const QString lost = add(u"c.mp3"_s, 2);
    const QString other = add(u"d.mp3"_s, 2);
    search(kSound);
    keep(kept);
    keep(lost);
    suite.execute(u"update db_all set DName='x.mp3' where FID='%1'"_s.arg(moved));
    QFile::remove(music.file(u"c.mp3"_s));
    const MergeResult result = doubles.merge(true);
    EXPECT_EQ(result.removed, 0);
    EXPECT_EQ(result.left, 2);
    EXPECT_EQ(fids().size(), 4);
    EXPECT_TRUE(suite.files.fileExists(music.file(u"d.mp3"_s)));
    EXPECT_FALSE(history.nextUndo());
}

TEST_F(DoublesTest, AMergeThatIsEndedChangesNothing)
{
    for (int i = 0; i < 50; ++i) {
        addRow(u"a%1.mp3"_s.arg(i), u"T%1"_s.arg(i), 200'000);
        addRow(u"b%1.mp3"_s.arg(i), u"T%1"_s.arg(i), 200'000);
        music.write(u"a%1.mp3"_s.arg(i), "x");
        music.write(u"b%1.mp3"_s.arg(i), "y");
    }
    search(kNames);
    ASSERT_EQ(doubles.groups().size(), 50U);
    for (int i = 0; i < 50; ++i) {
        doubles.choose(i, true);
    }
    const QStringList before = fids();
    EXPECT_TRUE(doubles.merge(true, [](int done, int) { return done < 40; }).isCancelled);
    EXPECT_EQ(fids(), before);
    EXPECT_FALSE(history.nextUndo());
    EXPECT_EQ(doubles.groups().size(), 50U);
    EXPECT_EQ(doubles.merge(false).removed, 50);
    EXPECT_TRUE(doubles.groups().empty());
}

TEST_F(DoublesTest, ASearchThatIsEndedLeavesTheGroupsAsTheyWere)
{
    add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    doubles.search(kSound);
    EXPECT_TRUE(doubles.isWorking());
    doubles.cancel();
    EXPECT_FALSE(doubles.isWorking());
    worker.finish();
    EXPECT_TRUE(doubles.groups().empty());
}

} // namespace
} // namespace melovane
