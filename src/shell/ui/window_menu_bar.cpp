#include "shell/ui/window_menu_bar.h"

#include "platform/qt/icon_set.h"
#include "shell/mlvdb.h"
#include "shell/more_result.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The accelerators of the entries beside this one.
QString usedBeside(const QAction* entry)
{
    QString used;
    const auto* menu = qobject_cast<const QWidget*>(entry->associatedObjects().value(0));
    if (menu == nullptr) {
        return used;
    }
    for (const QAction* other : menu->actions()) {
        const qsizetype mark = other->text().indexOf(u'&');
        if (other != entry && mark >= 0 && mark + 1 < other->text().size()) {
            used += other->text()[mark + 1].toUpper();
        }
    }
    return used;
}

} // namespace

QString withAccelerator(const QString& caption, QString& used)
{
    if (caption.contains(u'&')) {
        return caption;
    }
    for (qsizetype at = 0; at < caption.size(); ++at) {
        const QChar letter = caption[at].toUpper();
        if (letter.isLetterOrNumber() && !used.contains(letter)) {
            used += letter;
            return QString(caption).insert(at, u'&');
        }
    }
    return caption;
}

WindowMenuBar::WindowMenuBar(QMainWindow& window, const IconSet& icons)
    : QObject(&window)
    , m_window(window)
    , m_icons(icons)
{
    buildBar();
    buildContextMenu();
}

QMenu* WindowMenuBar::addMenu(QMenu* parent, const QString& name)
{
    QMenu* menu = parent ? parent->addMenu(QString()) : m_window.menuBar()->addMenu(QString());
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    menu->setToolTipsVisible(true);
    return menu;
}

void WindowMenuBar::buildBar()
{
    QList<QMenu*> parents = {nullptr};
    for (const MenuRow& row : MenuCommands::rows()) {
        parents.resize(row.level + 1);
        if (row.kind == MenuRow::Kind::Menu || row.kind == MenuRow::Kind::Filled) {
            QMenu* menu = addMenu(parents.last(), row.name.toString());
            menu->setIcon(m_icons.icon(row.icon.toString()));
            parents.append(menu);
        } else {
            addRow(parents.last(), row);
        }
    }
    m_plugIns = filledMenu(u"mnuTopPlugin"_s);
}

void WindowMenuBar::addRow(QMenu* parent, const MenuRow& row)
{
    if (row.kind == MenuRow::Kind::Separator) {
        parent->addSeparator();
        return;
    }
    QAction* entry = parent->addAction(m_icons.icon(row.icon.toString()), QString());
    entry->setObjectName(row.name.toString());
    entry->setShortcut(QKeySequence(row.shortcut.toString()));
    entry->setCheckable(row.kind == MenuRow::Kind::Check);
    entry->setEnabled(!row.isLater());
    // Table rows stay where they are as long as the program runs.
    connect(entry, &QAction::triggered, this, [this, &row] { m_logic->menu().clicked(row); });
}

void WindowMenuBar::buildContextMenu()
{
    m_context = new QMenu(&m_window);
    m_context->setObjectName(u"popupDBGRID"_s);
    m_context->setToolTipsVisible(true);
    for (const ContextRow& row : contextRows()) {
        if (row.isSeparator()) {
            m_context->addSeparator();
            continue;
        }
        QAction* entry = nullptr;
        if (row.isMoreResult()) {
            m_moreResult = m_context->addMenu(QString());
            m_moreResult->setObjectName(u"mnuMoreResult"_s);
            entry = m_moreResult->menuAction();
        } else {
            entry = m_context->addAction(QString());
            connect(entry, &QAction::triggered, this,
                    [this, tag = row.tag.toString()] { m_logic->contextMenu().clicked(tag); });
        }
        entry->setIcon(m_icons.icon(row.icon.toString()));
        entry->setObjectName(u"mnuPOPDBGRID_%1"_s.arg(row.index));
    }
}

void WindowMenuBar::attach(MLVDB& logic)
{
    m_logic = &logic;
}

QMenu* WindowMenuBar::filledMenu(const QString& name) const
{
    return m_window.menuBar()->findChild<QMenu*>(name);
}

QAction* WindowMenuBar::find(const QString& name) const
{
    if (QAction* entry = m_window.menuBar()->findChild<QAction*>(name)) {
        return entry;
    }
    return m_context->findChild<QAction*>(name);
}

void WindowMenuBar::setText(const QString& name, const QString& caption, const QString& toolTip)
{
    QAction* entry = find(name);
    if (entry == nullptr) {
        return;
    }
    entry->setText(QString());
    QString used = usedBeside(entry);
    entry->setText(withAccelerator(caption, used));
    entry->setToolTip(toolTip);
}

void WindowMenuBar::setChecked(const QString& name, bool checked)
{
    if (QAction* entry = find(name)) {
        entry->setChecked(checked);
    }
}

void WindowMenuBar::setPlugIns(const std::vector<PlugInEntry>& entries)
{
    m_plugIns->clear();
    int index = 0;
    for (const PlugInEntry& plugIn : entries) {
        QAction* entry = m_plugIns->addAction(plugIn.caption);
        entry->setObjectName(u"mnuPlugIn_%1"_s.arg(index++));
        entry->setData(plugIn.name);
        connect(entry, &QAction::triggered, this,
                [this, name = plugIn.name] { m_logic->menu().plugInClicked(name); });
    }
    m_plugIns->menuAction()->setVisible(!entries.empty());
}

void WindowMenuBar::showContextMenu(const std::vector<MoreResultEntry>& more)
{
    fillMoreResult(more);
    m_context->popup(m_contextPlace());
}

void WindowMenuBar::fillMoreResult(const std::vector<MoreResultEntry>& entries)
{
    m_moreResult->clear();
    int index = 0;
    for (const MoreResultEntry& entry : entries) {
        if (entry.kind == MoreResultEntry::Kind::Separator) {
            m_moreResult->addSeparator();
            continue;
        }
        QAction* action = m_moreResult->addAction(entry.caption);
        action->setObjectName(u"mnuMoreResult_%1"_s.arg(index++));
        action->setVisible(entry.visible);
        action->setEnabled(entry.kind == MoreResultEntry::Kind::Search);
        connect(action, &QAction::triggered, this, [this, tag = entry.tag, text = entry.caption] {
            m_logic->contextMenu().moreResultClicked(tag, text);
        });
    }
}

} // namespace melovane
