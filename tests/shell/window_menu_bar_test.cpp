#include "monitor/monitor_player.h"
#include "platform/qt/icon_set.h"
#include "shell/console.h"
#include "shell/ui/window_menu_bar.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct WindowMenuBarTest : public testing::Test
{
    WindowMenuBarTest()
    {
        library.add({{u"Hafen"_s, u"Mara Vossberg"_s, {}, {}, 0},
                     {u"Brandung"_s, u"Hafenchor"_s, {}, {}, 0},
                     {u"Alter Hafen"_s, u"Trio"_s, {}, {}, 0}});
        console.window.show();
    }

    QAction& entry(const QString& name) { return console.control<QAction>(name); }

    QMenu& context() { return console.control<QMenu>(u"popupDBGRID"_s); }

    /// Searches, and opens the context menu of the first row as a right click does.
    void openContextMenu(const QString& text)
    {
        QTest::keyClicks(&console.searchLine(), text);
        console.grid().goToRow(0, 0);
        const QRect row = console.grid().visualRect(console.grid().currentIndex());
        QContextMenuEvent event(QContextMenuEvent::Mouse, row.center(),
                                console.grid().viewport()->mapToGlobal(row.center()));
        QApplication::sendEvent(console.grid().viewport(), &event);
    }

    QStringList artists()
    {
        QStringList result;
        const QAbstractItemModel* model = console.grid().model();
        for (int row = 0; row < model->rowCount(); ++row) {
            result.append(
                model->index(row, console.grid().columnOf(u"Interpret"_s)).data().toString());
        }
        return result;
    }

    test::TestLibrary library;
    test::Console console{library};
};

TEST_F(WindowMenuBarTest, TheMenusStandInTheirOrderWithTheirTexts)
{
    QStringList shown;
    for (const QAction* menu : console.window.menuBar()->actions()) {
        if (menu->isVisible()) {
            shown.append(menu->text().remove(u'&'));
        }
    }
    EXPECT_EQ(shown, (QStringList{u"Datei"_s, u"Extras"_s, u"Ansicht"_s, u"?"_s}));
}

TEST_F(WindowMenuBarTest, EveryPictureThatAMenuOrTheMonitorNamesIsDrawnAndMeansOneThing)
{
    const QStringList drawn = IconSet::names();
    QSet<QString> monitor;
    for (const MonitorCommand& command : kMonitorCommands) {
        EXPECT_TRUE(drawn.contains(command.icon)) << command.icon.toString().toStdString();
        monitor.insert(command.icon.toString());
    }
    EXPECT_EQ(monitor.size(), qsizetype(kMonitorCommands.size()));
    for (const MenuRow& row : MenuCommands::rows()) {
        EXPECT_TRUE(row.icon.isEmpty() || drawn.contains(row.icon))
            << row.name.toString().toStdString();
        EXPECT_FALSE(monitor.contains(row.icon.toString()));
    }
}

TEST_F(WindowMenuBarTest, EachAcceleratorLeadsToOneEntry)
{
    for (const QMenu* menu : console.window.menuBar()->findChildren<QMenu*>()) {
        QString used;
        for (const QAction* action : menu->actions()) {
            const qsizetype at = action->text().indexOf(u'&');
            if (at >= 0) {
                const QChar letter = action->text()[at + 1].toUpper();
                EXPECT_FALSE(used.contains(letter)) << action->text().toStdString();
                used += letter;
            }
        }
    }
}

TEST_F(WindowMenuBarTest, EntriesOfViewsThatAreMissingAreGreyAndSayWhy)
{
    const QAction& cleaning = entry(u"mnuDatenbereinigung"_s);
    EXPECT_FALSE(cleaning.isEnabled());
    EXPECT_EQ(cleaning.toolTip(), u"Noch nicht in dieser Fassung"_s);
    EXPECT_TRUE(qobject_cast<QMenu*>(cleaning.associatedObjects().first())->toolTipsVisible());
    EXPECT_TRUE(entry(u"mnuViewDel"_s).isEnabled());
    EXPECT_TRUE(entry(u"mnuPOPDBGRID_13"_s).isEnabled());
}

TEST_F(WindowMenuBarTest, AnEntryThatIsChosenDoesItsWork)
{
    entry(u"mnuConfig"_s).trigger();
    EXPECT_TRUE(console.processes.commands.last().contains(u"mlvconfig.exe "_s));
    entry(u"mnuAutosizeGrid"_s).trigger();
    EXPECT_TRUE(entry(u"mnuAutosizeGrid"_s).isChecked());
    EXPECT_EQ(library.settings->AutosizeGrid(), 1);
}

TEST_F(WindowMenuBarTest, ARightClickOpensTheContextMenuOverTheRow)
{
    openContextMenu(u"Brand"_s);
    EXPECT_TRUE(context().isVisible());
    entry(u"mnuPOPDBGRID_0"_s).trigger();
    const QString fid = console.view.GetFID();
    EXPECT_EQ(console.log.last(), u"monitor PLAY %1 0"_s.arg(fid));
    EXPECT_EQ(entry(u"mnuPOPDBGRID_4"_s).text().remove(u'&'),
              library.texts.text(u"mnuPOPDBGRID_4"_s));
    context().close();
}

TEST_F(WindowMenuBarTest, TheMenuKeyOpensItAtTheCurrentRow)
{
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().goToRow(0, 0);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(console.grid().viewport(), &event);
    ASSERT_TRUE(context().isVisible());
    const QRect grid(console.grid().viewport()->mapToGlobal(QPoint()),
                     console.grid().viewport()->size());
    EXPECT_TRUE(grid.contains(context().pos())) << context().pos().y();
    context().close();
}

TEST_F(WindowMenuBarTest, WithoutARowThereIsNoContextMenu)
{
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(console.grid().viewport(), &event);
    EXPECT_FALSE(context().isVisible());
}

TEST_F(WindowMenuBarTest, WordsOfTheTrackFindMoreOfThem)
{
    openContextMenu(u"Mara"_s);
    auto& more = console.control<QMenu>(u"mnuMoreResult"_s);
    const auto find = [&](const QString& text, int nth) {
        for (QAction* action : more.actions()) {
            if (action->text() == text && nth-- == 0) {
                return action;
            }
        }
        return static_cast<QAction*>(nullptr);
    };
    EXPECT_FALSE(find(u"Volltextsuche"_s, 0)->isEnabled());
    QAction* beginning = find(u"&HAFEN"_s, 0);
    QAction* anywhere = find(u"&HAFEN"_s, 1);
    ASSERT_NE(anywhere, nullptr);
    beginning->trigger();
    EXPECT_EQ(artists(), (QStringList{u"Hafenchor"_s, u"Mara Vossberg"_s}));
    anywhere->trigger();
    EXPECT_EQ(artists(), (QStringList{u"Trio"_s, u"Hafenchor"_s, u"Mara Vossberg"_s}));
    context().close();
}

TEST_F(WindowMenuBarTest, TheButtonsOfTheMonitorPlayTheCurrentTrack)
{
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().goToRow(0, 0);
    console.log.clear();
    for (const QString& name : {u"play.start"_s, u"play.center"_s, u"play.stop"_s}) {
        console.window.library().findChild<QToolButton*>(name)->click();
    }
    const QString fid = console.view.GetFID();
    EXPECT_EQ(console.log,
              (QStringList{u"monitor PLAY %1 0"_s.arg(fid), u"monitor PLAYCENTER %1 0"_s.arg(fid),
                           u"monitor STOP %1 0"_s.arg(fid)}));
}

TEST(Accelerator, IsTheFirstLetterThatNobodyHas)
{
    QString used = u"D"_s;
    EXPECT_EQ(withAccelerator(u"Datei"_s, used), u"D&atei"_s);
    EXPECT_EQ(withAccelerator(u"?"_s, used), u"?"_s);
    EXPECT_EQ(withAccelerator(u"Eigen &x"_s, used), u"Eigen &x"_s);
    EXPECT_EQ(withAccelerator(u"Dada"_s, used), u"Dada"_s);
    EXPECT_EQ(used, u"DA"_s);
}

} // namespace
} // namespace melovane
