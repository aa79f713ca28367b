#include "trees/ui/tree_widget.h"

#include "config/config_objects.h"
#include "config/tool_tip_text.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/line_buttons.h"
#include "platform/qt/outline_tree.h"
#include "trees/library_tree.h"
#include "trees/ui/tree_words.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QToolButton>

#include <utility>
#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Units around the filter line.
constexpr int kMargin = 6;

struct KindButton
{
    QString key;
    QString icon;
    QString text;
    int kind; ///< of the stack; -1 for a command beside the kinds
};

std::vector<KindButton> kindButtons()
{
    return {
        {u"tree.dir"_s, u"tree.dir"_s, u"ToolTip.Tree.Dir"_s, int(TreeKind::Dir)},
        {u"tree.genre"_s, u"tree.genre"_s, u"ToolTip.Tree.Genre"_s, int(TreeKind::Genre)},
        {u"tree.album"_s, u"tree.album"_s, u"ToolTip.Tree.Album"_s, int(TreeKind::Album)},
        {u"tree.interpret"_s, u"tree.interpret"_s, u"ToolTip.Tree.Interpret"_s,
         int(TreeKind::Interpret)},
        {u"tree.playlist"_s, u"tree.playlist"_s, u"ToolTip.Tree.Playlist"_s,
         int(TreeKind::Playlist)},
        {u"tree.favorit"_s, u"tree.favorit"_s, u"ToolTip.Tree.Favorit"_s, int(TreeKind::Favorit)},
        {u"sleeve.viewer"_s, u"sleeve.viewer"_s, u"ToolTip.Sleeve.Viewer"_s, -1},
        {u"tree.erweitert"_s, u"tree.erweitert"_s, u"ToolTip.Tree.Erweitert"_s,
         int(TreeKind::Erweitert)},
        {u"tree.state"_s, u"tree.state"_s, u"ToolTip.Tree.state"_s, int(TreeKind::State)},
        {u"tree.info"_s, u"tree.info"_s, u"ToolTip.Tree.Info"_s, int(TreeKind::Info)}};
}

} // namespace

TreeWidget::TreeWidget(const Skin& skin, const IconSet& icons, QWidget* parent)
    : Panel(skin, parent)
    , m_icons(icons)
    , m_stack(new QStackedWidget)
    , m_rowTools(new QWidget)
    , m_filter(new QLineEdit(m_rowTools))
    , m_kinds(new QButtonGroup(this))
{
    setObjectName(u"Tree1"_s);
    buildTrees(skin);
    buildFilter();
    auto* view = new QWidget(this);
    auto* column = new QVBoxLayout(view);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_rowTools);
    column->addWidget(m_stack, 1);
    setView(view);
}

void TreeWidget::buildTrees(const Skin& skin)
{
    for (int kind = 0; kind < kTreeKinds; ++kind) {
        auto* tree = new OutlineTree(skin, m_icons, m_stack);
        tree->setObjectName(nameOf(TreeKind(kind)).toString());
        tree->setMultiSelection(TreeKind(kind) != TreeKind::Playlist &&
                                TreeKind(kind) != TreeKind::Info);
        m_trees[size_t(kind)] = tree;
        m_stack->addWidget(tree);
    }
}

void TreeWidget::buildFilter()
{
    m_filter->setObjectName(u"TreeFilter"_s);
    m_filter->setClearButtonEnabled(true);
    m_filter->addAction(m_icons.icon(u"search"_s, ThemeRole::TextSecond),
                        QLineEdit::LeadingPosition);
    m_filter->installEventFilter(this);
    auto* row = new QHBoxLayout(m_rowTools);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    row->setSpacing(2);
    row->addWidget(m_filter, 1);
}

OutlineTree& TreeWidget::outline() const
{
    return *m_trees[size_t(m_stack->currentIndex())];
}

TreeControl& TreeWidget::page(TreeKind kind)
{
    return *m_trees[size_t(kind)];
}

void TreeWidget::bringUp(TreeKind kind)
{
    if (m_stack->currentIndex() != int(kind)) {
        // Each tree is seen whole when the user comes to it.
        const bool hadKeyboard = outline().hasFocus();
        m_filter->clear();
        m_stack->setCurrentIndex(int(kind));
        if (hadKeyboard) {
            outline().focus();
        }
    }
    if (QAbstractButton* button = m_kinds->button(int(kind))) {
        button->setChecked(true);
    }
    setTabOrder(m_filter, &outline());
}

void TreeWidget::setGroupButtons(bool shown)
{
    if (m_newGroup != nullptr) {
        m_newGroup->setVisible(shown);
        m_delete->setVisible(shown);
    }
}

void TreeWidget::setFolds(bool folds)
{
    if (m_fold != nullptr) {
        m_fold->setIcon(m_icons.icon(folds ? u"tree.collaps.close"_s : u"tree.collaps.open"_s));
        m_fold->setToolTip(folds ? m_foldTip : m_openTip);
        m_fold->setAccessibleName(m_fold->toolTip());
    }
}

void TreeWidget::attach(Tree& logic, const ConfigObjects& texts)
{
    for (OutlineTree* tree : m_trees) {
        connectTree(*tree, logic);
    }
    translate(texts);
    connect(&logic, &Tree::toolBarWanted, this,
            [this, &logic, &texts] { createToolBar(logic, texts); });
    connect(m_filter, &QLineEdit::textChanged, &logic,
            [this, &logic](const QString& text) { filter(text, logic); });
}

void TreeWidget::connectTree(OutlineTree& tree, Tree& logic)
{
    connect(&tree, &OutlineTree::rowClicked, &logic, &Tree::rowClicked);
    connect(&tree, &OutlineTree::rowEntered, &logic, &Tree::rowEntered);
    connect(&tree, &OutlineTree::rowActivated, &logic, &Tree::rowActivated);
    connect(&tree, &OutlineTree::rowOpening, &logic, &Tree::rowOpening);
    connect(&tree, &OutlineTree::rowToggled, &logic, &Tree::rowToggled);
    connect(&tree, &OutlineTree::rowTicked, &logic, &Tree::rowTicked);
    connect(&tree, &OutlineTree::editPressed, &logic, &Tree::rename);
    connect(&tree, &OutlineTree::rowEdited, &logic, &Tree::rowEdited);
    connect(&tree, &OutlineTree::editEnded, &logic, &Tree::editEnded);
    connect(&tree, &OutlineTree::deletePressed, &logic, &Tree::deletePressed);
    connect(&tree, &OutlineTree::rowDropped, &logic, &Tree::rowDropped);
    connect(&tree, &OutlineTree::letterTyped, this, &TreeWidget::beginFilter);
    connect(&tree, &OutlineTree::menuWanted, &logic, [this, &logic](int row, const QPoint& place) {
        m_menuPlace = place;
        logic.contextMenu(row);
    });
    tree.setTickTip([&logic](int row) { return logic.tickTip(row); });
    if (&tree == m_trees[size_t(TreeKind::Playlist)]) {
        tree.setDropTarget(logic.drops());
    } else {
        tree.setDragSource(
            [&logic](const std::vector<int>& rows) { return logic.dragContent(rows); });
    }
}

QToolButton* TreeWidget::addRowButton(const QString& key, const QString& icon)
{
    auto* button = new QToolButton(m_rowTools);
    button->setObjectName(key);
    button->setAutoRaise(true);
    button->setIcon(m_icons.icon(icon));
    m_rowTools->layout()->addWidget(button);
    return button;
}

void TreeWidget::createToolBar(Tree& logic, const ConfigObjects& texts)
{
    if (m_fold != nullptr) {
        translate(texts);
        return;
    }
    for (const KindButton& kind : kindButtons()) {
        QToolButton* button =
            addTool(kind.key, m_icons.icon(kind.icon), buttonTip(texts, kind.text));
        if (kind.kind >= 0) {
            button->setCheckable(true);
            m_kinds->addButton(button, kind.kind);
        }
        connect(button, &QToolButton::clicked, &logic,
                [&logic, key = kind.key] { logic.toolPressed(key); });
    }
    toolRow()->addStretch(1);
    // All ten stand in one row of the panel as it is at first.
    setTightTools();
    m_kinds->button(m_stack->currentIndex())->setChecked(true);
    const auto add = [&](const QString& key, const QString& icon) {
        QToolButton* button = addRowButton(key, icon);
        connect(button, &QToolButton::clicked, &logic, [&logic, key] { logic.toolPressed(key); });
        return button;
    };
    m_newGroup = add(u"NEWGENRE"_s, u"all.newdir"_s);
    m_delete = add(u"DELETE"_s, u"delete"_s);
    m_fold = add(u"tree.collaps.close"_s, u"tree.collaps.close"_s);
    add(u"all.refresh"_s, u"reload"_s);
    translate(texts);
    setGroupButtons(logic.kind() == TreeKind::Playlist);
}

void TreeWidget::translate(const ConfigObjects& texts)
{
    for (OutlineTree* tree : m_trees) {
        tree->setFilterNote(texts.text(u"tree.filter.none"));
        tree->setWords(treeWords(texts));
    }
    m_filter->setPlaceholderText(texts.text(u"tree.filter"));
    m_filter->setToolTip(texts.text(u"tree.filter.tip"));
    m_filter->setAccessibleName(texts.text(u"tree.filter"));
    nameLineButtons(*m_filter, texts.text(u"tree.filter"), texts.text(u"line.clear"));
    const auto name = [this](const QString& key, const QString& tip) {
        // The tools come with the message that makes them.
        if (auto* const button = findChild<QToolButton*>(key)) {
            button->setToolTip(tip);
            button->setAccessibleName(tip);
        }
    };
    for (const KindButton& kind : kindButtons()) {
        name(kind.key, buttonTip(texts, kind.text));
        if (kind.kind >= 0) {
            m_trees[size_t(kind.kind)]->setAccessibleName(texts.text(kind.text));
        }
    }
    name(u"NEWGENRE"_s, texts.text(u"ToolTipTreeNewGroup"));
    name(u"DELETE"_s, texts.text(u"ToolTipTreeDelGroup"));
    name(u"all.refresh"_s, texts.text(u"ToolTipRefresh"));
    const bool isOpenTip = m_fold != nullptr && m_fold->toolTip() == m_openTip;
    m_foldTip = texts.text(u"ToolTip.Tree.collaps.close");
    m_openTip = texts.text(u"tree.fold.open");
    name(u"tree.collaps.close"_s, isOpenTip ? m_openTip : m_foldTip);
}

void TreeWidget::filter(const QString& text, Tree& logic)
{
    if (!text.isEmpty()) {
        logic.filterBegins();
    }
    outline().setFilter(text);
}

/// A letter that was typed in a tree goes into the filter line, and the keyboard with it.
void TreeWidget::beginFilter(const QString& text)
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->setText(m_filter->text() + text);
}

bool TreeWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            m_filter->clear();
            outline().focus();
            return true;
        }
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            outline().focus();
            if (outline().currentRow() < 0) {
                outline().setCurrentRow(outline().firstVisibleRow());
            }
            return true;
        }
    }
    return Panel::eventFilter(watched, event);
}

} // namespace melovane
