#include "shell/window_fixture.h"
#include "support/text_catalogue.h"

#include <QFile>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct MlvdbTest : public test::WindowFixture
{
    MlvdbTest()
    {
        folders.install(u"Skin/dark.skn"_s, "Nacht\nGridColor=#000000\n");
        folders.install(u"Skin/light.skn"_s, "Hell\nGridColor=#ffffff\n");
        folders.install(u"Skin/broken.skn"_s, "Kaputt\n");
        folders.install(u"Skin/readme.txt"_s, "#");
    }

    void store(int left, int top, int width, int height, int state)
    {
        WindowPosition& position = settings->Position(u"DBPosition"_s);
        // As they stand in the file: numbers beyond every rectangle, too.
        position.Left = left;
        position.Top = top;
        position.Whidth = width;
        position.Height = height;
        position.WindowState = state;
        settings->PositionSave(u"DBPosition"_s);
    }

    void activate(qint64 tracks)
    {
        data.tracks = tracks;
        mlvdb.activateFirst();
    }
};

TEST_F(MlvdbTest, TheCaptionIsTheProductAndItsVersion)
{
    mlvdb.load();
    EXPECT_EQ(window.caption, u"Melovane DB 3.4 build(150)"_s);
    EXPECT_EQ(window.leastSize, QSize(600, 300));
}

TEST_F(MlvdbTest, AnEmptyLibraryStartsTheImporterAndDoesNotReadItsPlace)
{
    store(100, 100, 500, 400, 0);
    activate(0);
    EXPECT_EQ(processes.commands.last(), folders.programFolder() + u"/mediaintake.exe 1"_s);
    EXPECT_EQ(processes.styles.back(), Processes::WindowStyle::Normal);
    EXPECT_EQ(window.rect.size(), QSize(1067, 667));
    EXPECT_EQ(window.rect.center(), window.area.center());
}

TEST_F(MlvdbTest, OverAnEmptyLibraryTheWindowTakesTwoThirdsOfTheScreenAndAlwaysFits)
{
    const std::map<QString, QSize> sizes{{u"1024x600"_s, {800, 600}},
                                         {u"1440x900"_s, {960, 600}},
                                         {u"2560x1440"_s, {1707, 960}},
                                         {u"640x480"_s, {640, 480}}};
    for (const auto& [screen, expected] : sizes) {
        const QStringList numbers = screen.split(u'x');
        window.area = QRect(0, 0, numbers[0].toInt(), numbers[1].toInt());
        activate(0);
        EXPECT_EQ(window.rect.size(), expected) << screen.toStdString();
        EXPECT_TRUE(window.isOuter) << "its title bar lies on the screen, too";
    }
}

TEST_F(MlvdbTest, WithTracksTheWindowTakesItsStoredPlace)
{
    store(100, 50, 900, 600, 0);
    activate(1);
    EXPECT_EQ(window.rect, QRect(100, 50, 900, 600));
    EXPECT_FALSE(window.isOuter) << "stored without its frame";
    EXPECT_EQ(processes.commands.filter(u"mediaintake"_s), QStringList());
}

TEST_F(MlvdbTest, TheJobsSiblingIsStartedHiddenWhereItIsInstalled)
{
    activate(1);
    EXPECT_EQ(processes.commands, QStringList());
    install(u"MelovaneJob"_s);
    activate(1);
    EXPECT_EQ(processes.commands, QStringList{command(u"MelovaneJob.exe"_s)});
    EXPECT_EQ(processes.styles, std::vector{Processes::WindowStyle::Hidden});
}

TEST_F(MlvdbTest, StaleTreesAreRebuiltByTheirSiblingAtTheFirstActivation)
{
    data.stale = true;
    activate(1);
    EXPECT_EQ(processes.commands, QStringList{command(u"Task.RebuildTree.exe 1"_s)});
    EXPECT_EQ(processes.styles, std::vector{Processes::WindowStyle::Minimised});
}

TEST_F(MlvdbTest, AProgramThatNobodyHasAskedForIsMissedSilently)
{
    data.stale = true;
    processes.succeeds = false;
    activate(1);
    EXPECT_EQ(shown(), QString());
}

TEST_F(MlvdbTest, TheSideFilesAreCheckedBeforeTheTracksAreCounted)
{
    activate(1);
    EXPECT_EQ(log, (QStringList{u"side files"_s, u"count"_s}));
}

TEST_F(MlvdbTest, ALibraryThatCannotBeCountedIsToldAndNobodyIsSentToTheImporter)
{
    mlvdb.load();
    data.fault = dberror::kCorrupt;
    activate(0);
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_TRUE(shown().startsWith(u"Die Datenbankdatei ist beschädigt"_s));
}

TEST_F(MlvdbTest, PlaceAndSplitsAreKeptAlsoWhenTheLibraryFailsAtTheEnd)
{
    mlvdb.load();
    splits[0].at = 222;
    onLibrarySave = [] { throw DbError(dberror::kDiskFull, u"x"_s); };
    mlvdb.unload();
    EXPECT_EQ(folders.makeSettings()->GetKeyValueLong(u"Value"_s, u"DBGridSplit-0"_s, 0), 222);
}

TEST_F(MlvdbTest, AChosenLanguageIsKeptAndSpokenAtOnceByEveryView)
{
    folders.install(u"lang_English.ini"_s, "[Description]\nSprach.Name=English\nok=Fine\n");
    const test::CurrentFolder here(folders.programFolder());
    mlvdb.chooseLanguage(u"lang_English.ini"_s);
    EXPECT_EQ(texts.text(u"ok"), u"Fine"_s);
    EXPECT_EQ(taken(), (QStringList{u"bus update.tolltip.text"_s, u"bus db.change"_s,
                                    u"bus refresh.all"_s}));
    EXPECT_EQ(folders.makeSettings()->GetKeyValue(u"Value"_s, u"Sprach.Datei"_s, {}),
              u"lang_English.ini"_s);
    const std::vector<LanguageEntry> languages = mlvdb.languages();
    ASSERT_EQ(languages.size(), 2U);
    EXPECT_TRUE(languages[1].active);
    // Who chooses the same again learns nothing new.
    mlvdb.chooseLanguage(u"lang_English.ini"_s);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(MlvdbTest, TheLoadRunsInItsOrder)
{
    mlvdb.load();
    EXPECT_EQ(
        log,
        (QStringList{u"open"_s, u"monitor reopen"_s, u"library start"_s, u"bus create.toolbars "_s,
                     u"bus refresh.all start"_s, u"bus load.layout.mp3db gridlayout_db.grx"_s,
                     u"bus load.layout.playlist gridlayout_dbpl.grx"_s, u"bus update.color"_s}));
    EXPECT_TRUE(control.number);
    EXPECT_TRUE(control.text);
}

TEST_F(MlvdbTest, TheHandlesArePublishedAtTheLoadAndOneIsRemovedAtTheEnd)
{
    mlvdb.load();
    const auto running = folders.makeSettings();
    EXPECT_EQ(running->MessageHandleDB(), control.handle());
    EXPECT_EQ(running->HandleDB(), window.windowHandle32());
    EXPECT_EQ(running->GetKeyValueLong(u"Message.Handle"_s, u"MelovaneDB.exe"_s, 0),
              control.handle());
    mlvdb.unload();
    EXPECT_EQ(folders.makeSettings()->MessageHandleDB(), 0);
    EXPECT_FALSE(
        folders.folder().read(folders.configFile(u"melovane.ini"_s)).contains("Handle.DB="));
}

TEST_F(MlvdbTest, SplitsAreKeptAfterTheStateOfTheLibrary)
{
    mlvdb.load();
    splits[1].at = 111;
    data.tracks = 1;
    bool splitsWereStored = true;
    const auto end = [&] {
        splitsWereStored =
            folders.makeSettings()->GetKeyValueLong(u"Value"_s, u"DBGridSplit-1"_s, 0) == 111;
    };
    onLibrarySave = end;
    mlvdb.unload();
    EXPECT_FALSE(splitsWereStored);
    EXPECT_EQ(folders.makeSettings()->GetKeyValueLong(u"Value"_s, u"DBGridSplit-1"_s, 0), 111);
}

TEST_F(MlvdbTest, ADockedWindowLeavesTheStoredPlaceAsItWas)
{
    mlvdb.load();
    store(100, 50, 900, 600, 0);
    control.number(1049, 0, 0);
    mlvdb.unload();
    EXPECT_EQ(folders.makeSettings()->Position(u"DBPosition"_s).place(), QRect(100, 50, 900, 600));
}

TEST_F(MlvdbTest, AStoredPlaceOutsideTheScreenIsIgnored)
{
    const QRect designed = window.rect;
    for (const QRect& place : {QRect(800, 0, 900, 600), QRect(0, 500, 900, 600),
                               QRect(-850, 0, 900, 600), QRect(0, -50, 900, 600)}) {
        for (const int state : {0, 2}) {
            store(place.left(), place.top(), place.width(), place.height(), state);
            activate(1);
            EXPECT_EQ(window.rect, designed);
            EXPECT_FALSE(window.maximised);
        }
    }
    store(std::numeric_limits<int>::max(), 0, std::numeric_limits<int>::max(), 10, 0);
    activate(1);
    EXPECT_EQ(window.rect, designed);
}

TEST_F(MlvdbTest, AWindowThatWasClosedOverTheLeftEdgeComesBackThere)
{
    store(-200, 0, 900, 600, 0);
    activate(1);
    EXPECT_EQ(window.rect, QRect(-200, 0, 900, 600));
}

TEST_F(MlvdbTest, APlaceOnASecondScreenIsTakenAsLongAsThatScreenIsThere)
{
    const QRect designed = window.rect;
    store(1700, 100, 900, 600, 0);
    activate(1);
    EXPECT_EQ(window.rect, designed);
    window.second = {1600, 0, 1280, 1024};
    activate(1);
    EXPECT_EQ(window.rect, QRect(1700, 100, 900, 600));
    store(2200, 100, 900, 600, 0);
    activate(1);
    EXPECT_EQ(window.rect, QRect(1700, 100, 900, 600)) << "it would lie across the edge";
}

TEST_F(MlvdbTest, AReadOnlyLibraryIsAnnouncedInTheTitleAndTheStatusLine)
{
    readOnly = true;
    mlvdb.load();
    EXPECT_EQ(window.caption, mainWindowCaption() + u" - Die Bibliothek ist schreibgeschützt"_s);
    EXPECT_TRUE(shown().contains(settings->DbName()));
    EXPECT_TRUE(shown().startsWith(u"Die Bibliothek ist schreibgeschützt"_s));
    readOnly = false;
    mlvdb.load();
    EXPECT_EQ(window.caption, mainWindowCaption());
}

TEST_F(MlvdbTest, WithoutAStoredPlaceTheWindowKeepsTheDesignedOne)
{
    const QRect designed = window.rect;
    activate(1);
    EXPECT_EQ(window.rect, designed);
    EXPECT_FALSE(window.maximised);
}

TEST_F(MlvdbTest, AMaximisedWindowIsMaximisedAndNothingElse)
{
    const QRect designed = window.rect;
    store(100, 50, 900, 600, 2);
    activate(1);
    EXPECT_TRUE(window.maximised);
    EXPECT_EQ(window.rect, designed);
}

TEST_F(MlvdbTest, PlaceAndSplitsAreStoredAtTheEnd)
{
    mlvdb.load();
    window.rect = {11, 22, 1033, 744};
    window.maximised = true;
    splits[1].at = 321;
    mlvdb.unload();
    const auto fresh = folders.makeSettings();
    const WindowPosition& stored = fresh->Position(u"DBPosition"_s);
    EXPECT_EQ(stored.Left, 11);
    EXPECT_EQ(stored.Top, 22);
    EXPECT_EQ(stored.Whidth, 1033);
    EXPECT_EQ(stored.Height, 744);
    EXPECT_EQ(stored.WindowState, 2);
    EXPECT_EQ(fresh->GetKeyValue(u"Value"_s, u"DBGridSplit-1"_s, {}), u"321"_s);
}

TEST_F(MlvdbTest, SplitsComeBackWithTheWindow)
{
    settings->WriteKeyValue(u"Value"_s, u"DBGridSplit-2"_s, u"77"_s);
    mlvdb.load();
    EXPECT_EQ(splits[0].at, 740);
    EXPECT_EQ(splits[2].at, 77);
}

TEST_F(MlvdbTest, TheThemesThatLieReadyAreListedByTitle)
{
    settings->SetSkinFileName(u"LIGHT.skn"_s);
    const std::vector<SkinEntry> skins = mlvdb.skins();
    ASSERT_EQ(skins.size(), 3U);
    EXPECT_EQ(skins[0].title, u"Hell"_s);
    EXPECT_TRUE(skins[0].active);
    EXPECT_EQ(skins[2].fileName, u"dark.skn"_s);
    EXPECT_FALSE(skins[2].active);
}

TEST_F(MlvdbTest, AThemeThatShipsIsCalledInTheLanguageOfTheWindow)
{
    folders.install(u"Skin/melovane-dark.skn"_s, "; theme\nName=Dunkel\n");
    settings->SetSkinFileName(u"melovane-dark.skn"_s);
    const auto title = [this] {
        const std::vector<SkinEntry> skins = mlvdb.skins();
        const auto chosen = std::find_if(skins.begin(), skins.end(),
                                         [](const SkinEntry& one) { return one.active; });
        return chosen == skins.end() ? QString() : chosen->title;
    };
    EXPECT_EQ(title(), u"Dunkel"_s);
    texts.FindObject(u"skin.melovane-dark.skn")->Description = u"Dark"_s;
    EXPECT_EQ(title(), u"Dark"_s);
}

TEST_F(MlvdbTest, AChosenThemeIsTakenAndKeptForTheNextStart)
{
    mlvdb.chooseSkin(u"dark.skn"_s);
    EXPECT_TRUE(skin.loaded.startsWith(u"Nacht"_s));
    EXPECT_EQ(folders.makeSettings()->SkinFileName(), u"dark.skn"_s);
    skin.loaded.clear();
    mlvdb.load();
    EXPECT_TRUE(skin.loaded.startsWith(u"Nacht"_s));
    mlvdb.chooseSkin({});
    EXPECT_TRUE(skin.loaded.isEmpty());
}

TEST_F(MlvdbTest, AThemeThatCannotBeReadChangesNothing)
{
    mlvdb.chooseSkin(u"dark.skn"_s);
    mlvdb.chooseSkin(u"broken.skn"_s);
    mlvdb.chooseSkin(u"missing.skn"_s);
    EXPECT_TRUE(skin.loaded.startsWith(u"Nacht"_s));
    EXPECT_EQ(settings->SkinFileName(), u"dark.skn"_s);
    EXPECT_FALSE(status.panel(StatusPanel::Message).isEmpty());
}

TEST_F(MlvdbTest, TheDefaultNameOfTheThemeIsAFullPathAndLoadsNone)
{
    mlvdb.load();
    EXPECT_TRUE(skin.loaded.isEmpty());
}

struct StatusTextTest : public testing::Test
{
    test::SteppedLoop loop;
    test::PlainStatusLine line;
    StatusText text{loop, line};

    [[nodiscard]] QString shown() const { return line.panel(StatusPanel::Message); }
};

TEST_F(StatusTextTest, ATextStandsUntilFiveSecondsAreOverAndThenRunsOffByTwoLetters)
{
    text.show(u"12345678"_s);
    EXPECT_FALSE(loop.fire(50));
    EXPECT_EQ(shown(), u"12345678"_s);
    ASSERT_TRUE(loop.fire(5000));
    EXPECT_EQ(shown(), u"12345678"_s);
    ASSERT_TRUE(loop.fire(50));
    EXPECT_EQ(shown(), u"345678"_s);
    loop.fire(50);
    EXPECT_EQ(shown(), u"5678"_s);
    loop.fire(50);
    EXPECT_EQ(shown(), QString());
    EXPECT_FALSE(loop.fire(50));
    EXPECT_FALSE(loop.fire(5000));
}

TEST_F(StatusTextTest, ANewTextStopsTheRun)
{
    text.show(u"12345678"_s);
    loop.fire(5000);
    loop.fire(50);
    text.show(u"neu"_s);
    EXPECT_FALSE(loop.fire(50));
    EXPECT_EQ(shown(), u"neu"_s);
}

TEST_F(StatusTextTest, AKeptTextStandsAsLongAsItIsKept)
{
    text.show(u" :: Lied"_s);
    text.keep(u" :: Lied"_s);
    EXPECT_FALSE(loop.fire(5000));
    EXPECT_EQ(shown(), u" :: Lied"_s);
    text.keep({});
    EXPECT_EQ(shown(), QString());
}

TEST_F(StatusTextTest, AKeptTextComesBackBehindAnother)
{
    text.keep(u" :: Lied"_s);
    text.show(u"1234"_s);
    EXPECT_EQ(shown(), u"1234"_s);
    loop.fire(5000);
    loop.fire(50);
    EXPECT_EQ(shown(), u" :: Lied"_s);
    EXPECT_FALSE(loop.fire(50));
}

TEST_F(StatusTextTest, AnotherTextStandsOnWhenTheKeptOneGoes)
{
    text.keep(u" :: Lied"_s);
    text.show(u"Nicht ausgeführt"_s);
    text.keep({});
    EXPECT_EQ(shown(), u"Nicht ausgeführt"_s);
    text.keep(u" :: Anderes"_s);
    EXPECT_EQ(shown(), u"Nicht ausgeführt"_s);
}

} // namespace
} // namespace melovane
