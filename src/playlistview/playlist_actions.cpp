// What the user does with the rows of the playlist view: buttons, keys, clipboard, ratings.
#include "bus/message_lookup.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/pointer_control.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "playlists/drag_list.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "playlistview/playlist.h"
#include "views/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The program in which a double click plays the entry: keep.
const QString kPlayerProgram = u"melovanedj"_s;

/// How far from either end of a track, in milliseconds, its sound is looked for, and what is sound.
constexpr int kCueWithinMs = 10'000;
constexpr int kCueLoudness = 700;

/// Values of `GridSwapEditPlay`: what a double click does.
constexpr int kSwapEdit = 0;
constexpr int kSwapPlay = 1;

} // namespace

std::span<const ctl_Playlist::ToolRow> ctl_Playlist::toolTable()
{
    static constexpr ToolRow kRows[] = {
        {u"all.book", &ctl_Playlist::bookPressed},
        {u"all.delete", &ctl_Playlist::deleteRows},
        {u"all.copy", &ctl_Playlist::copyRows},
        {u"all.clip.insert", &ctl_Playlist::pasteInsert},
        {u"all.clip.append", &ctl_Playlist::pasteAppend},
        {u"all.data.select", &ctl_Playlist::selectAllRows},
        {u"all.sample", &ctl_Playlist::samplePressed},
        {u"all.refresh", &ctl_Playlist::reloadPressed},
        {u"play.stop", &ctl_Playlist::monitorPressed},
        {u"play.start", &ctl_Playlist::monitorPressed},
        {u"play.center", &ctl_Playlist::monitorPressed},
        {u"play.zur", &ctl_Playlist::seekPressed},
        {u"play.vor", &ctl_Playlist::seekPressed},
        {bus::kAllVolume, &ctl_Playlist::volumePressed},
        {bus::kPlaylistJingleLoop, &ctl_Playlist::toggleLoop},
        {u"all.undo", &ctl_Playlist::undoPressed},
        {u"all.redo", &ctl_Playlist::redoPressed},
    };
    return kRows;
}

void ctl_Playlist::toolPressed(const QString& key)
{
    for (const ToolRow& row : toolTable()) {
        if (row.key == key) {
            try {
                (this->*row.handler)(key);
            } catch (const DbError& error) {
                m_bus.SendMessage(bus::kShowStatusText, error.text());
            }
            return;
        }
    }
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
            m_bus.SendMessage(bus::kPlaylistInsertDataEnd, numberOf(m_pnid));
            return true;
        }
    }
    return false;
}

// ---- play actions

void ctl_Playlist::setAktion(int aktion)
{
    const Plid entry = currentEntry();
    if (entry == Plid{} || !mayChange()) {
        return;
    }
    m_tools.functions.PlaylistSaveAktion(entry, aktion, u""_s);
    RefreshGrid();
    tellHistory();
    m_bus.SendMessage(bus::kPlaylistAktionChange, numberOf(entry));
}

std::vector<int> ctl_Playlist::aktionChoices() const
{
    if (m_jingleMode) {
        return {kAktionJinglePlay, kAktionLoop, kAktionJingle1, kAktionJingle2};
    }
    return {kAktionMix, kAktionStop, kAktionLoop};
}

int ctl_Playlist::currentAktion() const
{
    return currentEntry() == Plid{} ? -1 : cellOf(m_controls.grid.currentRow(), u"Aktion").toLong();
}

void ctl_Playlist::AutocueTitel()
{
    const Plid entry = currentEntry();
    if (entry == Plid{} || !mayChange()) {
        return;
    }
    const MlvPlaylistDetail detail = m_tools.functions.GetPlaylistDetailByPLID(entry);
    const BusyCursor busy(m_controls.pointer);
    const auto cues = detail.file.isEmpty()
                          ? std::nullopt
                          : m_actions.cuesOf(detail.file, kCueWithinMs, kCueLoudness);
    if (!cues) {
        m_bus.SendMessage(bus::kShowStatusText,
                          m_texts.text(u"playlist.cue.failed"_s, detail.Titel));
        return;
    }
    m_tools.functions.PlaylistSaveStartStop(entry, cues->start, cues->stop);
    changed();
}

void ctl_Playlist::toggleLoop(const QString&)
{
    const qint64 row = m_controls.grid.currentRow();
    const Plid entry = currentEntry();
    if (entry == Plid{} || !mayChange()) {
        return;
    }
    auto map = CommandToMap(cellOf(row, u"Command").toText());
    if (!map) {
        // A command that cannot be read means something to somebody; it stays.
        return;
    }
    const int present = cellOf(row, u"Aktion").toLong();
    int wanted = kAktionLoop;
    if (present == kAktionLoop) {
        const auto former = map->value(kFormerAktion);
        wanted = former ? leadingLong(*former) : kAktionMix;
        map->remove(kFormerAktion);
        if (m_jingleMode) {
            wanted = kAktionJinglePlay;
        }
    } else {
        CommandMapAdd(*map, kFormerAktion.toString(), QString::number(present));
    }
    // Never a null text: an empty command has to be written, too.
    m_tools.functions.PlaylistSaveAktion(entry, wanted, u""_s + MapToCommand(*map));
    RefreshGrid();
    tellHistory();
    if (m_jingleMode) {
        m_bus.SendMessage(bus::kPlaylistJingleChangePlaymode, row);
    } else {
        m_bus.SendMessage(bus::kPlaylistLoop, numberOf(entry), row);
    }
}

// ---- monitor

void ctl_Playlist::monitorPressed(const QString& key)
{
    const qint64 row = m_controls.grid.currentRow();
    const QString fid = GetFID();
    const bool stops = key == "play.stop"_L1;
    if (fid.isEmpty() && !stops) {
        return;
    }
    if (!stops) {
        m_monitorCommand = key;
    }
    m_look.setHeard(stops ? Plid{} : currentEntry());
    RefreshGrid();
    m_bus.SendMessage(bus::monitorMessage(key), fid, numberOf(currentEntry()),
                      cellOf(row, u"Start"), cellOf(row, u"Stop"));
}

void ctl_Playlist::seekPressed(const QString& key)
{
    m_actions.monitorStep(key == "play.vor"_L1 ? 1 : -1);
}

void ctl_Playlist::volumePressed(const QString&)
{
    m_bus.SendMessage(bus::kVolumeMonitorShow);
}

void ctl_Playlist::rowActivated(qint64 row)
{
    if (m_locked || row < 0 || row >= m_data1.rowCount()) {
        return;
    }
    if (lowerCase(m_actions.program) == kPlayerProgram) {
        m_bus.SendMessage(m_jingleMode ? bus::kJinglelistPositionDblclick
                                       : bus::kPlaylistPositionDblclick,
                          numberOf(m_pnid), cellOf(row, u"PLID"), cellOf(row, u"FID"));
    }
    const int swap = m_settings.GridSwapEditPlay();
    if (swap == kSwapPlay) {
        toolPressed(m_monitorCommand.isEmpty() ? u"play.start"_s : m_monitorCommand);
    } else if (swap == kSwapEdit) {
        m_bus.SendMessage(bus::kShowTagEditPlaylist, GetFID());
    }
}

void ctl_Playlist::samplePressed(const QString&)
{
    const Plid entry = currentEntry();
    if (entry != Plid{} && m_actions.editSample) {
        m_actions.editSample(m_tools.functions.GetPlaylistDetailByPLID(entry));
    }
}

// ---- selection

void ctl_Playlist::selectionChanged()
{
    m_selectedRows.clear();
}

QString ctl_Playlist::SetAllBookmarks(const QString& field)
{
    const qint64 count = m_data1.rowCount();
    if (count == 0) {
        return {};
    }
    m_controls.grid.select({{0, count - 1}});
    if (field == "null"_L1) {
        return {};
    }
    QStringList values;
    const auto rows = m_rowClone->Clone();
    const int column = rows->fieldIndex(field);
    for (rows->MoveFirst(); column >= 0 && !rows->Eof(); rows->MoveNext()) {
        values.append(rows->value(column).toText());
    }
    const QString joined = values.join(u',');
    if (field.compare("PLID"_L1, Qt::CaseInsensitive) == 0) {
        m_selectedRows = joined;
    }
    return joined;
}

void ctl_Playlist::SetGridBookmarks(qint64 start, qint64 stop)
{
    if (start < 0) {
        return;
    }
    const auto [from, to] = std::minmax(start, stop);
    m_controls.grid.select({{from, to}});
    m_anchor = to;
}

void ctl_Playlist::selectAllRows(const QString&)
{
    SetGridBookmarks(m_data1.rowCount() == 0 ? -1 : 0, m_data1.rowCount() - 1);
}

void ctl_Playlist::FillTempMp3EditTable()
{
    if (!m_rowClone || !m_data1.Database()) {
        return;
    }
    Transaction change(*m_data1.Database());
    const auto query = m_data1.Database()->queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
    for (const RowRange& range : m_controls.grid.selection()) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            query->SetParameter(u"INFID"_s, cellOf(row, u"FID"));
            query->SetParameter(u"INPLID"_s, cellOf(row, u"PLID"));
            query->Execute();
        }
    }
    query->Close();
    change.commit();
}

void ctl_Playlist::bookPressed(const QString&)
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

void ctl_Playlist::reloadPressed(const QString&)
{
    Refresh();
}

void ctl_Playlist::undoPressed(const QString&)
{
    undo();
}

void ctl_Playlist::redoPressed(const QString&)
{
    redo();
}

// ---- changes by key

void ctl_Playlist::digitPressed(int digit)
{
    const qint64 row = m_controls.grid.currentRow();
    const QString fid = GetFID();
    if (digit < 0 || digit > 5 || fid.isEmpty() || !mayChange()) {
        return;
    }
    try {
        const auto set = m_rowClone->Clone();
        set->SetAbsolutePosition(row);
        set->Edit();
        set->setValue(u"Note", storedRating(digit));
        set->Update();
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
        return;
    }
    m_jobs.SaveEditFID(fid);
    m_bus.SendMessage(bus::kDbRefreshByFid, fid);
}

void ctl_Playlist::deletePressed()
{
    toolPressed(u"all.delete"_s);
}

void ctl_Playlist::deleteRows(const QString&)
{
    if (!mayChange()) {
        return;
    }
    std::vector<RowRange> rows = m_controls.grid.selection();
    const qint64 current = m_controls.grid.currentRow();
    if (rows.empty() && current >= 0) {
        rows.push_back({current, current});
    }
    // Not the drag of the selection: an entry whose track is flagged must be able to go, too.
    QStringList ids;
    for (const RowRange& range : rows) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            ids.append(cellOf(row, u"PLID").toText());
        }
    }
    if (ids.isEmpty()) {
        return;
    }
    m_tools.snapshots.UndoSnapshot(m_pnid, *m_data1.Database(), undoaction::kDelete);
    m_tools.edits.DeletePlaylistRecords(dragText(DragKind::Plid, ids), m_pnid);
    changed();
    m_controls.grid.select({});
}

void ctl_Playlist::moveRow(int step)
{
    const qint64 row = m_controls.grid.currentRow();
    const qint64 neighbour = row + step;
    const Plid entry = currentEntry();
    if (!mayChange() || entry == Plid{} || neighbour < 0 || neighbour >= m_data1.rowCount()) {
        return;
    }
    m_timerPlaylistPlaylerUpdate->stop();
    m_tools.edits.swapWithNeighbour(entry, m_pnid, step);
    try {
        Refresh();
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
    }
    tellHistory();
    saveLater();
}

// ---- clipboard

void ctl_Playlist::copyRows(const QString&)
{
    const QString text = dragContent().text;
    if (!text.isEmpty()) {
        m_controls.clipboard.setText(text);
    }
}

void ctl_Playlist::pasteInsert(const QString&)
{
    paste(false);
}

void ctl_Playlist::pasteAppend(const QString&)
{
    paste(true);
}

void ctl_Playlist::paste(bool append)
{
    if (!mayChange()) {
        return;
    }
    const QString text = m_controls.clipboard.text();
    const DragList list = parseDragList(text);
    if (list.ids.isEmpty()) {
        return;
    }
    using Edits = cls_PLInsertMoveDel;
    if (list.type == "DRAG_TYP_PLID"_L1) {
        m_tools.edits.InsertORMoveFromPlaylist(append ? Edits::kAppendCopies : Edits::kInsertCopies,
                                               Sid{0}, m_pnid, text, newAktion());
    } else if (list.type == "DRAG_TYP_FID_MP3DB"_L1) {
        if (append) {
            m_tools.edits.AppendFromMP3DB(text, m_pnid, newAktion());
        } else {
            m_tools.edits.InsertFromMP3DB(sidOf(m_controls.grid.currentRow()), m_pnid, text,
                                          newAktion());
        }
    } else {
        return;
    }
    changed();
}

} // namespace melovane
