#include "bench/library_generator.h"

#include "store/milli_sec_to_min.h"

#include <array>
#include <cmath>

namespace melovane::bench {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array kSyllables = {
    u"lu",    u"ma",    u"ne",  u"so",    u"ra",   u"ti", u"kö",  u"vä",  u"bü",  u"strom",
    u"licht", u"nacht", u"el",  u"an",    u"or",   u"is", u"um",  u"hal", u"ber", u"gen",
    u"tor",   u"wald",  u"see", u"mond",  u"ka",   u"do", u"fi",  u"je",  u"pra", u"qui",
    u"xe",    u"ze",    u"gla", u"schne", u"stra", u"ße", u"tan", u"ver", u"win", u"glo",
    u"rhyth", u"bea",   u"dub", u"sy",    u"é",    u"ño", u"çe",  u"ø",
};

constexpr std::array kGenres = {
    u"House",   u"Deep House", u"Techno",      u"Trance",  u"Pop",   u"Rock",
    u"Ambient", u"Downtempo",  u"Drum & Bass", u"Dance",   u"Disco", u"Funk",
    u"Soul",    u"R&B",        u"Hip-Hop",     u"Reggae",  u"Jazz",  u"Blues",
    u"Klassik", u"Schlager",   u"Electro",     u"Minimal", u"Latin", u"Country",
};

constexpr int kWordCount = 6000;
/// Of the artists that are made; of the rarest many never get a track.
constexpr int kTracksPerArtist = 17;
/// Tracks of an artist for which he has one more album than the first.
constexpr int kTracksPerAlbum = 11;
/// Of so many albums one has a folder of its own.
constexpr int kAlbumsPerFolder = 4;
constexpr int kPortion = 20'000;

QString capital(QString text)
{
    if (!text.isEmpty()) {
        text[0] = text[0].toUpper();
    }
    return text;
}

} // namespace

LibraryGenerator::LibraryGenerator(std::uint64_t seed, int size)
    : m_state(seed)
{
    m_words.reserve(kWordCount);
    for (int i = 0; i < kWordCount; ++i) {
        QString made;
        for (int parts = 1 + below(3); parts > 0; --parts) {
            made += QStringView(kSyllables[std::size_t(below(int(kSyllables.size())))]);
        }
        m_words.push_back(capital(made));
    }
    const int artists = std::max(1, size / kTracksPerArtist);
    m_artists.reserve(std::size_t(artists));
    for (int rank = 0; rank < artists; ++rank) {
        // What zipf() gives to an artist of this rank.
        const double tracks = size * std::log1p(1.0 / (rank + 1)) / std::log1p(double(artists));
        m_artists.push_back(artist(1 + int(std::lround(tracks / kTracksPerAlbum))));
    }
}

LibraryGenerator::Artist LibraryGenerator::artist(int albums)
{
    Artist made;
    made.name = artistName();
    made.genre = QStringView(kGenres[std::size_t(zipf(int(kGenres.size())))]).toString();
    made.firstYear = 1960 + below(60);
    const int place = below(10);
    const QChar separator = place < 2 ? u'\\' : u'/';
    const QString root = place < 2   ? u"D:\\Musik\\"_s
                         : place < 3 ? u"/media/nas/Sets/"_s
                                     : u"/home/u/Musik/"_s;
    const QString folder = root + made.name + separator;
    made.albums.reserve(std::size_t(albums));
    for (int i = 0; i < albums; ++i) {
        const QString name = phrase(2, 4);
        const bool isFolder = below(kAlbumsPerFolder) == 0;
        made.albums.push_back({name, isFolder ? folder + name + separator : folder});
    }
    return made;
}

std::uint64_t LibraryGenerator::random()
{
    // splitmix64: the same sequence on every machine, unlike the distributions of the library.
    m_state += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
    return mixed ^ (mixed >> 31U);
}

int LibraryGenerator::below(int limit)
{
    return int(random() % std::uint64_t(limit));
}

int LibraryGenerator::zipf(int limit)
{
    // Inverse of the continuous distribution with density 1/x on [1, limit + 1).
    const double uniform = double(random() >> 11U) / double(1ULL << 53U);
    return std::min(limit - 1, int(std::pow(double(limit) + 1, uniform)) - 1);
}

QString LibraryGenerator::word()
{
    return m_words[std::size_t(zipf(int(m_words.size())))];
}

QString LibraryGenerator::phrase(int least, int most)
{
    QStringList words;
    for (int n = least + below(most - least + 1); n > 0; --n) {
        words.append(word());
    }
    return words.join(u' ');
}

QString LibraryGenerator::artistName()
{
    const QString first = m_words[std::size_t(below(int(m_words.size())))];
    const QString second = m_words[std::size_t(below(int(m_words.size())))];
    switch (below(8)) {
    case 0:
        return u"DJ "_s + first;
    case 1:
        return u"Die "_s + first + u'n';
    case 2:
        return first + u" & "_s + second;
    case 3:
        return first;
    case 4:
        return first + u" O'"_s + second;
    default:
        return first + u' ' + second;
    }
}

GeneratedTrack LibraryGenerator::next()
{
    const Artist& artist = m_artists[std::size_t(zipf(int(m_artists.size())))];
    const Album& album = artist.albums[std::size_t(below(int(artist.albums.size())))];
    GeneratedTrack track;
    // Identifiers of the years 2005 to 2022, a thousand to a second.
    track.FID = QString::number(157'766'400'000LL + m_number * 500);
    ++m_number;
    track.Titel = phrase(1, 4);
    if (below(6) == 0) {
        track.Titel += u" (Extended Mix)"_s;
    }
    track.Interpret = artist.name;
    track.Album = album.name;
    track.Genre = artist.genre;
    track.Jahr = QString::number(artist.firstYear + below(12));
    track.Track = QString::number(1 + below(18));
    if (below(5) == 0) {
        track.Kommentar = phrase(2, 8);
    }
    if (below(3) == 0) {
        track.Note = QString::number(1 + below(5));
    }
    if (below(4) != 0) {
        track.BPM = QString::number(70 + below(110));
    }
    track.Path = album.folder;
    track.DName = Mod_MilliSecToMin::PadNumber(track.Track.toInt(), 2) + u" - "_s + artist.name +
                  u" - "_s + track.Titel + u".mp3"_s;
    track.DTimeMsec = 60'000 + below(420'000);
    track.DTime = Mod_MilliSecToMin::MilliSecToMin(track.DTimeMsec);
    track.DKhz = 44100;
    track.DBit = below(4) == 0 ? -99 : 128 + 64 * below(4);
    track.DLen = qint64(track.DTimeMsec) * 24;
    track.FrameStop = int(std::nearbyint(track.DTimeMsec / Mod_MilliSecToMin::kFrameMs));
    const int state = below(100);
    track.DEL = state == 0 ? -1 : state == 1 ? 2 : 0;
    track.DTSImport = 43'000 + below(3'000) + below(86'400) / 86'400.0;
    if (below(3) == 0) {
        track.PlayCountAll = 1 + zipf(200);
        track.Play = track.DTSImport + below(900);
    }
    return track;
}

namespace {

Value orNull(int number)
{
    return number == 0 ? Value() : Value(number);
}

void addTrack(Recordset& rows, const GeneratedTrack& track)
{
    rows.AddNew();
    const std::pair<QStringView, Value> cells[] = {
        {u"FID", track.FID},
        {u"Titel", track.Titel},
        {u"Interpret", track.Interpret},
        {u"Album", track.Album},
        {u"Genre", track.Genre},
        {u"Jahr", track.Jahr},
        {u"Track", track.Track},
        {u"Kommentar", track.Kommentar},
        {u"Note", track.Note},
        {u"BPM", track.BPM},
        {u"Path", track.Path},
        {u"DName", track.DName},
        {u"DTime", track.DTime},
        {u"DLen", track.DLen},
        {u"DTimeMsec", track.DTimeMsec},
        {u"DKhz", track.DKhz},
        {u"DBit", track.DBit},
        {u"DEL", track.DEL},
        {u"FrameStart", 0},
        {u"FrameStop", track.FrameStop},
        {u"DriveTyp", 2},
        {u"PlayCountAll", orNull(track.PlayCountAll)},
        {u"DTSImport", Value::Day{track.DTSImport}},
        {u"Play", track.Play > 0 ? Value(Value::Day{track.Play}) : Value()},
    };
    for (const auto& [column, value] : cells) {
        rows.setValue(column, value);
    }
    rows.Update();
}

} // namespace

void fillLibrary(Database& database,
                 int size,
                 std::uint64_t seed,
                 const std::function<void(int)>& progress)
{
    LibraryGenerator generator(seed, size);
    for (int written = 0; written < size;) {
        // A set of its own per portion, so that its keys do not pile up.
        Transaction portion(database);
        const auto rows = database.OpenRecordset(u"select * from db_all where fid=''"_s);
        for (const int end = std::min(size, written + kPortion); written < end; ++written) {
            addTrack(*rows, generator.next());
        }
        portion.commit();
        if (progress) {
            progress(written);
        }
    }
}

} // namespace melovane::bench
