#include "bus/view_number.h"
#include "shell/vocabulary_fixture.h"

#include <QFile>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

Vocabulary::Rows Vocabulary::libraryRows()
{
    const auto one = [this] { search(u"Segel"_s); };
    const auto appended = [this] { seeEntries(u"Hafen Brandung Segel"_s); };
    return {
        {u"all.db.append"_s, one, {}, appended},
        {u"all.db.append.aktuell"_s, one, {}, appended},
        {u"all.db.insert"_s, one, {}, [this] { seeEntries(u"Segel Hafen Brandung"_s); }},
        {u"all.db.insert.aktuell"_s,
         one,
         {},
         [this] { EXPECT_TRUE(heard.contains(u"playlist.all.db.insert.aktuell.data"_s)); },
         u"the library passes its rows on, the player takes them"_s},
        {u"bpm.find.fid"_s, {}, {0, tracks[2]}, [this] { seeTitles(u"Segel"_s); }},
        {u"context.click.row"_s,
         {},
         {u"/music/tief/"_s, u"Path"_s},
         [this] { seeTitles(u"Segel"_s); }},
        {u"context.show.dir"_s,
         [this] { showKind(u"tree.album"_s); },
         {u"/music/tief/"_s, QString()},
         [this] {
             seeTitles(u"Segel"_s);
             const OutlineTree& rows = tree().outline();
             EXPECT_EQ(rows.objectName(), u"TreeDir"_s);
             EXPECT_TRUE(rows.row(rows.currentRow()).text.contains("tief"_L1));
         }},
        {u"sleeveviewer.click.image"_s, {}, {u"/c.jpg"_s}, [this] { seeTitles(u"Hafen"_s); }},
        {u"db.beatgauge.menu.click"_s,
         {},
         {},
         [this] { EXPECT_TRUE(wasStarted(u"beatgauge fid=%1 cmd=auto"_s.arg(current()))); }},
        {u"db.beatgauge.menu.manuell.click"_s,
         {},
         {},
         [this] { EXPECT_TRUE(wasStarted(u"beatgauge fid=%1 cmd=manuell"_s.arg(current()))); }},
        {u"db.set.favorit"_s,
         {},
         {},
         [this] { EXPECT_EQ(count(u"db_all where favorit is not null"_s), 1); }},
        {u"tree.click.row"_s,
         one,
         {u"Kaja"_s, u"Interpret"_s},
         [this] {
             EXPECT_EQ(titles(library()).split(u' ').size(), 3);
             EXPECT_TRUE(status(StatusPanel::Node).contains(u"Kaja"_s));
         }},
        {u"Info.From.FID"_s,
         {},
         {tracks[0]},
         [this] {
             // The mark is a colour of the row's text.
             const QImage marked = library().viewport()->grab().toImage();
             send(u"info.from.fid"_s, {tracks[1]});
             EXPECT_NE(library().viewport()->grab().toImage(), marked);
         }},
    };
}

Vocabulary::Rows Vocabulary::databaseRows()
{
    const auto renamed = [this] { rename(u"Mole"_s); };
    const auto seen = [this] {
        EXPECT_TRUE(titles(library()).contains(u"Mole"_s));
        EXPECT_TRUE(titles(list()).contains(u"Mole"_s));
    };
    return {
        {u"change.config"_s,
         renamed,
         {},
         [this] { EXPECT_TRUE(titles(library()).contains(u"Mole"_s)); }},
        {u"db.change"_s, renamed, {}, seen},
        {u"db.disconnect"_s,
         {},
         {},
         [this] {
             EXPECT_EQ(library().model()->rowCount(), 0);
             EXPECT_EQ(list().model()->rowCount(), 0);
             send(u"db.reconnect"_s);
         }},
        {u"db.reconnect"_s,
         [this] {
             send(u"db.disconnect"_s);
             ASSERT_EQ(list().model()->rowCount(), 0);
         },
         {},
         [this] {
             EXPECT_EQ(library().model()->rowCount(), 3);
             EXPECT_EQ(list().model()->rowCount(), 2);
         }},
        {u"db.refresh.by.fid"_s,
         [this] {
             send(u"info.from.fid"_s, {tracks[0]});
             showKind(u"tree.info"_s);
             rename(u"Mole"_s);
         },
         {tracks[0]},
         [this, seen] {
             seen();
             EXPECT_TRUE(texts(tree().outline()).contains(u"Mole"_s));
         }},
        {u"fill.temp.edit.table"_s,
         [this] {
             suite.execute(u"delete from TEMP_MP3Edit"_s);
             library().selectAll();
         },
         {kViewIsLibrary},
         [this] {
             EXPECT_EQ(count(u"TEMP_MP3Edit"_s), 3);
             suite.execute(u"delete from TEMP_MP3Edit"_s);
             list().selectAll();
             list().setFocus();
             send(u"fill.temp.edit.table"_s, {kViewIsPlaylist});
             EXPECT_EQ(count(u"TEMP_MP3Edit"_s), 2);
         }},
        {u"show.melovane.kiv"_s,
         [this] { send(u"playlist.set.lock"_s, {false}); },
         {kViewIsLibrary},
         [this] {
             EXPECT_TRUE(wasStarted(u"Melovanekiv "_s));
             suite.write(u"started.txt"_s, {});
             send(u"show.melovane.kiv"_s, {kViewIsPlaylist});
             EXPECT_TRUE(wasStarted(u"Melovanekiv "_s));
         }},
    };
}

// NOLINTNEXTLINE(readability-function-size): a table, with a row for each name
Vocabulary::Rows Vocabulary::lookRows()
{
    const auto fitted = [this](const auto& grid) {
        return [this, grid] { EXPECT_NE(columnsOf((this->*grid)()), kept); };
    };
    const auto saved = [this](const QString& name) {
        return [this, name] { EXPECT_TRUE(QFile::exists(layout(name))) << name.toStdString(); };
    };
    const auto removed = [this](const QString& name) {
        return [this, name] { QFile::remove(layout(name)); };
    };
    // Another arrangement than the one that lies in the file.
    const auto other = [this](const auto& grid, const QString& message) {
        return [this, grid, message] {
            send(message);
            kept = shownFields((this->*grid)());
            disarrange((this->*grid)());
            ASSERT_NE(shownFields((this->*grid)()), kept);
        };
    };
    const auto loaded = [this](const auto& grid) {
        return [this, grid] { EXPECT_EQ(shownFields((this->*grid)()), kept); };
    };
    const auto ofLibrary = &Vocabulary::library;
    const auto ofList = &Vocabulary::list;
    const QString dbFile = u"gridlayout_db.grx"_s;
    const QString plFile = u"gridlayout_dbpl.grx"_s;
    const QString saveDb = u"save.layout.mp3db"_s;
    const QString savePl = u"save.layout.playlist"_s;
    return {
        {u"autosize.mp3db"_s,
         [this] {
             setAutosize(true);
             narrow(library());
         },
         {},
         [this, fitted, ofLibrary] {
             fitted(ofLibrary)();
             setAutosize(false);
         }},
        {u"autosize.playlist"_s, [this] { narrow(list()); }, {}, fitted(ofList)},
        {saveDb, removed(dbFile), {}, saved(dbFile)},
        {savePl, removed(plFile), {}, saved(plFile)},
        {u"load.layout.mp3db"_s, other(ofLibrary, saveDb), {dbFile}, loaded(ofLibrary)},
        {u"load.layout.change.mp3db"_s, other(ofLibrary, saveDb), {dbFile}, loaded(ofLibrary)},
        {u"load.layout.playlist"_s, other(ofList, savePl), {plFile}, loaded(ofList)},
        {u"load.layout.change.playlist"_s, other(ofList, savePl), {plFile}, loaded(ofList)},
        {u"create.toolbars"_s,
         [this] { forgetTips(); },
         {QString()},
         [this] {
             seeTips({u"ctl_MP3DB1"_s, u"ctl_Playlist1"_s, u"Tree1"_s, u"PlaylistFavorit1"_s});
         }},
        {u"update.tolltip.text"_s,
         [this] { forgetTips(); },
         {},
         [this] {
             seeTips({u"ctl_MP3DB1"_s, u"ctl_Playlist1"_s});
         },
         u"the tree has no tips of its own that change"_s},
        {u"update.color"_s,
         [this] {
             const GridFont big{.name = {}, .size = 21};
             library().setGridFont(big);
             list().setGridFont(big);
             lists().setTreeFont(big);
             tree().outline().setTreeFont(big);
         },
         {},
         [this] {
             EXPECT_NE(library().font().pointSize(), 21);
             EXPECT_NE(list().font().pointSize(), 21);
             EXPECT_NE(lists().font().pointSize(), 21);
             EXPECT_NE(tree().outline().font().pointSize(), 21);
         }},
        {u"Volume.Monitor.Change.Icon"_s,
         [this] {
             send(u"Volume.Monitor.Change.Icon"_s, {10'000});
             pictures = {picture(u"ctl_MP3DB1"_s), picture(u"ctl_Playlist1"_s)};
         },
         {0},
         [this] {
             EXPECT_NE(picture(u"ctl_MP3DB1"_s), pictures[0]);
             EXPECT_NE(picture(u"ctl_Playlist1"_s), pictures[1]);
         }},
        {u"all.volume"_s,
         {},
         {},
         [this] {
             for (const QString& name : {u"ctl_MP3DB1"_s, u"ctl_Playlist1"_s}) {
                 suite.write(u"started.txt"_s, {});
                 tool(name, u"all.volume"_s).click();
                 EXPECT_TRUE(wasStarted(u"LevelPanel "_s));
             }
         },
         u"the tool button of that key, which each view answers itself"_s},
        {u"print.send.commands"_s,
         {},
         {},
         [this] { EXPECT_EQ(heard.size(), 1); },
         u"who looks for a fault; the views print nothing"_s},
    };
}

} // namespace melovane::test
