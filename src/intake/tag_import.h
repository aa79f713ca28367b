#pragma once

#include "intake/genre_list.h"
#include "intake/imported_track.h"
#include "platform/media/track_tags.h"
#include "platform/system/files.h"

#include <QHash>

#include <array>

namespace melovane {

class Clock;
struct TableDef;

/// What an import makes of one file: a row, or the number of a failure.
struct ImportOutcome
{
    int code = 0;   ///< 0, or a number of importerror
    QString detail; ///< what was found, for a report; empty when all is well
    ImportedTrack track;

    [[nodiscard]] bool isUsable() const { return code == 0; }
};

/// Turns what an audio file says about itself into a row of `db_all`. Used wherever a file enters
/// the library: by the importer and by the reading of playlists.
///
/// Opens no audio file: the caller reads it with a TagReader and hands the reading over.
class TagImport
{
public:
    TagImport(const Files& files, const Clock& clock);

    /// The setting `ID3v2Tags`: which tag is taken. 1 until it is set.
    void SetTagChoice(int id3v2Tags) { m_choice = id3v2Tags; }

    /// Widths of the columns; texts are cut to them. Without it nothing is cut.
    void SetWidths(const TableDef& dbAll);

    /// \throws DbError
    void LoadGenre(Database& database) { m_genres.LoadGenre(database); }

    [[nodiscard]] GenreList& genres() { return m_genres; }

    /// The row of a new track.
    ///
    /// \param folder of the file, with or without its separator at the end
    /// \param facts of the file
    /// A reading with a fault gives importerror::kFileNotFound, kNoAudio (no sound that can be
    /// measured) or kCannotOpen (empty, or not even a tag that can be trusted). The identifier is
    /// the one in the tag, without blanks at its ends: it may be empty, foreign or taken.
    [[nodiscard]] ImportOutcome ImportFile(const QString& folder,
                                           const QString& name,
                                           const FileFacts& facts,
                                           const MediaReading& reading);

private:
    void takeTags(const TrackTags& tags, ImportedTrack& track) const;
    void takeSound(const AudioFacts& audio, ImportedTrack& track) const;
    void takePlace(const QString& folder,
                   const QString& name,
                   const FileFacts& facts,
                   ImportedTrack& track);
    void cutToWidths(ImportedTrack& track) const;

    const Files& m_files;
    const Clock& m_clock;
    int m_choice = 1;
    GenreList m_genres;
    std::array<int, kTrackFieldCount> m_widths{}; ///< letters, by field; 0: no limit
    QHash<quint64, VolumeFacts> m_volumes;        ///< by device
};

/// Default stop position of a track of that length: its last frame.
[[nodiscard]] int frameStopOf(int milliseconds);

} // namespace melovane
