#pragma once

#include "store/all_data.h"

#include <QString>

namespace melovane {

/// What the main window asks the database for. Its statements stand behind this, so that the
/// window itself knows none.
class WindowData
{
public:
    virtual ~WindowData() = default;

    /// Takes the connection that the window keeps for its life. The library stays that of the
    /// program, whatever the settings file names, until another one is opened. \throws DbError
    virtual void open() = 0;
    /// The same with another library, and lets the former one go. \throws DbError for one that
    /// cannot be opened or is of another version, and the former one stays
    virtual void openOther(const QString& name) = 0;
    /// Lets another program have the file alone: until open() nobody here opens it, whoever tries
    /// gets kReleased.
    virtual void release() = 0;

    /// What other programs have written is seen from now on.
    virtual void idle() = 0;

    /// Has the two side files made anew where they are missing. True when the trees were among
    /// them and have to be filled.
    [[nodiscard]] virtual bool sideFilesWereStale() = 0;

    /// \throws DbError kReleased while another program has the library, and for one that cannot be
    /// opened
    virtual void requireLibrary() = 0;

    /// Fills the table of a tree anew, here and at once: "Dir", "Genre", "Album", "Interpret".
    virtual void rebuildTree(const QString& tree) = 0;

    /// Tracks in the library. \throws DbError
    [[nodiscard]] virtual qint64 trackCount() = 0;

    /// True when at least one playlist has to be written to its file. \throws DbError
    [[nodiscard]] virtual bool IsChangePlaylist() = 0;

    /// Never fails; see TrackReader.
    [[nodiscard]] virtual MlvAllData GetAllDataByFid(const QString& fid) = 0;
};

} // namespace melovane
