// What the menus of the whole console do with a list.
#include "shell/application_fixture.h"
#include "support/wait_for.h"

#include <QAction>
#include <QMenu>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ApplicationCommands : test::ApplicationTest
{
    ApplicationCommands()
    {
        QStringList tracks;
        for (const QString& title : {u"Hafen"_s, u"Brandung"_s, u"Segel"_s}) {
            tracks.append(suite.library.add({.Titel = title}));
        }
        const int group = suite.library.addGroup(u"Freitag"_s);
        suite.library.addPlaylist(
            {.Name = u"Hauptset"_s, .GRID = group, .tracks = tracks, .IsPlay = true});
    }

    /// Runs the console with the keyboard in the list.
    void inList(const std::function<void()>& act)
    {
        EXPECT_EQ(run([&](QMainWindow& shown) {
                      window = &shown;
                      ASSERT_TRUE(QTest::qWaitForWindowActive(window, test::kLongWaitMs));
                      list = window->findChild<QTableView*>(u"PlaylistGrid1"_s);
                      list->setFocus();
                      // Whatever modifiers an earlier test has held down.
                      list->selectionModel()->setCurrentIndex(list->model()->index(1, 0),
                                                              QItemSelectionModel::ClearAndSelect |
                                                                  QItemSelectionModel::Rows);
                      act();
                  }),
                  0);
    }

    QAction& entry(const QString& name) { return *window->findChild<QAction*>(name); }

    /// Chooses an entry of the menu "Bearbeiten" as a user does who opens it first.
    void choose(const QString& name)
    {
        emit window->findChild<QMenu*>(u"mnuBearbeiten"_s)->aboutToShow();
        EXPECT_TRUE(entry(name).isEnabled()) << name.toStdString();
        entry(name).trigger();
    }

    [[nodiscard]] QString titles() const
    {
        QStringList result;
        const QAbstractItemModel& model = *list->model();
        int titleColumn = 0;
        while (model.headerData(titleColumn, Qt::Horizontal).toString() != u"Titel") {
            ++titleColumn;
        }
        for (int row = 0; row < model.rowCount(); ++row) {
            result.append(model.index(row, titleColumn).data().toString());
        }
        return result.join(u' ');
    }

    QMainWindow* window = nullptr;
    QTableView* list = nullptr;
};

TEST_F(ApplicationCommands, TheEditMenuCutsPastesAndUndoesInTheListWithTheKeyboard)
{
    inList([this] {
        ASSERT_EQ(titles(), u"Hafen Brandung Segel"_s);
        choose(u"mnuCut"_s);
        EXPECT_EQ(titles(), u"Hafen Segel"_s);
        choose(u"mnuPasteAppend"_s);
        EXPECT_EQ(titles(), u"Hafen Segel Brandung"_s);
        choose(u"mnuUndo"_s);
        EXPECT_EQ(titles(), u"Hafen Segel"_s);
        EXPECT_TRUE(entry(u"mnuRedo"_s).isEnabled());
        auto* undo =
            window->findChild<QWidget*>(u"ctl_Playlist1"_s)->findChild<QToolButton*>(u"all.undo"_s);
        EXPECT_TRUE(undo->isEnabled());
        EXPECT_TRUE(undo->toolTip().contains(u"Rückgängig: 1 Titel aus"_s));
    });
}

TEST_F(ApplicationCommands, ARatingIsTakenBackByTheEditMenuAndItsFileFollows)
{
    const QString rating = u"select Note from db_all where Titel='Brandung'"_s;
    inList([&] {
        const QString before = suite.value(rating).toText();
        QTest::keyClick(list, Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(suite.value(rating).toText(), u"5"_s);
        suite.execute(u"delete from db_edit"_s);
        auto* undo =
            window->findChild<QWidget*>(u"ctl_Playlist1"_s)->findChild<QToolButton*>(u"all.undo"_s);
        EXPECT_TRUE(undo->toolTip().contains(u"Bewertung von „Brandung“ geändert"_s))
            << undo->toolTip().toStdString();
        choose(u"mnuUndo"_s);
        EXPECT_EQ(suite.value(rating).toText(), before);
        EXPECT_EQ(suite.value(u"select count(*) from db_edit"_s).toLong(), 1);
    });
}

TEST_F(ApplicationCommands, CtrlXCutsInAPlaylist)
{
    inList([this] {
        QTest::keyClick(list, Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(titles(), u"Hafen Segel"_s);
    });
}

TEST_F(ApplicationCommands, TheMenuOfAnEntrySetsItsPlayActionAndCutsIt)
{
    inList([this] {
        QTest::keyClick(list, Qt::Key_F10, Qt::ShiftModifier);
        auto* menu = window->findChild<QMenu*>(u"popupDBGRID"_s);
        ASSERT_TRUE(menu->isVisible());
        EXPECT_TRUE(entry(u"aktion.0"_s).isChecked());
        entry(u"aktion.1"_s).trigger();
        EXPECT_EQ(suite.value(u"select count(*) from pl_all where aktion=1"_s).toLong(), 1);
        entry(u"mnuRow_mnuCut"_s).trigger();
        EXPECT_EQ(titles(), u"Hafen Segel"_s);
        menu->close();
    });
}

TEST_F(ApplicationCommands, TheMenuOfAnEntryClearsAndResetsItsWholeListAndUndoBringsItBack)
{
    suite.execute(u"update pl_all set mixin='1,2,3,0,5', mixtime=4000, framestart=700, volume=3"_s);
    const auto count = [this](const QString& condition) {
        return suite.value(u"select count(*) from pl_all where "_s + condition).toLong();
    };
    inList([&] {
        QTest::keyClick(list, Qt::Key_F10, Qt::ShiftModifier);
        auto* menu = window->findChild<QMenu*>(u"popupDBGRID"_s);
        ASSERT_TRUE(menu->isVisible());
        EXPECT_FALSE(entry(u"mixstyle.all.copy"_s).isEnabled());
        EXPECT_EQ(entry(u"mixstyle.all.copy"_s).toolTip(), u"Der Player spielt keine Playliste"_s);
        entry(u"mixstyle.all.del"_s).trigger();
        EXPECT_EQ(count(u"mixin is null and mixtime=0 and framestart=700"_s), 3);
        entry(u"playlist.reset"_s).trigger();
        EXPECT_EQ(count(u"framestart=0 and volume=0"_s), 3);
        menu->close();
        choose(u"mnuUndo"_s);
        EXPECT_EQ(count(u"mixin is null and framestart=700 and volume=3"_s), 3);
        choose(u"mnuUndo"_s);
        EXPECT_EQ(count(u"mixin='1,2,3,0,5' and mixtime=4000"_s), 3);
    });
}

TEST_F(ApplicationCommands, ThatHaveNoProgramAreGreyFromTheStart)
{
    inList([this] {
        emit window->findChild<QMenu*>(u"mnuDatei"_s)->aboutToShow();
        EXPECT_FALSE(entry(u"mnuConfig"_s).isEnabled());
        EXPECT_TRUE(entry(u"mnuConfig"_s).toolTip().endsWith(u"ist nicht installiert"_s));
        auto* view = window->findChild<QWidget*>(u"ctl_Playlist1"_s);
        EXPECT_FALSE(view->findChild<QToolButton*>(u"all.sample"_s)->isEnabled());
        EXPECT_TRUE(view->findChild<QToolButton*>(u"all.delete"_s)->isEnabled());
    });
}

} // namespace
} // namespace melovane
