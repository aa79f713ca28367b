// From an empty library to an exported list, by keyboard alone.
#include "shell/application_fixture.h"
#include "support/mp3_maker.h"
#include "support/wait_for.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTableView>

#include <gtest/gtest.h>

#include <functional>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A user who answers each dialog with keys as soon as it has the keyboard.
class KeysForDialogs : public QObject
{
public:
    explicit KeysForDialogs(std::function<void(QWidget& dialog)> answer)
        : m_answer(std::move(answer))
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const dialog = qobject_cast<QDialog*>(watched);
        if (dialog != nullptr && event->type() == QEvent::Show) {
            // Behind the call that shows it, which waits from then on.
            QMetaObject::invokeMethod(
                this,
                [this, shown = QPointer<QWidget>(dialog)] {
                    if (shown) {
                        m_answer(*shown);
                    }
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void(QWidget& dialog)> m_answer;
};

class KeyboardWalk : public ApplicationTest
{
protected:
    /// Where keys go now: nothing else is ever asked to act.
    QWidget* keyboard()
    {
        if (QApplication::activePopupWidget() != nullptr) {
            return QApplication::activePopupWidget();
        }
        if (QApplication::activeWindow() == nullptr) {
            // What a window manager does when a dialog has gone.
            window->activateWindow();
            EXPECT_TRUE(waitFor([] { return QApplication::focusWidget() != nullptr; }));
        }
        QWidget* const place = QApplication::focusWidget();
        EXPECT_NE(place, nullptr) << "nobody has the keyboard";
        return place != nullptr ? place : window;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(keyboard(), key, modifiers);
    }

    void type(const QString& text) { QTest::keyClicks(keyboard(), text); }

    static Qt::Key letterOf(const QAction& entry)
    {
        const qsizetype mark = entry.text().indexOf(u'&');
        EXPECT_GE(mark, 0) << entry.text().toStdString();
        return Qt::Key(entry.text()[mark + 1].toUpper().unicode());
    }

    /// An entry by the underlined letters of its menu and of itself.
    void chooseByLetters(const QString& menu, const QString& entry)
    {
        press(letterOf(*window->menuBar()->findChild<QMenu*>(menu)->menuAction()), Qt::AltModifier);
        ASSERT_NE(QApplication::activePopupWidget(), nullptr) << menu.toStdString();
        press(letterOf(*window->findChild<QAction*>(entry)));
    }

    /// The tab key, until the control of that name has the keyboard.
    void tabTo(const QString& name)
    {
        constexpr int kControls = 200;
        for (int i = 0; i < kControls; ++i) {
            const QWidget* const present = QApplication::focusWidget();
            if (present != nullptr && present->objectName() == name) {
                return;
            }
            press(Qt::Key_Tab);
        }
        ADD_FAILURE() << "the tab key never reaches " << name.toStdString();
    }

    [[nodiscard]] int rows(const QString& grid) const
    {
        return window->findChild<QTableView*>(grid)->model()->rowCount();
    }

    QMainWindow* window = nullptr;
};

TEST_F(KeyboardWalk, LeadsFromAnEmptyLibraryToAnExportedList)
{
    const TempFolder folder;
    folder.write(u"licht.mp3"_s, simpleMp3(u"Lichter"_s, u"Mara"_s));
    folder.write(u"brandung.mp3"_s, simpleMp3(u"Brandung"_s, u"Ostwind"_s));
    const QString source = folder.write(u"Alles.m3u"_s, "licht.mp3\nbrandung.mp3\n");
    const QString target = folder.file(u"Abend.m3u"_s);
    QString file = source;
    QStringList asked;
    const KeysForDialogs user([&](QWidget& dialog) {
        asked.append(dialog.windowTitle());
        // Not the window's own word: it takes itself for active as soon as its owner is.
        EXPECT_TRUE(waitFor([&dialog] {
            const QWidget* const present = QApplication::focusWidget();
            return present != nullptr && present->window() == &dialog;
        }));
        if (dialog.inherits("QFileDialog")) {
            press(Qt::Key_A, Qt::ControlModifier);
            type(file);
        }
        // The first one takes the completion that the field offers.
        const QPointer<QWidget> open(&dialog);
        for (int tries = 0; tries < 3 && open && open->isVisible(); ++tries) {
            press(Qt::Key_Return);
        }
        if (open && open->isVisible()) {
            ADD_FAILURE() << "no key answers " << dialog.windowTitle().toStdString();
            dialog.close();
        }
    });
    EXPECT_EQ(run([&](QMainWindow& shown) {
                  window = &shown;
                  ASSERT_TRUE(QTest::qWaitForWindowActive(window, kLongWaitMs));
                  ASSERT_EQ(rows(u"TDBGrid1"_s), 0);
                  chooseByLetters(u"mnuDatei"_s, u"mnuImpPlaylistBas"_s);
                  ASSERT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 2);
                  // A list of the user's own.
                  tabTo(u"all.newdoc"_s);
                  press(Qt::Key_Space);
                  type(u"Abend"_s);
                  press(Qt::Key_Return);
                  const QStringList both{u"Alles"_s, u"Abend"_s};
                  EXPECT_TRUE(waitFor([&] {
                      return suite.column(u"select name from pl_name order by nid"_s) == both;
                  }));
                  ASSERT_EQ(rows(u"PlaylistGrid1"_s), 0);
                  // A track is searched and goes into it.
                  press(Qt::Key_F, Qt::ControlModifier);
                  type(u"licht"_s);
                  ASSERT_EQ(rows(u"TDBGrid1"_s), 1);
                  press(Qt::Key_Down);
                  press(Qt::Key_A, Qt::ControlModifier);
                  ASSERT_EQ(rows(u"PlaylistGrid1"_s), 1);
                  file = target;
                  press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
              }),
              0);
    EXPECT_EQ(asked, (QStringList{u"Playlisten importieren"_s, u"Playliste speichern"_s}));
    EXPECT_TRUE(folder.read(u"Abend.m3u"_s).contains("licht.mp3"));
    EXPECT_FALSE(folder.read(u"Abend.m3u"_s).contains("brandung.mp3"));
}

} // namespace
} // namespace melovane::test
