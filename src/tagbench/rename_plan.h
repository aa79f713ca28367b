#pragma once

#include "store/file_locator.h"
#include "tagbench/bench_tracks.h"

#include <QString>

#include <vector>

namespace melovane {

class Files;

/// What becomes of the file of one track.
enum class RenameState
{
    Renamed,
    Cleaned, ///< renamed, with a sign of a field that no name may hold left out
    Same,    ///< it has that name already
    Twice,   ///< another track of the plan gets the same name
    Taken,   ///< there is a file of that name that the plan does not move away first
    NoName,  ///< the template gives no name for the file
    Missing, ///< there is no file to rename
};

struct RenameRow
{
    int track = 0;
    QString shown; ///< the new name, with the folders that the template gives
    QString place; ///< the same in full, in the separators of the stored folder
    RenameState state = RenameState::Same;

    [[nodiscard]] bool isRenamed() const
    {
        return state == RenameState::Renamed || state == RenameState::Cleaned;
    }
};

/// New names for files by a template, see Template2Path. All tracks are planned together, so that
/// two that would get the same name are seen, and so are files that are in the way.
///
/// Folders of the template are made below the folder that the file lies in; a file that lies in
/// folders of these names already stays there. Names that differ in letter case or Unicode form
/// alone count as the same where the volume may not tell them apart.
class RenamePlan
{
public:
    /// \param dataFolder of `ChangeDir.conf`
    RenamePlan(const Files& files, const QString& dataFolder);

    [[nodiscard]] std::vector<RenameRow>
    rows(const BenchTracks& tracks, const std::vector<int>& chosen, const QString& text);

private:
    [[nodiscard]] RenameRow planned(const BenchTrack& track, int number, const QString& text);
    void judge(const BenchTracks& tracks, std::vector<RenameRow>& rows);

    FileLocator m_locator;
};

} // namespace melovane
