#pragma once

#include "bus/bus_table.h"

#include <span>

namespace melovane {

class Tree;

/// What the library tree does when it is sent a message: its `MessBus_Message`.
class TreeMessages
{
public:
    /// Both outlive it.
    TreeMessages(MLVMessageBus& bus, const EventGuard& guard, Tree& tree);

private:
    [[nodiscard]] static std::span<const BusRow<TreeMessages>> busTable();
    void updateSort(const MLVMessage& message);
    void setLock(const MLVMessage& message);
    void treeRow(const MLVMessage& message);
    void nothing(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void refreshAll(const MLVMessage& message);
    void refreshLists(const MLVMessage& message);
    void refreshTree(const MLVMessage& message);
    void showDirectory(const MLVMessage& message);
    void trackOf(const MLVMessage& message);
    void listPlays(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);

    Tree& m_tree;
    MLVMessageBus::Subscription m_messBus;
};

} // namespace melovane
