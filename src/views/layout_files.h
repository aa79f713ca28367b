#pragma once

#include "platform/controls/grid_control.h"

#include <QString>

#include <vector>

namespace melovane {

class Files;
class Mod_API;

/// File names of the layouts, also the names of their version values: keep.
inline constexpr QStringView kLibraryLayout = u"gridlayout_db.grx";
inline constexpr QStringView kPlaylistLayout = u"gridlayout_dbpl.grx";

/// The layouts of the grids, files in the folder `Layout` of the configuration path.
///
/// Beside each stands a per-user value with the version of the layout, or the word "repair".
/// Nothing is reported: a file that cannot be read or written leaves things as they are.
class LayoutFiles
{
public:
    LayoutFiles(Mod_API& paths, Files& files);

    /// Arranges a grid as the file of that name says and notes the version of this release. A
    /// layout of another version is loaded all the same. Without a file the grid keeps its own
    /// columns.
    void load(const QString& name, GridControl& grid);

    /// Writes the columns of a grid.
    void save(const QString& name, const GridControl& grid);

    /// The columns of a file; none when it is missing or holds nothing readable.
    [[nodiscard]] std::vector<GridColumn> read(const QString& name) const;
    /// False when the file could not be written.
    bool write(const QString& name, const std::vector<GridColumn>& columns);

    /// Has all layouts put back at the next start.
    void markForRepair();

    /// At the start: puts back each layout that is marked; one of another version stays the user's
    /// own, see load(). The library gets the model "default.grx"; the playlist, whose columns the
    /// model does not have, goes back to those it is made with. What stood there is kept with
    /// ".bak" behind its name.
    void repair();

private:
    [[nodiscard]] QString fileOf(const QString& name) const;

    Mod_API& m_paths;
    Files& m_files;
};

} // namespace melovane
