#include "platform/qt/elided_label.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "platform/qt/progress_dialog.h"
#include "platform/qt/qt_font_chooser.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/row_cargo.h"
#include "platform/qt/search_line.h"
#include "platform/qt/skin.h"
#include "platform/qt/split_panel.h"
#include "platform/qt/status_bar.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct SearchLineTest : public testing::Test
{
    Skin skin{*qApp};
    IconSet icons{skin};
    SearchLine line{icons};
};

TEST_F(SearchLineTest, EachKeyIsAChangeOfTheText)
{
    QSignalSpy changed(&line, &SearchLine::textChanged);
    QTest::keyClicks(&line, u"Lic"_s);
    ASSERT_EQ(changed.count(), 3);
    EXPECT_EQ(changed.at(1).first().toString(), u"Li"_s);
}

TEST_F(SearchLineTest, WritesNoLettersThatNobodyTyped)
{
    line.addItem(u"Lichtspiel"_s);
    line.setText({});
    QTest::keyClicks(&line, u"Lich"_s);
    EXPECT_EQ(line.text(), u"Lich"_s);
}

TEST_F(SearchLineTest, DownGoesToTheListAndEnterSearches)
{
    QSignalSpy down(&line, &SearchLine::downPressed);
    QSignalSpy entered(&line, &SearchLine::entered);
    line.setText(u"Meer"_s);
    QTest::keyClick(&line, Qt::Key_Down);
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(down.count(), 1);
    ASSERT_EQ(entered.count(), 1);
    EXPECT_EQ(entered.first().first().toString(), u"Meer"_s);
    EXPECT_EQ(line.text(), u"Meer"_s);
}

TEST_F(SearchLineTest, LeavingTheLineIsNoEnterThoughItsTextStandsInTheList)
{
    line.setList({u"Note=1"_s, u"BPM=130"_s});
    QSignalSpy entered(&line, &SearchLine::entered);
    QTest::keyClicks(&line, u"Note=1"_s);
    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(line.lineEdit(), &left);
    EXPECT_EQ(entered.count(), 0);
    EXPECT_EQ(line.text(), u"Note=1"_s);
    emit line.activated(1);
    EXPECT_EQ(entered.count(), 1) << "a choice from the list";
}

TEST_F(SearchLineTest, KeysOfTheListDoNotReplaceWhatIsTyped)
{
    line.setList({u"BPM=120"_s, u"BPM=130"_s});
    line.setText(u"fer"_s);
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_Up, Qt::Key_PageDown}) {
        QTest::keyClick(&line, key);
        EXPECT_EQ(line.text(), u"fer"_s);
    }
}

TEST_F(SearchLineTest, TheCrossEmptiesTheLine)
{
    line.setText(u"Meer"_s);
    QAction* cross = line.lineEdit()->actions().constLast();
    EXPECT_TRUE(cross->isVisible());
    cross->trigger();
    EXPECT_EQ(line.text(), QString());
    EXPECT_FALSE(cross->isVisible());
}

TEST(ToolRowTest, ButtonsWithoutRoomAreInAMenuAndComeBack)
{
    Skin skin{*qApp};
    Panel panel{skin};
    QStringList pressed;
    for (int number = 0; number < 8; ++number) {
        QToolButton* button =
            panel.addTool(u"tool%1"_s.arg(number), QIcon(), u"Werkzeug %1"_s.arg(number));
        QObject::connect(button, &QToolButton::clicked, &panel,
                         [&pressed, button] { pressed.append(button->toolTip()); });
    }
    panel.toolRow()->addStretch(1);
    panel.resize(600, 100);
    panel.show();
    auto* more = panel.findChild<QToolButton*>(u"MoreTools"_s);
    auto* last = panel.findChild<QToolButton*>(u"tool7"_s);
    const int width = last->width();
    EXPECT_FALSE(more->isVisible());
    panel.resize(5 * width, 100);
    ASSERT_TRUE(test::waitFor([&] { return last->width() == 0; }));
    EXPECT_TRUE(more->isVisible());
    EXPECT_TRUE(more->toolTip().endsWith("Werkzeug 7"_L1));
    EXPECT_EQ(panel.findChild<QToolButton*>(u"tool0"_s)->width(), width);
    emit more->menu()->aboutToShow();
    QAction* entry = more->menu()->actions().constLast();
    EXPECT_EQ(entry->text(), u"Werkzeug 7"_s);
    entry->trigger();
    EXPECT_EQ(pressed, QStringList{u"Werkzeug 7"_s});
    // One that does not belong here now is not offered either.
    last->hide();
    ASSERT_TRUE(test::waitFor([&] {
        emit more->menu()->aboutToShow();
        return more->menu()->actions().constLast()->text() == u"Werkzeug 6"_s;
    }));
    last->show();
    panel.resize(600, 100);
    ASSERT_TRUE(test::waitFor([&] { return last->width() == width; }));
    EXPECT_FALSE(more->isVisible());
    skin.clear();
}

struct SplitPanelTest : public testing::Test
{
    SplitPanelTest()
    {
        split.addWidget(new QWidget);
        split.addWidget(new QWidget);
        split.resize(1005, 300);
    }

    SplitPanel split{Qt::Horizontal};
};

TEST_F(SplitPanelTest, APositionSetBeforeTheFirstLayoutHolds)
{
    split.setPosition(300);
    split.show();
    EXPECT_NEAR(split.position(), 300, 2);
    EXPECT_EQ(split.handleWidth(), 5);
}

TEST_F(SplitPanelTest, ItKeepsItsProportionWhenThePanelGrows)
{
    split.show();
    split.setPosition(250);
    split.resize(2005, 300);
    EXPECT_NEAR(split.position(), 250, 3);
}

TEST_F(SplitPanelTest, NumbersThatAreNoPositionChangeNothing)
{
    split.show();
    split.setPosition(400);
    split.setPosition(-1);
    split.setPosition(1001);
    EXPECT_NEAR(split.position(), 400, 2);
}

TEST(StatusBarTest, TheToolTipOfTheMessageCarriesItWholeAlsoWhileItRunsOff)
{
    StatusBar bar;
    const auto* label = bar.findChild<QLabel*>(u"StatusMessage"_s);
    ASSERT_NE(label, nullptr);
    bar.setPanel(StatusPanel::Message, u"Datei nicht gefunden :: /M/<b>A & B.mp3"_s);
    const QString whole = u"<qt>Datei nicht gefunden :: /M/&lt;b&gt;A &amp; B.mp3</qt>"_s;
    EXPECT_EQ(label->toolTip(), whole);
    bar.setPanel(StatusPanel::Message, u"gefunden :: /M/<b>A & B.mp3"_s);
    EXPECT_EQ(label->toolTip(), whole);
    bar.setPanel(StatusPanel::Message, u"Anderes"_s);
    EXPECT_EQ(label->toolTip(), u"<qt>Anderes</qt>"_s);
    bar.setPanel(StatusPanel::Message, {});
    EXPECT_EQ(label->toolTip(), QString());
}

TEST(StatusBarTest, EachPanelHasItsText)
{
    StatusBar bar;
    bar.setPanel(StatusPanel::Message, u"<b>eins</b>"_s);
    bar.setPanel(StatusPanel::Node, u"Genre :: Pop"_s);
    EXPECT_EQ(bar.panel(StatusPanel::Message), u"<b>eins</b>"_s);
    EXPECT_EQ(bar.findChild<QLabel*>(u"StatusNode"_s)->text(), u"Genre :: Pop"_s);
    EXPECT_EQ(bar.findChild<QLabel*>(u"StatusMessage"_s)->textFormat(), Qt::PlainText);
}

TEST(ProgressDialogTest, AppearsWhenTheWorkTakesLongerThanAMomentAndCanBeEnded)
{
    ProgressDialog dialog(u"Import"_s, u"Abbrechen"_s);
    EXPECT_TRUE(dialog.show(u"a.m3u"_s, 0, 100));
    EXPECT_FALSE(dialog.isVisible());
    ASSERT_TRUE(test::waitFor([&] {
        EXPECT_TRUE(dialog.show(u"b.m3u"_s, 50, 100));
        return dialog.isVisible();
    }));
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(dialog.windowTitle(), u"Import"_s);
    EXPECT_EQ(dialog.findChild<QLabel*>(u"lblProgress"_s)->text(), u"b.m3u"_s);
    auto* bar = dialog.findChild<QProgressBar*>(u"ProgressBar1"_s);
    EXPECT_EQ(bar->value() * 2, bar->maximum());
    dialog.findChild<QPushButton*>(u"cmdCancel"_s)->click();
    EXPECT_FALSE(dialog.show(u"c.m3u"_s, 60, 100));
}

TEST(ProgressDialogTest, EscapeEndsTheWorkAndNumbersThatMakeNoSenseDoNoHarm)
{
    ProgressDialog dialog(u"Import"_s, u"Abbrechen"_s);
    EXPECT_TRUE(dialog.show(QString(10'000, u'x'), 7, 0));
    EXPECT_TRUE(dialog.show(u"x"_s, 7, 3));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.show(u"x"_s, -1, 3));
}

TEST(QtMessageLoopTest, ATimerRunsUntilItIsStopped)
{
    QtMessageLoop loop;
    int calls = 0;
    const auto timer = loop.makeTimer(std::chrono::milliseconds(1), [&calls] { ++calls; });
    EXPECT_FALSE(timer->isActive());
    timer->start();
    EXPECT_TRUE(test::waitFor([&calls] { return calls >= 2; }));
    timer->stop();
    EXPECT_FALSE(timer->isActive());
}

TEST(QtMessageLoopTest, ATurnHandlesWhatIsPending)
{
    QtMessageLoop loop;
    bool done = false;
    QMetaObject::invokeMethod(
        qApp, [&done] { done = true; }, Qt::QueuedConnection);
    loop.turn();
    EXPECT_TRUE(done);
}

TEST(ElidedLabelTest, WhatDoesNotFitEndsInAnEllipsisAndTheToolTipShowsItWhole)
{
    ElidedLabel label;
    label.setText(u"Der Abend <b>danach</b> und die Nacht"_s);
    label.resize(label.sizeHint());
    const auto askForTip = [&label] {
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(&label, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(askForTip(), QString());
    label.resize(90, label.sizeHint().height());
    EXPECT_TRUE(askForTip().contains(label.text().toHtmlEscaped()));
    QLabel shortened(
        label.fontMetrics().elidedText(label.text(), Qt::ElideRight, label.contentsRect().width()));
    shortened.setTextFormat(Qt::PlainText);
    shortened.resize(label.size());
    EXPECT_EQ(label.grab().toImage(), shortened.grab().toImage());
    QToolTip::hideText();
}

// ---- buttons

/// Dots of a picture that are not of the ground, as text and border make them.
int inkOf(QPushButton& button, int width)
{
    button.resize(width, button.sizeHint().height());
    const QImage picture = button.grab().toImage();
    const QRgb ground = picture.pixel(picture.width() / 2, 4);
    int dots = 0;
    for (int y = 6; y < picture.height() - 6; ++y) {
        for (int x = 6; x < picture.width() - 6; ++x) {
            dots += picture.pixel(x, y) != ground ? 1 : 0;
        }
    }
    return dots;
}

TEST(ButtonTest, TheDefaultButtonShowsItsWholeTextInItsOwnWidth)
{
    Skin skin(*qApp);
    ASSERT_TRUE(skin.load(u"Text=#ffffff\nGridHeadColor=#202020\n"_s));
    QDialog dialog;
    auto* button = new QPushButton(u"Weiteren Ordner hinzufügen ..."_s, &dialog);
    button->setDefault(true);
    dialog.show();
    const int own = button->sizeHint().width();
    EXPECT_EQ(inkOf(*button, own), inkOf(*button, own + 60));
    skin.clear();
}

// ---- drags

TEST(RowCargoTest, FilesAreLookedUpOnceAndOnlyWhenAnotherProgramAsksForThem)
{
    int asked = 0;
    const RowCargo cargo({u"DRAG_TYP_PLID:1"_s, [&asked] {
                              ++asked;
                              return QStringList{u"/musik/Ä b.mp3"_s};
                          }});
    EXPECT_TRUE(RowCargo::isIn(cargo));
    EXPECT_TRUE(cargo.hasUrls());
    EXPECT_EQ(cargo.text(), u"DRAG_TYP_PLID:1"_s);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(cargo.urls(), QList<QUrl>{QUrl::fromLocalFile(u"/musik/Ä b.mp3"_s)});
    EXPECT_EQ(cargo.data(u"text/uri-list"_s), "file:///musik/%C3%84%20b.mp3\r\n");
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(RowCargo({u"DRAG_TYP_PLID:1"_s, {}}).hasUrls());
}

// ---- the font dialog

TEST(FontChooserTest, GivesNameSizeAndBoldnessAndOffersNothingElse)
{
    QtFontChooser chooser(
        {u"Schrift"_s, u"Name"_s, u"Größe"_s, u"Fett"_s, u"Muster"_s, u"OK"_s, u"Abbrechen"_s});
    const GridFont present{u"DejaVu Sans"_s, 9, false, 3};
    QTimer::singleShot(0, qApp, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        dialog->findChild<QSpinBox*>(u"FontSize"_s)->setValue(14);
        dialog->findChild<QCheckBox*>(u"FontBold"_s)->setChecked(true);
        auto* sample = dialog->findChild<QLabel*>(u"FontSample"_s);
        EXPECT_EQ(sample->font().pointSize(), 14);
        EXPECT_TRUE(sample->font().bold());
        dialog->findChild<QPushButton*>(u"cmdOk"_s)->click();
    });
    EXPECT_EQ(chooser.choose(present), (GridFont{u"DejaVu Sans"_s, 14, true, 3}));
    QTimer::singleShot(0, qApp,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(chooser.choose(present), std::nullopt);
}

} // namespace
} // namespace melovane
