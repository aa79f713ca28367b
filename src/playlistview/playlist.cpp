#include "playlistview/playlist.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/pointer_control.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "playlists/drag_list.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlistview/entry_selection.h"
#include "views/drag_data.h"
#include "views/layout_files.h"

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Columns that are never fitted to their contents, and the widest that others get, in figures.
const QStringList kFixedColumns = {u"aktion"_s, u"note"_s, u"nr"_s};
constexpr double kWidestFitted = 60;

/// Rows of a jingle list that the player has ready, unless the setting says otherwise.
constexpr int kDefaultJinglePlayers = 5;

} // namespace

ctl_Playlist::ctl_Playlist(const PlaylistViewParts& parts,
                           PlaylistControls controls,
                           PlaylistActions actions)
    : m_settings(parts.settings)
    , m_texts(parts.texts)
    , m_tools(parts.tools)
    , m_controls(controls)
    , m_actions(std::move(actions))
    , m_gate(parts.texts, m_actions.world)
    , m_bus(parts.bus, u"ctl_Playlist"_s)
    , m_guard(guardOverBus(m_bus, parts.texts, parts.settings, parts.log))
    , m_look(parts.clock, parts.texts)
    , m_rows(parts.engine, controls.grid, {.key = u"PLID"_s})
    , m_marks(parts.settings, controls.grid, m_rows, m_look)
    , m_seek(parts.loop, m_bus, m_actions.monitorFrame)
    , m_news(parts.loop, [this](const QString& fid) { m_bus.SendMessage(bus::kInfoFromFid, fid); })
    , m_edits(parts,
              m_controls,
              m_actions,
              m_list,
              m_rows,
              m_bus,
              m_guard,
              {[this](Pnid list) { entriesChanged(list); }, [this] { RefreshGrid(); },
               [this] { tellHistory(); }})
    , m_drags(controls.grid, m_rows, m_list, m_edits, m_actions)
    , m_steps(
          parts.tools,
          PendingJobs(parts.engine, parts.settings),
          parts.texts,
          controls.warnings,
          m_bus,
          [this](Pnid list) {
              entriesChanged(list);
              m_bus.SendMessage(bus::kPlaylistChange, numberOf(list));
          },
          [this](const ListHistory::Result& step) { showStep(step); })
    , m_messages(parts, m_controls, m_actions, *this, m_edits, m_bus, m_guard)
{}

void ctl_Playlist::start()
{
    dress();
    workInLibrary();
    updateEmptyNote();
    tellSummary();
    tellHistory();
}

void ctl_Playlist::end()
{
    m_edits.saveWaiting();
    saveLayout();
}

// ---- the list

void ctl_Playlist::open(Pnid list, bool locked, bool jingles)
{
    if (!m_rows.isConnected()) {
        tellLent();
        return;
    }
    const bool former = m_list.jingles;
    m_list.jingles = jingles;
    try {
        load(list, locked);
    } catch (const DbError&) {
        m_list.jingles = former;
        throw;
    }
    emit jingleModeChanged(jingles);
}

void ctl_Playlist::load(Pnid list, bool locked)
{
    m_edits.saveWaiting();
    workInLibrary();
    m_list.active = list;
    // The stored query knows no order among equal positions; the younger entry stands first.
    const QString statement = u"select * from vpl_all where pnid="_s + sql::number(numberOf(list)) +
                              u" order by SID, PLID desc"_s;
    const bool isOther = statement != m_rows.data().RecordSource();
    if (isOther) {
        const BusyCursor busy(m_controls.pointer);
        m_rows.changeDatabase(m_settings.DbName());
        m_rows.show(statement);
        m_drags.forgetAll();
    }
    m_list.pnid = list;
    applyLock(locked);
    if (isOther) {
        fitColumns();
        m_marks.showNow();
    }
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::setLocked(bool locked)
{
    applyLock(locked);
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::applyLock(bool locked)
{
    m_list.locked = locked;
    m_look.setLocked(locked);
    const int players =
        m_settings.GetKeyValueLong(u"Global"_s, u"Jingle.Players"_s, kDefaultJinglePlayers);
    m_look.setJingleMode(m_list.jingles, players);
    m_look.setDefaultMixTime(m_settings.DefaultMixTime());
    RefreshGrid();
    judgeCommands();
}

void ctl_Playlist::Refresh()
{
    if (!m_list.isOpen() || !m_rows.isConnected()) {
        return;
    }
    const GridRows::Place place = m_rows.place();
    m_rows.read();
    m_rows.restore(place, GridRows::Stays::Screen);
    tellSummaryOrClose();
}

/// A list that was deleted is shown no longer: what the user does now must not reach another one.
void ctl_Playlist::tellSummaryOrClose()
{
    if (auto summary = readSummary(*m_rows.database(), m_list.pnid)) {
        summary->locked = m_list.locked;
        emit summaryChanged(*summary);
        updateEmptyNote();
    } else {
        showNoList();
    }
}

void ctl_Playlist::showNoList()
{
    m_edits.forgetWaiting();
    m_rows.clear();
    m_list.pnid = {};
    m_drags.forgetSelected();
    applyLock(false);
    tellSummary();
    updateEmptyNote();
}

void ctl_Playlist::entriesChanged(Pnid list)
{
    if (list == m_list.pnid) {
        Refresh();
    }
    m_drags.forgetSelected();
}

void ctl_Playlist::disconnectDatabase()
{
    if (m_rows.isConnected()) {
        m_edits.saveWaiting();
        m_rows.disconnect();
        updateEmptyNote();
        judgeCommands();
    }
}

void ctl_Playlist::reconnectDatabase()
{
    if (m_rows.isConnected()) {
        return;
    }
    m_rows.reconnect(m_settings.DbName());
    workInLibrary();
    if (m_list.isOpen()) {
        tellSummaryOrClose();
    }
    updateEmptyNote();
    tellHistory();
}

void ctl_Playlist::changeDatabase()
{
    if (!m_rows.isConnected()) {
        return;
    }
    m_edits.saveWaiting();
    workInLibrary();
    Refresh();
    tellHistory();
}

/// All that is done from now on is done in the library that the settings name. Numbers of lists and
/// entries mean others there: none of the former library is kept.
void ctl_Playlist::workInLibrary()
{
    const QString library = m_settings.DbName();
    const QString former = std::exchange(m_list.library, library);
    m_tools.edits.SetDbName(library);
    if (former == library || former.isEmpty()) {
        return;
    }
    showNoList();
    m_list.active = {};
    m_marks.set({}, {});
    m_marks.setHeard({}, {});
    m_drags.forgetAll();
    if (parseDragList(m_controls.clipboard.text()).type == "DRAG_TYP_PLID"_L1) {
        m_controls.clipboard.setText({});
    }
}

// ---- what is told about the list

void ctl_Playlist::tellLent()
{
    m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"library.lent.title"_s));
}

void ctl_Playlist::tellSummary()
{
    if (!m_rows.isConnected()) {
        // What was told of the list stands until it can be read again.
        return;
    }
    PlaylistSummary summary;
    if (m_list.isOpen() && m_rows.database()) {
        summary = readSummary(*m_rows.database(), m_list.pnid).value_or(PlaylistSummary());
        summary.locked = m_list.locked;
    }
    emit summaryChanged(summary);
}

void ctl_Playlist::updateEmptyNote()
{
    if (!m_rows.isConnected()) {
        m_controls.grid.setEmptyNote(
            {m_texts.text(u"library.lent.title"_s), m_texts.text(u"library.lent.text"_s), {}});
        return;
    }
    if (!m_list.isOpen()) {
        m_controls.grid.setEmptyNote(
            {m_texts.text(u"playlist.none.title"_s), m_texts.text(u"playlist.none.text"_s),
             m_actions.newList ? m_texts.text(u"playlist.none.button"_s) : QString()});
        return;
    }
    m_controls.grid.setEmptyNote(
        {m_texts.text(u"playlist.norows.title"_s),
         m_texts.text(m_list.locked ? u"playlist.norows.locked"_s : u"playlist.norows.text"_s),
         {}});
}

void ctl_Playlist::tellHistory()
{
    const ListHistory::NextSteps next = m_tools.history.nextSteps();
    m_known = {next.undo.has_value(), next.redo.has_value()};
    emit historyChanged(undoText(m_texts, next.undo), next.undo.has_value(),
                        redoText(m_texts, next.redo), next.redo.has_value());
    judgeCommands();
}

// ---- rows

Plid ctl_Playlist::currentEntry() const
{
    return Plid(m_rows.current(u"PLID").toLong());
}

QString ctl_Playlist::GetFID() const
{
    return m_rows.current(u"FID").toText();
}

void ctl_Playlist::RefreshGrid()
{
    m_rows.data().refreshCells();
}

void ctl_Playlist::dress()
{
    const UpdateColors colours(m_settings);
    m_look.setColours(colours);
    m_look.setDefaultMixTime(m_settings.DefaultMixTime());
    colours.UpdateSplitColors(m_controls.grid);
    RefreshGrid();
}

void ctl_Playlist::fitColumns()
{
    if (m_settings.AutosizeGrid() != 0) {
        autosize();
    }
}

void ctl_Playlist::autosize()
{
    m_controls.grid.fitColumns(kFixedColumns, kWidestFitted);
}

void ctl_Playlist::saveLayout()
{
    m_actions.saveLayout(kPlaylistLayout.toString(), m_controls.grid);
}

void ctl_Playlist::SetAbsolutePosition(Plid entry)
{
    const qint64 row = entry == Plid{} ? -1 : m_rows.rowOf(u"PLID", numberOf(entry));
    if (row >= 0) {
        m_controls.grid.goToRow(row, m_controls.grid.firstVisibleRow());
    }
}

QString ctl_Playlist::selectedTracks()
{
    return m_rows.isRead() ? GetDragData(DragKind::FidMp3db, m_controls.grid, m_rows.walker(),
                                         DragOrder::ByPosition)
                                 .text
                           : QString();
}

void ctl_Playlist::FillTempMp3EditTable()
{
    if (!m_rows.isRead() || !m_rows.database()) {
        return;
    }
    Transaction change(*m_rows.database());
    const auto query = m_rows.database()->queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
    for (const RowRange& range : m_controls.grid.selection()) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            query->SetParameter(u"INFID"_s, m_rows.cell(row, u"FID"));
            query->SetParameter(u"INPLID"_s, m_rows.cell(row, u"PLID"));
            query->Execute();
        }
    }
    query->Close();
    change.commit();
}

// ---- changes

std::vector<int> ctl_Playlist::aktionChoices() const
{
    if (m_list.jingles) {
        return {kAktionJinglePlay, kAktionLoop, kAktionJingle1, kAktionJingle2};
    }
    return {kAktionMix, kAktionStop, kAktionLoop};
}

int ctl_Playlist::currentAktion() const
{
    return currentEntry() == Plid{} ? -1 : m_rows.current(u"Aktion").toLong();
}

void ctl_Playlist::takeSample(Plid entry, const QString& fid, int start, int stop)
{
    if (m_edits.takeSample(entry, fid, start, stop)) {
        m_bus.SendMessage(bus::kJinglePlaylistChange, numberOf(m_list.pnid));
    }
}

void ctl_Playlist::editSample()
{
    const Plid entry = currentEntry();
    if (entry != Plid{} && m_actions.editSample) {
        m_actions.editSample(m_tools.functions.GetPlaylistDetailByPLID(entry));
    }
}

void ctl_Playlist::rehearse()
{
    const qint64 below = m_controls.grid.currentRow() + 1;
    const qint64 row = below < m_rows.count() ? below : 0;
    const Plid from = currentEntry();
    const auto to = Plid(m_rows.cell(row, u"PLID").toLong());
    if (from == Plid{} || !m_actions.rehearse) {
        return;
    }
    if (from == to) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"status.mix.alone"_s));
        return;
    }
    m_actions.rehearse(m_tools.functions.GetPlaylistDetailByPLID(from),
                       m_tools.functions.GetPlaylistDetailByPLID(to));
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
    if (!m_rows.isConnected()) {
        tellLent();
    } else if (isUndo ? m_steps.undo() : m_steps.redo()) {
        tellHistory();
    }
}

/// What the user takes back must not happen where he cannot see it.
void ctl_Playlist::showStep(const ListHistory::Result& step)
{
    const ListCatalogue& lists = m_tools.functions.catalogue();
    std::vector<Pnid> meant = step.lists;
    meant.insert(meant.begin(), step.step.list);
    const bool isShown = m_list.isOpen() && std::find(step.lists.begin(), step.lists.end(),
                                                      m_list.pnid) != step.lists.end();
    const auto wanted = std::find_if(meant.begin(), meant.end(), [&](Pnid list) {
        return lists.stateOf(list) != ListCatalogue::State::Gone;
    });
    if (!isShown && wanted != meant.end()) {
        m_bus.SendMessage(
            lists.isJingleList(*wanted) ? bus::kJinglelistAktivieren : bus::kPlaylistAktivieren,
            numberOf(*wanted), lists.stateOf(*wanted) == ListCatalogue::State::Locked);
    }
    selectEntries(m_controls.grid, m_rows, step.entries);
}

} // namespace melovane
