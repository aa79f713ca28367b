#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>

/// The text that every row of a navigation tree carries: what the row is, and what a click on it
/// selects. "Type?Field??Value" or "Type?Aux?Field??Value"; a row of another form is a heading.
///
/// The forms are known to other programs and stand in saved tree states: keep, letter by letter.
namespace melovane::treekey {

/// Between the keys of a saved state; no key holds it.
inline constexpr QStringView kStateSeparator = u"$$$$";

/// A clickable key, taken apart.
struct Parts
{
    QString type;
    QString aux; ///< empty for a head of two parts
    QString field;
    QString value;

    bool operator==(const Parts&) const = default;
};

/// Nothing for a key that selects nothing: without "??", with several, or with an empty value; a
/// head of one part or more than three neither.
[[nodiscard]] std::optional<Parts> split(QStringView key);

/// Values of the messages "tree.click.row" and "context.click.row", without the text of the cell.
struct ClickValues
{
    QString value1; ///< the value
    QString value2; ///< the field
    QString value3; ///< the aux; empty for a head of two parts

    bool operator==(const ClickValues&) const = default;
};

[[nodiscard]] std::optional<ClickValues> clickValues(QStringView key);

/// Name of the message that tells of a row just entered.
[[nodiscard]] QStringView enterMessage(const Parts& parts);

/// What the library is asked for by a click.
struct LibraryRequest
{
    QString kind;
    QString field;
    QString value;

    bool operator==(const LibraryRequest&) const = default;
};

/// The field doubles as kind; a disc takes its volume name as field, a day of the statistics the
/// column of the day.
[[nodiscard]] LibraryRequest libraryRequest(const ClickValues& click);

// Keys of rows. Names and paths stand in them as they are.

/// A folder and all below it.
[[nodiscard]] QString directory(const QString& path);
/// The same, of a path as the file keeps it: asked for each folder of a library.
[[nodiscard]] QString directoryOfKept(std::string_view path);
/// A disc's folder with tracks of its own.
[[nodiscard]] QString discDirectory(const QString& volume, const QString& path);
[[nodiscard]] QString genre(const QString& name);
[[nodiscard]] QString genreArtist(const QString& genre, const QString& artist);
[[nodiscard]] QString album(const QString& name);
[[nodiscard]] QString artist(const QString& name);

/// Letter rows of the artist tree; their value is a predicate, not a track value.
[[nodiscard]] QString artistLetter(QChar letter);
[[nodiscard]] QString artistDigits();
[[nodiscard]] QString artistOthers();

/// The same rows in the favourite section of their tree. A folder then is that folder alone.
[[nodiscard]] QString favouriteDirectory(const QString& path);
[[nodiscard]] QString favouriteGenre(const QString& name);
[[nodiscard]] QString favouriteGenreArtist(const QString& genre, const QString& artist);
[[nodiscard]] QString favouriteAlbum(const QString& name);
[[nodiscard]] QString favouriteArtist(const QString& name);

/// Rows of the favourite tree.
[[nodiscard]] QString inFavouritesArtist(const QString& name);
[[nodiscard]] QString inFavouritesDirectory(const QString& path);
[[nodiscard]] QString inFavouritesAlbum(const QString& name);
[[nodiscard]] QString inFavouritesGenre(const QString& name);
[[nodiscard]] QString inFavouritesGenreArtist(const QString& name);

/// Rows of the statistics tree; day is the eight-digit number, date its text.
[[nodiscard]] QString statisticsYear(int year);
[[nodiscard]] QString statisticsMonth(int year, int month);
[[nodiscard]] QString statisticsDay(const QString& date, qint64 day);

[[nodiscard]] QString group(qint64 grid);
[[nodiscard]] QString playlist(qint64 nid);
[[nodiscard]] QString jingleList(qint64 nid);
/// The fixed group of all jingle lists, and the value by which it is looked up.
[[nodiscard]] QString jingleGroup();
[[nodiscard]] QString jingleGroupLookup();

/// Rows of the information tree.
[[nodiscard]] QString informationPlaylist(qint64 pnid);
[[nodiscard]] QString information(const QString& field, const QString& value);
[[nodiscard]] QString informationRoot();
[[nodiscard]] QString runProc(const QString& function, const QString& argument);

/// Rows of the extended tree.
[[nodiscard]] QString heading();
[[nodiscard]] QString extendedHeading(qint64 id);
[[nodiscard]] QString extended(const QString& field, const QString& value);

/// What a row is, told by the beginning of its key; capitals count.
enum class Type
{
    Other,
    Directory,
    FavouriteDirectory,
    Genre,
    FavouriteGenre,
    GenreArtist,
    FavouriteGenreArtist,
    ArtistLetter,
    Artist,
    FavouriteArtist,
    Album,
    FavouriteAlbum,
    Group,
    Playlist,
    FavouritePlaylist,
    InFavouritesGenre
};

[[nodiscard]] Type typeOf(QStringView key);

/// Rows of the playlist panel: "PLG...", "Jingle...".
[[nodiscard]] bool isPlaylistRow(QStringView key);
[[nodiscard]] bool isJingleRow(QStringView key);

/// The key of a row that was made a favourite in place, until the next fill. Every occurrence of
/// the word is replaced, also one in the value; a key without such a word stays as it is.
[[nodiscard]] QString madeFavourite(const QString& key);
/// The way back.
[[nodiscard]] QString unmadeFavourite(const QString& key);

/// The number behind the first "??"; 0 without one.
[[nodiscard]] int idOf(QStringView key);
/// The same, as text, when the head is that of a playlist or jingle list; empty for other rows.
[[nodiscard]] QString playlistId(QStringView key);
/// Likewise for a group, the jingle group included.
[[nodiscard]] QString groupId(QStringView key);

} // namespace melovane::treekey
