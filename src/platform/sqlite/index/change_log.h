#pragma once

#include <QtGlobal>

#include <optional>
#include <vector>

namespace melovane::sqlite {

/// The list of changed rows of the searched table. Whoever writes adds to it.
///
/// Entries are numbered without gaps and only removed from the front, so a reader that knows the
/// last entry it saw knows whether it missed one.
class ChangeLog
{
public:
    /// The last entry that a reader knows.
    struct Position
    {
        qint64 entry = 0;
        qint64 row = 0;
    };

    virtual ~ChangeLog() = default;

    /// Makes the list where it is missing; waits for nobody.
    /// \return false when it is not there: the file is read only, or another program writes
    [[nodiscard]] virtual bool ensure() = 0;

    /// Adds a random entry, by which this file is told from a copy that went its own way before.
    /// Waits for nobody. Nothing when it was not written.
    [[nodiscard]] virtual std::optional<Position> mark() = 0;

    /// True when the entry is still there as it was.
    [[nodiscard]] virtual bool knows(const Position& position) = 0;

    /// Where the list ends now.
    [[nodiscard]] virtual Position end() = 0;

    /// Row ids of the rows changed behind a position, ascending, each once. Nothing when the list
    /// does not reach back so far, is another one, or tells of more than `max` changes.
    [[nodiscard]] virtual std::optional<std::vector<qint64>> changedSince(const Position& position,
                                                                          qint64 max) = 0;

    /// Shortens a long list from the front; waits for nobody.
    virtual void trim() = 0;
};

} // namespace melovane::sqlite
