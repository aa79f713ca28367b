#pragma once

#include "platform/sqlite/index/change_log.h"
#include "platform/sqlite/index/index_checksum.h"
#include "platform/sqlite/index/index_table.h"

#include <QFile>

namespace melovane::sqlite {

/// Which database an index belongs to, and at what time of it.
///
/// Its rows were read between two entries of the list of changes, bit by bit. So a file that knows
/// both entries has all that the rows hold behind it, and whatever differs now is in the list.
struct SnapshotStamp
{
    qint64 schema = 0;        ///< schema version
    ChangeLog::Position from; ///< the last change before the first row was read
    ChangeLog::Position mark; ///< a random entry made after the last one was
};

/// A column index as a file, so that the next start need not read the whole table.
///
/// Nothing in the file is believed: each piece carries a checksum that is looked at when the piece
/// is read, and numbers are checked before they are used. Whether the index still belongs to the
/// database, the stamp and the list of changes say. A snapshot can be lost at any time.
class IndexSnapshot
{
public:
    /// The snapshot in a file; null when there is none, or it was made by another release, for
    /// other rules of comparing, or is damaged.
    [[nodiscard]] static std::unique_ptr<IndexSnapshot> open(const QString& file);

    /// Removes what programs that were killed have left unfinished in the folder of that file.
    static void removeUnfinished(const QString& file);

    [[nodiscard]] const SnapshotStamp& stamp() const { return m_stamp; }

    /// Row ids; nothing when that piece is damaged.
    [[nodiscard]] std::optional<IndexArray<qint64>> keys();

    /// Null when it is not there, is of another type, or is damaged.
    [[nodiscard]] std::shared_ptr<const IndexColumn> column(const QString& name, bool isText);

    /// Null when it is not there or damaged.
    [[nodiscard]] std::shared_ptr<const IndexOrder> order(const std::vector<SearchOrder>& terms);

    /// A run of bytes in the file.
    struct Piece
    {
        qint64 offset = 0;
        qint64 bytes = 0;
        quint64 checksum = 0;
    };

    /// Something kept: the row ids, a column by its name, an order by its terms.
    struct Entry
    {
        quint8 kind = 0;
        QString name;
        bool isText = false;
        bool fits = false;
        std::vector<Piece> pieces;
    };

private:
    explicit IndexSnapshot(const QString& file)
        : m_file(file)
    {}

    [[nodiscard]] bool readDirectory();
    [[nodiscard]] const Entry* find(quint8 kind, const QString& name) const;
    template <typename Item> bool read(const Piece& piece, IndexArray<Item>& items);

    QFile m_file;
    SnapshotStamp m_stamp;
    std::vector<Entry> m_entries;
    std::size_t m_rows = 0;
};

/// Writes a snapshot bit by bit, other work in between: beside the former one, which it then
/// replaces. A failure, or its end before the last step, leaves the former one.
class IndexSnapshotWriter
{
public:
    /// Keeps what the table holds at this moment.
    IndexSnapshotWriter(QString file, const SnapshotStamp& stamp, const IndexTable& table);
    ~IndexSnapshotWriter();
    IndexSnapshotWriter(const IndexSnapshotWriter&) = delete;
    IndexSnapshotWriter& operator=(const IndexSnapshotWriter&) = delete;

    /// Goes on for some milliseconds. False when there is nothing left to do.
    [[nodiscard]] bool step();

    /// The snapshot is in its place.
    [[nodiscard]] bool isKept() const { return m_kept; }

private:
    /// Bytes that the table holds, and where they go.
    struct Source
    {
        std::shared_ptr<const void> owner;
        const char* data = nullptr;
        std::size_t entry = 0;
        std::size_t piece = 0;
    };

    template <typename Item> void add(std::size_t entry, const IndexArray<Item>& items);
    [[nodiscard]] bool begin();
    [[nodiscard]] bool writePart();
    [[nodiscard]] bool finish();
    void removeOthers() const;

    QString m_name;
    SnapshotStamp m_stamp;
    std::vector<IndexSnapshot::Entry> m_entries;
    std::vector<Source> m_sources;
    QFile m_file; ///< written beside the snapshot; locked while it is
    std::size_t m_source = 0;
    qint64 m_done = 0;   ///< bytes of the present source
    IndexChecksum m_sum; ///< of these
    bool m_open = false;
    bool m_kept = false;
};

} // namespace melovane::sqlite
