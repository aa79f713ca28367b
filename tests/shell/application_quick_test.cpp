#include "platform/qt/data_grid.h"
#include "shell/application_fixture.h"
#include "support/wait_for.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The line that finds everything, in the whole console.
class QuickOpenTest : public test::ApplicationTest
{
protected:
    QuickOpenTest()
    {
        suite.library.add({.Titel = u"Licht"_s, .Interpret = u"Quarzlampe"_s});
        suite.library.add({.Titel = u"Schatten"_s, .Interpret = u"Kerze"_s});
        suite.execute(u"delete from tree_interpret"_s);
        suite.execute(u"insert into tree_interpret (Name, anzahl) values ('Quarzlampe', 1)"_s);
    }

    /// Opens the line by its key and acts in it.
    static void inLine(QMainWindow& window,
                       const std::function<void(QDialog& dialog, QLineEdit& line)>& act)
    {
        int opened = 0;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &window, [&] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->objectName() == u"QuickOpen" && opened == 0) {
                ++opened;
                act(*dialog, *dialog->findChild<QLineEdit*>(u"txtQuick"_s));
                dialog->reject();
            }
        });
        hand.start(std::chrono::milliseconds(5));
        window.activateWindow();
        EXPECT_TRUE(test::waitFor([&window] { return window.isActiveWindow(); }));
        QTest::keyClick(&window, Qt::Key_K, Qt::ControlModifier);
        EXPECT_EQ(opened, 1);
    }

    static QTreeWidgetItem* listed(const QDialog& dialog, const QString& title)
    {
        const auto* const list = dialog.findChild<QTreeWidget*>(u"lstQuick"_s);
        const auto found = list->findItems(title, Qt::MatchFixedString | Qt::MatchCaseSensitive);
        return found.isEmpty() ? nullptr : found.first();
    }

    static void type(QLineEdit& line, const QString& text)
    {
        line.clear();
        QTest::keyClicks(&line, text);
    }
};

TEST_F(QuickOpenTest, AnArtistOfTheTreeIsFoundBesideTheWindowAndEnterShowsHisTracks)
{
    run([](QMainWindow& window) {
        auto& library = *window.findChild<DataGrid*>(u"TDBGrid1"_s);
        inLine(window, [](QDialog& dialog, QLineEdit& line) {
            type(line, u"quarzl"_s);
            ASSERT_TRUE(test::waitFor([&] { return listed(dialog, u"Quarzlampe"_s) != nullptr; }));
            EXPECT_EQ(listed(dialog, u"Quarzlampe"_s)->text(1), u"Interpret"_s);
            QTest::keyClick(&line, Qt::Key_Return);
        });
        EXPECT_TRUE(test::waitFor([&library] { return library.model()->rowCount() == 1; }));
    });
}

TEST_F(QuickOpenTest, AThemeAndAListAreTakenByTheirNames)
{
    QDir(suite.dataFolder()).mkdir(u"Skin"_s);
    suite.write(u"Skin/night.skn"_s, "Name=Nacht\nText=#0a0b0c\n");
    suite.execute(u"insert into pl_name (Name, GRID, activ) values ('Polterabend', -1, false)"_s);
    run([](QMainWindow& window) {
        inLine(window, [](QDialog&, QLineEdit& line) {
            type(line, u"nacht"_s);
            QTest::keyClick(&line, Qt::Key_Return);
        });
        EXPECT_EQ(window.palette().color(QPalette::WindowText), QColor(0x0a, 0x0b, 0x0c));
        inLine(window, [](QDialog& dialog, QLineEdit& line) {
            type(line, u"polter"_s);
            ASSERT_TRUE(test::waitFor([&] { return listed(dialog, u"Polterabend"_s) != nullptr; }));
            QTest::keyClick(&line, Qt::Key_Return);
        });
        const auto names = window.findChildren<QLabel*>();
        EXPECT_TRUE(std::ranges::any_of(
            names, [](const QLabel* label) { return label->text() == u"Polterabend"; }));
    });
}

TEST_F(QuickOpenTest, CommandsShowTheirKeysAndOneThatCannotWorkSaysWhy)
{
    run([](QMainWindow& window) {
        inLine(window, [](QDialog& dialog, QLineEdit& line) {
            type(line, u"Datei: Beenden"_s);
            const QTreeWidgetItem* const quit = listed(dialog, u"Datei: Beenden"_s);
            ASSERT_NE(quit, nullptr);
            EXPECT_TRUE(quit->text(2).endsWith(u"+Q"_s)) << quit->text(2).toStdString();
            // No program of the suite lies in the folder of this console.
            type(line, u"Datei: Einstellungen"_s);
            const QString reason = dialog.findChild<QLabel*>(u"lblQuick"_s)->text();
            EXPECT_FALSE(reason.isEmpty());
            QTest::keyClick(&line, Qt::Key_Return);
            EXPECT_TRUE(dialog.isVisible());
        });
    });
}

TEST_F(QuickOpenTest, EachEntryOfTheMenusAndEachButtonIsFoundByItsWords)
{
    run([](QMainWindow& window) {
        QStringList missing;
        inLine(window, [&](QDialog& dialog, QLineEdit& line) {
            for (const QAction* action : window.menuBar()->findChildren<QAction*>()) {
                if (action->menu() != nullptr || action->isSeparator() || !action->isVisible() ||
                    action->objectName() == u"mnuQuickOpen") {
                    continue;
                }
                line.setText(QString(action->text()).remove(u'&'));
                if (dialog.findChild<QTreeWidget*>(u"lstQuick"_s)->topLevelItemCount() == 0) {
                    missing.append(action->objectName());
                }
            }
        });
        EXPECT_TRUE(missing.isEmpty()) << missing.join(u' ').toStdString();
    });
}

} // namespace
} // namespace melovane
