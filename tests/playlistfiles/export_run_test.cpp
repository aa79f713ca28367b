#include "playlistfiles/export_fixture.h"
#include "playlistfiles/template_path.h"

#include <QFile>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using End = ExportResult::End;
using Reason = ExportFailure::Reason;

namespace {

class PlaylistExport : public test::ExportFixture
{};

TEST_F(PlaylistExport, CopiesEveryTrackByTheTemplateAndListsTheCopiesByRelativePath)
{
    const QString first =
        addTrack({.Titel = u"Licht"_s, .Interpret = u"Mara"_s, .Genre = u"House"_s}, "one");
    const QString second =
        addTrack({.Titel = u"Meer"_s, .Interpret = u"Jonte"_s, .Genre = u"Pop"_s}, "two");
    addList({first, second});
    const ExportResult result = run(u"%G/%TP_%I - %N"_s);
    EXPECT_EQ(result.end, End::Done);
    EXPECT_EQ(result.copied, 2);
    EXPECT_TRUE(result.failures.empty());
    EXPECT_EQ(readCopy(u"House/01_Mara - Licht.mp3"_s), "one");
    EXPECT_EQ(readCopy(u"Pop/02_Jonte - Meer.mp3"_s), "two");
    EXPECT_EQ(result.listFile, target + u"/Hauptset.m3u"_s);
    EXPECT_EQ(
        QString::fromUtf8(readCopy(u"Hauptset.m3u"_s)).section(u'\n', 1).toStdString(),
        u"#MLV:VER=1.0\r\n"
        "#MLV:FID=%1\r\n#MLV:TIT=Licht|Mara|House\r\n#MLV:VOL= 0 | 0 |Null| 216000 \r\n"
        "#MLV:MIX= 0 | 0 | 0 |Null|Null|Null\r\nHouse/01_Mara - Licht.mp3\r\n"
        "#MLV:FID=%2\r\n#MLV:TIT=Meer|Jonte|Pop\r\n#MLV:VOL= 0 | 0 |Null| 216000 \r\n"
        "#MLV:MIX= 0 | 0 | 0 |Null|Null|Null\r\nPop/02_Jonte - Meer.mp3\r\n"_s.arg(first, second)
            .toStdString());
    EXPECT_EQ(progress, (QStringList{u"01_Mara - Licht 1/2"_s, u"02_Jonte - Meer 2/2"_s}));
}

TEST_F(PlaylistExport, WithoutTheDataFlagTheListHoldsPathsAlone)
{
    addList({addTrack({.Titel = u"Licht"_s})});
    withData = false;
    (void)run(u"%N"_s);
    EXPECT_EQ(readCopy(u"Hauptset.m3u"_s), "Licht.mp3\r\n");
}

TEST_F(PlaylistExport, ANullAlbumIsLeftOutSoTheFileLandsInTheGenreFolder)
{
    const QString fid = addTrack({.Titel = u"Licht"_s, .Genre = u"House"_s});
    suite.execute(u"update db_all set Album=null where fid='%1'"_s.arg(fid));
    addList({fid});
    (void)run(u"%G/%A/%O"_s);
    EXPECT_EQ(copies(), QStringList{u"House/Licht.mp3"_s});
}

TEST_F(PlaylistExport, ASlashInATitleGivesALineAndNoNewFolder)
{
    addList({addTrack({.Titel = u"AC/DC"_s, .DName = u"x.mp3"_s})});
    (void)run(u"%N"_s);
    EXPECT_EQ(copies(), QStringList{u"AC_DC.mp3"_s});
}

TEST_F(PlaylistExport, AHundredAndFiftyRowsHaveThreeDigitsAndFiveHaveTwo)
{
    QStringList tracks;
    for (int number = 0; number < 150; ++number) {
        tracks.append(addTrack({.Titel = QString::number(number)}));
    }
    addList(tracks);
    (void)run(u"%TP"_s);
    EXPECT_EQ(copies().size(), 150);
    EXPECT_EQ(copies().first(), u"001.mp3"_s);
    EXPECT_EQ(copies().last(), u"150.mp3"_s);
    target += u"/few"_s;
    files.makeFolders(target);
    addList(tracks.first(5));
    (void)run(u"%TP"_s);
    EXPECT_EQ(copies(),
              (QStringList{u"01.mp3"_s, u"02.mp3"_s, u"03.mp3"_s, u"04.mp3"_s, u"05.mp3"_s}));
}

TEST_F(PlaylistExport, TwoRowsWithTrackZeroTakeTheNextCounterValues)
{
    const QString first = addTrack({.Titel = u"a"_s});
    const QString second = addTrack({.Titel = u"b"_s});
    const QString third = addTrack({.Titel = u"c"_s});
    setTrackNumber(first, u"0"_s);
    setTrackNumber(second, u"9"_s);
    setTrackNumber(third, u"0"_s);
    addList({first, second, third});
    (void)run(u"%TO %N"_s);
    EXPECT_EQ(copies(), (QStringList{u"01 a.mp3"_s, u"02 c.mp3"_s, u"09 b.mp3"_s}));
}

TEST_F(PlaylistExport, OfTwoRowsWithTheSamePathTheSecondReplacesTheFirstAndBothLinesStay)
{
    addList({addTrack({.Titel = u"gleich"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"gleich"_s, .DName = u"b.mp3"_s}, "second")});
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(copies(), QStringList{u"gleich.mp3"_s});
    EXPECT_EQ(readCopy(u"gleich.mp3"_s), "second");
    EXPECT_EQ(listed(), (QStringList{u"gleich.mp3"_s, u"gleich.mp3"_s}));
    EXPECT_EQ(result.replaced, QStringList{u"gleich.mp3"_s}) << "the user hears of it";
}

TEST_F(PlaylistExport, ACopyThatFailsReplacesNothingAndIsNotToldAsIfItHad)
{
    addList({addTrack({.Titel = u"gleich"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"gleich"_s, .DName = u"b.mp3"_s}, "second")});
    loop.onTurn = [this] {
        files.broken = files.fileExists(target + u"/gleich.mp3"_s) ? u"gleich.mp3"_s : QString();
    };
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.failures.size(), 1U);
    EXPECT_TRUE(result.replaced.isEmpty());
    EXPECT_EQ(readCopy(u"gleich.mp3"_s), "first");
}

TEST_F(PlaylistExport, OneTrackTwiceInTheListIsNoLoss)
{
    const QString fid = addTrack({.Titel = u"Licht"_s});
    addList({fid, fid});
    const ExportResult result = run(u"%N"_s);
    EXPECT_TRUE(result.replaced.isEmpty());
    EXPECT_EQ(result.copied, 2);
}

TEST_F(PlaylistExport, NamesThatDifferInCaseAloneAreTwoFilesWhereTheVolumeKnowsCase)
{
    addList({addTrack({.Titel = u"LICHT"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"licht"_s, .DName = u"b.mp3"_s}, "second")});
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(copies(), (QStringList{u"LICHT.mp3"_s, u"licht.mp3"_s}));
    EXPECT_EQ(readCopy(u"LICHT.mp3"_s), "first");
    EXPECT_TRUE(result.replaced.isEmpty());
}

TEST_F(PlaylistExport, OfNamesThatDifferInCaseAThirdThatReplacesTheFirstIsTold)
{
    addList({addTrack({.Titel = u"LICHT"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"licht"_s, .DName = u"b.mp3"_s}, "second"),
             addTrack({.Titel = u"LICHT"_s, .DName = u"c.mp3"_s}, "third"),
             addTrack({.Titel = u"Licht"_s, .DName = u"d.mp3"_s}, "fourth"),
             addTrack({.Titel = u"licht"_s, .DName = u"b2.mp3"_s}, "fifth")});
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(copies(), (QStringList{u"LICHT.mp3"_s, u"Licht.mp3"_s, u"licht.mp3"_s}));
    EXPECT_EQ(readCopy(u"LICHT.mp3"_s), "third");
    EXPECT_EQ(readCopy(u"licht.mp3"_s), "fifth");
    EXPECT_EQ(result.replaced, (QStringList{u"LICHT.mp3"_s, u"licht.mp3"_s}));
}

TEST_F(PlaylistExport, WhereTheVolumeDoesNotTellCaseApartEachReplacementIsToldOnce)
{
    addList({addTrack({.Titel = u"LICHT"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"licht"_s, .DName = u"b.mp3"_s}, "second"),
             addTrack({.Titel = u"Licht"_s, .DName = u"c.mp3"_s}, "third")});
    // The copies have one identity, as on such a volume.
    files.foldsCaseBelow = target;
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.replaced, (QStringList{u"licht.mp3"_s, u"Licht.mp3"_s}));
}

TEST_F(PlaylistExport, TheCopyIsCalledMp3WhateverTheSourceWas)
{
    addList({addTrack({.DName = u"Licht.MP2"_s}, "sound")});
    (void)run(u"%O"_s);
    EXPECT_EQ(readCopy(u"Licht.mp3"_s), "sound");
}

TEST_F(PlaylistExport, HostileTagsNeverLeaveTheTargetFolder)
{
    const QStringList titles = {u".."_s,
                                u"../../x"_s,
                                u"/etc/passwd"_s,
                                u"..\\..\\y"_s,
                                u"\U0001F3B5"_s.repeated(50),
                                u"a\nb"_s,
                                u"con. . "_s,
                                u"it's \"quoted\" [*]"_s};
    QStringList tracks;
    for (const QString& title : titles) {
        tracks.append(addTrack({.Titel = title,
                                .Interpret = title,
                                .Album = title,
                                .Genre = title,
                                .DName = u"%1.mp3"_s.arg(tracks.size())}));
    }
    addList(tracks, u"../Liste: \"1\"/2"_s);
    const QStringList before = files.names(suite.dataFolder());
    for (const QString& text : Template2Path::offered()) {
        const ExportResult result = run(text);
        EXPECT_EQ(result.copied, titles.size()) << text.toStdString();
        EXPECT_EQ(result.listFile, target + u"/_._Liste_ _1__2.m3u"_s);
        EXPECT_TRUE(files.fileExists(result.listFile));
    }
    (void)run(u"../../%N/../%A"_s);
    EXPECT_EQ(files.names(suite.dataFolder()), before);
}

TEST_F(PlaylistExport, AMissingFileIsToldAndTheOthersAreCopied)
{
    addList(
        {addTrack({.Titel = u"a"_s}), addTrack({.Titel = u"b"_s}), addTrack({.Titel = u"c"_s})});
    files.remove(music + u"/b.mp3"_s);
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Done);
    EXPECT_EQ(result.copied, 2);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].DName, u"b.mp3"_s);
    EXPECT_EQ(result.failures[0].reason, Reason::NotFound);
    EXPECT_EQ(listed(), (QStringList{u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s}))
        << "the list names it all the same";
}

TEST_F(PlaylistExport, ACopyThatFailsIsToldWithTheSystemsReasonAndLeavesNoPiece)
{
    addList({addTrack({.Titel = u"a"_s}), addTrack({.Titel = u"b"_s})});
    files.broken = u"a.mp3"_s;
    const ExportResult result = run(u"%N"_s);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].reason, Reason::System);
    EXPECT_EQ(result.failures[0].detail, u"No space left on device"_s);
    EXPECT_EQ(copies(), QStringList{u"b.mp3"_s});
}

TEST_F(PlaylistExport, AFileInTheWayOfAFolderIsAFailureOfItsRowsAlone)
{
    addList({addTrack({.Titel = u"a"_s, .Genre = u"House"_s}),
             addTrack({.Titel = u"b"_s, .Genre = u"Pop"_s})});
    files.writeWhole(target + u"/House"_s, "mine");
    const ExportResult result = run(u"%G/%N"_s);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].relative, u"House/a.mp3"_s);
    EXPECT_EQ(readCopy(u"House"_s), "mine");
    EXPECT_EQ(readCopy(u"Pop/b.mp3"_s), "sound");
}

TEST_F(PlaylistExport, TooLittleSpaceIsSeenBeforeAndNothingIsWritten)
{
    addList({addTrack({.Titel = u"a"_s}, QByteArray(5000, 'x')),
             addTrack({.Titel = u"b"_s}, QByteArray(5000, 'x'))});
    files.free = 16 * 1024;
    const ExportResult result = run(u"%G/%N"_s);
    EXPECT_EQ(result.end, End::NoSpace);
    EXPECT_EQ(result.needed, 20 * 1024) << "two blocks a file, one for the list";
    EXPECT_EQ(result.free, 16 * 1024);
    EXPECT_TRUE(files.names(target).isEmpty());
    files.free = 20 * 1024;
    EXPECT_EQ(run(u"%N"_s).end, End::Done);
}

TEST_F(PlaylistExport, CopiesThatAreReplacedGiveTheirSpaceBack)
{
    addList({addTrack({.Titel = u"a"_s}, QByteArray(8000, 'x')),
             addTrack({.Titel = u"b"_s}, QByteArray(8000, 'x'))});
    ASSERT_EQ(run(u"%N"_s).end, End::Done);
    files.free = 12 * 1024;
    EXPECT_EQ(run(u"%N"_s).end, End::Done) << "one new file beside the old one at a time";
    files.free = 4 * 1024;
    EXPECT_EQ(run(u"%N"_s).end, End::NoSpace);
}

TEST_F(PlaylistExport, AVolumeThatFillsUpOnTheWayIsToldForEachFileThatNoLongerFits)
{
    addList({addTrack({.Titel = u"a"_s}, QByteArray(8000, 'x')),
             addTrack({.Titel = u"b"_s}, QByteArray(8000, 'x')),
             addTrack({.Titel = u"c"_s}, "small")});
    loop.onTurn = [this] { files.free = 4096; };
    const ExportResult result = run(u"%N"_s);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].DName, u"b.mp3"_s);
    EXPECT_EQ(result.failures[0].reason, Reason::NoSpace);
    EXPECT_EQ(copies(), (QStringList{u"a.mp3"_s, u"c.mp3"_s}));
}

TEST_F(PlaylistExport, AStopBetweenTwoFilesEndsItAndTheListHoldsWhatIsThere)
{
    addList(
        {addTrack({.Titel = u"a"_s}), addTrack({.Titel = u"b"_s}), addTrack({.Titel = u"c"_s})});
    loop.onTurn = [this] {
        if (files.fileExists(target + u"/b.mp3"_s)) {
            exporter.stop();
        }
    };
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Stopped);
    EXPECT_EQ(copies(), (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    EXPECT_EQ(listed(), copies());
}

TEST_F(PlaylistExport, AStopInsideALargeFileLeavesNoPieceOfIt)
{
    addList({addTrack({.Titel = u"a"_s}), addTrack({.Titel = u"b"_s}, QByteArray(5 << 20, 'x'))});
    int turns = 0;
    loop.onTurn = [&] {
        if (files.fileExists(target + u"/a.mp3"_s) && ++turns == 3) {
            exporter.stop();
        }
    };
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Stopped);
    EXPECT_EQ(copies(), QStringList{u"a.mp3"_s});
    EXPECT_EQ(listed(), QStringList{u"a.mp3"_s});
}

TEST_F(PlaylistExport, AStopBeforeTheFirstCopyWritesNothing)
{
    QStringList tracks;
    for (int number = 0; number < 30; ++number) {
        tracks.append(addTrack({.Titel = QString::number(number)}));
    }
    addList(tracks);
    loop.onTurn = [this] { exporter.stop(); };
    EXPECT_EQ(run(u"%N"_s).end, End::Stopped);
    EXPECT_TRUE(files.names(target).isEmpty());
    loop.onTurn = {};
    EXPECT_EQ(run(u"%N"_s).end, End::Done) << "a stop is forgotten by the next run";
}

TEST_F(PlaylistExport, TheLoopTurnsBetweenTheBlocksOfALargeFile)
{
    addList({addTrack({.Titel = u"a"_s}, QByteArray(8 << 20, 'x'))});
    (void)run(u"%N"_s);
    EXPECT_GE(loop.turns, 8);
}

TEST_F(PlaylistExport, AnEmptyListWritesNothingAndSaysSo)
{
    addList({});
    EXPECT_EQ(run(u"%N"_s).end, End::Empty);
    EXPECT_TRUE(files.names(target).isEmpty());
    list = Pnid{4711};
    EXPECT_EQ(run(u"%N"_s).end, End::Empty);
}

TEST_F(PlaylistExport, AListFileThatCannotBeWrittenIsTold)
{
    addList({addTrack({.Titel = u"a"_s})});
    files.makeFolder(target + u"/Hauptset.m3u"_s);
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::ListNotWritten);
    EXPECT_FALSE(result.detail.isEmpty());
    EXPECT_EQ(result.copied, 1);
}

TEST_F(PlaylistExport, APathThatLooksLikeACommentOfTheListIsStillAPath)
{
    addList({addTrack({.Titel = u"#1 Hit"_s, .DName = u"a.mp3"_s})});
    (void)run(u"%N"_s);
    EXPECT_EQ(listed(), QStringList{u"./#1 Hit.mp3"_s});
}

// ---- the music that is already there

TEST_F(PlaylistExport, AnExportIntoTheMusicFolderNeverReplacesAnotherTracksFile)
{
    addList({addTrack({.Titel = u"b"_s, .DName = u"a.mp3"_s}, "file a"),
             addTrack({.Titel = u"a"_s, .DName = u"b.mp3"_s}, "file b")});
    target = music;
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(readCopy(u"a.mp3"_s), "file a");
    EXPECT_EQ(readCopy(u"b.mp3"_s), "file b");
    ASSERT_EQ(result.failures.size(), 2U);
    EXPECT_EQ(result.failures[0].reason, Reason::LibraryFile);
}

TEST_F(PlaylistExport, NeitherDoesItReplaceTheFileOfATrackThatIsInNoList)
{
    addTrack({.Titel = u"other"_s, .DName = u"Licht.mp3"_s}, "other");
    addList({addTrack({.Titel = u"Licht"_s, .DName = u"x.mp3"_s})});
    target = music + u"/../Musik/"_s;
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(readCopy(u"Licht.mp3"_s), "other");
    ASSERT_EQ(result.failures.size(), 1U);
}

TEST_F(PlaylistExport, NorDoesItThroughALinkToTheFolderOfTheMusic)
{
    addTrack({.Titel = u"other"_s, .DName = u"Licht.mp3"_s}, "other");
    addList({addTrack({.Titel = u"Licht"_s, .DName = u"x.mp3"_s})});
    target = music + u"-link"_s;
    ASSERT_TRUE(QFile::link(music, target));
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(readCopy(u"Licht.mp3"_s), "other");
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].reason, Reason::LibraryFile);
    // Nobody is led to the other track instead.
    EXPECT_EQ(listed(), QStringList());
}

TEST_F(PlaylistExport, ATracksFileWhoseNameIsStoredInAnotherUnicodeFormIsNotReplaced)
{
    // One e with its accent, and an e with the accent behind it.
    addTrack({.Titel = u"other"_s, .DName = u"Caf\u00e9.mp3"_s}, "other");
    suite.execute(u"update db_all set DName='Cafe\u0301.mp3'"_s);
    addList({addTrack({.Titel = u"Caf\u00e9"_s, .DName = u"x.mp3"_s}, "new")});
    target = music;
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(readCopy(u"Caf\u00e9.mp3"_s), "other");
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].reason, Reason::LibraryFile);
}

TEST_F(PlaylistExport, AFileOfAnotherVolumeThatHasTheNumberOfATracksFileIsReplacedAllTheSame)
{
    addList({addTrack({.Titel = u"a"_s}, "new a"), addTrack({.Titel = u"b"_s}, "new b")});
    files.writeWhole(target + u"/a.mp3"_s, "old");
    // Each volume counts its files for itself.
    files.identify = [this](const QString& path, FileFacts& facts) {
        const bool isTrack = path.startsWith(music);
        facts.device = isTrack ? 1 : 2;
        facts.inode = isTrack && path.endsWith(u"a.mp3") ? 6 : 7;
    };
    const ExportResult result = run(u"%N"_s);
    EXPECT_TRUE(result.failures.empty());
    EXPECT_EQ(readCopy(u"a.mp3"_s), "new a");
    EXPECT_EQ(readCopy(u"b.mp3"_s), "new b");
}

TEST_F(PlaylistExport, CopiesOnTwoVolumesThatHaveOneNumberAreTwoFiles)
{
    addList({addTrack({.Titel = u"LICHT"_s, .Genre = u"HOUSE"_s, .DName = u"a.mp3"_s}, "first"),
             addTrack({.Titel = u"LICHT"_s, .Genre = u"House"_s, .DName = u"b.mp3"_s}, "second")});
    files.makeFolders(target + u"/House"_s);
    files.writeWhole(target + u"/House/LICHT.mp3"_s, "of an earlier export");
    files.identify = [this](const QString& path, FileFacts& facts) {
        if (path.startsWith(target)) {
            facts.device = path.contains(u"/HOUSE") ? 2 : 3;
            facts.inode = 7;
        }
    };
    const ExportResult result = run(u"%G/%N"_s);
    EXPECT_TRUE(result.replaced.isEmpty()) << "nothing was lost";
    EXPECT_EQ(readCopy(u"HOUSE/LICHT.mp3"_s), "first");
    EXPECT_EQ(readCopy(u"House/LICHT.mp3"_s), "second");
}

TEST_F(PlaylistExport, AStopLeavesTheListOfAnEarlierExport)
{
    addList({addTrack({.Titel = u"a"_s}), addTrack({.Titel = u"b"_s})});
    (void)run(u"%N"_s);
    const QStringList whole = listed();
    ASSERT_EQ(whole.size(), 2);
    loop.onTurn = [this] { exporter.stop(); };
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Stopped);
    EXPECT_EQ(listed(), whole);
}

TEST_F(PlaylistExport, CopiesOfFilesThatMayOnlyBeReadCanBeReplaced)
{
    addList({addTrack({.Titel = u"a"_s, .DName = u"r.mp3"_s})});
    ASSERT_TRUE(QFile::setPermissions(music + u"/r.mp3"_s, QFile::ReadOwner));
    EXPECT_EQ(run(u"%N"_s).copied, 1);
    EXPECT_EQ(run(u"%N"_s).copied, 1);
}

TEST_F(PlaylistExport, AFileThatIsItsOwnCopyStaysAsItIs)
{
    addList({addTrack({.Titel = u"a"_s}, "file a")});
    target = music;
    const ExportResult result = run(u"%O"_s);
    EXPECT_TRUE(result.failures.empty());
    EXPECT_EQ(readCopy(u"a.mp3"_s), "file a");
}

TEST_F(PlaylistExport, AFileThatHasMovedIsFoundThroughTheFolderMapping)
{
    const QString fid = addTrack({.Titel = u"a"_s}, "moved");
    suite.execute(u"update db_all set Path='C:\\Music\\' where fid='%1'"_s.arg(fid));
    suite.write(u"ChangeDir.conf"_s, (u"C:\\Music?? "_s + music).toUtf8());
    addList({fid});
    (void)run(u"%O"_s);
    EXPECT_EQ(readCopy(u"a.mp3"_s), "moved");
}

TEST_F(PlaylistExport, EveryOfferedTemplateCopiesAllOfAHundredAndFiftyRows)
{
    QStringList tracks;
    for (int number = 0; number < 150; ++number) {
        tracks.append(
            addTrack({.Titel = u"Titel %1"_s.arg(number),
                      .Interpret = u"Künstler %1"_s.arg(number % 7),
                      .Album = number % 3 == 0 ? QString() : u"Album %1"_s.arg(number % 5),
                      .Genre = u"Genre %1"_s.arg(number % 4)},
                     QByteArray::number(number)));
    }
    addList(tracks);
    const QString stick = target;
    for (const QString& text : Template2Path::offered()) {
        target = stick + u"/%1"_s.arg(Template2Path::offered().indexOf(text));
        files.makeFolders(target);
        const ExportResult result = run(text);
        EXPECT_EQ(result.copied, 150) << text.toStdString();
        EXPECT_TRUE(result.replaced.isEmpty()) << text.toStdString();
        EXPECT_EQ(copies().size(), 150) << text.toStdString();
        const QStringList lines = listed();
        ASSERT_EQ(lines.size(), 150) << text.toStdString();
        for (int number = 0; number < 150; ++number) {
            ASSERT_EQ(readCopy(lines[number]), QByteArray::number(number)) << text.toStdString();
        }
    }
}

} // namespace

} // namespace melovane
