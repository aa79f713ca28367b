#include "platform/controls/status_line.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/value_bar.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/message_sibling.h"
#include "support/sounding_mp3.h"
#include "support/wait_for.h"

#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using test::ApplicationTest;

/// The whole console with a track that sounds, and one beside it that does not play.
class MonitorInWindowTest : public ApplicationTest
{
protected:
    MonitorInWindowTest()
    {
        suite.write(u"lied.mp3"_s, test::soundingMp3({44100, 2, 60, {u"-b"_s, u"128"_s}}));
        for (const QString& title : {u"Lied Eins"_s, u"Lied Zwei"_s}) {
            suite.library.add(
                {.Titel = title, .Path = suite.dataFolder() + u'/', .DName = u"lied.mp3"_s});
        }
    }

    static DataGrid& gridOf(QMainWindow& window)
    {
        return *window.findChild<DataGrid*>(u"TDBGrid1"_s);
    }

    static void findBoth(QMainWindow& window)
    {
        auto* line = window.findChild<QWidget*>(u"ctl_MP3DB1"_s)->findChild<QLineEdit*>();
        line->selectAll();
        QTest::keyClicks(line, u"Lied"_s);
        ASSERT_EQ(gridOf(window).model()->rowCount(), 2);
        gridOf(window).goToRow(0, 0);
    }

    static void press(QMainWindow& window, const QString& key)
    {
        window.findChild<QWidget*>(u"ctl_MP3DB1"_s)->findChild<QToolButton*>(key)->click();
    }

    static QString panel(QMainWindow& window, StatusPanel panel)
    {
        return static_cast<MlvdbWindow&>(window).status().panel(panel);
    }

    int shown = -1; ///< volume

    /// Rows of the library that say that they are heard.
    static QList<int> marked(QMainWindow& window)
    {
        DataGrid& grid = gridOf(window);
        QList<int> rows;
        for (int row = 0; row < grid.model()->rowCount(); ++row) {
            const auto cell = grid.model()->index(row, grid.columnOf(u"Titel"_s));
            if (cell.data(Qt::AccessibleTextRole).toString().endsWith(u", wird vorgehört"_s)) {
                rows.append(row);
            }
        }
        return rows;
    }
};

TEST_F(MonitorInWindowTest, WhatPlaysIsMarkedAndNamedUntilItStops)
{
    run([&](QMainWindow& window) {
        findBoth(window);
        press(window, u"play.start"_s);
        EXPECT_EQ(marked(window), QList<int>{0});
        EXPECT_EQ(panel(window, StatusPanel::Message), u" :: Lied Eins"_s);
        EXPECT_EQ(panel(window, StatusPanel::Elapsed), u"00:00"_s);
        EXPECT_EQ(panel(window, StatusPanel::Remaining), u"−01:00"_s);
        press(window, u"play.stop"_s);
        EXPECT_EQ(marked(window), QList<int>());
        EXPECT_EQ(panel(window, StatusPanel::Message), QString());
        EXPECT_EQ(panel(window, StatusPanel::Elapsed), QString());
        EXPECT_EQ(panel(window, StatusPanel::Remaining), QString());
    });
}

TEST_F(MonitorInWindowTest, F8MakesItLouderAndTheNextStartKnows)
{
    const auto key = [this] {
        run([&](QMainWindow& window) {
            window.activateWindow();
            ASSERT_TRUE(test::waitFor([&] { return window.isActiveWindow(); }));
            QTest::keyClick(&window, Qt::Key_F8);
            shown = window.findChild<ValueBar*>(u"MonitorVolume"_s)->value();
        });
    };
    key();
    EXPECT_EQ(shown, 8000);
    key();
    EXPECT_EQ(shown, 8500);
}

TEST_F(MonitorInWindowTest, TheVolumeButtonsOfBothViewsFollowTheVolume)
{
    run([&](QMainWindow& window) {
        const auto pictures = [&] {
            QList<QImage> result;
            for (const QString& view : {u"ctl_MP3DB1"_s, u"ctl_Playlist1"_s}) {
                auto* button =
                    window.findChild<QWidget*>(view)->findChild<QToolButton*>(u"all.volume"_s);
                result.append(button->icon().pixmap(32).toImage());
            }
            return result;
        };
        const QList<QImage> loud = pictures();
        QTest::keyClick(window.findChild<ValueBar*>(u"MonitorVolume"_s), Qt::Key_Home);
        const QList<QImage> silent = pictures();
        EXPECT_NE(silent[0], loud[0]);
        EXPECT_NE(silent[1], loud[1]);
    });
}

TEST_F(MonitorInWindowTest, APlayerThatHangsIsToldAndWhatIsAskedForPlaysAllTheSame)
{
    const test::Sibling player(suite.folders.environment().runtimeFolder());
    suite.folders.profile().write(suite.file(u"melovane.ini"_s), u"Message"_s, u"Handle.DJ"_s,
                                  QString::number(player.handle()));
    player.stop();
    run([&](QMainWindow& window) {
        findBoth(window);
        press(window, u"play.start"_s);
        EXPECT_EQ(marked(window), QList<int>{0});
        EXPECT_TRUE(panel(window, StatusPanel::Message).contains(u"antwortet nicht"_s));
    });
    player.goOn();
}

TEST_F(MonitorInWindowTest, AClickIntoTheBarAndItsArrowKeysGoThere)
{
    run([&](QMainWindow& window) {
        findBoth(window);
        auto* bar = window.findChild<ValueBar*>(u"MonitorSeek"_s);
        ASSERT_NE(bar, nullptr);
        EXPECT_FALSE(bar->isVisible());
        press(window, u"play.start"_s);
        ASSERT_TRUE(test::waitFor([&] { return bar->isVisible() && bar->width() > 60; }));
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->rect().center());
        const QString half = panel(window, StatusPanel::Elapsed);
        EXPECT_TRUE(half == "00:30"_L1 || half == "00:29"_L1) << half.toStdString();
        QTest::keyClick(bar, Qt::Key_PageDown);
        EXPECT_EQ(panel(window, StatusPanel::Elapsed), u"00:00"_s);
        QTest::keyClick(bar, Qt::Key_Right);
        QTest::keyClick(bar, Qt::Key_Right);
        const QString later = panel(window, StatusPanel::Elapsed);
        EXPECT_TRUE(later == "00:10"_L1 || later == "00:11"_L1) << later.toStdString();
        EXPECT_EQ(marked(window), QList<int>{0});
        press(window, u"play.stop"_s);
        EXPECT_FALSE(bar->isVisible());
    });
}

} // namespace
} // namespace melovane
