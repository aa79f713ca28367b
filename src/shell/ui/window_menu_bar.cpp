#include "shell/ui/window_menu_bar.h"

#include "platform/qt/icon_set.h"
#include "shell/edit_commands.h"
#include "shell/mlvdb.h"
#include "shell/more_result.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

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

/// Names a key in an entry without reacting to it.
void showKey(QAction& entry, const QString& key)
{
    entry.setShortcutContext(Qt::WidgetShortcut);
    entry.setShortcut(QKeySequence(key, QKeySequence::PortableText));
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
    buildKeys();
}

void WindowMenuBar::buildKeys()
{
    auto* bar = new QShortcut(Qt::Key_F10, &m_window);
    connect(bar, &QShortcut::activated, this, [this] {
        m_window.menuBar()->setActiveAction(m_window.menuBar()->actions().constFirst());
    });
    auto* row = new QShortcut(Qt::SHIFT | Qt::Key_F10, &m_window);
    connect(row, &QShortcut::activated, this, [this] {
        // What the menu key does: the control with the keyboard opens its menu.
        if (QWidget* const control = m_window.focusWidget()) {
            const QPoint middle = control->rect().center();
            QContextMenuEvent event(QContextMenuEvent::Keyboard, middle,
                                    control->mapToGlobal(middle));
            QApplication::sendEvent(control, &event);
        }
    });
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { noteFocus(now); });
    m_window.menuBar()->installEventFilter(this);
}

QLineEdit* WindowMenuBar::textFieldOf(QWidget* control)
{
    // The line of a box with a list leaves the keyboard to the box.
    const auto* const box = qobject_cast<QComboBox*>(control);
    return box != nullptr ? box->lineEdit() : qobject_cast<QLineEdit*>(control);
}

/// The keyboard goes to the menu bar while its menus are walked through with keys.
void WindowMenuBar::noteFocus(QWidget* control)
{
    if (control != nullptr && control->window() == &m_window && control != m_window.menuBar()) {
        m_focus = control;
    }
}

/// A bar that had the keyboard when a menu was opened takes itself for the control to go back to,
/// and no key would reach anybody.
void WindowMenuBar::giveKeyboardBack()
{
    const QMenuBar* const bar = m_window.menuBar();
    if (m_focus && m_window.focusWidget() == bar && bar->activeAction() == nullptr) {
        m_focus->setFocus(Qt::MenuBarFocusReason);
    }
}

bool WindowMenuBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        // Behind the key, when the bar knows whether it was left.
        QMetaObject::invokeMethod(this, &WindowMenuBar::giveKeyboardBack, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

QMenu* WindowMenuBar::addMenu(QMenu* parent, const QString& name)
{
    QMenu* menu = parent ? parent->addMenu(QString()) : m_window.menuBar()->addMenu(QString());
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToHide, this, &WindowMenuBar::giveKeyboardBack,
            Qt::QueuedConnection);
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
            connect(menu, &QMenu::aboutToShow, this, [this] { m_logic->menu().judge(); });
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
    entry->setCheckable(row.kind == MenuRow::Kind::Check);
    // Table rows stay where they are as long as the program runs.
    connect(entry, &QAction::triggered, this, [this, &row] { m_logic->menu().clicked(row); });
    showKey(*entry, row.shortcut.toString());
    if (!row.shortcut.isEmpty()) {
        // Not the entry's own: it is as grey as it was when the menu was last seen.
        auto* key = new QShortcut(QKeySequence(row.shortcut.toString()), &m_window);
        connect(key, &QShortcut::activated, this, [this, &row] { m_logic->menu().clicked(row); });
    }
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
    buildEditRows();
}

/// What the views' own rows can be made to do, below what the suite's menu has.
void WindowMenuBar::buildEditRows()
{
    m_context->addSeparator();
    for (const EditRow& row : editRows()) {
        QAction* entry = m_context->addAction(m_icons.icon(row.icon.toString()), QString());
        entry->setObjectName(rowEntryName(row.name));
        connect(entry, &QAction::triggered, this,
                [this, tag = row.name.toString()] { m_logic->contextMenu().clicked(tag); });
    }
    m_context->addSeparator();
    QAction* rehearsal = m_context->addAction(m_icons.icon(u"mix"_s), QString());
    rehearsal->setObjectName(rowEntryName(kRehearsalCommand));
    connect(rehearsal, &QAction::triggered, this,
            [this] { m_logic->contextMenu().clicked(kRehearsalCommand.toString()); });
    for (const auto& [name, icon] :
         {std::pair{kRatingMenu, u"star"_s}, std::pair{kPlayActionMenu, u"mix"_s},
          std::pair{kListMenu, u"playlist"_s}}) {
        QMenu* menu = m_context->addMenu(m_icons.icon(icon), QString());
        menu->setObjectName(name.toString());
        menu->menuAction()->setObjectName(name.toString());
        menu->setToolTipsVisible(true);
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

void WindowMenuBar::setEnabled(const QString& name, bool enabled, const QString& toolTip)
{
    if (QAction* entry = find(name)) {
        entry->setEnabled(enabled);
        entry->setToolTip(toolTip);
    }
}

void WindowMenuBar::setVisible(const QString& name, bool visible)
{
    if (QAction* entry = find(name)) {
        entry->setVisible(visible);
    }
}

void WindowMenuBar::setKey(const QString& name, const QString& key)
{
    if (QAction* entry = find(name)) {
        showKey(*entry, key);
    }
}

void WindowMenuBar::setChoices(const QString& menu, const std::vector<MenuChoice>& choices)
{
    auto* const into = m_context->findChild<QMenu*>(menu);
    if (into == nullptr) {
        return;
    }
    into->clear();
    for (const MenuChoice& choice : choices) {
        QAction* entry = into->addAction(choice.caption);
        entry->setObjectName(choice.tag);
        entry->setCheckable(choice.checked);
        entry->setChecked(choice.checked);
        entry->setEnabled(choice.whyNot.isEmpty());
        entry->setToolTip(choice.whyNot);
        showKey(*entry, choice.key);
        connect(entry, &QAction::triggered, this,
                [this, tag = choice.tag] { m_logic->contextMenu().clicked(tag); });
    }
}

EditPlace WindowMenuBar::editPlace() const
{
    return m_focus && m_editPlace ? m_editPlace(m_focus) : EditPlace::None;
}

bool WindowMenuBar::canEditText(QStringView name) const
{
    const QLineEdit* const line = textFieldOf(m_focus);
    if (line == nullptr) {
        return false;
    }
    if (name == u"mnuPaste") {
        return !QApplication::clipboard()->text().isEmpty();
    }
    if (name == u"mnuSelectAll") {
        return !line->text().isEmpty();
    }
    return name != u"mnuPasteAppend" && line->hasSelectedText();
}

void WindowMenuBar::editText(QStringView name)
{
    QLineEdit* const line = textFieldOf(m_focus);
    if (line == nullptr) {
        return;
    }
    if (name == u"mnuCut") {
        line->cut();
    } else if (name == u"mnuCopy") {
        line->copy();
    } else if (name == u"mnuPaste") {
        line->paste();
    } else if (name == u"mnuSelectAll") {
        line->selectAll();
    } else if (name == u"mnuDelete") {
        line->del();
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
        // A heading is no entry that waits for something: it is as readable as the rest.
        QFont font = m_moreResult->font();
        font.setBold(entry.kind != MoreResultEntry::Kind::Search);
        action->setFont(font);
        connect(action, &QAction::triggered, this, [this, tag = entry.tag, text = entry.caption] {
            m_logic->contextMenu().moreResultClicked(tag, text);
        });
    }
}

} // namespace melovane
