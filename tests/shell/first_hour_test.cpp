#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "shell/application_fixture.h"
#include "shell/mlvdb_parts.h"
#include "shell/ui/hint_line.h"
#include "support/wait_for.h"

#include <QLabel>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

#include <cstdlib>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class FirstHourTest : public ApplicationTest
{
protected:
    static HintLine& line(const QMainWindow& window) { return *window.findChild<HintLine*>(); }

    static QString words(const QMainWindow& window)
    {
        return line(window).isVisible()
                   ? line(window).findChild<QLabel*>(u"lblHint"_s)->text().section(u' ', 0, 1)
                   : QString();
    }

    /// How much lighter or darker the sign is than what it stands on, of 255.
    static int contrastOfSign(const QMainWindow& window)
    {
        const auto& sign = *line(window).findChild<QLabel*>(u"lblSign"_s);
        const QImage picture = sign.pixmap().toImage();
        QColor strongest(0, 0, 0, 0);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor colour = picture.pixelColor(x, y);
                strongest = colour.alpha() > strongest.alpha() ? colour : strongest;
            }
        }
        return std::abs(strongest.lightness() - sign.palette().color(QPalette::Window).lightness());
    }

    /// As an import does it that has ended.
    void importTracks()
    {
        suite.library.add({.Titel = u"Brandung"_s});
        suite.library.add({.Titel = u"Ebbe"_s});
        BusSender sender(running->bus(), kMainWindowName.toString());
        sender.SendMessage(bus::kDbChange);
        sender.SendMessage(bus::kRefreshAll);
    }

    static int rows(const QMainWindow& window)
    {
        return window.findChild<QWidget*>(u"ctl_MP3DB1"_s)
            ->findChild<QTableView*>(u"TDBGrid1"_s)
            ->model()
            ->rowCount();
    }
};

TEST_F(FirstHourTest, TheFirstImportShowsAllTracksAndThreeHintsUntilEachIsPutAwayForEver)
{
    run([this](QMainWindow& window) {
        EXPECT_EQ(words(window), QString()) << "there is nothing to search yet";
        importTracks();
        ASSERT_TRUE(waitFor([&] { return !words(window).isEmpty(); }));
        EXPECT_TRUE(waitFor([&] { return rows(window) == 2; }));
        EXPECT_EQ(words(window), u"Tippen Sie"_s);
        EXPECT_GT(contrastOfSign(window), 60);
        QTest::mouseClick(line(window).findChild<QToolButton*>(u"cmdPutAway"_s), Qt::LeftButton);
        EXPECT_EQ(words(window), u"Legen Sie"_s);
    });
    run([](QMainWindow& window) {
        EXPECT_EQ(words(window), u"Legen Sie"_s) << "the one that was not put away";
        QTest::mouseClick(line(window).findChild<QToolButton*>(u"cmdPutAway"_s), Qt::LeftButton);
        EXPECT_EQ(words(window), u"F1 erklärt"_s);
        QTest::mouseClick(line(window).findChild<QToolButton*>(u"cmdPutAway"_s), Qt::LeftButton);
        EXPECT_EQ(words(window), QString());
    });
    run([](QMainWindow& window) { EXPECT_EQ(words(window), QString()); });
}

TEST_F(FirstHourTest, ALibraryThatHadTracksShowsNoHint)
{
    suite.library.add({.Titel = u"Dünung"_s});
    run([this](QMainWindow& window) {
        importTracks();
        QApplication::processEvents();
        EXPECT_EQ(words(window), QString());
    });
}

/// The key goes to the window like any other; the page is that of the panel.
TEST_F(FirstHourTest, TheHelpOpensWithItsKeyAndDoesNotOutliveTheConsole)
{
    suite.library.add({.Titel = u"Dünung"_s});
    QDir().mkpath(suite.folders.programFolder() + u"/help"_s);
    for (const QString& page : {u"start"_s, u"trees"_s}) {
        suite.folders.install(u"help/de/"_s + page + u".html"_s,
                              "<html><body><h1>" + page.toUtf8() + "</h1></body></html>");
    }
    QString title;
    run([&](QMainWindow& window) {
        QTest::keyClick(window.findChild<QWidget*>(u"Tree1"_s), Qt::Key_F1);
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "HelpWindow"_L1 && widget->isVisible()) {
                title = widget->findChild<QTextEdit*>()->toPlainText();
            }
        }
    });
    EXPECT_EQ(title, u"trees"_s);
}

} // namespace
} // namespace melovane::test
