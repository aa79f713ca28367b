#pragma once

#include "store/file_locator.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace melovane {

class Files;

/// Files that get other names while rows of the library follow them: every move of the present
/// change can be taken back until keep().
///
/// Never replaces a file. A file that ChangeDir.conf leads to is moved where it lies, by the same
/// way as its stored folder.
class FileMoves
{
public:
    /// \param dataFolder of `ChangeDir.conf`
    FileMoves(Files& files, const QString& dataFolder);
    /// Takes back what was not kept.
    ~FileMoves();
    FileMoves(const FileMoves&) = delete;
    FileMoves& operator=(const FileMoves&) = delete;

    /// Moves a file; folders on the way are made.
    /// \param stored \param wanted full names as the library stores them
    /// \throws IoError also for a file that is not there; nothing has moved then
    void move(const QString& stored, const QString& wanted);

    /// True when `wanted` names no file but the one of `stored`.
    [[nodiscard]] bool isFree(const QString& stored, const QString& wanted);

    /// The moves stay. Folders that they have emptied go when that is asked for.
    void keep(bool removeEmptyFolders);

    /// All files back to where they were, the last one first; what cannot be moved back is left.
    void takeBack();

private:
    /// Where a file that lies at `actual` for the stored name belongs for the wanted one.
    [[nodiscard]] static QString
    targetOf(const QString& actual, const QString& stored, const QString& wanted);

    Files& m_files;
    FileLocator m_locator;
    std::vector<std::pair<QString, QString>> m_moved; ///< from, to
    QStringList m_made;                               ///< folders, outer ones first
};

} // namespace melovane
