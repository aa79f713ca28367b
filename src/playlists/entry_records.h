#pragma once

#include "playlists/list_step.h"
#include "playlists/playlist_detail.h"
#include "store/error_sink.h"

#include <functional>

namespace melovane {

class Database;
class DBEngine;
class FileLocator;
class Files;
class GlobalSettings;

class ListHistory;
class Recordset;

/// Where the classes behind MLVFunction work, and what they need for it. Outlives them.
struct PlaylistParts
{
    DBEngine& engine;
    const GlobalSettings& settings; ///< names the database and the default styles
    const Files& files;
    FileLocator& locator;
    ListHistory& history;
    ErrorSink sink; ///< learns of failures; operations are quiet
};

/// Reads and writes single entries. Quiet: a failed read gives what could be read, a failed write
/// leaves the row as it was.
class EntryRecords
{
public:
    explicit EntryRecords(PlaylistParts parts);

    /// A missing entry gives a record with nothing but default styles.
    [[nodiscard]] MlvPlaylistDetail byEntry(Plid entry) const;
    /// The same from a track, where there is no entry: without numbers, action and command.
    [[nodiscard]] MlvPlaylistDetail byTrack(const QString& fid) const;

    /// Writes start, stop, volume, pitch, mix time, action and command where they differ (a null
    /// differs from every value), and the equaliser when it is set. `detail.eq` is renewed.
    void update(MlvPlaylistDetail& detail);

    /// Writes start and stop alone, where they differ; in frames.
    void saveStartStop(Plid entry, int start, int stop);

    /// \param command a null text leaves the column as it is, an empty one is written
    void saveAktion(Plid entry, int aktion, const QString& command);

    /// Start and stop become those of the track, when `detail.saveDefault` asks for it.
    void saveStartStopDefault(const MlvPlaylistDetail& detail);

    /// Nothing when neither mix style is set.
    void saveMixIn(const MlvPlaylistDetail& detail);
    void saveMixOut(const MlvPlaylistDetail& detail);
    /// Nothing when the equaliser is not set.
    void saveEq(const MlvPlaylistDetail& detail);

private:
    void quiet(const QString& where, const std::function<void(Database&)>& work) const;
    void fill(const Recordset& row, MlvPlaylistDetail& detail) const;
    void fillStyles(MlvPlaylistDetail& detail) const;
    void change(Plid entry, ListAction action, const std::function<void(Recordset&)>& write);
    void saveColumn(Plid entry, QStringView column, const QString& text);

    PlaylistParts m_parts;
};

/// The style, or the default when it is not set; the default "null" is none.
[[nodiscard]] MLVMixStyle styleOrDefault(const MLVMixStyle& style, const QString& fallback);
/// Likewise for the equaliser, whose default is neutral.
[[nodiscard]] MlvEQStyle styleOrDefault(const MlvEQStyle& style);

/// Reserved operation of the player's fade: the first four values are all total / 10000 times the
/// first value of the source, rounded down, and the fifth is 0. That is how the suite wants it.
/// \param total milliseconds
[[nodiscard]] MLVMixStyle MixStyleComputeTime(int total, const MLVMixStyle& source);

} // namespace melovane
