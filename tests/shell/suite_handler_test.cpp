#include "shell/window_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Messages of other programs, as they arrive at the loaded window.
struct SuiteHandlerTest : public test::WindowFixture
{
    SuiteHandlerTest()
    {
        folders.folder().write(u"a.mdb"_s, "x");
        settings->SetDbName(folders.folder().file(u"a.mdb"_s));
        data.hold = [this](const QString& name) { settings->holdLibrary(name); };
        settings->holdLibrary(settings->DbName());
        mlvdb.load();
        taken();
    }

    /// Another library, which the settings name from now on.
    QString nameOther(const QString& name = u"b.mdb"_s)
    {
        const QString other = folders.folder().write(name, "x");
        folders.makeSettings()->SetDbName(other);
        return other;
    }

    QStringList after(qint32 id, qint32 wParam = 0, qint32 lParam = 0)
    {
        control.number(id, wParam, lParam);
        return taken();
    }

    QStringList afterText(qint32 id, qint32 number, const QString& text)
    {
        control.text(id, number, text);
        return taken();
    }

    /// Settings as another program has changed them meanwhile.
    void changeElsewhere(int volume) { folders.makeSettings()->SetDefaultVolume(volume); }
};

TEST_F(SuiteHandlerTest, AnotherSoundCardReopensTheMonitor)
{
    changeElsewhere(1234);
    EXPECT_EQ(after(1036), QStringList{u"monitor reopen"_s});
    EXPECT_EQ(settings->DefaultVolume(), 1234);
}

TEST_F(SuiteHandlerTest, TheDatabaseIsLetGoBeforeTheAskerIsAnswered)
{
    changeElsewhere(1235);
    EXPECT_EQ(after(1037, 0, 99),
              (QStringList{u"bus db.disconnect"_s, u"release"_s, u"send 1037 0 2 to 99"_s}));
    EXPECT_EQ(settings->DefaultVolume(), 1235);
    EXPECT_EQ(after(1038), (QStringList{u"open"_s, u"bus db.reconnect"_s}));
}

TEST_F(SuiteHandlerTest, AnAskerThatDiesWithoutGivingTheDatabaseBackGivesItBackByThat)
{
    messages.alive = {98, 99};
    after(1037, 0, 99);
    after(1037, 0, 98);
    ASSERT_TRUE(loop.fire(1000));
    EXPECT_EQ(taken(), QStringList());
    messages.alive = {98};
    ASSERT_TRUE(loop.fire(1000));
    EXPECT_EQ(taken(), QStringList()) << "the other one still has it";
    messages.alive = {};
    ASSERT_TRUE(loop.fire(1000));
    EXPECT_EQ(taken(), (QStringList{u"open"_s, u"bus db.reconnect"_s}));
    EXPECT_FALSE(loop.fire(1000));
}

TEST_F(SuiteHandlerTest, AnAskerIsWatchedOnlyUntilItGivesTheDatabaseBack)
{
    messages.alive = {99};
    after(1037, 0, 99);
    after(1038);
    messages.alive = {};
    EXPECT_FALSE(loop.fire(1000));
    after(1037);
    EXPECT_FALSE(loop.fire(1000)) << "nobody is there to be watched";
}

TEST_F(SuiteHandlerTest, ADatabaseThatCannotBeTakenBackIsAskedForWhenTheSenderHasItsAnswer)
{
    const QString question =
        u"warning Achtung !: Die Datenbank lässt sich nicht wieder öffnen.\n\nDie Datenbankdatei "
        "ist nicht vorhanden:\n%1\n\nNoch einmal versuchen?"_s.arg(settings->DbName());
    data.fault = dberror::kFileNotFound;
    EXPECT_EQ(after(1038), QStringList{u"open"_s});
    ASSERT_TRUE(loop.fire(0));
    EXPECT_EQ(taken(), QStringList{question});
    EXPECT_FALSE(loop.fire(0));

    // The file comes back while the user reads, and he says yes.
    after(1038);
    warnings.answer = WarningAnswer::Yes;
    warnings.whileOpen = [this] { data.fault = 0; };
    ASSERT_TRUE(loop.fire(0));
    EXPECT_EQ(taken(), (QStringList{question, u"open"_s, u"bus db.reconnect"_s}));
}

TEST_F(SuiteHandlerTest, ADatabaseThatStaysAwayIsAskedForInOneDialogAtATime)
{
    data.fault = dberror::kCorrupt;
    after(1038);
    warnings.whileOpen = [this] {
        control.number(1038, 0, 0);
        loop.fire(0);
    };
    loop.fire(0);
    EXPECT_EQ(taken().filter(u"warning"_s).size(), 1);
}

TEST_F(SuiteHandlerTest, AMessageTakesTheDatabaseBackWithoutAskingAnyMore)
{
    data.fault = dberror::kFileNotFound;
    after(1038);
    data.fault = 0;
    EXPECT_EQ(after(1038), (QStringList{u"open"_s, u"bus db.reconnect"_s}));
    EXPECT_FALSE(loop.fire(0));
}

TEST_F(SuiteHandlerTest, AnotherLibraryOfTheSettingsIsOpenedForEverybodyByAnyMessageThatReadsThem)
{
    const QStringList change = {u"bus db.disconnect"_s, u"open other b.mdb"_s,
                                u"bus db.reconnect"_s,  u"bus db.change"_s,
                                u"side files"_s,        u"bus refresh.all"_s};
    const QString first = settings->DbName();
    for (const auto& [id, rest] :
         {std::pair(1039, u"bus change.config"_s), std::pair(1036, u"monitor reopen"_s)}) {
        settings->holdLibrary(first);
        const QString other = nameOther();
        EXPECT_EQ(after(id), change + QStringList(rest)) << id;
        EXPECT_EQ(settings->DbName(), other);
        EXPECT_EQ(shown(), u"Jetzt ist eine andere Bibliothek geöffnet: "_s + other);
        EXPECT_EQ(after(id), QStringList(rest)) << "once";
    }
    settings->holdLibrary(first);
    EXPECT_EQ(after(1048), QStringList{u"idle"_s} + change);
}

TEST_F(SuiteHandlerTest, ALibraryThatIsMissingOrCannotBeOpenedIsToldOnceAndThePresentOneStays)
{
    const QString first = settings->DbName();
    ASSERT_TRUE(QFile::remove(first));
    EXPECT_EQ(after(1039), QStringList{u"bus change.config"_s});
    EXPECT_EQ(settings->DbName(), first);
    EXPECT_EQ(shown(), u"Die Bibliothek der Einstellungen ist nicht vorhanden: %1. Geöffnet bleibt "
                       "%1"_s.arg(first));
    mlvdb.showStatusText(u"-"_s);
    after(1039);
    EXPECT_EQ(shown(), u"-"_s);

    const QString other = nameOther();
    data.fault = dberror::kCorrupt;
    EXPECT_EQ(after(1039), (QStringList{u"bus db.disconnect"_s, u"open other b.mdb"_s,
                                        u"bus db.reconnect"_s, u"bus change.config"_s}));
    EXPECT_EQ(settings->DbName(), first);
    EXPECT_TRUE(shown().startsWith(u"Die Bibliothek der Einstellungen lässt sich nicht öffnen: "_s +
                                   other));
}

TEST_F(SuiteHandlerTest, AChangeOfLibraryWaitsForTheOpenDialogAndForALibraryThatIsLent)
{
    nameOther();
    loop.nested = true;
    EXPECT_EQ(after(1039), QStringList{u"bus change.config"_s});
    EXPECT_TRUE(loop.fire(500));
    EXPECT_EQ(taken(), QStringList());
    loop.nested = false;
    EXPECT_TRUE(loop.fire(500));
    EXPECT_TRUE(taken().contains(u"open other b.mdb"_s));
    EXPECT_FALSE(loop.fire(500));

    after(1037, 0, 99);
    nameOther(u"c.mdb"_s);
    EXPECT_EQ(after(1039), QStringList{u"bus change.config"_s});
    EXPECT_EQ(after(1038).mid(0, 4), (QStringList{u"open"_s, u"bus db.reconnect"_s,
                                                  u"bus db.disconnect"_s, u"open other c.mdb"_s}));
}

TEST_F(SuiteHandlerTest, AViewThatFailsOverAMessageIsToldInTheStatusLineAndTheWindowGoesOn)
{
    const auto view = bus.subscribe([](const MLVMessage& message) {
        if (message.Command == u"db.change"_s) {
            throw DbError(dberror::kDiskError, u"x"_s);
        }
    });
    after(1048);
    EXPECT_TRUE(shown().startsWith(u"Lesen oder Schreiben der Datenbankdatei"_s));
    EXPECT_EQ(after(1078), QStringList{u"monitor stop"_s});
}

TEST_F(SuiteHandlerTest, ChangedSettingsAreReadBeforeTheViewsHearOfThem)
{
    changeElsewhere(1236);
    int seen = 0;
    const auto view = bus.subscribe([&](const MLVMessage&) { seen = settings->DefaultVolume(); });
    EXPECT_EQ(after(1039), QStringList{u"bus change.config"_s});
    EXPECT_EQ(seen, 1236);
}

TEST_F(SuiteHandlerTest, PlaylistMessagesGoToTheViewsWithTheirNumbers)
{
    EXPECT_EQ(after(1042, 7, 8), (QStringList{u"idle"_s, u"bus refresh.playlist 7"_s}));
    EXPECT_EQ(after(1045, 7, 8), (QStringList{u"idle"_s, u"bus refresh.playlist.plid 8 7"_s}));
    EXPECT_EQ(after(1052), QStringList{u"bus favorit.refresh"_s});
    EXPECT_EQ(after(1069, 7, 8), (QStringList{u"idle"_s, u"bus beatgauge.bpm 8 7"_s}));
    EXPECT_EQ(after(1079, 7, 8), (QStringList{u"idle"_s, u"bus refresh.playlist.tree 7"_s}));
}

TEST_F(SuiteHandlerTest, AnImportChecksTheSideFilesBetweenTheViews)
{
    EXPECT_EQ(after(1048),
              (QStringList{u"idle"_s, u"bus db.change"_s, u"side files"_s, u"bus refresh.all"_s}));
    EXPECT_EQ(processes.commands, QStringList());
    data.stale = true;
    after(1048);
    EXPECT_EQ(processes.commands, QStringList{command(u"Task.RebuildTree.exe 1"_s)});
}

TEST_F(SuiteHandlerTest, ThePlayerDocksAndUndocksTheWindow)
{
    const QRect before = window.rect;
    after(1049);
    EXPECT_EQ(window.rect.top(), window.area.center().y() + 1);
    after(1051);
    EXPECT_EQ(window.rect, before);
}

TEST_F(SuiteHandlerTest, TheLibraryIsReloadedAndTheMonitorObeys)
{
    EXPECT_EQ(after(1050), QStringList{u"library reload"_s});
    EXPECT_EQ(after(1078), QStringList{u"monitor stop"_s});
    EXPECT_EQ(after(1074, 0, 5000), QStringList{u"monitor volume 5000"_s});
    EXPECT_EQ(after(1074, 210, 5000),
              (QStringList{u"monitor volume 5000"_s, u"bus Volume.Monitor.Change.Icon 5000"_s}));
}

TEST_F(SuiteHandlerTest, TheResultOfTheJobsIsShownWhenTheirMessageHasBeenAnswered)
{
    EXPECT_EQ(after(1056, 100, 3), QStringList());
    ASSERT_TRUE(loop.fire(0));
    EXPECT_EQ(taken(), QStringList{u"warning Melovane: 3 Änderungen übernommen"_s});
    after(1056, 100, 0);
    ASSERT_TRUE(loop.fire(0));
    EXPECT_EQ(taken(), QStringList{u"warning Melovane: Keine Änderungen vorhanden"_s});
    EXPECT_FALSE(loop.fire(0));
}

TEST_F(SuiteHandlerTest, JobsAskForTheTreesByTheirMask)
{
    EXPECT_EQ(after(1056, 200, 1010000), QStringList{u"bus refresh.tree 1010000"_s});
}

TEST_F(SuiteHandlerTest, JobsWithKind150DoNothing)
{
    EXPECT_EQ(after(1056, 150, 3), QStringList());
    EXPECT_FALSE(loop.fire(0));
}

TEST_F(SuiteHandlerTest, NumbersBelow1036AndFrom1080OnAreIgnored)
{
    for (const qint32 id : {0, -1, 1035, 1040, 1041, 1043, 1077, 1080, 2001, 1036 + 65536}) {
        EXPECT_EQ(after(id, 100, 3), QStringList()) << id;
    }
}

TEST_F(SuiteHandlerTest, AClickOnAnArtistOrATitleElsewhereIsAClickInTheTree)
{
    EXPECT_EQ(afterText(3075, 11011, u"Ostwind"_s),
              QStringList{u"bus tree.click.row Ostwind Interpret"_s});
    EXPECT_EQ(afterText(3075, 11012, u"Hafen"_s), QStringList{u"bus tree.click.row Hafen Titel"_s});
    EXPECT_EQ(afterText(3075, 11013, u"Hafen"_s), QStringList());
}

TEST_F(SuiteHandlerTest, ImagesAndTempoRequestsGoToTheViews)
{
    EXPECT_EQ(afterText(3077, 0, u"a.jpg"_s), QStringList{u"bus sleeveviewer.click.image a.jpg"_s});
    EXPECT_EQ(afterText(3078, 5, u"fid"_s), QStringList{u"bus bpm.find.fid 5 fid"_s});
    EXPECT_EQ(afterText(3076, 5, u"fid"_s), QStringList());
}

TEST_F(SuiteHandlerTest, WhatCameFromThePlayerDoesNotGoBackToIt)
{
    settings->SetMessageHandleDJ(55);
    messages.alive = {55};
    after(1079, 7, 0);
    after(1052, 0, 0);
    control.number(1079, 7, 0);
    EXPECT_EQ(taken().filter(u"send"_s), QStringList());
    others.SendMessage(u"refresh.playlist.tree"_s);
    others.SendMessage(u"Favorit.Refresh"_s);
    others.SendMessage(u"update.tree.row"_s);
    EXPECT_EQ(taken().filter(u"send"_s),
              (QStringList{u"send 1079 0 0 to 55"_s, u"send 1079 0 0 to 55"_s,
                           u"send 1079 0 0 to 55"_s}));
}

} // namespace
} // namespace melovane
