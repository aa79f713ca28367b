#include "care/ber_db_fixture.h"
#include "care/ui/ber_db_dialog.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class BerDbWindowTest : public BerDbTest
{
protected:
    void open()
    {
        window.attach(logic);
        window.QDialog::show();
        logic.Show();
    }

    [[nodiscard]] QCheckBox* box(int index) const
    {
        return window.findChild<QCheckBox*>(u"checkBer_%1"_s.arg(index));
    }

    [[nodiscard]] QString note(int index) const
    {
        return window.findChild<QLabel*>(u"note_%1"_s.arg(index))->text();
    }

    [[nodiscard]] QPushButton* button(const QString& name) const
    {
        return window.findChild<QPushButton*>(name);
    }

    void click(int index) { QTest::mouseClick(box(index), Qt::LeftButton, {}, {4, 4}); }

    Skin skin{*qApp};
    IconSet icons{skin};
    BerDbDialog window{texts, icons};
    frmBerDB logic{parts(), window};
};

} // namespace

TEST_F(BerDbWindowTest, TheBoxesHaveTheirTextsAndTheDialogItsTitle)
{
    open();
    EXPECT_EQ(window.windowTitle(), u"Datenbereinigung"_s);
    EXPECT_EQ(box(0)->text(), u"Gelöscht markierte MP3s entfernen."_s);
    EXPECT_EQ(box(1)->text(), u"Fehlerhafte MP3s entfernen (MP3ERROR)"_s);
    EXPECT_EQ(box(2)->text(), u"Nicht mehr vorhandenen MP3s entfernen"_s);
    EXPECT_EQ(box(3)->text(), u"Nicht mehr vorhandenen Abhängigkeiten entfernen"_s);
    EXPECT_EQ(box(4)->text(), u"Betroffene Dateien nach MelovaneRecycler verschieben"_s);
}

TEST_F(BerDbWindowTest, ClicksTickTheBoxesAndOkRunsThem)
{
    addTrack({.DEL = -1});
    open();
    EXPECT_EQ(note(0), u"1 Titel"_s);
    EXPECT_FALSE(button(u"cmdOk"_s)->isEnabled());
    EXPECT_FALSE(box(4)->isEnabled());
    click(0);
    EXPECT_TRUE(box(4)->isEnabled());
    QTest::mouseClick(button(u"cmdOk"_s), Qt::LeftButton);
    EXPECT_EQ(count(u"db_all"_s), 0);
    EXPECT_FALSE(box(0)->isChecked());
    EXPECT_FALSE(box(0)->isEnabled());
    EXPECT_EQ(note(0), u"1 Titel entfernt"_s);
    EXPECT_FALSE(window.findChild<QLabel*>(u"picture_0"_s)->pixmap(Qt::ReturnByValue).isNull());
    EXPECT_EQ(window.findChild<QProgressBar*>()->value(), 100);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(BerDbWindowTest, WhileItRunsOkIsOffAndEscapeCancelsInsteadOfClosing)
{
    addTrack({.DEL = -1});
    open();
    click(0);
    click(4);
    loop.whenTurned = [this] {
        EXPECT_FALSE(button(u"cmdOk"_s)->isEnabled());
        EXPECT_TRUE(button(u"cmdAbbruch"_s)->isEnabled());
        EXPECT_TRUE(
            window.findChild<QLabel*>(u"lblStep"_s)->text().startsWith(u"Schritt 1 von 1: "));
        QTest::keyClick(&window, Qt::Key_Escape);
    };
    QTest::mouseClick(button(u"cmdOk"_s), Qt::LeftButton);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(count(u"db_all"_s), 1);
    EXPECT_TRUE(box(0)->isChecked());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(BerDbWindowTest, EnterRemovesNothing)
{
    addTrack({.DEL = -1});
    open();
    click(0);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(count(u"db_all"_s), 1);
}

TEST_F(BerDbWindowTest, ItsCloseBoxClosesIt)
{
    open();
    window.QWidget::close();
    EXPECT_FALSE(window.isVisible());
}

} // namespace melovane::test
