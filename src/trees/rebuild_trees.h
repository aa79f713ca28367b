#pragma once

#include "trees/refresh_db.h"

#include <QStringList>

namespace melovane {

/// The job behind the console that brings tree tables up to date.
///
/// A side file or a table of it that is missing or damaged is made anew first, and then everything
/// is rebuilt. What table `ChangeTree` says of a tree is cleared once its rows stand, and only when
/// nobody has written into the library since they were counted: a note that is too many costs a
/// rebuild, one that is too few would leave a tree wrong for good.
class RebuildTrees
{
public:
    enum class Scope
    {
        All,    ///< every tree, the counts of playlists and the typed values
        Changed ///< what `ChangeTree` names: "Dir", "Genre", "Album", "Interpret"
    };

    /// What a run has done.
    struct Result
    {
        QStringList rebuilt;  ///< "Dir", "Genre", "Album", "Interpret", then columns and other jobs
        QStringList failures; ///< sentences; what failed keeps its former rows and its note
    };

    /// The sink of the parts is not used: failures stand in the result.
    RebuildTrees(RefreshDB::Parts parts, QString dbName);

    /// Never throws.
    [[nodiscard]] Result run(Scope scope);
    /// One of the four trees, noted or not. Others are left.
    [[nodiscard]] Result runOne(const QString& tree);

    /// Whether a word names a tree that `ChangeTree` may hold.
    [[nodiscard]] static bool isTree(const QString& word);

private:
    [[nodiscard]] bool repairTables();
    [[nodiscard]] QStringList notedTrees();
    void rebuild(const QString& name, const std::function<void()>& operation);
    void rebuildTree(Database& library, const QString& tree);
    void rebuildRest();
    void clearNote(Database& library, const QString& tree, qint64 version);
    void run(const std::function<void(Database& library)>& work);

    RefreshDB::Parts m_parts;
    QString m_dbName;
    Result m_result;
    RefreshDB m_trees;
};

} // namespace melovane
