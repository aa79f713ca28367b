#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "library/track_edits.h"
#include "playlists/list_history.h"
#include "store/pending_jobs.h"
#include "store/track_fields.h"
#include "support/disk_fixture.h"
#include "support/suite_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TrackEditsTest : public test::SuiteFixture
{
protected:
    TrackEditsTest()
    {
        for (int del : {0, -1, 2, 3, 7}) {
            fids.append(suite.library.add({.Titel = QString(QChar('A' + int(fids.size()))),
                                           .Interpret = u"Wer"_s,
                                           .Note = u"3"_s,
                                           .DEL = del}));
        }
        MelovaneConfiguration::fill(texts);
        settings->SetDbName(suite.dbName());
        settings->SetGridSwapEditPlay(0);
        rows.SetDatabaseName(suite.dbName());
        rows.SetRecordSource(u"select * from db_all order by Titel"_s);
        rows.Refresh();
    }

    [[nodiscard]] Value cell(qint64 row, const QString& column)
    {
        return suite.value(
            u"select %1 from db_all where fid='%2'"_s.arg(column, fids[qsizetype(row)]));
    }

    [[nodiscard]] QStringList edited() { return suite.column(u"select FID from db_edit"_s); }

    QStringList fids;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    DataControl rows{*suite.engine};
    PendingJobs jobs{*suite.engine, *settings};
    QStringList changed;
    QStringList failures;
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.folders.files()};
    QStringList logged;
    EventGuard guard{texts, [this] { return suite.dbName(); },
                     [this](const QString& text) { failures.append(text); },
                     [this](const QString& where, const QString& what) {
                         logged.append(where + u": "_s + what);
                     }};
    ListHistory history{*suite.engine, suite.folders.files(), suite.clock, *settings, {}};
    TrackEdits edits{{.rows = rows,
                      .jobs = jobs,
                      .history = history,
                      .settings = *settings,
                      .texts = texts,
                      .clock = suite.clock,
                      .guard = guard,
                      .changed = [this](const QString& fid) { changed.append(fid); },
                      .refused = [this](const QString& text) { failures.append(text); }}};
};

// ---- fields

TEST_F(TrackEditsTest, EachFieldThatMayBeEditedTakesWhatIsTypedAndTheOthersTakeNothing)
{
    int barred = 0;
    for (const TrackFieldRow& field : trackFields()) {
        const QString column = field.column.toString();
        const bool isDate = field.type.type == FieldType::Date;
        const QString before = cell(0, column).toText();
        edits.commit(0, column, isDate ? u"01.02.2026"_s : u"4"_s);
        const QString after = cell(0, column).toText();
        if (field.edit == TrackEdit::Barred) {
            ++barred;
            EXPECT_EQ(after, before) << column.toStdString();
        } else {
            EXPECT_TRUE(isDate ? after.startsWith(u"01.02.2026") : after == "4"_L1)
                << column.toStdString() << ": " << after.toStdString();
        }
    }
    EXPECT_EQ(barred, 4);
    EXPECT_EQ(failures, QStringList());
}

TEST_F(TrackEditsTest, AZeroEmptiesTheFieldsThatAreNumbersKeptAsTexts)
{
    QStringList emptied;
    for (const TrackFieldRow& field : trackFields()) {
        if (field.type.type == FieldType::Text && field.edit != TrackEdit::Barred) {
            edits.commit(0, field.column.toString(), u"0"_s);
            if (cell(0, field.column.toString()).toText().isEmpty()) {
                emptied.append(field.column.toString());
            }
        }
    }
    EXPECT_EQ(emptied, (QStringList{u"Track"_s, u"Note"_s, u"BPM"_s}));
}

TEST_F(TrackEditsTest, AFieldWithATreeMarksThatTreeAndNoOther)
{
    for (const TrackFieldRow& field : trackFields()) {
        if (field.edit == TrackEdit::Barred || field.type.type != FieldType::Text) {
            continue;
        }
        suite.execute(u"delete from ChangeTree"_s);
        edits.commit(0, field.column.toString(), u"5"_s);
        const QStringList marked = suite.column(u"select TreeName from ChangeTree"_s);
        EXPECT_EQ(marked.join(u' '), field.tree.toString())
            << field.column.toString().toStdString();
    }
}

// ---- rating

TEST_F(TrackEditsTest, ADigitIsStoredTheOtherWayRoundAndZeroTakesTheMarkAway)
{
    for (const auto& [digit, stored] : std::vector<std::pair<int, QString>>{
             {1, u"5"_s}, {2, u"4"_s}, {3, u"3"_s}, {4, u"2"_s}, {5, u"1"_s}}) {
        edits.rate(0, digit);
        EXPECT_EQ(cell(0, u"Note"_s).toText(), stored);
    }
    edits.rate(0, 0);
    EXPECT_TRUE(cell(0, u"Note"_s).isNull());
    EXPECT_EQ(edited().size(), 6);
    EXPECT_EQ(changed.size(), 6);
    EXPECT_EQ(changed.first(), fids[0]);
}

TEST_F(TrackEditsTest, CtrlWithSixDoesNothing)
{
    edits.rate(0, 6);
    edits.rate(0, -1);
    edits.rate(-1, 1);
    edits.rate(99, 1);
    EXPECT_EQ(cell(0, u"Note"_s).toText(), u"3"_s);
    EXPECT_TRUE(edited().isEmpty());
    EXPECT_TRUE(changed.isEmpty());
}

// ---- delete

TEST_F(TrackEditsTest, DeleteTwiceOnANormalRowReturnsItToZero)
{
    edits.toggleDelete({{0, 0}});
    EXPECT_EQ(cell(0, u"DEL"_s).toLong(), -1);
    edits.toggleDelete({{0, 0}});
    EXPECT_EQ(cell(0, u"DEL"_s).toLong(), 0);
}

TEST_F(TrackEditsTest, DeleteOnARowWithDel3GivesMinus1AndOtherStatesStay)
{
    edits.toggleDelete({{0, 4}});
    EXPECT_EQ(suite.column(u"select DEL from db_all order by Titel"_s),
              (QStringList{u"-1"_s, u"0"_s, u"-1"_s, u"-1"_s, u"7"_s}));
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree"_s), (QStringList{u"Dir"_s}));
}

TEST_F(TrackEditsTest, TheOtherViewsHearOnceOfTracksThatAreDeletedSoThatTheyStrikeThemThrough)
{
    edits.toggleDelete({{1, 2}});
    EXPECT_EQ(changed, QStringList{fids[1]});
    suite.execute(u"delete * from db_all where Titel='C'"_s);
    edits.toggleDelete({{2, 2}});
    EXPECT_EQ(changed.size(), 1) << "nothing was written";
}

TEST_F(TrackEditsTest, ARowWithoutAStateStaysWithoutOne)
{
    suite.execute(u"update db_all set DEL=null where Titel='A'"_s);
    rows.Refresh();
    edits.toggleDelete({{0, 1}});
    EXPECT_TRUE(cell(0, u"DEL"_s).isNull());
    EXPECT_EQ(cell(1, u"DEL"_s).toLong(), 0);
}

TEST_F(TrackEditsTest, WithoutASelectionNothingIsToggledOrNoted)
{
    edits.toggleDelete({});
    EXPECT_TRUE(suite.column(u"select TreeName from ChangeTree"_s).isEmpty());
}

TEST_F(TrackEditsTest, AFailureLeavesAllRowsAsTheyWere)
{
    suite.execute(u"delete * from db_all where Titel='C'"_s);
    edits.toggleDelete({{0, 4}});
    EXPECT_EQ(suite.column(u"select DEL from db_all order by Titel"_s),
              (QStringList{u"0"_s, u"-1"_s, u"3"_s, u"7"_s}));
    EXPECT_EQ(failures.size(), 1);
    EXPECT_TRUE(logged.value(0).startsWith("TrackEdits.toggleDelete: "_L1));
}

// ---- cells

TEST_F(TrackEditsTest, EveryCellButPlayAndTheKeyCanBeEditedInThatMode)
{
    EXPECT_TRUE(edits.canEdit(0, u"Titel"_s));
    EXPECT_TRUE(edits.canEdit(0, u"note"_s));
    EXPECT_FALSE(edits.canEdit(0, u"PLAY"_s));
    EXPECT_FALSE(edits.canEdit(0, u"FID"_s));
    // Who types over these loses the file behind the track.
    EXPECT_FALSE(edits.canEdit(0, u"Path"_s));
    EXPECT_FALSE(edits.canEdit(0, u"DName"_s));
    EXPECT_FALSE(edits.canEdit(5, u"Titel"_s));
    settings->SetGridSwapEditPlay(1);
    EXPECT_FALSE(edits.canEdit(0, u"Titel"_s));
}

TEST_F(TrackEditsTest, AChangedCellIsWrittenAndItsTrackEnteredForTheTags)
{
    EXPECT_TRUE(edits.commit(0, u"Titel"_s, u"O'Neil \"[x]\""_s));
    EXPECT_EQ(cell(0, u"Titel"_s).toText(), u"O'Neil \"[x]\""_s);
    EXPECT_EQ(edited(), (QStringList{fids[0]}));
    EXPECT_EQ(changed, (QStringList{fids[0]}));
    EXPECT_TRUE(suite.column(u"select TreeName from ChangeTree"_s).isEmpty());
}

TEST_F(TrackEditsTest, ACellWhoseTrackCannotBeEnteredForTheTagsStaysAsItWas)
{
    suite.execute(u"drop table db_edit"_s);
    EXPECT_FALSE(edits.commit(0, u"Interpret"_s, u"Neu"_s)) << "the cell keeps what was typed";
    edits.rate(0, 1);
    EXPECT_EQ(cell(0, u"Interpret"_s).toText(), u"Wer"_s);
    EXPECT_EQ(cell(0, u"Note"_s).toText(), u"3"_s);
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_TRUE(suite.column(u"select TreeName from ChangeTree"_s).isEmpty());
    EXPECT_EQ(failures.size(), 2);
}

TEST_F(TrackEditsTest, ArtistAlbumAndGenreMarkTheirTrees)
{
    edits.commit(0, u"interpret"_s, u"Neu"_s);
    edits.commit(0, u"Album"_s, u"Neu"_s);
    edits.commit(1, u"Genre"_s, u"Pop"_s);
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree order by TreeName"_s),
              (QStringList{u"Album"_s, u"Genre"_s, u"Interpret"_s}));
}

TEST_F(TrackEditsTest, AZeroInNoteTempoOrTrackEmptiesTheCell)
{
    edits.commit(0, u"Note"_s, u"0"_s);
    edits.commit(0, u"BPM"_s, u"0,5"_s);
    edits.commit(0, u"Track"_s, u" 0"_s);
    EXPECT_EQ(cell(0, u"Note"_s).toText(), QString());
    EXPECT_EQ(cell(0, u"BPM"_s).toText(), QString());
    EXPECT_EQ(cell(0, u"Track"_s).toText(), QString());
    edits.commit(0, u"Titel"_s, u"0"_s);
    EXPECT_EQ(cell(0, u"Titel"_s).toText(), u"0"_s);
}

TEST_F(TrackEditsTest, ATextWithoutANumberEmptiesTheFieldsThatAreNumbers)
{
    for (const QString& field : {u"BPM"_s, u"Track"_s}) {
        edits.commit(0, field, u"4"_s);
        edits.commit(0, field, u"x"_s);
        EXPECT_EQ(cell(0, field).toText(), QString()) << field.toStdString();
    }
    edits.commit(0, u"BPM"_s, u"abc"_s);
    EXPECT_EQ(cell(0, u"BPM"_s).toText(), QString());
    edits.commit(0, u"BPM"_s, u"128.5"_s);
    EXPECT_EQ(cell(0, u"BPM"_s).toText(), u"128.5"_s);
    edits.commit(0, u"BPM"_s, u"12abc"_s);
    EXPECT_EQ(cell(0, u"BPM"_s).toText(), u"12"_s) << "the number in front";
    edits.commit(0, u"Titel"_s, u"abc"_s);
    EXPECT_EQ(cell(0, u"Titel"_s).toText(), u"abc"_s);
    EXPECT_EQ(failures, QStringList());
}

TEST_F(TrackEditsTest, ANoteIsOneToFiveAndAnyOtherIsRefusedWithTheReason)
{
    edits.commit(0, u"Note"_s, u" 5 "_s);
    EXPECT_EQ(cell(0, u"Note"_s).toText(), u"5"_s);
    const QStringList refused{u"9"_s, u"6"_s, u"-1"_s, u"2,5"_s, u"1a"_s, u"12"_s, u"x"_s};
    for (const QString& text : refused) {
        edits.commit(0, u"note"_s, text);
        EXPECT_EQ(cell(0, u"Note"_s).toText(), u"5"_s) << text.toStdString();
    }
    EXPECT_EQ(failures, QStringList(refused.size(), u"Eine Note geht von 1 bis 5, 5 ist die beste; "
                                                    "leer oder 0 nimmt sie weg"_s));
    EXPECT_EQ(edited().size(), 1);
    edits.commit(0, u"Note"_s, QString());
    EXPECT_EQ(cell(0, u"Note"_s).toText(), QString());
}

TEST_F(TrackEditsTest, ATextThatIsTooLongLeavesTheCellAndNotesNothing)
{
    edits.commit(0, u"Note"_s, u"12345"_s);
    EXPECT_EQ(cell(0, u"Note"_s).toText(), u"3"_s);
    edits.commit(0, u"Track"_s, u"12345678901"_s);
    EXPECT_TRUE(cell(0, u"Track"_s).isNull());
    EXPECT_TRUE(edited().isEmpty());
    EXPECT_EQ(failures.size(), 2); // and says why
}

TEST_F(TrackEditsTest, TheGenreColumnOffersTheGenres)
{
    edits.setGenres({u"Pop"_s, u"Rock"_s});
    EXPECT_EQ(edits.choices(u"genre"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    EXPECT_TRUE(edits.choices(u"Titel"_s).isEmpty());
}

// ---- favourite, tag tool

TEST_F(TrackEditsTest, AFavouriteHasItsTimeAndLosesIt)
{
    edits.toggleFavorit(0);
    EXPECT_EQ(cell(0, u"favorit"_s).toDateTime(), suite.clock.now());
    edits.toggleFavorit(0);
    EXPECT_TRUE(cell(0, u"favorit"_s).isNull());
}

TEST_F(TrackEditsTest, TheSelectionIsHandedToTheTagTool)
{
    edits.FillTempMp3EditTable({{0, 1}, {3, 3}});
    EXPECT_EQ(suite.column(u"select FID from TEMP_MP3Edit"_s),
              (QStringList{fids[0], fids[1], fids[3]}));
    EXPECT_EQ(suite.column(u"select distinct PLID from TEMP_MP3Edit"_s), (QStringList{u"-1"_s}));
}

// ---- a disk that is full

class TrackEditsOnAFullDisk : protected test::DiskFixture, public TrackEditsTest
{
protected:
    TrackEditsOnAFullDisk() { fillDisk(); }

    void expectTold(const QString& where)
    {
        EXPECT_EQ(failures, QStringList{u"Der Datenträger ist voll: "_s + suite.dbName()});
        ASSERT_EQ(logged.size(), 1);
        EXPECT_TRUE(logged[0].startsWith(where + u": "_s)) << logged[0].toStdString();
        EXPECT_TRUE(changed.isEmpty());
    }
};

TEST_F(TrackEditsOnAFullDisk, ACellThatIsNotWrittenIsToldInTheUsersLanguage)
{
    edits.commit(0, u"Titel"_s, u"Neu"_s);
    expectTold(u"TrackEdits.write"_s);
    EXPECT_EQ(cell(0, u"Titel"_s).toText(), u"A"_s);
}

TEST_F(TrackEditsOnAFullDisk, TracksThatCannotGoToTheTagToolAreTold)
{
    edits.FillTempMp3EditTable({{0, 1}});
    expectTold(u"TrackEdits.FillTempMp3EditTable"_s);
}

// ---- steps

TEST_F(TrackEditsTest, ACellARatingAFavouriteAndADeleteMarkAreOneStepEachAndTakenBack)
{
    ASSERT_TRUE(edits.commit(0, u"Titel"_s, u"Neu"_s));
    edits.rate(1, 1);
    edits.toggleFavorit(0);
    edits.toggleDelete({{0, 2}});
    for (const ListAction action :
         {ListAction::Flag, ListAction::Favorit, ListAction::Rating, ListAction::Tracks}) {
        const ListHistory::Result taken = history.undo();
        EXPECT_EQ(taken.outcome, ListHistory::Outcome::Done) << int(action);
        EXPECT_EQ(taken.step.action, action);
        EXPECT_EQ(taken.step.count, action == ListAction::Flag ? 3 : 1);
    }
    EXPECT_EQ(cell(0, u"Titel"_s).toText(), u"A"_s);
    EXPECT_EQ(cell(1, u"Note"_s).toText(), u"3"_s);
    EXPECT_TRUE(cell(0, u"favorit"_s).isNull());
    EXPECT_EQ(cell(0, u"DEL"_s).toLong(), 0);
    EXPECT_EQ(cell(1, u"DEL"_s).toLong(), -1);
    EXPECT_EQ(cell(2, u"DEL"_s).toLong(), 2);
    EXPECT_FALSE(history.nextUndo());
}

} // namespace
} // namespace melovane
