// What the user does with the rows of the library view: buttons, keys, history, double clicks.
#include "bus/message_lookup.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "library/mp3db.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/search_box.h"
#include "views/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Values of `GridSwapEditPlay`: what a double click does.
constexpr int kSwapEdit = 0;
constexpr int kSwapPlay = 1;
constexpr int kSwapAppend = 2;

/// The combinations that append a row whatever the setting is: Ctrl with the left mouse button (it
/// has the code 1) and Ctrl with Enter.
const QStringList kAppendKeys = {u"1-TASTE + STRG-TASTE"_s, u"EINGABETASTE + STRG-TASTE"_s};

} // namespace

std::span<const ctl_MP3DB::ToolRow> ctl_MP3DB::toolTable()
{
    using View = ctl_MP3DB;
    using Key = QString;
    constexpr auto pass = [](View& view, const Key& key) {
        const QString text = view.dragContent().text;
        if (!text.isEmpty()) {
            view.m_bus.SendMessage(bus::playlistMessage(key), text);
        }
    };
    constexpr auto monitor = [](View& view, const Key& key) { view.monitorPressed(key); };
    static constexpr ToolRow kRows[] = {
        {u"all.db.zur", [](View& view, const Key&) { view.replay(view.m_history.back()); }},
        {u"all.db.vor", [](View& view, const Key&) { view.replay(view.m_history.forward()); }},
        {u"all.suchen", [](View& view, const Key&) { view.search(view.m_controls.search.text()); }},
        {u"all.book", [](View& view, const Key&) { view.bookPressed(); }},
        {u"play_next", [](View& view, const Key&) { view.toPlayer(bus::kDjPlayerPlayNext); }},
        {u"play_sofort", [](View& view, const Key&) { view.toPlayer(bus::kDjPlayerPlaySofort); }},
        {u"open_dir", [](View& view, const Key&) { view.openDir(); }},
        {u"all.delete", [](View& view, const Key&) { view.deletePressed(); }},
        {u"all.copy", [](View& view, const Key&) { view.copyRows(); }},
        {u"all.data.select", [](View& view, const Key&) { view.selectAllRows(); }},
        {bus::kAllDbInsert, pass},
        {bus::kAllDbAppend, pass},
        {u"play.start", monitor},
        {u"play.center", monitor},
        {u"play.stop", monitor},
        {bus::kAllVolume,
         [](View& view, const Key&) { view.m_bus.SendMessage(bus::kVolumeMonitorShow); }},
        {u"all.sample", [](View& view, const Key&) { view.MelovaneKIVShow(); }},
        {u"all.tagpanel",
         [](View& view, const Key&) {
             view.m_bus.SendMessage(bus::kShowTagEditMp3db, view.GetFID());
         }},
    };
    return kRows;
}

void ctl_MP3DB::toolPressed(const QString& key)
{
    for (const ToolRow& row : toolTable()) {
        if (row.key == key) {
            row.work(*this, key);
            return;
        }
    }
}

QString ctl_MP3DB::whyNot(QStringView key, bool needsRow) const
{
    if (key == u"autosize.grid" && m_settings.AutosizeGrid() == 0) {
        return m_texts.text(u"library.autosize.off"_s);
    }
    return m_gate.whyNot(key, {.isLent = !m_rows.isConnected(),
                               .hasRow = !needsRow || m_controls.grid.currentRow() >= 0});
}

bool ctl_MP3DB::SendKeyUp(const QString& command)
{
    static constexpr std::pair<QStringView, QStringView> kKeys[] = {
        {u"play.start", u"play.start"},
        {u"play.center", u"play.center"},
        {u"play.stop", u"play.stop"},
        {u"copy", u"all.copy"},
        {u"selall", u"all.data.select"}};
    if (!m_controls.grid.hasKeyboard()) {
        return false;
    }
    for (const auto& [name, key] : kKeys) {
        if (command == name) {
            toolPressed(key.toString());
            return true;
        }
    }
    if (command != "insert"_L1 && command != "append"_L1) {
        return false;
    }
    const auto name = command == "insert"_L1 ? bus::kPlaylistInsertData : bus::kPlaylistAppendData;
    m_bus.SendMessage(name, dragContent().text);
    return true;
}

// ---- history

void ctl_MP3DB::LoadHist()
{
    if (const auto kept = m_history.load()) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"search.anew"_s, *kept));
    }
    tellHistory();
}

void ctl_MP3DB::SaveHist()
{
    m_history.save();
}

void ctl_MP3DB::tellHistory()
{
    emit historyChanged(m_history.canGoBack(), m_history.canGoForward());
}

void ctl_MP3DB::replay(const std::optional<HistoryEntry>& entry)
{
    if (!entry) {
        return;
    }
    // Only requests of trees can be shown again; a text search, and the empty entry of a run
    // without a history file, just name themselves in the status line.
    if (entry->kind != kTextSearch && !entry->kind.isEmpty()) {
        FindTreeValue({entry->kind, entry->field, entry->value, entry->byNumber}, false);
    }
    tellHistory();
    m_bus.SendMessage(bus::kShowStatusText, QString(entry->kind + u" :: "_s + entry->value));
    focusRows();
}

// ---- rows

void ctl_MP3DB::selectAllRows()
{
    if (m_rows.count() > 0) {
        m_controls.grid.select({{0, m_rows.count() - 1}});
    }
}

void ctl_MP3DB::copyRows()
{
    copyDrag(DragKind::FidMp3db, dragContent(), m_controls.grid, m_controls.clipboard);
}

void ctl_MP3DB::MelovaneKIVShow()
{
    const QString fid = GetFID();
    if (!fid.isEmpty() && m_actions.editSample) {
        m_actions.editSample(fid);
    }
}

void ctl_MP3DB::findTempo(const QString& cmd)
{
    m_actions.startBeatGauge(cmd, GetFID());
}

/// One track is edited in the panel, several in the tag tool.
void ctl_MP3DB::bookPressed()
{
    const std::vector<RowRange> rows = m_controls.grid.selection();
    const bool several = rows.size() > 1 || (!rows.empty() && rows[0].first != rows[0].last);
    if (several) {
        FillTempMp3EditTable();
        m_bus.SendMessage(bus::kShowTagEditor);
    } else if (!GetFID().isEmpty()) {
        m_bus.SendMessage(bus::kShowTagEditMp3db, GetFID(), true);
    }
}

void ctl_MP3DB::toPlayer(QStringView message)
{
    const QString fid = GetFID();
    if (!fid.isEmpty()) {
        m_bus.SendMessage(message, fid);
    }
}

void ctl_MP3DB::openDir()
{
    if (m_rows.data().Recordset() && m_controls.grid.currentRow() >= 0) {
        FindTreeValue({u"nix"_s, u"PATH"_s, m_rows.current(u"Path").toText()}, true);
    }
}

void ctl_MP3DB::toggleFavorit()
{
    if (!tellWhenLent()) {
        m_edits.toggleFavorit(m_controls.grid.currentRow());
    }
}

void ctl_MP3DB::deletePressed()
{
    if (!tellWhenLent()) {
        m_edits.toggleDelete(m_controls.grid.selection());
    }
}

void ctl_MP3DB::digitPressed(int digit)
{
    if (!tellWhenLent()) {
        m_edits.rate(m_controls.grid.currentRow(), digit);
    }
}

void ctl_MP3DB::monitorPressed(const QString& key)
{
    if (key != "play.stop"_L1) {
        m_monitorCommand = key; // a double click plays in the same way
    }
    m_bus.SendMessage(bus::monitorMessage(key), GetFID());
}

void ctl_MP3DB::rowActivated(qint64 row)
{
    if (row < 0 || row >= m_rows.count()) {
        return;
    }
    const int swap = m_settings.GridSwapEditPlay();
    if (swap == kSwapAppend || kAppendKeys.contains(m_settings.GetKeyStatusString())) {
        m_bus.SendMessage(bus::kPlaylistAppendData, dragContent().text);
    } else if (swap == kSwapPlay) {
        m_controls.grid.select({{row, row}});
        monitorPressed(m_monitorCommand.isEmpty() ? u"play.start"_s : m_monitorCommand);
    } else if (swap == kSwapEdit) {
        const QString field = m_controls.grid.dataField(m_controls.grid.currentColumn());
        if (m_edits.canEdit(row, field)) {
            m_controls.grid.editCurrentCell();
        } else {
            // What the cell does not take, the panel beside the rows does.
            bookPressed();
        }
    }
}

void ctl_MP3DB::contextMenuWanted()
{
    const QString fid = GetFID();
    if (!fid.isEmpty()) {
        m_bus.SendMessage(bus::kShowContextMenuMp3db, fid);
    }
}

void ctl_MP3DB::headMenuWanted()
{
    m_bus.SendMessage(bus::kShowGridLayout, u"DB"_s);
}

} // namespace melovane
