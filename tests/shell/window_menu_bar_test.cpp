#include "monitor/monitor_player.h"
#include "platform/controls/status_line.h"
#include "platform/db/database.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/theme.h"
#include "shell/console.h"
#include "shell/ui/window_menu_bar.h"
#include "support/wait_for.h"

#include <QContextMenuEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Of what is drawn to its ground, which is the colour in the corner.
double strongestContrast(const QImage& image)
{
    double strongest = 1;
    const Colour ground = fromQColor(image.pixelColor(0, 0));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            strongest = std::max(strongest, contrast(fromQColor(image.pixelColor(x, y)), ground));
        }
    }
    return strongest;
}

struct WindowMenuBarTest : public testing::Test
{
    WindowMenuBarTest()
    {
        library.add({{u"Hafen"_s, u"Mara Vossberg"_s, {}, {}, 0},
                     {u"Brandung"_s, u"Hafenchor"_s, {}, {}, 0},
                     {u"Alter Hafen"_s, u"Trio"_s, {}, {}, 0}});
        console.window.show();
    }

    QAction& entry(const QString& name) { return console.control<QAction>(name); }

    QMenu& context() { return console.control<QMenu>(u"popupDBGRID"_s); }

    /// Searches, and opens the context menu of the first row as a right click does.
    void openContextMenu(const QString& text)
    {
        QTest::keyClicks(&console.searchLine(), text);
        console.grid().goToRow(0, 0);
        const QRect row = console.grid().visualRect(console.grid().currentIndex());
        QContextMenuEvent event(QContextMenuEvent::Mouse, row.center(),
                                console.grid().viewport()->mapToGlobal(row.center()));
        QApplication::sendEvent(console.grid().viewport(), &event);
    }

    QStringList artists()
    {
        QStringList result;
        const QAbstractItemModel* model = console.grid().model();
        for (int row = 0; row < model->rowCount(); ++row) {
            result.append(
                model->index(row, console.grid().columnOf(u"Interpret"_s)).data().toString());
        }
        return result;
    }

    /// Of the track "Brandung".
    int storedNumber(const QString& column)
    {
        const auto database = library.engine->OpenDatabase(library.settings->DbName());
        return database
            ->OpenRecordset(u"select "_s + column + u" as v from db_all where Titel='Brandung'"_s)
            ->value(u"v")
            .toLong();
    }

    void editMenu() { emit console.control<QMenu>(u"mnuBearbeiten"_s).aboutToShow(); }

    struct LibraryWithKeys : test::TestLibrary
    {
        LibraryWithKeys() { settings->InitTasten(); }
    };

    LibraryWithKeys library;
    test::Console console{library};
};

TEST_F(WindowMenuBarTest, TheMenusStandInTheirOrderWithTheirTexts)
{
    QStringList shown;
    for (const QAction* menu : console.window.menuBar()->actions()) {
        if (menu->isVisible()) {
            shown.append(menu->text().remove(u'&'));
        }
    }
    EXPECT_EQ(shown, (QStringList{u"Datei"_s, u"Bearbeiten"_s, u"Extras"_s, u"Ansicht"_s, u"?"_s}));
}

TEST_F(WindowMenuBarTest, EveryPictureThatAMenuOrTheMonitorNamesIsDrawnAndMeansOneThing)
{
    const QStringList drawn = IconSet::names();
    QSet<QString> monitor;
    for (const MonitorCommand& command : kMonitorCommands) {
        EXPECT_TRUE(drawn.contains(command.icon)) << command.icon.toString().toStdString();
        monitor.insert(command.icon.toString());
    }
    EXPECT_EQ(monitor.size(), qsizetype(kMonitorCommands.size()));
    for (const MenuRow& row : MenuCommands::rows()) {
        EXPECT_TRUE(row.icon.isEmpty() || drawn.contains(row.icon))
            << row.name.toString().toStdString();
        EXPECT_FALSE(monitor.contains(row.icon.toString()));
    }
}

TEST_F(WindowMenuBarTest, EachAcceleratorLeadsToOneEntry)
{
    for (const QMenu* menu : console.window.menuBar()->findChildren<QMenu*>()) {
        QString used;
        for (const QAction* action : menu->actions()) {
            const qsizetype at = action->text().indexOf(u'&');
            if (at >= 0) {
                const QChar letter = action->text()[at + 1].toUpper();
                EXPECT_FALSE(used.contains(letter)) << action->text().toStdString();
                used += letter;
            }
        }
    }
}

TEST_F(WindowMenuBarTest, EntriesOfViewsThatAreMissingAreGreyAndSayWhy)
{
    const QAction& cleaning = entry(u"mnuDatenbereinigung"_s);
    EXPECT_FALSE(cleaning.isEnabled());
    EXPECT_EQ(cleaning.toolTip(), u"Noch nicht in dieser Fassung"_s);
    EXPECT_TRUE(qobject_cast<QMenu*>(cleaning.associatedObjects().first())->toolTipsVisible());
    EXPECT_TRUE(entry(u"mnuViewDel"_s).isEnabled());
    EXPECT_TRUE(entry(u"mnuPOPDBGRID_13"_s).isEnabled());
}

TEST_F(WindowMenuBarTest, AnEntryThatIsChosenDoesItsWork)
{
    entry(u"mnuConfig"_s).trigger();
    EXPECT_TRUE(console.processes.commands.last().contains(u"mlvconfig.exe "_s));
    entry(u"mnuAutosizeGrid"_s).trigger();
    EXPECT_TRUE(entry(u"mnuAutosizeGrid"_s).isChecked());
    EXPECT_EQ(library.settings->AutosizeGrid(), 1);
}

TEST_F(WindowMenuBarTest, ARightClickOpensTheContextMenuOverTheRow)
{
    openContextMenu(u"Brand"_s);
    EXPECT_TRUE(context().isVisible());
    entry(u"mnuPOPDBGRID_0"_s).trigger();
    const QString fid = console.view.GetFID();
    EXPECT_EQ(console.log.last(), u"monitor PLAY %1 0"_s.arg(fid));
    EXPECT_EQ(entry(u"mnuPOPDBGRID_4"_s).text().remove(u'&'),
              library.texts.text(u"mnuPOPDBGRID_4"_s));
    context().close();
}

TEST_F(WindowMenuBarTest, TheMenuKeyOpensItAtTheCurrentRow)
{
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().goToRow(0, 0);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(console.grid().viewport(), &event);
    ASSERT_TRUE(context().isVisible());
    const QRect grid(console.grid().viewport()->mapToGlobal(QPoint()),
                     console.grid().viewport()->size());
    EXPECT_TRUE(grid.contains(context().pos())) << context().pos().y();
    context().close();
}

TEST_F(WindowMenuBarTest, WithoutARowThereIsNoContextMenu)
{
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(console.grid().viewport(), &event);
    EXPECT_FALSE(context().isVisible());
}

TEST_F(WindowMenuBarTest, WordsOfTheTrackFindMoreOfThem)
{
    openContextMenu(u"Mara"_s);
    auto& more = console.control<QMenu>(u"mnuMoreResult"_s);
    const auto find = [&](const QString& text, int nth) {
        for (QAction* action : more.actions()) {
            if (action->text() == text && nth-- == 0) {
                return action;
            }
        }
        return static_cast<QAction*>(nullptr);
    };
    EXPECT_FALSE(find(u"Volltextsuche"_s, 0)->isEnabled());
    QAction* beginning = find(u"&HAFEN"_s, 0);
    QAction* anywhere = find(u"&HAFEN"_s, 1);
    ASSERT_NE(anywhere, nullptr);
    beginning->trigger();
    EXPECT_EQ(artists(), (QStringList{u"Hafenchor"_s, u"Mara Vossberg"_s}));
    anywhere->trigger();
    EXPECT_EQ(artists(), (QStringList{u"Trio"_s, u"Hafenchor"_s, u"Mara Vossberg"_s}));
    context().close();
}

TEST_F(WindowMenuBarTest, HeadingsAmongTheWordsCanBeReadInEveryTheme)
{
    for (const QString& file : {u"melovane-dark.skn"_s, u"melovane-light.skn"_s}) {
        QFile theme(QString::fromUtf8(MLV_RESOURCES) + u"/themes/"_s + file);
        ASSERT_TRUE(theme.open(QIODevice::ReadOnly));
        ASSERT_TRUE(console.skin.load(QString::fromUtf8(theme.readAll())));
        console.searchLine().setText({});
        openContextMenu(u"Mara"_s);
        auto& more = console.control<QMenu>(u"mnuMoreResult"_s);
        more.popup(QPoint(10, 10));
        int headings = 0;
        for (QAction* entry : more.actions()) {
            if (!entry->isEnabled() && !entry->isSeparator() && entry->isVisible()) {
                ++headings;
                EXPECT_GE(strongestContrast(more.grab(more.actionGeometry(entry)).toImage()),
                          kReadableContrast)
                    << file.toStdString() << ": " << entry->text().toStdString();
            }
        }
        EXPECT_EQ(headings, 2);
        more.close();
        context().close();
    }
}

TEST_F(WindowMenuBarTest, TheFieldThatTheUserTypesIntoIsNamedForScreenReaders)
{
    console.searchLine().focus();
    const QWidget* field = console.window.focusWidget();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->accessibleName(), u"Suche in der Bibliothek"_s);
}

TEST_F(WindowMenuBarTest, ACommandWhoseProgramIsMissingIsGreyEverywhereAndSaysWhy)
{
    console.missing = QStringList{u"mlvconfig"_s, u"mediaintake"_s, u"tagbench"_s, u"Melovanekiv"_s,
                                  u"beatgauge"_s};
    console.view.judgeCommands();
    console.playlist.judgeCommands();
    emit console.control<QMenu>(u"mnuDatei"_s).aboutToShow();
    EXPECT_FALSE(entry(u"mnuConfig"_s).isEnabled());
    EXPECT_EQ(entry(u"mnuConfig"_s).toolTip(),
              u"Das Programm für die Einstellungen ist nicht installiert"_s);
    for (const QString& key : {u"all.sample"_s, u"all.import"_s}) {
        const auto* button = console.window.library().findChild<QToolButton*>(key);
        EXPECT_FALSE(button->isEnabled()) << key.toStdString();
        EXPECT_TRUE(button->toolTip().endsWith(u"ist nicht installiert"_s));
    }
    EXPECT_FALSE(console.window.playlist().findChild<QToolButton*>(u"all.sample"_s)->isEnabled());
    const qsizetype started = console.processes.commands.size();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    console.grid().setFocus();
    QTest::keyClick(&console.grid(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(console.processes.commands.size(), started);
    EXPECT_EQ(console.window.status().panel(StatusPanel::Message),
              u"Der Importer ist nicht installiert"_s);
    openContextMenu(u"Brand"_s);
    for (const int index : {12, 13, 16, 17}) {
        EXPECT_FALSE(entry(u"mnuPOPDBGRID_%1"_s.arg(index)).isEnabled()) << index;
    }
    EXPECT_TRUE(entry(u"mnuPOPDBGRID_8"_s).isEnabled());
    context().close();
    console.missing.clear();
    emit console.control<QMenu>(u"mnuDatei"_s).aboutToShow();
    console.view.judgeCommands();
    EXPECT_TRUE(entry(u"mnuConfig"_s).isEnabled());
    EXPECT_TRUE(console.window.library().findChild<QToolButton*>(u"all.import"_s)->isEnabled());
}

TEST_F(WindowMenuBarTest, TheButtonsOfTheMonitorPlayTheCurrentTrack)
{
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().goToRow(0, 0);
    console.log.clear();
    for (const QString& name : {u"play.start"_s, u"play.center"_s, u"play.stop"_s}) {
        console.window.library().findChild<QToolButton*>(name)->click();
    }
    const QString fid = console.view.GetFID();
    EXPECT_EQ(console.log,
              (QStringList{u"monitor PLAY %1 0"_s.arg(fid), u"monitor PLAYCENTER %1 0"_s.arg(fid),
                           u"monitor STOP %1 0"_s.arg(fid)}));
}

TEST_F(WindowMenuBarTest, CutSaysWhereItCannot)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().setFocus();
    editMenu();
    EXPECT_FALSE(entry(u"mnuCut"_s).isEnabled());
    EXPECT_EQ(entry(u"mnuCut"_s).toolTip(),
              u"Titel der Bibliothek lassen sich nicht ausschneiden"_s);
    QTest::keyClick(&console.grid(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(console.window.status().panel(StatusPanel::Message),
              u"Titel der Bibliothek lassen sich nicht ausschneiden"_s);
    EXPECT_EQ(artists().size(), 1);
}

TEST_F(WindowMenuBarTest, TheEditMenuWorksInATextFieldToo)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.searchLine().focus();
    console.searchLine().lineEdit()->selectAll();
    editMenu();
    entry(u"mnuCut"_s).trigger();
    EXPECT_EQ(console.searchLine().text(), QString());
    editMenu();
    EXPECT_FALSE(entry(u"mnuCopy"_s).isEnabled());
    entry(u"mnuPaste"_s).trigger();
    EXPECT_EQ(console.searchLine().text(), u"Brand"_s);
}

TEST_F(WindowMenuBarTest, UndoAndRedoAreGreyWithNothingToUndoAndSayWhy)
{
    const auto* button = console.window.playlist().findChild<QToolButton*>(u"all.undo"_s);
    EXPECT_FALSE(entry(u"mnuUndo"_s).isEnabled());
    EXPECT_EQ(entry(u"mnuUndo"_s).toolTip(), u"Nichts rückgängig zu machen"_s);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_TRUE(button->toolTip().startsWith(u"Nichts rückgängig zu machen"_s));
    EXPECT_FALSE(entry(u"mnuRedo"_s).isEnabled());
    EXPECT_EQ(entry(u"mnuRedo"_s).toolTip(), u"Nichts zu wiederholen"_s);
}

TEST_F(WindowMenuBarTest, MenusAndToolTipsNameTheKeysOfTheUser)
{
    const auto key = [this](const QString& name) {
        return entry(name).shortcut().toString(QKeySequence::PortableText);
    };
    EXPECT_EQ(key(u"mnuUndo"_s), u"Ctrl+Z"_s);
    EXPECT_EQ(key(u"mnuCut"_s), u"Ctrl+X"_s);
    EXPECT_EQ(key(u"mnuCopy"_s), u"Ctrl+C"_s);
    EXPECT_EQ(key(u"mnuPaste"_s), u"Ctrl+V"_s);
    EXPECT_EQ(key(u"mnuPasteAppend"_s), u"Ctrl+A"_s);
    EXPECT_EQ(key(u"mnuDelete"_s), u"Del"_s);
    EXPECT_EQ(key(u"mnuSelectAll"_s), QString()) << "nothing is bound to it";
    EXPECT_EQ(key(u"mnuPOPDBGRID_4"_s), u"Ctrl+S"_s);
    EXPECT_EQ(key(u"mnuPOPDBGRID_5"_s), u"Ctrl+N"_s);
    openContextMenu(u"Brand"_s);
    EXPECT_EQ(key(u"mnuRow_mnuPasteAppend"_s), u"Ctrl+A"_s);
    EXPECT_EQ(key(u"mnuRow_mnuDelete"_s), u"Del"_s);
    EXPECT_EQ(key(u"note.5"_s), u"Ctrl+1"_s);
    context().close();
    const auto tip = [](QWidget& view, const QString& button) {
        return view.findChild<QToolButton*>(button)->toolTip();
    };
    const QString append = nativeKeys(u"Ctrl+A"_s);
    EXPECT_TRUE(tip(console.window.library(), u"all.db.append"_s).endsWith(u'(' + append + u')'));
    EXPECT_TRUE(tip(console.window.playlist(), u"all.clip.append"_s).contains(append));
    EXPECT_TRUE(tip(console.window.playlist(), u"all.delete"_s).contains(nativeKeys(u"Del"_s)));
}

TEST_F(WindowMenuBarTest, TheRowMenuOfATrackMarksAndRatesIt)
{
    openContextMenu(u"Brand"_s);
    EXPECT_FALSE(entry(u"mnuRow_mnuCut"_s).isVisible());
    EXPECT_FALSE(entry(u"mnuRow_Aktion"_s).isVisible());
    EXPECT_TRUE(entry(u"mnuRow_mnuPasteAppend"_s).isEnabled());
    entry(u"note.4"_s).trigger();
    EXPECT_EQ(storedNumber(u"Note"_s), 4) << "stars are ratings, not the school marks of the keys";
    entry(u"mnuRow_mnuDelete"_s).trigger();
    EXPECT_EQ(storedNumber(u"DEL"_s), -1);
    context().close();
}

TEST_F(WindowMenuBarTest, F10OpensTheMenuBarAndShiftF10TheMenuOfTheCurrentRow)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().setFocus();
    console.grid().goToRow(0, 0);
    QTest::keyClick(&console.grid(), Qt::Key_F10);
    auto& file = *console.window.menuBar()->actions().constFirst()->menu();
    EXPECT_TRUE(file.isVisible());
    file.close();
    QTest::keyClick(&console.grid(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(context().isVisible());
    const QRect row = console.grid().visualRect(console.grid().currentIndex());
    EXPECT_EQ(context().pos(), console.grid().viewport()->mapToGlobal(row.bottomLeft()));
    context().close();
}

TEST_F(WindowMenuBarTest, AMenuThatWasClosedAndOpenedAgainGivesTheKeyboardBack)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
    QTest::keyClicks(&console.searchLine(), u"Brand"_s);
    console.grid().setFocus();
    auto& file = *console.window.menuBar()->actions().constFirst()->menu();
    const Qt::Key letter = Qt::Key(file.title().section(u'&', 1).at(0).toUpper().unicode());
    for (const bool chosen : {true, false}) {
        console.window.activateWindow();
        ASSERT_TRUE(test::waitFor([&] { return console.grid().hasFocus(); }));
        QTest::keyClick(QApplication::focusWidget(), letter, Qt::AltModifier);
        ASSERT_TRUE(file.isVisible());
        QTest::keyClick(&file, Qt::Key_Escape);
        QTest::keyClick(QApplication::focusWidget(), letter, Qt::AltModifier);
        ASSERT_TRUE(file.isVisible());
        if (chosen) {
            file.setActiveAction(&entry(u"mnuExpPlaylistBas"_s));
            QTest::keyClick(&file, Qt::Key_Return);
        } else {
            QTest::keyClick(&file, Qt::Key_Escape);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        }
        EXPECT_TRUE(test::waitFor([&] { return console.window.focusWidget() == &console.grid(); }))
            << chosen;
    }
}

TEST(Accelerator, IsTheFirstLetterThatNobodyHas)
{
    QString used = u"D"_s;
    EXPECT_EQ(withAccelerator(u"Datei"_s, used), u"D&atei"_s);
    EXPECT_EQ(withAccelerator(u"?"_s, used), u"?"_s);
    EXPECT_EQ(withAccelerator(u"Eigen &x"_s, used), u"Eigen &x"_s);
    EXPECT_EQ(withAccelerator(u"Dada"_s, used), u"Dada"_s);
    EXPECT_EQ(used, u"DA"_s);
}

} // namespace
} // namespace melovane
