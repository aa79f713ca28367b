#pragma once

#include "bus/mlv_message_bus.h"
#include "store/all_data.h"

#include <functional>

namespace melovane {

class ConfigObjects;
class EditCommands;
struct EditRow;
class GlobalSettings;
struct LibraryCommands;
class MenuControl;
class MonitorControl;
class PlayerCommands;
struct PlaylistCommands;
class SiblingCommands;
class WindowData;

/// What the context menu reaches; outlives it.
struct ContextMenuParts
{
    GlobalSettings& settings;
    const ConfigObjects& texts;
    const LibraryCommands& library;
    const PlaylistCommands& playlist;
    const EditCommands& edit;
    WindowData& data;
    SiblingCommands& siblings;
    PlayerCommands& player;
    MonitorControl& monitor;
    MenuControl& menus;
};

/// `mnuPOPDBGRID`: what can be done with one track of a grid.
class ContextMenu
{
public:
    ContextMenu(ContextMenuParts parts, MLVMessageBus& bus, const QString& windowName);

    /// Reads the track that the entries are about from now on, and judges them.
    void prepare(const QString& fid, bool fromLibrary);

    /// The same, and opens the menu.
    void open(const QString& fid, bool fromLibrary);

    /// An entry, by its tag.
    void clicked(const QString& tag);
    /// An entry of `mnuMoreResult`.
    void moreResultClicked(const QString& tag, const QString& caption);

private:
    void play();
    void playCenter();
    void stop();
    void playNow();
    void playNext();
    void showFolder();
    void showInTree();
    void markForEdit();
    void editTags();
    void showSample();
    void autosizeGrid();
    void findTempo();
    void findTempoByHand();
    void rehearse();

    void monitor(const QString& action);
    void sendFromView(QStringView command);
    void showEntries();
    void showEditRow(const EditRow& row);
    void showRehearsal();
    void showRatings();
    void showPlayActions();
    void showListCommands();
    [[nodiscard]] bool changeList(const QString& command);
    [[nodiscard]] QString whyNot(QStringView command) const;

    ContextMenuParts m_parts;
    BusSender m_bus;
    MlvAllData m_track;
    bool m_fromLibrary = true;
};

} // namespace melovane
