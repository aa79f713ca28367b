#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace melovane {

/// A folder that directly holds tracks, as `v_tree_dir` gives it.
struct TrackFolder
{
    QString Path; ///< with its closing separator
    QString DriveName;
    int DriveTyp = 0; ///< a VolumeKind
    int anzahl = 0;   ///< tracks directly in it
};

/// A row of `tree_dir`.
struct FolderRow
{
    int rLevel = 0; ///< depth; 0 is the drive, the root or the server
    QString Name;
    QString bname;
    QString vName;
    int Drive = 0;
    int anzahl = 0;             ///< tracks directly in it
    std::optional<int> BAnzahl; ///< tracks in it and below; none: left empty
    QString Path;
    QString imgkey;
    QString folded; ///< Path in the form in which paths compare; no column
};

/// The rows of all folders in the order of their writing: of each folder of a volume the first row
/// alone. Without totals.
[[nodiscard]] std::vector<FolderRow> folderRows(const std::vector<TrackFolder>& folders);

/// Fills the totals in one pass over the folders.
///
/// A folder of a fixed volume counts all tracks whose path begins with its own, whatever volume
/// they are on. Discs share their drive's letter, so on a disc only the rows of its own label
/// count, and a folder that directly holds tracks keeps an empty total.
/// \param folders what the rows were made of
void fillTotals(std::vector<FolderRow>& rows, const std::vector<TrackFolder>& folders);

} // namespace melovane
