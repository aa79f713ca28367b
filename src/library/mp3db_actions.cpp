// What the user does with the rows of the library view: buttons, keys, history, drags.
#include "bus/message_lookup.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "library/mp3db.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/search_box.h"
#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"
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

/// A history is 27 lines; a larger file is none.
constexpr qint64 kMostHistoryBytes = 4 * 1024 * 1024;

} // namespace

std::span<const ctl_MP3DB::ToolRow> ctl_MP3DB::toolTable()
{
    static constexpr ToolRow kRows[] = {
        {u"all.db.zur", &ctl_MP3DB::stepBack},
        {u"all.db.vor", &ctl_MP3DB::stepForward},
        {u"all.suchen", &ctl_MP3DB::searchAgain},
        {u"all.book", &ctl_MP3DB::bookPressed},
        {u"play_next", &ctl_MP3DB::toPlayer},
        {u"play_sofort", &ctl_MP3DB::toPlayer},
        {u"open_dir", &ctl_MP3DB::openDir},
        {u"all.delete", &ctl_MP3DB::deleteRows},
        {u"all.copy", &ctl_MP3DB::copyRows},
        {u"all.data.select", &ctl_MP3DB::selectAllRows},
        {bus::kAllDbInsert, &ctl_MP3DB::passSelection},
        {bus::kAllDbAppend, &ctl_MP3DB::passSelection},
        {u"play.start", &ctl_MP3DB::monitorPressed},
        {u"play.center", &ctl_MP3DB::monitorPressed},
        {u"play.stop", &ctl_MP3DB::monitorPressed},
        {u"all.sample", &ctl_MP3DB::MelovaneKIVShow},
    };
    return kRows;
}

void ctl_MP3DB::toolPressed(const QString& key)
{
    for (const ToolRow& row : toolTable()) {
        if (row.key == key) {
            (this->*row.handler)(key);
            return;
        }
    }
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
    const bool inserts = command == "insert"_L1;
    m_bus.SendMessage(inserts ? bus::kPlaylistInsertData : bus::kPlaylistAppendData,
                      dragContent().text);
    return true;
}

// ---- history

QString ctl_MP3DB::historyFile() const
{
    return path::join(m_paths.GetConfigPath(), u"suche.his"_s);
}

void ctl_MP3DB::LoadHist()
{
    try {
        if (m_files.fileExists(historyFile())) {
            m_history.read(m_files.read(historyFile(), kMostHistoryBytes));
        }
    } catch (const IoError&) {
        // A run without the history of the former ones.
    }
    tellHistory();
}

void ctl_MP3DB::SaveHist()
{
    try {
        m_files.writeWhole(historyFile(), m_history.toText());
    } catch (const IoError&) {
        // The former history stays.
    }
}

void ctl_MP3DB::tellHistory()
{
    emit historyChanged(m_history.canGoBack(), m_history.canGoForward());
}

void ctl_MP3DB::stepBack(const QString&)
{
    if (const auto entry = m_history.back()) {
        replay(*entry);
    }
}

void ctl_MP3DB::stepForward(const QString&)
{
    if (const auto entry = m_history.forward()) {
        replay(*entry);
    }
}

void ctl_MP3DB::replay(const HistoryEntry& entry)
{
    // Only requests of trees can be shown again; a text search, and the empty entry of a run
    // without a history file, just name themselves in the status line.
    if (entry.kind != kTextSearch && !entry.kind.isEmpty()) {
        FindTreeValue({entry.kind, entry.field, entry.value, entry.byNumber}, false);
    }
    tellHistory();
    m_bus.SendMessage(bus::kShowStatusText, QString(entry.kind + u" :: "_s + entry.value));
    m_controls.grid.focus();
}

// ---- the search line

void ctl_MP3DB::searchAgain(const QString&)
{
    search(m_controls.search.text());
}

void ctl_MP3DB::DelSuchlist()
{
    m_controls.search.setList(searchExamples());
}

void ctl_MP3DB::SetComboFokus()
{
    m_controls.search.focus();
}

// ---- rows

DragContent ctl_MP3DB::dragContent()
{
    if (!m_rowClone) {
        return {};
    }
    const bool isPlaylist =
        m_query.view() == LibraryView::PLGrid && m_rowClone->fieldIndex(u"PLID") >= 0;
    DragContent content = GetDragData(isPlaylist ? DragKind::Plid : DragKind::FidMp3db,
                                      m_controls.grid, *m_rowClone, DragOrder::ByPosition);
    QStringList found;
    for (const QString& file : content.files) {
        const QString place = m_actions.locate(file);
        if (!place.isEmpty()) {
            found.append(place);
        }
    }
    content.files = found;
    return content;
}

QString ctl_MP3DB::SetAllBookmarks()
{
    const qint64 count = m_data1.rowCount();
    if (count == 0) {
        return {};
    }
    m_controls.grid.select({{0, count - 1}});
    const QString text =
        GetDragData(DragKind::FidMp3db, m_controls.grid, *m_rowClone, DragOrder::ByPosition).text;
    return text.mid(dragText(DragKind::FidMp3db, {QString()}).size());
}

void ctl_MP3DB::selectAllRows(const QString&)
{
    if (m_data1.rowCount() > 0) {
        m_controls.grid.select({{0, m_data1.rowCount() - 1}});
    }
}

void ctl_MP3DB::copyRows(const QString&)
{
    const QString text = dragContent().text;
    if (!text.isEmpty()) {
        m_controls.clipboard.setText(text);
    }
}

void ctl_MP3DB::passSelection(const QString& key)
{
    const QString text = dragContent().text;
    if (!text.isEmpty()) {
        m_bus.SendMessage(bus::playlistMessage(key), text);
    }
}

void ctl_MP3DB::FillTempMp3EditTable()
{
    m_edits.FillTempMp3EditTable(m_controls.grid.selection());
}

void ctl_MP3DB::MelovaneKIVShow(const QString&)
{
    const QString fid = GetFID();
    if (!fid.isEmpty() && m_actions.editSample) {
        m_actions.editSample(fid);
    }
}

void ctl_MP3DB::bookPressed(const QString&)
{
    FillTempMp3EditTable();
    m_bus.SendMessage(bus::kShowTagEditor);
}

void ctl_MP3DB::toPlayer(const QString& key)
{
    const QString fid = GetFID();
    if (!fid.isEmpty()) {
        const bool isNext = key == "play_next"_L1;
        m_bus.SendMessage(isNext ? bus::kDjPlayerPlayNext : bus::kDjPlayerPlaySofort, fid);
    }
}

void ctl_MP3DB::openDir(const QString&)
{
    const Recordset* const set = m_data1.Recordset();
    const qint64 row = m_controls.grid.currentRow();
    if (set && row >= 0) {
        const QString folder = m_data1.cell(row, set->fieldIndex(u"Path")).toText();
        FindTreeValue({u"nix"_s, u"PATH"_s, folder}, true);
    }
}

void ctl_MP3DB::deleteRows(const QString&)
{
    m_edits.toggleDelete(m_controls.grid.selection());
}

void ctl_MP3DB::deletePressed()
{
    deleteRows({});
}

void ctl_MP3DB::digitPressed(int digit)
{
    m_edits.rate(m_controls.grid.currentRow(), digit);
}

void ctl_MP3DB::monitorPressed(const QString& key)
{
    m_monitorCommand = key;
    m_bus.SendMessage(bus::monitorMessage(key), GetFID());
}

void ctl_MP3DB::rowActivated(qint64 row)
{
    if (row < 0 || row >= m_data1.rowCount()) {
        return;
    }
    const int swap = m_settings.GridSwapEditPlay();
    if (swap == kSwapAppend || kAppendKeys.contains(m_settings.GetKeyStatusString())) {
        m_bus.SendMessage(bus::kPlaylistAppendData, dragContent().text);
    } else if (swap == kSwapPlay) {
        m_controls.grid.select({{row, row}});
        if (m_monitorCommand.isEmpty()) {
            m_monitorCommand = u"play.start"_s;
        }
        m_bus.SendMessage(bus::monitorMessage(m_monitorCommand), GetFID());
    } else if (swap == kSwapEdit) {
        m_controls.grid.editCurrentCell();
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
