#include "playlistview/playlist.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/warnings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/timers.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "store/milli_sec_to_min.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The user's hand rests: what it moved is noted once.
constexpr std::chrono::milliseconds kSaveInterval{500};

/// Rapid scrolling tells the other views no more often than this.
constexpr std::chrono::milliseconds kInfoInterval{250};

/// Columns that are never fitted to their contents, and the widest that others get, in figures.
const QStringList kFixedColumns = {u"aktion"_s, u"note"_s, u"nr"_s};
constexpr double kWidestFitted = 60;

/// Rows of a jingle list that the player has ready, unless the setting says otherwise.
constexpr int kDefaultJinglePlayers = 5;

QString number(Pnid list)
{
    return sql::number(numberOf(list));
}

} // namespace

ctl_Playlist::ctl_Playlist(const PlaylistViewParts& parts,
                           PlaylistControls controls,
                           PlaylistActions actions)
    : m_settings(parts.settings)
    , m_texts(parts.texts)
    , m_tools(parts.tools)
    , m_controls(controls)
    , m_actions(std::move(actions))
    , m_bus(parts.bus, u"ctl_Playlist"_s)
    , m_look(parts.clock, parts.texts)
    , m_data1(parts.engine)
    , m_jobs(parts.engine, parts.settings)
    , m_timerPlaylistPlaylerUpdate(parts.loop.makeTimer(kSaveInterval, [this] { saveNow(); }))
    , m_timerInfo(parts.loop.makeTimer(kInfoInterval,
                                       [this] {
                                           m_timerInfo->stop();
                                           if (m_waitingInfo != m_toldInfo) {
                                               tellPlayed(m_waitingInfo);
                                           }
                                       }))
    , m_guard(guardOverBus(m_bus, parts.texts, parts.settings, parts.log))
    , m_messBus(subscribe(parts.bus, m_guard, *this, busTable()))
{}

ctl_Playlist::~ctl_Playlist() = default;

void ctl_Playlist::start()
{
    updateColor({});
    updateEmptyNote();
    tellSummary();
    tellHistory();
}

void ctl_Playlist::end()
{
    if (m_timerPlaylistPlaylerUpdate->isActive()) {
        saveNow();
    }
    m_actions.saveLayout(u"gridlayout_dbpl.grx"_s, m_controls.grid);
}

// ---- the list

void ctl_Playlist::load(Pnid list, bool locked, bool makeActive)
{
    if (m_timerPlaylistPlaylerUpdate->isActive()) {
        saveNow();
    }
    if (makeActive) {
        m_active = list;
    }
    const QString former = m_data1.RecordSource();
    const QString statement = u"select * from vpl_all where pnid="_s + number(list);
    if (statement != former) {
        const BusyCursor busy(m_controls.pointer);
        m_data1.SetDatabaseName(m_settings.DbName());
        m_data1.SetRecordSource(statement);
        try {
            requery();
        } catch (const DbError&) {
            // The former list is still shown, and a second try is no repetition.
            m_data1.SetRecordSource(former);
            throw;
        }
        m_selectedRows.clear();
        m_anchor = -1;
    }
    m_pnid = list;
    applyLock(locked);
    if (statement != former) {
        fitColumns();
        showPlayedEntry();
    }
    m_tools.edits.SetDbName(m_settings.DbName());
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::requery()
{
    m_data1.Refresh();
    m_rowClone = m_data1.Recordset()->Clone();
    m_checkedDrag.clear();
}

void ctl_Playlist::applyLock(bool locked)
{
    m_locked = locked;
    m_look.setLocked(locked);
    const int players =
        m_settings.GetKeyValueLong(u"Global"_s, u"Jingle.Players"_s, kDefaultJinglePlayers);
    m_look.setJingleMode(m_jingleMode, players);
    m_look.setDefaultMixTime(m_settings.DefaultMixTime());
    RefreshGrid();
}

void ctl_Playlist::fitColumns()
{
    if (m_settings.AutosizeGrid() != 0) {
        m_controls.grid.fitColumns(kFixedColumns, kWidestFitted);
    }
}

void ctl_Playlist::Refresh()
{
    if (m_pnid == Pnid{} || !m_connected) {
        return;
    }
    if (m_tools.functions.catalogue().stateOf(m_pnid) == ListCatalogue::State::Gone) {
        showNoList();
        return;
    }
    const qint64 row = m_controls.grid.currentRow();
    const qint64 top = m_controls.grid.firstVisibleRow();
    const auto former = m_rowClone ? m_rowClone->Clone() : nullptr;
    requery();
    const qint64 last = m_data1.rowCount() - 1;
    qint64 wanted = std::min(row, last);
    if (former && row >= 0 && row < former->rowCount()) {
        former->SetAbsolutePosition(row);
        const qint64 found = m_rowClone->rowOfSame(*former, former->bookmark());
        wanted = found >= 0 ? found : wanted;
    }
    if (wanted >= 0) {
        m_controls.grid.goToRow(wanted, top);
    }
    tellSummary();
    updateEmptyNote();
}

/// The list was deleted: what the user does now must not reach another one.
void ctl_Playlist::showNoList()
{
    m_timerPlaylistPlaylerUpdate->stop();
    m_rowClone.reset();
    m_data1.SetRecordSource({});
    m_data1.closeDatabase();
    m_pnid = {};
    m_selectedRows.clear();
    applyLock(false);
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::RefreshGrid()
{
    m_data1.refreshCells();
}

Value ctl_Playlist::cellOf(qint64 row, QStringView field) const
{
    const Recordset* const set = m_data1.Recordset();
    const int column = set ? set->fieldIndex(field) : -1;
    return column >= 0 && row >= 0 && row < m_data1.rowCount() ? m_data1.cell(row, column)
                                                               : Value();
}

Plid ctl_Playlist::currentEntry() const
{
    return Plid(cellOf(m_controls.grid.currentRow(), u"PLID").toLong());
}

QString ctl_Playlist::GetFID() const
{
    return cellOf(m_controls.grid.currentRow(), u"FID").toText();
}

Sid ctl_Playlist::sidOf(qint64 row) const
{
    return Sid(cellOf(row, u"SID").toLong());
}

qint64 ctl_Playlist::rowOf(Plid entry) const
{
    if (!m_rowClone || entry == Plid{}) {
        return -1;
    }
    const auto rows = m_rowClone->Clone();
    const int column = rows->fieldIndex(u"PLID");
    const qint64 wanted = numberOf(entry);
    for (rows->MoveFirst(); column >= 0 && !rows->Eof(); rows->MoveNext()) {
        if (rows->value(column).toInt64() == wanted) {
            return rows->AbsolutePosition();
        }
    }
    return -1;
}

void ctl_Playlist::SetAbsolutePosition(Plid entry)
{
    const qint64 row = rowOf(entry);
    if (row >= 0) {
        m_controls.grid.goToRow(row, m_controls.grid.firstVisibleRow());
    }
}

// ---- what plays

void ctl_Playlist::SetPLID(Plid entry)
{
    m_plid = entry;
    markPlayed();
}

void ctl_Playlist::SetNextPlid(Plid entry)
{
    m_nextPlid = entry;
    markPlayed();
}

void ctl_Playlist::markPlayed()
{
    m_look.setPlayed(m_plid, m_nextPlid);
    RefreshGrid();
    showPlayedEntry();
}

void ctl_Playlist::showPlayedEntry()
{
    if (m_settings.GetKeyValueLong(u"Global"_s, u"View.Current.Playlist.Pos"_s, 1) == 0) {
        return;
    }
    const qint64 row = rowOf(m_plid);
    if (row >= 0) {
        m_controls.grid.showRow(row);
    }
}

void ctl_Playlist::rowChanged(qint64 row)
{
    m_waitingInfo = cellOf(row, u"FID").toText();
    if (!m_timerInfo->isActive()) {
        tellPlayed(m_waitingInfo);
    }
}

void ctl_Playlist::tellPlayed(const QString& fid)
{
    if (!fid.isEmpty()) {
        m_toldInfo = fid;
        m_timerInfo->start();
        m_bus.SendMessage(bus::kInfoFromFid, fid);
    }
}

// ---- what is told about the list

void ctl_Playlist::tellSummary()
{
    PlaylistSummary summary;
    if (m_pnid != Pnid{} && m_data1.Database()) {
        Database& database = *m_data1.Database();
        const auto list =
            database.OpenRecordset(u"select Name from pl_name where nid="_s + number(m_pnid));
        const auto sums = database.OpenRecordset(
            u"select count(*) as anz,sum(framestop-framestart) as frtime from pl_all where pnid="_s +
            number(m_pnid));
        summary.name = list->Eof() ? QString() : list->value(u"Name").toText();
        summary.entries = sums->value(u"anz").toLong();
        summary.milliseconds =
            qint64(sums->value(u"frtime").toDouble() * Mod_MilliSecToMin::kFrameMs);
        summary.locked = m_locked;
    }
    emit summaryChanged(summary);
}

void ctl_Playlist::updateEmptyNote()
{
    if (m_pnid == Pnid{}) {
        m_controls.grid.setEmptyNote(
            {m_texts.text(u"playlist.none.title"_s), m_texts.text(u"playlist.none.text"_s), {}});
        return;
    }
    m_controls.grid.setEmptyNote(
        {m_texts.text(u"playlist.norows.title"_s),
         m_texts.text(m_locked ? u"playlist.norows.locked"_s : u"playlist.norows.text"_s),
         {}});
}

void ctl_Playlist::tellHistory()
{
    const auto last = m_tools.history.nextUndo();
    const auto next = m_tools.history.nextRedo();
    emit historyChanged(undoText(m_texts, last), last.has_value(), redoText(m_texts, next),
                        next.has_value());
}

// ---- changes

bool ctl_Playlist::canChange() const
{
    return m_pnid != Pnid{} && !m_locked && m_connected && m_rowClone;
}

bool ctl_Playlist::mayChange()
{
    if (m_pnid != Pnid{} && m_connected && m_locked) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.norows.locked"_s));
    }
    return canChange();
}

int ctl_Playlist::newAktion() const
{
    return m_jingleMode ? kAktionJinglePlay : kAktionMix;
}

void ctl_Playlist::changed()
{
    afterChange(m_pnid);
}

void ctl_Playlist::afterChange(Pnid list)
{
    if (list == m_pnid) {
        Refresh();
    }
    m_selectedRows.clear();
    tellHistory();
    m_bus.SendMessage(bus::kPlaylistChange, numberOf(list));
}

void ctl_Playlist::saveLater()
{
    m_timerPlaylistPlaylerUpdate->stop();
    m_timerPlaylistPlaylerUpdate->start();
}

void ctl_Playlist::saveNow()
{
    m_timerPlaylistPlaylerUpdate->stop();
    if (m_data1.Database()) {
        try {
            m_data1.Database()->Execute(
                u"update pl_name set sicherung=true where sicherung=false and nid="_s +
                number(m_pnid));
        } catch (const DbError& error) {
            m_bus.SendMessage(bus::kShowStatusText, error.text());
        }
    }
    m_bus.SendMessage(bus::kPlaylistChange, numberOf(m_pnid));
}

void ctl_Playlist::undo()
{
    takeStep(true);
}

void ctl_Playlist::redo()
{
    takeStep(false);
}

void ctl_Playlist::takeStep(bool isUndo)
{
    if (!m_connected) {
        return;
    }
    using Force = ListHistory::Force;
    ListHistory& history = m_tools.history;
    const auto next = isUndo ? history.nextUndo() : history.nextRedo();
    if (next && m_tools.functions.catalogue().stateOf(next->list) == ListCatalogue::State::Locked) {
        m_bus.SendMessage(bus::kShowStatusText,
                          m_texts.text(u"playlist.undo.locked"_s, next->listName));
        return;
    }
    ListHistory::Result result = isUndo ? history.undo() : history.redo();
    if (result.outcome == ListHistory::Outcome::ChangedElsewhere) {
        const WarningAnswer answer =
            m_controls.warnings.ShowWarning(changedElsewhereText(m_texts, result.step),
                                            WarningType::Question, m_texts.text(u"glob_warn"_s));
        if (answer != WarningAnswer::Yes) {
            return;
        }
        result = isUndo ? history.undo(Force::Yes) : history.redo(Force::Yes);
    }
    if (result.outcome == ListHistory::Outcome::Failed) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.undo.failed"_s));
    }
    for (const Pnid list : result.lists) {
        afterChange(list);
    }
    tellHistory();
    if (result.outcome == ListHistory::Outcome::Done) {
        // A list or a group may be there again, or be gone.
        m_bus.SendMessage(bus::kRefreshPlaylistTree);
    }
}

} // namespace melovane
