#include "bus/message_numbers.h"
#include "shell/vocabulary_fixture.h"
#include "trees/tree_key.h"

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

// NOLINTNEXTLINE(readability-function-size): a table, with a row for each name
Vocabulary::Rows Vocabulary::entryRows()
{
    const auto appended = [this] { seeEntries(u"Hafen Brandung Segel"_s); };
    const auto inserted = [this] { seeEntries(u"Segel Hafen Brandung"_s); };
    const auto aktion = [this](int number) {
        return [this, number] {
            EXPECT_EQ(suite.value(u"select aktion from pl_all where plid="_s + entry(1)).toLong(),
                      number);
        };
    };
    const auto otherAktion = [this] {
        suite.execute(u"update pl_all set aktion=5 where pnid=%1"_s.arg(main));
        send(u"refresh.playlist"_s);
    };
    const auto mixed = [this] {
        suite.execute(u"update pl_all set mixin='1,2,3,0,5', mixtime=4000, framestart=700, "
                      "volume=3 where plid="_s +
                      entry(1));
        send(u"refresh.playlist"_s);
    };
    const QString ofMain = u"pl_all where pnid=%1 and "_s.arg(main);
    return {
        {u"playlist.append.data"_s, {}, {dragged()}, appended},
        {u"playlist.all.db.append.data"_s, {}, {dragged()}, appended},
        {u"playlist.all.db.append.aktuell.data"_s, {}, {dragged()}, appended},
        {u"playlist.insert.data"_s, {}, {dragged()}, inserted},
        {u"playlist.all.db.insert.data"_s, {}, {dragged()}, inserted},
        {u"playlist.set.play.normal"_s, otherAktion, {}, aktion(0)},
        {u"playlist.set.play.stop"_s, otherAktion, {}, aktion(1)},
        {u"playlist.set.play.loop"_s, otherAktion, {}, aktion(2)},
        {u"mixstyle.all.del"_s,
         mixed,
         {},
         [this, ofMain] { EXPECT_EQ(count(ofMain + u"mixin is not null"_s), 0); }},
        {u"mixstyle.all.copy"_s,
         [this, mixed] {
             mixed();
             suite.execute(u"update pl_all set mixin='6,7' where plid="_s + entry(2));
             send(u"refresh.playlist.plid"_s, {entry(1).toInt(), entry(2).toInt()});
         },
         {},
         [this, ofMain] { EXPECT_EQ(count(ofMain + u"mixin='6,7'"_s), 2); }},
        {u"playlist.reset"_s,
         mixed,
         {main},
         [this, ofMain] { EXPECT_EQ(count(ofMain + u"framestart=0 and volume=0"_s), 2); }},
        {u"playlist.beatgauge.menu.click"_s,
         {},
         {},
         [this] {
             EXPECT_TRUE(
                 wasStarted(u"beatgauge fid=%1 cmd=auto plid=%2"_s.arg(tracks[0], entry(1))));
         }},
        {u"playlist.beatgauge.menu.manuell.click"_s,
         {},
         {},
         [this] {
             EXPECT_TRUE(
                 wasStarted(u"beatgauge fid=%1 cmd=manuell plid=%2"_s.arg(tracks[0], entry(1))));
         }},
        {u"beatgauge.bpm"_s,
         [this] { suite.execute(u"update db_all set BPM='128' where fid='%1'"_s.arg(tracks[0])); },
         {1, main},
         [this] {
             EXPECT_EQ(list().model()->index(0, list().columnOf(u"BPM"_s)).data().toString(),
                       u"128"_s);
         }},
        {u"refresh.playlist.plid"_s,
         [this] {
             list().goToRow(1, 0);
             ground = groundOf(0);
         },
         {},
         [this] {
             send(u"refresh.playlist.plid"_s, {entry(1).toInt(), entry(2).toInt()});
             EXPECT_NE(groundOf(0), ground);
         }},
        {u"playlist.jingle.loop"_s,
         [this] {
             send(u"jinglelist.aktivieren"_s, {jingles, false});
         },
         {},
         [this] { EXPECT_TRUE(tool(u"ctl_Playlist1"_s, u"playlist.jingle.loop"_s).isVisible()); },
         u"the player, and here the tool button of that key"_s},
        {u"playlist.jingle.play"_s,
         {},
         {jingles},
         [this] { seeEntries(u"Hafen Brandung"_s); },
         u"the player"_s},
        {u"Jingle.Player.Set.Volume"_s,
         {},
         {5000},
         [this] { EXPECT_EQ(heard.size(), 1); },
         u"the player and its level panel"_s},
    };
}

// NOLINTNEXTLINE(readability-function-size): a table, with a row for each name
Vocabulary::Rows Vocabulary::listRows()
{
    const auto added = [this] { addList(); };
    const auto renamedList = [this] {
        suite.execute(u"update pl_name set name='Hauptsatz' where nid=%1"_s.arg(main));
    };
    const auto seesName = [this] { EXPECT_TRUE(texts(lists()).contains(u"Hauptsatz"_s)); };
    return {
        {u"playlist.aktivieren"_s, {}, {dance, false}, [this] { seeEntries(u"Segel"_s); }},
        {u"jinglelist.aktivieren"_s,
         {},
         {jingles, false},
         [this] {
             seeEntries(u"Brandung"_s);
             EXPECT_TRUE(tool(u"ctl_Playlist1"_s, u"playlist.jingle.loop"_s).isVisible());
         }},
        {u"playlist.change"_s,
         renamedList,
         {main},
         [this, seesName] {
             seesName();
             EXPECT_TRUE(playerGot(message::kRefreshPlaylist));
         },
         u"the view of the entries has changed them and sends it"_s},
        {u"playlist.insert.data.end"_s,
         renamedList,
         {main},
         seesName,
         u"for the window and the view of the entries an insert ends with its message"_s},
        {u"playlist.eigenschaften"_s, {}, {}, asked(u"frmDetailPlaylist"_s)},
        {u"playlist.save.file"_s, {}, {}, asked(u"frmKopieFile"_s)},
        {u"playlist.save.file.show"_s,
         {},
         {main},
         asked(u"frmKopieFile"_s),
         u"the panel of lists is its sender"_s},
        {u"playlist.set.lock"_s,
         [this] { showKind(u"tree.playlist"_s); },
         {true},
         [this] {
             EXPECT_FALSE(tool(u"ctl_Playlist1"_s, u"all.delete"_s).isEnabled());
             send(u"playlist.set.lock"_s, {treekey::playlist(dance), u"all.lock"_s, true});
             EXPECT_EQ(rowOf(tree().outline(), u"Tanz"_s).picture, u"all.lock"_s);
         }},
        {u"favorit.refresh"_s,
         added,
         {},
         [this] {
             seeNewList();
             EXPECT_TRUE(playerGot(message::kRefreshPlaylistTree));
         }},
        {u"refresh.playlist"_s,
         [this] {
             addList();
             suite.execute(u"delete from pl_all where plid="_s + entry(1));
         },
         {0},
         [this] {
             seeNewList();
             seeEntries(u"Brandung"_s);
         },
         u"the library tree hears the panel of lists instead"_s},
        {u"refresh.playlist.tree"_s,
         [this] {
             showKind(u"tree.playlist"_s);
             addList();
         },
         {},
         [this] {
             seeNewList();
             EXPECT_TRUE(texts(tree().outline()).contains(u"Neu"_s));
             EXPECT_TRUE(playerGot(message::kRefreshPlaylistTree));
         }},
        {u"update.group.name"_s,
         [this] {
             suite.execute(u"update pl_group set name='Samstag' where grid=%1"_s.arg(group));
         },
         {treekey::group(group)},
         [this] { EXPECT_TRUE(texts(lists()).contains(u"Samstag"_s)); },
         u"the library tree shows a group as its next fill reads it"_s},
        {u"update.playlist.name"_s, renamedList, {treekey::playlist(main)}, seesName},
        {u"update.sort.playlist"_s,
         [this] {
             showKind(u"tree.playlist"_s);
             kept = {texts(tree().outline())};
             suite.execute(u"update pl_name set SID=7 where nid=%1"_s.arg(main));
         },
         {},
         [this] { EXPECT_NE(texts(tree().outline()), kept.first()); }},
        {u"update.tree.row"_s,
         [this] { showKind(u"tree.playlist"_s); },
         {treekey::playlist(dance), u"Tanzen"_s},
         [this] {
             EXPECT_TRUE(texts(lists()).contains(u"Tanzen"_s));
             EXPECT_TRUE(playerGot(message::kRefreshPlaylistTree));
         }},
    };
}

} // namespace melovane::test
