#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace melovane {

/// Asked between two slices of a long work with what is done of the whole, in whatever unit; a
/// whole of 0 says that nobody knows it. False gives the work up.
using SliceStep = std::function<bool(qint64 done, qint64 whole)>;

/// What is done to a database file as a whole.
///
/// Each operation makes connections of its own and shares nothing with an engine, so it may run on
/// another thread than those who use the file.
class DatabaseCare
{
public:
    virtual ~DatabaseCare() = default;

    enum class Depth
    {
        Pages,  ///< every page and row can be read
        Indexes ///< the same, and indexes agree with their rows; several times as slow
    };

    /// Copies what is committed at the call into a new file, in slices: others write meanwhile, and
    /// it never starts over because of them. The copy has no journal.
    /// False when `step` gave it up; then, and after a failure, there is no new file.
    /// \throws DbError kObjectExists when the target is there, and as DBEngine::OpenDatabase
    [[nodiscard]] virtual bool
    copy(const QString& source, const QString& target, const SliceStep& step) = 0;

    /// What is wrong with the file, which is not changed by it: a line per finding, at most a
    /// hundred; none for a whole one, nothing when `step` gave it up. \throws DbError as
    /// DBEngine::OpenDatabase, for a file that cannot be looked into at all
    [[nodiscard]] virtual std::optional<QStringList>
    check(const QString& name, Depth depth, const SliceStep& step) = 0;

    /// How many rows a table has. \throws DbError also when there is no such table
    [[nodiscard]] virtual qint64 rows(const QString& name, const QString& table) = 0;

    /// Makes all indexes anew from their rows. \throws DbError
    virtual void reindex(const QString& name) = 0;

    /// Gives a database that may be in use the content of another one. Programs that have it open
    /// see the new rows at once; nobody can write meanwhile. Until the end, and after a kill, it
    /// holds what it held.
    /// False when `step` gave it up. \throws DbError kInvalidOperation when the pages of the two
    /// have not the same size, and as DBEngine::OpenDatabase
    [[nodiscard]] virtual bool
    restore(const QString& source, const QString& library, const SliceStep& step) = 0;
};

} // namespace melovane
