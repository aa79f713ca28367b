#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "shell/ui/splash_window.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct SplashWindowTest : testing::Test
{
    [[nodiscard]] QWidget* window() const
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "frmStartUpDB"_L1 && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    void load()
    {
        form.load({u"Melovane DB"_s, u"Bibliothek wird geöffnet ..."_s, u"Seite"_s, u"Schließen"_s,
                   [this] { ++closed; }, [this] { ++pages; }, [this] { ++worked; },
                   [this] { ++covered; }});
    }

    Skin skin{*qApp};
    IconSet icons{skin};
    SplashWindow form{skin, icons};
    int closed = 0;
    int pages = 0;
    int worked = 0;
    int covered = 0;
};

TEST_F(SplashWindowTest, StandsInTheMiddleAboveAllAndLeavesTheKeyboardWhereItIs)
{
    load();
    QWidget* splash = window();
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->geometry().center(), splash->screen()->geometry().center());
    EXPECT_TRUE(splash->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(splash->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(splash->findChild<QLabel*>(u"SkinLabel1"_s)->text(), u"Melovane DB"_s);
    EXPECT_EQ(splash->findChild<QLabel*>(u"SkinLabel2"_s)->text(),
              u"Bibliothek wird geöffnet ..."_s);
    form.unload();
    EXPECT_EQ(window(), nullptr);
}

TEST_F(SplashWindowTest, ItsButtonsTellWhatWasClicked)
{
    load();
    QTest::mouseClick(window()->findChild<QToolButton*>(u"cmdLogo"_s), Qt::LeftButton);
    EXPECT_EQ(pages, 1);
    QTest::mouseClick(window()->findChild<QToolButton*>(u"cmdClose"_s), Qt::LeftButton);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(worked, 0) << "a click on the splash is no work elsewhere";
}

TEST_F(SplashWindowTest, KeysAndClicksInOtherWindowsAreTold)
{
    load();
    QLineEdit other;
    other.show();
    QTest::keyClick(&other, Qt::Key_A);
    EXPECT_GT(worked, 0);
    form.unload();
    worked = 0;
    QTest::keyClick(&other, Qt::Key_A);
    EXPECT_EQ(worked, 0);
}

TEST_F(SplashWindowTest, ADialogAndAnotherProgramInFrontAreToldButNoTipAndNoMainWindow)
{
    load();
    QWidget main;
    QWidget tip(nullptr, Qt::ToolTip);
    main.show();
    tip.show();
    EXPECT_EQ(covered, 0);
    QDialog question;
    question.show();
    EXPECT_EQ(covered, 1);
    QEvent away(QEvent::ApplicationDeactivate);
    QApplication::sendEvent(qApp, &away);
    EXPECT_EQ(covered, 2);
}

TEST_F(SplashWindowTest, IsNoReasonForTheProgramToStay)
{
    load();
    EXPECT_FALSE(window()->testAttribute(Qt::WA_QuitOnClose));
    form.showAsNormal();
    form.unload();
    form.unload();
    EXPECT_EQ(window(), nullptr);
}

} // namespace
} // namespace melovane
