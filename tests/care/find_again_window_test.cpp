#include "care/find_again_fixture.h"
#include "care/ui/find_again_window.h"
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

class FindWindow : public test::MovedMusic
{
protected:
    FindWindow() { MelovaneConfiguration::fill(texts); }

    void open()
    {
        window = std::make_unique<FindAgainWindow>(skin, icons, find, texts, loop);
        window->chooseFolder = [this](QWidget*) { return folder; };
        window->chooseFile = [this](QWidget*) { return file; };
        window->whenWritten = [this] { ++written; };
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        window->load();
        worker.finish();
    }

    template <typename T> T* child(const QString& name) { return window->findChild<T*>(name); }

    void click(const QString& name)
    {
        auto* const button = child<QPushButton>(name);
        ASSERT_TRUE(button->isEnabled()) << name.toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        worker.finish();
    }

    [[nodiscard]] QString shown(const QString& grid, int row, int column)
    {
        const auto* const model = child<DataGrid>(grid)->model();
        return model->index(row, column).data().toString();
    }

    void press(const QString& grid, int row, int column)
    {
        auto* const view = child<DataGrid>(grid);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(row, column)).center());
    }

    [[nodiscard]] QString told() { return child<QLabel>(u"lblTold"_s)->text(); }

    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    Skin skin{*qobject_cast<QApplication*>(QCoreApplication::instance())};
    IconSet icons{skin};
    QtMessageLoop loop;
    QString folder = music.path();
    QString file;
    int written = 0;
    std::unique_ptr<FindAgainWindow> window;
};

TEST_F(FindWindow, WithoutMissingFilesThereIsNothingToDo)
{
    open();
    EXPECT_EQ(child<QLabel>(u"lblSentence"_s)->text(), u"Alle Dateien liegen an ihrem Ort."_s);
    EXPECT_FALSE(child<QPushButton>(u"cmdSearch"_s)->isEnabled());
    EXPECT_FALSE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
}

TEST_F(FindWindow, AFolderIsSearchedAndItsRulesAreAppliedByMouse)
{
    const QString pop = addMoved(u"Pop/a.mp3"_s, u"Schlager/a.mp3"_s, 1);
    const QString jazz = addMoved(u"Jazz/b.mp3"_s, u"b.mp3"_s, 2);
    addRow(u"Jazz/weg.mp3"_s, 1);
    open();
    EXPECT_TRUE(child<QLabel>(u"lblSentence"_s)->text().startsWith(u"3 Titel zeigen"_s));
    EXPECT_TRUE(child<QPushButton>(u"cmdSearch"_s)->hasFocus());
    EXPECT_EQ(shown(u"TDBGridRules"_s, 0, foundcolumn::kNewFolder), u"kein Ordner gefunden"_s);
    click(u"cmdSearch"_s);
    EXPECT_EQ(child<QLabel>(u"lblFound"_s)->text(), u"2 von 3 gefunden"_s);
    EXPECT_EQ(shown(u"TDBGridRules"_s, 0, foundcolumn::kOldFolder), old + u"Jazz/"_s);
    EXPECT_EQ(shown(u"TDBGridRules"_s, 0, foundcolumn::kNewFolder), music.path() + u'/');
    EXPECT_EQ(shown(u"TDBGridRules"_s, 0, foundcolumn::kHits), u"1 von 2"_s);
    EXPECT_EQ(shown(u"TDBGridTracks"_s, 0, foundcolumn::kAgrees), u"Name, Länge"_s);
    EXPECT_EQ(shown(u"TDBGridTracks"_s, 1, foundcolumn::kAgrees), u"nicht gefunden"_s);
    EXPECT_EQ(told(), u"2 Titel werden umgelenkt, 1 bleiben offen"_s);
    press(u"TDBGridRules"_s, 1, foundcolumn::kTick);
    EXPECT_EQ(told(), u"1 Titel wird umgelenkt, 2 bleiben offen"_s);
    child<QCheckBox>(u"checkRemember"_s)->setChecked(false);
    click(u"cmdApply"_s);
    EXPECT_EQ(placeOf(jazz), music.file(u"b.mp3"_s));
    EXPECT_EQ(placeOf(pop), old + u"Pop/a.mp3"_s);
    EXPECT_EQ(told(), u"1 Titel umgelenkt"_s);
    EXPECT_EQ(written, 1);
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"ChangeDir.conf"_s)));
    EXPECT_EQ(find.tracks().size(), 2U);
}

TEST_F(FindWindow, EnterOnTheWayOutAppliesNothing)
{
    const QString pop = addMoved(u"Pop/a.mp3"_s, u"Schlager/a.mp3"_s, 1);
    open();
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    worker.finish();
    EXPECT_EQ(child<QLabel>(u"lblFound"_s)->text(), u"1 von 1 gefunden"_s);
    EXPECT_TRUE(child<QPushButton>(u"cmdApply"_s)->isDefault());
    for (const QString& grid : {u"TDBGridRules"_s, u"TDBGridTracks"_s}) {
        QTest::keyClick(child<DataGrid>(grid), Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible()) << grid.toStdString();
        window->show();
    }
    child<QPushButton>(u"cmdAbbruch"_s)->setFocus();
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(placeOf(pop), old + u"Pop/a.mp3"_s);
}

TEST_F(FindWindow, ANameAloneIsTickedByHand)
{
    music.write(u"wetter.mp3"_s, mp3(1, {}, 20));
    const QString fid = addRow(u"wetter.mp3"_s, 99999, 2, 4000);
    open();
    click(u"cmdSearch"_s);
    EXPECT_EQ(shown(u"TDBGridTracks"_s, 0, foundcolumn::kAgrees), u"Name; Länge weicht ab"_s);
    EXPECT_FALSE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
    press(u"TDBGridTracks"_s, 0, foundcolumn::kTick);
    EXPECT_TRUE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
    QTest::keyClick(child<DataGrid>(u"TDBGridTracks"_s), Qt::Key_Space);
    EXPECT_FALSE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
    QTest::keyClick(child<DataGrid>(u"TDBGridTracks"_s), Qt::Key_Space);
    click(u"cmdApply"_s);
    EXPECT_EQ(placeOf(fid), music.file(u"wetter.mp3"_s));
}

TEST_F(FindWindow, ARuleIsMadeByHandAndByShowingAFile)
{
    addMoved(u"Pop/a.mp3"_s, u"x/a.mp3"_s, 1);
    addMoved(u"Jazz/b.mp3"_s, u"y/b.mp3"_s, 2);
    open();
    folder = music.file(u"y"_s);
    click(u"cmdByHand"_s);
    EXPECT_EQ(find.foundCount(), 1);
    child<DataGrid>(u"TDBGridRules"_s)->goToRow(1, 0);
    file = music.file(u"x/a.mp3"_s);
    click(u"cmdShow"_s);
    EXPECT_EQ(find.foundCount(), 2);
    EXPECT_EQ(find.rules().size(), 2U);
}

TEST_F(FindWindow, EscapeEndsTheSearchFirstAndTheWindowThen)
{
    addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    open();
    QTest::mouseClick(child<QPushButton>(u"cmdSearch"_s), Qt::LeftButton);
    EXPECT_EQ(find.state(), FindAgain::State::Searching);
    EXPECT_EQ(child<QPushButton>(u"cmdAbbruch"_s)->text(), u"Abbrechen"_s);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_EQ(find.state(), FindAgain::State::Ready);
    EXPECT_TRUE(window->isVisible());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FindWindow, ALibraryThatAnotherProgramHasIsNotWritten)
{
    const QString fid = addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    open();
    click(u"cmdSearch"_s);
    window->whyNotNow = [] { return u"verliehen"_s; };
    click(u"cmdApply"_s);
    EXPECT_EQ(told(), u"verliehen"_s);
    EXPECT_EQ(placeOf(fid), old + u"a.mp3"_s);
}

TEST_F(FindWindow, TheLibraryIsKeptBeforeItIsWrittenAndLeftAloneWhenTheUserDoesNotGoOn)
{
    const QString fid = addMoved(u"a.mp3"_s, u"a.mp3"_s, 1);
    open();
    click(u"cmdSearch"_s);
    bool goesOn = false;
    QStringList places;
    window->backUp = [&] {
        EXPECT_FALSE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
        places.append(placeOf(fid));
        return goesOn;
    };
    click(u"cmdApply"_s);
    EXPECT_EQ(placeOf(fid), old + u"a.mp3"_s);
    EXPECT_EQ(written, 0);
    goesOn = true;
    click(u"cmdApply"_s);
    EXPECT_EQ(placeOf(fid), music.file(u"a.mp3"_s));
    EXPECT_EQ(places, QStringList(2, old + u"a.mp3"_s));
    EXPECT_EQ(written, 1);
}

TEST_F(FindWindow, ALibraryThatCannotBeReadIsTold)
{
    settings->SetDbName(suite.file(u"none.mdb"_s));
    open();
    EXPECT_NE(told(), QString());
    EXPECT_FALSE(child<QPushButton>(u"cmdApply"_s)->isEnabled());
}

} // namespace
} // namespace melovane
