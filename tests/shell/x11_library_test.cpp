#include "shell/console.h"
#include "shell/real_display.h"
#include "support/wait_for.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>
#include <QUrl>

/// A user's way through the library view, with real keys and a real mouse.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Another program that takes files.
class FileTaker : public QWidget
{
public:
    FileTaker() { setAcceptDrops(true); }

    QStringList files;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }

    void dropEvent(QDropEvent* event) override
    {
        for (const QUrl& url : event->mimeData()->urls()) {
            files.append(url.toLocalFile());
        }
        event->acceptProposedAction();
    }
};

class LibraryWalk : public RealDisplay
{
protected:
    LibraryWalk()
    {
        library.add({{u"Lichtspiel"_s, u"Ostwind"_s, u"Prisma"_s, {}, 0},
                     {u"Licht aus"_s, u"Kanalratten"_s, u"Unter Tage"_s, {}, 0},
                     {u"Lichtblick"_s, u"Anders"_s, u"Meer"_s, {}, 0},
                     {u"Brandung"_s, u"Trio"_s, u"Meer"_s, {}, 0}});
        library.execute(u"update db_all set Path='/musik/', DName=Titel+'.mp3', BPM='120'"_s);
    }

    void show(Console& console)
    {
        // Beside the place where another program takes what is dragged.
        console.window.setGeometry(20, 40, 1100, 700);
        console.window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&console.window, test::kLongWaitMs));
        console.searchLine().focus();
    }

    static QStringList titles(Console& console)
    {
        const DataGrid& grid = console.grid();
        QStringList result;
        for (int row = 0; row < grid.model()->rowCount(); ++row) {
            result.append(grid.model()->index(row, grid.columnOf(u"Titel"_s)).data().toString());
        }
        return result;
    }

    [[nodiscard]] QString cell(const QString& title, const QString& column) const
    {
        const auto database = library.engine->OpenDatabase(library.databaseName());
        return database
            ->OpenRecordset(u"select %1 as x from db_all where Titel='%2'"_s.arg(column, title))
            ->value(0)
            .toText();
    }

    /// The middle of a cell, on the screen.
    static QPoint placeOf(Console& console, int row, const QString& column)
    {
        DataGrid& grid = console.grid();
        const QModelIndex index = grid.model()->index(row, grid.columnOf(column));
        return grid.viewport()->mapToGlobal(grid.visualRect(index).center());
    }

    static QPoint headingOf(Console& console, const QString& column)
    {
        QHeaderView* header = console.grid().horizontalHeader();
        const int section = console.grid().columnOf(column);
        return header->viewport()->mapToGlobal(
            QPoint(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                   header->height() / 2));
    }

    /// Types, and goes into the list at its first row.
    void search(Console& console, const QString& text)
    {
        ASSERT_TRUE(pressKeys(u"ctrl+f"_s));
        ASSERT_TRUE(test::waitFor([&] { return console.searchLine().hasFocus(); }));
        ASSERT_TRUE(typeText(text));
        ASSERT_TRUE(test::waitFor([&] { return console.searchLine().text() == text; }));
        ASSERT_TRUE(pressKeys(u"Down"_s));
        ASSERT_TRUE(test::waitFor([&] { return console.grid().hasFocus(); }));
    }

    TestLibrary library;
};

TEST_F(LibraryWalk, RatingsAndShortFormsAndTheDeleteToggleWorkFromTheKeyboard)
{
    Console console(library);
    show(console);
    search(console, u"licht"_s);
    ASSERT_EQ(titles(console), (QStringList{u"Licht aus"_s, u"Lichtblick"_s, u"Lichtspiel"_s}));
    const std::pair<QString, QString> marks[] = {{u"ctrl+1"_s, u"5"_s},
                                                 {u"ctrl+2"_s, u"4"_s},
                                                 {u"ctrl+3"_s, u"3"_s},
                                                 {u"ctrl+4"_s, u"2"_s},
                                                 {u"ctrl+5"_s, u"1"_s}};
    for (const auto& [keys, stored] : marks) {
        ASSERT_TRUE(pressKeys(keys));
        EXPECT_TRUE(test::waitFor([&, wanted = stored] {
            return cell(u"Licht aus"_s, u"Note"_s) == wanted;
        })) << keys.toStdString();
    }
    ASSERT_TRUE(pressKeys(u"Down"_s));
    ASSERT_TRUE(test::waitFor([&] { return console.grid().currentRow() == 1; }));
    ASSERT_TRUE(pressKeys(u"ctrl+2"_s));
    ASSERT_TRUE(test::waitFor([&] { return cell(u"Lichtblick"_s, u"Note"_s) == "4"_L1; }));

    ASSERT_TRUE(pressKeys(u"Delete"_s));
    EXPECT_TRUE(test::waitFor([&] { return cell(u"Lichtblick"_s, u"DEL"_s) == "-1"_L1; }));
    ASSERT_TRUE(pressKeys(u"Delete"_s));
    EXPECT_TRUE(test::waitFor([&] { return cell(u"Lichtblick"_s, u"DEL"_s) == "0"_L1; }));

    search(console, u"N<2"_s);
    EXPECT_EQ(titles(console), QStringList{u"Lichtblick"_s});
    search(console, u"BPM=120"_s);
    EXPECT_EQ(titles(console).size(), 4);
}

TEST_F(LibraryWalk, ACellIsEditedSortedAndFoundAgainAfterARestart)
{
    {
        Console console(library);
        show(console);
        search(console, u"licht"_s);
        ASSERT_TRUE(clickAt(headingOf(console, u"Interpret"_s)));
        ASSERT_TRUE(test::waitFor([&] {
            return titles(console) == QStringList{u"Lichtblick"_s, u"Licht aus"_s, u"Lichtspiel"_s};
        }));
        ASSERT_TRUE(clickAt(headingOf(console, u"Interpret"_s)));
        ASSERT_TRUE(test::waitFor([&] { return titles(console).value(0) == "Lichtspiel"_L1; }));

        library.settings->SetGridSwapEditPlay(0);
        ASSERT_TRUE(clickAt(placeOf(console, 0, u"Album"_s)));
        ASSERT_TRUE(test::waitFor([&] { return console.grid().currentRow() == 0; }));
        ASSERT_TRUE(pressKeys(u"Return"_s));
        ASSERT_TRUE(
            test::waitFor([&] { return console.grid().findChild<QLineEdit*>() != nullptr; }));
        ASSERT_TRUE(typeText(u"Neues Album"_s));
        ASSERT_TRUE(pressKeys(u"Return"_s));
        EXPECT_TRUE(
            test::waitFor([&] { return cell(u"Lichtspiel"_s, u"Album"_s) == "Neues Album"_L1; }));

        console.grid().setColumnHidden(console.grid().columnOf(u"Genre"_s), true);
        console.grid().setColumnWidth(console.grid().columnOf(u"Album"_s), 222);
        console.window.close();
    }
    library.settings->Refresh();
    Console console(library);
    show(console);
    EXPECT_EQ(console.searchLine().text(), u"licht"_s);
    EXPECT_EQ(titles(console).value(0), u"Lichtspiel"_s);
    EXPECT_EQ(console.grid().sortArrow(console.grid().columnOf(u"Interpret"_s)),
              SortArrow::Descending);
    EXPECT_TRUE(console.grid().isColumnHidden(console.grid().columnOf(u"Genre"_s)));
}

TEST_F(LibraryWalk, SelectedRowsLeaveAsFilesAndStayInTheLibrary)
{
    Console console(library);
    show(console);
    search(console, u"licht"_s);
    FileTaker taker;
    taker.setGeometry(1150, 100, 200, 200);
    taker.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&taker, test::kLongWaitMs));
    ASSERT_TRUE(clickAt(placeOf(console, 0, u"Titel"_s)));
    ASSERT_TRUE(test::waitFor([&] { return console.grid().hasFocus(); }));
    ASSERT_TRUE(pressKeys(u"shift+Down"_s));
    ASSERT_TRUE(test::waitFor([&] {
        return console.grid().selection() == std::vector<RowRange>{{0, 1}};
    }));
    ASSERT_TRUE(dragMouse(placeOf(console, 1, u"Titel"_s), taker.mapToGlobal(QPoint(100, 100))));
    EXPECT_TRUE(test::waitFor([&] { return !taker.files.isEmpty(); }));
    EXPECT_EQ(taker.files, (QStringList{u"/musik/Licht aus.mp3"_s, u"/musik/Lichtblick.mp3"_s}));
    EXPECT_EQ(titles(console).size(), 3);
}

TEST_F(LibraryWalk, WhatAnotherProgramChangesIsShownAndSelectionAndPlaceAreKept)
{
    Console console(library);
    show(console);
    search(console, u"licht"_s);
    ASSERT_TRUE(pressKeys(u"Down"_s));
    ASSERT_TRUE(pressKeys(u"shift+Down"_s));
    ASSERT_TRUE(test::waitFor([&] {
        return console.grid().selection() == std::vector<RowRange>{{1, 2}};
    }));
    ASSERT_TRUE(runBeside(
        QString::fromUtf8(MLV_SUITE_SENDER),
        {library.folders.environment().runtimeFolder(), QString::number(console.message->handle()),
         u"import"_s, library.databaseName(),
         u"insert into db_all (FID,Titel,Interpret,DEL) values ('900000000000','Licht 0','Neu',0)"_s}));
    EXPECT_TRUE(test::waitFor([&] { return titles(console).size() == 4; }));
    EXPECT_EQ(titles(console).value(0), u"Licht 0"_s);
    EXPECT_EQ(console.grid().selection(), (std::vector<RowRange>{{2, 3}}));
    EXPECT_EQ(console.grid().currentRow(), 3);
}

} // namespace
} // namespace melovane::test
