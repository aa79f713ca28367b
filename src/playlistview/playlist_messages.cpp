#include "playlistview/playlist_messages.h"

#include "bus/message_names.h"
#include "bus/view_number.h"
#include "config/config_objects.h"
#include "platform/controls/grid_control.h"
#include "platform/system/leading_number.h"
#include "playlists/pl_insert_move_del.h"
#include "playlistview/playlist.h"
#include "playlistview/playlist_edits.h"
#include "views/volume_picture.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A lock comes as a truth, a number or a text.
bool isOn(const Value& value)
{
    return value.isBool() ? value.toBool() : value.toLong() != 0 || value.toText() == "true"_L1;
}

} // namespace

PlaylistMessages::PlaylistMessages(const PlaylistViewParts& parts,
                                   const PlaylistControls& controls,
                                   const PlaylistActions& actions,
                                   ctl_Playlist& view,
                                   PlaylistEdits& edits,
                                   BusSender& bus,
                                   const EventGuard& guard)
    : m_texts(parts.texts)
    , m_lists(parts.tools.edits)
    , m_grid(controls.grid)
    , m_actions(actions)
    , m_view(view)
    , m_edits(edits)
    , m_bus(bus)
    , m_messBus(subscribe(parts.bus, guard, *this, busTable()))
{}

std::span<const BusRow<PlaylistMessages>> PlaylistMessages::busTable()
{
    using Self = PlaylistMessages;
    static constexpr BusRow<Self> kRows[] = {
        {bus::kPlaylistSetPlayNormal, &Self::setPlayNormal},
        {bus::kPlaylistSetPlayLoop, &Self::setPlayLoop},
        {bus::kPlaylistSetPlayStop, &Self::setPlayStop},
        {bus::kDbRefreshByFid, &Self::refreshCells},
        {bus::kBeatGaugeBpm, &Self::refreshCells},
        {bus::kPlaylistBeatGauge, &Self::findTempo},
        {bus::kPlaylistBeatGaugeManuell, &Self::findTempoByHand},
        {bus::kMixstyleAllDel, &Self::deleteMixStyles},
        {bus::kMixstyleAllCopy, &Self::copyMixStyles},
        {bus::kCreateToolBars, &Self::createToolBars},
        {bus::kPlaylistSetLock, &Self::setLock},
        {bus::kUpdateTreeRow, &Self::nameChanged},
        {bus::kJinglelistAktivieren, &Self::activateJingleList},
        {bus::kPlaylistAktivieren, &Self::activatePlaylist},
        {bus::kUpdateToolTipText, &Self::renewToolTips},
        {bus::kUpdateColor, &Self::updateColor},
        {bus::kDbDisconnect, &Self::disconnectDatabase},
        {bus::kDbReconnect, &Self::reconnectDatabase},
        {bus::kDbChange, &Self::changeDatabase},
        {bus::kToAktivPlaylist, &Self::toActivePlaylist},
        {bus::kPlaylistInsertData, &Self::insertData},
        {bus::kPlaylistAllDbInsertData, &Self::insertData},
        {bus::kPlaylistAppendData, &Self::appendData},
        {bus::kPlaylistAllDbAppendData, &Self::appendData},
        {bus::kPlaylistAllDbAppendAktuellData, &Self::appendData},
        {bus::kSaveLayoutPlaylist, &Self::saveLayout},
        {bus::kLoadLayoutPlaylist, &Self::loadLayout},
        {bus::kLoadLayoutChangePlaylist, &Self::loadLayout},
        {bus::kAutosizePlaylist, &Self::autosize},
        {bus::kFillTempEditTable, &Self::fillTagTable},
        {bus::kShowMelovaneKiv, &Self::showSampleTool},
        {bus::kPlaylistReset, &Self::resetList},
        {bus::kRefreshPlaylist, &Self::refreshList},
        {bus::kRefreshPlaylistPlid, &Self::refreshPlayed},
        {bus::kVolumeMonitorChangeIcon, &Self::changeVolumeIcon},
    };
    return kRows;
}

// ---- the list on the screen

void PlaylistMessages::open(const MLVMessage& message, bool jingles)
{
    m_view.open(Pnid(message.Value1.toLong()), isOn(message.Value2), jingles);
}

void PlaylistMessages::activatePlaylist(const MLVMessage& message)
{
    open(message, false);
}

void PlaylistMessages::activateJingleList(const MLVMessage& message)
{
    open(message, true);
}

void PlaylistMessages::setLock(const MLVMessage& message)
{
    // From a tree comes the key of a list in front, and the lock behind its picture.
    const QString first = message.Value1.toText();
    const qsizetype id = first.indexOf(u"??"_s);
    if (id < 0) {
        m_view.setLocked(isOn(message.Value1));
    } else if (Pnid(leadingLong(QStringView(first).mid(id + 2))) == m_view.GetPNID()) {
        m_view.setLocked(isOn(message.Value3));
    }
}

void PlaylistMessages::nameChanged(const MLVMessage&)
{
    m_view.tellSummary();
}

void PlaylistMessages::refreshList(const MLVMessage&)
{
    m_view.Refresh();
    m_view.tellHistory();
}

void PlaylistMessages::disconnectDatabase(const MLVMessage&)
{
    m_view.disconnectDatabase();
}

void PlaylistMessages::reconnectDatabase(const MLVMessage&)
{
    m_view.reconnectDatabase();
}

void PlaylistMessages::changeDatabase(const MLVMessage&)
{
    m_view.changeDatabase();
}

// ---- entries

void PlaylistMessages::insertData(const MLVMessage& message)
{
    m_edits.addTracksAtRow(message.Value1.toText());
    m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_view.GetPNID()));
}

void PlaylistMessages::appendData(const MLVMessage& message)
{
    if (m_view.GetPNID() == Pnid{}) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.none.title"_s));
    } else {
        m_edits.appendTracks(message.Value1.toText(), m_view.GetPNID());
    }
    m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_view.GetPNID()));
}

void PlaylistMessages::toActivePlaylist(const MLVMessage&)
{
    const QString tracks = m_view.selectedTracks();
    if (tracks.isEmpty()) {
        return;
    }
    const Pnid target = m_lists.ExistPNID(kPlayingPlaylist);
    if (target != kNoPlaylist) {
        m_edits.appendTracks(tracks, target);
    } else {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.noplaying"_s));
    }
}

void PlaylistMessages::setPlayNormal(const MLVMessage&)
{
    m_edits.setAktion(kAktionMix);
}

void PlaylistMessages::setPlayLoop(const MLVMessage&)
{
    m_edits.setAktion(kAktionLoop);
}

void PlaylistMessages::setPlayStop(const MLVMessage&)
{
    m_edits.setAktion(kAktionStop);
}

void PlaylistMessages::deleteMixStyles(const MLVMessage&)
{
    m_edits.deleteMixStyles();
}

void PlaylistMessages::copyMixStyles(const MLVMessage&)
{
    m_edits.copyMixStyles(m_view.PLID(), m_view.NextPlid());
}

void PlaylistMessages::resetList(const MLVMessage& message)
{
    if (m_edits.reset(Pnid(message.Value1.toLong()))) {
        m_view.fitColumns();
    }
}

void PlaylistMessages::findTempo(const MLVMessage&)
{
    m_actions.startBeatGauge(u"auto"_s, m_view.GetFID(),
                             QString::number(numberOf(m_view.currentEntry())));
}

void PlaylistMessages::findTempoByHand(const MLVMessage&)
{
    m_actions.startBeatGauge(u"manuell"_s, m_view.GetFID(),
                             QString::number(numberOf(m_view.currentEntry())));
}

void PlaylistMessages::fillTagTable(const MLVMessage& message)
{
    if (message.Value1.toLong() != kViewIsLibrary && m_grid.hasKeyboard()) {
        m_view.FillTempMp3EditTable();
    }
}

void PlaylistMessages::showSampleTool(const MLVMessage& message)
{
    if (message.Value1.toLong() != kViewIsLibrary) {
        m_view.editSample();
    }
}

// ---- looks

void PlaylistMessages::refreshPlayed(const MLVMessage& message)
{
    m_view.setPlayed(Plid(message.Value1.toLong()), Plid(message.Value2.toLong()));
}

void PlaylistMessages::refreshCells(const MLVMessage&)
{
    m_view.RefreshGrid();
    m_view.tellHistory(); // a change of a track is a step, too
}

void PlaylistMessages::updateColor(const MLVMessage&)
{
    m_view.dress();
}

void PlaylistMessages::createToolBars(const MLVMessage&)
{
    emit m_view.toolBarWanted();
    emit m_view.jingleModeChanged(m_view.isJingleMode());
    m_view.tellHistory();
}

void PlaylistMessages::renewToolTips(const MLVMessage&)
{
    emit m_view.toolTipsWanted();
    m_view.tellHistory();
}

void PlaylistMessages::changeVolumeIcon(const MLVMessage& message)
{
    emit m_view.volumeIconChanged(volumePicture(message.Value1.toLong()));
}

void PlaylistMessages::saveLayout(const MLVMessage&)
{
    m_view.saveLayout();
}

void PlaylistMessages::loadLayout(const MLVMessage& message)
{
    m_actions.loadLayout(message.Value1.toText(), m_grid);
}

void PlaylistMessages::autosize(const MLVMessage&)
{
    m_view.autosize();
}

} // namespace melovane
