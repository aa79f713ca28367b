#include "shell/window_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Style = Processes::WindowStyle;

struct WindowBusTest : public test::WindowFixture
{
    WindowBusTest()
    {
        mlvdb.load();
        settings->SetMessageHandleDJ(55);
        messages.alive = {55};
        taken();
    }

    /// What happens behind a message, the message itself left out.
    QStringList after(const QString& name, const Value& value1 = {}, const Value& value2 = {})
    {
        others.SendMessage(name, value1, value2);
        QStringList result = taken();
        result.removeFirst();
        return result;
    }
};

TEST_F(WindowBusTest, ABurstOfPlaylistChangesPostsOneMessageToThePlayer)
{
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(after(u"playlist.change"_s, 7), QStringList());
    }
    ASSERT_TRUE(loop.fire(100));
    EXPECT_EQ(taken(), (QStringList{u"idle"_s, u"post 1042 to 55"_s}));
    EXPECT_FALSE(loop.fire(100));
}

TEST_F(WindowBusTest, AnotherNameInAnotherLetterCaseIsTheSame)
{
    EXPECT_EQ(after(u"Player.Monitor.PLAY.Stop"_s, u"1"_s), QStringList{u"monitor STOP 1 0"_s});
}

TEST_F(WindowBusTest, TheMonitorIsPlayedAndSought)
{
    EXPECT_EQ(after(u"player.monitor.play.start"_s, u"1"_s), QStringList{u"monitor PLAY 1 0"_s});
    EXPECT_EQ(after(u"player.monitor.play.center"_s, u"1"_s),
              QStringList{u"monitor PLAYCENTER 1 0"_s});
    EXPECT_EQ(after(u"player.monitor.seek"_s, 0), QStringList{u"monitor SEEK  0"_s});
    monitor.frame = 400;
    EXPECT_EQ(after(u"player.monitor.seek"_s, 0), QStringList{u"monitor SEEK  400"_s})
        << "it begins where it plays";
    EXPECT_EQ(after(u"player.monitor.seek.set"_s, u"250"_s), QStringList{u"monitor SEEK  250"_s});
}

TEST_F(WindowBusTest, ThePlayerIsAskedForATrack)
{
    EXPECT_EQ(after(u"dj.player.play.next"_s, u"1"_s), QStringList{u"send 1046 0 0 to 55"_s});
    EXPECT_EQ(after(u"dj.player.play.sofort"_s, u"1"_s), QStringList{u"send 1047 0 0 to 55"_s});
}

TEST_F(WindowBusTest, APlayerThatDoesNotRunIsTold)
{
    messages.alive.clear();
    EXPECT_EQ(after(u"dj.player.play.next"_s, u"1"_s), QStringList());
    EXPECT_EQ(shown(), u"Der Player läuft nicht."_s);
}

TEST_F(WindowBusTest, AStatusTextStandsInItsPanel)
{
    after(u"show.statustext"_s, u"Guten Morgen"_s);
    EXPECT_EQ(shown(), u"Guten Morgen"_s);
    after(u"show.statustext"_s);
    EXPECT_EQ(shown(), QString());
}

TEST_F(WindowBusTest, AClickInATreeShowsItsNode)
{
    after(u"tree.click.row"_s, u"Ostwind"_s, u"Interpret"_s);
    EXPECT_EQ(status.panel(StatusPanel::Node), u"Interpret :: Ostwind"_s);
    after(u"tree.click.row"_s, u"1999"_s, u"Jahr"_s);
    EXPECT_EQ(status.panel(StatusPanel::Node), u"Interpret :: Ostwind"_s);
}

TEST_F(WindowBusTest, TheCoverViewerAndTheTempoFinderAreStarted)
{
    after(u"run.proc"_s, u"sleeve.VIEWER"_s, u"/covers/a.jpg"_s);
    after(u"run.proc"_s, u"something"_s, u"rm"_s);
    after(u"beatgauge.playlist.fid.auto"_s, u"1"_s);
    after(u"beatgauge.playlist.fid.manuell"_s, u"1"_s);
    EXPECT_EQ(processes.commands, (QStringList{command(u"SleeveViewer.exe /covers/a.jpg"_s),
                                               command(u"beatgauge.exe cmd=auto fid=1"_s),
                                               command(u"beatgauge.exe cmd=manuell fid=1"_s)}));
    EXPECT_EQ(processes.styles, (std::vector{Style::Normal, Style::Minimised, Style::Minimised}));
}

TEST_F(WindowBusTest, TheTagEditorIsStartedWhereItIsInstalled)
{
    after(u"show.tageditor"_s);
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_FALSE(shown().isEmpty());
    install(u"tagbench.exe"_s);
    after(u"show.tageditor"_s);
    EXPECT_EQ(processes.commands, QStringList{command(u"tagbench.exe edit"_s)});
}

TEST_F(WindowBusTest, ALiveVolumeMonitorIsShownADeadOneStarted)
{
    install(u"LevelPanel"_s);
    settings->WriteKeyValue(u"Global"_s, u"Message.Handle.Volume.Monitor"_s, u"88"_s);
    messages.alive.insert(88);
    EXPECT_EQ(after(u"Volume.Monitor.Show"_s), QStringList{u"send 1075 0 0 to 88"_s});
    EXPECT_EQ(processes.commands, QStringList());
    messages.alive.remove(88);
    EXPECT_EQ(after(u"volume.monitor.show"_s), QStringList());
    EXPECT_EQ(processes.commands, QStringList{command(u"LevelPanel.exe"_s)});
}

TEST_F(WindowBusTest, ANewGenreIsAskedForInItsDialog)
{
    EXPECT_EQ(after(u"edittag.show.editbox.new.genre"_s), QStringList{u"ask genre"_s});
}

TEST_F(WindowBusTest, TheTagPanelIsShownForTheViewThatAsks)
{
    EXPECT_EQ(after(u"show.tagedit.mp3db"_s, u"800000000001"_s),
              QStringList{u"tags 800000000001 shown in library"_s});
    EXPECT_EQ(after(u"Show.TagEdit.Playlist"_s, u"800000000002"_s, true),
              QStringList{u"tags 800000000002 edited in playlist"_s});
}

TEST_F(WindowBusTest, ATrackIsHeardFromItsStartAndFromItsStop)
{
    EXPECT_EQ(after(u"play.from.start.pos"_s, u"8"_s, 459), QStringList{u"monitor SEEK 8 459"_s});
    EXPECT_EQ(after(u"play.from.stop.pos"_s, u"8"_s, 14979),
              QStringList{u"monitor SEEK 8 14979"_s});
}

TEST_F(WindowBusTest, OfATrackThatPlaysToItsEndTheLastSecondsAreHeard)
{
    data.track.DTimeMsec = 216'000;
    EXPECT_EQ(after(u"play.from.stop.pos"_s, u"8"_s, 0), QStringList{u"monitor SEEK 8 8077"_s});
    data.track.DTimeMsec = 3000;
    EXPECT_EQ(after(u"play.from.stop.pos"_s, u"8"_s, 0), QStringList{u"monitor SEEK 8 0"_s});
}

TEST_F(WindowBusTest, ATreeIsRebuiltByItsProgramSoThatTheWindowNeverWaits)
{
    install(u"Task.RebuildTree"_s);
    for (const auto& [name, tree] : {std::pair(u"refresh.tree.genre"_s, u"Genre"_s),
                                     {u"refresh.tree.dir"_s, u"Dir"_s},
                                     {u"refresh.tree.album"_s, u"Album"_s},
                                     {u"refresh.tree.interpret"_s, u"Interpret"_s}}) {
        processes.commands.clear();
        EXPECT_EQ(after(name), QStringList());
        EXPECT_EQ(processes.commands, QStringList{command(u"Task.RebuildTree.exe "_s + tree)});
        EXPECT_EQ(shown(), u"Der Baum wird neu aufgebaut ..."_s);
    }
}

TEST_F(WindowBusTest, WithoutThatProgramATreeIsRebuiltHereAndAllButTheGenresLoadedAgain)
{
    EXPECT_EQ(after(u"refresh.tree.genre"_s), QStringList{u"rebuild Genre"_s});
    for (const auto& [name, tree] : {std::pair(u"refresh.tree.dir"_s, u"Dir"_s),
                                     {u"refresh.tree.album"_s, u"Album"_s},
                                     {u"refresh.tree.interpret"_s, u"Interpret"_s}}) {
        EXPECT_EQ(after(name), (QStringList{u"rebuild "_s + tree, u"bus refresh.tree 1111111"_s}));
    }
    EXPECT_EQ(processes.commands, QStringList());
}

TEST_F(WindowBusTest, NoTreeIsRebuiltWhileAnotherProgramHasTheLibrary)
{
    install(u"Task.RebuildTree"_s);
    data.fault = dberror::kReleased;
    EXPECT_EQ(after(u"refresh.tree.album"_s), QStringList());
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_FALSE(shown().isEmpty());
}

TEST_F(WindowBusTest, TheExportOpensForTheChosenListElseForTheOneOnTheScreen)
{
    EXPECT_EQ(after(u"playlist.save.file.show"_s, u"7"_s), QStringList{u"export list 7"_s});
    EXPECT_EQ(after(u"playlist.save.file.show"_s, QString()), QStringList{u"export list 12"_s});
    shownPnid = 0;
    EXPECT_EQ(after(u"playlist.save.file.show"_s, u"x"_s), QStringList());
    EXPECT_EQ(shown(), u"Erst eine Playliste auswählen"_s);
}

TEST_F(WindowBusTest, TheHeadingsOfThePlaylistOpenItsLayout)
{
    EXPECT_EQ(after(u"show.gridlayout"_s, u"PL"_s), QStringList(u"bus save.layout.playlist"_s));
}

TEST_F(WindowBusTest, ANameThatNobodyHandlesCostsNothing)
{
    EXPECT_EQ(after(u"no.such.name"_s, u"1"_s), QStringList());
    EXPECT_EQ(after({}, {}), QStringList());
}

TEST_F(WindowBusTest, FavouritesAndPlaylistTreeGoToThePlayerUnlessTheWindowItselfSentThem)
{
    BusSender window_(bus, u"MLVDB"_s);
    for (const QString& name :
         {u"refresh.playlist.tree"_s, u"favorit.refresh"_s, u"update.tree.row"_s}) {
        EXPECT_EQ(after(name), QStringList{u"send 1079 0 0 to 55"_s});
        window_.SendMessage(name);
        EXPECT_EQ(taken().size(), 1);
    }
}

} // namespace
} // namespace melovane
