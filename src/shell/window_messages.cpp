#include "shell/window_messages.h"

#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "monitor/monitor_control.h"
#include "platform/controls/status_line.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "shell/context_menu.h"
#include "shell/menu_commands.h"
#include "shell/node_caption.h"
#include "shell/player_commands.h"
#include "shell/sibling_commands.h"
#include "shell/sibling_control.h"
#include "shell/window_data.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Within this time several changes of playlists cost the player one message.
constexpr std::chrono::milliseconds kRefreshPlayerInterval{100};

/// What is heard of a track that is played to its end, in milliseconds.
constexpr double kLastPartMs = 5000;

} // namespace

std::span<const BusRow<WindowMessages>> WindowMessages::busTable()
{
    static constexpr BusRow<WindowMessages> kRows[] = {
        {bus::kRefreshTreeGenre, &WindowMessages::refreshTreeGenre},
        {bus::kRefreshTreeDir, &WindowMessages::refreshTreeDir},
        {bus::kRefreshTreeAlbum, &WindowMessages::refreshTreeAlbum},
        {bus::kRefreshTreeInterpret, &WindowMessages::refreshTreeInterpret},
        {bus::kEditTagShowEditBoxNewGenre, &WindowMessages::editBoxNewGenre},
        {bus::kPlaylistSaveFileShow, &WindowMessages::exportList},
        {bus::kShowGridLayout, &WindowMessages::showGridLayout},
        {bus::kRunProc, &WindowMessages::runProc},
        {bus::kBeatGaugeFidAuto, &WindowMessages::beatGaugeAuto},
        {bus::kBeatGaugeFidManuell, &WindowMessages::beatGaugeManual},
        {bus::kMonitorSeek, &WindowMessages::monitorSeek},
        {bus::kMonitorSeekSet, &WindowMessages::monitorSeekSet},
        {bus::kMonitorPlayStop, &WindowMessages::monitorStop},
        {bus::kMonitorPlayStart, &WindowMessages::monitorStart},
        {bus::kMonitorPlayCenter, &WindowMessages::monitorCenter},
        {bus::kPlaylistChange, &WindowMessages::playlistChange},
        {bus::kDjPlayerPlayNext, &WindowMessages::playNext},
        {bus::kDjPlayerPlaySofort, &WindowMessages::playNow},
        {bus::kShowStatusText, &WindowMessages::statusText},
        {bus::kShowTagEditMp3db, &WindowMessages::tagPanelOfLibrary},
        {bus::kShowTagEditPlaylist, &WindowMessages::tagPanelOfPlaylist},
        {bus::kPlayFromStartPos, &WindowMessages::playFromStart},
        {bus::kPlayFromStopPos, &WindowMessages::playFromStop},
        {bus::kShowTagEditor, &WindowMessages::tagEditor},
        {bus::kShowContextMenuMp3db, &WindowMessages::contextMenuLibrary},
        {bus::kShowContextMenuPlaylist, &WindowMessages::contextMenuPlaylist},
        {bus::kTreeClickRow, &WindowMessages::treeClick},
        {bus::kVolumeMonitorShow, &WindowMessages::volumeMonitor},
        {bus::kRefreshPlaylistTree, &WindowMessages::forwardToPlayer},
        {bus::kFavoritRefresh, &WindowMessages::forwardToPlayer},
        {bus::kUpdateTreeRow, &WindowMessages::forwardToPlayer},
    };
    return kRows;
}

WindowMessages::WindowMessages(Parts parts)
    : m_parts(std::move(parts))
    , m_timerRefreshPlayerData(
          m_parts.window.loop.makeTimer(kRefreshPlayerInterval, [this] { refreshPlayerData(); }))
{}

WindowMessages::~WindowMessages() = default;

void WindowMessages::start()
{
    m_messBus = subscribe(m_parts.window.bus, m_parts.guard, *this, busTable());
}

void WindowMessages::showGridLayout(const MLVMessage& message)
{
    if (message.Value1.toText() == "DB"_L1) {
        m_parts.menu.mnuDatenbank();
    } else {
        m_parts.menu.mnuPlaylist();
    }
}

void WindowMessages::editBoxNewGenre(const MLVMessage&)
{
    m_parts.window.dialogs.askNewGenre();
}

void WindowMessages::exportList(const MLVMessage& message)
{
    // Without a list chosen in the tree the one on the screen is meant.
    const int chosen = message.Value1.toLong();
    const int list = chosen > 0 ? chosen : m_parts.window.playlist.pnid();
    if (list > 0) {
        m_parts.window.dialogs.exportList(list);
    } else {
        m_parts.showStatusText(m_parts.window.texts.text(u"export.nolist"_s));
    }
}

void WindowMessages::runProc(const MLVMessage& message)
{
    if (lowerCase(message.Value1.toText()) == "sleeve.viewer"_L1) {
        m_parts.siblings.tellUnless(
            m_parts.window.siblings.startSleeveViewer(message.Value2.toText()), u"SleeveViewer"_s);
    }
}

void WindowMessages::beatGaugeAuto(const MLVMessage& message)
{
    findTempo(u"auto"_s, message.Value1.toText());
}

void WindowMessages::beatGaugeManual(const MLVMessage& message)
{
    findTempo(u"manuell"_s, message.Value1.toText());
}

void WindowMessages::findTempo(const QString& cmd, const QString& fid)
{
    m_parts.siblings.tellUnless(m_parts.window.siblings.findTempo(cmd, fid), u"beatgauge"_s);
}

void WindowMessages::monitorSeek(const MLVMessage&)
{
    // A seek begins where it plays: on the way to its place nobody wants to hear another one.
    MonitorControl& monitor = m_parts.window.monitor;
    monitor.MonitorPlayer(u"SEEK"_s, {}, monitor.positionFrames());
}

void WindowMessages::monitorSeekSet(const MLVMessage& message)
{
    m_parts.window.monitor.MonitorPlayer(u"SEEK"_s, {}, message.Value1.toLong());
}

void WindowMessages::monitorStop(const MLVMessage& message)
{
    m_parts.window.monitor.MonitorPlayer(u"STOP"_s, message.Value1.toText(), 0);
}

void WindowMessages::monitorStart(const MLVMessage& message)
{
    m_parts.window.monitor.MonitorPlayer(u"PLAY"_s, message.Value1.toText(), 0);
}

void WindowMessages::monitorCenter(const MLVMessage& message)
{
    m_parts.window.monitor.MonitorPlayer(u"PLAYCENTER"_s, message.Value1.toText(), 0);
}

void WindowMessages::playlistChange(const MLVMessage&)
{
    // Not started anew by the next change: a long burst must not keep the player waiting.
    if (!m_timerRefreshPlayerData->isActive()) {
        m_timerRefreshPlayerData->start();
    }
}

void WindowMessages::refreshPlayerData()
{
    m_timerRefreshPlayerData->stop();
    m_parts.guard.run(u"TimerRefreshPlayerData"_s, [this] {
        m_parts.window.data.idle();
        m_parts.window.suite.postToPlayer(message::kRefreshPlaylist);
    });
}

void WindowMessages::playNext(const MLVMessage& message)
{
    m_parts.player.playNext(message.Value1.toText());
}

void WindowMessages::playNow(const MLVMessage& message)
{
    m_parts.player.playNow(message.Value1.toText());
}

void WindowMessages::statusText(const MLVMessage& message)
{
    m_parts.showStatusText(message.Value1.toText());
}

void WindowMessages::tagEditor(const MLVMessage&)
{
    m_parts.siblings.editTags();
}

void WindowMessages::contextMenuLibrary(const MLVMessage& message)
{
    m_parts.contextMenu.open(message.Value1.toText(), true);
}

void WindowMessages::contextMenuPlaylist(const MLVMessage& message)
{
    m_parts.contextMenu.open(message.Value1.toText(), false);
}

void WindowMessages::treeClick(const MLVMessage& message)
{
    const QString text = nodeCaption(message.Value1.toText(), message.Value2.toText());
    if (!text.isEmpty()) {
        m_parts.status.setPanel(StatusPanel::Node, text);
    }
}

void WindowMessages::volumeMonitor(const MLVMessage&)
{
    if (!m_parts.window.suite.showVolumeMonitor()) {
        m_parts.siblings.tellUnless(m_parts.window.siblings.startLevelPanel(), u"LevelPanel"_s);
    }
}

void WindowMessages::forwardToPlayer(const MLVMessage& message)
{
    // What came from the player was put on the bus in the name of this window: no echo.
    if (message.Sender != m_parts.bus.name()) {
        if (!m_parts.window.suite.sendToPlayer(message::kRefreshPlaylistTree)) {
            m_parts.showStatusText(m_parts.window.texts.text(u"status.player.silent"_s));
        }
    }
}

/// A program of its own does it, so that the window never waits, and tells when the rows stand; the
/// old ones are shown until then. Without that program it is done here.
bool WindowMessages::rebuildTree(const QString& tree)
{
    m_parts.window.data.requireLibrary();
    SiblingControl& siblings = m_parts.window.siblings;
    if (siblings.isInstalled(u"Task.RebuildTree"_s) && siblings.startRebuildTree(tree)) {
        m_parts.showStatusText(m_parts.window.texts.text(u"status.tree.rebuilding"_s));
        return false;
    }
    m_parts.window.data.rebuildTree(tree);
    return true;
}

void WindowMessages::reloadTrees()
{
    m_parts.bus.SendMessage(bus::kRefreshTree, u"1111111"_s);
}

void WindowMessages::refreshTreeDir(const MLVMessage&)
{
    if (rebuildTree(u"Dir"_s)) {
        reloadTrees();
    }
}

void WindowMessages::refreshTreeGenre(const MLVMessage&)
{
    // The one that is not loaded again: who sends it does that.
    static_cast<void>(rebuildTree(u"Genre"_s));
}

void WindowMessages::refreshTreeAlbum(const MLVMessage&)
{
    if (rebuildTree(u"Album"_s)) {
        reloadTrees();
    }
}

void WindowMessages::refreshTreeInterpret(const MLVMessage&)
{
    if (rebuildTree(u"Interpret"_s)) {
        reloadTrees();
    }
}

void WindowMessages::tagPanelOfLibrary(const MLVMessage& message)
{
    m_parts.window.tags.show(message.Value1.toText(), message.Value2.toBool(), true);
}

void WindowMessages::tagPanelOfPlaylist(const MLVMessage& message)
{
    m_parts.window.tags.show(message.Value1.toText(), message.Value2.toBool(), false);
}

void WindowMessages::playFromStart(const MLVMessage& message)
{
    m_parts.window.monitor.MonitorPlayer(u"SEEK"_s, message.Value1.toText(),
                                         message.Value2.toLong());
}

void WindowMessages::playFromStop(const MLVMessage& message)
{
    const QString fid = message.Value1.toText();
    int frames = message.Value2.toLong();
    if (frames <= 0) {
        // Behind the end there is nothing to hear.
        const double length = m_parts.window.data.GetAllDataByFid(fid).DTimeMsec;
        frames = int(std::max(0.0, length - kLastPartMs) / Mod_MilliSecToMin::kFrameMs);
    }
    m_parts.window.monitor.MonitorPlayer(u"SEEK"_s, fid, frames);
}

} // namespace melovane
