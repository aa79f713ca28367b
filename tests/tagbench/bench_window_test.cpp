#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/tag_reader.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/qt_picture_maker.h"
#include "platform/qt/qt_worker.h"
#include "platform/qt/skin.h"
#include "playlists/list_history.h"
#include "support/accessible_walk.h"
#include "support/mp3_maker.h"
#include "support/open_files.h"
#include "support/suite_fixture.h"
#include "tagbench/ui/bench_window.h"
#include "tagbench/ui/preview_page.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TagBenchWindow : public test::SuiteFixture
{
protected:
    TagBenchWindow() { MelovaneConfiguration::fill(texts); }

    QString add(const QString& name, const QString& title)
    {
        music.write(name, test::simpleMp3(title, u"Wer"_s));
        const QString fid = suite.library.add(
            {.Titel = title, .Interpret = u"Wer"_s, .Path = music.path() + u'/', .DName = name});
        suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
        return fid;
    }

    void open(BenchMode mode = BenchMode::Edit)
    {
        session = std::make_unique<BenchSession>(
            BenchSession::Parts{*suite.engine, history, *settings, suite.files, *reader,
                                suite.clock, texts, covers, pictures, worker, suite.dataFolder()},
            mode);
        session->whenWritten = [this] { ++written; };
        window = std::make_unique<BenchWindow>(skin, icons, *session, loop, NoteColours());
        window->ask = [this](QWidget*, const QString&) {
            ++asked;
            return answer;
        };
        window->tell = [this](QWidget*, const QStringList& lines) { told = lines; };
        window->chooseFolder = [this](QWidget*) { return music.path(); };
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        window->load();
    }

    template <typename T> T* find(const QString& name) { return window->findChild<T*>(name); }

    /// Of the page on top.
    template <typename T> T* onPage(const QString& page, const QString& name)
    {
        return find<PreviewPage>(u"Page_"_s + page)->findChild<T*>(name);
    }

    void showPage(int index) { find<QTabBar>(u"TabStrip1"_s)->setCurrentIndex(index); }

    void click(const QString& name)
    {
        QTest::mouseClick(find<QAbstractButton>(name), Qt::LeftButton);
    }

    [[nodiscard]] QString cell(const QString& fid, const QString& column)
    {
        return suite.value(u"select %1 from db_all where FID='%2'"_s.arg(column, fid)).toText();
    }

    test::TempFolder music;
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    std::unique_ptr<TagReader> reader = linux_media::makeTagReader();
    ListHistory history{*suite.engine, suite.files, suite.clock, *settings, {}};
    linux_media::Id3CoverReader covers;
    QtPictureMaker pictures;
    Skin skin{*qobject_cast<QApplication*>(QCoreApplication::instance())};
    IconSet icons{skin};
    QtMessageLoop loop;
    std::unique_ptr<BenchSession> session;
    std::unique_ptr<BenchWindow> window;
    QtWorker worker; ///< ends before all that it works on
    int written = 0;
    int asked = 0;
    bool answer = false;
    QStringList told;
};

TEST_F(TagBenchWindow, NoFieldOfTheCommonValuesIsCutOffAtTheSide)
{
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    const auto* scroll = find<QWidget>(u"CommonForm"_s)->findChild<QScrollArea*>();
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
    EXPECT_GE(scroll->viewport()->width(), scroll->widget()->minimumSizeHint().width());
    window->resize(window->minimumSizeHint());
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
}

TEST_F(TagBenchWindow, SeveralRatingsAreAMarkThatHasRoomAndATip)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    suite.execute(u"update db_all set [Note]='3' where FID='%1'"_s.arg(one));
    open();
    auto* const line = find<QLineEdit>(u"txtNote"_s);
    EXPECT_LE(line->fontMetrics().horizontalAdvance(line->placeholderText()) * 2, line->width());
    EXPECT_FALSE(line->placeholderText().isEmpty());
    EXPECT_EQ(line->toolTip(), u"mehrere Werte"_s);
    EXPECT_TRUE(find<QLineEdit>(u"txtTitel"_s)->toolTip().isEmpty());
}

TEST_F(TagBenchWindow, ATitleBarHasRoomOnTheScreen)
{
    open();
    const QRect area = window->screen()->availableGeometry();
    ASSERT_GE(window->height(), area.height() * 8 / 10) << "it fills the screen of this test";
    constexpr int kTitleBar = 40;
    EXPECT_GT(window->pos().y(), area.top());
    EXPECT_LE(window->pos().y() + kTitleBar + window->height(), area.bottom());
}

TEST_F(TagBenchWindow, AFieldChangesAllMarkedTracksWhenItIsAppliedByMouse)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    open();
    EXPECT_TRUE(suite.column(u"select FID from TEMP_MP3Edit"_s).isEmpty());
    EXPECT_EQ(find<QLineEdit>(u"txtTitel"_s)->placeholderText(), u"mehrere Werte"_s);
    EXPECT_EQ(find<QLineEdit>(u"txtInterpret"_s)->text(), u"Wer"_s);
    EXPECT_FALSE(find<QPushButton>(u"cmdApply"_s)->isEnabled());
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    EXPECT_EQ(find<QLabel>(u"lblChanges"_s)->text(), u"2 Änderungen in 2 Titeln"_s);
    EXPECT_EQ(cell(one, u"Album"_s), QString());
    click(u"cmdApply"_s);
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
    EXPECT_EQ(cell(two, u"Album"_s), u"Platte"_s);
    EXPECT_EQ(cell(two, u"Titel"_s), u"Zwei"_s);
    EXPECT_EQ(written, 1);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(find<QLabel>(u"lblChanges"_s)->text(), u"0 Änderungen in 0 Titeln"_s);
}

TEST_F(TagBenchWindow, ALibraryThatAnotherProgramHasTakenIsNotWrittenAndTheChangesStay)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    open();
    QString reason = u"Verliehen"_s;
    session->whyNotNow = [&reason] { return reason; };
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    click(u"cmdApply"_s);
    EXPECT_EQ(told, QStringList{u"Verliehen"_s});
    EXPECT_EQ(cell(one, u"Album"_s), QString());
    EXPECT_EQ(session->tracks().changedCells(), 1);
    EXPECT_EQ(written, 0);
    reason.clear();
    click(u"cmdApply"_s);
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
}

TEST_F(TagBenchWindow, TheLibraryIsFreeForOthersWhileNothingIsWritten)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    suite.engine->GiveAway(suite.dbName());
    suite.engine->TakeBack(suite.dbName());
    ASSERT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
    open();
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    EXPECT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
    // Another program has put a copy in its place meanwhile.
    suite.files.copy(suite.dbName(), suite.dbName() + u".neu"_s);
    ASSERT_TRUE(suite.files.remove(suite.dbName()));
    suite.files.rename(suite.dbName() + u".neu"_s, suite.dbName());
    click(u"cmdApply"_s);
    EXPECT_EQ(test::openDatabasesIn(suite.dataFolder()), "");
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
}

TEST_F(TagBenchWindow, AWorkEndsWhenTheLibraryIsTakenAndGoesOnWhenItIsBack)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    open();
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    int questions = 0;
    session->whyNotNow = [&questions] { return ++questions == 1 ? QString() : u"Verliehen"_s; };
    click(u"cmdApply"_s);
    EXPECT_EQ(told, QStringList{u"Nicht gespeichert, nichts wurde geändert: Verliehen"_s});
    EXPECT_EQ(cell(one, u"Album"_s), QString());
    EXPECT_EQ(find<QLineEdit>(u"txtAlbum"_s)->text(), u"Platte"_s);
    session->whyNotNow = {};
    click(u"cmdApply"_s);
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
}

TEST_F(TagBenchWindow, ALibraryThatNoConsoleHasOpenedYetShowsNoTracksAndNoFault)
{
    suite.open()->tableDefs().Delete(u"TEMP_MP3Edit"_s);
    suite.engine->GiveAway(suite.dbName());
    suite.engine->TakeBack(suite.dbName());
    ASSERT_TRUE(suite.files.remove(suite.file(u"melovane.temp.mdb"_s)));
    open();
    EXPECT_EQ(find<QLabel>(u"lblProgress"_s)->text(), QString());
    EXPECT_EQ(session->tracks().count(), 0);
    window.reset();
    // What a console marks later is there.
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    EXPECT_EQ(session->tracks().count(), 1);
}

TEST_F(TagBenchWindow, ALibraryThatCannotBeReadIsToldInASentence)
{
    suite.engine->GiveAway(suite.dbName());
    suite.engine->TakeBack(suite.dbName());
    suite.write(u"melovane.mdb"_s, QByteArray(8192, 'x'));
    open();
    const QString said = find<QLabel>(u"lblProgress"_s)->text();
    EXPECT_TRUE(said.startsWith(u"Die Bibliothek ist nicht lesbar: "_s)) << said.toStdString();
    EXPECT_EQ(suite.read(u"melovane.mdb"_s), QByteArray(8192, 'x'));
}

TEST_F(TagBenchWindow, ALibraryThatIsChosenMeanwhileGetsNothingOfTheTracksOfTheFormerOne)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    open();
    const QString other = suite.dataFolder() + u"/anders.mdb"_s;
    suite.files.copy(suite.dbName(), other);
    settings->SetDbName(other);
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    click(u"cmdApply"_s);
    EXPECT_EQ(cell(one, u"Album"_s), u"Platte"_s);
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree"_s), QStringList{u"Album"_s});
    const auto library = suite.engine->OpenDatabase(other);
    EXPECT_TRUE(library->OpenRecordset(u"select * from ChangeTree"_s)->Eof());
}

TEST_F(TagBenchWindow, EverythingGoesByKeyboardAlone)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    open();
    auto* grid = find<DataGrid>(u"TDBGrid1"_s);
    QTest::keyClick(grid, Qt::Key_Home);
    EXPECT_EQ(grid->selection(), (std::vector<RowRange>{{0, 0}}));
    QTest::keyClicks(find<QLineEdit>(u"txtJahr"_s), u"1999"_s);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(session->tracks().changedCells(), 0);
    QTest::keyClicks(find<QLineEdit>(u"txtBPM"_s), u"128.5"_s);
    EXPECT_EQ(find<QLineEdit>(u"txtBPM"_s)->text(), u"128.5"_s);
    QTest::keyClick(window.get(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(cell(one, u"BPM"_s), u"128.5"_s);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(asked, 0);
}

TEST_F(TagBenchWindow, FromMarkingToTakingBackNothingButKeysAreNeeded)
{
    settings->SetDbName(suite.dbName());
    const QString one = add(u"03_Die Zwei - Das Lied.mp3"_s, u"x"_s);
    const QString two = add(u"Nordkap.mp3"_s, u"Nordkap"_s);
    open();
    // Whoever has the keyboard gets them, as from the desktop.
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(window->windowHandle(), key, with);
    };
    const auto type = [this](const QString& text) {
        for (const QChar letter : text) {
            QTest::keyClick(window->windowHandle(), letter.toLatin1());
        }
    };
    press(Qt::Key_End); // marks one
    const auto tabTo = [&](const QString& name) {
        for (int i = 0; i < 80 && window->focusWidget()->objectName() != name; ++i) {
            press(Qt::Key_Tab);
        }
        return window->focusWidget()->objectName() == name;
    };
    ASSERT_TRUE(tabTo(u"cmdFold"_s)) << "a narrow window has the fields folded in";
    press(Qt::Key_Space);
    ASSERT_TRUE(tabTo(u"txtAlbum"_s));
    type(u"Platte"_s);
    EXPECT_EQ(session->tracks().text(1, TrackField::Album), u"Platte"_s);
    EXPECT_EQ(session->tracks().text(0, TrackField::Album), QString());
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Down);
    ASSERT_TRUE(find<DataGrid>(u"TDBGrid1"_s)->hasFocus());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(session->tracks().changedCells(), 0);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(session->tracks().changedCells(), 1);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_D, Qt::AltModifier);
    press(Qt::Key_V, Qt::AltModifier);
    press(Qt::Key_A, Qt::ControlModifier);
    type(u"%TO_%I - %N"_s);
    EXPECT_EQ(find<PreviewPage>(u"Page_names"_s)->summary(), u"1 von 2 Dateinamen passen"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(session->tracks().changedCells(), 4);
    EXPECT_EQ(cell(one, u"Titel"_s), u"x"_s) << "nothing is applied yet";
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(cell(one, u"Titel"_s), u"Das Lied"_s);
    EXPECT_EQ(cell(two, u"Album"_s), u"Platte"_s);
    press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    // The console takes it back as one step.
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(cell(one, u"Titel"_s), u"x"_s);
    EXPECT_EQ(cell(two, u"Album"_s), QString());
}

TEST_F(TagBenchWindow, APictureIsChosenForAllTracksAndShownBeforeItIsApplied)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    QImage picture(800, 600, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(music.file(u"bild.png"_s)));
    open();
    window->choosePicture = [this](QWidget*, const QString&) { return music.file(u"bild.png"_s); };
    auto* label = find<QLabel>(u"lblCover"_s);
    ASSERT_TRUE(QTest::qWaitFor([=] { return label->text() == u"Kein Titelbild"_s; }));
    EXPECT_FALSE(find<QPushButton>(u"cmdCoverOff"_s)->isEnabled());
    click(u"cmdCover"_s);
    ASSERT_TRUE(QTest::qWaitFor([=] { return label->text() == u"Ein Titelbild"_s; }));
    const QImage seen = find<QLabel>(u"ImageX1"_s)->pixmap().toImage();
    EXPECT_GT(seen.pixelColor(seen.rect().center()).red(), 200);
    EXPECT_EQ(find<QLabel>(u"lblChanges"_s)->text(), u"2 Änderungen in 2 Titeln"_s);
    click(u"cmdCoverBack"_s);
    EXPECT_EQ(session->tracks().changedCells(), 0);
    find<QToolButton>(u"cmdUndo"_s)->click();
    EXPECT_EQ(session->tracks().changedCells(), 2);
    click(u"cmdApply"_s);
    EXPECT_FALSE(cell(one, u"Image"_s).isEmpty());
    EXPECT_EQ(cell(one, u"Image"_s), cell(two, u"Image"_s));
    const QImage kept(suite.file(u"Image/"_s + cell(one, u"Image"_s) + u".jpg"_s));
    EXPECT_EQ(kept.width(), 500);
    EXPECT_EQ(suite.column(u"select FID from db_edit"_s).size(), 2);
}

TEST_F(TagBenchWindow, ADroppedPictureIsTakenAndABadOneIsTold)
{
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    auto* row = find<QWidget>(u"CoverRow"_s);
    const auto drop = [row](const QMimeData& data) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(row, &enter);
        QDropEvent dropped(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(row, &dropped);
    };
    music.write(u"bild.jpg"_s, "no picture at all");
    QMimeData bad;
    bad.setUrls({QUrl::fromLocalFile(music.file(u"bild.jpg"_s))});
    drop(bad);
    auto* said = find<QLabel>(u"lblProgress"_s);
    EXPECT_TRUE(
        QTest::qWaitFor([=] { return said->text() == u"Das Bild lässt sich nicht lesen"_s; }));
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QMimeData good;
    good.setImageData(picture);
    drop(good);
    EXPECT_TRUE(QTest::qWaitFor([this] { return session->tracks().changedCells() == 1; }));
}

TEST_F(TagBenchWindow, PagesFieldsAndButtonsHaveKeysOfTheirOwn)
{
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(window->windowHandle(), key, Qt::AltModifier);
    };
    press(Qt::Key_U);
    EXPECT_EQ(find<QTabBar>(u"TabStrip1"_s)->currentIndex(), 1);
    press(Qt::Key_Z);
    EXPECT_EQ(find<QTabBar>(u"TabStrip1"_s)->currentIndex(), 2);
    press(Qt::Key_C);
    EXPECT_TRUE(onPage<QLineEdit>(u"replace"_s, u"txtFind"_s)->hasFocus());
    press(Qt::Key_R);
    EXPECT_TRUE(onPage<QLineEdit>(u"replace"_s, u"txtReplace"_s)->hasFocus());
    press(Qt::Key_M);
    EXPECT_EQ(find<QTabBar>(u"TabStrip1"_s)->currentIndex(), 3);
    press(Qt::Key_D);
    press(Qt::Key_V);
    EXPECT_TRUE(onPage<QLineEdit>(u"names"_s, u"txtTemplate"_s)->hasFocus());
    press(Qt::Key_E);
    EXPECT_EQ(session->tracks().changedCells(), 0) << "there is no cover to take off";
    press(Qt::Key_S);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
}

TEST_F(TagBenchWindow, FieldsComeFromTheNamesOfTheFiles)
{
    const QString one = add(u"03_Die Zwei - Das Lied.mp3"_s, u"x"_s);
    add(u"Nordkap.mp3"_s, u"Nordkap"_s);
    open();
    auto* line = onPage<QLineEdit>(u"names"_s, u"txtTemplate"_s);
    line->clear();
    QTest::keyClicks(line, u"%TO_%I - %N"_s);
    EXPECT_EQ(find<PreviewPage>(u"Page_names"_s)->summary(), u"1 von 2 Dateinamen passen"_s);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(session->tracks().changedCells(), 3);
    window->apply();
    EXPECT_EQ(cell(one, u"Titel"_s), u"Das Lied"_s);
    EXPECT_EQ(cell(one, u"Interpret"_s), u"Die Zwei"_s);
    EXPECT_EQ(cell(one, u"Track"_s), u"3"_s);
}

/// Whether something in a cell is painted amber, left and right of where its picture ends.
std::pair<bool, bool> amberIn(DataGrid& grid, int row, int column)
{
    const QRect cell = grid.visualRect(grid.model()->index(row, column));
    const QImage picture = grid.viewport()->grab(cell).toImage();
    const int pictureEnd = grid.fontMetrics().height() + 8;
    std::pair<bool, bool> found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.red() > colour.blue() + 90 && colour.green() > colour.blue() + 40) {
                (x < pictureEnd ? found.first : found.second) = true;
            }
        }
    }
    return found;
}

TEST_F(TagBenchWindow, AFileNameThatDoesNotFitIsMarkedInAmber)
{
    add(u"Die Zwei - Das Lied.mp3"_s, u"x"_s);
    add(u"Nordkap.mp3"_s, u"Nordkap"_s);
    open();
    window->resize(1440, 900);
    auto* line = onPage<QLineEdit>(u"names"_s, u"txtTemplate"_s);
    line->clear();
    QTest::keyClicks(line, u"%I - %N"_s);
    auto* preview = onPage<DataGrid>(u"names"_s, u"TDBGrid2"_s);
    ASSERT_NE(preview, nullptr);
    const int result = preview->model()->columnCount() - 1;
    const QModelIndex last = preview->model()->index(1, result);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return preview->viewport()->rect().contains(preview->visualRect(last)); }));
    EXPECT_EQ(amberIn(*preview, 0, result), std::pair(false, false));
    EXPECT_EQ(amberIn(*preview, 1, result), std::pair(true, true));
}

TEST_F(TagBenchWindow, WhatATemplateReadsStandsInTheTracksWhileItIsTyped)
{
    add(u"03_Die Zwei - Das Lied.mp3"_s, u"x"_s);
    open();
    const auto title = [this] { return session->tracks().text(0, TrackField::Titel); };
    auto* line = onPage<QLineEdit>(u"names"_s, u"txtTemplate"_s);
    EXPECT_EQ(title(), u"x"_s) << "nothing happens before the user does something";
    EXPECT_TRUE(onPage<QPushButton>(u"names"_s, u"cmdTake"_s)->isVisible());
    line->clear();
    QTest::keyClicks(line, u"%N"_s);
    EXPECT_EQ(title(), u"03 Die Zwei - Das Lied"_s);
    EXPECT_FALSE(onPage<QPushButton>(u"names"_s, u"cmdTake"_s)->isVisible());
    QTest::keyClick(line, Qt::Key_Home);
    QTest::keyClicks(line, u"%TO_%I - "_s);
    EXPECT_EQ(title(), u"Das Lied"_s);
    EXPECT_EQ(session->tracks().changedCells(), 3);
    session->tracks().undo();
    EXPECT_EQ(title(), u"x"_s) << "all of the typing is one step";
    EXPECT_FALSE(session->tracks().canUndo());
}

TEST_F(TagBenchWindow, WhatIsReplacedWhileItIsTypedIsLookedForInTheFormerTexts)
{
    add(u"a.mp3"_s, u"Orginal A"_s);
    add(u"b.mp3"_s, u"Orginal B"_s);
    open();
    showPage(2);
    const auto title = [this](int track) {
        return session->tracks().text(track, TrackField::Titel);
    };
    QTest::keyClicks(onPage<QLineEdit>(u"replace"_s, u"txtFind"_s), u"Orginal"_s);
    QTest::keyClicks(onPage<QLineEdit>(u"replace"_s, u"txtReplace"_s), u"Original"_s);
    EXPECT_EQ(title(0), u"Original A"_s);
    auto* places = onPage<DataGrid>(u"replace"_s, u"TDBGrid2"_s);
    places->goToRow(0, 0);
    QTest::keyClick(places, Qt::Key_Space);
    EXPECT_EQ(title(0), u"Orginal A"_s);
    EXPECT_EQ(title(1), u"Original B"_s);
    QTest::keyClick(places, Qt::Key_Space);
    EXPECT_EQ(title(0), u"Original A"_s);
    // A change elsewhere ends it: what is typed then is a step of its own.
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"P"_s);
    QTest::keyClicks(onPage<QLineEdit>(u"replace"_s, u"txtFind"_s), u"x"_s);
    EXPECT_EQ(title(0), u"Original A"_s);
    EXPECT_EQ(session->tracks().text(0, TrackField::Album), u"P"_s);
}

TEST_F(TagBenchWindow, ANarrowWindowHasTheFormFoldedUnderTheGrid)
{
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    window->resize(1300, 800);
    auto* form = find<QWidget>(u"CommonForm"_s);
    auto* grid = find<QWidget>(u"BenchGrid"_s);
    auto* fold = find<QToolButton>(u"cmdFold"_s);
    EXPECT_TRUE(QTest::qWaitFor([=] { return form->x() > grid->x(); }));
    EXPECT_FALSE(fold->isVisible());
    window->resize(1024, 600);
    EXPECT_TRUE(QTest::qWaitFor([=] { return form->y() > grid->y(); }));
    EXPECT_EQ(window->width(), 1024);
    EXPECT_EQ(window->height(), 600);
    EXPECT_FALSE(find<QLineEdit>(u"txtTitel"_s)->isVisible());
    fold->setFocus();
    QTest::keyClick(fold, Qt::Key_Space);
    EXPECT_TRUE(find<QLineEdit>(u"txtTitel"_s)->isVisible());
    QTest::keyClicks(find<QLineEdit>(u"txtTitel"_s), u"!"_s);
    EXPECT_EQ(session->tracks().changedCells(), 1);
    window->resize(1300, 800);
    EXPECT_TRUE(QTest::qWaitFor([=] { return form->x() > grid->x(); }));
    EXPECT_TRUE(find<QLineEdit>(u"txtTitel"_s)->isVisible());
}

TEST_F(TagBenchWindow, ARowIsHeardOrTheButtonSaysWhyItIsNot)
{
    add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    open();
    auto* play = find<QToolButton>(u"cmdPlay"_s);
    EXPECT_FALSE(play->isEnabled());
    EXPECT_TRUE(play->toolTip().contains(u"Dieses Programm hat keine Soundausgabe"_s));
    QStringList heard;
    session->play = [&heard](const QString& file, bool fromMiddle) {
        heard.append(file + (fromMiddle ? u" m"_s : u""_s));
        return u"Keine Soundkarte"_s;
    };
    session->stopPlaying = [&heard] { heard.append(u"stop"_s); };
    find<DataGrid>(u"TDBGrid1"_s)->selectRow(1);
    EXPECT_TRUE(play->isEnabled());
    play->click();
    EXPECT_EQ(find<QLabel>(u"lblProgress"_s)->text(), u"Keine Soundkarte"_s);
    find<QToolButton>(u"cmdPlayCenter"_s)->click();
    find<QToolButton>(u"cmdStop"_s)->click();
    const QString file = music.file(u"b.mp3"_s);
    EXPECT_EQ(heard, (QStringList{file, file + u" m"_s, u"stop"_s}));
}

TEST_F(TagBenchWindow, WhatBecomesOfANameIsNotCutOff)
{
    add(u"a.mp3"_s, u"Eins"_s);
    open();
    showPage(1);
    auto* grid = onPage<DataGrid>(u"rename"_s, u"TDBGrid2"_s);
    ASSERT_NE(grid, nullptr);
    const QString longest = texts.text(u"bench.rename.cleaned");
    EXPECT_GT(grid->columnWidth(2), grid->fontMetrics().horizontalAdvance(longest));
}

TEST_F(TagBenchWindow, FilesAreRenamedAndCollisionsStay)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    const QString two = add(u"b.mp3"_s, u"Zwei"_s);
    const QString three = add(u"c.mp3"_s, u"Zwei"_s);
    open();
    showPage(1);
    auto* line = onPage<QLineEdit>(u"rename"_s, u"txtTemplate"_s);
    line->setText(u"%I/%N"_s);
    EXPECT_TRUE(onPage<QLabel>(u"rename"_s, u"lblWarning"_s)->isVisible());
    QTest::mouseClick(onPage<QPushButton>(u"rename"_s, u"cmdTake"_s), Qt::LeftButton);
    EXPECT_EQ(suite.files.names(music.path()).size(), 3) << "nothing happens before it is applied";
    window->apply();
    EXPECT_EQ(cell(one, u"DName"_s), u"Eins.mp3"_s);
    EXPECT_EQ(cell(one, u"Path"_s), music.path() + u"/Wer/"_s);
    EXPECT_EQ(cell(two, u"DName"_s), u"b.mp3"_s);
    EXPECT_EQ(cell(three, u"DName"_s), u"c.mp3"_s);
    EXPECT_TRUE(suite.files.fileExists(music.file(u"Wer/Eins.mp3"_s)));
}

TEST_F(TagBenchWindow, APlaceThatIsFoundCanBeLeftOut)
{
    const QString one = add(u"a.mp3"_s, u"Orginal A"_s);
    const QString two = add(u"b.mp3"_s, u"Orginal B"_s);
    open();
    showPage(2);
    QTest::keyClicks(onPage<QLineEdit>(u"replace"_s, u"txtFind"_s), u"Orginal"_s);
    QTest::keyClicks(onPage<QLineEdit>(u"replace"_s, u"txtReplace"_s), u"Original"_s);
    auto* places = onPage<DataGrid>(u"replace"_s, u"TDBGrid2"_s);
    ASSERT_NE(places, nullptr);
    places->goToRow(1, 0);
    QTest::keyClick(places, Qt::Key_Space);
    QTest::mouseClick(onPage<QPushButton>(u"replace"_s, u"cmdTake"_s), Qt::LeftButton);
    window->apply();
    EXPECT_EQ(cell(one, u"Titel"_s), u"Original A"_s);
    EXPECT_EQ(cell(two, u"Titel"_s), u"Orginal B"_s);
}

TEST_F(TagBenchWindow, WhatIsNotAppliedIsNotLostWithoutAQuestion)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    open();
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"P"_s);
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(asked, 1);
    answer = true;
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(cell(one, u"Album"_s), QString());
}

TEST_F(TagBenchWindow, WhatCouldNotBeWrittenIsTold)
{
    const QString one = add(u"a.mp3"_s, u"Eins"_s);
    open();
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"P"_s);
    suite.execute(u"update db_all set Album='Q' where FID='%1'"_s.arg(one));
    window->apply();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[1].endsWith(u"a.mp3: Inzwischen anderswo geändert"_s));
    EXPECT_EQ(cell(one, u"Album"_s), u"Q"_s);
    EXPECT_EQ(session->tracks().changedCells(), 1);
}

TEST_F(TagBenchWindow, NewFilesAreImportedWithWhatWasChangedOfThem)
{
    add(u"known.mp3"_s, u"Alt"_s);
    music.write(u"neu.mp3"_s, test::simpleMp3(u"Neu"_s, u"Wer"_s));
    music.write(u"kaputt.mp3"_s, "not music");
    open(BenchMode::Import);
    EXPECT_EQ(suite.column(u"select FID from TEMP_MP3Edit"_s).size(), 1);
    QTest::mouseClick(find<QToolButton>(u"cmdFolder"_s), Qt::LeftButton);
    ASSERT_EQ(session->tracks().count(), 1);
    EXPECT_EQ(find<QLabel>(u"lblProgress"_s)->text(),
              u"1 neue Dateien, 1 schon bekannt, 1 nicht lesbar"_s);
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 1);
    QTest::keyClicks(find<QLineEdit>(u"txtAlbum"_s), u"Platte"_s);
    click(u"cmdApply"_s);
    EXPECT_EQ(suite.column(u"select Album from db_all where DName='neu.mp3'"_s),
              QStringList{u"Platte"_s});
    EXPECT_FALSE(session->canApply());
    EXPECT_EQ(written, 1);
}

TEST_F(TagBenchWindow, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    add(u"a.mp3"_s, u"Eins"_s);
    add(u"b.mp3"_s, u"Zwei"_s);
    open();
    auto* const pages = window->findChild<QTabBar*>();
    ASSERT_NE(pages, nullptr);
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QApplication::processEvents();
        const test::AccessibleWalk walk = test::walkAccessibly(*window);
        EXPECT_GT(walk.controls, 10);
        EXPECT_EQ(walk.faults().join(u'\n').toStdString(), "")
            << pages->tabText(page).toStdString();
    }
}

} // namespace
} // namespace melovane
