#include "intake/import_errors.h"
#include "playlistfiles/m3u_fixture.h"

#include <QDir>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class M3uImportTest : public M3uTest
{
protected:
    /// One loaded row with all that an entry takes over.
    QString loadedRow()
    {
        return rows(u"select FID, Volume, Pitch, FrameStart, FrameStop, MixTime, MixIn, MixOut, eq "
                    "from TEMP_PLImportM3U"_s)
            .join(u';');
    }

    Pnid party = Pnid(lists.library.addPlaylist({.Name = u"Party"_s}));
};

// ---- which tracks a list leads to

TEST_F(M3uImportTest, APlainListGivesOneRowPerPath)
{
    const QString a = addTrack(u"a.mp3"_s);
    const QString b = addTrack(u"b.mp3"_s);
    EXPECT_EQ(load("#EXTM3U\n# comment\n" + music.file(u"a.mp3"_s).toUtf8() + "\n" +
                   music.file(u"b.mp3"_s).toUtf8() + "\n"),
              0);
    EXPECT_EQ(rows(u"select FID, SID, PNID from TEMP_PLImportM3U order by sid"_s),
              (QStringList{a + u"|1|0"_s, b + u"|2|0"_s}));
}

TEST_F(M3uImportTest, ARelativePathIsSearchedBelowTheFolderOfTheList)
{
    addTrack(u"sub/a.mp3"_s);
    addTrack(u"b.mp3"_s);
    EXPECT_EQ(load("sub/a.mp3\nsub\\a.mp3\nb.mp3\n./b.mp3\nsub/../b.mp3\nSUB/A.MP3\n"), 0);
    EXPECT_EQ(loaded(), (QStringList{u"a.mp3"_s, u"a.mp3"_s, u"b.mp3"_s, u"b.mp3"_s, u"b.mp3"_s,
                                     u"a.mp3"_s}));
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 2);
}

TEST_F(M3uImportTest, ARelativePathIsNeverSearchedInTheFolderTheProgramRunsIn)
{
    addTrack(u"sub/a.mp3"_s);
    const QString former = QDir::currentPath();
    QDir::setCurrent(music.path());
    EXPECT_EQ(m3u.LoadPlaylist(lists.write(u"list.m3u"_s, "sub/a.mp3\n")), 1);
    QDir::setCurrent(former);
}

TEST_F(M3uImportTest, AKnownIdentifierNeedsNoFileAndTheListsOwnValuesCount)
{
    lists.library.add({.FID = u"800000000001"_s, .Path = u"/gone/"_s, .DName = u"x.mp3"_s});
    EXPECT_EQ(load("#MLV:FID=800000000001\n#MLV:VOL= 5 |-3 |128| 216000 \n"
                   "#MLV:MIX= 10 | 20 | 5000 |1,2,3,4,5|5,4,3,2,1|7,7\nZ:\\nowhere\\y.mp3\n"),
              0);
    EXPECT_EQ(loadedRow(), u"800000000001|5|-3|10|20|5000|1,2,3,4,5|5,4,3,2,1|7,7"_s);
    EXPECT_EQ(loaded(), QStringList{u"y.mp3"_s});
}

TEST_F(M3uImportTest, ATrackFoundByItsPathTakesTheValuesOfTheLibrary)
{
    const QString fid = addTrack(u"a.mp3"_s);
    lists.execute(u"update db_all set FrameStart=3, FrameStop=44, Volume=2, Pitch=1, MixTime=9, "
                  "MixIn='in', MixOut='out', eq='eq'"_s);
    EXPECT_EQ(load("#MLV:FID=899999999999\n#MLV:VOL= 5 | 5 |1| 5 \n"
                   "#MLV:MIX= 5 | 5 | 5 |a|b|c\na.mp3\n"),
              0);
    EXPECT_EQ(loadedRow(), fid + u"|2|1|3|44|9|in|out|eq"_s);
}

TEST_F(M3uImportTest, ANullValueOfTheLibraryIsEmptyOrZeroAndAZeroStopIsTheWholeLength)
{
    const QString fid = addTrack(u"a.mp3"_s);
    lists.execute(u"update db_all set FrameStop=0, Volume=Null, MixIn=Null, DTimeMsec=216000"_s);
    EXPECT_EQ(load("a.mp3\n"), 0);
    EXPECT_EQ(loadedRow(), fid + u"|0|0|0|8269|0|||"_s); // 216000 / 26.12245
}

TEST_F(M3uImportTest, ForeignPathsAreFoundThroughTheFoldersThatTheUserMapped)
{
    addTrack(u"Rock/ä b.mp3"_s);
    lists.write(u"ChangeDir.conf"_s, "C:\\Musik ?? " + music.path().toUtf8() +
                                         "\n\\\\srv\\share ?? " + music.path().toUtf8() + "\n");
    EXPECT_EQ(load("C:\\Musik\\Rock\\ä b.mp3\n\\\\srv\\share\\rock\\Ä B.mp3\n"
                   "c:/musik/ROCK/ä b.MP3\nfile:///C:/Musik/Rock/%C3%A4%20b.mp3\n"
                   "file://srv/share/Rock/%E4%20b.mp3\n"),
              0);
    EXPECT_EQ(loaded(), QStringList(5, u"ä b.mp3"_s));
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 1);
}

TEST_F(M3uImportTest, AnAddressAndAnEncodedPathLeadToTheFile)
{
    addTrack(u"a b.mp3"_s);
    const QByteArray folder = music.path().toUtf8();
    EXPECT_EQ(load("file://" + folder + "/a%20b.mp3\na%20b.mp3\n" + folder + "/a b.mp3\n"), 0);
    EXPECT_EQ(loaded().size(), 3);
}

TEST_F(M3uImportTest, ATrackThatTheLibraryStillKeepsUnderTheForeignPathIsNotEnteredTwice)
{
    addFile(u"x.mp3"_s);
    const QString fid = lists.library.add({.Path = u"C:\\Musik\\"_s, .DName = u"x.mp3"_s});
    lists.write(u"ChangeDir.conf"_s, "C:\\Musik ?? " + music.path().toUtf8() + "\n");
    EXPECT_EQ(load("C:\\Musik\\x.mp3\n"), 0);
    EXPECT_EQ(lists.column(u"select fid from db_all"_s), QStringList{fid});
    EXPECT_EQ(lists.column(u"select fid from TEMP_PLImportM3U"_s), QStringList{fid});
}

TEST_F(M3uImportTest, AFileWhoseNameHoldsABarIsFoundAllTheSame)
{
    addTrack(u"a|b.mp3"_s);
    EXPECT_EQ(load("a|b.mp3\n"), 0);
    EXPECT_EQ(loaded(), QStringList{u"a|b.mp3"_s});
}

TEST_F(M3uImportTest, ATrackWhoseFileIsGoneIsFoundAsLongAsItsFolderIsThere)
{
    const QString file = addFile(u"sub/other.mp3"_s);
    lists.library.add({.Path = music.file(u"sub/"_s), .DName = u"gone.mp3"_s});
    EXPECT_EQ(load("sub/gone.mp3\n"), 0);
    EXPECT_EQ(loaded(), QStringList{u"gone.mp3"_s});
}

// ---- new tracks

TEST_F(M3uImportTest, ATrackThatTheLibraryLacksIsReadFromItsTagsAndEntersIt)
{
    addFile(u"New.mp3"_s);
    QStringList read;
    m3u.events.ProgressImport = [&](const QString& file) { read.append(file); };
    EXPECT_EQ(load("New.mp3\nNew.mp3\n"), 0);
    EXPECT_EQ(read, QStringList{music.file(u"New.mp3"_s)});
    EXPECT_EQ(rows(u"select Titel, Interpret, Path, DName, FrameStart, FrameStop from db_all"_s),
              QStringList{u"New.mp3|Artist|%1|New.mp3|0|20"_s.arg(music.path() + u'/')});
    EXPECT_EQ(lists
                  .column(u"select t.FID from TEMP_PLImportM3U as t, db_all where "
                          "t.FID=db_all.FID"_s)
                  .size(),
              2);
}

TEST_F(M3uImportTest, AnIdentifierInTheTagOfANewFileIsKept)
{
    addFile(u"x.mp3"_s, u"800000000777"_s);
    EXPECT_EQ(load("#MLV:FID=800000000777\n#MLV:MIX= 3 | 7 | 0 |a|b|c\nx.mp3\n"), 0);
    // The file says that it is the very track of the list, so the list's values are its own.
    EXPECT_EQ(loadedRow(), u"800000000777|0|0|3|7|0|a|b|c"_s);
}

TEST_F(M3uImportTest, ANewTrackStopsAtItsEndWhateverAListOfAnotherTrackSays)
{
    addFile(u"x.mp3"_s);
    EXPECT_EQ(load("#MLV:FID=800000000777\n#MLV:MIX= 3 | 7 | 0 |a|b|c\nx.mp3\n"), 0);
    EXPECT_TRUE(loadedRow().endsWith(u"|0|0|3|20|0|a|b|c"_s)) << loadedRow().toStdString();
}

TEST_F(M3uImportTest, TwoFilesWithTheSameIdentifierAreTwoTracks)
{
    addFile(u"a.mp3"_s, u"800000000777"_s);
    addFile(u"b.mp3"_s, u"800000000777"_s);
    EXPECT_EQ(load("a.mp3\nb.mp3\n"), 0);
    EXPECT_EQ(lists.value(u"select count(*) from (select distinct fid from db_all)"_s).toLong(), 2);
}

// ---- failures

TEST_F(M3uImportTest, EachFailureIsOneLineOfTheLogAndTheGoodLinesComeIn)
{
    addTrack(u"good.mp3"_s);
    music.write(u"text.mp3"_s, "no sound at all");
    music.write(u"empty.mp3"_s, "");
    EXPECT_EQ(load("Q:\\none\\x.mp3\nmissing.mp3\ngood.mp3\ntext.mp3\nempty.mp3\n"), 4);
    EXPECT_EQ(loaded(), QStringList{u"good.mp3"_s});
    EXPECT_EQ(told, (QStringList{u"10001 FindFile Q:\\none\\x.mp3"_s,
                                 u"10002 FindFile "_s + music.file(u"missing.mp3"_s),
                                 u"10003 ImportFile "_s + music.file(u"text.mp3"_s),
                                 u"10004 ImportFile "_s + music.file(u"empty.mp3"_s)}));
    const QList<QByteArray> lines = log().split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0], "14.03.2026 15:09:26         10001         Path nicht gefunden         "
                        "MlvM3U.FindFile             Q:\\none\\x.mp3");
    EXPECT_TRUE(lines[3].contains("Fehlerhafe MP3"));
}

TEST_F(M3uImportTest, TheLogGrowsFromLoadToLoad)
{
    EXPECT_EQ(load("x.mp3\n"), 1);
    EXPECT_EQ(load("y.mp3\nz.mp3\n"), 2);
    EXPECT_EQ(log().count('\n'), 3);
}

TEST_F(M3uImportTest, APathOfAMillionLettersIsShortenedInTheLog)
{
    EXPECT_EQ(load('/' + QByteArray(1'000'000, 'x') + "/end.mp3\n"), 1);
    EXPECT_EQ(log().count('\n'), 1);
    EXPECT_LT(log().size(), 5000);
    EXPECT_TRUE(log().contains("/end.mp3"));
}

TEST_F(M3uImportTest, WhereTheProgramFolderIsReadOnlyTheLogStandsBesideTheSettings)
{
    const TempFolder settings;
    MlvM3U other({*lists.engine,
                  *lists.settings,
                  lists.files,
                  lists.locator,
                  *reader,
                  lists.clock,
                  lists.history,
                  lists.snapshots,
                  {u"/proc/no such folder"_s, settings.path()}});
    EXPECT_EQ(other.LoadPlaylist(writeList("x.mp3\n")), 1);
    EXPECT_EQ(other.logFile(), settings.file(u"M3UImportError.log"_s));
    EXPECT_EQ(settings.read(u"M3UImportError.log"_s).count('\n'), 1);
}

TEST_F(M3uImportTest, AListOnADiscRaises10005ForAnUnknownTrackAndAddsNoRowForIt)
{
    VolumeSources sources;
    sources.mountTable =
        lists
            .write(u"mounts"_s, "1 0 0:1 / / rw - overlay overlay rw\n2 1 11:0 / " +
                                    music.path().toUtf8() + " ro - iso9660 /dev/sr0 ro\n")
            .toUtf8();
    LinuxFiles files(sources);
    MlvM3U disc({*lists.engine,
                 *lists.settings,
                 files,
                 lists.locator,
                 *reader,
                 lists.clock,
                 lists.history,
                 lists.snapshots,
                 {lists.dataFolder()}});
    disc.events = m3u.events;
    addFile(u"sub/x.mp3"_s);
    lists.library.add({.FID = u"800000000001"_s});
    EXPECT_EQ(disc.LoadPlaylist(writeList("sub/x.mp3\n#MLV:FID=800000000001\ny.mp3\n")), 1);
    EXPECT_EQ(told, QStringList{u"10005 SaveData sub/x.mp3"_s});
    EXPECT_EQ(lists.column(u"select fid from TEMP_PLImportM3U"_s), QStringList{u"800000000001"_s});
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 1);
}

TEST_F(M3uImportTest, AListThatIsMissingOrAFolderIsAFailureOfTheFile)
{
    EXPECT_EQ(m3u.LoadPlaylist(music.file(u"gone.m3u"_s)), 1);
    EXPECT_EQ(m3u.LoadPlaylist(music.path()), 1);
    EXPECT_TRUE(told[0].startsWith(u"20002 LoadPlaylist ! "_s));
    EXPECT_EQ(m3u.Append(party), 0);
}

TEST_F(M3uImportTest, WithoutTheScratchTableTheFailureIsToldAndNothingElseChanges)
{
    addFile(u"new.mp3"_s);
    lists.execute(u"drop table TEMP_PLImportM3U"_s);
    EXPECT_EQ(load("new.mp3\n"), 1);
    EXPECT_TRUE(told.at(0).startsWith(u"20002 LoadPlaylist ! "_s));
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 0);
    EXPECT_EQ(m3u.Append(party), 0);
}

TEST_F(M3uImportTest, WhatAnEarlierImportLeftIsNotInsertedWhenALoadFails)
{
    addFile(u"new.mp3"_s);
    ASSERT_EQ(load("new.mp3\n"), 0);
    ASSERT_EQ(m3u.loaded(), 1);
    // The scratch table outlives the program; the next one has loaded nothing yet.
    MlvM3U next{{*lists.engine,
                 *lists.settings,
                 lists.files,
                 lists.locator,
                 *reader,
                 lists.clock,
                 lists.history,
                 lists.snapshots,
                 {lists.dataFolder()}}};
    EXPECT_EQ(next.Append(party), 0);
    EXPECT_EQ(next.Insert(Sid{1}, party), 0);
    EXPECT_EQ(m3u.Append(party), 1);
}

TEST_F(M3uImportTest, ALineOfEndlessFoldersIsSkippedAtOnce)
{
    addFile(u"new.mp3"_s);
    EXPECT_EQ(load(QByteArray("a/").repeated(300'000) + "x.mp3\n\tnew.mp3 \t\n"), 1);
    EXPECT_EQ(loaded(), QStringList{u"new.mp3"_s});
}

TEST(M3uErrorTexts, EachCodeHasItsTextAndAnUnknownOneSaysSo)
{
    EXPECT_EQ(MlvM3U::GetMessageText(10001), u"Path nicht gefunden"_s);
    EXPECT_EQ(MlvM3U::GetMessageText(10004), u"Fehlerhafe MP3"_s);
    EXPECT_EQ(MlvM3U::GetMessageText(10005),
              u"Die Datei kann an dieser Stelle nicht von CDROM importiert werden"_s);
    EXPECT_EQ(MlvM3U::GetMessageText(40000), u"Unbekannter Fehler"_s);
    EXPECT_EQ(MlvM3U::GetMessageText(1), u"MessageText - Undef"_s);
}

// ---- into a list

TEST_F(M3uImportTest, AnImportIntoAnEmptyListStartsAtSid2AndElseOneAboveTheHighest)
{
    lists.addTracks(2);
    const QByteArray both = "#MLV:FID=800000000001\na\n#MLV:FID=800000000002\nb\n";
    ASSERT_EQ(load(both), 0);
    EXPECT_EQ(m3u.Append(party), 2);
    EXPECT_EQ(lists.entries(party), u"2:1 3:2"_s);
    EXPECT_EQ(m3u.Append(party), 2);
    EXPECT_EQ(lists.entries(party), u"2:1 3:2 4:1 5:2"_s);
    EXPECT_EQ(rows(u"select anzahl, sicherung, updatetime from pl_name"_s),
              QStringList{u"4|-1|14.03.2026 15:09:26"_s});
}

TEST_F(M3uImportTest, AnInsertLeavesOnePlaceFreeAndItsLastEntryMeetsTheFirstThatWasMoved)
{
    lists.addTracks(4);
    const Pnid list = lists.addList({1, 5, 9, 10});
    ASSERT_EQ(load("#MLV:FID=800000000001\na\n#MLV:FID=800000000003\nb\n"), 0);
    EXPECT_EQ(m3u.Insert(Sid{5}, list), 2);
    // The entry from 5 stands at 5 + 2 + 1, as does the second new one; the younger goes first.
    EXPECT_EQ(lists.entries(list), u"1:1 7:1 8:3 8:2 9:3 10:4"_s);
    EXPECT_EQ(lists.entryCount(list), 6);
    const QStringList saved =
        lists.column(u"select FID from vpl_save where nid="_s + QString::number(numberOf(list)));
    EXPECT_EQ(saved, (QStringList{Lists::fid(1), Lists::fid(1), Lists::fid(3), Lists::fid(2),
                                  Lists::fid(3), Lists::fid(4)}));
}

TEST_F(M3uImportTest, PositionsStopAtTheLastOneAndKeepTheOrderOfTheFile)
{
    lists.addTracks(4);
    const Pnid list = lists.addList({2147483646});
    ASSERT_EQ(
        load("#MLV:FID=800000000004\na\n#MLV:FID=800000000003\nb\n#MLV:FID=800000000002\nc\n"), 0);
    EXPECT_EQ(m3u.Append(list), 3);
    EXPECT_EQ(lists.entries(list), u"2147483646:1 2147483647:4 2147483647:3 2147483647:2"_s);
}

TEST_F(M3uImportTest, NewEntriesHaveTheActionThatTheCallerSets)
{
    lists.addTracks(1);
    ASSERT_EQ(load("#MLV:FID=800000000001\na\n"), 0);
    m3u.Append(party);
    m3u.SetAktion(kAktionJinglePlay);
    m3u.Append(party);
    EXPECT_EQ(lists.column(u"select aktion from pl_all order by sid"_s),
              (QStringList{u"0"_s, u"3"_s}));
}

TEST_F(M3uImportTest, NothingLoadedChangesNothing)
{
    ASSERT_EQ(load("# nothing\n"), 0);
    EXPECT_EQ(m3u.Append(party), 0);
    EXPECT_EQ(m3u.Insert(Sid{1}, party), 0);
    EXPECT_EQ(lists.value(u"select sicherung from pl_name"_s).toLong(), 0);
    EXPECT_FALSE(lists.history.nextUndo());
}

TEST_F(M3uImportTest, AListThatIsGoneGetsNoEntries)
{
    lists.addTracks(1);
    ASSERT_EQ(load("#MLV:FID=800000000001\na\n"), 0);
    EXPECT_EQ(m3u.Append(Pnid{4711}), 0);
    EXPECT_EQ(lists.value(u"select count(*) from pl_all"_s).toLong(), 0);
}

TEST_F(M3uImportTest, AnImportIsOneStepThatCanBeUndoneAndRedone)
{
    lists.addTracks(4);
    const Pnid list = lists.addList({1, 2, 3});
    ASSERT_EQ(load("#MLV:FID=800000000004\na\n#MLV:FID=800000000004\nb\n"), 0);
    m3u.Insert(Sid{2}, list);
    const QString after = lists.entries(list);
    ASSERT_TRUE(lists.history.nextUndo());
    EXPECT_EQ(lists.history.nextUndo()->action, ListAction::Import);
    EXPECT_EQ(lists.history.nextUndo()->count, 2);
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"1:1 2:2 3:3"_s);
    EXPECT_EQ(lists.history.redo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(lists.entries(list), after);
}

TEST_F(M3uImportTest, AListMadeByAnImportIsUndoneAsAWhole)
{
    lists.addTracks(2);
    const int group = lists.library.addGroup(u"G"_s);
    ASSERT_EQ(load("#MLV:FID=800000000001\na\n#MLV:FID=800000000002\nb\n"), 0);
    const Pnid list = m3u.importAsNewList(u"O'Neill"_s, GroupId(group));
    const QString row = u"select name, grid, sid, anzahl, activ, sicherung from pl_name where "
                        "nid=%1"_s.arg(numberOf(list));
    const QStringList whole{u"O'Neill|%1|%2|2|-1|-1"_s.arg(group).arg(numberOf(list))};
    EXPECT_EQ(rows(row), whole);
    EXPECT_EQ(lists.entries(list), u"2:1 3:2"_s);
    EXPECT_EQ(lists.history.nextUndo()->listName, u"O'Neill"_s);
    EXPECT_EQ(lists.history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(rows(row), QStringList());
    EXPECT_EQ(lists.entries(list), QString());
    EXPECT_EQ(lists.history.redo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(rows(row), whole);
    EXPECT_EQ(lists.entries(list), u"2:1 3:2"_s);
}

TEST_F(M3uImportTest, ASnapshotIsTakenWhereTheUserAskedForIt)
{
    lists.write(u"Undo.conf"_s, "Appen.Data.From.M3U.an\nInsert.Data.From.M3U.an\n");
    lists.addTracks(2);
    const Pnid list = lists.addList({1, 2});
    ASSERT_EQ(load("#MLV:FID=800000000001\na\n"), 0);
    m3u.Append(list);
    m3u.Insert(Sid{1}, list);
    EXPECT_EQ(
        lists.column(u"select UndoPos from TEMP_PL_UNDO order by UndoID, SID"_s),
        (QStringList{u"Appen.Data.From.M3U"_s, u"Appen.Data.From.M3U"_s, u"Insert.Data.From.M3U"_s,
                     u"Insert.Data.From.M3U"_s, u"Insert.Data.From.M3U"_s}));
}

// ---- hostile and large lists

TEST_F(M3uImportTest, HostileValuesStayValues)
{
    lists.library.add({.FID = u"800000000001"_s});
    const QByteArray longText(100'000, 'x');
    EXPECT_EQ(load("#MLV:FID=1' or '1'='1\n#MLV:TIT=';drop table db_all;--|\"|%\n/x'y\"[*].mp3\n"
                   "#MLV:FID=800000000001\n#MLV:VOL=99999999999999999999|-99999999999|x|1e9\n"
                   "#MLV:MIX=0x10|--1|9|" +
                   longText + "|';--|" + longText + "\n" + longText + "\n"),
              1);
    EXPECT_EQ(rows(u"select FID, Volume, Pitch, FrameStart, FrameStop, len(MixIn), MixOut "
                   "from TEMP_PLImportM3U"_s),
              QStringList{u"800000000001|2147483647|-2147483648|0|0|255|';--"_s});
    EXPECT_EQ(m3u.Append(party), 1);
}

TEST_F(M3uImportTest, AnyBytesLeaveTheGoodLinesAndTheLibraryAsItIs)
{
    addTrack(u"good.mp3"_s);
    QByteArray noise("\x00\xFF\xFE\x00\n\xC3\x28|\x80\r\x00#MLV:\xFF\n", 18);
    noise += "good.mp3\n" + QByteArray("\x01\x02\x00", 3).repeated(1000) + "\ngood.mp3";
    EXPECT_GT(load(noise), 0);
    EXPECT_EQ(loaded(), QStringList(2, u"good.mp3"_s));
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 1);
}

TEST_F(M3uImportTest, AListCanBeGivenUpAndThenNothingHasChanged)
{
    addFile(u"new.mp3"_s);
    QByteArray many;
    for (int i = 0; i < 20'000; ++i) {
        many += "new.mp3\nmissing" + QByteArray::number(i) + ".mp3\n";
    }
    int asked = 0;
    m3u.events.goOn = [&](qint64 done, qint64 size) {
        EXPECT_EQ(size, many.size());
        EXPECT_LE(done, size);
        return ++asked < 2;
    };
    load(many);
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(m3u.wasGivenUp());
    EXPECT_EQ(m3u.Append(party), 0);
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 0);
    EXPECT_EQ(lists.value(u"select count(*) from TEMP_PLImportM3U"_s).toLong(), 0);
}

TEST_F(M3uImportTest, AListOfManyLinesIsReadInPortionsInItsOrder)
{
    lists.addTracks(1700);
    QByteArray many;
    QStringList expected;
    for (int track = 1; track <= 1700; ++track) {
        many += "#MLV:FID=" + Lists::fid(track).toUtf8() + "\r\n/x/" + QByteArray::number(track) +
                ".mp3\r\n";
        expected.append(u"%1:%2"_s.arg(track + 1).arg(track));
    }
    ASSERT_EQ(load(many), 0);
    EXPECT_EQ(m3u.Append(party), 1700);
    EXPECT_EQ(lists.entries(party), expected.join(u' '));
}

TEST_F(M3uImportTest, ThousandsOfNewFilesOfOneListGetIdentifiersOfTheirOwn)
{
    constexpr int kFiles = 2500;
    QByteArray many;
    for (int i = 0; i < kFiles; ++i) {
        many += addFile(u"%1.mp3"_s.arg(i)).toUtf8() + "\n";
    }
    EXPECT_EQ(load(many), 0); // the clock of the test stands
    EXPECT_EQ(m3u.Append(party), kFiles);
    EXPECT_EQ(lists.column(u"select distinct FID from db_all"_s).size(), kFiles);
    EXPECT_EQ(
        lists.value(u"select count(*) from pl_all inner join db_all on pl_all.FID=db_all.FID"_s)
            .toLong(),
        kFiles);
}

TEST_F(M3uImportTest, AFileThatTheListNamesThroughALinkIsTheTrackThatTheLibraryHas)
{
    const QString fid = addTrack(u"a.mp3"_s);
    lists.execute(u"update db_all set MixTime=1234"_s);
    addFile(u"new.mp3"_s);
    TempFolder elsewhere;
    const QString link = elsewhere.file(u"Musik"_s);
    ASSERT_TRUE(QFile::link(music.path(), link));
    ASSERT_EQ(
        load((link + u"/a.mp3\n"_s + link + u"/new.mp3\n"_s + music.file(u"new.mp3"_s)).toUtf8()),
        0);
    EXPECT_EQ(rows(u"select FID, MixTime from TEMP_PLImportM3U order by SID"_s).first(),
              fid + u"|1234"_s);
    const QStringList fids = lists.column(u"select FID from TEMP_PLImportM3U order by SID"_s);
    ASSERT_EQ(fids.size(), 3);
    EXPECT_EQ(fids[1], fids[2]);
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 2);
}

} // namespace
} // namespace melovane::test
