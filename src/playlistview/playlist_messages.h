#pragma once

#include "bus/bus_table.h"
#include "playlistview/playlist_view_parts.h"

namespace melovane {

class ctl_Playlist;
class PlaylistEdits;

/// What the messages of others ask of the playlist view: from its making to its end. All of what it
/// is made with outlives it.
class PlaylistMessages
{
public:
    PlaylistMessages(const PlaylistViewParts& parts,
                     const PlaylistControls& controls,
                     const PlaylistActions& actions,
                     ctl_Playlist& view,
                     PlaylistEdits& edits,
                     BusSender& bus,
                     const EventGuard& guard);

private:
    [[nodiscard]] static std::span<const BusRow<PlaylistMessages>> busTable();

    // The list on the screen.
    void open(const MLVMessage& message, bool jingles);
    void activatePlaylist(const MLVMessage& message);
    void activateJingleList(const MLVMessage& message);
    void setLock(const MLVMessage& message);
    void nameChanged(const MLVMessage& message);
    void refreshList(const MLVMessage& message);
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);

    // Entries.
    void insertData(const MLVMessage& message);
    void appendData(const MLVMessage& message);
    void toActivePlaylist(const MLVMessage& message);
    void setPlayNormal(const MLVMessage& message);
    void setPlayLoop(const MLVMessage& message);
    void setPlayStop(const MLVMessage& message);
    void deleteMixStyles(const MLVMessage& message);
    void copyMixStyles(const MLVMessage& message);
    void resetList(const MLVMessage& message);
    void findTempo(const MLVMessage& message);
    void findTempoByHand(const MLVMessage& message);
    void fillTagTable(const MLVMessage& message);
    void showSampleTool(const MLVMessage& message);

    // Looks.
    void refreshPlayed(const MLVMessage& message);
    void refreshCells(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void createToolBars(const MLVMessage& message);
    void renewToolTips(const MLVMessage& message);
    void changeVolumeIcon(const MLVMessage& message);
    void saveLayout(const MLVMessage& message);
    void loadLayout(const MLVMessage& message);
    void autosize(const MLVMessage& message);

    const ConfigObjects& m_texts;
    cls_PLInsertMoveDel& m_lists;
    GridControl& m_grid;
    const PlaylistActions& m_actions;
    ctl_Playlist& m_view;
    PlaylistEdits& m_edits;
    BusSender& m_bus;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
