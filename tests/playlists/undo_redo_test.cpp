#include "platform/db/database.h"
#include "playlists/list_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;

class UndoSnapshots : public testing::Test
{
protected:
    UndoSnapshots() { lists.addTracks(9); }

    [[nodiscard]] QStringList taken() const
    {
        return lists.column(u"select UndoPos from TEMP_PL_UNDO"_s);
    }

    Lists lists;
    cls_PLInsertMoveDel& edits = lists.edits;
};

TEST_F(UndoSnapshots, WithoutAFileTheFilterMatchesNoActionAndNothingIsTaken)
{
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({2}), list, kAktionMix);
    EXPECT_EQ(lists.snapshots.filter(), u"%undo.an%"_s);
    EXPECT_TRUE(taken().isEmpty());
}

TEST_F(UndoSnapshots, ALineWithoutAnIsIgnored)
{
    lists.write(u"Undo.conf"_s, "Appen.Data.From.DB\n\nAppen.Data.From.DB.aus\n");
    edits.AppendFromMP3DB(Lists::tracksText({2}), lists.addList({1}), kAktionMix);
    EXPECT_EQ(lists.snapshots.filter(), u"%undo.an%"_s);
    EXPECT_TRUE(taken().isEmpty());
}

TEST_F(UndoSnapshots, ActionWordsMatchInAnyCase)
{
    lists.write(u"Undo.conf"_s, "  appen.DATA.from.db.AN  \r\nPlaylist.Taste.Del.an\r\n");
    edits.AppendFromMP3DB(Lists::tracksText({2}), lists.addList({1, 5}), kAktionMix);
    EXPECT_EQ(lists.snapshots.filter(), u"%%appen.data.from.db.an%playlist.taste.del.an%"_s);
    EXPECT_EQ(taken(), QStringList(2, u"Appen.Data.From.DB"_s));
}

TEST_F(UndoSnapshots, ASnapshotHoldsTheListAsItWasBeforeTheEdit)
{
    lists.write(u"Undo.conf"_s, "Move.Data.From.Playlist.an\n");
    const Pnid list = lists.addList({1, 5});
    lists.addList({3});
    const QStringList plids = lists.plids(list);
    edits.InsertORMoveFromPlaylist(2, Sid{1}, list, Lists::entriesText({plids[1]}), 0);
    EXPECT_EQ(lists.column(u"select SID from TEMP_PL_UNDO order by SID"_s),
              (QStringList{u"1"_s, u"5"_s}));
    EXPECT_EQ(lists.column(u"select PLID from TEMP_PL_UNDO order by SID"_s), plids);
}

TEST_F(UndoSnapshots, TwoSnapshotsOfOneActionDifferOnlyInTheirNumber)
{
    lists.write(u"Undo.conf"_s, "Undo.an\nPlaylist.Taste.Del.an");
    const Pnid list = lists.addList({1});
    ModUndoRedo snapshots(lists.files, lists.dataFolder(), [] { return qint64{1000}; });
    const auto database = lists.open();
    snapshots.UndoSnapshot(list, *database, undoaction::kDelete);
    snapshots.UndoSnapshot(list, *database, undoaction::kDelete);
    EXPECT_EQ(lists.column(u"select UndoID from TEMP_PL_UNDO order by UndoID"_s),
              (QStringList{u"1000"_s, u"1001"_s}));
    EXPECT_EQ(lists.column(u"select distinct UndoPos from TEMP_PL_UNDO"_s),
              (QStringList{u"Playlist.Taste.Del"_s}));
}

TEST_F(UndoSnapshots, WithoutItsQueryTheEditStillRuns)
{
    lists.write(u"Undo.conf"_s, "Appen.Data.From.DB.an\n");
    lists.open()->queryDefs().Delete(u"insert_temp_pl_undo"_s);
    const Pnid list = lists.addList({1});
    edits.AppendFromMP3DB(Lists::tracksText({2}), list, kAktionMix);
    EXPECT_EQ(lists.entries(list), u"1:1 3:2"_s);
}

TEST_F(UndoSnapshots, TheUptimeRises)
{
    const qint64 first = ModUndoRedo::systemUptime();
    EXPECT_GT(first, 0);
    EXPECT_GE(ModUndoRedo::systemUptime(), first);
}

} // namespace
} // namespace melovane
