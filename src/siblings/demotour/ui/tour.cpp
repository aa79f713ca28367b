#include "siblings/demotour/ui/tour.h"

#include "bus/message_names.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QTableView>
#include <QTimer>

#include <chrono>
#include <cstdio>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A steady typist.
constexpr auto kBetweenKeys = 60ms;
/// Long enough for a painter to catch up on a slow machine, and for a user to follow.
constexpr auto kBetweenSteps = 400ms;

/// "%P/%TP_%I - %N" among the templates of the export.
constexpr int kListFolderTemplate = 2;

const QString kListName = u"Wilde Nacht"_s;
const QString kLibraryGrid = u"TDBGrid1"_s;
const QString kListGrid = u"PlaylistGrid1"_s;
const QString kListPanel = u"PlaylistFavorit1"_s;

void say(const QString& line)
{
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

void press(QWidget* target, int key, const QString& text)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &up);
}

} // namespace

Tour::Tour(QString picture, bool stay, QObject* parent)
    : QObject(parent)
    , m_picture(std::move(picture))
    , m_listFile(QFileInfo(m_picture).absolutePath() + u'/' + kListName + u".m3u"_s)
    , m_exportFolder(QFileInfo(m_picture).absolutePath() + u"/Export"_s)
    , m_stay(stay)
    , m_steps{&Tour::searchInside, &Tour::searchBeginnings, &Tour::makeGroup,
              &Tour::makeList,     &Tour::nameList,         &Tour::openList,
              &Tour::appendHits,   &Tour::saveList,         &Tour::checkSavedList,
              &Tour::exportList,   &Tour::checkExport,      &Tour::takePicture}
{}

void Tour::start()
{
    goOn();
}

void Tour::goOn()
{
    QTimer::singleShot(kBetweenSteps, this, &Tour::nextStep);
}

void Tour::nextStep()
{
    if (m_result != 0 || m_steps.empty()) {
        return;
    }
    if (mainWindow() == nullptr) {
        fail(u"the main window did not open"_s);
        return;
    }
    const Step step = m_steps.front();
    m_steps.erase(m_steps.begin());
    (this->*step)();
}

QWidget* Tour::mainWindow() const
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow*>(widget) != nullptr && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

int Tour::rowsOf(const QString& grid) const
{
    const auto* found = mainWindow()->findChild<QTableView*>(grid);
    return found != nullptr ? found->model()->rowCount() : 0;
}

void Tour::click(const QString& panel, const QString& button)
{
    const auto* owner = mainWindow()->findChild<QWidget*>(panel);
    auto* found = owner != nullptr ? owner->findChild<QAbstractButton*>(button) : nullptr;
    if (found == nullptr) {
        fail(u"there is no button "_s + button);
        return;
    }
    found->click();
}

// ---- searching

void Tour::search(const QString& text)
{
    auto* box = mainWindow()->findChild<QComboBox*>(u"Text1"_s);
    if (box == nullptr) {
        fail(u"there is no search line"_s);
        return;
    }
    box->lineEdit()->selectAll();
    m_toType = text;
    typeLetter();
}

void Tour::searchInside()
{
    search(u"*nacht"_s);
}

void Tour::searchBeginnings()
{
    search(u"Wilde"_s);
}

void Tour::typeLetter()
{
    if (m_toType.isEmpty()) {
        finishSearch();
        return;
    }
    const QString letter = m_toType.left(1);
    m_toType.remove(0, 1);
    auto* box = mainWindow()->findChild<QComboBox*>(u"Text1"_s);
    press(box->lineEdit(), letter.toUpper().at(0).unicode(), letter);
    QTimer::singleShot(kBetweenKeys, this, &Tour::typeLetter);
}

void Tour::finishSearch()
{
    const auto* box = mainWindow()->findChild<QComboBox*>(u"Text1"_s);
    const int rows = rowsOf(kLibraryGrid);
    say(u"Searched \"%1\": %2 tracks"_s.arg(box->currentText()).arg(rows));
    if (rows == 0) {
        fail(u"a search without tracks"_s);
        return;
    }
    goOn();
}

// ---- a list of the hits

void Tour::makeGroup()
{
    click(kListPanel, u"all.newdir"_s);
    goOn();
}

void Tour::makeList()
{
    click(kListPanel, u"all.newdoc"_s);
    goOn();
}

void Tour::nameList()
{
    // The name of a new list can be typed at once.
    const auto* panel = mainWindow()->findChild<QWidget*>(kListPanel);
    if (auto* name = panel->findChild<QLineEdit*>()) {
        name->setText(kListName);
        press(name, Qt::Key_Return, u"\r"_s);
    }
    goOn();
}

void Tour::openList()
{
    click(kListPanel, u"all.activate"_s);
    goOn();
}

void Tour::appendHits()
{
    const int hits = rowsOf(kLibraryGrid);
    click(u"ctl_MP3DB1"_s, u"all.data.select"_s);
    click(u"ctl_MP3DB1"_s, bus::kAllDbAppend.toString());
    const int entries = rowsOf(kListGrid);
    say(u"Made the playlist \"%1\" of the hits: %2 entries"_s.arg(kListName).arg(entries));
    if (entries != hits) {
        fail(u"the playlist does not hold the %1 hits"_s.arg(hits));
        return;
    }
    goOn();
}

void Tour::saveList()
{
    auto* entry = mainWindow()->findChild<QAction*>(u"mnuAktivePlaylist"_s);
    if (entry == nullptr) {
        fail(u"there is no entry to save a playlist"_s);
        return;
    }
    // Runs inside of the dialog, which trigger() waits for.
    QTimer::singleShot(kBetweenSteps, this, &Tour::answerSaveDialog);
    entry->trigger();
    goOn();
}

void Tour::answerSaveDialog()
{
    auto* dialog = QApplication::activeModalWidget();
    auto* name = dialog != nullptr ? dialog->findChild<QLineEdit*>(u"fileNameEdit"_s) : nullptr;
    if (name == nullptr) {
        fail(u"no dialog asked where to save the playlist"_s);
        return;
    }
    name->setText(m_listFile);
    press(name, Qt::Key_Return, u"\r"_s);
}

void Tour::checkSavedList()
{
    QFile file(m_listFile);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const auto entries = isOpen ? file.readAll().count("#MLV:FID=") : qsizetype(0);
    say(u"Saved it as %1: %2 entries"_s.arg(m_listFile).arg(entries));
    if (entries != rowsOf(kListGrid)) {
        fail(u"the file does not hold the whole playlist"_s);
        return;
    }
    goOn();
}

// ---- the list with its files

void Tour::exportList()
{
    auto* entry = mainWindow()->findChild<QAction*>(u"mnuAktivePlaystFiles"_s);
    if (entry == nullptr || !QDir().mkpath(m_exportFolder)) {
        fail(u"the playlist cannot be exported"_s);
        return;
    }
    QTimer::singleShot(kBetweenSteps, this, &Tour::answerExportWindow);
    entry->trigger();
    goOn();
}

void Tour::answerExportWindow()
{
    QWidget* window = QApplication::activeModalWidget();
    auto* folder = window != nullptr ? window->findChild<QLineEdit*>(u"txtDir"_s) : nullptr;
    if (folder == nullptr) {
        fail(u"the export window did not open"_s);
        return;
    }
    folder->selectAll();
    for (const QChar letter : m_exportFolder) {
        press(folder, Qt::Key_unknown, letter);
    }
    window->findChild<QListWidget*>(u"List1"_s)->setCurrentRow(kListFolderTemplate);
    // Whoever has something to say after the export is a failure of this tour.
    QTimer listener;
    connect(&listener, &QTimer::timeout, this, [this, window] {
        QWidget* other = QApplication::activeModalWidget();
        if (other != nullptr && other != window) {
            other->close();
            fail(u"not everything was exported"_s);
        }
    });
    listener.start(kBetweenSteps);
    window->findChild<QAbstractButton*>(u"cmdStart"_s)->click();
    const QString picture = QFileInfo(m_picture).absolutePath() + u"/export.png"_s;
    if (!window->grab().save(picture)) {
        fail(u"the picture of the export could not be written"_s);
    }
    window->close();
}

void Tour::checkExport()
{
    const QDir folder(m_exportFolder + u'/' + kListName);
    const auto files = folder.entryList({u"*.mp3"_s}, QDir::Files).size();
    say(u"Exported it with its files to %1: %2 files"_s.arg(m_exportFolder).arg(files));
    if (files != rowsOf(kListGrid) ||
        !QFileInfo::exists(m_exportFolder + u'/' + kListName + u".m3u"_s)) {
        fail(u"the export is not whole"_s);
        return;
    }
    goOn();
}

// ---- the end

void Tour::takePicture()
{
    QWidget* window = mainWindow();
    if (!window->grab().save(m_picture)) {
        fail(u"the picture could not be written"_s);
        return;
    }
    say(u"Saved a picture of the window"_s);
    if (!m_stay) {
        window->close();
    }
}

void Tour::fail(const QString& reason)
{
    m_result = 1;
    say(u"The tour failed: "_s + reason);
    QApplication::exit(m_result);
}

} // namespace melovane
