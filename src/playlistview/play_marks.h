#pragma once

#include "playlists/playlist_ids.h"

namespace melovane {

class GlobalSettings;
class GridControl;
class GridRows;
class PlaylistLook;

/// Which entries play now and next and which one the monitor player has, and how the grid shows it.
/// All of what it is made with outlives it.
class PlayMarks
{
public:
    PlayMarks(const GlobalSettings& settings,
              GridControl& grid,
              GridRows& rows,
              PlaylistLook& look);

    /// 0 for none, here and below.
    [[nodiscard]] Plid now() const { return m_now; }

    [[nodiscard]] Plid next() const { return m_next; }

    /// Paints the rows, and shows the one that plays now.
    void set(Plid now, Plid next);

    /// The user has the monitor player play an entry of a track.
    void setHeard(Plid entry, const QString& fid);

    /// What the monitor player plays now, whoever asked for it: the entry that the user asked for,
    /// as long as it is one of this track, else every entry of the track. Empty for none.
    void setHeardTrack(const QString& fid);

    /// Scrolls to the entry that plays now, unless the setting `View.Current.Playlist.Pos` is off.
    /// A list without it stays where it is.
    void showNow();

private:
    const GlobalSettings& m_settings;
    GridControl& m_grid;
    GridRows& m_rows;
    PlaylistLook& m_look;
    Plid m_now{};
    Plid m_next{};
    Plid m_heard{};
    QString m_heardTrack;
};

} // namespace melovane
