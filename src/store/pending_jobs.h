#pragma once

#include <QSet>
#include <QString>

namespace melovane {

class DBEngine;
class GlobalSettings;

/// Notes for the jobs that work behind the console: which trees are out of date, which tracks must
/// be written to their files.
///
/// Each note is made on a connection of its own. Quiet: a note that fails is left out.
class PendingJobs
{
public:
    PendingJobs(DBEngine& engine, const GlobalSettings& settings);

    /// Notes that a tree table must be rebuilt: "Interpret", "Album", "Genre" or "Dir". A name that
    /// was noted since the program started is not noted again.
    void ChangeTree(const QString& tree);

    /// Enters a track for the job that writes tags. A track may be entered several times.
    void SaveEditFID(const QString& fid);

private:
    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    QSet<QString> m_noted;
};

} // namespace melovane
