#pragma once

#include "platform/db/database.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

namespace melovane::bench {

/// One made-up track; the columns of `db_all` that a search or a grid looks at.
struct GeneratedTrack
{
    QString FID, Titel, Interpret, Album, Genre, Jahr, Track, Kommentar, Note, BPM, Path, DName,
        DTime;
    qint64 DLen = 0;
    int DTimeMsec = 0;
    int DKhz = 0;
    int DBit = 0;
    int DEL = 0;
    int FrameStop = 0;
    int PlayCountAll = 0; ///< 0 is stored as null
    double DTSImport = 0; ///< day number
    double Play = 0;      ///< day number; 0 is stored as null
};

/// A library of any size that looks like a collector's: few artists own most tracks (Zipf with
/// exponent 1), words of titles likewise, umlauts and other marks, folders of this system and of
/// others. The same seed and size give the same tracks, on every machine.
///
/// A million tracks have about 40,000 artists, 120,000 albums and 80,000 folders, other sizes in
/// proportion: an artist's albums grow with his tracks, his folder holds the tracks of most of
/// them, and every fourth has a folder below it.
class LibraryGenerator
{
public:
    explicit LibraryGenerator(std::uint64_t seed, int size);

    [[nodiscard]] GeneratedTrack next();

private:
    struct Album
    {
        QString name;
        QString folder; ///< of its tracks: of its own or the artist's
    };

    struct Artist
    {
        QString name;
        QString genre;
        std::vector<Album> albums;
        int firstYear = 1970;
    };

    [[nodiscard]] std::uint64_t random();
    [[nodiscard]] int below(int limit);
    /// 0-based rank below `limit`; rank k is met about 1/(k+1) as often as rank 0.
    [[nodiscard]] int zipf(int limit);
    [[nodiscard]] QString word();
    [[nodiscard]] QString phrase(int least, int most);
    [[nodiscard]] QString artistName();
    [[nodiscard]] Artist artist(int albums);

    std::uint64_t m_state;
    std::vector<QString> m_words;
    std::vector<Artist> m_artists;
    qint64 m_number = 0;
};

/// Adds `size` generated tracks to `db_all` in portions, each one transaction.
/// \param progress called with the rows written so far; may be empty
void fillLibrary(Database& database,
                 int size,
                 std::uint64_t seed,
                 const std::function<void(int)>& progress = {});

} // namespace melovane::bench
