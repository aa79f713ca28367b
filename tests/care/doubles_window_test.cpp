#include "care/doubles_fixture.h"
#include "care/ui/doubles_window.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class DoublesForm : public test::DoubleMusic
{
protected:
    DoublesForm() { MelovaneConfiguration::fill(texts); }

    void open()
    {
        window = std::make_unique<DoublesWindow>(skin, icons, doubles, texts, loop);
        window->whenWritten = [this] { ++written; };
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    template <typename T> T* child(const QString& name) { return window->findChild<T*>(name); }

    void click(const QString& name)
    {
        auto* const button = child<QPushButton>(name);
        ASSERT_TRUE(button->isEnabled()) << name.toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        worker.finish();
    }

    void press(int row)
    {
        auto* const grid = child<DataGrid>(u"TDBGridDoubles"_s);
        const auto cell = grid->model()->index(row, DoubleRows::kState);
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
    }

    [[nodiscard]] QString told() { return child<QLabel>(u"lblTold"_s)->text(); }

    [[nodiscard]] QString sentence() { return child<QLabel>(u"lblSentence"_s)->text(); }

    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    Skin skin{*qobject_cast<QApplication*>(QCoreApplication::instance())};
    IconSet icons{skin};
    QtMessageLoop loop;
    int written = 0;
    std::unique_ptr<DoublesWindow> window;
};

TEST_F(DoublesForm, ALibraryWithoutDoublesIsToldSo)
{
    add(u"a.mp3"_s, 1);
    open();
    EXPECT_FALSE(child<QPushButton>(u"cmdMerge"_s)->isEnabled());
    click(u"cmdSearch"_s);
    EXPECT_EQ(sentence(), u"Kein Titel ist doppelt."_s);
}

TEST_F(DoublesForm, TheOneThatStaysIsChosenByMouseAndTheOthersGo)
{
    const QString one = add(u"a.mp3"_s, 1);
    const QString two = add(u"b.mp3"_s, 1);
    addRow(u"x.mp3"_s, u"Gleich"_s, 200'000);
    addRow(u"y.mp3"_s, u"Gleich"_s, 200'000);
    open();
    click(u"cmdSearch"_s);
    EXPECT_EQ(sentence(), u"2 Gruppen mit 2 überzähligen Titeln"_s);
    EXPECT_TRUE(told().startsWith(u"1 Titel wird entfernt"_s));
    press(1);
    click(u"cmdMerge"_s);
    EXPECT_EQ(told(), u"1 Titel zusammengelegt"_s);
    EXPECT_EQ(written, 1);
    EXPECT_EQ(cell(two, u"FID"_s).toText(), two);
    EXPECT_TRUE(cell(one, u"FID"_s).isNull());
    EXPECT_TRUE(suite.files.fileExists(music.file(u"a.mp3"_s)));
    // The group that only has the same names waits for its tick.
    EXPECT_FALSE(child<QPushButton>(u"cmdMerge"_s)->isEnabled());
    EXPECT_EQ(doubles.groups().size(), 1U);
}

TEST_F(DoublesForm, AGroupIsLeftAsItIsByOneMoreClickOnTheOneThatStays)
{
    add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    open();
    click(u"cmdSearch"_s);
    press(doubles.groups()[0].kept);
    EXPECT_EQ(told(), QString());
    EXPECT_FALSE(child<QPushButton>(u"cmdMerge"_s)->isEnabled());
    child<DataGrid>(u"TDBGridDoubles"_s)->goToRow(0, 0);
    QTest::keyClick(child<DataGrid>(u"TDBGridDoubles"_s), Qt::Key_Space);
    EXPECT_TRUE(child<QPushButton>(u"cmdMerge"_s)->isEnabled());
    EXPECT_EQ(doubles.groups()[0].kept, 0);
}

TEST_F(DoublesForm, EnterPressesTheButtonThatHasTheKeyboard)
{
    add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    open();
    ASSERT_TRUE(child<QPushButton>(u"cmdSearch"_s)->hasFocus());
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    worker.finish();
    EXPECT_EQ(doubles.groups().size(), 1U);
    EXPECT_TRUE(child<DataGrid>(u"TDBGridDoubles"_s)->hasFocus());
    QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    window->show();
    EXPECT_TRUE(child<QPushButton>(u"cmdMerge"_s)->isDefault());
    child<QPushButton>(u"cmdAbbruch"_s)->setFocus();
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(written, 0);
}

TEST_F(DoublesForm, EscapeEndsTheSearchFirstAndTheWindowThen)
{
    add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    open();
    QTest::mouseClick(child<QPushButton>(u"cmdSearch"_s), Qt::LeftButton);
    EXPECT_TRUE(doubles.isWorking());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(doubles.isWorking());
    EXPECT_TRUE(window->isVisible());
    worker.finish();
    EXPECT_TRUE(doubles.groups().empty());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(DoublesForm, TheLibraryIsKeptBeforeTracksAreMergedAndLeftAloneWhenTheUserDoesNotGoOn)
{
    add(u"a.mp3"_s, 1);
    add(u"b.mp3"_s, 1);
    open();
    click(u"cmdSearch"_s);
    bool goesOn = false;
    qsizetype kept = 0;
    window->backUp = [&] {
        kept += fids().size();
        return goesOn;
    };
    click(u"cmdMerge"_s);
    EXPECT_EQ(fids().size(), 2);
    EXPECT_EQ(written, 0);
    goesOn = true;
    click(u"cmdMerge"_s);
    EXPECT_EQ(fids().size(), 1);
    EXPECT_EQ(kept, 4);
}

TEST_F(DoublesForm, WithoutAKindThereIsNothingToSearch)
{
    open();
    child<QCheckBox>(u"checkSound"_s)->setChecked(false);
    child<QCheckBox>(u"checkNames"_s)->setChecked(false);
    EXPECT_FALSE(child<QPushButton>(u"cmdSearch"_s)->isEnabled());
}

} // namespace
} // namespace melovane
