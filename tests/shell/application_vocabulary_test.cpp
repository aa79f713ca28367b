// The list of all message names, row by row, in the running console: what each one does.
#include "bus/message_numbers.h"
#include "shell/vocabulary_fixture.h"

#include <QComboBox>
#include <QLabel>

#include <gtest/gtest.h>

#include <iostream>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// "playlist.change" as "pLaYlIsT.cHaNgE".
QString mixedCase(const QString& name)
{
    QString result = name;
    for (qsizetype i = 0; i < result.size(); ++i) {
        result[i] = i % 2 == 0 ? result[i].toLower() : result[i].toUpper();
    }
    return result;
}

} // namespace

void Vocabulary::play(const Rows& rows)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.toStdString());
        reset();
        if (row.before) {
            row.before();
        }
        static_cast<void>(dialogs.take());
        heard.clear();
        send(mixedCase(row.name), row.values);
        EXPECT_TRUE(heard.contains(row.name.toLower()));
        row.effect();
        if (!row.owner.isEmpty()) {
            std::cout << row.name.toStdString() << ": " << row.owner.toStdString() << '\n';
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

Vocabulary::Rows Vocabulary::treeRows()
{
    const auto album = [this] {
        showKind(u"tree.album"_s);
        suite.execute(u"insert into tree_album (Name,anzahl,imgkey) values ('Nord',9,'album')"_s);
    };
    const auto seesAlbum = [this] { EXPECT_TRUE(texts(tree().outline()).contains(u"Nord"_s)); };
    const auto rebuilds = [this](const QString& kind) {
        return [this, kind] { EXPECT_TRUE(wasStarted(u"Task.RebuildTree "_s + kind)); };
    };
    return {
        {u"refresh.all"_s,
         [this, album] {
             album();
             addList();
         },
         {QString()},
         [this, seesAlbum] {
             seesAlbum();
             seeNewList();
         }},
        {u"refresh.tree"_s, album, {u"1111111"_s}, seesAlbum, u"the window is its sender"_s},
        {u"refresh.tree.album"_s, {}, {}, rebuilds(u"Album"_s)},
        {u"refresh.tree.dir"_s, {}, {}, rebuilds(u"Dir"_s)},
        {u"refresh.tree.genre"_s, {}, {}, rebuilds(u"Genre"_s)},
        {u"refresh.tree.interpret"_s, {}, {}, rebuilds(u"Interpret"_s)},
        {u"info.from.fid"_s,
         [this] {
             send(u"show.tagedit.mp3db"_s, {current(), true});
             showKind(u"tree.info"_s);
         },
         {tracks[2]},
         [this] {
             EXPECT_TRUE(texts(tree().outline()).contains(u"Segel"_s));
             EXPECT_EQ(window->findChild<QLabel*>(u"TagTitle"_s)->text(), u"Segel"_s);
         }},
    };
}

Vocabulary::Rows Vocabulary::windowRows()
{
    const auto menuOpens = [this] {
        auto* menu = window->findChild<QMenu*>(u"popupDBGRID"_s);
        EXPECT_EQ(dialogs.take(), QStringList{u"popupDBGRID"_s});
        EXPECT_TRUE(menu != nullptr);
    };
    const auto panelShows = [this] {
        EXPECT_TRUE(view(u"EditTag1"_s).isVisible());
        EXPECT_EQ(window->findChild<QLabel*>(u"TagTitle"_s)->text(), u"Segel"_s);
    };
    const auto noPanel = [this] {
        if (view(u"EditTag1"_s).isVisible()) {
            tool(u"ctl_MP3DB1"_s, u"all.tagpanel"_s).click();
        }
    };
    const auto lies = [this](int number) {
        return [this, number] {
            EXPECT_TRUE(playerGot(number));
            EXPECT_EQ(suite.value(u"select fid from todo where id=%1"_s.arg(number)).toText(),
                      tracks[2]);
        };
    };
    return {
        {u"beatgauge.playlist.fid.auto"_s,
         {},
         {tracks[2]},
         [this] { EXPECT_TRUE(wasStarted(u"beatgauge cmd=auto fid="_s + tracks[2])); }},
        {u"beatgauge.playlist.fid.manuell"_s,
         {},
         {tracks[2]},
         [this] { EXPECT_TRUE(wasStarted(u"beatgauge cmd=manuell fid="_s + tracks[2])); }},
        {u"dj.player.play.next"_s, {}, {tracks[2]}, lies(message::kPlayNext)},
        {u"dj.player.play.sofort"_s, {}, {tracks[2]}, lies(message::kPlayNow)},
        {u"edittag.show.editbox.new.genre"_s, {}, {}, asked(u"frmEditBox"_s)},
        {u"editbox.add.new.genre"_s,
         [this] {
             send(u"show.tagedit.mp3db"_s, {tracks[2], true});
         },
         {u"Neuklang"_s},
         [this] {
             auto* genre = window->findChild<QComboBox*>(u"cmbGenre"_s);
             EXPECT_GE(genre->findText(u"Neuklang"_s), 0);
             EXPECT_EQ(genre->currentText(), u"Neuklang"_s);
         }},
        {u"run.proc"_s,
         {},
         {u"Sleeve.Viewer"_s, u"/c.jpg"_s},
         [this] { EXPECT_TRUE(wasStarted(u"SleeveViewer /c.jpg"_s)); }},
        {u"show.context.menu.mp3db"_s, {}, {tracks[0]}, menuOpens},
        {u"show.context.menu.playlist"_s, {}, {tracks[0]}, menuOpens},
        {u"show.gridlayout"_s, {}, {u"DB"_s}, asked(u"frmEditGrid"_s)},
        {u"show.statustext"_s,
         {},
         {u"Alles gut"_s},
         [this] { EXPECT_EQ(status(StatusPanel::Message), u"Alles gut"_s); }},
        {u"show.tagedit.mp3db"_s, noPanel, {tracks[2], true}, panelShows},
        {u"show.tagedit.playlist"_s, noPanel, {tracks[2], true}, panelShows},
        {u"show.tageditor"_s, {}, {}, [this] { EXPECT_TRUE(wasStarted(u"tagbench edit"_s)); }},
        {u"Volume.Monitor.Show"_s, {}, {}, [this] { EXPECT_TRUE(wasStarted(u"LevelPanel "_s)); }},
    };
}

Vocabulary::Rows Vocabulary::monitorRows()
{
    const auto plays = [this] { send(u"player.monitor.play.start"_s, {tracks[0]}); };
    return {
        {u"player.monitor.play.start"_s,
         {},
         {tracks[0]},
         [this] { EXPECT_EQ(status(StatusPanel::Message), u" :: Hafen"_s); }},
        {u"player.monitor.play.center"_s,
         {},
         {tracks[0]},
         [this] { EXPECT_EQ(status(StatusPanel::Elapsed), u"00:30"_s); }},
        {u"player.monitor.play.stop"_s,
         plays,
         {tracks[0]},
         [this] { EXPECT_EQ(status(StatusPanel::Elapsed), QString()); }},
        {u"player.monitor.seek"_s,
         [this] { send(u"player.monitor.play.center"_s, {tracks[0]}); },
         {},
         [this] {
             // It goes on where it is.
             EXPECT_EQ(status(StatusPanel::Message), u" :: Hafen"_s);
             EXPECT_GE(status(StatusPanel::Elapsed), u"00:30"_s);
         }},
        {u"player.monitor.seek.set"_s,
         plays,
         {1148},
         [this] {
             EXPECT_TRUE(status(StatusPanel::Elapsed).startsWith(u"00:"_s));
             EXPECT_GE(status(StatusPanel::Elapsed), u"00:29"_s);
         }},
    };
}

TEST_F(Vocabulary, EachNameDoesWhatItsRowSays)
{
    inConsole([this] {
        size_t names = 0;
        for (const Rows& rows : {libraryRows(), databaseRows(), lookRows(), entryRows(), listRows(),
                                 treeRows(), windowRows(), monitorRows()}) {
            names += rows.size();
            play(rows);
        }
        EXPECT_EQ(names, 94U);
    });
    EXPECT_EQ(warnings, QStringList());
}

} // namespace melovane::test
