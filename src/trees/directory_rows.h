#pragma once

#include "platform/controls/tree_control.h"

#include <QString>

#include <vector>

namespace melovane {

class Database;

/// How the rows of a folder are worded, as a table of folders has them.
struct FolderText
{
    int level = 0;
    QString name; ///< of a disc: the component, a blank, the volume
    QString volume;
    bool isDisc = false;
    int own = 0;   ///< tracks directly in it
    int total = 0; ///< tracks in it and below

    /// The count in brackets.
    [[nodiscard]] QString count() const;
    /// Everything in front of the count, with the blank behind it.
    [[nodiscard]] QString title() const;
};

namespace treerows {

/// Adds the folders of `tree_dir` in its order. \throws DbError
void addFolders(Database& database, std::vector<TreeRow>& rows);

} // namespace treerows

} // namespace melovane
