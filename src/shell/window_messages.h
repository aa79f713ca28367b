#pragma once

#include "bus/bus_table.h"
#include "shell/mlvdb_parts.h"

#include <memory>

namespace melovane {

class ContextMenu;
class MenuCommands;
class PlayerCommands;
class SiblingCommands;
class Timer;

/// What the main window does with the messages of the views: its `MessBus_Message`.
class WindowMessages
{
public:
    /// All outlive the messages.
    struct Parts
    {
        MlvdbParts& window;
        StatusLine& status;
        BusSender& bus; ///< of the main window: what it sends itself is not passed on
        const EventGuard& guard;
        SiblingCommands& siblings;
        PlayerCommands& player;
        ContextMenu& contextMenu;
        MenuCommands& menu;
        std::function<void(const QString& text)> showStatusText;
    };

    explicit WindowMessages(Parts parts);
    ~WindowMessages();

    /// Acts on messages from now on. The views are there.
    void start();

private:
    [[nodiscard]] static std::span<const BusRow<WindowMessages>> busTable();
    void editBoxNewGenre(const MLVMessage& message);
    void exportList(const MLVMessage& message);
    void runProc(const MLVMessage& message);
    void beatGaugeAuto(const MLVMessage& message);
    void beatGaugeManual(const MLVMessage& message);
    void monitorSeek(const MLVMessage& message);
    void monitorSeekSet(const MLVMessage& message);
    void monitorStop(const MLVMessage& message);
    void monitorStart(const MLVMessage& message);
    void monitorCenter(const MLVMessage& message);
    void playlistChange(const MLVMessage& message);
    void playNext(const MLVMessage& message);
    void playNow(const MLVMessage& message);
    void statusText(const MLVMessage& message);
    void tagEditor(const MLVMessage& message);
    void contextMenuLibrary(const MLVMessage& message);
    void contextMenuPlaylist(const MLVMessage& message);
    void treeClick(const MLVMessage& message);
    void volumeMonitor(const MLVMessage& message);
    void forwardToPlayer(const MLVMessage& message);
    void tagPanelOfLibrary(const MLVMessage& message);
    void tagPanelOfPlaylist(const MLVMessage& message);
    void playFromStart(const MLVMessage& message);
    void playFromStop(const MLVMessage& message);
    void refreshTreeDir(const MLVMessage& message);
    void refreshTreeGenre(const MLVMessage& message);
    void refreshTreeAlbum(const MLVMessage& message);
    void refreshTreeInterpret(const MLVMessage& message);
    void showGridLayout(const MLVMessage& message);

    void refreshPlayerData();
    /// \param tree as the program that rebuilds trees names it
    /// True when the trees are to be loaded again at once.
    [[nodiscard]] bool rebuildTree(const QString& tree);
    void reloadTrees();
    void findTempo(const QString& cmd, const QString& fid);

    Parts m_parts;
    std::unique_ptr<Timer> m_timerRefreshPlayerData; ///< `TimerRefreshPlayerData`
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
