#include "trees/ui/playlist_favorit_widget.h"

#include "config/config_objects.h"
#include "config/tool_tip_text.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "trees/playlist_favorit.h"
#include "trees/ui/tree_words.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Tool
{
    QString key;
    QString icon;
    QString text; ///< key of the tool tip
};

/// The tool bar from left to right; a gap stands between the groups.
const std::vector<std::vector<Tool>>& toolGroups()
{
    static const std::vector<std::vector<Tool>> kGroups = {
        {{u"all.newdoc"_s, u"all.newdoc"_s, u"ToolTipPlaylistNew"_s},
         {u"all.newdir"_s, u"all.newdir"_s, u"tooltip.all.newdir"_s},
         {u"all.activate"_s, u"all.activate"_s, u"ToolTipPlaylistActiv"_s},
         {u"all.lock"_s, u"all.lock"_s, u"ToolTipPlaylistLock"_s}},
        {{u"all.book"_s, u"info"_s, u"ToolTipPlaylistDetail"_s},
         {u"all.refresh"_s, u"reload"_s, u"ToolTipRefresh"_s}},
        {{u"all.delete"_s, u"delete"_s, u"ToolTipPlaylistDel"_s}}};
    return kGroups;
}

} // namespace

PlaylistFavoritWidget::PlaylistFavoritWidget(const Skin& skin,
                                             const IconSet& icons,
                                             QWidget* parent)
    : Panel(skin, parent)
    , m_icons(icons)
    , m_tree(new OutlineTree(skin, icons, this))
{
    setObjectName(u"PlaylistFavorit1"_s);
    m_tree->setObjectName(u"PlaylistTree"_s);
    setView(m_tree);
}

TreeControl& PlaylistFavoritWidget::tree()
{
    return *m_tree;
}

void PlaylistFavoritWidget::attach(PlaylistFavorit& logic, const ConfigObjects& texts)
{
    translate(logic, texts);
    connect(m_tree, &OutlineTree::rowClicked, &logic, &PlaylistFavorit::rowClicked);
    connect(m_tree, &OutlineTree::rowEntered, &logic, &PlaylistFavorit::rowEntered);
    connect(m_tree, &OutlineTree::rowActivated, &logic, &PlaylistFavorit::rowActivated);
    connect(m_tree, &OutlineTree::editPressed, &logic, &PlaylistFavorit::rename);
    connect(m_tree, &OutlineTree::rowEdited, &logic, &PlaylistFavorit::rowEdited);
    connect(m_tree, &OutlineTree::editEnded, &logic, &PlaylistFavorit::editEnded);
    connect(m_tree, &OutlineTree::deletePressed, &logic, &PlaylistFavorit::deleteRow);
    connect(m_tree, &OutlineTree::menuWanted, &logic, [this, &logic](int row, const QPoint& place) {
        m_menuPlace = place;
        logic.contextMenu(row);
    });
    connect(m_tree, &OutlineTree::handLeft, &logic, &PlaylistFavorit::handLeft);
    m_tree->setDropTarget(logic.drops());
    connect(m_tree, &OutlineTree::rowDropped, &logic, &PlaylistFavorit::rowDropped);
    connect(&logic, &PlaylistFavorit::toolBarWanted, this,
            [this, &logic, &texts] { createToolBar(logic, texts); });
    connect(&logic, &PlaylistFavorit::commandsChanged, this,
            [this, &logic, &texts] { judgeTools(logic, texts); });
}

void PlaylistFavoritWidget::translate(const PlaylistFavorit& logic, const ConfigObjects& texts)
{
    m_tree->setAccessibleName(texts.text(u"lists.title"));
    m_tree->setWords(treeWords(texts));
    judgeTools(logic, texts);
}

void PlaylistFavoritWidget::createToolBar(PlaylistFavorit& logic, const ConfigObjects& texts)
{
    if (findChild<QToolButton*>(u"all.lock"_s) != nullptr) {
        judgeTools(logic, texts);
        return;
    }
    for (const std::vector<Tool>& group : toolGroups()) {
        for (const Tool& tool : group) {
            const QToolButton* button =
                addTool(tool.key, m_icons.icon(tool.icon), buttonTip(texts, tool.text));
            connect(button, &QToolButton::clicked, &logic,
                    [&logic, key = tool.key] { logic.toolPressed(key); });
        }
        toolRow()->addSpacing(6);
    }
    toolRow()->addStretch(1);
    judgeTools(logic, texts);
}

/// What each button does, and why it is grey.
void PlaylistFavoritWidget::judgeTools(const PlaylistFavorit& logic, const ConfigObjects& texts)
{
    for (const std::vector<Tool>& group : toolGroups()) {
        for (const Tool& tool : group) {
            if (auto* button = findChild<QToolButton*>(tool.key)) {
                tellTool(*button, buttonTip(texts, tool.text), {},
                         logic.canDo(tool.key) ? logic.whyNot(tool.key)
                                               : texts.text(u"status.later"));
            }
        }
    }
}

} // namespace melovane
