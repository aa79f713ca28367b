#include "platform/qt/icon_set.h"
#include "platform/qt/monitor_bars.h"
#include "platform/qt/skin.h"
#include "platform/qt/status_bar.h"
#include "platform/qt/value_bar.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct MonitorBarsTest : public testing::Test
{
    MonitorBarsTest()
    {
        bars->setTexts({u"Stelle"_s, u"Pfeile 5 s"_s, u"Lautstärke"_s, u"F7 und F8"_s});
        status.resize(1200, status.height());
        status.show();
        bars->showPlace(60'000, 240'000);
        QCoreApplication::processEvents();
    }

    static QPoint at(const ValueBar& bar, double part)
    {
        return {int(8 + (bar.width() - 16) * part), bar.height() / 2};
    }

    [[nodiscard]] ValueBar& bar(const QString& name) const
    {
        return *status.findChild<ValueBar*>(name);
    }

    static void turnWheel(QWidget& widget, int notches)
    {
        QWheelEvent event({5, 5}, widget.mapToGlobal(QPointF(5, 5)), {}, {0, notches * 120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }

    Skin skin{*qApp};
    IconSet icons{skin};
    StatusBar status;
    MonitorBars* bars = new MonitorBars(skin, icons, status);
    ValueBar& seek = bar(u"MonitorSeek"_s);
    ValueBar& volume = bar(u"MonitorVolume"_s);
};

TEST_F(MonitorBarsTest, AClickGoesThere)
{
    QSignalSpy picked(bars, &MonitorBars::placePicked);
    QTest::mouseClick(&seek, Qt::LeftButton, {}, at(seek, 0.5));
    ASSERT_EQ(picked.size(), 1);
    EXPECT_NEAR(picked[0][0].toDouble(), 120'000, 1500);
    // Nothing has moved yet: the player says where it plays.
    EXPECT_EQ(seek.value(), 60'000);
    EXPECT_EQ(seek.sliderPosition(), 60'000);
}

TEST_F(MonitorBarsTest, ADragOffersPlacesAndTakesTheLast)
{
    QSignalSpy offered(bars, &MonitorBars::placeOffered);
    QSignalSpy picked(bars, &MonitorBars::placePicked);
    QTest::mousePress(&seek, Qt::LeftButton, {}, at(seek, 0.25));
    QTest::mouseMove(&seek, at(seek, 0.75));
    bars->showPlace(61'000, 240'000);
    EXPECT_NEAR(seek.sliderPosition(), 180'000, 1500);
    EXPECT_TRUE(picked.isEmpty());
    QTest::mouseRelease(&seek, Qt::LeftButton, {}, at(seek, 0.75));
    EXPECT_NEAR(offered.last()[0].toDouble(), 180'000, 1500);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_NEAR(picked[0][0].toDouble(), 180'000, 1500);
}

TEST_F(MonitorBarsTest, EscapeGivesADragUp)
{
    QSignalSpy offered(bars, &MonitorBars::placeOffered);
    QSignalSpy picked(bars, &MonitorBars::placePicked);
    QTest::mousePress(&seek, Qt::LeftButton, {}, at(seek, 0.75));
    QTest::keyClick(&seek, Qt::Key_Escape);
    QTest::mouseRelease(&seek, Qt::LeftButton, {}, at(seek, 0.75));
    EXPECT_LT(offered.last()[0].toDouble(), 0);
    EXPECT_TRUE(picked.isEmpty());
    EXPECT_EQ(seek.sliderPosition(), 60'000);
}

TEST_F(MonitorBarsTest, ATrackThatEndsUnderADragEndsIt)
{
    QSignalSpy offered(bars, &MonitorBars::placeOffered);
    QTest::mousePress(&seek, Qt::LeftButton, {}, at(seek, 0.75));
    bars->hidePlace();
    EXPECT_FALSE(seek.isSliderDown());
    EXPECT_LT(offered.last()[0].toDouble(), 0);
}

TEST_F(MonitorBarsTest, ArrowKeysGoFiveSecondsPageKeysThirty)
{
    QSignalSpy moved(bars, &MonitorBars::moveWanted);
    QSignalSpy picked(bars, &MonitorBars::placePicked);
    for (const auto key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_PageUp, Qt::Key_PageDown}) {
        QTest::keyClick(&seek, key);
    }
    QList<double> ways;
    for (const auto& call : moved) {
        ways.append(call[0].toDouble());
    }
    EXPECT_EQ(ways, (QList<double>{5000, -5000, 30'000, -30'000}));
    QTest::keyClick(&seek, Qt::Key_Home);
    QTest::keyClick(&seek, Qt::Key_End);
    ASSERT_EQ(picked.size(), 2);
    EXPECT_EQ(picked[0][0].toDouble(), 0);
    EXPECT_EQ(picked[1][0].toDouble(), 230'000);
    QTest::keyClick(&seek, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(moved.size(), 4);
}

TEST_F(MonitorBarsTest, TheSeekBarIsThereWhileItPlaysAndHandsTheKeyboardOn)
{
    EXPECT_TRUE(seek.isVisible());
    EXPECT_TRUE(seek.focusPolicy() & Qt::TabFocus);
    status.activateWindow();
    seek.setFocus();
    bars->hidePlace();
    EXPECT_FALSE(seek.isVisible());
    EXPECT_EQ(status.focusWidget(), &volume);
}

TEST_F(MonitorBarsTest, TheWheelOverEitherBarChangesTheVolume)
{
    QSignalSpy stepped(bars, &MonitorBars::volumeStepped);
    turnWheel(seek, 1);
    turnWheel(volume, -2);
    ASSERT_EQ(stepped.size(), 2);
    EXPECT_EQ(stepped[0][0].toInt(), 1);
    EXPECT_EQ(stepped[1][0].toInt(), -2);
    EXPECT_EQ(seek.value(), 60'000);
}

TEST_F(MonitorBarsTest, TheVolumeIsDraggedAndComesBackWithEscape)
{
    bars->showVolume(7500);
    QSignalSpy picked(bars, &MonitorBars::volumePicked);
    QTest::mousePress(&volume, Qt::LeftButton, {}, at(volume, 0.5));
    EXPECT_NEAR(picked.last()[0].toInt(), 5000, 200);
    QTest::keyClick(&volume, Qt::Key_Escape);
    EXPECT_EQ(picked.last()[0].toInt(), 7500);
    QTest::mouseRelease(&volume, Qt::LeftButton, {}, at(volume, 0.5));
    QTest::mouseClick(&volume, Qt::LeftButton, {}, at(volume, 1));
    EXPECT_EQ(picked.last()[0].toInt(), 10'000);
}

TEST_F(MonitorBarsTest, ArrowKeysInTheBarsAndF7AndF8FromAnywhereChangeTheVolume)
{
    QSignalSpy stepped(bars, &MonitorBars::volumeStepped);
    QTest::keyClick(&seek, Qt::Key_Up);
    QTest::keyClick(&volume, Qt::Key_Down);
    QTest::keyClick(&volume, Qt::Key_Right);
    QTest::keyClick(&volume, Qt::Key_PageDown);
    status.activateWindow();
    QTest::keyClick(&status, Qt::Key_F7);
    QTest::keyClick(&status, Qt::Key_F8);
    QList<int> steps;
    for (const auto& call : stepped) {
        steps.append(call[0].toInt());
    }
    EXPECT_EQ(steps, (QList<int>{1, -1, 1, -4, -1, 1}));
    QSignalSpy picked(bars, &MonitorBars::volumePicked);
    QTest::keyClick(&volume, Qt::Key_Home);
    QTest::keyClick(&volume, Qt::Key_End);
    ASSERT_EQ(picked.size(), 2);
    EXPECT_EQ(picked[0][0].toInt(), 0);
    EXPECT_EQ(picked[1][0].toInt(), 10'000);
}

TEST_F(MonitorBarsTest, BothBarsSayWhatTheyAreAndWhichKeysTheyTake)
{
    for (const auto& [bar, name, tip] : {std::tuple{&seek, u"Stelle"_s, u"Pfeile 5 s"_s},
                                         {&volume, u"Lautstärke"_s, u"F7 und F8"_s}}) {
        auto* face = QAccessible::queryAccessibleInterface(bar);
        ASSERT_NE(face, nullptr);
        EXPECT_EQ(face->text(QAccessible::Name), name);
        EXPECT_EQ(face->role(), QAccessible::Slider);
        EXPECT_EQ(bar->toolTip(), tip);
    }
}

} // namespace
} // namespace melovane
