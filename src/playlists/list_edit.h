#pragma once

#include "playlists/list_delta.h"
#include "playlists/list_step.h"
#include "playlists/moved_plays.h"

#include <QStringView>

#include <memory>
#include <optional>
#include <vector>

namespace melovane {

class Database;
class ListHistory;
struct TrackChange;

/// One change of lists while it is being made: a transaction on the caller's database, with a
/// record of what it does.
///
/// Tell what rows are before and after the statements that write them, then call commit(). Without
/// commit() everything is undone. A history that fails never stops the change itself.
class ListEdit
{
public:
    /// Begins the transaction. \throws DbError when the database cannot be written
    ListEdit(ListHistory& history, Database& database, ListAction action, Pnid list);
    ~ListEdit();
    ListEdit(const ListEdit&) = delete;
    ListEdit& operator=(const ListEdit&) = delete;

    /// Entries that meet the condition, as they stand now, before they are written or deleted.
    void before(const QString& condition);
    /// The same entries, or the new ones, as they stand afterwards.
    void after(const QString& condition);

    /// Where an entry stands.
    struct Place
    {
        Pnid list;
        Sid position;
    };

    /// An entry that changes its place and nothing else: no row is read.
    void moved(Plid entry, const Place& from, const Place& to);

    /// New entries are those whose number is above the highest of now; told again by commit().
    void newEntriesFollow();

    /// A list that changes besides the one given at first; before its rows are touched.
    void alsoChanges(Pnid list);

    /// What was played of a track belongs to another one from now on: before it is written.
    void movesPlays(const QString& fid, const QString& other);

    /// What a write has done to the row of a track. A key that is no plain number is in no step.
    void changes(const TrackChange& track);

    /// The name by which the step is told, when it belongs to no list.
    void setName(const QString& name) { m_name = name; }

    /// Rows of `pl_name` or `pl_group` that meet the condition and will be deleted.
    void removes(QStringView table, const QString& condition);

    /// Likewise rows that were added; as they stand afterwards.
    void adds(QStringView table, const QString& condition);

    /// Ends the change and its record. \throws DbError, with nothing written
    void commit();

private:
    struct Touched
    {
        Pnid list;
        QString mark;
    };

    [[nodiscard]] DeltaMaker& makerOf(QStringView table);
    [[nodiscard]] QString marksNow() const;
    void record();

    ListHistory& m_history;
    Database& m_database;
    ListAction m_action;
    Pnid m_list;
    QString m_name;
    bool m_records;
    bool m_open = true;
    std::vector<std::unique_ptr<DeltaMaker>> m_makers;
    QStringList m_tables;
    std::vector<Touched> m_touched;
    std::optional<qint64> m_lastEntry;
    PlayCounts m_plays;    ///< of those that movesPlays() was told of
    int m_listColumn = -1; ///< of pl_all, known after the first entry moved
    int m_positionColumn = -1;
};

} // namespace melovane
