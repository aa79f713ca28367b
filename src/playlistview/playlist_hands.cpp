// What the user does with the playlist view: buttons, keys, double clicks, menus.
#include "bus/message_lookup.h"
#include "config/global_settings.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/grid_control.h"
#include "platform/system/letter_case.h"
#include "playlistview/playlist.h"
#include "views/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The program in which a double click plays the entry: keep.
const QString kPlayerProgram = u"melovanedj"_s;

/// Values of `GridSwapEditPlay`: what a double click does.
constexpr int kSwapEdit = 0;
constexpr int kSwapPlay = 1;

} // namespace

std::span<const ctl_Playlist::ToolRow> ctl_Playlist::toolTable()
{
    using View = ctl_Playlist;
    using Key = QString;
    static constexpr ToolRow kRows[] = {
        {u"all.book", [](View& view, const Key&) { view.bookPressed(); }},
        {u"all.delete", [](View& view, const Key&) { view.m_edits.deleteRows(); }},
        {u"all.copy", [](View& view, const Key&) { view.copyRows(); }},
        {u"all.clip.cut", [](View& view, const Key&) { view.m_edits.cutRows(); }},
        {u"all.clip.insert", [](View& view, const Key&) { view.m_edits.paste(false); }},
        {u"all.clip.append", [](View& view, const Key&) { view.m_edits.paste(true); }},
        {u"all.data.select", [](View& view, const Key&) { view.selectAllRows(); }},
        {u"all.sample", [](View& view, const Key&) { view.editSample(); }},
        {u"all.refresh",
         [](View& view, const Key&) {
             view.Refresh();
             // Another console over the same library may have taken steps.
             view.tellHistory();
         }},
        {u"play.stop", [](View& view, const Key& key) { view.monitorPressed(key); }},
        {u"play.start", [](View& view, const Key& key) { view.monitorPressed(key); }},
        {u"play.center", [](View& view, const Key& key) { view.monitorPressed(key); }},
        {u"play.mix", [](View& view, const Key&) { view.rehearse(); }},
        {u"play.zur", [](View& view, const Key&) { view.m_seek.step(-1); }},
        {u"play.vor", [](View& view, const Key&) { view.m_seek.step(1); }},
        {bus::kAllVolume,
         [](View& view, const Key&) { view.m_bus.SendMessage(bus::kVolumeMonitorShow); }},
        {bus::kPlaylistJingleLoop, [](View& view, const Key&) { view.m_edits.toggleLoop(); }},
        {u"all.undo", [](View& view, const Key&) { view.undo(); }},
        {u"all.redo", [](View& view, const Key&) { view.redo(); }},
    };
    return kRows;
}

void ctl_Playlist::toolPressed(const QString& key)
{
    for (const ToolRow& row : toolTable()) {
        if (row.key == key) {
            m_guard.run(key, [&] { row.work(*this, key); });
            return;
        }
    }
}

QString ctl_Playlist::whyNot(QStringView key, bool needsRow) const
{
    return m_gate.whyNot(key, {.isLent = !m_rows.isConnected(),
                               .hasRow = !needsRow || currentEntry() != Plid{},
                               .hasList = m_list.isOpen(),
                               .isLocked = m_list.locked,
                               .canUndo = m_known.undo,
                               .canRedo = m_known.redo,
                               .knowsPlay = PLID() != Plid{} && NextPlid() != Plid{}});
}

bool ctl_Playlist::SendKeyUp(const QString& command, bool asked)
{
    static constexpr std::pair<QStringView, QStringView> kKeys[] = {
        {u"play.start", u"play.start"},  {u"play.center", u"play.center"},
        {u"play.stop", u"play.stop"},    {u"copy", u"all.copy"},
        {u"selall", u"all.data.select"}, {u"insert", u"all.clip.insert"},
        {u"append", u"all.clip.append"}};
    if (!asked && !m_controls.grid.hasKeyboard()) {
        return false;
    }
    for (const auto& [name, key] : kKeys) {
        if (command == name) {
            toolPressed(key.toString());
            m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_list.pnid));
            return true;
        }
    }
    return false;
}

void ctl_Playlist::deletePressed()
{
    toolPressed(u"all.delete"_s);
}

void ctl_Playlist::bookPressed()
{
    const std::vector<RowRange> rows = m_controls.grid.selection();
    const bool several = rows.size() > 1 || (!rows.empty() && rows[0].first != rows[0].last);
    if (several) {
        FillTempMp3EditTable();
        m_bus.SendMessage(bus::kShowTagEditor);
    } else if (!GetFID().isEmpty()) {
        m_bus.SendMessage(bus::kShowTagEditPlaylist, GetFID());
    }
}

void ctl_Playlist::copyRows()
{
    copyDrag(DragKind::Plid, dragContent(), m_controls.grid, m_controls.clipboard);
}

void ctl_Playlist::selectAllRows()
{
    SetGridBookmarks(m_rows.count() == 0 ? -1 : 0, m_rows.count() - 1);
}

void ctl_Playlist::monitorPressed(const QString& key)
{
    const QString fid = GetFID();
    const bool stops = key == "play.stop"_L1;
    if (fid.isEmpty() && !stops) {
        return;
    }
    if (!stops) {
        m_monitorCommand = key;
    }
    m_marks.setHeard(stops ? Plid{} : currentEntry(), stops ? QString() : fid);
    m_bus.SendMessage(bus::monitorMessage(key), fid, numberOf(currentEntry()),
                      m_rows.current(u"Start"), m_rows.current(u"Stop"));
}

void ctl_Playlist::rowActivated(qint64 row)
{
    if (m_list.locked || row < 0 || row >= m_rows.count()) {
        return;
    }
    if (lowerCase(m_actions.program) == kPlayerProgram) {
        m_bus.SendMessage(
            m_list.jingles ? bus::kJinglelistPositionDblclick : bus::kPlaylistPositionDblclick,
            numberOf(m_list.pnid), m_rows.cell(row, u"PLID"), m_rows.cell(row, u"FID"));
    }
    const int swap = m_settings.GridSwapEditPlay();
    if (swap == kSwapPlay) {
        toolPressed(m_monitorCommand.isEmpty() ? u"play.start"_s : m_monitorCommand);
    } else if (swap == kSwapEdit) {
        m_bus.SendMessage(bus::kShowTagEditPlaylist, GetFID(), true);
    }
}

void ctl_Playlist::rowChanged(qint64 row)
{
    m_news.setCurrent(m_rows.cell(row, u"FID").toText());
}

void ctl_Playlist::contextMenuWanted()
{
    const QString fid = GetFID();
    if (!fid.isEmpty()) {
        m_bus.SendMessage(bus::kShowContextMenuPlaylist, fid);
    }
}

void ctl_Playlist::headMenuWanted()
{
    m_bus.SendMessage(bus::kShowGridLayout, u"PL"_s);
}

void ctl_Playlist::emptyButtonPressed()
{
    if (m_actions.newList) {
        m_actions.newList();
    }
}

void ctl_Playlist::append(const QString& dragText, Pnid list)
{
    m_guard.run(u"ctl_Playlist.append"_s, [&] { m_edits.appendDropped(dragText, list); });
}

void ctl_Playlist::drop(const DropOffer& offer)
{
    m_guard.run(u"ctl_Playlist.drop"_s, [&] { m_drags.drop(offer); });
}

} // namespace melovane
