#pragma once

#include "playlists/list_edit.h"
#include "playlists/pl_data.h"
#include "playlists/playlist_ids.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class Database;
class DBEngine;
class ListHistory;
class ModUndoRedo;

/// No list: the answer of ExistPNID when there is none.
inline constexpr Pnid kNoPlaylist{-1};

/// Changes which tracks stand in a playlist and in what order; nothing else does.
///
/// Each operation opens the database named by SetDbName, works and closes it; it is one transaction
/// with its entry in the history. Positions are SIDs: sort keys with gaps, nothing ever closes
/// them. kPlayingPlaylist stands for the list that is playing. A drag text without ids is no
/// operation.
///
/// Quiet but for DeletePlaylistRecords: on a database error what was written so far stays and is
/// counted, and the call ends.
class cls_PLInsertMoveDel
{
public:
    /// What InsertORMoveFromPlaylist does. Numbers of its callers: keep.
    static constexpr int kInsertCopies = 1;
    static constexpr int kMove = 2;
    static constexpr int kAppendCopies = 99;

    cls_PLInsertMoveDel(DBEngine& engine, ModUndoRedo& snapshots, ListHistory& history);
    ~cls_PLInsertMoveDel();

    /// Before any operation.
    void SetDbName(const QString& name) { m_dbName = name; }

    /// Kept for callers that name a table of their own; no operation here asks for them.
    void SetUpdateTableName(const QString& name) { m_updateTable = name; }

    void SetUpdateColName(const QString& name) { m_updateColumn = name; }

    void SetWhereColName(const QString& name) { m_whereColumn = name; }

    /// The reader of entries that are copied; not owned, null for the own one.
    void SetClonRecord(GetPLData* record) { m_clone = record; }

    /// The list itself when it is there; for kPlayingPlaylist the playing one with the lowest
    /// number; for a list that is gone the one with the lowest number. kNoPlaylist when there is
    /// none, or the database fails.
    [[nodiscard]] Pnid ExistPNID(Pnid list);

    /// Appends library tracks behind the last entry.
    ///
    /// \param dragText ids of tracks; their order is kept
    /// \param aktion   play action of the new entries
    /// Unknown tracks and tracks without a length are skipped and use no position. The first new
    /// entry stands at max(SID) + 2: the step of two is wanted. A list that is gone is replaced by
    /// ExistPNID.
    void AppendFromMP3DB(const QString& dragText, Pnid list, int aktion);

    /// Inserts library tracks behind the row at `position`: at position + 1, + 2 and so on, the
    /// rows from `position` on make room. `position` itself stays free, a skipped track leaves a
    /// free place at the end of the block.
    void InsertFromMP3DB(Sid position, Pnid list, const QString& dragText, int aktion);

    /// Copies or moves entries, see kInsertCopies, kMove and kAppendCopies; another mode does
    /// nothing. They keep their action, so `aktion` has no effect. Unknown entries are skipped:
    /// their place stays free in an insert, an append gives them none. A list that is gone:
    /// nothing. A list that entries leave is counted and marked for saving like the other one.
    void InsertORMoveFromPlaylist(int mode,
                                  Sid position,
                                  Pnid list,
                                  const QString& dragText,
                                  int aktion);

    /// Deletes entries, of whatever list, and counts these and the given one. The snapshot is the
    /// caller's.
    /// \throws DbError, with nothing deleted
    void DeletePlaylistRecords(const QString& dragText, Pnid list);

    /// The same, but the entries can still be copied by their numbers, with all their values, until
    /// others are cut. \throws DbError, with nothing deleted
    void cutPlaylistRecords(const QString& dragText, Pnid list);

    /// Exchanges the positions of an entry and its neighbour above or below, the next one whose
    /// track is there: others stand in no grid. The entry count and the save flag stay: the caller
    /// tells them when the user's hand rests.
    /// \param step -1 for up, 1 for down
    void swapWithNeighbour(Plid entry, Pnid list, int step);

    /// Reserved: always empty.
    [[nodiscard]] QString GetFIDFromDragFiles(const QStringList& files) const;

private:
    enum class OnError
    {
        End,
        RepairKey
    };

    using Work = std::function<void(Database&, ListEdit&)>;

    void
    edit(Pnid list, ListAction action, QStringView snapshot, OnError onError, const Work& work);
    [[nodiscard]] Pnid existing(Database& database, Pnid list) const;
    [[nodiscard]] Pnid targetOfEntries(Pnid list);
    [[nodiscard]] GetPLData::Entries sourcesOf(const QStringList& ids);
    void insertCopies(Sid position, Pnid list, const QStringList& ids);
    void appendCopies(Pnid list, const QStringList& ids);
    void move(Sid position, Pnid list, const QStringList& ids);

    DBEngine& m_engine;
    ModUndoRedo& m_snapshots;
    ListHistory& m_history;
    QString m_dbName;
    QString m_updateTable;
    QString m_updateColumn;
    QString m_whereColumn;
    GetPLData* m_clone = nullptr;
    std::unique_ptr<GetPLData> m_ownClone;
    GetPLData::Entries m_cut; ///< what the last cut took away
    QString m_cutLibrary;     ///< file that it stood in
};

} // namespace melovane
