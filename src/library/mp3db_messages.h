#pragma once

#include "bus/bus_table.h"

namespace melovane {

class ctl_MP3DB;

/// What the messages of others ask of the library view: from its making to its end. All of what it
/// is made with outlives it.
class Mp3dbMessages
{
public:
    Mp3dbMessages(MLVMessageBus& messages,
                  const EventGuard& guard,
                  ctl_MP3DB& view,
                  BusSender& bus);

private:
    [[nodiscard]] static std::span<const BusRow<Mp3dbMessages>> busTable();

    // The database.
    void disconnectDatabase(const MLVMessage& message);
    void reconnectDatabase(const MLVMessage& message);
    void changeDatabase(const MLVMessage& message);
    void changeConfig(const MLVMessage& message);

    // What is to be shown.
    void clickRow(const MLVMessage& message);
    void showDir(const MLVMessage& message);
    void clickImage(const MLVMessage& message);
    void findTrackOfBpm(const MLVMessage& message);
    void refreshByFid(const MLVMessage& message);
    void showTrackOf(const MLVMessage& message);

    // What is to be done with the rows.
    void findTempo(const MLVMessage& message);
    void findTempoByHand(const MLVMessage& message);
    void setFavorit(const MLVMessage& message);
    void fillTagTable(const MLVMessage& message);
    void showSampleTool(const MLVMessage& message);
    void passAllRows(const MLVMessage& message);

    // Looks.
    void createToolBars(const MLVMessage& message);
    void renewToolTips(const MLVMessage& message);
    void updateColor(const MLVMessage& message);
    void saveLayout(const MLVMessage& message);
    void loadLayout(const MLVMessage& message);
    void autosize(const MLVMessage& message);
    void changeVolumeIcon(const MLVMessage& message);

    ctl_MP3DB& m_view;
    BusSender& m_bus;
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
