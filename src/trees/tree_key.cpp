#include "trees/tree_key.h"

#include "bus/message_names.h"
#include "platform/db/kept_text.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace melovane::treekey {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView kValueMark("??");
constexpr QLatin1StringView kDirectory("DIR?Path??");

struct TypeWord
{
    QStringView word;
    Type type;
};

constexpr std::array kTypes = std::to_array<TypeWord>({
    {u"DIR?", Type::Directory},
    {u"FAV?", Type::FavouriteDirectory},
    {u"GEN?", Type::Genre},
    {u"FGN?", Type::FavouriteGenre},
    {u"GEX?", Type::GenreArtist},
    {u"FEX?", Type::FavouriteGenreArtist},
    {u"INP?", Type::ArtistLetter},
    {u"IEX?", Type::Artist},
    {u"IFAV", Type::FavouriteArtist},
    {u"ABM?", Type::Album},
    {u"AFAV", Type::FavouriteAlbum},
    {u"PLGR", Type::Group},
    {u"PLG?", Type::Playlist},
    {u"PLA?", Type::FavouritePlaylist},
    {u"FGEN", Type::InFavouritesGenre},
});

/// Words that are exchanged when a row is made a favourite in place.
constexpr std::array<std::pair<QStringView, QStringView>, 6> kToggles{{
    {u"DIR?", u"FAV?"},
    {u"GEN?", u"FGN?"},
    {u"GEX?", u"FEX?"},
    {u"ABM?", u"AFAV?"},
    {u"IEX?", u"IFAV?"},
    {u"PLG?", u"PLA?"},
}};

QString numbered(const QString& head, qint64 id)
{
    return head + kValueMark + QString::number(id);
}

QString headOf(QStringView key)
{
    const qsizetype mark = key.indexOf(kValueMark);
    return mark < 0 ? QString() : lowerCase(key.left(mark));
}

QString valueOf(QStringView key)
{
    return key.sliced(key.indexOf(kValueMark) + kValueMark.size()).toString();
}

QString exchanged(const QString& key, QStringView from, QStringView to)
{
    QString result = key;
    return result.replace(from.toString(), to.toString());
}

} // namespace

std::optional<Parts> split(QStringView key)
{
    const QStringList halves = key.toString().split(kValueMark);
    if (halves.size() != 2 || halves[1].isEmpty()) {
        return std::nullopt;
    }
    const QStringList head = halves[0].split(u'?');
    if (head.size() == 2) {
        return Parts{head[0], {}, head[1], halves[1]};
    }
    if (head.size() == 3) {
        return Parts{head[0], head[1], head[2], halves[1]};
    }
    return std::nullopt;
}

std::optional<ClickValues> clickValues(QStringView key)
{
    const std::optional<Parts> parts = split(key);
    if (!parts) {
        return std::nullopt;
    }
    return ClickValues{parts->value, parts->field, parts->aux};
}

QStringView enterMessage(const Parts& parts)
{
    return parts.type == "RunProc"_L1 ? bus::kRunProc : bus::kTreeEnterCell;
}

LibraryRequest libraryRequest(const ClickValues& click)
{
    const QString kind = lowerCase(click.value2);
    if (kind == "cddir"_L1) {
        return {click.value2, click.value3, click.value1};
    }
    if (kind == "statistik"_L1) {
        return {click.value2, u"tday:long"_s, click.value1};
    }
    return {click.value2, click.value2, click.value1};
}

QString directory(const QString& path)
{
    return kDirectory + path + u'*';
}

QString directoryOfKept(std::string_view path)
{
    QString key;
    key.reserve(kDirectory.size() + qsizetype(path.size()) + 1);
    key.append(kDirectory);
    appendKept(key, path);
    return key.append(u'*');
}

QString discDirectory(const QString& volume, const QString& path)
{
    return u"CDDIR?"_s + volume + u"?CDDIR??"_s + path;
}

QString genre(const QString& name)
{
    return u"GEN?Genre??"_s + name;
}

QString genreArtist(const QString& genreName, const QString& artistName)
{
    return u"GEX?"_s + genreName + u"?Interpret??"_s + artistName;
}

QString album(const QString& name)
{
    return u"ABM?Album??"_s + name;
}

QString artist(const QString& name)
{
    return u"IEX?Interpret??"_s + name;
}

QString artistLetter(QChar letter)
{
    return u"INP?RootInterpret??like '["_s + letter + u"]*'"_s;
}

QString artistDigits()
{
    return u"INP?RootInterpret??like '[0-9]*'"_s;
}

QString artistOthers()
{
    return u"INP?RootInterpret??not like '[0-9A-Z]*'"_s;
}

QString favouriteDirectory(const QString& path)
{
    return u"FAV?Path??"_s + path;
}

QString favouriteGenre(const QString& name)
{
    return u"FGN?Genre??"_s + name;
}

QString favouriteGenreArtist(const QString& genreName, const QString& artistName)
{
    return u"FEX?"_s + genreName + u"?Interpret??"_s + artistName;
}

QString favouriteAlbum(const QString& name)
{
    return u"AFAV?Album??"_s + name;
}

QString favouriteArtist(const QString& name)
{
    return u"IFAV?Interpret??"_s + name;
}

QString inFavouritesArtist(const QString& name)
{
    return u"FFAV?Interpret??"_s + name;
}

QString inFavouritesDirectory(const QString& path)
{
    return u"FFAV?Path??"_s + path;
}

QString inFavouritesAlbum(const QString& name)
{
    return u"FFAV?Album??"_s + name;
}

QString inFavouritesGenre(const QString& name)
{
    return u"FGEN?Genre??"_s + name;
}

QString inFavouritesGenreArtist(const QString& name)
{
    return u"FFEX?Interpret??"_s + name;
}

QString statisticsYear(int year)
{
    return numbered(u"STATE?dir"_s, year);
}

QString statisticsMonth(int year, int month)
{
    return numbered(u"STATE?dirmon"_s, year) + u'_' + QString::number(month);
}

QString statisticsDay(const QString& date, qint64 day)
{
    return u"STATE?"_s + date + u"?Statistik??"_s + QString::number(day);
}

QString group(qint64 grid)
{
    return numbered(u"PLGROUP?Gruppe"_s, grid);
}

QString playlist(qint64 nid)
{
    return numbered(u"PLG?Playlist"_s, nid);
}

QString jingleList(qint64 nid)
{
    return numbered(u"Jingle?Playlist"_s, nid);
}

QString jingleGroup()
{
    return numbered(u"Dir.Jingle?JingleGruppe"_s, -1);
}

QString jingleGroupLookup()
{
    return numbered(u"Dir.Jingle?Jingle"_s, -1);
}

QString informationPlaylist(qint64 pnid)
{
    return numbered(u"PLAY?Playlist"_s, pnid);
}

QString information(const QString& field, const QString& value)
{
    return u"INFO?"_s + field + kValueMark + value;
}

QString informationRoot()
{
    return u"INFO?info"_s;
}

QString runProc(const QString& function, const QString& argument)
{
    return u"RunProc?"_s + function + kValueMark + argument;
}

QString heading()
{
    return u"Info?Info"_s;
}

QString extendedHeading(qint64 id)
{
    return numbered(u"Info?Info"_s, id);
}

QString extended(const QString& field, const QString& value)
{
    return u"Info?"_s + field + kValueMark + value;
}

Type typeOf(QStringView key)
{
    const auto* found = std::find_if(kTypes.begin(), kTypes.end(), [&](const TypeWord& word) {
        return key.startsWith(word.word);
    });
    return found == kTypes.end() ? Type::Other : found->type;
}

bool isPlaylistRow(QStringView key)
{
    return key.startsWith(u"PLG");
}

bool isJingleRow(QStringView key)
{
    return key.startsWith(u"Jingle");
}

QString madeFavourite(const QString& key)
{
    for (const auto& [plain, favourite] : kToggles) {
        if (key.startsWith(plain)) {
            return exchanged(key, plain, favourite);
        }
    }
    return key;
}

QString unmadeFavourite(const QString& key)
{
    for (const auto& [plain, favourite] : kToggles) {
        if (key.startsWith(favourite)) {
            return exchanged(key, favourite, plain);
        }
    }
    return key;
}

int idOf(QStringView key)
{
    return headOf(key).isEmpty() ? 0 : leadingLong(valueOf(key));
}

QString playlistId(QStringView key)
{
    const QString head = headOf(key);
    return head == "plg?playlist"_L1 || head == "jingle?playlist"_L1 ? valueOf(key) : QString();
}

QString groupId(QStringView key)
{
    const QString head = headOf(key);
    return head == "plgroup?gruppe"_L1 || head == "dir.jingle?jinglegruppe"_L1 ? valueOf(key)
                                                                               : QString();
}

} // namespace melovane::treekey
