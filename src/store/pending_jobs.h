#pragma once

#include <QSet>
#include <QString>

#include <utility>

namespace melovane {

class Database;
class DBEngine;
class GlobalSettings;

/// Notes for the jobs that work behind the console: which trees are out of date, which tracks must
/// be written to their files.
///
/// Each note is made on a connection of its own, unless a database is given. Quiet there: a note
/// that fails is left out.
class PendingJobs
{
public:
    PendingJobs(DBEngine& engine, const GlobalSettings& settings);

    /// Notes that a tree table must be rebuilt: "Interpret", "Album", "Genre" or "Dir". A name that
    /// was noted in this library since the program started is not noted again.
    void ChangeTree(const QString& tree);

    /// The same on the caller's connection, as part of its transaction. \throws DbError
    static void ChangeTree(Database& database, const QString& tree);

    /// Enters a track for the job that writes tags. A track may be entered several times.
    void SaveEditFID(const QString& fid);

    /// The same within the caller's transaction, so that the change of a track and the order to
    /// write it into the file stand together or not at all. \throws DbError
    static void SaveEditFID(Database& database, const QString& fid);

private:
    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    QSet<std::pair<QString, QString>> m_noted; ///< library and tree
};

} // namespace melovane
