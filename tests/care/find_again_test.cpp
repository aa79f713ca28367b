#include "care/find_again_fixture.h"
#include "platform/db/db_error.h"
#include "platform/sqlite/engine/sqlite_engine.h"

#include <QDir>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using Finding = test::MovedMusic;

TEST(FoundFolders, TwoFoldersAreCutWhereTheirEndsAgree)
{
    const FolderPair pair =
        FolderPair::of(u"D:\\Alt\\Musik\\Pop\\Sommer\\"_s, u"/neu/pop/Sommer/"_s);
    EXPECT_EQ(pair.oldFolder, u"D:\\Alt\\Musik\\"_s);
    EXPECT_EQ(pair.newFolder, u"/neu/"_s);
    EXPECT_EQ(pair.rest, (QStringList{u"pop"_s, u"Sommer"_s}));
    const FolderPair whole = FolderPair::of(u"/a/"_s, u"/b/a/"_s);
    EXPECT_EQ(whole.oldFolder, u"/"_s);
    EXPECT_EQ(whole.newFolder, u"/b/"_s);
}

TEST_F(Finding, MarkedTracksAndThoseOfFoldersThatAreGoneAreMissing)
{
    const QString marked = addRow(u"a.mp3"_s, 1, 2);
    const QString unmarked = addRow(u"b.mp3"_s, 1, 0);
    const QString flagged = addRow(u"Weg/c.mp3"_s, 1, -1);
    suite.library.add({.Path = u"/media/cd/"_s, .DriveTyp = 4, .DEL = 2});
    music.write(u"da.mp3"_s, mp3(1));
    suite.library.add({.Path = music.path() + u'/', .DName = u"da.mp3"_s});
    suite.library.add({.Path = music.path() + u'/', .DName = u"da.MP3"_s, .DEL = 2});
    const QString gone =
        suite.library.add({.Path = music.path() + u'/', .DName = u"fort.mp3"_s, .DEL = 3});
    load();
    QStringList fids;
    for (const MissingTrack& track : find.tracks()) {
        fids.append(track.fid);
    }
    fids.sort();
    QStringList expected{marked, unmarked, flagged, gone};
    expected.sort();
    EXPECT_EQ(fids, expected);
    ASSERT_EQ(find.rules().size(), 3U);
    const FoundRule& rule = find.rules()[1];
    EXPECT_EQ(rule.oldFolder, u"/media/alt/Musik/"_s);
    EXPECT_EQ(rule.tracks.size(), 2U);
    EXPECT_EQ(find.foundCount(), 0);
}

TEST_F(Finding, TheLibraryIsReadBesideTheWindow)
{
    addMoved(u"a.mp3"_s, u"neu/a.mp3"_s, 1);
    suite.engine->GiveAway(suite.dbName());
    load();
    EXPECT_EQ(find.failure(), QString());
    ASSERT_EQ(find.tracks().size(), 1U);
    search(music.path());
    EXPECT_EQ(find.foundCount(), 1);
    suite.engine->TakeBack(suite.dbName());
}

TEST_F(Finding, ALibraryThatCannotBeReadIsToldAndNothingIsMissing)
{
    addMoved(u"a.mp3"_s, u"neu/a.mp3"_s, 1);
    settings->SetDbName(suite.file(u"none.mdb"_s));
    load();
    EXPECT_EQ(find.state(), FindAgain::State::Ready);
    EXPECT_NE(find.failure(), QString());
    EXPECT_TRUE(find.tracks().empty());
    settings->SetDbName(suite.dbName());
    load();
    EXPECT_EQ(find.failure(), QString());
    EXPECT_EQ(find.tracks().size(), 1U);
}

TEST_F(Finding, AFileThatAMappingLeadsToIsNotMissing)
{
    music.write(u"Pop/a.mp3"_s, mp3(1));
    suite.write(u"ChangeDir.conf"_s, (old + u" ?? "_s + music.path() + u"\n"_s).toUtf8());
    addRow(u"Pop/a.mp3"_s, 1, 0);
    const QString gone = addRow(u"Pop/b.mp3"_s, 1, 0);
    suite.execute(u"update db_all set DEL=2"_s);
    load();
    ASSERT_EQ(find.tracks().size(), 1U);
    EXPECT_EQ(find.tracks()[0].fid, gone);
}

TEST_F(Finding, OneRuleLeadsAWholeTreeToItsNewPlace)
{
    const QStringList fids{addMoved(u"Pop/a.mp3"_s, u"Musik/Pop/a.mp3"_s, 1),
                           addMoved(u"Pop/Sommer/b.mp3"_s, u"Musik/Pop/Sommer/b.mp3"_s, 2),
                           addMoved(u"Trance/c.mp3"_s, u"Musik/Trance/c.mp3"_s, 3)};
    addRow(u"Trance/weg.mp3"_s, 1);
    load();
    search(music.path());
    ASSERT_EQ(find.rules().size(), 1U);
    const FoundRule& rule = find.rules()[0];
    EXPECT_EQ(rule.oldFolder, u"/media/alt/Musik/"_s);
    EXPECT_EQ(rule.newFolder, music.file(u"Musik/"_s));
    EXPECT_EQ(rule.tracks.size(), 4U);
    EXPECT_EQ(rule.foundCount(), 3);
    EXPECT_TRUE(rule.isChosen);
    EXPECT_EQ(find.chosenCount(), 3);
    const FindAgain::Outcome outcome = find.apply(false);
    EXPECT_EQ(outcome.rows.moved, 3);
    EXPECT_EQ(placeOf(fids[1]), music.file(u"Musik/Pop/Sommer/b.mp3"_s));
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"ChangeDir.conf"_s)));
}

TEST_F(Finding, FoldersThatWentApartHaveRulesOfTheirOwn)
{
    addMoved(u"Pop/a.mp3"_s, u"eins/Schlager/a.mp3"_s, 1);
    addMoved(u"Pop/b.mp3"_s, u"eins/Schlager/b.mp3"_s, 2);
    addMoved(u"Trance/c.mp3"_s, u"zwei/c.mp3"_s, 3);
    addRow(u"Jazz/d.mp3"_s, 1);
    load();
    search(music.path());
    ASSERT_EQ(find.rules().size(), 3U);
    EXPECT_EQ(find.rules()[0].oldFolder, old + u"Pop/"_s);
    EXPECT_EQ(find.rules()[0].newFolder, music.file(u"eins/Schlager/"_s));
    EXPECT_EQ(find.rules()[1].newFolder, music.file(u"zwei/"_s));
    EXPECT_EQ(find.rules()[2].oldFolder, old + u"Jazz/"_s);
    EXPECT_EQ(find.rules()[2].newFolder, QString());
    EXPECT_FALSE(find.rules()[2].isChosen);
}

TEST_F(Finding, AFolderOfAnotherSystemIsFoundAgain)
{
    music.write(u"2025/neu.mp3"_s, mp3(1));
    const QString fid = suite.library.add({.Path = u"D:\\Neu\\2025\\"_s,
                                           .DName = u"Neu.mp3"_s,
                                           .DTimeMsec = test::millisecondsOf(kFrames),
                                           .DEL = 3});
    load();
    search(music.path());
    ASSERT_EQ(find.rules().size(), 1U);
    EXPECT_EQ(find.rules()[0].oldFolder, u"D:\\Neu\\2025\\"_s);
    EXPECT_EQ(find.rules()[0].newFolder, music.file(u"2025/"_s));
    EXPECT_EQ(find.apply(false).rows.moved, 1);
    EXPECT_EQ(placeOf(fid), music.file(u"2025/neu.mp3"_s));
    EXPECT_EQ(cell(fid, u"DEL"_s), u"-1"_s);
}

TEST_F(Finding, ANameAloneIsShownAndTakenOnlyWhenItIsChosen)
{
    music.write(u"wetter.mp3"_s, mp3(1, {}, 20));
    const QString fid = addRow(u"wetter.mp3"_s, 99999, 2, 4000);
    load();
    search(music.path());
    const FoundTrack& found = find.rules()[0].tracks[0];
    EXPECT_TRUE(found.isFound());
    EXPECT_EQ(found.evidence, (FoundEvidence{.name = true}));
    EXPECT_FALSE(found.isChosen);
    EXPECT_EQ(find.chosenCount(), 0);
    EXPECT_EQ(find.apply(false).rows.moved, 0);
    search(music.path());
    find.chooseTrack(0, 0, true);
    EXPECT_EQ(find.chosenCount(), 1);
    EXPECT_EQ(find.apply(false).rows.moved, 1);
    EXPECT_EQ(placeOf(fid), music.file(u"wetter.mp3"_s));
}

TEST_F(Finding, TheIdentifierInATagCountsMoreThanAName)
{
    const QString one = addRow(u"a.mp3"_s, 1);
    const QString two = addRow(u"b.mp3"_s, 1);
    music.write(u"a.mp3"_s, mp3(1, two));
    music.write(u"umbenannt.mp3"_s, mp3(2, one));
    load();
    search(music.path());
    ASSERT_EQ(find.rules().size(), 1U);
    EXPECT_EQ(find.apply(false).rows.moved, 2);
    EXPECT_EQ(placeOf(one), music.file(u"umbenannt.mp3"_s));
    EXPECT_EQ(placeOf(two), music.file(u"a.mp3"_s));
}

TEST_F(Finding, AFileOfAnotherTrackIsNotTakenUnasked)
{
    addRow(u"a.mp3"_s, 1);
    music.write(u"a.mp3"_s, mp3(1, u"400000000777"_s));
    load();
    search(music.path());
    const FoundTrack& found = find.rules()[0].tracks[0];
    EXPECT_EQ(found.evidence, (FoundEvidence{.name = true, .length = true, .otherFid = true}));
    EXPECT_FALSE(found.isChosen);
}

TEST_F(Finding, ARenamedFileIsKnownByTheSoundThatWasKept)
{
    const QString fid = addMoved(u"a.mp3"_s, u"ganz anders.mp3"_s, 7);
    addMoved(u"b.mp3"_s, u"b.mp3"_s, 8);
    load();
    search(music.path());
    EXPECT_EQ(find.foundCount(), 1);
    kept.insert(fid, *audio.sampled(music.file(u"ganz anders.mp3"_s)));
    search(music.path());
    EXPECT_EQ(find.foundCount(), 2);
    EXPECT_EQ(find.apply(false).rows.moved, 2);
    EXPECT_EQ(placeOf(fid), music.file(u"ganz anders.mp3"_s));
}

TEST_F(Finding, AFileThatTheLibraryHasIsNoMissingOne)
{
    addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    suite.library.add({.Path = music.path() + u'/', .DName = u"a.mp3"_s});
    load();
    search(music.path());
    EXPECT_EQ(find.foundCount(), 0);
}

TEST_F(Finding, OneFileThatTheUserShowsLeadsToAllOfItsFolder)
{
    const QString shown = addRow(u"Pop/a.mp3"_s, 1, 2, 9000);
    const QString other = addMoved(u"Pop/b.mp3"_s, u"neu/b.mp3"_s, 2);
    music.write(u"neu/a.mp3"_s, mp3(1));
    music.write(u"kopie/b.mp3"_s, mp3(2));
    load();
    find.showFile(0, music.file(u"neu/a.mp3"_s));
    worker.finish();
    EXPECT_EQ(find.tracks()[0].fid, shown);
    ASSERT_EQ(find.rules().size(), 1U);
    EXPECT_EQ(find.rules()[0].newFolder, music.file(u"neu/"_s));
    EXPECT_EQ(find.foundCount(), 2);
    EXPECT_EQ(find.apply(false).rows.moved, 1);
    EXPECT_EQ(placeOf(other), music.file(u"neu/b.mp3"_s));
}

TEST_F(Finding, AllOfItIsOneStepThatIsTakenBackAlsoByAnotherStart)
{
    const QString one = addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    const QString two = addMoved(u"b.mp3"_s, u"b.mp3"_s, 2);
    suite.execute(
        u"update db_all set DEL=3, DriveTyp=1, DriveName='Stick' where FID='%1'"_s.arg(two));
    const int list = suite.library.addPlaylist({.tracks = {two}});
    load();
    search(music.path());
    suite.execute(u"update pl_name set sicherung=false"_s);
    EXPECT_EQ(find.apply(false).rows.moved, 2);
    EXPECT_EQ(cell(one, u"DEL"_s), u"0"_s);
    EXPECT_EQ(cell(two, u"DEL"_s), u"-1"_s);
    EXPECT_NE(cell(two, u"DriveName"_s), u"Stick"_s);
    EXPECT_TRUE(suite.value(u"select sicherung from pl_name where NID=%1"_s.arg(list)).toBool());
    ListHistory later(*suite.engine, suite.files, suite.clock, *settings, {});
    ASSERT_TRUE(later.nextUndo());
    EXPECT_EQ(later.nextUndo()->action, ListAction::Relink);
    EXPECT_EQ(later.nextUndo()->count, 2);
    EXPECT_EQ(later.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(placeOf(one), old + u"a.mp3"_s);
    EXPECT_EQ(cell(one, u"DEL"_s), u"2"_s);
    EXPECT_EQ(cell(two, u"DEL"_s), u"3"_s);
    EXPECT_EQ(cell(two, u"DriveName"_s), u"Stick"_s);
    EXPECT_EQ(cell(two, u"DriveTyp"_s), u"1"_s);
}

TEST_F(Finding, RulesAreKeptForListsThatKnowTheOldPlaces)
{
    suite.write(u"ChangeDir.conf"_s, "# von Hand\nD:\\x ?? /y\n");
    addMoved(u"Pop/a.mp3"_s, u"Pop/a.mp3"_s, 1);
    load();
    search(music.path());
    EXPECT_TRUE(find.apply(true).isRemembered);
    EXPECT_EQ(suite.read(u"ChangeDir.conf"_s),
              u"# von Hand\nD:\\x ?? /y\n%1Pop/ ?? %2/Pop/\n"_s.arg(old, music.path()).toUtf8());
}

TEST_F(Finding, WhatHasChangedMeanwhileIsLeftAlone)
{
    const QString changed = addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    addMoved(u"b.mp3"_s, u"b.mp3"_s, 2);
    addMoved(u"c.mp3"_s, u"c.mp3"_s, 3);
    load();
    search(music.path());
    EXPECT_EQ(find.chosenCount(), 3);
    suite.execute(u"update db_all set DName='x.mp3' where FID='%1'"_s.arg(changed));
    QFile::remove(music.file(u"b.mp3"_s));
    suite.library.add({.Path = music.path() + u'/', .DName = u"c.mp3"_s});
    const FindAgain::Outcome outcome = find.apply(false);
    EXPECT_EQ(outcome.rows.moved, 0);
    EXPECT_EQ(outcome.rows.left, 3);
    EXPECT_EQ(placeOf(changed), old + u"x.mp3"_s);
}

TEST_F(Finding, ApplyingThatIsEndedChangesNothing)
{
    QStringList fids;
    for (int i = 0; i < kRelinksAtOnce + 10; ++i) {
        fids.append(addMoved(u"%1.mp3"_s.arg(i), u"%1.mp3"_s.arg(i), quint32(i)));
    }
    load();
    search(music.path());
    int asked = 0;
    const auto outcome = find.apply(true, [&](int, int) { return ++asked == 0; });
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(outcome.rows.isCancelled);
    EXPECT_EQ(placeOf(fids[0]), old + u"0.mp3"_s);
    EXPECT_FALSE(history.nextUndo());
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"ChangeDir.conf"_s)));
    EXPECT_EQ(find.chosenCount(), kRelinksAtOnce + 10);
}

TEST_F(Finding, AProgramThatIsKilledWhileItAppliesHasChangedNothing)
{
    std::vector<RelinkOrder> orders;
    for (int i = 0; i < 3 * kRelinksAtOnce; ++i) {
        const QString name = u"%1.mp3"_s.arg(i);
        const QString fid = addMoved(name, name, quint32(i));
        orders.push_back({fid, old + name, music.path() + u'/', name});
    }
    const auto places = [&] {
        return suite.column(u"select Path & DName & DEL from db_all order by FID"_s);
    };
    const QStringList before = places();
    for (const int moment : {kRelinksAtOnce, 2 * kRelinksAtOnce}) {
        const pid_t child = fork();
        if (child == 0) {
            // Nothing of the parent's open files: connections of their own.
            const auto engine = sqlite::makeEngine(suite.clock);
            LinuxFiles files;
            ListHistory steps(*engine, files, suite.clock, *settings, {});
            const auto database = engine->OpenDatabase(suite.dbName());
            (void)relink(*database, steps, files, orders,
                         [moment](int done, int) { return done < moment || raise(SIGKILL) == 0; });
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(places(), before);
        EXPECT_FALSE(history.nextUndo());
    }
    EXPECT_EQ(relink(*suite.open(), history, suite.files, orders).moved, int(orders.size()));
}

TEST_F(Finding, ASearchThatIsEndedLeavesTheRulesAsTheyWere)
{
    addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    load();
    find.search(music.path());
    EXPECT_EQ(find.state(), FindAgain::State::Searching);
    find.cancel();
    EXPECT_EQ(find.state(), FindAgain::State::Ready);
    worker.finish();
    EXPECT_EQ(find.foundCount(), 0);
    search(music.path());
    EXPECT_EQ(find.foundCount(), 1);
}

TEST_F(Finding, HostileNamesAreFoundAndWritten)
{
    const QString name = u"it's [a] \"*?\" 100% ??.mp3"_s;
    const QString fid = addMoved(u"O'Ton/"_s + name, u"neu/"_s + name, 1);
    load();
    search(music.path());
    EXPECT_EQ(find.apply(true).rows.moved, 1);
    EXPECT_EQ(placeOf(fid), music.file(u"neu/"_s + name));
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(placeOf(fid), old + u"O'Ton/"_s + name);
}

} // namespace
} // namespace melovane
