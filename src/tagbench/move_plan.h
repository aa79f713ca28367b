#pragma once

#include "store/file_locator.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

class Files;

/// A file that gets another name because its track does.
struct FileMove
{
    QString fid;
    QString stored; ///< full names as the library stores them: of now
    QString wanted;
    QString fault = {}; ///< of the system: why it keeps its name; empty for one that moves
};

/// One renaming on the disc.
struct MoveStep
{
    size_t move = 0; ///< among the moves
    QString from;    ///< system paths
    QString to;
};

/// The order in which many files get new names, so that no name is taken when its turn comes.
///
/// Who wants the name of another waits until that one is gone. Of a ring, two that swap their names
/// at least, one waits beside under a name of its own. A file that nobody moves away is in the way
/// for good, and so is one that waits for it.
class MovePlan
{
public:
    /// Steps that stand together or not at all: one file, or a ring.
    using Group = std::vector<MoveStep>;

    /// \param dataFolder of `ChangeDir.conf`, which tells where a stored file lies
    MovePlan(const Files& files, const QString& dataFolder);

    /// Plans all moves together; those that cannot be done get their fault.
    [[nodiscard]] std::vector<Group> groups(std::vector<FileMove>& moves);

    /// Folders that the steps need and that are not there, outer ones first.
    [[nodiscard]] QStringList missingFolders(const std::vector<Group>& groups) const;

private:
    /// A file and whom it waits for.
    struct Node
    {
        QString from;
        QString to;
        int waitsFor = kNobody;
        bool isPlanned = false;
    };

    static constexpr int kNobody = -1;
    static constexpr int kBlocked = -2; ///< waits for what stays

    void find(std::vector<FileMove>& moves);
    [[nodiscard]] int inTheWayOf(size_t node) const;
    void addFree(std::vector<Group>& groups);
    void addRings(std::vector<Group>& groups);
    [[nodiscard]] std::vector<size_t> ringOf(size_t node) const;
    [[nodiscard]] QString waitingPlace(const QString& place) const;

    const Files& m_files;
    FileLocator m_locator;
    std::vector<Node> m_nodes;
};

} // namespace melovane
