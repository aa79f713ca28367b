#include "shell/ui/window_commands.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A caption without the mark of its accelerator.
QString plain(QString caption)
{
    caption.replace(u"&&"_s, QString(QChar::Null));
    caption.remove(u'&');
    return caption.replace(QChar::Null, u'&');
}

QString below(const QString& title, const QString& caption)
{
    return title.isEmpty() ? caption : title + u": "_s + caption;
}

QuickEntry entryOf(QAction& action, const QString& kind, const QString& title)
{
    return {.title = below(title, plain(action.text())),
            .kind = kind,
            .key = action.shortcut().toString(QKeySequence::NativeText),
            .whyNot = action.isEnabled() ? QString() : action.toolTip(),
            .run = [found = QPointer(&action)] {
                if (found) {
                    found->trigger();
                }
            }};
}

/// The key that a button names behind its words, \see Panel::tellTool.
QString keyOf(const QToolButton& button)
{
    const QString line = button.toolTip().section(u'\n', 0, 0);
    const QString words = button.accessibleName() + u" ("_s;
    return line.startsWith(words) && line.endsWith(u')') ? line.sliced(words.size()).chopped(1)
                                                         : QString();
}

void add(const QList<QAction*>& actions,
         const QString& kind,
         const QString& title,
         const QStringList& without,
         std::vector<QuickEntry>& entries)
{
    for (QAction* const action : actions) {
        if (action->isSeparator() || !action->isVisible() ||
            without.contains(action->objectName())) {
            continue;
        }
        if (const QMenu* const menu = action->menu()) {
            if (action->isEnabled()) {
                add(menu->actions(), kind, below(title, plain(action->text())), without, entries);
            }
        } else {
            entries.push_back(entryOf(*action, kind, title));
        }
    }
}

} // namespace

std::vector<QuickEntry>
menuCommands(const QWidget& window, const QString& kind, const QStringList& without)
{
    std::vector<QuickEntry> entries;
    if (const auto* const bar = window.findChild<QMenuBar*>()) {
        add(bar->actions(), kind, {}, without, entries);
    }
    return entries;
}

std::vector<QuickEntry>
rowMenuCommands(const QWidget& window, const QString& kind, const QString& title)
{
    std::vector<QuickEntry> entries;
    if (const auto* const menu = window.findChild<QMenu*>(u"popupDBGRID"_s)) {
        add(menu->actions(), kind, title, {}, entries);
    }
    return entries;
}

std::vector<QuickEntry> buttonsOf(const QWidget& view, const QString& kind, const QString& title)
{
    std::vector<QuickEntry> entries;
    for (QToolButton* const button : view.findChildren<QToolButton*>()) {
        if (button->objectName().isEmpty() || button->accessibleName().isEmpty()) {
            continue;
        }
        const QString reason = button->accessibleDescription();
        entries.push_back({.title = below(title, button->accessibleName()),
                           .kind = kind,
                           .key = keyOf(*button),
                           .whyNot = button->isEnabled() ? QString()
                                     : reason.isEmpty()  ? button->toolTip()
                                                         : reason,
                           .run = [found = QPointer(button)] {
                               if (found) {
                                   found->click();
                               }
                           }});
    }
    return entries;
}

} // namespace melovane
