#include "playlists/pl_insert_move_del.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "playlists/drag_list.h"
#include "playlists/entry_places.h"
#include "playlists/playlist_table.h"
#include "playlists/track_entries.h"
#include "playlists/undo_redo.h"
#include "store/error_sink.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString number(Pnid list)
{
    return sql::number(numberOf(list));
}

QStringList trackIds(const QString& dragText)
{
    QString ids = dragText;
    ids.remove(u"DRAG_TYP_FID_MP3DB:"_s).remove(u"DRAG_TYP_PLID:"_s);
    return parseDragList(u':' + ids).ids;
}

std::vector<Pnid> listsOfEntries(Database& database, const QStringList& ids)
{
    std::vector<Pnid> lists;
    for (const QString& condition : keyConditions(u"plid", entryNumbers(ids))) {
        for (const Pnid list : listsOf(database, condition)) {
            if (std::find(lists.begin(), lists.end(), list) == lists.end()) {
                lists.push_back(list);
            }
        }
    }
    return lists;
}

/// Lists that have lost entries count anew and ask for their files to be saved, like the one that
/// the edit was done to.
void countOthers(Database& database, const std::vector<Pnid>& lists, Pnid list)
{
    for (const Pnid other : lists) {
        if (other != list) {
            updateEntryCount(database, other);
        }
    }
}

/// Forces the auto-number of entries beyond the highest key, so that the user's next try works.
void repairKey(Database& database)
{
    const auto highest = database.OpenRecordset(u"select max(plid) as mplid from pl_all"_s);
    const QString next = sql::number(highest->value(u"mplid").toInt64() + 1);
    database.Execute(u"insert into pl_all (plid) values ( "_s + next + u")"_s);
    database.Execute(u"delete from pl_all where plid = "_s + next);
}

} // namespace

cls_PLInsertMoveDel::cls_PLInsertMoveDel(DBEngine& engine,
                                         ModUndoRedo& snapshots,
                                         ListHistory& history)
    : m_engine(engine)
    , m_snapshots(snapshots)
    , m_history(history)
{}

cls_PLInsertMoveDel::~cls_PLInsertMoveDel() = default;

Pnid cls_PLInsertMoveDel::existing(Database& database, Pnid list) const
{
    if (list == kPlayingPlaylist) {
        const auto playing =
            database.OpenRecordset(u"select * from pl_name where isplay=true and grid>0"_s);
        int lowest = 0;
        for (; !playing->Eof(); playing->MoveNext()) {
            const int found = playing->value(u"NID").toLong();
            lowest = lowest == 0 ? found : std::min(lowest, found);
        }
        return lowest == 0 ? kNoPlaylist : Pnid(lowest);
    }
    const auto count =
        database.OpenRecordset(u"select count(*) as anz from pl_name where nid="_s + number(list));
    if (count->value(u"anz").toLong() > 0) {
        return list;
    }
    const auto all = database.OpenRecordset(u"select * from pl_name order by nid asc"_s);
    return all->Eof() ? kNoPlaylist : Pnid(all->value(u"NID").toLong());
}

Pnid cls_PLInsertMoveDel::ExistPNID(Pnid list)
{
    try {
        return existing(*m_engine.OpenDatabase(m_dbName), list);
    } catch (const DbError& error) {
        passReleased(error);
        return kNoPlaylist;
    }
}

/// Copies and moves never fall back to another list: their target was on the screen.
Pnid cls_PLInsertMoveDel::targetOfEntries(Pnid list)
{
    const Pnid found = ExistPNID(list);
    return found == list || list == kPlayingPlaylist ? found : kNoPlaylist;
}

void cls_PLInsertMoveDel::edit(Pnid list,
                               ListAction action,
                               QStringView snapshot,
                               OnError onError,
                               const Work& work)
{
    if (list == kNoPlaylist) {
        return;
    }
    try {
        const auto database = m_engine.OpenDatabase(m_dbName);
        if (!snapshot.isEmpty()) {
            m_snapshots.UndoSnapshot(list, *database, snapshot);
        }
        ListEdit edit(m_history, *database, action, list);
        try {
            work(*database, edit);
        } catch (const DbError& error) {
            // The rows written so far stay.
            if (onError == OnError::RepairKey && error.number() == dberror::kDuplicateKey) {
                repairKey(*database);
            }
        }
        updateEntryCount(*database, list);
        edit.commit();
    } catch (const DbError& error) {
        passReleased(error);
        // Nothing was written; the view shows the list as it was.
    }
}

void cls_PLInsertMoveDel::AppendFromMP3DB(const QString& dragText, Pnid list, int aktion)
{
    const QStringList ids = trackIds(dragText);
    if (ids.isEmpty()) {
        return;
    }
    const Pnid target = ExistPNID(list);
    edit(target, ListAction::Append, undoaction::kAppendTracks, OnError::RepairKey,
         [&](Database& database, ListEdit& edit) {
             TrackEntries tracks(database, ids);
             edit.newEntriesFollow();
             tracks.append(target, nextSid(database, target), aktion);
         });
}

void cls_PLInsertMoveDel::InsertFromMP3DB(Sid position,
                                          Pnid list,
                                          const QString& dragText,
                                          int aktion)
{
    const QStringList ids = trackIds(dragText);
    if (ids.isEmpty()) {
        return;
    }
    const Pnid target = ExistPNID(list);
    edit(target, ListAction::Insert, undoaction::kInsertTracks, OnError::RepairKey,
         [&](Database& database, ListEdit& edit) {
             TrackEntries tracks(database, ids);
             edit.newEntriesFollow();
             const qint64 first = numberOf(position);
             makeRoom(database, edit, target, position, first + ids.size() + 1);
             tracks.append(target, first, aktion);
         });
}

void cls_PLInsertMoveDel::InsertORMoveFromPlaylist(int mode,
                                                   Sid position,
                                                   Pnid list,
                                                   const QString& dragText,
                                                   int /*aktion*/)
{
    const QStringList ids = parseDragList(dragText).ids;
    const Pnid target = ids.isEmpty() ? kNoPlaylist : targetOfEntries(list);
    switch (mode) {
    case kInsertCopies:
        insertCopies(position, target, ids);
        break;
    case kMove:
        move(position, target, ids);
        break;
    case kAppendCopies:
        appendCopies(target, ids);
        break;
    default:
        break;
    }
}

GetPLData::Entries cls_PLInsertMoveDel::sourcesOf(const QStringList& ids)
{
    if (m_clone == nullptr) {
        m_ownClone = std::make_unique<GetPLData>(m_engine);
        m_clone = m_ownClone.get();
    }
    m_clone->DBOpen(m_dbName);
    GetPLData::Entries entries = m_clone->entries(ids);
    m_clone->DBClose();
    if (m_cutLibrary == m_dbName && m_cut.columns == entries.columns) {
        for (auto row = m_cut.rows.cbegin(); row != m_cut.rows.cend(); ++row) {
            // One that an undo has brought back stands in the table as it is now.
            if (!entries.rows.contains(row.key())) {
                entries.rows.insert(row.key(), row.value());
            }
        }
    }
    return entries;
}

void cls_PLInsertMoveDel::cutPlaylistRecords(const QString& dragText, Pnid list)
{
    GetPLData::Entries taken = sourcesOf(parseDragList(dragText).ids);
    DeletePlaylistRecords(dragText, list);
    m_cut = std::move(taken);
    m_cutLibrary = m_dbName;
}

void cls_PLInsertMoveDel::insertCopies(Sid position, Pnid list, const QStringList& ids)
{
    // The one operation without a snapshot.
    edit(list, ListAction::Copy, {}, OnError::End, [&](Database& database, ListEdit& edit) {
        const GetPLData::Entries sources = sourcesOf(ids);
        edit.newEntriesFollow();
        const qint64 first = position == kEndOfList ? nextSid(database, list) : numberOf(position);
        makeRoom(database, edit, list, Sid(first), first + ids.size());
        addCopies(database, sources, ids, list, first, UnknownEntry::KeepsItsPlace);
    });
}

void cls_PLInsertMoveDel::appendCopies(Pnid list, const QStringList& ids)
{
    edit(list, ListAction::Append, undoaction::kAppendEntries, OnError::RepairKey,
         [&](Database& database, ListEdit& edit) {
             const GetPLData::Entries sources = sourcesOf(ids);
             edit.newEntriesFollow();
             addCopies(database, sources, ids, list, nextSid(database, list) + 1,
                       UnknownEntry::HasNoPlace);
         });
}

void cls_PLInsertMoveDel::move(Sid position, Pnid list, const QStringList& ids)
{
    edit(list, ListAction::Move, undoaction::kMoveEntries, OnError::End,
         [&](Database& database, ListEdit& edit) {
             const qint64 first =
                 position == kEndOfList ? nextSid(database, list) : numberOf(position);
             const std::vector<Pnid> lists = listsOfEntries(database, ids);
             makeRoom(database, edit, list, Sid(first), first + ids.size());
             moveEntries(database, edit, ids, list, first);
             countOthers(database, lists, list);
         });
}

void cls_PLInsertMoveDel::DeletePlaylistRecords(const QString& dragText, Pnid list)
{
    const QStringList ids = parseDragList(dragText).ids;
    const std::vector<qint64> entries = entryNumbers(ids);
    if (entries.empty()) {
        return;
    }
    const Pnid target = list == kPlayingPlaylist ? ExistPNID(list) : list;
    const auto database = m_engine.OpenDatabase(m_dbName);
    ListEdit edit(m_history, *database, ListAction::Delete, target);
    const std::vector<Pnid> lists = listsOfEntries(*database, ids);
    for (const Pnid other : lists) {
        edit.alsoChanges(other);
    }
    for (const QString& condition : keyConditions(u"plid", entries)) {
        edit.before(condition);
        database->Execute(u"delete from pl_all where "_s + condition);
    }
    updateEntryCount(*database, target);
    countOthers(*database, lists, target);
    edit.commit();
}

void cls_PLInsertMoveDel::swapWithNeighbour(Plid entry, Pnid list, int step)
{
    try {
        const auto database = m_engine.OpenDatabase(m_dbName);
        const std::optional<EntryPlace> self = placeOf(*database, entry);
        const std::optional<EntryPlace> other =
            self ? neighbourOf(*database, *self, step) : std::nullopt;
        if (!other || self->list != list) {
            return;
        }
        m_snapshots.UndoSnapshot(list, *database,
                                 step < 0 ? undoaction::kMoveUp : undoaction::kMoveDown);
        ListEdit edit(m_history, *database, step < 0 ? ListAction::MoveUp : ListAction::MoveDown,
                      list);
        swapNeighbours(*database, edit, step < 0 ? *other : *self, step < 0 ? *self : *other);
        edit.commit();
    } catch (const DbError& error) {
        passReleased(error);
        // The rows stay where they are.
    }
}

QString cls_PLInsertMoveDel::GetFIDFromDragFiles(const QStringList& /*files*/) const
{
    return {};
}

} // namespace melovane
