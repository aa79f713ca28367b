#pragma once

#include "tagbench/bench_tracks.h"

#include <QStringList>

#include <vector>

namespace melovane {

class Database;

/// What the tag tool reads of the library. All of it throws DbError.
namespace benchlibrary {

/// The tracks of TEMP_MP3Edit that are still in the library, each once, in the order of their
/// files.
[[nodiscard]] std::vector<BenchTrack> markedTracks(Database& database);

/// Empties TEMP_MP3Edit: what is marked next stands there alone.
void forgetMarked(Database& database);

/// Names of the genres, sorted.
[[nodiscard]] QStringList genres(Database& database);

/// Texts offered for "Kategorie", "Stimmung", "Situation" or "Tempo": those of the language first,
/// then those that the user has typed.
/// \param language 49 German, 44 English
[[nodiscard]] QStringList choices(Database& database, TrackField field, int language);

} // namespace benchlibrary
} // namespace melovane
