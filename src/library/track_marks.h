#pragma once

#include <QString>

namespace melovane {

class ConfigObjects;
class GridRows;
class LibraryLook;

/// Which tracks of the library other parts of the program stand on, and how the grid shows it. All
/// of what it is made with outlives it.
class TrackMarks
{
public:
    TrackMarks(const ConfigObjects& texts, GridRows& rows, LibraryLook& look);

    /// The track that another view shows; empty for none, here and below.
    void setShown(const QString& fid);

    /// The track in the monitor player, as long as it plays.
    void setHeard(const QString& fid);

private:
    const ConfigObjects& m_texts;
    GridRows& m_rows;
    LibraryLook& m_look;
};

} // namespace melovane
