#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "playlists/list_delta.h"
#include "playlists/list_fixture.h"
#include "support/temp_folder.h"

#include <QFile>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;
using Outcome = ListHistory::Outcome;

TEST(ListDeltaText, EveryKindOfValueComesBackAsItWas)
{
    const TableDelta table{
        u"pl_all"_s,
        {u"PLID"_s, u"A"_s, u"B"_s},
        {{RowChange::Kind::Added, 7, {}, {}, {Value(7), Value(), Value(u"a\tb\n\\ä\0z"_s)}},
         {RowChange::Kind::Removed, 8, {}, {Value(8), Value(true), Value(0.1)}, {}},
         {RowChange::Kind::Altered,
          9,
          {2, 1},
          {Value(Value::Day{46095.6316}), Value()},
          {Value(QString()), Value(-5)}}}};
    const ListDelta delta{table, {u"pl_name"_s, {u"NID"_s}, {}}};
    const std::optional<ListDelta> read = readDelta(deltaText(delta));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, delta);
    EXPECT_EQ(inverse(inverse(delta)), delta);
}

TEST(ListDeltaText, ATextThatIsNotWholeAndSoundIsRefused)
{
    for (const QString& text :
         {u"T\tpl_all"_s, u"T\tpl_all\n"_s, u"+\ti1\n"_s, u"T\tpl_all\tPLID\n+\ti1\ti2\n"_s,
          u"T\tpl_all\tPLID\n+\tx\n"_s, u"T\tpl_all\tPLID\n+\tsA\n"_s,
          u"T\tpl_all\tPLID\tSID\n~\t1\t2\ti1\ti2\n"_s, u"T\tpl_all\tPLID\tSID\n~\t1\t1\ti1\n"_s,
          u"T\tpl_all\tPLID\tSID\n~\t1\t0\ti1\ti2\n"_s, u"T\tpl_all\tPLID\tA\n+\ti1\tsa\\x\n"_s,
          u"T\tpl_all\tPLID\tSID\n~\t1\t1\ti1\ti2"_s, u"nonsense"_s}) {
        EXPECT_FALSE(readDelta(text)) << text.toStdString();
    }
    EXPECT_TRUE(readDelta(QString()));
}

class ListHistoryTest : public testing::Test
{
protected:
    ListHistoryTest() { lists.addTracks(9); }

    [[nodiscard]] QStringList tables() const
    {
        QStringList rows;
        const auto database = lists.open();
        for (const QString& source :
             {u"select * from pl_all order by plid"_s,
              u"select nid, grid, name, sid, anzahl, activ, isplay, lock, info, createtime "
              "from pl_name order by nid"_s,
              u"select * from pl_group order by grid"_s}) {
            const auto set = database->OpenRecordset(source);
            for (; !set->Eof(); set->MoveNext()) {
                QStringList cells;
                for (int i = 0; i < set->fieldCount(); ++i) {
                    cells.append(set->value(i).isNull() ? u"null"_s : set->value(i).toText());
                }
                rows.append(cells.join(u'|'));
            }
        }
        return rows;
    }

    Lists lists;
    cls_PLInsertMoveDel& edits = lists.edits;
    ListHistory& history = lists.history;
};

TEST_F(ListHistoryTest, EveryChangeOfEntriesIsUndoneAndRedoneToTheLastCell)
{
    const Pnid list = lists.addList({1, 2, 3});
    const Pnid other = lists.addList({4, 5}, u"Andere"_s);
    const QStringList plids = lists.plids(list);
    std::vector<QStringList> states{tables()};
    const auto step = [&] { states.push_back(tables()); };
    edits.AppendFromMP3DB(Lists::tracksText({7, 8}), list, kAktionMix);
    step();
    edits.InsertFromMP3DB(Sid{2}, list, Lists::tracksText({9, 1}), kAktionJinglePlay);
    step();
    edits.InsertORMoveFromPlaylist(1, Sid{0}, list, Lists::entriesText(lists.plids(other)), 0);
    step();
    edits.InsertORMoveFromPlaylist(2, Sid{1}, list, Lists::entriesText({plids[2], plids[1]}), 0);
    step();
    edits.InsertORMoveFromPlaylist(2, Sid{1}, list, Lists::entriesText(lists.plids(other)), 0);
    step();
    edits.InsertORMoveFromPlaylist(99, kEndOfList, list, Lists::entriesText({plids[0]}), 0);
    step();
    edits.DeletePlaylistRecords(Lists::entriesText({plids[0], plids[2]}), list);
    step();
    edits.swapWithNeighbour(Plid(lists.plids(list)[2].toInt()), list, -1);
    step();
    // A move counts its target alone; undoing counts both, as they are.
    const auto sameEntries = [&](const QStringList& state) {
        return std::pair(state.filter(u"8000000000"_s), tables().filter(u"8000000000"_s));
    };
    for (size_t i = states.size() - 1; i > 0; --i) {
        ASSERT_EQ(history.undo().outcome, Outcome::Done) << i;
        const auto [expected, found] = sameEntries(states[i - 1]);
        EXPECT_EQ(found, expected) << i;
    }
    EXPECT_EQ(tables(), states.front());
    EXPECT_EQ(history.undo().outcome, Outcome::Nothing);
    for (size_t i = 1; i < states.size(); ++i) {
        ASSERT_EQ(history.redo().outcome, Outcome::Done) << i;
        const auto [expected, found] = sameEntries(states[i]);
        EXPECT_EQ(found, expected) << i;
    }
    EXPECT_EQ(history.redo().outcome, Outcome::Nothing);
    EXPECT_EQ(lists.log, QStringList());
}

TEST_F(ListHistoryTest, UndoingCountsAfreshAndAsksForTheFileToBeSaved)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7, 8}), list, kAktionMix);
    lists.execute(u"update pl_name set sicherung=false"_s);
    const ListHistory::Result result = history.undo();
    EXPECT_EQ(lists.entryCount(list), 1);
    EXPECT_TRUE(lists.value(u"select sicherung from pl_name"_s).toBool());
    EXPECT_EQ(result.lists, std::vector{list});
    EXPECT_EQ(result.step.count, 2);
    EXPECT_EQ(result.step.listName, u"Party"_s);
}

TEST_F(ListHistoryTest, ItIsThereAfterARestart)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    lists.engine->Release(lists.dbName());
    ListHistory next(*lists.engine, lists.files, lists.clock, *lists.settings, {});
    ASSERT_TRUE(next.nextUndo());
    EXPECT_EQ(next.nextUndo()->moment, lists.clock.now());
    EXPECT_EQ(next.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
    EXPECT_EQ(next.nextRedo()->action, ListAction::Append);
}

TEST_F(ListHistoryTest, ANewChangeEndsWhatCouldBeRedone)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    history.undo();
    edits.AppendFromMP3DB(Lists::tracksText({8}), list, kAktionMix);
    EXPECT_FALSE(history.nextRedo());
    EXPECT_EQ(history.redo().outcome, Outcome::Nothing);
    EXPECT_EQ(lists.entries(list), u"1:1 3:8"_s);
}

TEST_F(ListHistoryTest, AListChangedElsewhereIsNotOverwrittenWithoutAQuestion)
{
    const Pnid list = lists.addList({1, 2});
    edits.DeletePlaylistRecords(Lists::entriesText({lists.plids(list)[0]}), list);
    lists.execute(u"insert into pl_all (pnid, sid, fid) values (%1, 9, '800000000009')"_s.arg(
        numberOf(list)));
    const QStringList before = tables();
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
    EXPECT_EQ(tables(), before);
    ASSERT_TRUE(history.nextUndo());
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"1:1 2:2 9:9"_s);
    EXPECT_EQ(lists.entryCount(list), 3);
}

TEST_F(ListHistoryTest, AnEntryWithOtherValuesThanItsStepLeftIsAskedForToo)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    lists.execute(u"update pl_all set FrameStart=5 where sid=3"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
}

TEST_F(ListHistoryTest, AForcedStepLeavesOutRowsThatAreGone)
{
    const Pnid list = lists.addList({1, 2, 3});
    const QStringList plids = lists.plids(list);
    edits.InsertORMoveFromPlaylist(2, Sid{1}, list, Lists::entriesText({plids[2]}), 0);
    lists.execute(u"delete * from pl_all where plid="_s + plids[0]);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"2:2 3:3"_s);
}

TEST_F(ListHistoryTest, NoEntryComesBackIntoAListThatIsGone)
{
    const Pnid list = lists.addList({1});
    edits.DeletePlaylistRecords(Lists::entriesText(lists.plids(list)), list);
    lists.execute(u"delete from pl_name"_s);
    EXPECT_EQ(history.undo(ListHistory::Force::Yes).outcome, Outcome::Failed);
    EXPECT_TRUE(lists.column(u"select plid from pl_all"_s).isEmpty());
    EXPECT_EQ(history.undo().outcome, Outcome::Nothing);
}

TEST_F(ListHistoryTest, AMissingSideFileStartsANewHistoryAndTheEditRuns)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    lists.engine->Release(lists.dbName());
    for (const QString& suffix : {u""_s, u"-wal"_s, u"-shm"_s}) {
        QFile::remove(lists.file(u"melovane.undo.mdb"_s + suffix));
    }
    EXPECT_FALSE(history.nextUndo());
    EXPECT_NE(history.undo().outcome, Outcome::Done);
    edits.AppendFromMP3DB(Lists::tracksText({8}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:7 5:8"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_EQ(history.undo().outcome, Outcome::Nothing);
    EXPECT_EQ(lists.entries(list), u"1:1 3:7"_s);
}

TEST_F(ListHistoryTest, ADamagedSideFileIsKeptBesideTheNewOne)
{
    const Pnid list = lists.addList({1});
    QStringList kept;
    lists.history.setBegunAnew([&kept](const QString& file) { kept.append(file); });
    lists.write(u"melovane.undo.mdb"_s, "this is no database");
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    EXPECT_EQ(lists.read(u"melovane.undo.mdb.damaged"_s), "this is no database");
    EXPECT_EQ(kept, QStringList{lists.file(u"melovane.undo.mdb.damaged"_s)});
    EXPECT_EQ(lists.log.filter(kept.first()).size(), 1);
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.entries(list), u"1:1"_s);
}

TEST_F(ListHistoryTest, AStepThatCannotBeReadIsDroppedAndTheOneBeforeItIsNext)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    edits.AppendFromMP3DB(Lists::tracksText({8}), list, kAktionMix);
    lists.execute(u"update LIST_HISTORY set Changes='T' where id=2"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::Failed);
    EXPECT_EQ(lists.entries(list), u"1:1 3:7 5:8"_s);
    EXPECT_EQ(history.undo().outcome, Outcome::ChangedElsewhere);
}

TEST_F(ListHistoryTest, AForgedStepReachesNoOtherTable)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    for (const QString& text :
         {u"T\tdb_all\tFID\n-\ti1\n"_s, u"T\tdb_all\tFID\tPath\n~\t1\t1\tsa\tsb\n"_s,
          u"T\tDB_ALL\tFID\n-\ti1\n"_s, u"T\tpl_all\tPLID\tno]such\n"_s,
          u"T\tpl_all where 1=1\tPLID\n-\ti1\n"_s}) {
        const auto database = lists.open();
        const auto set = database->OpenRecordset(u"select * from LIST_HISTORY"_s);
        set->Edit();
        set->setValue(u"Changes", text);
        set->Update();
        EXPECT_EQ(history.undo().outcome, Outcome::Failed) << text.toStdString();
    }
    EXPECT_EQ(lists.column(u"select fid from db_all"_s).size(), 9);
    EXPECT_EQ(lists.entries(list), u"1:1 3:7"_s);
}

TEST_F(ListHistoryTest, SwitchedOffNothingIsRecordedAndNoFileIsMade)
{
    lists.settings->WriteKeyValue(u"Global"_s, u"List.History"_s, u"0"_s);
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:7"_s);
    EXPECT_FALSE(history.nextUndo());
    EXPECT_FALSE(lists.files.fileExists(lists.file(u"melovane.undo.mdb"_s)));
}

TEST_F(ListHistoryTest, TheTablesOfTheSuiteStayAsTheyAre)
{
    const auto columns = [&](const QString& table) {
        QStringList names;
        for (const FieldDef& field : lists.open()->tableDefs().Item(table).Fields) {
            names.append(field.Name);
        }
        return names;
    };
    const QStringList before = columns(u"pl_all"_s) + columns(u"pl_name"_s);
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    EXPECT_EQ(columns(u"pl_all"_s) + columns(u"pl_name"_s), before);
    EXPECT_TRUE(lists.column(u"select UndoID from TEMP_PL_UNDO"_s).isEmpty());
}

TEST_F(ListHistoryTest, OnlyTheNewestStepsAreKept)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    {
        const auto database = lists.open();
        Transaction all(*database);
        for (int i = 0; i < ListHistory::kMaxSteps + 5; ++i) {
            database->Execute(u"insert into LIST_HISTORY (Undone,Verb,Letters,Changes) "
                              "values (false,'append',10,'')"_s);
        }
        all.commit();
    }
    edits.AppendFromMP3DB(Lists::tracksText({8}), list, kAktionMix);
    EXPECT_EQ(lists.value(u"select count(*) from LIST_HISTORY"_s).toLong(), ListHistory::kMaxSteps);
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    history.clear();
    EXPECT_FALSE(history.nextUndo());
    EXPECT_FALSE(history.nextRedo());
}

TEST_F(ListHistoryTest, AnotherDatabaseHasAHistoryOfItsOwn)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    const QString copy = lists.file(u"Melovane.Backup.(343).mdb"_s);
    lists.engine->BackupDatabase(lists.dbName(), copy);
    lists.settings->SetDbName(copy);
    EXPECT_FALSE(history.nextUndo());
    EXPECT_EQ(history.undo().outcome, Outcome::Nothing);
    lists.settings->SetDbName(lists.dbName());
    EXPECT_TRUE(history.nextUndo());
}

TEST_F(ListHistoryTest, ACopyOfTheDataFolderFollowsItsOwnFileAndLeavesTheOldOneAlone)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    const test::TempFolder elsewhere;
    const QString copy = elsewhere.file(u"melovane.mdb"_s);
    const QString copiedSteps = elsewhere.file(u"melovane.undo.mdb"_s);
    const QString steps = lists.file(u"melovane.undo.mdb"_s);
    lists.engine->BackupDatabase(lists.dbName(), copy);
    lists.engine->BackupDatabase(steps, copiedSteps);
    lists.settings->SetDbName(copy);
    EXPECT_TRUE(history.nextSteps().undo);
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
    const auto link = lists.engine->OpenDatabase(copy)->tableDefs().Item(u"LIST_HISTORY"_s);
    EXPECT_EQ(link.Connect.toUpper(), (u";DATABASE="_s + copiedSteps).toUpper());
    const auto undone = [&](const QString& file) {
        return lists.engine->OpenDatabase(file)
            ->OpenRecordset(u"select Undone from LIST_HISTORY"_s)
            ->value(0)
            .toBool();
    };
    EXPECT_TRUE(undone(copiedSteps));
    EXPECT_FALSE(undone(steps));
    EXPECT_EQ(lists.entries(list), u"1:1 3:7"_s);
}

TEST_F(ListHistoryTest, ACopyOfTheLibraryAloneLeadsToTheOldFileNoMore)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({7}), list, kAktionMix);
    const test::TempFolder elsewhere;
    const QString copy = elsewhere.file(u"melovane.mdb"_s);
    lists.engine->BackupDatabase(lists.dbName(), copy);
    lists.settings->SetDbName(copy);
    EXPECT_FALSE(history.nextSteps().undo);
    EXPECT_FALSE(lists.engine->OpenDatabase(copy)->tableDefs().Contains(u"LIST_HISTORY"_s));
    edits.SetDbName(copy);
    edits.AppendFromMP3DB(Lists::tracksText({8}), list, kAktionMix);
    EXPECT_TRUE(lists.files.fileExists(elsewhere.file(u"melovane.undo.mdb"_s)));
    EXPECT_EQ(history.undo().outcome, Outcome::Done);
}

TEST_F(ListHistoryTest, AJingleListThatComesBackPlaysOnBesideThePlayingPlaylist)
{
    const Pnid playlist = lists.addList({1});
    const Pnid jingles = lists.addList({2}, u"Jingles"_s);
    lists.execute(u"update pl_name set isplay=true"_s);
    lists.execute(u"update pl_name set grid=-1 where nid=%1"_s.arg(numberOf(jingles)));
    lists.names.deleteList(jingles);
    ASSERT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(
        lists.column(u"select nid from pl_name where isplay=true order by nid"_s),
        (QStringList{QString::number(numberOf(playlist)), QString::number(numberOf(jingles))}));
}

TEST_F(ListHistoryTest, AJingleListThatComesBackGivesWayToTheOneThatPlaysNow)
{
    const Pnid former = lists.addList({1}, u"Alte"_s);
    const Pnid present = lists.addList({2}, u"Neue"_s);
    lists.execute(u"update pl_name set grid=-1"_s);
    lists.execute(u"update pl_name set isplay=true where nid=%1"_s.arg(numberOf(former)));
    lists.names.deleteList(former);
    lists.execute(u"update pl_name set isplay=true where nid=%1"_s.arg(numberOf(present)));
    ASSERT_EQ(lists.history.undo().outcome, Outcome::Done);
    EXPECT_EQ(lists.column(u"select nid from pl_name where isplay=true"_s),
              QStringList{QString::number(numberOf(present))});
}

TEST_F(ListHistoryTest, TheNextStepsAreToldBothAtOnce)
{
    EXPECT_FALSE(lists.history.nextSteps().undo);
    EXPECT_FALSE(lists.history.nextSteps().redo);
    const Pnid list = lists.addList({1, 2});
    lists.edits.AppendFromMP3DB(lists.tracksText({3}), list, 0);
    lists.edits.DeletePlaylistRecords(lists.entriesText({lists.plids(list).at(0)}), list);
    lists.edits.AppendFromMP3DB(lists.tracksText({4, 5}), list, 0);
    for (int undone = 0; undone < 2; ++undone) {
        const ListHistory::NextSteps next = lists.history.nextSteps();
        ASSERT_TRUE(next.undo);
        EXPECT_EQ(next.undo->action, lists.history.nextUndo()->action);
        EXPECT_EQ(next.undo->count, lists.history.nextUndo()->count);
        EXPECT_EQ(next.undo->listName, u"Party"_s);
        EXPECT_EQ(next.redo.has_value(), undone > 0);
        ASSERT_EQ(lists.history.undo().outcome, Outcome::Done);
        ASSERT_TRUE(lists.history.nextSteps().redo);
        EXPECT_EQ(lists.history.nextSteps().redo->action, next.undo->action);
        EXPECT_EQ(lists.history.nextSteps().redo->count, next.undo->count);
    }
}

} // namespace
} // namespace melovane
