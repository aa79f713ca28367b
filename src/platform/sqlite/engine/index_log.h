#pragma once

#include "platform/sqlite/engine/connection.h"

#include <optional>

namespace melovane::sqlite {

/// The list of changed rows of the searched table, kept in the file by triggers: whoever writes,
/// with whatever program of the suite, adds to it. It belongs to no catalogue.
///
/// Entries are numbered without gaps and only removed from the front, so a reader that knows the
/// last entry it saw knows whether it missed one.
class IndexLog
{
public:
    /// The last entry that a reader knows.
    struct Position
    {
        qint64 entry = 0;
        qint64 row = 0;
    };

    explicit IndexLog(Connection& connection)
        : m_connection(connection)
    {}

    /// Makes the list where it is missing; waits for nobody.
    /// \return false when it is not there: the file is read only, or another program writes
    bool ensure();

    [[nodiscard]] bool isThere();

    /// Adds a random entry, by which this file is told from a copy that went its own way before.
    /// Waits for nobody. Nothing when it was not written.
    [[nodiscard]] std::optional<Position> mark();

    /// True when the entry is still there as it was.
    [[nodiscard]] bool knows(const Position& position);

    /// Where the list ends now.
    [[nodiscard]] Position end();

    /// Row ids of the rows changed behind a position, ascending, each once. Nothing when the list
    /// does not reach back so far, is another one, or tells of more than `most` changes.
    [[nodiscard]] std::optional<std::vector<qint64>> changedSince(const Position& position,
                                                                  qint64 most);

    /// Shortens a long list from the front; waits for nobody.
    void trim();

private:
    Connection& m_connection;
};

} // namespace melovane::sqlite
