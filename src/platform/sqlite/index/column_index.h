#pragma once

#include "platform/sqlite/engine/index_log.h"
#include "platform/sqlite/engine/index_reader.h"
#include "platform/sqlite/index/index_snapshot.h"
#include "platform/system/passing_time.h"

namespace melovane::sqlite {

class Session;

/// What an index did; for measurements and tests.
struct IndexFigures
{
    qint64 answers = 0;   ///< searches and counts answered from memory
    qint64 left = 0;      ///< statements of the search shape that SQLite had to answer
    qint64 loads = 0;     ///< times that the table was read as a whole, to the end
    qint64 snapshots = 0; ///< times that it came out of a snapshot of a former run
    qint64 kept = 0;      ///< snapshots written
    qint64 bytes = 0;     ///< memory taken, roughly
};

/// What a session saw of its file when it last made sure that the index is up to date.
struct IndexMark
{
    qint64 dataVersion = -1;
    qint64 ownChanges = -1;
    qint64 catalogue = -1;
    qint64 table = -1; ///< which load it was

    bool operator==(const IndexMark&) const = default;
};

/// What an index works with.
struct IndexOptions
{
    using StartSlices = std::function<void(const std::weak_ptr<class ColumnIndex>&)>;

    std::shared_ptr<IndexFigures> figures; ///< counted up
    /// Asks the owner to call loadSlice() from the message loop until it returns false; empty when
    /// there is no such loop, and a load keeps the search waiting.
    StartSlices startSlices;
    /// Where the index of a large table is kept for the next start; empty keeps none.
    QString snapshotFile;
    std::shared_ptr<PassingTime> time; ///< what `timeout` is measured by
    /// How long a search waits for the table before it turns to SQLite; the rest is loaded in
    /// slices. A slice that was begun is always ended.
    std::chrono::milliseconds timeout{60};
};

/// The column index of one file, shared by its sessions: answers statements of the search shape
/// from memory exactly as SQLite would, rows of equal order in the order of their row ids.
///
/// SQLite stays the store. Before each answer the index makes sure that it knows every committed
/// change; a session with an open transaction sees more than others do and is left to SQLite.
class ColumnIndex : public std::enable_shared_from_this<ColumnIndex>
{
public:
    explicit ColumnIndex(IndexOptions options)
        : m_options(std::move(options))
    {}

    /// The rows in their order, or null when SQLite is to answer.
    [[nodiscard]] std::shared_ptr<const KeySource> search(Session& session,
                                                          const SearchStatement& statement);

    /// The number of rows, or nothing when SQLite is to answer.
    [[nodiscard]] std::optional<qint64> count(Session& session, const SearchStatement& statement);

    /// Goes on loading, and then keeping what was loaded, for some milliseconds. False when there
    /// is nothing left to do. \throws DbError
    [[nodiscard]] bool loadSlice(Session& session);

    /// Forgets what was loaded so far; the next search begins anew.
    void abandonLoad() { m_load.reset(); }

private:
    /// A table on its way into memory, and what was true of the file when that began.
    struct Load
    {
        IndexLoader loader;
        IndexLog::Position position;
        qint64 schema = 0;
        std::vector<SearchOrder> order; ///< of the search that asked for it
    };

    [[nodiscard]] IndexMark markOf(Session& session) const;
    [[nodiscard]] bool wantsLoad() const;
    [[nodiscard]] bool answers(Session& session, const SearchStatement& statement);
    [[nodiscard]] bool isReady(Session& session, const SearchStatement& statement);
    void follow(Session& session, const SearchStatement& statement);
    [[nodiscard]] bool takeChanges(Session& session);
    [[nodiscard]] bool isOfSchema(Session& session) const;
    [[nodiscard]] bool adoptSnapshot(Session& session, const SearchStatement& statement);
    void startLoad(Session& session, const SearchStatement& statement);
    void startReading(Session& session, const SearchStatement& statement);
    void finishLoad();
    [[nodiscard]] bool keepSlice(Session& session);
    [[nodiscard]] bool startKeeping(Session& session);
    void loadUntilTimeout(Session& session);
    void addMissing(Session& session, const SearchStatement& statement);
    [[nodiscard]] std::vector<IndexField> addFromSnapshot(const std::vector<IndexField>& fields);
    void readRows(Session& session, const std::vector<qint64>& keys);

    IndexOptions m_options;
    bool m_snapshotTried = false;
    std::unique_ptr<IndexSnapshot> m_snapshot; ///< of the table, for the columns still to come
    std::unique_ptr<IndexSnapshotWriter> m_keeping;
    int m_marksLeft = 0; ///< tries to mark the file for a snapshot; 0 when none is to be kept
    std::optional<Load> m_load;
    std::unique_ptr<IndexTable> m_table; ///< null before the first load
    std::vector<IndexField> m_fields;    ///< the columns of the table
    IndexLog::Position m_from;           ///< the last change before the table was read
    IndexLog::Position m_position;       ///< changes up to here are in the table
    qint64 m_schema = 0;                 ///< schema version when it was loaded
};

} // namespace melovane::sqlite
