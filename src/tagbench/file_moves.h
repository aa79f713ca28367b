#pragma once

#include "tagbench/move_plan.h"
#include "tagbench/rename_journal.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

namespace melovane {

class Files;

/// Files that get other names while rows of the library follow them: all moves of the present
/// change can be taken back until keep(), by the next tool when this one is killed.
///
/// Never replaces a file. A file that ChangeDir.conf leads to is moved where it lies, by the same
/// way as its stored folder.
class FileMoves
{
public:
    /// \param dataFolder of `ChangeDir.conf` \param library that the rows stand in
    FileMoves(Files& files, const QString& dataFolder, const QString& library);
    /// Takes back what was not kept.
    ~FileMoves();
    FileMoves(const FileMoves&) = delete;
    FileMoves& operator=(const FileMoves&) = delete;

    /// Moves the files; folders on the way are made. Those that keep their names get their fault.
    /// \param goOn asked before each of them, with the number that is done; false ends it
    /// False when it was ended: what has moved waits to be taken back.
    [[nodiscard]] bool move(std::vector<FileMove>& moves, const std::function<bool(int)>& goOn);

    /// The moves stay: rows and files agree. Folders that they have emptied go when that is asked
    /// for.
    void keep(bool removeEmptyFolders);

    /// All files back to where they were, the last one first. One that cannot be moved back is left
    /// to the next start.
    void takeBack();

private:
    /// Empty when it has moved whole, else why it stands where it was.
    [[nodiscard]] QString moveGroup(const MovePlan::Group& group);
    /// Takes back all but the first `count` moves.
    void takeBackTo(size_t count);
    /// Rows and files agree; unless a file was left, which the next tool brings to its name.
    void endJournal();

    Files& m_files;
    MovePlan m_plan;
    RenameJournal m_journal;
    std::vector<std::pair<QString, QString>> m_moved; ///< from, to
    QStringList m_made;                               ///< folders, outer ones first
    bool m_isWhole = true; ///< false when a file could not be taken back to its name
};

} // namespace melovane
