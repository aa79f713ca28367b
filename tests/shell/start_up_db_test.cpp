#include "platform/controls/splash_form.h"
#include "shell/start_fakes.h"
#include "shell/start_up_db.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kTimer1 = 5000;
constexpr int kTimer3 = 500;

struct StartUpDbTest : testing::Test
{
    StartUpDbTest() { catalogue.fill(); }

    test::TextCatalogue catalogue;
    QStringList calls;
    test::SplashLog form{calls};
    test::SteppedLoop loop;
    int pages = 0;
    frmStartUpDB splash{catalogue.texts, loop, form, [this] { ++pages; }};
};

TEST_F(StartUpDbTest, ShowsProductAndStateAboveAllAndClearsTheCloseDelay)
{
    splash.StartupCloseDelay = 7;
    splash.Show();
    EXPECT_EQ(calls, QStringList{u"splash"_s});
    EXPECT_EQ(splash.StartupCloseDelay, 0);
    EXPECT_EQ(form.view.product, u"Melovane DB 3.4 build(150)"_s);
    EXPECT_EQ(form.view.state, u"Bibliothek wird geöffnet ..."_s);
    EXPECT_FALSE(loop.fire(kTimer1)) << "Timer1 is disabled at first";
}

TEST_F(StartUpDbTest, GoesFiveSecondsAfterItsTimerWasStartedAndOnlyOnce)
{
    splash.Show();
    splash.StartTimerCloseWindow();
    calls.clear();
    EXPECT_TRUE(loop.fire(kTimer1));
    EXPECT_EQ(calls, (QStringList{u"normal"_s, u"unload"_s}));
    EXPECT_FALSE(splash.isLoaded());
    EXPECT_FALSE(loop.fire(kTimer1));
}

TEST_F(StartUpDbTest, TheCloseButtonUnloadsItAtOnce)
{
    splash.Show();
    splash.StartTimerCloseWindow();
    calls.clear();
    form.view.closeClicked();
    EXPECT_EQ(calls, QStringList{u"unload"_s});
    EXPECT_FALSE(loop.fire(kTimer1));
}

TEST_F(StartUpDbTest, WhoeverWorksElsewhereIsRidOfItHalfASecondLater)
{
    splash.Show();
    splash.StartupCloseDelay = kStartupCloseDelay;
    splash.StartTimerCloseWindow();
    calls.clear();
    form.view.workedElsewhere();
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_TRUE(loop.fire(kTimer3));
    EXPECT_EQ(calls, QStringList{u"unload"_s});
}

TEST_F(StartUpDbTest, AsAnInformationWindowItStaysWhateverTheUserDoes)
{
    splash.Show();
    form.view.workedElsewhere();
    EXPECT_FALSE(loop.fire(kTimer3));
    EXPECT_TRUE(splash.isLoaded());
}

TEST_F(StartUpDbTest, GoesAtOnceForAWindowThatItWouldCover)
{
    splash.Show();
    form.view.otherInFront();
    EXPECT_TRUE(splash.isLoaded()) << "a plain information window stays";
    splash.StartupCloseDelay = kStartupCloseDelay;
    calls.clear();
    form.view.otherInFront();
    EXPECT_EQ(calls, QStringList{u"unload"_s});
    EXPECT_FALSE(splash.isLoaded());
}

TEST_F(StartUpDbTest, TheLogoOpensThePage)
{
    splash.Show();
    form.view.logoClicked();
    EXPECT_EQ(pages, 1);
    EXPECT_TRUE(splash.isLoaded());
}

TEST_F(StartUpDbTest, WithoutAWindowNothingIsDone)
{
    splash.BringToFront();
    splash.StartTimerCloseWindow();
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_FALSE(loop.fire(kTimer1));
}

} // namespace
} // namespace melovane
