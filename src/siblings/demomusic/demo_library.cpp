#include "siblings/demomusic/demo_library.h"

#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <QStringList>

#include <array>
#include <random>

namespace melovane::demomusic {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList kFirstNames = {u"Änne"_s,   u"Björn"_s, u"Cleo"_s,  u"Dörte"_s, u"Edda"_s,
                                 u"Fjodor"_s, u"Greta"_s, u"Hülya"_s, u"Ines"_s,  u"Jörg"_s,
                                 u"Käthe"_s,  u"Lasse"_s, u"Mika"_s,  u"Nouri"_s, u"Özlem"_s};
const QStringList kLastNames = {u"Abendroth"_s,  u"Blümel"_s,   u"Çelik"_s,    u"Dreßler"_s,
                                u"Eschenbach"_s, u"Förster"_s,  u"Grünwald"_s, u"Hallström"_s,
                                u"Immergrün"_s,  u"Jäger"_s,    u"Königsee"_s, u"Lindqvist"_s,
                                u"Möwenfeld"_s,  u"Nachtweih"_s};
const QStringList kBands = {u"Die Wellenbrecher"_s,   u"Nordlicht Orchester"_s, u"Kaltfront"_s,
                            u"The Paper Lanterns"_s,  u"Glasgarten"_s,          u"Zündfunke 88"_s,
                            u"Les Oiseaux Bleus"_s,   u"Straßenfeger"_s,        u"Mondäne Affen"_s,
                            u"Club der Übermüdeten"_s};
const QStringList kAdjectives = {u"Blaue"_s, u"Stille"_s, u"Späte"_s,  u"Wilde"_s, u"Goldene"_s,
                                 u"Müde"_s,  u"Letzte"_s, u"Süße"_s,   u"Weiße"_s, u"Ferne"_s,
                                 u"Laute"_s, u"Grüne"_s,  u"Schräge"_s};
const QStringList kNouns = {u"Nacht"_s, u"Straße"_s, u"Brücke"_s, u"Welle"_s,    u"Stadt"_s,
                            u"Küste"_s, u"Sonne"_s,  u"Frühe"_s,  u"Maschine"_s, u"Liebe"_s,
                            u"Runde"_s, u"Blüte"_s,  u"Reise"_s,  u"Stunde"_s};
const QStringList kEndings = {u""_s,     u" am Fluss"_s,       u" (Live)"_s,    u" für zwei"_s,
                              u" '82"_s, u" - Extended Mix"_s, u" ohne Dich"_s, u" & mehr"_s};
const QStringList kGenres = {u"(17)"_s, u"Pop"_s,      u"(35)"_s,       u"Dance"_s, u"(18)"_s,
                             u"Jazz"_s, u"Schlager"_s, u"Electronic"_s, u"(52)"_s,  u"Soul"_s};
const QStringList kKategorien = {u"Tanz"_s, u"Hintergrund"_s, u"Oldie"_s, u"Charts"_s};
const QStringList kSituationen = {u"Hochzeit"_s, u"Club"_s, u"Radio"_s, u"Sommerfest"_s};
const QStringList kStimmungen = {u"fröhlich"_s, u"ruhig"_s, u"melancholisch"_s, u"treibend"_s};
const QStringList kTempi = {u"langsam"_s, u"mittel"_s, u"schnell"_s};

/// Numbers that depend on a seed and a purpose alone, so that each track can be made by itself.
class Dice
{
public:
    Dice(quint32 seed, quint32 purpose)
        : m_random(seed * 2654435761U ^ purpose * 40503U)
    {
        m_random.discard(3);
    }

    /// 0 to `sides` - 1.
    int roll(int sides) { return static_cast<int>(m_random() % static_cast<quint32>(sides)); }

    [[nodiscard]] bool oneIn(int sides) { return roll(sides) == 0; }

    const QString& pick(const QStringList& list)
    {
        return list.at(roll(static_cast<int>(list.size())));
    }

private:
    std::mt19937 m_random;
};

struct Song
{
    QString artist, album, title, genre, year;
    int track = 0;
    int bpm = 0;
};

QString artistName(quint32 seed, int artist)
{
    Dice dice(seed, 1000003U + static_cast<quint32>(artist));
    if (dice.oneIn(4)) {
        return dice.pick(kBands);
    }
    return dice.pick(kFirstNames) + u' ' + dice.pick(kLastNames);
}

/// An album has ten tracks; a few artists have most albums.
Song songOf(quint32 seed, int number)
{
    constexpr int kTracksPerAlbum = 10;
    const int album = number / kTracksPerAlbum;
    Dice albumDice(seed, 2000003U + static_cast<quint32>(album));
    const int artists = 3 + album / 2;
    const int artist = albumDice.roll(1 + albumDice.roll(artists));
    Dice dice(seed, 3000017U + static_cast<quint32>(number));
    Song song;
    song.artist = artistName(seed, artist);
    song.album = albumDice.pick(kAdjectives) + u' ' + albumDice.pick(kNouns);
    if (album >= 20) {
        // Names repeat in large libraries; folders must not.
        song.album += u" %1"_s.arg(album);
    }
    song.genre = albumDice.pick(kGenres);
    song.year = QString::number(1965 + albumDice.roll(60));
    song.track = number % kTracksPerAlbum + 1;
    song.title = dice.pick(kAdjectives) + u' ' + dice.pick(kNouns) + dice.pick(kEndings);
    song.bpm = 70 + dice.roll(80);
    return song;
}

QByteArray streamOf(Dice& dice, int seconds, quint32 seed)
{
    static constexpr std::array<int, 4> kRates = {32, 40, 48, 64};
    FrameFormat format;
    format.bitRate = kRates.at(static_cast<size_t>(dice.roll(4)));
    format.sampleRate = dice.oneIn(8) ? 48000 : 44100;
    const int frames = seconds * format.sampleRate / samplesPerFrame(format);
    if (dice.oneIn(3)) {
        return withHeader(StreamHeader::Xing, format, variableStream(format, frames, seed), frames);
    }
    const QByteArray stream = constantStream(format, frames);
    return dice.oneIn(2) ? withHeader(StreamHeader::Info, format, stream, frames) : stream;
}

QByteArray tagOf(const Song& song, Dice& dice, const QByteArray& cover)
{
    const int version = dice.oneIn(3) ? 4 : 3;
    Id3v2Writer writer(version, version == 4 ? TextEncoding::Utf8 : TextEncoding::Utf16);
    writer.text("TIT2", song.title)
        .text("TPE1", song.artist)
        .text("TALB", song.album)
        .text("TCON", song.genre)
        .text(version == 4 ? "TDRC" : "TYER", song.year)
        .text("TRCK", QString::number(song.track));
    if (!dice.oneIn(4)) {
        writer.text("TBPM", QString::number(song.bpm));
    }
    if (dice.oneIn(3)) {
        static constexpr std::array<int, 5> kStars = {1, 64, 128, 196, 255};
        writer.rating("rating@melovane", kStars.at(static_cast<size_t>(dice.roll(5))));
    }
    if (dice.oneIn(2)) {
        writer.userText(u"Kategorie"_s, dice.pick(kKategorien))
            .userText(u"Situation"_s, dice.pick(kSituationen))
            .userText(u"Stimmung"_s, dice.pick(kStimmungen))
            .userText(u"Tempo"_s, dice.pick(kTempi));
    }
    if (dice.oneIn(5)) {
        writer.comment({}, u"aus der Sammlung von "_s + dice.pick(kFirstNames));
    }
    if (!cover.isEmpty() && song.track % 2 == 1) {
        writer.picture(cover);
    }
    return writer.tag(256);
}

QByteArray oldTagOf(const Song& song)
{
    return id3v1Tag({song.title.toLatin1(),
                     song.artist.toLatin1(),
                     song.album.toLatin1(),
                     song.year.toLatin1(),
                     {},
                     song.track,
                     17});
}

} // namespace

DemoLibrary::DemoLibrary(const DemoOptions& options)
    : m_options(options)
{}

DemoFile DemoLibrary::track(int number, const QByteArray& cover) const
{
    const Song song = songOf(m_options.seed, number);
    Dice dice(m_options.seed, 4000037U + static_cast<quint32>(number));
    const int seconds = m_options.seconds > 0 ? m_options.seconds : 130 + dice.roll(180);
    const QByteArray stream =
        streamOf(dice, seconds, m_options.seed + static_cast<quint32>(number));
    const int kind = dice.roll(20);
    DemoFile file;
    file.folder = song.artist + u'/' + song.album;
    file.name = u"%1 %2.mp3"_s.arg(song.track, 2, 10, QChar(u'0')).arg(song.title);
    if (kind == 0) {
        // A file without tags; its name says what it is.
        file.folder = u"Unsortiert"_s;
        file.name = u"%1 - %2.mp3"_s.arg(song.artist, song.title).replace(u' ', u'_');
        file.name.insert(file.name.size() - 4, u"_%1"_s.arg(number));
        file.bytes = stream;
    } else if (kind == 1) {
        file.bytes = stream + oldTagOf(song);
    } else {
        file.bytes = tagOf(song, dice, cover) + stream + (kind < 8 ? oldTagOf(song) : QByteArray());
    }
    return file;
}

} // namespace melovane::demomusic
