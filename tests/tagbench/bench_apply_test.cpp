#include "config/global_settings.h"
#include "intake/new_tracks.h"
#include "platform/db/db_error.h"
#include "platform/linux/tag_reader.h"
#include "playlists/list_history.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "tagbench/bench_apply.h"
#include "tagbench/bench_library.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using F = TrackField;

class Applying : public test::SuiteFixture
{
protected:
    QString add(const QString& name, const QString& title)
    {
        music.write(name, test::simpleMp3(title, u"Wer"_s));
        const QString fid = suite.library.add(
            {.Titel = title, .Interpret = u"Wer"_s, .Path = music.path() + u'/', .DName = name});
        suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
        return fid;
    }

    void load() { tracks.setTracks(benchlibrary::markedTracks(*database)); }

    BenchOutcome apply(const BenchApply::GoOn& goOn = {})
    {
        return BenchApply({.database = *database,
                           .history = history,
                           .files = suite.files,
                           .dataFolder = suite.dataFolder(),
                           .library = suite.dbName()})
            .apply(tracks, goOn);
    }

    [[nodiscard]] QString cell(const QString& fid, const QString& column)
    {
        return suite.value(u"select %1 from db_all where FID='%2'"_s.arg(column, fid)).toText();
    }

    test::TempFolder music;
    std::unique_ptr<Database> database = suite.open();
    BenchTracks tracks;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    ListHistory history{*suite.engine, suite.files, suite.clock, *settings, {}};
};

TEST_F(Applying, TheMarkedTracksAreReadOnceInTheOrderOfTheirFiles)
{
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', 7)"_s.arg(one));
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('000000000000', -1)"_s);
    load();
    ASSERT_EQ(tracks.count(), 2);
    EXPECT_EQ(tracks.at(0).fid, one);
    EXPECT_EQ(tracks.at(1).fid, two);
    EXPECT_EQ(tracks.text(0, F::Titel), u"Eins"_s);
    EXPECT_EQ(tracks.at(0).shownPlace(), u"a.mp3"_s);
}

TEST_F(Applying, OnlyWhatWasChangedIsWrittenAndQueued)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    load();
    tracks.change({{0, F::Album, u"O'Platte \"x\""_s}, {0, F::Note, u"4"_s}});
    const BenchOutcome outcome = apply();
    EXPECT_EQ(outcome.written, std::vector<int>{0});
    EXPECT_EQ(outcome.trees, QStringList{u"Album"_s});
    EXPECT_TRUE(outcome.problems.empty());
    EXPECT_EQ(cell(one, u"Album"_s), u"O'Platte \"x\""_s);
    EXPECT_EQ(cell(one, u"Note"_s), u"4"_s);
    EXPECT_EQ(suite.column(u"select FID from db_edit"_s), QStringList{one});
    tracks.setStored(outcome.written);
    tracks.change({{0, F::Note, QString()}});
    EXPECT_EQ(apply().written.size(), 1U);
    EXPECT_TRUE(suite.value(u"select Note from db_all where FID='%1'"_s.arg(one)).isNull());
}

TEST_F(Applying, AllOfItIsOneStepThatIsTakenBack)
{
    settings->SetDbName(suite.dbName());
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    load();
    tracks.change({{0, F::Album, u"Platte"_s}, {1, F::Titel, u"Neu"_s}});
    EXPECT_EQ(apply().written.size(), 2U);
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(cell(one, u"Album"_s), QString());
    EXPECT_EQ(cell(two, u"Titel"_s), u"Zwei"_s);
    EXPECT_FALSE(history.nextUndo().has_value());
}

TEST_F(Applying, AChangeOfSomebodyElseIsNotOverwritten)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    const QString gone = add(u"c.mp3"_s, u"Drei"_s);
    load();
    tracks.change({{0, F::Titel, u"X"_s}, {1, F::Titel, u"Y"_s}, {2, F::Titel, u"Z"_s}});
    suite.execute(u"update db_all set Titel='Anders' where FID='%1'"_s.arg(one));
    suite.execute(u"update db_all set Album='Anders' where FID='%1'"_s.arg(two));
    suite.execute(u"delete from db_all where FID='%1'"_s.arg(gone));
    const BenchOutcome outcome = apply();
    EXPECT_EQ(outcome.written, std::vector<int>{1});
    ASSERT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(outcome.problems[0].fault, BenchFault::ChangedElse);
    EXPECT_EQ(outcome.problems[1].fault, BenchFault::Gone);
    EXPECT_EQ(cell(one, u"Titel"_s), u"Anders"_s);
    EXPECT_EQ(cell(two, u"Titel"_s), u"Y"_s);
    EXPECT_EQ(cell(two, u"Album"_s), u"Anders"_s);
}

TEST_F(Applying, ARenamedFileKeepsItsTrackAndMarksItsLists)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const int list = suite.library.addPlaylist({.tracks = {one}});
    const int other = suite.library.addPlaylist({});
    suite.execute(u"update pl_name set sicherung=false"_s);
    const QByteArray bytes = music.read(u"a.mp3"_s);
    load();
    tracks.change({{0, kBenchPlace, music.file(u"Wer/Platte/01 Eins.mp3"_s)}});
    const BenchOutcome outcome = apply();
    EXPECT_EQ(outcome.renamed, 1);
    EXPECT_EQ(outcome.trees, QStringList{u"Dir"_s});
    EXPECT_EQ(music.read(u"Wer/Platte/01 Eins.mp3"_s), bytes);
    EXPECT_FALSE(suite.files.fileExists(music.file(u"a.mp3"_s)));
    EXPECT_EQ(cell(one, u"Path"_s), music.path() + u"/Wer/Platte/"_s);
    EXPECT_EQ(cell(one, u"DName"_s), u"01 Eins.mp3"_s);
    EXPECT_EQ(suite.column(u"select FID from pl_all where PNID=%1"_s.arg(list)), QStringList{one});
    EXPECT_TRUE(suite.value(u"select sicherung from pl_name where NID=%1"_s.arg(list)).toBool());
    EXPECT_FALSE(suite.value(u"select sicherung from pl_name where NID=%1"_s.arg(other)).toBool());
    // The name alone is nothing that stands in the tag.
    EXPECT_TRUE(suite.column(u"select FID from db_edit"_s).isEmpty());
}

TEST_F(Applying, NamesMoveUpInARow)
{
    const QString one = add(u"1.mp3"_s, u"Eins"_s);
    add(u"2.mp3"_s, u"Zwei"_s);
    load();
    tracks.change(
        {{0, kBenchPlace, music.file(u"2.mp3"_s)}, {1, kBenchPlace, music.file(u"3.mp3"_s)}});
    EXPECT_EQ(apply().renamed, 2);
    EXPECT_EQ(cell(one, u"DName"_s), u"2.mp3"_s);
    EXPECT_EQ(music.read(u"2.mp3"_s), test::simpleMp3(u"Eins"_s, u"Wer"_s));
    EXPECT_EQ(music.read(u"3.mp3"_s), test::simpleMp3(u"Zwei"_s, u"Wer"_s));
}

TEST_F(Applying, TwoFilesSwapTheirNames)
{
    const QString one = add(u"1.mp3"_s, u"Eins"_s);
    const QString two = add(u"2.mp3"_s, u"Zwei"_s);
    load();
    tracks.change(
        {{0, kBenchPlace, music.file(u"2.mp3"_s)}, {1, kBenchPlace, music.file(u"1.mp3"_s)}});
    const BenchOutcome outcome = apply();
    EXPECT_EQ(outcome.renamed, 2);
    EXPECT_TRUE(outcome.problems.empty());
    EXPECT_EQ(cell(one, u"DName"_s), u"2.mp3"_s);
    EXPECT_EQ(cell(two, u"DName"_s), u"1.mp3"_s);
    EXPECT_EQ(music.read(u"2.mp3"_s), test::simpleMp3(u"Eins"_s, u"Wer"_s));
    EXPECT_EQ(music.read(u"1.mp3"_s), test::simpleMp3(u"Zwei"_s, u"Wer"_s));
    EXPECT_EQ(suite.files.names(music.path()).size(), 2);
}

TEST_F(Applying, NamesGoRoundInALongRing)
{
    constexpr int kRing = 7;
    QStringList fids;
    for (int number = 0; number < kRing; ++number) {
        fids.append(add(u"%1.mp3"_s.arg(number), u"Titel %1"_s.arg(number)));
    }
    load();
    std::vector<BenchCell> cells;
    for (int number = 0; number < kRing; ++number) {
        cells.push_back({number, kBenchPlace, music.file(u"%1.mp3"_s.arg((number + 3) % kRing))});
    }
    tracks.change(cells);
    EXPECT_EQ(apply().renamed, kRing);
    for (int number = 0; number < kRing; ++number) {
        const QString name = u"%1.mp3"_s.arg((number + 3) % kRing);
        EXPECT_EQ(cell(fids[number], u"DName"_s), name);
        EXPECT_EQ(music.read(name), test::simpleMp3(u"Titel %1"_s.arg(number), u"Wer"_s));
    }
    EXPECT_EQ(suite.files.names(music.path()).size(), kRing);
}

TEST_F(Applying, WhoWantsTheNameOfOneThatCannotMoveStays)
{
    const QString one = add(u"1.mp3"_s, u"Eins"_s);
    add(u"2.mp3"_s, u"Zwei"_s);
    load();
    music.write(u"3.mp3"_s, "foreign");
    tracks.change(
        {{0, kBenchPlace, music.file(u"2.mp3"_s)}, {1, kBenchPlace, music.file(u"3.mp3"_s)}});
    const BenchOutcome outcome = apply();
    EXPECT_EQ(outcome.renamed, 0);
    EXPECT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(cell(one, u"DName"_s), u"1.mp3"_s);
    EXPECT_EQ(music.read(u"2.mp3"_s), test::simpleMp3(u"Zwei"_s, u"Wer"_s));
    EXPECT_EQ(music.read(u"3.mp3"_s), "foreign");
}

TEST_F(Applying, ANameOfOtherCaseIsTaken)
{
    const QString one = add(u"eins.mp3"_s, u"Eins"_s);
    load();
    tracks.change({{0, kBenchPlace, music.file(u"Eins.mp3"_s)}});
    EXPECT_EQ(apply().renamed, 1);
    EXPECT_EQ(cell(one, u"DName"_s), u"Eins.mp3"_s);
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"Eins.mp3"_s});
}

TEST_F(Applying, AFileInTheWayStaysAndTheTagIsWritten)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    load();
    tracks.change({{0, kBenchPlace, music.file(u"b.mp3"_s)}, {0, F::Album, u"Platte"_s}});
    music.write(u"b.mp3"_s, "foreign");
    const BenchOutcome outcome = apply();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].fault, BenchFault::NotRenamed);
    EXPECT_EQ(music.read(u"b.mp3"_s), "foreign");
    EXPECT_EQ(cell(one, u"DName"_s), u"a.mp3"_s);
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
}

TEST_F(Applying, OfATrackWhoseFileKeepsItsNameTheNameAloneWaits)
{
    add(u"a.mp3"_s, u"Eins"_s);
    load();
    tracks.change({{0, kBenchPlace, music.file(u"b.mp3"_s)}, {0, F::Album, u"Platte"_s}});
    music.write(u"b.mp3"_s, "foreign");
    const BenchOutcome outcome = apply();
    tracks.setStored(outcome.written, outcome.left);
    EXPECT_EQ(tracks.changedCells(), 1);
    suite.files.remove(music.file(u"b.mp3"_s));
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"b.mp3"_s});
}

TEST_F(Applying, AFolderThatCannotBeMadeIsTold)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    music.write(u"x"_s, "no folder");
    load();
    tracks.change({{0, kBenchPlace, music.file(u"x/b.mp3"_s)}});
    const BenchOutcome outcome = apply();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].reason, u"Not a directory"_s);
    EXPECT_EQ(cell(one, u"DName"_s), u"a.mp3"_s);
    EXPECT_TRUE(outcome.written.empty());
}

TEST_F(Applying, WhatIsCancelledIsAsItWas)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    load();
    tracks.change({{0, F::Titel, u"X"_s}, {0, kBenchPlace, music.file(u"neu/b.mp3"_s)}});
    const BenchOutcome outcome = apply([](int done, int) { return done == 0; });
    EXPECT_TRUE(outcome.isCancelled);
    EXPECT_FALSE(outcome.hasChanged());
    EXPECT_EQ(cell(one, u"Titel"_s), u"Eins"_s);
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"a.mp3"_s});
    EXPECT_TRUE(suite.column(u"select FID from db_edit"_s).isEmpty());
}

TEST_F(Applying, AFailingDatabaseLeavesRowsAndFilesAsTheyWere)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    load();
    tracks.change({{0, kBenchPlace, music.file(u"neu.mp3"_s)}, {1, F::Titel, u"X"_s}});
    suite.execute(u"drop table db_edit"_s);
    EXPECT_THROW((void)apply(), DbError);
    EXPECT_EQ(suite.files.names(music.path()), (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    EXPECT_EQ(cell(one, u"DName"_s), u"a.mp3"_s);
}

TEST_F(Applying, EmptiedFoldersGoWhenThatIsAskedFor)
{
    music.write(u"alt/bild.jpg"_s, "x");
    music.write(u"leer/a.mp3"_s, test::simpleMp3(u"T"_s, u"A"_s));
    const QString fid =
        suite.library.add({.Path = music.path() + u"/leer/"_s, .DName = u"a.mp3"_s});
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
    load();
    tracks.change({{0, kBenchPlace, music.file(u"alt/a.mp3"_s)}});
    const BenchOutcome outcome = BenchApply({.database = *database,
                                             .history = history,
                                             .files = suite.files,
                                             .dataFolder = suite.dataFolder(),
                                             .library = suite.dbName(),
                                             .removeEmptyFolders = true})
                                     .apply(tracks);
    EXPECT_EQ(outcome.renamed, 1);
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"alt"_s});
}

TEST_F(Applying, AMappedFileIsRenamedWhereItLies)
{
    music.write(u"da/a.mp3"_s, "x");
    suite.write(u"ChangeDir.conf"_s, u"D:\\Musik ?? %1/da/\n"_s.arg(music.path()).toUtf8());
    const QString fid = suite.library.add({.Path = u"D:\\Musik\\"_s, .DName = u"a.mp3"_s});
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
    load();
    tracks.change({{0, kBenchPlace, u"D:\\Musik\\Neu\\b.mp3"_s}});
    EXPECT_EQ(apply().renamed, 1);
    EXPECT_EQ(suite.files.names(music.file(u"da/Neu"_s)), QStringList{u"b.mp3"_s});
    EXPECT_EQ(cell(fid, u"Path"_s), u"D:\\Musik\\Neu\\"_s);
}

TEST_F(Applying, NewFilesEnterTheLibraryWithWhatWasChanged)
{
    const auto reader = linux_media::makeTagReader();
    music.write(u"neu.mp3"_s, test::simpleMp3(u"Lied"_s, u"Wer"_s));
    const QString file = music.file(u"neu.mp3"_s);
    NewTracks fresh(*database, *settings, suite.files, *reader, suite.clock);
    ASSERT_NE(fresh.read(file).track, nullptr);
    BenchTrack track;
    track.folder = music.path() + u'/';
    track.stored[0] = u"Lied"_s;
    track.stored.back() = file;
    track.now = track.stored;
    tracks.setTracks({track});
    tracks.change({{0, F::Titel, u"Anders"_s}});
    const BenchOutcome outcome = BenchApply({.database = *database,
                                             .history = history,
                                             .files = suite.files,
                                             .dataFolder = suite.dataFolder(),
                                             .library = suite.dbName(),
                                             .newTracks = &fresh})
                                     .apply(tracks);
    EXPECT_EQ(outcome.imported, 1);
    const QString fid = tracks.at(0).fid;
    EXPECT_EQ(cell(fid, u"Titel"_s), u"Anders"_s);
    EXPECT_EQ(cell(fid, u"Interpret"_s), u"Wer"_s);
    EXPECT_EQ(suite.column(u"select FID from db_edit"_s), QStringList{fid});
}

} // namespace
} // namespace melovane
