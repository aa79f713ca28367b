#include "config/tasten.h"
#include "help/help_places.h"
#include "help/ui/help_browser.h"
#include "help/ui/help_desk.h"
#include "help/ui/help_window.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/key_taker.h"
#include "platform/qt/retell.h"
#include "platform/qt/skin.h"
#include "support/text_catalogue.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kResources = QStringLiteral(MLV_RESOURCE_FOLDER);

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class HelpOfAProgram : public testing::Test
{
protected:
    HelpOfAProgram()
    {
        catalogue.folders.install(u"lang_English.ini"_s,
                                  bytesOf(kResources + u"/languages/lang_English.ini"_s));
        catalogue.fill();
        list.setObjectName(u"ctl_Playlist1"_s);
        auto* const inside = new QLineEdit(&list);
        inside->setObjectName(u"TDBGrid1"_s);
        list.show();
    }

    /// The window of the help; null while it is not open.
    static HelpWindow* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* const found = qobject_cast<HelpWindow*>(widget);
                found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }

    static HelpBrowser& browser() { return *window()->findChild<HelpBrowser*>(); }

    template <typename T> static T& part(const QString& name)
    {
        return *window()->findChild<T*>(name);
    }

    test::TextCatalogue catalogue;
    Skin skin{*qApp};
    IconSet icons{skin};
    HelpDesk desk{*qApp,
                  {.files = catalogue.folders.files(),
                   .folder = kResources + u"/help"_s,
                   .texts = catalogue.texts,
                   .bindings = defaultTasten},
                  icons};
    QWidget list;
};

TEST_F(HelpOfAProgram, OpensWithF1AtThePageOfThePartThatHasTheKeyboard)
{
    QTest::keyClick(list.findChild<QLineEdit*>(), Qt::Key_F1);
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(browser().page(), u"lists"_s);
    EXPECT_EQ(part<QListWidget>(u"lstContents"_s).currentItem()->text(),
              browser().toPlainText().section(u'\n', 0, 0));
    list.setObjectName(u"PlayerWindow"_s);
    QTest::keyClick(list.findChild<QLineEdit*>(), Qt::Key_F1);
    EXPECT_EQ(browser().page(), u"player"_s) << "the same window shows the other page";
    QTest::keyClick(list.findChild<QLineEdit*>(), Qt::Key_F1, Qt::ControlModifier);
    EXPECT_EQ(browser().page(), u"player"_s);
}

TEST_F(HelpOfAProgram, IsUsableAboveADialogThatWaits)
{
    desk.show(u"start"_s);
    QDialog dialog;
    dialog.setObjectName(u"frmBackups"_s);
    dialog.setModal(true);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_F1);
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->parentWidget(), &dialog);
    EXPECT_EQ(browser().page(), u"care"_s);
    EXPECT_EQ(browser().source().fragment(), u"backup"_s);
}

TEST_F(HelpOfAProgram, LeavesAKeyAloneThatTheUserIsAboutToBind)
{
    struct Taker : QWidget
    {
        void keyPressEvent(QKeyEvent* event) override { taken = event->key(); }

        int taken = 0;
    } taker;

    taker.setProperty(kTakesAllKeys, true);
    QTest::keyClick(&taker, Qt::Key_F1);
    EXPECT_EQ(window(), nullptr);
    EXPECT_EQ(taker.taken, Qt::Key_F1);
}

TEST_F(HelpOfAProgram, GoesBackAndForwardAndFollowsTheContents)
{
    desk.show(u"start"_s);
    auto& contents = part<QListWidget>(u"lstContents"_s);
    EXPECT_EQ(contents.count(), int(kHelpPages.size()));
    EXPECT_EQ(contents.horizontalScrollBar()->maximum(), 0);
    EXPECT_FALSE(part<QToolButton>(u"cmdBack"_s).isEnabled());
    contents.setCurrentRow(2);
    EXPECT_EQ(browser().page(), kHelpPages[2]);
    QTest::mouseClick(&part<QToolButton>(u"cmdBack"_s), Qt::LeftButton);
    EXPECT_EQ(browser().page(), u"start"_s);
    EXPECT_EQ(contents.currentRow(), 0);
    QTest::mouseClick(&part<QToolButton>(u"cmdForward"_s), Qt::LeftButton);
    EXPECT_EQ(browser().page(), kHelpPages[2]);
}

TEST_F(HelpOfAProgram, FindsWordsInAllPagesAndLeadsThere)
{
    desk.show(u"start"_s);
    QTest::keyClick(window(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&part<QLineEdit>(u"txtSearch"_s), u"Jingles"_s);
    EXPECT_TRUE(browser().page().isEmpty());
    EXPECT_TRUE(browser().toPlainText().contains(u"Gesucht: Jingles"_s));
    EXPECT_TRUE(browser().toHtml().contains(u"player.html"_s));
    part<QLineEdit>(u"txtSearch"_s).setText(u"100 % & <b>"_s);
    EXPECT_TRUE(browser().toPlainText().contains(u"100 % & <b>"_s));
}

TEST_F(HelpOfAProgram, FollowsLanguageAndThemeAtOnce)
{
    desk.show(u"search"_s);
    const QString german = browser().toPlainText();
    const test::CurrentFolder here(catalogue.folders.programFolder());
    MelovaneConfiguration::speak(catalogue.texts, u"lang_English.ini"_s);
    announceLanguage();
    EXPECT_EQ(browser().page(), u"search"_s);
    EXPECT_NE(browser().toPlainText(), german);
    EXPECT_EQ(window()->windowTitle(), u"Help"_s);
    const QString style = browser().document()->defaultStyleSheet();
    ASSERT_TRUE(skin.load(QString::fromUtf8(bytesOf(kResources + u"/themes/melovane-dark.skn"_s))));
    EXPECT_NE(browser().document()->defaultStyleSheet(), style);
}

TEST_F(HelpOfAProgram, DoesNotKeepAProgramAliveThatHasEnded)
{
    desk.show(u"start"_s);
    EXPECT_FALSE(window()->testAttribute(Qt::WA_QuitOnClose));
    EXPECT_FALSE(desk.show(u"start"_s) && window() == nullptr);
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

} // namespace
} // namespace melovane
