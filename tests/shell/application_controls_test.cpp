// Every menu entry, tool button and context entry of the running console is used: each acts, opens
// something, or is grey and says why.
#include "shell/console_words.h"
#include "support/wait_for.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class Controls : public test::ConsoleWords
{
protected:
    Controls() { qputenv("PATH", "/proc"); }

    ~Controls() override { qputenv("PATH", m_path); }

    /// What can be seen of the console, and what it keeps.
    struct Sight
    {
        QImage window;
        QString status;
        QString lists; ///< rows of their panel
        QString clipboard;
        QByteArray settings;
        int searches;     ///< kept by the search line
        qint64 dayCounts; ///< tracks that were played today
        qint32 player;    ///< numbers that it has got
        const QWidget* focus;
    };

    Sight look()
    {
        return {window->grab().toImage(),
                status(StatusPanel::Message),
                texts(lists()),
                QApplication::clipboard()->text(),
                suite.read(u"melovane.ini"_s),
                window->findChild<QComboBox*>(u"Text1"_s)->count(),
                count(u"db_all where PlayCountDay>0"_s),
                numbersOfPlayer(),
                window->focusWidget()};
    }

    /// What an act of the user has done, in words; empty for nothing at all.
    QString whatDoes(const std::function<void()>& act)
    {
        const Sight before = look();
        static_cast<void>(dialogs.take());
        heard.clear();
        act();
        QApplication::processEvents();
        QStringList opened = dialogs.take();
        opened.removeAll(u"myPopup"_s); // the menu that it was chosen from
        if (!opened.isEmpty()) {
            return u"opens "_s + opened.join(u", "_s);
        }
        heard.removeAll(u"info.from.fid"_s);
        if (heard == QStringList{u"show.statustext"_s}) {
            return u"says "_s + said;
        }
        if (!heard.isEmpty()) {
            return u"sends "_s + heard.join(u", "_s);
        }
        const Sight after = look();
        if (after.searches != before.searches || after.dayCounts != before.dayCounts) {
            return u"changes what is kept"_s;
        }
        if (after.player != before.player) {
            return u"tells the player"_s;
        }
        if (after.status != before.status && !after.status.isEmpty()) {
            return u"says "_s + after.status;
        }
        if (after.clipboard != before.clipboard) {
            return u"copies"_s;
        }
        if (after.settings != before.settings) {
            return u"keeps a setting"_s;
        }
        if (after.focus != before.focus) {
            return u"moves the keyboard"_s;
        }
        if (after.window != before.window || after.lists != before.lists) {
            return u"shows something else"_s;
        }
        return whatComes();
    }

    /// What comes a little later: the line of a program, or a message that a timer had to send.
    /// Empty when nothing comes.
    QString whatComes()
    {
        QString line;
        static_cast<void>(test::waitFor([&] {
            line = QString::fromUtf8(suite.read(u"started.txt"_s)).trimmed();
            heard.removeAll(u"info.from.fid"_s);
            return !line.isEmpty() || !heard.isEmpty();
        }));
        return !line.isEmpty()   ? u"starts "_s + line
               : heard.isEmpty() ? QString()
                                 : u"sends "_s + heard.join(u", "_s);
    }

    void tell(const QString& name, const QString& what)
    {
        std::cout << name.toStdString() << ": " << what.toStdString() << '\n';
        ++used;
        EXPECT_FALSE(what.isEmpty()) << name.toStdString() << " leads nowhere";
    }

    /// A grey control says more than what it is for.
    void tellGrey(const QString& name, const QString& text, const QString& tip)
    {
        QString caption = text;
        caption.remove(u'&');
        const QString reason = tip.section(u'\n', -1).trimmed();
        // Undo is called by what it would undo, or why it cannot.
        const bool isReason = reason != caption || name.contains("do"_L1);
        EXPECT_TRUE(!reason.isEmpty() && isReason) << name.toStdString() << " is grey";
        tell(name, u"grey, "_s + reason);
    }

    void use(const QString& name, QAction& entry)
    {
        if (entry.isEnabled()) {
            const bool isChosen = entry.isCheckable() && entry.isChecked();
            const QString what = whatDoes([&entry] { entry.trigger(); });
            tell(name, what.isEmpty() && isChosen ? u"is chosen"_s : what);
        } else {
            tellGrey(name, entry.text(), entry.toolTip());
        }
    }

    /// The theme of the desktop has a caption alone.
    static QString nameOf(const QAction& entry)
    {
        return entry.objectName().isEmpty() ? entry.text() : entry.objectName();
    }

    /// Names of the entries of a menu and of those below it; those of empty menus are left out.
    static QStringList entriesOf(const QMenu& menu)
    {
        QStringList result;
        for (const QAction* entry : menu.actions()) {
            // What is bold and grey is a heading.
            const bool isHeading = entry->font().bold() && !entry->isEnabled();
            if (entry->isSeparator() || !entry->isVisible() || isHeading) {
                continue;
            }
            if (entry->menu() != nullptr) {
                result.append(entriesOf(*entry->menu()));
            } else {
                result.append(nameOf(*entry));
            }
        }
        return result;
    }

    /// An entry as it is after its menu was opened anew.
    static QAction& entryOf(QMenu& menu, const QString& name)
    {
        const QList<QAction*> entries = menu.findChildren<QAction*>();
        const auto found = std::find_if(entries.begin(), entries.end(), [&](const QAction* entry) {
            return nameOf(*entry) == name;
        });
        EXPECT_NE(found, entries.end()) << name.toStdString();
        return **found;
    }

    void useMenu(QMenu& menu)
    {
        emit menu.aboutToShow();
        for (const QAction* entry : menu.actions()) {
            if (entry->menu() != nullptr) {
                emit entry->menu()->aboutToShow();
            }
        }
        for (const QString& name : entriesOf(menu)) {
            if (name == "mnuExit"_L1) {
                continue; // the last act of the test
            }
            reset();
            list().setFocus();
            emit menu.aboutToShow();
            use(menu.objectName() + u" "_s + name, entryOf(menu, name));
        }
    }

    /// The menu of a row, which the message opens.
    void useRowMenu(const QString& message, DataGrid& grid)
    {
        const auto open = [&] {
            reset();
            grid.setFocus();
            send(u"player.monitor.play.start"_s, {tracks[0]});
            send(message, {tracks[0]});
            QApplication::processEvents();
        };
        open();
        auto& menu = *window->findChild<QMenu*>(u"popupDBGRID"_s);
        for (const QString& name : entriesOf(menu)) {
            open();
            use(message + u' ' + name, entryOf(menu, name));
        }
    }

    /// A menu that waits for a choice: opened once for each of its entries.
    void useWaitingMenu(const QString& name, const std::function<void()>& open)
    {
        int entries = 1;
        for (int chosen = 0; chosen < entries; ++chosen) {
            reset();
            QString caption;
            QString reason;
            bool isGrey = false;
            const QString what = whatDoes([&] {
                dialogs.onMenu = [&](QMenu& menu) {
                    QList<QAction*> found;
                    for (QAction* entry : menu.actions()) {
                        if (!entry->isSeparator() && entry->menu() == nullptr) {
                            found.append(entry);
                        }
                    }
                    entries = int(found.size());
                    QAction& entry = *found[chosen];
                    caption = entry.text();
                    isGrey = !entry.isEnabled();
                    reason = entry.toolTip();
                    dialogs.onMenu = {};
                    if (isGrey) {
                        menu.close();
                    } else {
                        menu.setActiveAction(&entry);
                        QTest::keyClick(&menu, Qt::Key_Return);
                    }
                };
                open();
            });
            EXPECT_FALSE(caption.isEmpty()) << name.toStdString() << " opens no menu";
            if (isGrey) {
                tellGrey(name + u' ' + caption, caption, reason);
            } else {
                tell(name + u' ' + caption, what);
            }
        }
    }

    /// Buttons that a user sees, but for parts of other controls.
    QStringList buttonsOf(const QWidget& place) const
    {
        QStringList result;
        for (const auto* button : place.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->objectName().isEmpty() &&
                !button->objectName().startsWith(u"qt_"_s)) {
                result.append(button->objectName());
            }
        }
        return result;
    }

    void useButtons(const QString& place)
    {
        const auto begin = [this, &place] {
            reset();
            if (place == "EditTag1"_L1) {
                send(u"show.tagedit.mp3db"_s, {tracks[0], true});
            }
        };
        begin();
        for (const QString& name : buttonsOf(view(place))) {
            begin();
            if (name == "tree.dir"_L1) {
                showKind(u"tree.album"_s); // that of the start is chosen already
            }
            // What a button reads anew is other than what is shown.
            suite.execute(u"update pl_all set sid=9 where plid="_s + entry(1));
            suite.execute(u"update pl_group set name='Samstag' where grid=%1"_s.arg(group));
            auto* button = view(place).findChild<QAbstractButton*>(name);
            const QString full = place + u' ' + name;
            if (button == nullptr || !button->isVisible()) {
                ADD_FAILURE() << full.toStdString() << " is gone";
            } else if (button->isEnabled()) {
                tell(full, whatDoes([button] { button->click(); }));
            } else {
                tellGrey(full, button->accessibleName(), button->toolTip());
            }
        }
    }

    int used = 0;

private:
    QByteArray m_path = qgetenv("PATH");
};

TEST_F(Controls, OfTheMenusLeadSomewhere)
{
    inConsole([this] {
        for (QAction* top : window->menuBar()->actions()) {
            if (top->isVisible()) {
                useMenu(*top->menu());
            }
        }
        window->findChild<QAction*>(u"mnuExit"_s)->trigger();
        EXPECT_FALSE(window->isVisible());
        EXPECT_GE(used, 40);
    });
}

TEST_F(Controls, OfTheToolBarsLeadSomewhere)
{
    inConsole([this] {
        window->resize(1900, 1000);
        for (const QString& place : {u"ctl_MP3DB1"_s, u"ctl_Playlist1"_s, u"Tree1"_s,
                                     u"PlaylistFavorit1"_s, u"EditTag1"_s}) {
            useButtons(place);
        }
        EXPECT_GE(used, 50);
    });
}

TEST_F(Controls, OfTheMenusOfRowsLeadSomewhere)
{
    inConsole([this] {
        useRowMenu(u"show.context.menu.mp3db"_s, library());
        useRowMenu(u"show.context.menu.playlist"_s, list());
        EXPECT_GE(used, 40);
    });
}

TEST_F(Controls, OfTheMenusOfTreesLeadSomewhere)
{
    inConsole([this] {
        for (const QString& row : {u"Freitag"_s, u"Hauptset"_s, u"Kennung"_s}) {
            useWaitingMenu(u"lists "_s + row, [this, row] {
                // The click of a user ends the name that is being typed; rows wait for that.
                lists().setFocus();
                const int index = lists().find(keyOf(row));
                lists().setCurrentRow(index);
                emit lists().menuWanted(index, lists().mapToGlobal(QPoint(20, 20)));
            });
        }
        for (const QString& kind : {u"tree.dir"_s, u"tree.playlist"_s}) {
            useWaitingMenu(kind, [this, kind] {
                showKind(kind);
                OutlineTree& rows = tree().outline();
                rows.setCurrentRow(rows.rowCount() - 1);
                emit rows.menuWanted(rows.rowCount() - 1, rows.mapToGlobal(QPoint(20, 20)));
            });
        }
        EXPECT_GE(used, 15);
    });
}

} // namespace
} // namespace melovane
