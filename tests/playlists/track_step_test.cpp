#include "playlists/list_history.h"
#include "playlists/track_step.h"
#include "support/suite_fixture.h"

#include <QFile>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Outcome = ListHistory::Outcome;

class TrackStepTest : public test::SuiteFixture
{
protected:
    TrackStepTest() { settings->SetDbName(suite.dbName()); }

    [[nodiscard]] Value cell(const QString& fid, const QString& column)
    {
        return suite.value(u"select %1 from db_all where fid='%2'"_s.arg(column, fid));
    }

    [[nodiscard]] QStringList entered() { return suite.column(u"select FID from db_edit"_s); }

    void execute(const QString& statement) { suite.open()->Execute(statement); }

    /// One step that gives both tracks another artist, and the first another album.
    void change()
    {
        const auto database = suite.open();
        TrackStep step(history, *database, ListAction::Tracks);
        const std::vector<ColumnValue> both{{u"Interpret"_s, u"Chor"_s}};
        step.write(first, std::vector<ColumnValue>{{u"Album"_s, u"It's \t\n[x]"_s}},
                   TagOrder::Enter);
        step.write(first, both, TagOrder::Enter);
        step.write(second, both, TagOrder::Enter);
        step.commit();
        trees = step.trees();
        execute(u"delete from db_edit"_s);
    }

    QString first = suite.library.add({.Titel = u"Licht"_s, .Interpret = u"Wer"_s});
    QString second = suite.library.add({.Titel = u"Schatten"_s, .Interpret = u"Wer"_s});
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    ListHistory history{*suite.engine, suite.folders.files(), suite.clock, *settings, {}};
    QStringList trees;
};

TEST_F(TrackStepTest, ManyChangesOfTracksAreOneStepThatIsTakenBackAndDoneAgain)
{
    const Value album = cell(first, u"Album"_s);
    change();
    EXPECT_EQ(trees, (QStringList{u"Album"_s, u"Interpret"_s}));
    ASSERT_TRUE(history.nextUndo());
    EXPECT_EQ(history.nextUndo()->action, ListAction::Tracks);
    EXPECT_EQ(history.nextUndo()->count, 2);
    EXPECT_EQ(history.nextUndo()->listName, QString());

    ListHistory::Result result = history.undo();
    EXPECT_EQ(result.outcome, Outcome::Done);
    EXPECT_EQ(result.tracks, (QStringList{first, second}));
    EXPECT_EQ(result.trees, (QStringList{u"Album"_s, u"Interpret"_s}));
    EXPECT_EQ(cell(first, u"Interpret"_s).toText(), u"Wer"_s);
    EXPECT_EQ(cell(second, u"Interpret"_s).toText(), u"Wer"_s);
    EXPECT_EQ(cell(first, u"Album"_s), album);
    EXPECT_FALSE(history.nextUndo());

    result = history.redo();
    EXPECT_EQ(result.outcome, Outcome::Done);
    EXPECT_EQ(cell(second, u"Interpret"_s).toText(), u"Chor"_s);
    EXPECT_EQ(cell(first, u"Album"_s).toText(), u"It's \t\n[x]"_s);
}

TEST_F(TrackStepTest, FilesFollowWhatIsTakenBack)
{
    change();
    EXPECT_EQ(entered(), QStringList());
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_EQ(entered(), (QStringList{first, second}));
}

TEST_F(TrackStepTest, WhatNoFileHoldsIsNotWrittenToOneWhenItIsTakenBack)
{
    const auto database = suite.open();
    TrackStep step(history, *database, ListAction::Favorit);
    const std::vector<ColumnValue> now{{u"favorit"_s, suite.clock.now()}};
    step.write(first, now, TagOrder::None);
    step.commit();
    EXPECT_EQ(history.nextUndo()->listName, u"Licht"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_TRUE(cell(first, u"favorit"_s).isNull());
    EXPECT_EQ(entered(), QStringList());
}

TEST_F(TrackStepTest, ATrackThatOthersHaveChangedSinceIsAskedAbout)
{
    change();
    execute(u"update db_all set Interpret='Andere' where fid='%1'"_s.arg(second));
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
    EXPECT_EQ(cell(first, u"Interpret"_s).toText(), u"Chor"_s);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(cell(second, u"Interpret"_s).toText(), u"Wer"_s);
}

TEST_F(TrackStepTest, AnotherFieldThatOthersChangedIsTheirsAndNoReasonToAsk)
{
    change();
    execute(u"update db_all set BPM='128' where fid='%1'"_s.arg(first));
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_EQ(cell(first, u"BPM"_s).toText(), u"128"_s);
}

TEST_F(TrackStepTest, ATrackThatIsGoneIsAskedAboutAndTheOthersAreTakenBack)
{
    change();
    execute(u"delete from db_all where fid='%1'"_s.arg(second));
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(cell(first, u"Interpret"_s).toText(), u"Wer"_s);
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 1);
}

TEST_F(TrackStepTest, AStepThatIsNotCommittedLeavesTheRowsAndTheOrdersAsTheyWere)
{
    const auto database = suite.open();
    {
        TrackStep step(history, *database, ListAction::Rating);
        step.write(first, std::vector<ColumnValue>{{u"Note"_s, u"1"_s}}, TagOrder::Enter);
    }
    EXPECT_NE(cell(first, u"Note"_s).toText(), u"1"_s);
    EXPECT_EQ(entered(), QStringList());
    EXPECT_FALSE(history.nextUndo());
}

TEST_F(TrackStepTest, WhereAFileLiesIsInNoStep)
{
    const auto database = suite.open();
    TrackStep step(history, *database, ListAction::Tracks);
    step.write(first, std::vector<ColumnValue>{{u"DName"_s, u"neu.mp3"_s}, {u"Titel"_s, u"Neu"_s}},
               TagOrder::Enter);
    step.commit();
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_EQ(cell(first, u"Titel"_s).toText(), u"Licht"_s);
    EXPECT_EQ(cell(first, u"DName"_s).toText(), u"neu.mp3"_s);
}

TEST_F(TrackStepTest, AKeyThatIsNoNumberIsWrittenAndStandsInNoStep)
{
    execute(u"update db_all set FID='00 x' where fid='%1'"_s.arg(second));
    const auto database = suite.open();
    TrackStep step(history, *database, ListAction::Tracks);
    step.write(u"00 x"_s, std::vector<ColumnValue>{{u"Titel"_s, u"Neu"_s}}, TagOrder::Enter);
    step.commit();
    EXPECT_EQ(cell(u"00 x"_s, u"Titel"_s).toText(), u"Neu"_s);
    EXPECT_FALSE(history.nextUndo());
}

TEST_F(TrackStepTest, OnlyAFoundFileTakesItsPlaceBack)
{
    const int list = suite.library.addPlaylist({.tracks = {first}});
    const int other = suite.library.addPlaylist({.tracks = {second}});
    const std::vector<ColumnValue> place{{u"Path"_s, u"/neu/"_s}, {u"DName"_s, u"x.mp3"_s}};
    const auto move = [&](ListAction action) {
        const auto database = suite.open();
        TrackStep step(history, *database, action);
        step.write(first, place, TagOrder::None);
        step.commit();
    };
    move(ListAction::Tracks);
    EXPECT_FALSE(history.nextUndo());
    execute(u"update db_all set Path='/alt/', DName='a.mp3', DEL=2 where FID='%1'"_s.arg(first));
    move(ListAction::Relink);
    execute(u"update pl_name set sicherung=false"_s);

    const ListHistory::Result result = history.undo();
    EXPECT_EQ(result.outcome, Outcome::Done);
    EXPECT_EQ(result.tracks, QStringList{first});
    EXPECT_EQ(result.trees, QStringList{u"Dir"_s});
    EXPECT_EQ(cell(first, u"Path"_s).toText(), u"/alt/"_s);
    EXPECT_EQ(cell(first, u"DName"_s).toText(), u"a.mp3"_s);
    // The file of the list names the place.
    const auto saved = u"select sicherung from pl_name where NID=%1"_s;
    EXPECT_TRUE(suite.value(saved.arg(list)).toBool());
    EXPECT_FALSE(suite.value(saved.arg(other)).toBool());
    EXPECT_EQ(history.redo().outcome, Outcome::Done);
    EXPECT_EQ(cell(first, u"Path"_s).toText(), u"/neu/"_s);
}

TEST_F(TrackStepTest, ARemovedTrackComesBackWithAllThatWasPlayedOfIt)
{
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0));
    suite.library.addPlayback(first, noon);
    suite.library.addPlayback(second, noon);
    suite.library.addPlayback(second, noon);
    suite.library.addPlayback(second, noon.addSecs(60));
    const auto played = [&] {
        return suite.column(u"select FID from pl_stat order by tstamp, FID"_s);
    };
    const QStringList before = played();
    const QStringList row = suite.column(u"select Titel & Path & DName & DTimeMsec from db_all"_s);
    {
        const auto database = suite.open();
        ListEdit edit(history, *database, ListAction::Merge, Pnid{});
        const QString condition = u"FID='%1'"_s.arg(second);
        edit.removes(kTrackTable, condition);
        edit.movesPlays(second, first);
        database->Execute(u"update pl_stat set FID='%1' where FID='%2'"_s.arg(first, second));
        database->Execute(u"delete from db_all where "_s + condition);
        edit.commit();
    }
    const QStringList merged = played();
    EXPECT_EQ(merged.count(first), 4);
    ASSERT_TRUE(history.nextUndo());
    EXPECT_EQ(history.nextUndo()->count, 1);
    const ListHistory::Result result = history.undo();
    EXPECT_EQ(result.outcome, Outcome::Done);
    EXPECT_EQ(result.tracks, QStringList{second});
    EXPECT_EQ(played(), before);
    EXPECT_EQ(suite.column(u"select Titel & Path & DName & DTimeMsec from db_all"_s), row);
    EXPECT_EQ(history.redo().outcome, Outcome::Done);
    EXPECT_EQ(played(), merged);
    EXPECT_TRUE(cell(second, u"Titel"_s).isNull());
    // What was played of it meanwhile belongs to the track that stays.
    execute(u"delete from pl_stat"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(cell(second, u"Titel"_s).toText(), u"Schatten"_s);
}

} // namespace
} // namespace melovane
