#include "siblings/demotour/ui/tour.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
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
/// Long enough for a painter to catch up on a slow machine.
constexpr auto kBeforePicture = 400ms;

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
    , m_stay(stay)
    , m_searches{u"*nacht"_s, u"Wilde"_s}
{}

void Tour::start()
{
    QTimer::singleShot(kBeforePicture, this, &Tour::nextStep);
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

int Tour::shownRows() const
{
    const auto* grid = mainWindow()->findChild<QTableView*>(u"TDBGrid1"_s);
    return grid != nullptr ? grid->model()->rowCount() : 0;
}

void Tour::nextStep()
{
    QWidget* window = mainWindow();
    auto* box = window != nullptr ? window->findChild<QComboBox*>(u"Text1"_s) : nullptr;
    if (box == nullptr) {
        fail(u"the main window did not open"_s);
        return;
    }
    if (m_searches.isEmpty()) {
        QTimer::singleShot(kBeforePicture, this, &Tour::takePicture);
        return;
    }
    box->lineEdit()->selectAll();
    m_toType = m_searches.takeFirst();
    typeLetter();
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
    const int rows = shownRows();
    say(u"Searched \"%1\": %2 tracks"_s.arg(box->currentText()).arg(rows));
    if (rows == 0) {
        fail(u"a search without tracks"_s);
        return;
    }
    nextStep();
}

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
