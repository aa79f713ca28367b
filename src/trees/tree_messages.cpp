#include "trees/tree_messages.h"

#include "bus/message_names.h"
#include "trees/library_tree.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

TreeMessages::TreeMessages(MLVMessageBus& bus, const EventGuard& guard, Tree& tree)
    : m_tree(tree)
    , m_messBus(subscribe(bus, guard, *this, busTable()))
{}

std::span<const BusRow<TreeMessages>> TreeMessages::busTable()
{
    using Self = TreeMessages;
    static constexpr BusRow<Self> kRows[] = {
        {bus::kUpdateSortPlaylist, &Self::updateSort},
        {bus::kPlaylistSetLock, &Self::setLock},
        {bus::kUpdateTreeRow, &Self::treeRow},
        {bus::kUpdateGroupName, &Self::nothing},
        {bus::kRefreshPlaylist, &Self::nothing},
        {bus::kCreateToolBars, &Self::createToolBars},
        {bus::kUpdateToolTipText, &Self::nothing},
        {bus::kUpdateColor, &Self::updateColor},
        {bus::kRefreshAll, &Self::refreshAll},
        {bus::kRefreshPlaylistTree, &Self::refreshLists},
        {bus::kRefreshTree, &Self::refreshTree},
        {bus::kContextShowDir, &Self::showDirectory},
        {bus::kInfoFromFid, &Self::trackOf},
        {bus::kDbRefreshByFid, &Self::trackOf},
        {bus::kPlaylistPlay, &Self::listPlays},
        {bus::kDbDisconnect, &Self::disconnectDatabase},
        {bus::kDbReconnect, &Self::reconnectDatabase},
        {bus::kDbChange, &Self::changeDatabase},
    };
    return kRows;
}

void TreeMessages::updateSort(const MLVMessage&)
{
    m_tree.refreshLists();
}

void TreeMessages::setLock(const MLVMessage& message)
{
    m_tree.setListPicture(message.Value1.toText(), message.Value2.toText());
}

void TreeMessages::treeRow(const MLVMessage& message)
{
    m_tree.UpdatePlaylistTreeRow(message.Value1.toText(), message.Value2.toText());
}

void TreeMessages::nothing(const MLVMessage&) {}

void TreeMessages::createToolBars(const MLVMessage&)
{
    m_tree.createToolBar();
}

void TreeMessages::updateColor(const MLVMessage&)
{
    m_tree.UpdateColors();
}

void TreeMessages::refreshAll(const MLVMessage&)
{
    m_tree.Refresh(u"111111"_s);
}

void TreeMessages::refreshLists(const MLVMessage&)
{
    m_tree.refreshLists();
}

void TreeMessages::refreshTree(const MLVMessage& message)
{
    m_tree.Refresh(message.Value1.toText());
}

void TreeMessages::showDirectory(const MLVMessage& message)
{
    m_tree.showDirectory(message.Value1.toText(), message.Value2.toText());
}

void TreeMessages::trackOf(const MLVMessage& message)
{
    m_tree.showTrack(message.Value1.toText());
}

void TreeMessages::listPlays(const MLVMessage& message)
{
    m_tree.ActivatePlaylist(Pnid(message.Value1.toLong()));
}

void TreeMessages::disconnectDatabase(const MLVMessage&)
{
    m_tree.leaveLibrary();
}

void TreeMessages::reconnectDatabase(const MLVMessage&)
{
    m_tree.libraryIsBack();
}

void TreeMessages::changeDatabase(const MLVMessage&)
{
    m_tree.libraryChanged();
}

} // namespace melovane
