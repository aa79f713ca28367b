#include "shell/window_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Style = Processes::WindowStyle;

using WindowMenuTest = test::WindowFixture;

const QString kFid = u"800000000001"_s;

TEST_F(WindowMenuTest, EveryEntryHasItsTextAndThoseOfLaterSayWhyTheyAreGrey)
{
    settings->WriteKeyValue(u"Global"_s, u"MessageHandleJobs"_s, u"77"_s);
    messages.alive = {77};
    mlvdb.load();
    QSet<QString> names;
    for (const MenuRow& row : MenuCommands::rows()) {
        if (row.kind == MenuRow::Kind::Separator) {
            continue;
        }
        const QString name = row.name.toString();
        EXPECT_FALSE(names.contains(name)) << name.toStdString();
        names.insert(name);
        EXPECT_FALSE(menus.captions.value(name).isEmpty()) << name.toStdString();
        EXPECT_EQ(menus.toolTips.value(name).isEmpty(), !row.isLater()) << name.toStdString();
    }
    for (const QString& name : {u"mnuConfig"_s,
                                u"mnuImpMP3_0"_s,
                                u"mnuImpMP3_1"_s,
                                u"mnuImpMP3_2"_s,
                                u"mnuDatenbereinigung"_s,
                                u"mnuImpPlaylistBas"_s,
                                u"mnuExpPlaylistBas"_s,
                                u"mnuAktivePlaylist"_s,
                                u"mnuAktivePlaystFiles"_s,
                                u"mnuExitJobs"_s,
                                u"mnuExit"_s,
                                u"mnuDelSuchlist"_s,
                                u"mnuDelDayCount"_s,
                                u"mnuViewDel"_s,
                                u"mnuNoExist"_s,
                                u"mnuNoExistSuchen"_s,
                                u"mnuNoExistAnzeigen"_s,
                                u"mnuToDatei"_s,
                                u"mnuRefreshTree"_s,
                                u"mnuTopPlugin"_s,
                                u"mnuPlaylist"_s,
                                u"mnuDatenbank"_s,
                                u"mnuRepairGridLayout"_s,
                                u"mnuFont"_s,
                                u"mnuAutosizeGrid"_s,
                                u"mnuInternet_0"_s,
                                u"mnuUeber"_s}) {
        EXPECT_TRUE(names.contains(name)) << name.toStdString();
    }
    EXPECT_EQ(menus.captions.value(u"mnuDatei"_s), u"Datei"_s);
    EXPECT_EQ(menus.captions.value(u"mnuDatenbereinigung"_s), texts.text(u"frmBerDB"_s));
}

TEST_F(WindowMenuTest, TheExportAsksTheListTreeWhichListIsMeant)
{
    taken();
    click(u"mnuAktivePlaystFiles"_s);
    EXPECT_EQ(taken(), QStringList{u"bus playlist.save.file"_s});
}

TEST_F(WindowMenuTest, TheFontDialogKeepsTheFontAndTellsAllViews)
{
    log.clear();
    click(u"mnuFont"_s);
    EXPECT_EQ(log, QStringList{u"choose font Verdana"_s})
        << "nothing changes when nothing is chosen";
    chosenFont = GridFont{u"Nimbus Sans"_s, 13, true, 0};
    QStringList sent;
    const auto ear =
        bus.subscribe([&sent](const MLVMessage& message) { sent.append(message.Command); });
    click(u"mnuFont"_s);
    EXPECT_EQ(sent, QStringList{u"update.color"_s});
    EXPECT_EQ(settings->GetKeyValue(u"Color"_s, u"FontName"_s, {}), u"Nimbus Sans"_s);
    EXPECT_EQ(settings->GetKeyValue(u"Color"_s, u"FontSize"_s, {}), u"13"_s);
}

TEST_F(WindowMenuTest, TheLayoutDialogSavesTheLayoutFirstAndLoadsAChangedOne)
{
    mlvdb.load();
    QStringList sent;
    const auto ear = bus.subscribe([&sent](const MLVMessage& message) {
        sent.append(QString(message.Command + u' ' + message.Value1.toText()).trimmed());
    });
    click(u"mnuDatenbank"_s);
    EXPECT_EQ(sent, QStringList{u"save.layout.mp3db"_s});
    layoutChosen = true;
    sent.clear();
    others.SendMessage(u"show.gridlayout"_s, u"DB"_s);
    sent.removeAll(u"show.gridlayout DB"_s);
    EXPECT_EQ(sent, (QStringList{u"save.layout.mp3db"_s,
                                 u"load.layout.change.mp3db gridlayout_db.grx"_s}));
}

TEST_F(WindowMenuTest, TheSearchListIsForgottenByTheLibrary)
{
    log.clear();
    click(u"mnuDelSuchlist"_s);
    EXPECT_EQ(log, QStringList{u"forget searches"_s});
}

TEST_F(WindowMenuTest, ProgramsAreStartedWithTheirArguments)
{
    for (const QString& name : {u"mnuConfig"_s, u"mnuImpMP3_0"_s, u"mnuImpMP3_1"_s,
                                u"mnuImpMP3_2"_s, u"mnuToDatei"_s, u"mnuRefreshTree"_s}) {
        click(name);
    }
    EXPECT_EQ(processes.commands,
              (QStringList{command(u"mlvconfig.exe 1000001"_s), command(u"mediaintake.exe 1"_s),
                           command(u"tagbench.exe import"_s), command(u"mediaintake.exe 2"_s),
                           command(u"Task.WriteTags.exe 1000001"_s),
                           command(u"Task.RebuildTree.exe 1"_s)}));
    EXPECT_EQ(shown(), QString());
}

TEST_F(WindowMenuTest, AProgramThatIsMissingIsToldInTheStatusLine)
{
    processes.succeeds = false;
    for (const QString& name : {u"mnuConfig"_s, u"mnuImpMP3_0"_s, u"mnuImpMP3_1"_s,
                                u"mnuImpMP3_2"_s, u"mnuToDatei"_s, u"mnuRefreshTree"_s}) {
        status.setPanel(StatusPanel::Message, {});
        click(name);
        EXPECT_FALSE(shown().isEmpty()) << name.toStdString();
    }
}

TEST_F(WindowMenuTest, PlaylistsAreStoredOnlyWhenOneHasChanged)
{
    click(u"mnuExpPlaylistBas"_s);
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_EQ(taken(), QStringList{u"warning Achtung !: Keine relevanten Änderungen an Playlisten "
                                   "vorhanden."_s});
    data.playlistChanged = true;
    click(u"mnuExpPlaylistBas"_s);
    EXPECT_EQ(processes.commands, QStringList{command(u"Task.StorePlaylists.exe "_s)});
    EXPECT_EQ(processes.styles, std::vector{Style::Minimised});
}

TEST_F(WindowMenuTest, ListsAreImportedAndTheActiveOneIsSaved)
{
    click(u"mnuImpPlaylistBas"_s);
    click(u"mnuAktivePlaylist"_s);
    EXPECT_EQ(taken(), (QStringList{u"import lists"_s, u"save active list"_s}));
}

TEST_F(WindowMenuTest, TheJobsAreAskedToEnd)
{
    settings->WriteKeyValue(u"Global"_s, u"MessageHandleJobs"_s, u"77"_s);
    messages.alive = {77};
    click(u"mnuExitJobs"_s);
    EXPECT_EQ(taken(), QStringList{u"send 1058 0 0 to 77"_s});
    EXPECT_EQ(shown(), QString());
    messages.alive.clear();
    click(u"mnuExitJobs"_s);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(shown(), u"Es laufen keine Hintergrundaufgaben."_s);
}

TEST_F(WindowMenuTest, TheEndOfTheJobsIsGreyWithAReasonWhileNoneRun)
{
    settings->WriteKeyValue(u"Global"_s, u"MessageHandleJobs"_s, u"77"_s);
    mlvdb.menu().judge();
    EXPECT_FALSE(menus.enabled.value(u"mnuExitJobs"_s));
    EXPECT_TRUE(menus.toolTips.value(u"mnuExitJobs"_s).endsWith(texts.text(u"status.jobs.none"_s)));
    messages.alive = {77};
    mlvdb.menu().judge();
    EXPECT_TRUE(menus.enabled.value(u"mnuExitJobs"_s));
}

TEST_F(WindowMenuTest, ExitClosesTheWindow)
{
    click(u"mnuExit"_s);
    EXPECT_EQ(window.closed, 1);
}

TEST_F(WindowMenuTest, TheLibraryShowsWhatItIsAskedFor)
{
    click(u"mnuViewDel"_s);
    click(u"mnuNoExistAnzeigen"_s);
    click(u"mnuDelDayCount"_s);
    EXPECT_EQ(taken(),
              (QStringList{u"library deleted"_s, u"library missing"_s, u"library reload"_s}));
}

TEST_F(WindowMenuTest, RepairingTheLayoutsOnlyLeavesAWordForTheNextStart)
{
    mlvdb.load();
    taken();
    click(u"mnuRepairGridLayout"_s);
    EXPECT_EQ(taken(), QStringList{u"warning Achtung !: Diese Änderung wird erst nach einem "
                                   "Neustart von Melovane DB aktiv."_s});
    EXPECT_EQ(folders.paths().GetUserRegistryValue(u"gridlayout_db.grx"_s, {}), u"repair"_s);
    EXPECT_EQ(folders.paths().GetUserRegistryValue(u"gridlayout_dbpl.grx"_s, {}), u"repair"_s);
}

TEST_F(WindowMenuTest, TheAutomaticWidthIsSwitchedAndTicked)
{
    mlvdb.load();
    EXPECT_FALSE(menus.checked.value(u"mnuAutosizeGrid"_s));
    click(u"mnuAutosizeGrid"_s);
    EXPECT_TRUE(menus.checked.value(u"mnuAutosizeGrid"_s));
    EXPECT_EQ(folders.makeSettings()->AutosizeGrid(), 1);
    click(u"mnuAutosizeGrid"_s);
    EXPECT_FALSE(menus.checked.value(u"mnuAutosizeGrid"_s));
    EXPECT_EQ(folders.makeSettings()->AutosizeGrid(), 0);
}

TEST_F(WindowMenuTest, AMissingHelpIsToldAndTheInformationShown)
{
    click(u"mnuInternet_0"_s);
    EXPECT_FALSE(shown().isEmpty());
    click(u"mnuUeber"_s);
    EXPECT_EQ(taken(), QStringList{u"info"_s});
}

TEST_F(WindowMenuTest, WithoutAnOpenerTheHelpSaysWhereItsPageLies)
{
    const QString page = folders.install(u"Melovane.html"_s, "x");
    processes.succeeds = false;
    click(u"mnuInternet_0"_s);
    EXPECT_TRUE(shown().contains(page)) << shown().toStdString();
}

TEST_F(WindowMenuTest, TheMakersPagesAreOpenedAndToldWhereTheyAreMissing)
{
    click(u"mnuInternet_3"_s);
    EXPECT_TRUE(shown().contains(u"Versionen.html"_s)) << shown().toStdString();
    const QString maker = folders.install(u"Melovane.html"_s, "x");
    const QString versions = folders.install(u"Versionen.html"_s, "x");
    click(u"mnuInternet_1"_s);
    click(u"mnuInternet_3"_s);
    EXPECT_EQ(processes.commands,
              (QStringList{u"explorer.exe "_s + maker, u"explorer.exe "_s + versions}));
    processes.succeeds = false;
    click(u"mnuInternet_3"_s);
    EXPECT_TRUE(shown().contains(versions)) << shown().toStdString();
}

TEST_F(WindowMenuTest, OnlyWhatOtherPartsOfTheProgramDoHasNoActionHere)
{
    QStringList later;
    for (const MenuRow& row : MenuCommands::rows()) {
        if (row.isLater()) {
            later.append(row.name.toString());
        }
    }
    EXPECT_EQ(later, (QStringList{u"mnuDatenbereinigung"_s, u"mnuRecycler"_s, u"mnuBackups"_s,
                                  u"mnuCheckLibrary"_s, u"mnuNoExistSuchen"_s, u"mnuNoExistFind"_s,
                                  u"mnuDoubles"_s, u"mnuQuickOpen"_s, u"mnuHealth"_s}));
}

struct PlugInTest : public test::WindowFixture
{
    PlugInTest()
    {
        settings->WriteKeyValue(u"PLUGIN"_s, u"one"_s, u"helper"_s);
        settings->WriteKeyValue(u"PLUGIN_Menu"_s, u"one"_s, u"Helfer"_s);
        settings->WriteKeyValue(u"PLUGIN_Option"_s, u"one"_s, u"pnid"_s);
        settings->WriteKeyValue(u"PLUGIN"_s, u"two"_s, u"gone"_s);
        settings->WriteKeyValue(u"PLUGIN"_s, u"three"_s, u"other"_s);
        settings->WriteKeyValue(u"PLUGIN_Option"_s, u"three"_s, u"PLID"_s);
        settings->WriteKeyValue(u"PLUGIN"_s, u"four"_s, u"plain"_s);
        install(u"helper.exe"_s);
        install(u"other"_s);
        install(u"plain"_s);
        mlvdb.load();
    }
};

TEST_F(PlugInTest, APlugInWhoseProgramIsMissingGetsNoEntry)
{
    ASSERT_EQ(menus.plugIns.size(), 3U);
    EXPECT_EQ(menus.plugIns[0].name, u"one"_s);
    EXPECT_EQ(menus.plugIns[0].caption, u"Helfer"_s);
    EXPECT_EQ(menus.plugIns[1].name, u"three"_s);
    // A plug-in without a menu text can be found by its name.
    EXPECT_EQ(menus.plugIns[1].caption, u"three"_s);
}

TEST_F(PlugInTest, ThePlaylistOrItsEntryIsPassedOn)
{
    mlvdb.menu().plugInClicked(u"one"_s);
    mlvdb.menu().plugInClicked(u"three"_s);
    mlvdb.menu().plugInClicked(u"four"_s);
    currentPlid = 0;
    mlvdb.menu().plugInClicked(u"three"_s);
    EXPECT_EQ(processes.commands,
              (QStringList{command(u"helper.exe 12"_s), command(u"other.exe 345"_s),
                           command(u"plain.exe "_s), command(u"other.exe "_s)}));
}

struct ContextMenuTest : public test::WindowFixture
{
    ContextMenuTest()
    {
        mlvdb.load();
        settings->SetMessageHandleDJ(55);
        messages.alive = {55};
        data.track.Interpret = u"Ostwind"_s;
        data.track.Path = u"/music/"_s;
        data.track.DriveName = u"DISC 1"_s;
        data.track.DriveTyp = 2;
        others.SendMessage(u"show.context.menu.mp3db"_s, kFid);
        taken();
    }

    QStringList after(const QString& tag)
    {
        mlvdb.contextMenu().clicked(tag);
        return taken();
    }
};

TEST_F(ContextMenuTest, AToolTipOfTheLanguageFileIsShownUnlessTheEntryIsGrey)
{
    for (const QString& name : {u"mnuUeber"_s, u"mnuExtra"_s, u"mnuNoExistSuchen"_s}) {
        texts.FindObject(name)->ToolTip = u"Mehr über "_s + name;
    }
    mlvdb.menu().setCaptions();
    EXPECT_EQ(menus.toolTips.value(u"mnuUeber"_s), u"Mehr über mnuUeber"_s);
    EXPECT_EQ(menus.toolTips.value(u"mnuExtra"_s), u"Mehr über mnuExtra"_s);
    EXPECT_EQ(menus.toolTips.value(u"mnuNoExistSuchen"_s), texts.text(u"status.later"_s));
}

TEST_F(ContextMenuTest, ItsEntriesHaveTheirIndexesAndTexts)
{
    EXPECT_EQ(menus.opened, 1);
    QList<int> separators;
    for (const ContextRow& row : contextRows()) {
        if (row.isSeparator()) {
            separators.append(row.index);
        } else {
            const QString name = u"mnuPOPDBGRID_%1"_s.arg(row.index);
            EXPECT_FALSE(menus.captions.value(name).isEmpty());
            EXPECT_TRUE(menus.toolTips.value(name).isEmpty()) << name.toStdString();
        }
        EXPECT_EQ(row.isMoreResult(), row.index == 9);
    }
    EXPECT_EQ(separators, (QList<int>{3, 6, 10, 14}));
    EXPECT_EQ(contextRows().size(), 18U);
}

TEST_F(ContextMenuTest, TheMonitorPlaysTheTrackOfTheMenu)
{
    EXPECT_EQ(after(u"play"_s), QStringList{u"monitor PLAY %1 0"_s.arg(kFid)});
    EXPECT_EQ(after(u"play.center"_s), QStringList{u"monitor PLAYCENTER %1 0"_s.arg(kFid)});
    EXPECT_EQ(after(u"stop"_s), QStringList{u"monitor STOP %1 0"_s.arg(kFid)});
}

TEST_F(ContextMenuTest, ThePlayerIsAskedForTheTrackOrItsAbsenceTold)
{
    EXPECT_EQ(after(u"play.sofort"_s), QStringList{u"send 1047 0 0 to 55"_s});
    EXPECT_EQ(after(u"play.next"_s), QStringList{u"send 1046 0 0 to 55"_s});
    messages.alive.clear();
    EXPECT_EQ(after(u"play.next"_s), QStringList());
    EXPECT_EQ(shown(), u"Der Player läuft nicht."_s);
}

TEST_F(ContextMenuTest, TheFolderOfADiscIsKnownByTheDisc)
{
    EXPECT_EQ(after(u"show.dir"_s), QStringList{u"bus context.click.row /music/ Path"_s});
    data.track.DriveTyp = 4;
    others.SendMessage(u"show.context.menu.mp3db"_s, kFid);
    taken();
    EXPECT_EQ(after(u"show.dir"_s), QStringList{u"bus context.click.row /music/ CDDIR DISC 1"_s});
    EXPECT_EQ(after(u"show.tree"_s), QStringList{u"bus context.show.dir /music/ DISC 1"_s});
}

TEST_F(ContextMenuTest, TracksAreMarkedBeforeTheTagEditorIsStarted)
{
    EXPECT_EQ(after(u"mark.for.edit"_s), QStringList{u"bus fill.temp.edit.table 2"_s});
    EXPECT_EQ(after(u"show.tageditor"_s), QStringList{u"bus fill.temp.edit.table 2"_s});
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_TRUE(shown().contains(u"tagbench"_s));
    install(u"tagbench"_s);
    after(u"show.tageditor"_s);
    EXPECT_EQ(processes.commands, QStringList{command(u"tagbench.exe edit"_s)});
}

TEST_F(ContextMenuTest, TheViewThatItCameFromIsAskedForTheRest)
{
    EXPECT_EQ(after(u"autosize.grid"_s), QStringList{u"bus autosize.mp3db"_s});
    EXPECT_EQ(after(u"BeatGauge.Menu.Click"_s), QStringList{u"bus db.BeatGauge.Menu.Click"_s});
    EXPECT_EQ(after(u"BeatGauge.Menu.Manuell.Click"_s),
              QStringList{u"bus db.BeatGauge.Menu.Manuell.Click"_s});
    others.SendMessage(u"show.context.menu.playlist"_s, kFid);
    taken();
    EXPECT_EQ(after(u"autosize.grid"_s), QStringList{u"bus autosize.playlist"_s});
    EXPECT_EQ(after(u"BeatGauge.Menu.Click"_s),
              QStringList{u"bus playlist.BeatGauge.Menu.Click"_s});
    EXPECT_EQ(after(u"BeatGauge.Menu.Manuell.Click"_s),
              QStringList{u"bus playlist.BeatGauge.Menu.Manuell.Click"_s});
    EXPECT_EQ(after(u"show.melovane.kiv"_s), QStringList{u"bus show.melovane.kiv 1"_s});
    EXPECT_EQ(after(u"no such tag"_s), QStringList());
}

TEST_F(ContextMenuTest, TheMenuOfAnEntryOffersWhatIsDoneToItsWholeList)
{
    EXPECT_FALSE(menus.visible.value(u"mnuRow_List"_s)) << "not in the library";
    others.SendMessage(u"show.context.menu.playlist"_s, kFid);
    taken();
    EXPECT_TRUE(menus.visible.value(u"mnuRow_List"_s));
    EXPECT_EQ(menus.captions.value(u"mnuRow_List"_s), u"Ganze Playliste"_s);
    QStringList offered;
    for (const MenuChoice& choice : menus.choices.value(u"mnuRow_List"_s)) {
        offered.append(choice.caption);
        EXPECT_EQ(choice.whyNot, QString());
    }
    EXPECT_EQ(offered, (QStringList{u"An die aktive Playliste anhängen"_s,
                                    u"Mixstil für alle Titel übernehmen"_s,
                                    u"Mixstile aller Titel entfernen"_s,
                                    u"Einstellungen aller Titel zurücksetzen"_s}));
    EXPECT_EQ(after(u"playlist.reset"_s), QStringList{u"bus playlist.reset 12"_s});
    EXPECT_EQ(after(u"mixstyle.all.del"_s), QStringList{u"bus mixstyle.all.del"_s});
    EXPECT_EQ(after(u"mixstyle.all.copy"_s), QStringList{u"bus mixstyle.all.copy"_s});
    EXPECT_EQ(after(u"ToAktivPlaylist"_s), QStringList{u"bus ToAktivPlaylist"_s});
}

TEST_F(ContextMenuTest, TheMenuOfAnEntryRehearsesItsTransition)
{
    EXPECT_FALSE(menus.visible.value(u"mnuRow_play.mix"_s)) << "not in the library";
    EXPECT_EQ(after(u"play.mix"_s), QStringList());
    others.SendMessage(u"show.context.menu.playlist"_s, kFid);
    taken();
    EXPECT_TRUE(menus.visible.value(u"mnuRow_play.mix"_s));
    EXPECT_EQ(menus.captions.value(u"mnuRow_play.mix"_s),
              u"Übergang zum nächsten Titel vorhören"_s);
    EXPECT_EQ(after(u"play.mix"_s), QStringList{u"playlist press play.mix"_s});
}

TEST_F(ContextMenuTest, MoreOfTheSameSearchesTheWholeLibrary)
{
    ASSERT_EQ(menus.more.size(), 1U);
    EXPECT_EQ(menus.more[0].caption, u"OSTWIND"_s);
    mlvdb.contextMenu().moreResultClicked(u"*"_s, u"&OSTWIND"_s);
    EXPECT_EQ(taken(), QStringList{u"find *OSTWIND*"_s});
}

} // namespace
} // namespace melovane
