#include "care/ber_db_fixture.h"
#include "care/ui/recycler_dialog.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class RecyclerWindowTest : public BerDbTest
{
protected:
    RecyclerWindowTest()
        : window(texts, skin)
        , logic(recyclerParts(), window)
    {}

    void cleanAndOpen()
    {
        run({0, 4});
        window.attach(logic);
        window.QDialog::show();
        logic.Show();
    }

    [[nodiscard]] QTreeWidget* list() const { return window.findChild<QTreeWidget*>(); }

    [[nodiscard]] QPushButton* button(const QString& name) const
    {
        return window.findChild<QPushButton*>(name);
    }

    Skin skin{*qobject_cast<QApplication*>(QCoreApplication::instance())};
    RecyclerDialog window;
    Recycler logic;
};

} // namespace

TEST_F(RecyclerWindowTest, TheChosenFileComesBackAndLeavesTheList)
{
    addTrack({.Titel = u"Eins"_s, .DName = u"a.mp3"_s, .DEL = -1});
    addTrack({.Titel = u"Zwei"_s, .DName = u"b.mp3"_s, .DEL = -1});
    cleanAndOpen();
    ASSERT_EQ(list()->topLevelItemCount(), 2);
    EXPECT_EQ(list()->topLevelItem(1)->text(0), u"Interpret - Zwei"_s);
    EXPECT_FALSE(button(u"cmdOne"_s)->isEnabled());
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                      list()->visualItemRect(list()->topLevelItem(1)).center());
    QTest::mouseClick(button(u"cmdOne"_s), Qt::LeftButton);
    ASSERT_EQ(list()->topLevelItemCount(), 1);
    EXPECT_EQ(list()->topLevelItem(0)->text(0), u"Interpret - Eins"_s);
    EXPECT_TRUE(QFile::exists(music(u"b.mp3"_s)));
    EXPECT_FALSE(QFile::exists(music(u"a.mp3"_s)));
    EXPECT_EQ(suite.column(u"select titel from db_all"_s), QStringList{u"Zwei"_s});
    EXPECT_EQ(window.findChild<QLabel*>(u"lblStep"_s)->text(), u"1 Titel zurückgeholt"_s);
}

TEST_F(RecyclerWindowTest, AllFilesComeBackByOneButton)
{
    addTrack({.DEL = -1});
    addTrack({.DEL = -1});
    cleanAndOpen();
    QTest::mouseClick(button(u"cmdAll"_s), Qt::LeftButton);
    EXPECT_EQ(count(u"db_all"_s), 2);
    EXPECT_EQ(list()->topLevelItemCount(), 0);
    EXPECT_FALSE(button(u"cmdAll"_s)->isEnabled());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

} // namespace melovane::test
