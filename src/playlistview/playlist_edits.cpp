#include "playlistview/playlist_edits.h"

#include "bus/event_guard.h"
#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/pointer_control.h"
#include "platform/db/database.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"
#include "playlists/drag_list.h"
#include "playlists/list_history.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/playlist_table.h"
#include "playlists/track_step.h"
#include "playlists/undo_redo.h"
#include "playlistview/entry_selection.h"
#include "views/drag_data.h"
#include "views/grid_rows.h"
#include "views/track_look.h"

#include <algorithm>
#include <iterator>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The user's hand rests: what it moved is noted once.
constexpr std::chrono::milliseconds kSaveInterval{500};

/// How far from either end of a track, in milliseconds, its sound is looked for, and what is sound.
constexpr int kCueWithinMs = 10'000;
constexpr int kCueLoudness = 700;

QString textOf(Plid entry)
{
    return QString::number(numberOf(entry));
}

} // namespace

PlaylistEdits::PlaylistEdits(const PlaylistViewParts& parts,
                             const PlaylistControls& controls,
                             const PlaylistActions& actions,
                             const OpenList& list,
                             GridRows& rows,
                             BusSender& bus,
                             const EventGuard& guard,
                             EditEvents events)
    : m_texts(parts.texts)
    , m_tools(parts.tools)
    , m_controls(controls)
    , m_actions(actions)
    , m_list(list)
    , m_rows(rows)
    , m_bus(bus)
    , m_guard(guard)
    , m_events(std::move(events))
    , m_timerPlaylistPlaylerUpdate(parts.loop.makeTimer(kSaveInterval, [this] { saveNow(); }))
{}

PlaylistEdits::~PlaylistEdits() = default;

bool PlaylistEdits::canChange() const
{
    return m_list.isOpen() && !m_list.locked && m_rows.isConnected() && m_rows.isRead();
}

/// The same, and says so when the list is locked or another program has the library.
bool PlaylistEdits::mayChange()
{
    if (!m_rows.isConnected()) {
        tellStatus(m_texts.text(u"library.lent.title"_s));
    } else if (m_list.isOpen() && m_list.locked) {
        tellStatus(m_texts.text(u"playlist.norows.locked"_s));
    }
    return canChange();
}

void PlaylistEdits::tellStatus(const QString& text)
{
    m_bus.SendMessage(bus::kShowStatusText, text);
}

void PlaylistEdits::tellChanged(Pnid list)
{
    m_events.entriesChanged(list);
    m_events.stepsChanged();
    m_bus.SendMessage(bus::kPlaylistChange, numberOf(list));
}

Plid PlaylistEdits::currentEntry() const
{
    return Plid(m_rows.current(u"PLID").toLong());
}

// ---- entries and their order

/// The newest entry of all lists: those that come next have higher numbers.
Plid PlaylistEdits::newestEntry() const
{
    const auto newest =
        m_rows.database()->OpenRecordset(u"select max(plid) as mplid from pl_all"_s);
    return Plid(newest->value(0).toLong());
}

/// Entries newer than `before` have come to the list on the screen.
void PlaylistEdits::tellCame(Plid before)
{
    tellChanged(m_list.pnid);
    selectNewerEntries(m_controls.grid, m_rows, before);
}

void PlaylistEdits::addTracks(const QString& dragText, std::optional<Sid> target)
{
    const Plid before = newestEntry();
    if (target) {
        m_tools.edits.InsertFromMP3DB(*target, m_list.pnid, dragText, m_list.newAktion());
    } else {
        m_tools.edits.AppendFromMP3DB(dragText, m_list.pnid, m_list.newAktion());
    }
    tellCame(before);
}

void PlaylistEdits::addTracksAtRow(const QString& dragText)
{
    if (mayChange() && !parseDragList(dragText).ids.isEmpty()) {
        addTracks(dragText, Sid(m_rows.current(u"SID").toLong()));
    } else if (m_rows.isConnected() && !m_list.isOpen()) {
        tellStatus(m_texts.text(u"playlist.none.title"_s));
    }
}

void PlaylistEdits::appendTracks(const QString& dragText, Pnid list)
{
    if (!parseDragList(dragText).ids.isEmpty() && mayAppendTo(list)) {
        const bool isShown = list == m_list.pnid;
        m_tools.edits.AppendFromMP3DB(dragText, list, isShown ? m_list.newAktion() : kAktionMix);
        tellChanged(list);
    }
}

bool PlaylistEdits::mayAppendTo(Pnid list)
{
    if (!m_rows.isConnected()) {
        tellStatus(m_texts.text(u"library.lent.title"_s));
        return false;
    }
    // The table knows: another list than the one that is shown may be meant.
    const ListCatalogue::State state = m_tools.functions.catalogue().stateOf(list);
    const bool isShown = list == m_list.pnid;
    if (state == ListCatalogue::State::Locked || (m_list.locked && isShown)) {
        tellStatus(m_texts.text(u"playlist.norows.locked"_s));
        return false;
    }
    if (state == ListCatalogue::State::Gone) {
        tellStatus(m_texts.text(u"playlist.none.title"_s));
        return false;
    }
    return true;
}

void PlaylistEdits::appendDropped(const QString& dragText, Pnid list)
{
    const DragList drag = parseDragList(dragText);
    if (drag.ids.isEmpty() || !mayAppendTo(list)) {
        return;
    }
    const int aktion =
        m_tools.functions.catalogue().isJingleList(list) ? kAktionJinglePlay : kAktionMix;
    if (drag.type == "DRAG_TYP_PLID"_L1) {
        m_tools.edits.InsertORMoveFromPlaylist(cls_PLInsertMoveDel::kAppendCopies, kEndOfList, list,
                                               dragText, aktion);
    } else {
        m_tools.edits.AppendFromMP3DB(dragText, list, aktion);
    }
    tellChanged(list);
    if (const auto step = m_tools.history.nextSteps().undo; step && step->list == list) {
        tellStatus(stepText(m_texts, *step));
    }
}

bool PlaylistEdits::addFiles(const QStringList& files, std::optional<Sid> target)
{
    if (isListFile(files.first())) {
        QStringList lists;
        std::copy_if(files.begin(), files.end(), std::back_inserter(lists), isListFile);
        const Plid before = newestEntry();
        if (!m_actions.insertLists(lists, m_list.pnid, target, m_list.newAktion())) {
            return false;
        }
        tellCame(before);
        if (lists.size() < files.size()) {
            tellStatus(m_texts.text(u"playlist.listsonly"_s,
                                    QString::number(files.size() - lists.size())));
        }
        return true;
    }
    const Pnid list = m_list.pnid;
    const QStringList fids = m_actions.tracksOf(files);
    if (fids.isEmpty()) {
        return false; // whoever has looked at the files has told what was among them
    }
    // The window was alive meanwhile: another program may have taken the library.
    if (!mayChange() || m_list.pnid != list) {
        return false;
    }
    addTracks(dragText(DragKind::FidMp3db, fids), target);
    return true;
}

void PlaylistEdits::placeEntries(const QString& dragText, std::optional<Sid> target, bool copies)
{
    using Edits = cls_PLInsertMoveDel;
    const Plid before = newestEntry();
    m_tools.edits.InsertORMoveFromPlaylist(copies ? Edits::kInsertCopies : Edits::kMove,
                                           target.value_or(kEndOfList), m_list.pnid, dragText,
                                           m_list.newAktion());
    tellCame(before);
    if (!copies) {
        std::vector<Plid> moved;
        for (const qint64 entry : entryNumbers(parseDragList(dragText).ids)) {
            moved.push_back(Plid(entry));
        }
        selectEntries(m_controls.grid, m_rows, moved);
    }
}

void PlaylistEdits::paste(bool append)
{
    const QString text = m_controls.clipboard.text();
    const DragList list = parseDragList(text);
    if (!mayChange() || list.ids.isEmpty()) {
        return;
    }
    if (list.type == "DRAG_TYP_FID_MP3DB"_L1) {
        const Sid row{m_rows.current(u"SID").toLong()};
        addTracks(text, append ? std::nullopt : std::optional(row));
    } else if (list.type == "DRAG_TYP_PLID"_L1) {
        using Edits = cls_PLInsertMoveDel;
        const Plid before = newestEntry();
        m_tools.edits.InsertORMoveFromPlaylist(append ? Edits::kAppendCopies : Edits::kInsertCopies,
                                               Sid{0}, m_list.pnid, text, m_list.newAktion());
        tellCame(before);
    }
}

/// The selected entries as a drag text, or the current one when none is selected.
QString PlaylistEdits::rowsToTake() const
{
    std::vector<RowRange> rows = m_controls.grid.selection();
    const qint64 current = m_controls.grid.currentRow();
    if (rows.empty() && current >= 0) {
        rows.push_back({current, current});
    }
    // Not the drag of the selection: an entry whose track is flagged must be able to go, too.
    QStringList ids;
    for (const RowRange& range : rows) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            ids.append(m_rows.cell(row, u"PLID").toText());
        }
    }
    return dragText(DragKind::Plid, ids);
}

void PlaylistEdits::takeRows(const std::function<void(const QString& rows)>& take)
{
    const QString rows = mayChange() ? rowsToTake() : QString();
    if (rows.isEmpty()) {
        return;
    }
    m_tools.snapshots.UndoSnapshot(m_list.pnid, *m_rows.database(), undoaction::kDelete);
    take(rows);
    tellChanged(m_list.pnid);
    m_controls.grid.select({});
}

void PlaylistEdits::deleteRows()
{
    takeRows(
        [this](const QString& rows) { m_tools.edits.DeletePlaylistRecords(rows, m_list.pnid); });
}

void PlaylistEdits::cutRows()
{
    takeRows([this](const QString& rows) {
        m_tools.edits.cutPlaylistRecords(rows, m_list.pnid);
        m_controls.clipboard.setText(rows);
    });
}

void PlaylistEdits::moveRow(int step)
{
    const qint64 neighbour = m_controls.grid.currentRow() + step;
    const Plid entry = currentEntry();
    if (!mayChange() || entry == Plid{} || neighbour < 0 || neighbour >= m_rows.count()) {
        return;
    }
    forgetWaiting();
    m_tools.edits.swapWithNeighbour(entry, m_list.pnid, step);
    m_guard.run(u"PlaylistEdits.moveRow"_s, [this] { m_events.entriesChanged(m_list.pnid); });
    m_events.stepsChanged();
    saveLater();
}

// ---- values of entries

void PlaylistEdits::valueChanged()
{
    m_events.valuesChanged();
    m_events.stepsChanged();
}

void PlaylistEdits::setAktion(int aktion)
{
    const Plid entry = currentEntry();
    if (!mayChange() || entry == Plid{}) {
        return;
    }
    m_tools.functions.PlaylistSaveAktion(entry, aktion, u""_s);
    valueChanged();
    m_bus.SendMessage(bus::kPlaylistAktionChange, numberOf(entry));
}

void PlaylistEdits::toggleLoop()
{
    const qint64 row = m_controls.grid.currentRow();
    const Plid entry = currentEntry();
    if (!mayChange() || entry == Plid{}) {
        return;
    }
    auto map = CommandToMap(m_rows.cell(row, u"Command").toText());
    if (!map) {
        // A command that cannot be read means something to somebody; it stays.
        return;
    }
    const int present = m_rows.cell(row, u"Aktion").toLong();
    int wanted = kAktionLoop;
    if (present == kAktionLoop) {
        const auto former = map->value(kFormerAktion);
        const int otherwise = m_list.jingles ? kAktionJinglePlay : kAktionMix;
        wanted = former ? leadingLong(*former) : otherwise;
        map->remove(kFormerAktion);
    } else {
        CommandMapAdd(*map, kFormerAktion.toString(), QString::number(present));
    }
    // Never a null text: an empty command has to be written, too.
    m_tools.functions.PlaylistSaveAktion(entry, wanted, u""_s + MapToCommand(*map));
    valueChanged();
    if (m_list.jingles) {
        m_bus.SendMessage(bus::kPlaylistJingleChangePlaymode, row);
    } else {
        m_bus.SendMessage(bus::kPlaylistLoop, numberOf(entry), row);
    }
}

void PlaylistEdits::cueBySound()
{
    const Plid entry = currentEntry();
    if (!mayChange() || entry == Plid{}) {
        return;
    }
    const MlvPlaylistDetail detail = m_tools.functions.GetPlaylistDetailByPLID(entry);
    const BusyCursor busy(m_controls.pointer);
    const auto cues = detail.file.isEmpty()
                          ? std::nullopt
                          : m_actions.cuesOf(detail.file, kCueWithinMs, kCueLoudness);
    if (!cues) {
        tellStatus(m_texts.text(u"playlist.cue.failed"_s, detail.Titel));
        return;
    }
    m_tools.functions.PlaylistSaveStartStop(entry, cues->start, cues->stop);
    tellChanged(m_list.pnid);
}

bool PlaylistEdits::takeSample(Plid entry, const QString& fid, int start, int stop)
{
    const bool isRange = start >= 0 && (stop == 0 || stop > start);
    const qint64 row =
        isRange && canChange() && entry != Plid{} ? m_rows.rowOf(u"PLID", numberOf(entry)) : -1;
    if (row < 0 || m_rows.cell(row, u"FID").toText() != fid) {
        return false;
    }
    m_tools.functions.PlaylistSaveStartStop(entry, start, stop);
    tellChanged(m_list.pnid);
    return true;
}

void PlaylistEdits::rate(int digit)
{
    const QString fid = m_rows.current(u"FID").toText();
    if (digit < 0 || digit > 5 || !mayChange() || fid.isEmpty()) {
        return;
    }
    const std::vector<ColumnValue> values{{u"Note"_s, storedRating(digit)}};
    const bool written = m_guard.run(u"PlaylistEdits.rate"_s, [&] {
        TrackStep step(m_tools.history, *m_rows.database(), ListAction::Rating);
        step.write(fid, values, TagOrder::Enter);
        step.commit();
    });
    if (written) {
        m_bus.SendMessage(bus::kDbRefreshByFid, fid);
    }
}

void PlaylistEdits::deleteMixStyles()
{
    if (canChange()) {
        m_tools.functions.PlaylistDeleteAllMixStyle(m_list.pnid);
        tellChanged(m_list.pnid);
    }
}

void PlaylistEdits::copyMixStyles(Plid outOf, Plid inOf)
{
    if (canChange()) {
        m_tools.functions.PlaylistSetAllMixStyle(QString::number(numberOf(m_list.pnid)),
                                                 textOf(outOf), textOf(inOf));
        tellChanged(m_list.pnid);
    }
}

bool PlaylistEdits::reset(Pnid list)
{
    if (m_list.locked || !m_rows.isConnected() ||
        m_tools.functions.catalogue().stateOf(list) != ListCatalogue::State::Open) {
        return false;
    }
    m_tools.functions.PlaylistReset(list);
    tellChanged(list);
    return true;
}

// ---- the mark that the list is to be written to its file

void PlaylistEdits::saveLater()
{
    m_timerPlaylistPlaylerUpdate->stop();
    m_timerPlaylistPlaylerUpdate->start();
}

void PlaylistEdits::forgetWaiting()
{
    m_timerPlaylistPlaylerUpdate->stop();
}

void PlaylistEdits::saveWaiting()
{
    if (m_timerPlaylistPlaylerUpdate->isActive()) {
        saveNow();
    }
}

void PlaylistEdits::saveNow()
{
    m_timerPlaylistPlaylerUpdate->stop();
    if (m_rows.database()) {
        m_guard.run(u"PlaylistEdits.saveNow"_s,
                    [this] { markChanged(*m_rows.database(), m_list.pnid); });
    }
    m_bus.SendMessage(bus::kPlaylistChange, numberOf(m_list.pnid));
}

bool isListFile(const QString& place)
{
    const QString extension = path::extension(place).toLower();
    return extension == "m3u"_L1 || extension == "m3u8"_L1;
}

} // namespace melovane
