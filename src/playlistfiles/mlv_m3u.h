#pragma once

#include "intake/import_errors.h"
#include "playlistfiles/m3u_errors.h"
#include "playlistfiles/m3u_loader.h"
#include "playlists/playlist_ids.h"

#include <QString>

#include <functional>
#include <optional>

namespace melovane {

class ListEdit;
class NewTracks;

/// Lists as files: reads M3U files of this suite and of other programs into lists, and writes them.
///
/// To read: LoadPlaylist, then once Append, Insert or importAsNewList, which take what was loaded
/// from the table `TEMP_PLImportM3U`. Each operation opens the database that the settings name.
/// None throws: failures are told by the events, and those of LoadPlaylist and SavePlaylist stand
/// in the log. Imports are one transaction each, with their entry in the history of lists.
class MlvM3U
{
public:
    explicit MlvM3U(M3uParts parts);

    M3uEvents events;

    /// Play action of new entries, 0 at first: see kAktionMix and the others.
    void SetAktion(int aktion) { m_aktion = aktion; }

    /// Finds the tracks of a list file; those that the library lacks are read and enter it.
    ///
    /// The number of failures; each skips one entry, good ones stay. A list that was given up
    /// (see wasGivenUp) leaves nothing to be taken, and the library as it was.
    int LoadPlaylist(const QString& file);

    /// The same for several lists, one behind the other, as if they were one.
    int LoadPlaylists(const QStringList& files);

    /// True when `goOn` ended the last load, or the writing behind it. Then that one has written
    /// nothing; tracks that a load has entered stay when the list behind it is given up.
    [[nodiscard]] bool wasGivenUp() const { return m_givenUp; }

    /// Entries that the last load has found.
    [[nodiscard]] int loaded() const { return m_loaded; }

    /// Tracks that have entered the library with the last load: whoever shows the library is told.
    [[nodiscard]] int entered() const { return m_entered; }

    /// Failures since the last load began, those of what was done with it included.
    [[nodiscard]] int failures() const { return m_errors.count(); }

    /// Puts the loaded entries behind the last one; in an empty list the first stands at SID 2.
    /// \return how many
    int Append(Pnid list);

    /// Inserts the loaded entries at position + 2 and so on; the entries from `position` on make
    /// room, the first of them shares its position with the last new one. \return how many
    int Insert(Sid position, Pnid list);

    /// Makes a list with the loaded entries; undone as a whole. Pnid{0} when that failed.
    [[nodiscard]] Pnid importAsNewList(const QString& name, GroupId group);

    /// \see importerror::GetMessageText
    [[nodiscard]] static QString GetMessageText(int code);

    /// True when at least one list has to be written to its file.
    [[nodiscard]] bool IsChangePlaylist();

    /// Marks all lists as to be written.
    void ChangeAllPlaylist();

    /// An empty list at the position of its own number. Pnid{0} when that failed.
    [[nodiscard]] Pnid CreatePlaylist(const QString& name, GroupId group);

    /// Writes a list to a file; whether it waits to be saved stays as it was.
    ///
    /// \param target  the file; empty: the name of the list in `folder`. Becomes the file that was
    ///                written, or is left alone
    /// \param relative names audio files without their folder
    /// False after a failure, which was told; an older file then is as it was.
    bool SavePlaylist(Pnid list, QString& target, bool relative, const QString& folder);

    /// Entries that the last save has left out, see M3uWriter::withoutTrack.
    [[nodiscard]] const QStringList& leftOut() const { return m_leftOut; }

    /// Number of the error with which the library ended the last operation; 0 when it did not.
    [[nodiscard]] int databaseFailure() const { return m_databaseFailure; }

    /// The name that the file of a list gets, without ".m3u".
    [[nodiscard]] QString fileNameOf(Pnid list);

    /// Full path of the log of failures.
    [[nodiscard]] QString logFile() const { return m_errors.file(); }

private:
    void guarded(const QString& source,
                 const QString& file,
                 const std::function<void()>& work,
                 int databaseCode = importerror::kDatabase);
    void runtimeFailure(int code, const QString& source, const QString& file, const QString& text);
    void load(const QStringList& files);
    [[nodiscard]] bool keep(Database& database, NewTracks& tracks, M3uLoader& loader);
    int addSlice(Database& database, Pnid list, qint64 before, int first, int last);
    [[nodiscard]] std::optional<int> addLoaded(Database& database, Pnid list, qint64 before);

    M3uParts m_parts;
    M3uErrors m_errors;
    int m_aktion = 0;
    int m_loaded = 0;
    int m_entered = 0;
    bool m_givenUp = false;
    int m_databaseFailure = 0;
    QStringList m_leftOut;
};

} // namespace melovane
