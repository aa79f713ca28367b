#pragma once

#include "platform/sqlite/index_log.h"
#include "platform/sqlite/index_reader.h"

namespace melovane::sqlite {

class Session;

/// What an index did; for measurements and tests.
struct IndexFigures
{
    qint64 answers = 0; ///< searches and counts answered from memory
    qint64 left = 0;    ///< statements of the search shape that SQLite had to answer
    qint64 loads = 0;   ///< times that the table was read as a whole
    qint64 bytes = 0;   ///< memory taken, roughly
};

/// What a session saw of its file when it last made sure that the index is up to date.
struct IndexMark
{
    qint64 dataVersion = -1;
    qint64 ownChanges = -1;
    qint64 catalogue = -1;

    bool operator==(const IndexMark&) const = default;
};

/// The column index of one file, shared by its sessions: answers statements of the search shape
/// from memory exactly as SQLite would, rows of equal order in the order of their row ids.
///
/// SQLite stays the store. Before each answer the index makes sure that it knows every committed
/// change; a session with an open transaction sees more than others do and is left to SQLite.
class ColumnIndex
{
public:
    /// \param figures counted up; outlives the index
    explicit ColumnIndex(std::shared_ptr<IndexFigures> figures)
        : m_figures(std::move(figures))
    {}

    /// The rows in their order, or null when SQLite is to answer.
    [[nodiscard]] std::shared_ptr<const KeySource> search(Session& session,
                                                          const SearchStatement& statement);

    /// The number of rows, or nothing when SQLite is to answer.
    [[nodiscard]] std::optional<qint64> count(Session& session, const SearchStatement& statement);

private:
    [[nodiscard]] bool answers(Session& session, const SearchStatement& statement);
    [[nodiscard]] bool isReady(Session& session, const SearchStatement& statement);
    void follow(Session& session, const SearchStatement& statement);
    [[nodiscard]] bool takeChanges(Session& session);
    void load(Session& session, const SearchStatement& statement);
    void addColumns(Session& session, const QStringList& names);
    void readRows(Session& session, const std::vector<qint64>& keys);

    std::shared_ptr<IndexFigures> m_figures;
    std::unique_ptr<IndexTable> m_table; ///< null until the first search
    std::vector<IndexField> m_fields;    ///< the columns of the table
    IndexLog::Position m_position;       ///< changes up to here are in the table
    qint64 m_schema = 0;                 ///< schema version when it was loaded
};

} // namespace melovane::sqlite
