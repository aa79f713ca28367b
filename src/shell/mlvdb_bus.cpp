// What the main window does with the messages of the views.
#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "monitor/monitor_control.h"
#include "platform/controls/status_line.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "shell/mlvdb.h"
#include "shell/node_caption.h"
#include "shell/sibling_control.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kTempoFinder = u"beatgauge"_s;

} // namespace

std::span<const BusRow<MLVDB>> MLVDB::busTable()
{
    static constexpr BusRow<MLVDB> kRows[] = {
        {bus::kRefreshTreeGenre, &MLVDB::notYet},
        {bus::kRefreshTreeDir, &MLVDB::notYet},
        {bus::kRefreshTreeAlbum, &MLVDB::notYet},
        {bus::kRefreshTreeInterpret, &MLVDB::notYet},
        {bus::kEditTagShowEditBoxNewGenre, &MLVDB::editBoxNewGenre},
        {bus::kPlaylistSaveFileShow, &MLVDB::exportList},
        {bus::kShowGridLayout, &MLVDB::showGridLayout},
        {bus::kRunProc, &MLVDB::runProc},
        {bus::kBeatGaugeFidAuto, &MLVDB::beatGaugeAuto},
        {bus::kBeatGaugeFidManuell, &MLVDB::beatGaugeManual},
        {bus::kMonitorSeek, &MLVDB::monitorSeek},
        {bus::kMonitorSeekSet, &MLVDB::monitorSeekSet},
        {bus::kMonitorPlayStop, &MLVDB::monitorStop},
        {bus::kMonitorPlayStart, &MLVDB::monitorStart},
        {bus::kMonitorPlayCenter, &MLVDB::monitorCenter},
        {bus::kPlaylistChange, &MLVDB::playlistChange},
        {bus::kDjPlayerPlayNext, &MLVDB::playNext},
        {bus::kDjPlayerPlaySofort, &MLVDB::playNow},
        {bus::kShowStatusText, &MLVDB::statusText},
        {bus::kShowTagEditMp3db, &MLVDB::notYet},
        {bus::kShowTagEditPlaylist, &MLVDB::notYet},
        {bus::kShowTagEditor, &MLVDB::tagEditor},
        {bus::kShowContextMenuMp3db, &MLVDB::contextMenuLibrary},
        {bus::kShowContextMenuPlaylist, &MLVDB::contextMenuPlaylist},
        {bus::kTreeClickRow, &MLVDB::treeClick},
        {bus::kVolumeMonitorShow, &MLVDB::volumeMonitor},
        {bus::kRefreshPlaylistTree, &MLVDB::forwardToPlayer},
        {bus::kFavoritRefresh, &MLVDB::forwardToPlayer},
        {bus::kUpdateTreeRow, &MLVDB::forwardToPlayer},
    };
    return kRows;
}

void MLVDB::showGridLayout(const MLVMessage& message)
{
    if (message.Value1.toText() == "DB"_L1) {
        mnuDatenbank();
    } else {
        mnuPlaylist();
    }
}

void MLVDB::editBoxNewGenre(const MLVMessage&)
{
    m_parts.dialogs.askNewGenre();
}

void MLVDB::exportList(const MLVMessage& message)
{
    // Without a list chosen in the tree the one on the screen is meant.
    const int chosen = message.Value1.toLong();
    const int list = chosen > 0 ? chosen : m_parts.playlist.pnid();
    if (list > 0) {
        m_parts.dialogs.exportList(list);
    } else {
        showStatusText(m_parts.texts.text(u"export.nolist"_s));
    }
}

void MLVDB::runProc(const MLVMessage& message)
{
    if (lowerCase(message.Value1.toText()) == "sleeve.viewer"_L1) {
        tellMissing(m_parts.siblings.startSleeveViewer(message.Value2.toText()), u"SleeveViewer"_s);
    }
}

void MLVDB::beatGaugeAuto(const MLVMessage& message)
{
    tellMissing(m_parts.siblings.findTempo(u"auto"_s, message.Value1.toText()), kTempoFinder);
}

void MLVDB::beatGaugeManual(const MLVMessage& message)
{
    tellMissing(m_parts.siblings.findTempo(u"manuell"_s, message.Value1.toText()), kTempoFinder);
}

void MLVDB::startBeatGauge(const QString& cmd, const QString& fid, const QString& plid)
{
    tellMissing(m_parts.siblings.StartBeatGauge(cmd, fid, plid), kTempoFinder);
}

void MLVDB::monitorSeek(const MLVMessage&)
{
    m_parts.monitor.MonitorPlayer(u"SEEK"_s, {}, 0);
}

void MLVDB::monitorSeekSet(const MLVMessage& message)
{
    m_parts.monitor.MonitorPlayer(u"SEEK"_s, {}, message.Value1.toLong());
}

void MLVDB::monitorStop(const MLVMessage& message)
{
    m_parts.monitor.MonitorPlayer(u"STOP"_s, message.Value1.toText(), 0);
}

void MLVDB::monitorStart(const MLVMessage& message)
{
    m_parts.monitor.MonitorPlayer(u"PLAY"_s, message.Value1.toText(), 0);
}

void MLVDB::monitorCenter(const MLVMessage& message)
{
    m_parts.monitor.MonitorPlayer(u"PLAYCENTER"_s, message.Value1.toText(), 0);
}

void MLVDB::playlistChange(const MLVMessage&)
{
    // Not started anew by the next change: a long burst must not keep the player waiting.
    if (!m_timerRefreshPlayerData->isActive()) {
        m_timerRefreshPlayerData->start();
    }
}

void MLVDB::playNext(const MLVMessage& message)
{
    m_contextMenu.sendToPlayer(message.Value1.toText(), message::kPlayNext);
}

void MLVDB::playNow(const MLVMessage& message)
{
    m_contextMenu.sendToPlayer(message.Value1.toText(), message::kPlayNow);
}

void MLVDB::statusText(const MLVMessage& message)
{
    showStatusText(message.Value1.toText());
}

void MLVDB::tagEditor(const MLVMessage&)
{
    m_contextMenu.startTagEditor();
}

void MLVDB::contextMenuLibrary(const MLVMessage& message)
{
    m_contextMenu.open(message.Value1.toText(), true);
}

void MLVDB::contextMenuPlaylist(const MLVMessage& message)
{
    m_contextMenu.open(message.Value1.toText(), false);
}

void MLVDB::treeClick(const MLVMessage& message)
{
    const QString text = nodeCaption(message.Value1.toText(), message.Value2.toText());
    if (!text.isEmpty()) {
        m_controls.status.setPanel(StatusPanel::Node, text);
    }
}

void MLVDB::volumeMonitor(const MLVMessage&)
{
    if (!m_parts.suite.showVolumeMonitor()) {
        tellMissing(m_parts.siblings.startLevelPanel(), u"LevelPanel"_s);
    }
}

void MLVDB::forwardToPlayer(const MLVMessage& message)
{
    // What came from the player was put on the bus in the name of this window: no echo.
    if (message.Sender != m_bus.name()) {
        m_parts.suite.sendToPlayer(message::kRefreshPlaylistTree);
    }
}

void MLVDB::notYet(const MLVMessage&)
{
    showStatusText(m_parts.texts.text(u"status.later"_s));
}

} // namespace melovane
