#pragma once

#include "playlists/playlist_ids.h"

#include <QString>
#include <QStringView>

#include <functional>

namespace melovane {

class Database;
class Files;

/// Words of the actions that can be snapshot. Lines of `Undo.conf` use them: keep, letter by
/// letter.
namespace undoaction {
inline constexpr QStringView kAppendEntries = u"Append.Data.From.Playlist";
inline constexpr QStringView kMoveEntries = u"Move.Data.From.Playlist";
inline constexpr QStringView kAppendTracks = u"Appen.Data.From.DB"; // spelt so
inline constexpr QStringView kInsertTracks = u"Insert.Data.From.DB";
inline constexpr QStringView kAppendM3u = u"Appen.Data.From.M3U"; // spelt so
inline constexpr QStringView kInsertM3u = u"Insert.Data.From.M3U";
inline constexpr QStringView kDelete = u"Playlist.Taste.Del";
inline constexpr QStringView kMoveUp = u"Playlist.Taste.Hoch";
inline constexpr QStringView kMoveDown = u"Playlist.Taste.Runter";
} // namespace undoaction

/// Copies a whole list into the table `TEMP_PL_UNDO` before it is changed, for other programs to
/// read. Which actions are copied is told by `Undo.conf`; without that file, none.
///
/// The program's own undo is ListHistory.
class ModUndoRedo
{
public:
    /// Milliseconds since the system started.
    using Uptime = std::function<qint64()>;

    /// \param folder of `Undo.conf`, the program folder
    ModUndoRedo(const Files& files, QString folder, Uptime uptime = systemUptime);

    /// Copies the list, tagged with a number of this snapshot and the action, when `Undo.conf`
    /// names the action. Quiet: without the query or its table the edit that follows runs all the
    /// same. The file is read at the first call and never again.
    void UndoSnapshot(Pnid list, Database& database, QStringView action);

    /// The names that are switched on, in lower case, between percent signs: "%a.an%b.an%". Empty
    /// before the first snapshot.
    [[nodiscard]] const QString& filter() const { return m_filter; }

    [[nodiscard]] static qint64 systemUptime();

private:
    void loadFilter();

    const Files& m_files;
    QString m_folder;
    Uptime m_uptime;
    QString m_filter;
    qint64 m_lastId = -1;
};

} // namespace melovane
