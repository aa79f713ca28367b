#pragma once

#include "platform/sqlite/index/index_figures.h"
#include "platform/sqlite/index/index_loader.h"
#include "platform/sqlite/index/index_snapshot.h"
#include "platform/system/passing_time.h"

namespace melovane::sqlite {

class ColumnIndex;

/// What an index works with.
struct IndexOptions
{
    using StartSlices = std::function<void(const std::weak_ptr<ColumnIndex>&)>;

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
    [[nodiscard]] std::shared_ptr<const KeySource> search(IndexedFile& file,
                                                          const SearchStatement& statement);

    /// The number of rows, or nothing when SQLite is to answer.
    [[nodiscard]] std::optional<qint64> count(IndexedFile& file, const SearchStatement& statement);

    /// Goes on loading, and then keeping what was loaded, for some milliseconds. False when there
    /// is nothing left to do. \throws DbError
    [[nodiscard]] bool loadSlice(IndexedFile& file);

    /// Forgets what was loaded so far; the next search begins anew.
    void abandonLoad() { m_load.reset(); }

private:
    /// A table on its way into memory, and what was true of the file when that began.
    struct Load
    {
        IndexLoader loader;
        ChangeLog::Position position;
        qint64 schema = 0;
    };

    [[nodiscard]] IndexMark markOf(IndexedFile& file) const;
    [[nodiscard]] bool wantsLoad() const;
    [[nodiscard]] bool answers(IndexedFile& file, const SearchStatement& statement);
    [[nodiscard]] bool isReady(IndexedFile& file, const SearchStatement& statement);
    void follow(IndexedFile& file, const SearchStatement& statement);
    [[nodiscard]] bool takeChanges(IndexedFile& file);
    [[nodiscard]] bool isOfSchema(IndexedFile& file) const;
    [[nodiscard]] bool adoptSnapshot(IndexedFile& file, const SearchStatement& statement);
    void startLoad(IndexedFile& file, const SearchStatement& statement);
    void startReading(IndexedFile& file, const SearchStatement& statement);
    void finishLoad();
    [[nodiscard]] bool keepSlice(IndexedFile& file);
    [[nodiscard]] bool startKeeping(IndexedFile& file);
    void loadUntilTimeout(IndexedFile& file);
    void addMissing(IndexedFile& file, const SearchStatement& statement);
    [[nodiscard]] std::vector<IndexField> addFromSnapshot(const std::vector<IndexField>& fields);
    void readRows(IndexedFile& file, const std::vector<qint64>& keys);

    IndexOptions m_options;
    bool m_snapshotTried = false;
    std::unique_ptr<IndexSnapshot> m_snapshot; ///< of the table, for the columns still to come
    std::unique_ptr<IndexSnapshotWriter> m_keeping;
    int m_marksLeft = 0; ///< tries to mark the file for a snapshot; 0 when none is to be kept
    std::optional<Load> m_load;
    std::unique_ptr<IndexTable> m_table; ///< null before the first load
    std::vector<IndexField> m_fields;    ///< the columns of the table
    ChangeLog::Position m_from;          ///< the last change before the table was read
    ChangeLog::Position m_position;      ///< changes up to here are in the table
    qint64 m_schema = 0;                 ///< schema version when it was loaded
};

} // namespace melovane::sqlite
