// What the playlist view does with the messages of others.
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/db/db_error.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "playlists/drag_list.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlistview/playlist.h"
#include "views/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A lock comes as a truth, a number or a text.
bool isOn(const Value& value)
{
    return value.isBool() ? value.toBool() : value.toLong() != 0 || value.toText() == "true"_L1;
}

/// What a message for both grids says when only the other one is meant.
constexpr int kOnlyLibrary = 2;

} // namespace

std::span<const BusRow<ctl_Playlist>> ctl_Playlist::busTable()
{
    static constexpr BusRow<ctl_Playlist> kRows[] = {
        {bus::kPlaylistSetPlayNormal, &ctl_Playlist::setPlayNormal},
        {bus::kPlaylistSetPlayLoop, &ctl_Playlist::setPlayLoop},
        {bus::kPlaylistSetPlayStop, &ctl_Playlist::setPlayStop},
        {bus::kDbRefreshByFid, &ctl_Playlist::refreshByFid},
        {bus::kBeatGaugeBpm, &ctl_Playlist::refreshTempo},
        {bus::kPlaylistBeatGauge, &ctl_Playlist::findTempo},
        {bus::kPlaylistBeatGaugeManuell, &ctl_Playlist::findTempoByHand},
        {bus::kMixstyleAllDel, &ctl_Playlist::deleteMixStyles},
        {bus::kMixstyleAllCopy, &ctl_Playlist::copyMixStyles},
        {bus::kCreateToolBars, &ctl_Playlist::createToolBars},
        {bus::kPlaylistSetLock, &ctl_Playlist::setLock},
        {bus::kUpdateTreeRow, &ctl_Playlist::nameChanged},
        {bus::kJinglelistAktivieren, &ctl_Playlist::activateJingleList},
        {bus::kPlaylistAktivieren, &ctl_Playlist::activatePlaylist},
        {bus::kUpdateToolTipText, &ctl_Playlist::renewToolTips},
        {bus::kUpdateColor, &ctl_Playlist::updateColor},
        {bus::kDbDisconnect, &ctl_Playlist::disconnectDatabase},
        {bus::kDbReconnect, &ctl_Playlist::reconnectDatabase},
        {bus::kDbChange, &ctl_Playlist::changeDatabase},
        {bus::kToAktivPlaylist, &ctl_Playlist::toActivePlaylist},
        {bus::kPlaylistInsertData, &ctl_Playlist::insertData},
        {bus::kPlaylistAllDbInsertData, &ctl_Playlist::insertData},
        {bus::kPlaylistAppendData, &ctl_Playlist::appendData},
        {bus::kPlaylistAllDbAppendData, &ctl_Playlist::appendData},
        {bus::kPlaylistAllDbAppendAktuellData, &ctl_Playlist::appendData},
        {bus::kSaveLayoutPlaylist, &ctl_Playlist::saveLayout},
        {bus::kLoadLayoutPlaylist, &ctl_Playlist::loadLayout},
        {bus::kLoadLayoutChangePlaylist, &ctl_Playlist::loadLayout},
        {bus::kAutosizePlaylist, &ctl_Playlist::autosize},
        {bus::kFillTempEditTable, &ctl_Playlist::fillTagTable},
        {bus::kShowMelovaneKiv, &ctl_Playlist::showSampleTool},
        {bus::kPlaylistReset, &ctl_Playlist::resetList},
        {bus::kRefreshPlaylist, &ctl_Playlist::refreshList},
        {bus::kRefreshPlaylistPlid, &ctl_Playlist::refreshPlayed},
        {bus::kVolumeMonitorChangeIcon, &ctl_Playlist::changeVolumeIcon},
    };
    return kRows;
}

// ---- opening

void ctl_Playlist::open(const MLVMessage& message, bool jingles)
{
    if (!m_connected) {
        return;
    }
    const bool former = m_jingleMode;
    m_jingleMode = jingles;
    try {
        load(Pnid(message.Value1.toLong()), isOn(message.Value2), true);
    } catch (const DbError&) {
        m_jingleMode = former;
        throw;
    }
    emit jingleModeChanged(jingles);
}

void ctl_Playlist::activatePlaylist(const MLVMessage& message)
{
    open(message, false);
}

void ctl_Playlist::activateJingleList(const MLVMessage& message)
{
    open(message, true);
}

void ctl_Playlist::setLock(const MLVMessage& message)
{
    // From a tree comes the key of a list in front, and the lock behind its picture.
    const QString first = message.Value1.toText();
    const qsizetype id = first.indexOf(u"??"_s);
    if (id >= 0 && Pnid(leadingLong(QStringView(first).mid(id + 2))) != m_pnid) {
        return;
    }
    applyLock(isOn(id >= 0 ? message.Value3 : message.Value1));
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::nameChanged(const MLVMessage&)
{
    tellSummary();
}

void ctl_Playlist::disconnectDatabase(const MLVMessage&)
{
    if (!m_connected) {
        return;
    }
    if (m_timerPlaylistPlaylerUpdate->isActive()) {
        saveNow();
    }
    m_keptEntry = currentEntry();
    m_keptTop = m_controls.grid.firstVisibleRow();
    m_connected = false;
    m_rowClone.reset();
    m_data1.closeDatabase();
}

void ctl_Playlist::reconnectDatabase(const MLVMessage&)
{
    if (m_connected) {
        return;
    }
    m_connected = true;
    m_data1.SetDatabaseName(m_settings.DbName());
    m_tools.edits.SetDbName(m_settings.DbName());
    Refresh();
    const qint64 row = rowOf(m_keptEntry);
    if (row >= 0) {
        m_controls.grid.goToRow(row, m_keptTop);
    }
    tellHistory();
}

void ctl_Playlist::changeDatabase(const MLVMessage&)
{
    if (!m_connected) {
        return;
    }
    if (m_settings.DbName() != m_data1.DatabaseName() && m_pnid != Pnid{}) {
        m_rowClone.reset();
        m_data1.SetDatabaseName(m_settings.DbName());
        m_tools.edits.SetDbName(m_settings.DbName());
    }
    Refresh();
    tellHistory();
}

void ctl_Playlist::refreshList(const MLVMessage&)
{
    Refresh();
    tellHistory();
}

void ctl_Playlist::refreshPlayed(const MLVMessage& message)
{
    m_plid = Plid(message.Value1.toLong());
    m_nextPlid = Plid(message.Value2.toLong());
    markPlayed();
}

// ---- values of entries

void ctl_Playlist::setPlayNormal(const MLVMessage&)
{
    setAktion(kAktionMix);
}

void ctl_Playlist::setPlayLoop(const MLVMessage&)
{
    setAktion(kAktionLoop);
}

void ctl_Playlist::setPlayStop(const MLVMessage&)
{
    setAktion(kAktionStop);
}

void ctl_Playlist::deleteMixStyles(const MLVMessage&)
{
    if (canChange()) {
        m_tools.functions.PlaylistDeleteAllMixStyle(m_pnid);
        changed();
    }
}

void ctl_Playlist::copyMixStyles(const MLVMessage&)
{
    if (canChange()) {
        m_tools.functions.PlaylistSetAllMixStyle(QString::number(numberOf(m_pnid)),
                                                 QString::number(numberOf(m_plid)),
                                                 QString::number(numberOf(m_nextPlid)));
        changed();
    }
}

void ctl_Playlist::resetList(const MLVMessage& message)
{
    const Pnid list{message.Value1.toLong()};
    if (m_locked || !m_connected ||
        m_tools.functions.catalogue().stateOf(list) != ListCatalogue::State::Open) {
        return;
    }
    m_tools.functions.PlaylistReset(list);
    afterChange(list);
    fitColumns();
}

void ctl_Playlist::refreshByFid(const MLVMessage&)
{
    RefreshGrid();
}

void ctl_Playlist::refreshTempo(const MLVMessage&)
{
    RefreshGrid();
}

void ctl_Playlist::findTempo(const MLVMessage&)
{
    m_actions.startBeatGauge(u"auto"_s, GetFID(), QString::number(numberOf(currentEntry())));
}

void ctl_Playlist::findTempoByHand(const MLVMessage&)
{
    m_actions.startBeatGauge(u"manuell"_s, GetFID(), QString::number(numberOf(currentEntry())));
}

void ctl_Playlist::fillTagTable(const MLVMessage& message)
{
    if (message.Value1.toLong() != kOnlyLibrary && m_controls.grid.hasKeyboard()) {
        FillTempMp3EditTable();
    }
}

// ---- the sample tool

void ctl_Playlist::showSampleTool(const MLVMessage& message)
{
    if (message.Value1.toLong() != kOnlyLibrary) {
        samplePressed({});
    }
}

void ctl_Playlist::takeSample(Plid entry, const QString& fid, int start, int stop)
{
    const bool isRange = start >= 0 && (stop == 0 || stop > start);
    if (!canChange() || !isRange || rowOf(entry) < 0 ||
        cellOf(rowOf(entry), u"FID").toText() != fid) {
        return;
    }
    m_tools.functions.PlaylistSaveStartStop(entry, start, stop);
    changed();
    m_bus.SendMessage(bus::kJinglePlaylistChange, numberOf(m_pnid));
}

// ---- tracks from others

void ctl_Playlist::insertData(const MLVMessage& message)
{
    const QString text = message.Value1.toText();
    if (mayChange() && !parseDragList(text).ids.isEmpty()) {
        m_tools.edits.InsertFromMP3DB(sidOf(m_controls.grid.currentRow()), m_pnid, text,
                                      newAktion());
        changed();
    } else if (m_pnid == Pnid{}) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.none.title"_s));
    }
    m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_pnid));
}

void ctl_Playlist::appendData(const MLVMessage& message)
{
    if (m_pnid == Pnid{}) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.none.title"_s));
    } else {
        appendTracks(message.Value1.toText(), m_pnid);
    }
    m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_pnid));
}

void ctl_Playlist::toActivePlaylist(const MLVMessage&)
{
    if (!m_rowClone) {
        return;
    }
    const QString text =
        GetDragData(DragKind::FidMp3db, m_controls.grid, *m_rowClone, DragOrder::ByPosition).text;
    const Pnid target = m_tools.edits.ExistPNID(kPlayingPlaylist);
    if (target != kNoPlaylist) {
        appendTracks(text, target);
    }
}

void ctl_Playlist::appendTracks(const QString& dragText, Pnid list)
{
    if (!m_connected || parseDragList(dragText).ids.isEmpty()) {
        return;
    }
    // The table knows: another list than the one that is shown may be meant.
    const ListCatalogue::State state = m_tools.functions.catalogue().stateOf(list);
    if (state == ListCatalogue::State::Locked || (m_locked && list == m_pnid)) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.norows.locked"_s));
        return;
    }
    if (state == ListCatalogue::State::Gone) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.none.title"_s));
        return;
    }
    const int aktion = list == m_pnid ? newAktion() : kAktionMix;
    m_tools.edits.AppendFromMP3DB(dragText, list, aktion);
    afterChange(list);
}

// ---- looks

void ctl_Playlist::createToolBars(const MLVMessage&)
{
    emit toolBarWanted();
    emit jingleModeChanged(m_jingleMode);
    tellHistory();
}

void ctl_Playlist::renewToolTips(const MLVMessage&)
{
    emit toolTipsWanted();
    tellHistory();
}

void ctl_Playlist::updateColor(const MLVMessage&)
{
    const UpdateColors colours(m_settings);
    m_look.setColours(colours);
    m_look.setDefaultMixTime(m_settings.DefaultMixTime());
    colours.UpdateSplitColors(m_controls.grid);
    RefreshGrid();
}

void ctl_Playlist::saveLayout(const MLVMessage&)
{
    m_actions.saveLayout(u"gridlayout_dbpl.grx"_s, m_controls.grid);
}

void ctl_Playlist::loadLayout(const MLVMessage& message)
{
    m_actions.loadLayout(message.Value1.toText(), m_controls.grid);
}

void ctl_Playlist::autosize(const MLVMessage&)
{
    m_controls.grid.fitColumns({u"aktion"_s, u"note"_s, u"nr"_s}, 60);
}

void ctl_Playlist::changeVolumeIcon(const MLVMessage& message)
{
    emit volumeIconChanged(std::clamp(message.Value1.toLong(), 0, 5));
}

} // namespace melovane
