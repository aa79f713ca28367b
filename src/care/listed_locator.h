#pragma once

#include "store/file_locator.h"

#include <QHash>
#include <QSet>

#include <functional>

namespace melovane {

/// The names in a folder that are those of files, see filesIn().
using FilesIn = std::function<QSet<QString>(const QString& folder)>;

/// A FileLocator for looking up whole libraries: it gives the same answers and looks at each folder
/// once instead of at each file. What changes on the disk meanwhile it does not see: make one for
/// each walk.
class ListedLocator : public FileLocator
{
public:
    ListedLocator(const Files& files, QString dataFolder, FilesIn filesIn);

    /// Whether the file that ExistFile gives for them is there.
    [[nodiscard]] bool isThere(const QString& path, const QString& name);

protected:
    [[nodiscard]] QString find(const QString& file) override;

private:
    struct Folder
    {
        QSet<QString> names;
        bool isThere = true; ///< in this spelling or another
    };

    [[nodiscard]] const Folder& folder(const QString& path);

    bool m_hasFound = false; ///< in the present look-up

    const Files& m_files;
    FilesIn m_filesIn;
    QHash<QString, Folder> m_folders;
    qsizetype m_names = 0; ///< in all of them
};

} // namespace melovane
