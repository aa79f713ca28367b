#include "bus/message_names.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "trackedit/edit_tag.h"
#include "trackedit/panel_fixture.h"
#include "trackedit/ui/cover_frame.h"
#include "trackedit/ui/edit_tag_widget.h"
#include "trackedit/ui/fact_lines.h"
#include "trackedit/ui/rating_group.h"

#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The panel in a window over a real library, used by mouse and keyboard alone.
class TagPanelWindow : public test::TagPanelTest
{
protected:
    TagPanelWindow()
    {
        auto* column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        form = new EditTagWidget(skin, icons);
        column->addWidget(form);
        panel = std::make_unique<EditTag>(parts(), *form);
        form->attach(*panel, texts);
        window.resize(1200, 420);
        window.show();
        QApplication::setActiveWindow(&window);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        panel->showTrack(one, true);
        messages.clear();
    }

    template <typename Control> Control& control(const QString& name)
    {
        auto* const found = window.findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }

    QLineEdit& line(const QString& name) { return control<QLineEdit>(name); }

    QLineEdit& lineOfBox(const QString& name) { return *control<QComboBox>(name).lineEdit(); }

    void key(int code, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(code), modifiers);
    }

    void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

    /// The name of what has the keyboard, or of the box around it.
    static QString focusName()
    {
        const QWidget* widget = QApplication::focusWidget();
        while (widget != nullptr &&
               (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"_s))) {
            widget = widget->parentWidget();
        }
        return widget == nullptr ? QString() : widget->objectName();
    }

    /// Whether letters of that colour stand in a widget; their edges are mixed with what is behind.
    static bool showsColour(QWidget& widget, const QColor& colour)
    {
        const QImage image = widget.grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor there = image.pixelColor(x, y);
                if (std::abs(there.red() - colour.red()) +
                        std::abs(there.green() - colour.green()) +
                        std::abs(there.blue() - colour.blue()) <
                    30) {
                    return true;
                }
            }
        }
        return false;
    }

    Skin skin{*qApp};
    IconSet icons{skin};
    QWidget window;
    EditTagWidget* form = nullptr;
    std::unique_ptr<EditTag> panel;
};

TEST_F(TagPanelWindow, TabGoesThroughTheFieldsByEye)
{
    QStringList order{focusName()};
    for (int step = 0; step < 40 && (step == 0 || focusName() != order.first()); ++step) {
        key(Qt::Key_Tab);
        order.append(focusName());
    }
    EXPECT_EQ(order.mid(0, 25).join(u' ').toStdString(),
              "txtTitel txtInterpret txtAlbum txtKommentar txtJahr txtTrack txtBPM cmbGenre "
              "cmdNewGenre opNote_1 cmbKategorie cmbStimmung cmbSituation cmbTempo txtStart "
              "cmdStart txtStop cmdStop txtLevel txtUser1 txtUser2 txtUser3 txtUser4 txtUser5 "
              "ScrollFrame");
    EXPECT_TRUE(order.contains(u"ButtonClose"_s));
}

TEST_F(TagPanelWindow, WhatIsTypedIsWrittenWhenTheKeyboardLeavesTheField)
{
    type(u"Neuer Titel"_s);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Neuer Titel"_s);
    EXPECT_EQ(control<QLabel>(u"TagTitle"_s).text(), u"Neuer Titel"_s);
    EXPECT_TRUE(control<QLabel>(u"TagMark"_s).text().endsWith(u"1 wartend"_s));
}

TEST_F(TagPanelWindow, EscapeGivesTheFieldItsFormerTextAndThenGoesBackToTheRows)
{
    type(u"Falsch"_s);
    loop.pass();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Falsch"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(line(u"txtTitel"_s).text(), u"Lichter"_s);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    EXPECT_EQ(left, 0);
    key(Qt::Key_Escape);
    EXPECT_EQ(left, 1);
}

TEST_F(TagPanelWindow, TheCursorStaysWhereItIsWhileTheRowIsReadAnew)
{
    type(u"abc"_s);
    key(Qt::Key_Left);
    loop.pass();
    EXPECT_EQ(line(u"txtTitel"_s).cursorPosition(), 2);
    type(u"X"_s);
    EXPECT_EQ(line(u"txtTitel"_s).text(), u"abXc"_s);
}

TEST_F(TagPanelWindow, ARatingIsChosenByMouseByArrowAndByFigure)
{
    QTest::mouseClick(&control<RatingButton>(u"opNote_3"_s), Qt::LeftButton);
    EXPECT_EQ(cell(u"Note"_s, one), u"3"_s);
    key(Qt::Key_Left);
    EXPECT_EQ(cell(u"Note"_s, one), u"4"_s);
    EXPECT_EQ(focusName(), u"opNote_2"_s);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(cell(u"Note"_s, one), u"2"_s);
    key(Qt::Key_1);
    EXPECT_EQ(cell(u"Note"_s, one), u"1"_s);
    EXPECT_TRUE(control<RatingButton>(u"opNote_5"_s).isChecked());
    key(Qt::Key_0);
    EXPECT_EQ(cell(u"Note"_s, one), QString());
}

TEST_F(TagPanelWindow, AnArrowAtTheEndOfTheRatingsStaysThere)
{
    QTest::mouseClick(&control<RatingButton>(u"opNote_5"_s), Qt::LeftButton);
    key(Qt::Key_Right);
    EXPECT_EQ(cell(u"Note"_s, one), u"1"_s);
    EXPECT_EQ(focusName(), u"opNote_5"_s);
}

TEST_F(TagPanelWindow, AListIsTypedInAndEnterWritesItButNotTheGenre)
{
    control<QComboBox>(u"cmbTempo"_s).setFocus();
    type(u"schleppend"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(cell(u"Tempo"_s, one), u"schleppend"_s);
    control<QComboBox>(u"cmbGenre"_s).setFocus();
    lineOfBox(u"cmbGenre"_s).selectAll();
    type(u"Hafenmusik"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(cell(u"Genre"_s, one), u"Deep House"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(u"Genre"_s, one), u"Hafenmusik"_s);
}

TEST_F(TagPanelWindow, AChoiceOfAListIsWrittenAtOnceAndTheWheelChoosesNothing)
{
    auto& box = control<QComboBox>(u"cmbStimmung"_s);
    box.setFocus();
    key(Qt::Key_Down);
    const QString chosen = cell(u"Stimmung"_s, one);
    EXPECT_FALSE(chosen.isEmpty());
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.currentText(), chosen);
}

TEST_F(TagPanelWindow, NumbersTakeNoLetters)
{
    line(u"txtBPM"_s).setFocus();
    line(u"txtBPM"_s).selectAll();
    type(u"a12b8.5"_s);
    EXPECT_EQ(line(u"txtBPM"_s).text(), u"128.5"_s);
    line(u"txtTrack"_s).setFocus();
    type(u"x3/12"_s);
    EXPECT_EQ(line(u"txtTrack"_s).text(), u"3/12"_s);
}

TEST_F(TagPanelWindow, ButtonsDoTheirWork)
{
    QTest::mouseClick(&control<QToolButton>(u"cmdStart"_s), Qt::LeftButton);
    EXPECT_EQ(messages.last(), u"play.from.start.pos|%1|459"_s.arg(one));
    QTest::mouseClick(&control<QToolButton>(u"cmdStop"_s), Qt::LeftButton);
    EXPECT_EQ(messages.last(), u"play.from.stop.pos|%1|14979"_s.arg(one));
    QTest::mouseClick(&control<QToolButton>(u"cmdNewGenre"_s), Qt::LeftButton);
    EXPECT_EQ(messages.last(), u"edittag.show.editbox.new.genre|"_s);
    QTest::mouseClick(&control<QToolButton>(u"ButtonShowDir"_s), Qt::LeftButton);
    EXPECT_EQ(commands.size(), 1);
    QTest::mouseClick(control<CoverFrame>(u"ScrollFrame"_s).viewport(), Qt::LeftButton);
    EXPECT_EQ(chosenCovers, QStringList{one});
    QTest::mouseClick(&control<QToolButton>(u"ButtonClose"_s), Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(left, 1);
}

TEST_F(TagPanelWindow, TheCoverIsShownWithoutBarsUntilItIsLongerThanItsSquare)
{
    const auto show = [this](const QSize& size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes;
        QBuffer out(&bytes);
        out.open(QIODevice::WriteOnly);
        image.save(&out, "PNG");
        answerCover(bytes);
    };
    auto& frame = control<CoverFrame>(u"ScrollFrame"_s);
    EXPECT_FALSE(frame.hasPicture());
    show({600, 600});
    EXPECT_TRUE(frame.hasPicture());
    EXPECT_EQ(frame.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    show({600, 1200});
    EXPECT_NE(frame.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(frame.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    answerCover({});
    EXPECT_FALSE(frame.hasPicture());
}

TEST_F(TagPanelWindow, ANarrowPanelPutsItsColumnsBelowOneAnotherAndALowOneScrolls)
{
    const auto place = [this](const QString& name) {
        return control<QWidget>(name).mapTo(&window, QPoint());
    };
    EXPECT_EQ(place(u"txtTitel"_s).y(), place(u"txtUser1"_s).y());
    window.resize(40 * window.fontMetrics().height() + 20, 420);
    QCoreApplication::processEvents();
    EXPECT_GT(place(u"txtUser1"_s).y(), place(u"cmbTempo"_s).y());
    window.resize(34 * window.fontMetrics().height(), 200);
    QCoreApplication::processEvents();
    EXPECT_GT(place(u"cmbKategorie"_s).y(), place(u"cmbGenre"_s).y());
    EXPECT_TRUE(window.findChild<QScrollArea*>(QString())->verticalScrollBar()->maximum() > 0);
}

TEST_F(TagPanelWindow, EveryControlHasANameAndEveryButtonATip)
{
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QLineEdit*>(widget) ||
                               qobject_cast<const QComboBox*>(widget) ||
                               qobject_cast<const QAbstractButton*>(widget);
        if (isControl && widget->isVisible()) {
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        }
        if (qobject_cast<const QAbstractButton*>(widget) && widget->isVisible()) {
            EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
        }
    }
}

TEST_F(TagPanelWindow, WhileAnotherProgramHasTheLibraryTheFieldsTakeNothing)
{
    send(bus::kDbDisconnect);
    EXPECT_TRUE(line(u"txtTitel"_s).isReadOnly());
    EXPECT_FALSE(control<QLabel>(u"TagMessage"_s).text().isEmpty());
    EXPECT_TRUE(control<QLabel>(u"TagMessage"_s).isVisible());
    line(u"txtTitel"_s).setFocus();
    type(u"x"_s);
    EXPECT_EQ(line(u"txtTitel"_s).text(), u"Lichter"_s);
    send(bus::kDbReconnect);
    EXPECT_FALSE(line(u"txtTitel"_s).isReadOnly());
    EXPECT_FALSE(control<QLabel>(u"TagMessage"_s).isVisible());
}

TEST_F(TagPanelWindow, AFileThatCouldNotBeWrittenIsNamedInAmberAndLeadsToTheList)
{
    failures[one] = u"Die Datei ist schreibgeschützt"_s;
    panel->renewTrack();
    auto& mark = control<QToolButton>(u"TagUnwritten"_s);
    EXPECT_FALSE(mark.isVisible()) << "the track waits no longer";
    suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(one));
    panel->renewTrack();
    EXPECT_TRUE(mark.isVisible());
    EXPECT_EQ(mark.text(), u"⚠ nicht in die Datei geschrieben: Die Datei ist schreibgeschützt"_s);
    EXPECT_FALSE(control<QLabel>(u"TagMark"_s).isVisible());
    ASSERT_TRUE(skin.load(u"GridColor=#1a1d23\nText=#dde1e7\nVuMeterColorPeek=#ffaa00\n"_s));
    EXPECT_TRUE(showsColour(mark, QColor(255, 170, 0)));

    mark.setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(listsShown, 1);
    panel->trackEntered(two);
    EXPECT_FALSE(mark.isVisible());
    EXPECT_TRUE(control<QLabel>(u"TagMark"_s).isVisible()) << "the other one waits";
}

TEST_F(TagPanelWindow, AFileThatIsNowhereIsNamedWithASign)
{
    fileIsThere = false;
    panel->trackEntered(two);
    EXPECT_EQ(control<QLabel>(u"TagMark"_s).text(), u"⚠ Datei fehlt, nur in der Datenbank"_s);
}

} // namespace
} // namespace melovane
