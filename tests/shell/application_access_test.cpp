// The console for those who use a screen reader, or a keyboard alone.
#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "shell/application_fixture.h"
#include "shell/closed_dialogs.h"
#include "support/accessible_walk.h"

#include <QMenuBar>
#include <QSet>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using test::AccessibleWalk;

/// A console with a list of two tracks, one of them with an album of its own.
class Access : public test::ApplicationTest
{
protected:
    Access()
    {
        suite.library.add({.FID = u"800000000001"_s, .Titel = u"Licht"_s, .Interpret = u"Kaja"_s});
        suite.library.add({.FID = u"800000000002"_s, .Titel = u"Brandung"_s, .Album = u"Hafen"_s});
    }

    void expectWhole(const QString& name, QWidget& window)
    {
        const AccessibleWalk walk = test::walkAccessibly(window);
        std::cout << name.toStdString() << ": " << walk.controls << " controls\n";
        controls += walk.controls;
        ++windows;
        EXPECT_GT(walk.controls, 0) << name.toStdString();
        EXPECT_EQ(walk.faults().join(u'\n').toStdString(), "") << name.toStdString();
    }

    /// The main window with each of its panels.
    void walkMainWindow(QMainWindow& window)
    {
        for (const QSize size : {QSize(1900, 1000), QSize(800, 600)}) {
            window.resize(size);
            QApplication::processEvents();
            expectWhole(u"main window at %1"_s.arg(size.width()), window);
        }
        BusSender(running->bus(), u"test"_s)
            .SendMessage(bus::kShowTagEditMp3db, u"800000000001"_s, true);
        QApplication::processEvents();
        EXPECT_TRUE(window.findChild<QWidget*>(u"EditTag1"_s)->isVisible());
        expectWhole(u"main window with the tag panel"_s, window);
    }

    int controls = 0;
    int windows = 0;
};

TEST_F(Access, EveryControlOfTheMainWindowHasANameAndARoleAndIsReachedWithoutAMouse)
{
    run([this](QMainWindow& window) { walkMainWindow(window); });
    EXPECT_EQ(windows, 3);
}

TEST_F(Access, AndSoItIsInEnglish)
{
    chooseEnglish();
    run([this](QMainWindow& window) { walkMainWindow(window); });
    EXPECT_EQ(windows, 3);
}

/// Looks at each dialog that opens, then closes it.
class WalkedDialogs : public QObject
{
public:
    explicit WalkedDialogs(std::function<void(const QString&, QWidget&)> look)
        : m_look(std::move(look))
    {
        qApp->installEventFilter(this);
    }

    [[nodiscard]] const QStringList& seen() const { return m_seen; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->isWidgetType() &&
            static_cast<QWidget*>(watched)->isWindow() &&
            qobject_cast<QMainWindow*>(watched) == nullptr &&
            static_cast<QWidget*>(watched)->windowType() != Qt::ToolTip) {
            // Behind the call that shows it, which waits from then on.
            QMetaObject::invokeMethod(
                this, [this, shown = QPointer(static_cast<QWidget*>(watched))] { look(shown); },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void look(const QPointer<QWidget>& shown)
    {
        if (!shown || !shown->isVisible()) {
            return;
        }
        const bool isMenu = qobject_cast<QMenu*>(shown) != nullptr;
        const QString name = shown->objectName().isEmpty()
                                 ? QString::fromLatin1(shown->metaObject()->className())
                                 : shown->objectName();
        if (!isMenu && !m_seen.contains(name)) {
            m_seen.append(name);
            m_look(name, *shown);
        }
        if (shown) {
            shown->close();
        }
    }

    std::function<void(const QString&, QWidget&)> m_look;
    QStringList m_seen;
};

void pressEveryEntry(const QMenu& menu)
{
    for (QAction* const entry : menu.actions()) {
        if (entry->menu() != nullptr) {
            emit entry->menu()->aboutToShow();
            pressEveryEntry(*entry->menu());
        } else if (entry->isEnabled() && !entry->isSeparator() &&
                   entry->objectName() != "mnuExit"_L1 && !entry->isCheckable()) {
            entry->trigger();
            QApplication::processEvents();
        }
    }
}

TEST_F(Access, EveryDialogOfTheMenusIsWholeForAScreenReaderToo)
{
    QStringList seen;
    run([&](QMainWindow& window) {
        WalkedDialogs dialogs(
            [this](const QString& name, QWidget& dialog) { expectWhole(name, dialog); });
        for (QAction* const top : window.menuBar()->actions()) {
            if (top->isVisible()) {
                emit top->menu()->aboutToShow();
                pressEveryEntry(*top->menu());
            }
        }
        window.findChild<QWidget*>(u"PlaylistGrid1"_s)->setFocus();
        seen = dialogs.seen();
    });
    std::cout << seen.join(u", "_s).toStdString() << '\n';
    EXPECT_GE(windows, 8);
}

} // namespace
} // namespace melovane
