#include "platform/qt/split_panel.h"
#include "shell/console.h"
#include "support/wait_for.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct WindowTest : public testing::Test
{
    void addTracks()
    {
        library.add({{u"Lichtspiel"_s, u"Ostwind"_s, u"Prisma"_s, u"4"_s, 0},
                     {u"Licht aus"_s, u"Kanalratten"_s, u"Unter Tage"_s, {}, -1},
                     {u"Brandung"_s, u"Lichtblick"_s, u"Meer"_s, u"5"_s, 0},
                     {u"Funkstille"_s, u"Trio"_s, u"Prisma"_s, {}, 0}});
    }

    test::Console& open()
    {
        console = std::make_unique<test::Console>(library);
        console->window.show();
        return *console;
    }

    QStringList titles()
    {
        QStringList result;
        const QAbstractItemModel* model = console->grid().model();
        const int column = console->grid().columnOf(u"Titel"_s);
        for (int row = 0; row < model->rowCount(); ++row) {
            result.append(model->index(row, column).data().toString());
        }
        return result;
    }

    test::TestLibrary library;
    std::unique_ptr<test::Console> console;
};

TEST_F(WindowTest, EachKeyPressShowsTheMatchingTracks)
{
    addTracks();
    open();
    QTest::keyClicks(&console->searchLine(), u"L"_s);
    EXPECT_EQ(titles(), (QStringList{u"Brandung"_s, u"Licht aus"_s, u"Lichtspiel"_s}));
    EXPECT_EQ(console->control<QLabel>(u"MatchCount"_s).text(), u"3 Titel"_s);
    QTest::keyClicks(&console->searchLine(), u"ichts"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
    EXPECT_EQ(console->control<QLabel>(u"MatchCount"_s).text(), u"1 Titel"_s);
}

TEST_F(WindowTest, AClickOnAHeadingSorts)
{
    addTracks();
    open();
    QTest::keyClicks(&console->searchLine(), u"*"_s);
    DataGrid& grid = console->grid();
    const int artist = grid.columnOf(u"Interpret"_s);
    QHeaderView* header = grid.horizontalHeader();
    const QPoint place(header->sectionViewportPosition(artist) + 30, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(titles(),
              (QStringList{u"Licht aus"_s, u"Brandung"_s, u"Lichtspiel"_s, u"Funkstille"_s}));
    EXPECT_EQ(grid.sortArrow(artist), SortArrow::Ascending);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(titles().first(), u"Funkstille"_s);
    EXPECT_EQ(grid.sortArrow(artist), SortArrow::Descending);
}

TEST_F(WindowTest, TheCountsOfTheDayEndAtTheStartTwelveHoursAfterTheLastPlay)
{
    addTracks();
    library.execute(u"update db_all set PlayCountDay=2, PlayCountAll=5, play=now"_s);
    library.execute(u"update db_all set play=cdate(now-0.6) where Titel='Brandung'"_s);
    open();
    const auto database = library.engine->OpenDatabase(library.databaseName());
    const auto ended =
        database->OpenRecordset(u"select Titel, PlayCountAll from db_all where PlayCountDay is "
                                "null"_s);
    ASSERT_EQ(ended->rowCount(), 1);
    EXPECT_EQ(ended->value(0).toText(), u"Brandung"_s);
    EXPECT_EQ(ended->value(1).toLong(), 5);
}

TEST_F(WindowTest, KeysLeadFromTheSearchLineIntoTheListAndBack)
{
    addTracks();
    open();
    QApplication::setActiveWindow(&console->window);
    console->searchLine().setFocus();
    QTest::keyClicks(&console->searchLine(), u"L"_s);
    QTest::keyClick(&console->searchLine(), Qt::Key_Down);
    EXPECT_TRUE(console->grid().hasFocus());
    EXPECT_EQ(console->grid().currentRow(), 0);
    QTest::keyClick(&console->grid(), Qt::Key_Down);
    EXPECT_EQ(console->grid().currentRow(), 1);
    QTest::keyClick(&console->grid(), Qt::Key_Escape);
    EXPECT_TRUE(console->searchLine().hasFocus());
    console->grid().setFocus();
    QTest::keyClick(&console->grid(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(console->searchLine().hasFocus());
}

TEST_F(WindowTest, AnEmptyLibraryOpensTheImporterAndOffersItAgain)
{
    open();
    const auto imports = [this] {
        return console->processes.commands.filter(u"mediaintake"_s).size();
    };
    ASSERT_EQ(imports(), 1);
    auto* button = console->grid().findChild<QPushButton*>(u"EmptyButton"_s);
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(imports(), 2);
    EXPECT_EQ(console->window.frameGeometry().size(), QSize(800, 600));
}

TEST_F(WindowTest, TheFirstTracksOfAnEmptyLibraryAreShownThoughNothingIsAskedFor)
{
    open();
    EXPECT_EQ(titles(), QStringList());
    addTracks();
    EXPECT_TRUE(test::waitFor([this] { return titles().size() == 4; }));
    EXPECT_EQ(console->searchLine().text(), QString());
    EXPECT_EQ(console->control<QLabel>(u"MatchCount"_s).text(), u"4 Titel"_s);
}

TEST_F(WindowTest, TheScaleOfTheRatingIsToldAtItsHeadingAndAtTheSearchLine)
{
    open();
    EXPECT_TRUE(console->searchLine().toolTip().contains(u"Note=1 (Schulnote"_s));
    for (QTableView* grid : console->window.findChildren<QTableView*>()) {
        const auto* rows = grid->model();
        if (rows->columnCount() == 1) {
            continue; // a tree
        }
        QString tip;
        for (int column = 0; column < rows->columnCount(); ++column) {
            if (rows->headerData(column, Qt::Horizontal).toString() == "Note"_L1) {
                tip = rows->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
            }
        }
        EXPECT_TRUE(tip.startsWith(u"Bewertung von 1 bis 5"_s)) << qPrintable(grid->objectName());
    }
}

TEST_F(WindowTest, InASmallWindowTheToolsGiveWayAndTheSearchLineStaysReadable)
{
    addTracks();
    open();
    console->window.resize(600, 400);
    const auto& line = console->searchLine();
    EXPECT_GE(line.width(), line.fontMetrics().averageCharWidth() * 32);
    EXPECT_TRUE(console->control<QToolButton>(u"MoreTools"_s).isVisible());
}

TEST_F(WindowTest, InTheFirstWindowTheSearchLineShowsItsHintWhole)
{
    addTracks();
    open();
    console->window.resize(960, 600);
    const QLineEdit& line = *console->searchLine().lineEdit();
    const int hint = line.fontMetrics().horizontalAdvance(line.placeholderText());
    // Left of the hint stands the lens, with room on both sides.
    EXPECT_GE(line.width(), hint + 2 * line.fontMetrics().height());
}

TEST_F(WindowTest, TracksThatAnotherProgramAddsAppearByThemselves)
{
    open();
    QTest::keyClicks(&console->searchLine(), u"Brand"_s);
    EXPECT_EQ(titles(), QStringList());
    addTracks();
    EXPECT_TRUE(test::waitFor([this] { return titles() == QStringList{u"Brandung"_s}; }));
}

TEST_F(WindowTest, ASearchWithoutHitsOffersToSearchInside)
{
    addTracks();
    open();
    QTest::keyClicks(&console->searchLine(), u"spiel"_s);
    auto* button = console->grid().findChild<QPushButton*>(u"EmptyButton"_s);
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(console->searchLine().text(), u"*spiel"_s);
    EXPECT_EQ(titles(), QStringList{u"Lichtspiel"_s});
}

TEST_F(WindowTest, PlaceSplitsAndSearchComeBackAtTheNextStart)
{
    addTracks();
    open();
    console->window.setGeometry(20, 30, 700, 500);
    QTest::keyClicks(&console->searchLine(), u"Brand"_s);
    auto& split = console->control<SplitPanel>(u"ElasticOne2"_s);
    split.setPosition(400);
    const int kept = split.position();
    console->window.close();
    console.reset();
    open();
    EXPECT_EQ(console->window.geometry(), QRect(20, 30, 700, 500));
    EXPECT_NEAR(console->control<SplitPanel>(u"ElasticOne2"_s).position(), kept, 3);
    EXPECT_EQ(console->searchLine().text(), u"Brand"_s);
    EXPECT_EQ(titles(), QStringList{u"Brandung"_s});
}

TEST_F(WindowTest, AMaximisedWindowComesBackMaximisedAndKeepsItsNormalPlace)
{
    addTracks();
    open();
    console->window.setGeometry(20, 30, 700, 500);
    console->window.showMaximized();
    console->window.close();
    const WindowPosition& stored = library.settings->Position(u"DBPosition"_s);
    EXPECT_EQ(stored.WindowState, 2);
    EXPECT_EQ(stored.Whidth, 700);
    console.reset();
    open();
    EXPECT_TRUE(console->window.isMaximized());
}

TEST_F(WindowTest, TheThemeMenuListsWhatLiesReady)
{
    QDir(library.folders.configFile(u"."_s)).mkdir(u"Skin"_s);
    QFile theme(library.folders.configFile(u"Skin/night.skn"_s));
    ASSERT_TRUE(theme.open(QIODevice::WriteOnly));
    theme.write("Name=Nacht\nGridColor=#010203\n");
    theme.close();
    open();
    auto& menu = console->control<QMenu>(u"mnuSkin"_s);
    emit menu.aboutToShow();
    auto* night = menu.findChild<QAction*>(u"night.skn"_s);
    ASSERT_NE(night, nullptr);
    EXPECT_EQ(night->text(), u"Nacht"_s);
    night->trigger();
    EXPECT_EQ(console->skin.theme().colour(ThemeRole::GridColor), (Colour{1, 2, 3}));
    menu.actions().constLast()->trigger();
    EXPECT_FALSE(console->skin.isLoaded());
}

TEST_F(WindowTest, TheLanguageMenuOffersWhatLiesReadyAndKeepsTheChoice)
{
    QFile file(library.folders.configFile(u"lang_English.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Description]\nSprach.Name=English\n");
    file.close();
    open();
    auto& menu = console->control<QMenu>(u"mnuSprache"_s);
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_EQ(menu.actions()[0]->text(), u"Deutsch"_s);
    EXPECT_TRUE(menu.actions()[0]->isChecked());
    console->log.clear();
    menu.actions()[1]->trigger();
    EXPECT_EQ(console->log, QStringList()) << "spoken at once, so that nothing is told";
    emit menu.aboutToShow();
    EXPECT_FALSE(menu.actions()[0]->isChecked());
    EXPECT_TRUE(menu.actions()[1]->isChecked());
}

TEST_F(WindowTest, ExitInTheMenuClosesTheWindow)
{
    addTracks();
    open();
    auto& exit = console->control<QAction>(u"mnuExit"_s);
    EXPECT_EQ(exit.shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    exit.trigger();
    EXPECT_FALSE(console->window.isVisible());
}

TEST_F(WindowTest, AToolTipOfTheLanguageFileStandsOnTheButtonInsteadOfItsText)
{
    for (const QString& name : {u"ToolTipPlayerPlay"_s, u"ToolTipAllTableDetail"_s}) {
        library.texts.FindObject(name)->ToolTip = u"Aus der Sprachdatei: "_s + name;
    }
    open();
    int told = 0;
    for (const QString& key : {u"play.start"_s, u"all.book"_s}) {
        // In the library and in the playlist.
        for (const QToolButton* button : console->window.findChildren<QToolButton*>(key)) {
            EXPECT_TRUE(button->toolTip().contains(u"Aus der Sprachdatei"_s))
                << button->toolTip().toStdString();
            ++told;
        }
    }
    EXPECT_EQ(told, 4);
}

TEST_F(WindowTest, EveryToolButtonSaysWhatItDoes)
{
    addTracks();
    open();
    const auto buttons = console->window.findChildren<QToolButton*>();
    int named = 0;
    for (const QToolButton* button : buttons) {
        if (button->objectName().startsWith(u"all."_s) ||
            button->objectName().startsWith(u"play."_s)) {
            ++named;
            EXPECT_FALSE(button->toolTip().isEmpty());
            EXPECT_FALSE(button->accessibleName().isEmpty());
            EXPECT_FALSE(button->icon().isNull());
        }
    }
    EXPECT_EQ(named, 16 + 16) << "library and playlist";
}

} // namespace
} // namespace melovane
