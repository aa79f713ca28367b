#include "bus/message_numbers.h"
#include "config/global_settings.h"
#include "platform/linux/linux_messages.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "shell/ui/suite_look.h"
#include "siblings/levelpanel/monitor_level.h"
#include "siblings/levelpanel/ui/level_window.h"
#include "support/accessible_walk.h"
#include "support/text_catalogue.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The window over a real settings file; this test is the console.
struct LevelWindowTest : testing::Test
{
    LevelWindowTest()
    {
        catalogue.folders.install(
            u"melovane.ini"_s, "[Global]\nForeign=1\nVolume.Monitor=5000\n[Message]\nHandle.DB=" +
                                   QByteArray::number(console->handle()) + "\n");
        catalogue.fill();
        settings = catalogue.folders.makeSettings();
        console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            heard.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        level = std::make_unique<MonitorLevel>(*settings, *control, loop);
        window = std::make_unique<LevelWindow>(*level, catalogue.texts, icons);
        window->show();
        slider = window->findChild<QSlider*>(u"sldLevel"_s);
    }

    [[nodiscard]] int stored()
    {
        return catalogue.folders.makeSettings()->GetKeyValueLong(u"Global"_s, u"Volume.Monitor"_s,
                                                                 0);
    }

    void turnWheel(int notches)
    {
        QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(window.get(), &wheel);
    }

    TextCatalogue catalogue;
    LinuxMessages messages{MessagePlace(catalogue.folders.environment().runtimeFolder())};
    std::unique_ptr<KSMessage> console = messages.makeControl();
    std::unique_ptr<KSMessage> control = messages.makeControl();
    std::unique_ptr<GlobalSettings> settings;
    QtMessageLoop loop;
    Skin skin{*qApp};
    IconSet icons{skin};
    std::unique_ptr<MonitorLevel> level;
    std::unique_ptr<LevelWindow> window;
    QSlider* slider = nullptr;
    QStringList heard;
};

TEST_F(LevelWindowTest, ShowsTheVolumeOfTheSettings)
{
    EXPECT_EQ(slider->value(), 5000);
    EXPECT_EQ(window->findChild<QLabel*>(u"lblPercent"_s)->text(), u"50 %"_s);
}

TEST_F(LevelWindowTest, KeysAndWheelAreHeardByTheConsoleAtOnceWithItsPictures)
{
    QTest::keyClick(slider, Qt::Key_Right);
    ASSERT_TRUE(waitFor([this] { return heard.size() == 1; }));
    EXPECT_EQ(heard.last(), u"1074 210 5500"_s);
    turnWheel(-2);
    ASSERT_TRUE(waitFor([this] { return heard.size() == 2; }));
    EXPECT_EQ(heard.last(), u"1074 210 4500"_s);
    QTest::keyClick(slider, Qt::Key_End);
    ASSERT_TRUE(waitFor([this] { return heard.size() == 3; }));
    EXPECT_EQ(heard.last(), u"1074 210 10000"_s);
    EXPECT_EQ(window->findChild<QLabel*>(u"lblPercent"_s)->text(), u"100 %"_s);
}

TEST_F(LevelWindowTest, TheVolumeIsKeptWhenTheHandRests)
{
    QTest::keyClick(slider, Qt::Key_Home);
    EXPECT_EQ(stored(), 5000);
    EXPECT_TRUE(waitFor([this] { return stored() == 0; }));
}

TEST_F(LevelWindowTest, TheVolumeIsKeptAtTheEnd)
{
    QTest::keyClick(slider, Qt::Key_PageUp);
    window.reset();
    level.reset();
    EXPECT_EQ(stored(), 7000);
}

TEST_F(LevelWindowTest, AVolumeThatTheConsoleHasStoredIsShownWhenTheWindowComesToTheFront)
{
    settings->WriteKeyValue(u"Global"_s, u"Volume.Monitor"_s, u"99999"_s);
    window->bringToFront();
    EXPECT_EQ(slider->value(), 10000);
    EXPECT_TRUE(heard.isEmpty());
}

TEST_F(LevelWindowTest, WithoutAConsoleTheVolumeIsKeptAllTheSame)
{
    console.reset();
    QTest::keyClick(slider, Qt::Key_Left);
    EXPECT_TRUE(waitFor([this] { return stored() == 4500; }));
}

TEST_F(LevelWindowTest, AnotherLanguageAndAnotherThemeAreThoseOfTheOpenWindowAtOnce)
{
    const CurrentFolder here(catalogue.folders.programFolder());
    SuiteLook look({*qApp, catalogue.folders.paths(), catalogue.folders.files(), *settings,
                    catalogue.texts, skin});
    const auto picture = [this] {
        return window->findChild<QLabel*>(u"lblLevel"_s)->pixmap().toImage();
    };
    const QImage former = picture();
    catalogue.folders.install(u"lang_English.ini"_s,
                              "[Description]\nlevel.title=Volume of the monitor\n");
    QDir(catalogue.folders.programFolder()).mkdir(u"Skin"_s);
    catalogue.folders.install(u"Skin/night.skn"_s, "Text=#0af0f0\n");
    settings->WriteKeyValue(u"Value"_s, u"Sprach.Datei"_s, u"lang_English.ini"_s);
    settings->WriteKeyValue(u"Global"_s, u"SkinFileName"_s, u"night.skn"_s);
    look.follow();
    EXPECT_EQ(window->windowTitle(), u"Volume of the monitor"_s);
    EXPECT_EQ(slider->accessibleName(), window->windowTitle());
    EXPECT_EQ(window->palette().color(QPalette::WindowText), QColor(0x0a, 0xf0, 0xf0));
    EXPECT_NE(picture(), former);
    settings->WriteKeyValue(u"Value"_s, u"Sprach.Datei"_s, u"lang_Deutsch.ini"_s);
    settings->WriteKeyValue(u"Global"_s, u"SkinFileName"_s, u"none.skn"_s);
    look.follow();
    EXPECT_EQ(window->windowTitle(), u"Lautstärke des Monitors"_s);
    EXPECT_FALSE(skin.isLoaded());
}

TEST_F(LevelWindowTest, EscapeClosesTheWindow)
{
    QTest::keyClick(slider, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LevelWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    EXPECT_EQ(walkAccessibly(*window).faults().join(u'\n').toStdString(), "");
}

} // namespace
} // namespace melovane::test
