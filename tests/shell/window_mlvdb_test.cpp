#include "shell/fakes.h"
#include "shell/mlvdb.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct MlvdbTest : public testing::Test
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
        position.Left = left;
        position.Top = top;
        position.Whidth = width;
        position.Height = height;
        position.WindowState = state;
        settings->PositionSave(u"DBPosition"_s);
    }

    test::SuiteFolders folders;
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    test::RecordingProcesses processes;
    test::SteppedLoop loop;
    test::PlainWindow window;
    test::PlainStatusLine status;
    test::PlainSkin skin;
    std::array<test::PlainSplit, 3> splits;
    MLVDB mlvdb{*settings,
                folders.paths(),
                folders.files(),
                processes,
                loop,
                {window, status, skin, {&splits[0], &splits[1], &splits[2]}}};
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
    mlvdb.activateFirst(0);
    EXPECT_EQ(processes.commands, QStringList{folders.programFolder() + u"/mediaintake.exe 1"_s});
    EXPECT_EQ(processes.styles.front(), Processes::WindowStyle::Normal);
    EXPECT_EQ(window.rect.size(), QSize(800, 600));
    EXPECT_EQ(window.rect.center(), window.area.center());
}

TEST_F(MlvdbTest, WithTracksTheWindowTakesItsStoredPlace)
{
    store(100, 50, 900, 600, 0);
    mlvdb.activateFirst(1);
    EXPECT_EQ(window.rect, QRect(100, 50, 900, 600));
    EXPECT_TRUE(processes.commands.isEmpty());
}

TEST_F(MlvdbTest, AStoredPlaceOutsideTheScreenIsIgnored)
{
    const QRect designed = window.rect;
    for (const QRect& place : {QRect(800, 0, 900, 600), QRect(0, 500, 900, 600),
                               QRect(-200, 0, 900, 600), QRect(0, -50, 900, 600)}) {
        store(place.left(), place.top(), place.width(), place.height(), 0);
        mlvdb.activateFirst(1);
        EXPECT_EQ(window.rect, designed);
    }
    store(std::numeric_limits<int>::max(), 0, std::numeric_limits<int>::max(), 10, 0);
    mlvdb.activateFirst(1);
    EXPECT_EQ(window.rect, designed);
}

TEST_F(MlvdbTest, WithoutAStoredPlaceTheWindowKeepsTheDesignedOne)
{
    const QRect designed = window.rect;
    mlvdb.activateFirst(1);
    EXPECT_EQ(window.rect, designed);
    EXPECT_FALSE(window.maximised);
}

TEST_F(MlvdbTest, AMaximisedWindowIsMaximisedAndNothingElse)
{
    const QRect designed = window.rect;
    store(100, 50, 900, 600, 2);
    mlvdb.activateFirst(1);
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

TEST_F(MlvdbTest, TheImportMenuPassesItsArgument)
{
    mlvdb.mnuImpMP3(0);
    mlvdb.mnuImpMP3(2);
    EXPECT_TRUE(processes.commands.at(0).endsWith(u"mediaintake.exe 1"_s));
    EXPECT_TRUE(processes.commands.at(1).endsWith(u"mediaintake.exe 2"_s));
}

TEST_F(MlvdbTest, AMissingImporterIsToldInTheStatusLine)
{
    processes.succeeds = false;
    mlvdb.mnuImpMP3(0);
    EXPECT_FALSE(status.panel(StatusPanel::Message).isEmpty());
}

TEST_F(MlvdbTest, ExitClosesTheWindow)
{
    mlvdb.mnuExit();
    EXPECT_EQ(window.closed, 1);
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

    QString shown() const { return line.panel(StatusPanel::Message); }
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

} // namespace
} // namespace melovane
