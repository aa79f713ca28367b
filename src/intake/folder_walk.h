#pragma once

#include "intake/skipped.h"
#include "platform/system/files.h"

#include <QSet>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace melovane {

/// A file with its place.
struct FoundFile
{
    QString folder; ///< with its separator at the end
    QString name;
    FileFacts facts;

    [[nodiscard]] QString path() const { return folder + name; }
};

/// Finds the MP3 files below some folders, a few hundred names at a time, each folder once. The one
/// way from folders to files, for imports and drops.
///
/// Folders and names come in the order of their bytes, a folder's own files before those of its
/// subfolders. Names that begin with "." are left out. Links are followed; a folder that was
/// visited already, under whatever name, is not visited again, so loops end. The extension counts
/// in any letter case.
class FolderWalk
{
public:
    /// \param roots   folders, or single files
    /// \param skipped gets what is no MP3 file but sound, by its kind; roots that are not there,
    ///     folders that cannot be read, and links named like music that lead nowhere
    FolderWalk(const Files& files, const QStringList& roots, Skipped& skipped);

    /// Names of a folder that one next() looks at: well below a tenth of a second also where each
    /// costs a question to a server.
    static constexpr qsizetype kNamesPerLook = 256;

    /// The next files, maybe none, all of one folder; nothing when all folders were visited.
    [[nodiscard]] std::optional<std::vector<FoundFile>> next();

private:
    [[nodiscard]] std::vector<FoundFile> enter(const QString& place);
    [[nodiscard]] std::vector<FoundFile> lookOn();
    void look(const QString& name, std::vector<FoundFile>& found);
    void take(FoundFile file, std::vector<FoundFile>& found);
    void leave();
    [[nodiscard]] bool isFirstVisit(const FileFacts& folder);

    const Files& m_files;
    Skipped& m_skipped;
    std::vector<QString> m_waiting; ///< the next one is the last
    QString m_folder;               ///< the present one, with its separator
    QStringList m_names;            ///< of the present folder; empty between folders
    qsizetype m_nextName = 0;
    std::vector<QString> m_subfolders; ///< of the present folder, as far as it was looked at
    QSet<std::pair<quint64, quint64>> m_visited;
};

} // namespace melovane
