#include "trees/tree_rows.h"

#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "trees/favorit_rows.h"
#include "trees/tree_key.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array<QStringView, kTreeKinds> kNames{
    u"TreeDir",      u"TreeGenre", u"TreeAlbum", u"TreeInterpret",     u"TreeFavorit",
    u"TreePlaylist", u"TreeState", u"info",      u"TreeAlbumErweitert"};

/// Value of `Drive` for an optical disc.
constexpr int kDisc = 4;

using KeyOf = std::function<QString(const QString& name)>;

/// A row of a tree table with one name and one count.
class NamedRow
{
public:
    explicit NamedRow(const WalkedRow& row)
        : m_row(row)
    {}

    [[nodiscard]] QString name() const { return m_row.text(0); }

    [[nodiscard]] QString count() const { return u'[' + QString::number(m_row.number(1)) + u']'; }

    [[nodiscard]] QString picture() const { return treerows::pictureOf(m_row.text(2)); }

    [[nodiscard]] bool favorit() const { return m_row.number(3) != 0; }

    /// What the key is made of.
    [[nodiscard]] QString keyed() const { return m_row.text(4); }

private:
    const WalkedRow& m_row;
};

/// \param from " from ..." and what follows
/// \param keyed column that the key is made of
void walkNamed(Database& database,
               const QString& from,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed = u"Name"_s)
{
    database.walkRows("select Name, anzahl, imgkey, favorit, "_L1 + keyed + from,
                      [&](const WalkedRow& row) { visit(NamedRow(row)); });
}

RowTick tickOf(bool on)
{
    return on ? RowTick::On : RowTick::Off;
}

/// Name, count and tick of the table's row.
TreeRow countedRow(const NamedRow& named, int level, const KeyOf& keyOf, RowTick tick)
{
    TreeRow row = treerows::row(level, {}, keyOf(named.keyed()), named.picture());
    treerows::setCounted(row, named.name(), named.count());
    row.tick = tick;
    return row;
}

void addFavourites(Database& database,
                   QStringView table,
                   const KeyOf& keyOf,
                   RowTick tick,
                   std::vector<TreeRow>& to)
{
    walkNamed(
        database, " from "_L1 + table.toString() + " where favorit=true order by tstamp desc"_L1,
        [&](const NamedRow& named) { to.push_back(countedRow(named, 1, keyOf, tick)); },
        table == u"tree_dir" ? u"Path"_s : u"Name"_s);
}

/// The same for genres, which stand there without a count and open to their artists.
void addFavouriteGenres(Database& database,
                        const KeyOf& keyOf,
                        RowTick tick,
                        const QString& picture,
                        std::vector<TreeRow>& to)
{
    walkNamed(database, u" from tree_genre where favorit=true order by tstamp desc"_s,
              [&](const NamedRow& named) {
                  TreeRow row = treerows::row(1, named.name(), keyOf(named.name()),
                                              picture.isEmpty() ? named.picture() : picture);
                  row.tick = tick;
                  row.fillable = true;
                  to.push_back(std::move(row));
              });
}

/// The columns that directoryRow() reads, in their order.
const QString kFolderColumns =
    u"rLevel, Name, Path, vName, Drive, anzahl, BAnzahl, imgkey, favorit"_s;

/// Pictures by the `imgkey` of a row. There are few, and each text is made once.
class PictureNames
{
public:
    const QString& of(const WalkedRow& row, int column)
    {
        const std::string_view word = row.bytes(column);
        auto known = std::find_if(m_names.begin(), m_names.end(),
                                  [&](const auto& each) { return each.first == word; });
        if (known == m_names.end()) {
            m_names.emplace_back(word, treerows::pictureOf(row.text(column)));
            known = std::prev(m_names.end());
        }
        return known->second;
    }

private:
    std::vector<std::pair<std::string, QString>> m_names;
};

/// A folder of `tree_dir` with its tick and its key.
TreeRow directoryRow(const WalkedRow& cells, PictureNames& pictures)
{
    const FolderText folder{int(cells.number(0)),     cells.text(1),        cells.text(3),
                            cells.number(4) == kDisc, int(cells.number(5)), int(cells.number(6))};
    const QString path = cells.text(2);
    const bool isDiscFolder = folder.isDisc && folder.own > 0;
    TreeRow row = treerows::row(folder.level, {},
                                isDiscFolder ? treekey::discDirectory(folder.volume, path)
                                             : treekey::directory(path),
                                pictures.of(cells, 7));
    row.heading = folder.level == 0;
    const QString count = folder.count();
    row.text = folder.title() + count;
    row.countLetters = int(count.size());
    if (folder.own > 0 && !folder.isDisc) {
        row.tick = tickOf(cells.number(8) != 0);
    }
    return row;
}

/// Artists of a genre, with the two forms of the key and the two orders that they are told in.
std::vector<TreeRow> artistsOf(Database& database, const QString& from, const KeyOf& keyOf)
{
    std::vector<TreeRow> result;
    walkNamed(database, from, [&](const NamedRow& named) {
        result.push_back(countedRow(named, 2, keyOf, tickOf(named.favorit())));
    });
    return result;
}

std::vector<TreeRow> artistsOfLetter(Database& database, const QString& predicate)
{
    return artistsOf(database,
                     " from tree_interpret where name "_L1 + predicate + " order by id desc"_L1,
                     treekey::artist);
}

/// A row that artists stand below; no artist stands below two of them.
struct ArtistLetter
{
    textcompare::LikePattern names;
    bool isOfOthers = false; ///< those that do not fit
    std::size_t place = 0;

    [[nodiscard]] bool holds(const QString& folded) const
    {
        return names.matchesFolded(folded) != isOfOthers;
    }
};

/// Nothing for a key of another kind, or with a condition in other words.
std::optional<ArtistLetter> artistLetterOf(const QString& key)
{
    const auto parts = treekey::split(key);
    if (!parts || treekey::typeOf(key) != treekey::Type::ArtistLetter) {
        return std::nullopt;
    }
    QStringView condition = parts->value;
    const bool isOfOthers = condition.startsWith(u"not ");
    condition = condition.sliced(isOfOthers ? 4 : 0);
    const QStringView begin = u"like '";
    if (!condition.startsWith(begin) || !condition.endsWith(u'\'') ||
        condition.size() <= begin.size()) {
        return std::nullopt;
    }
    const QStringView pattern = condition.sliced(begin.size()).chopped(1);
    return ArtistLetter{textcompare::LikePattern(pattern), isOfOthers};
}

/// Room for the rows of `tree_dir`; an estimate, for its numbers may have gaps.
std::size_t roomForFolders(Database& database)
{
    constexpr qint64 kMost = 1'000'000;
    // Not by a recordset: a rebuild may take the row away between finding and reading it.
    const auto end = [&](QLatin1StringView which) {
        qint64 number = 0;
        database.walkRows("select "_L1 + which + "(id) from tree_dir"_L1,
                          [&](const WalkedRow& row) { number = row.number(0); });
        return number;
    };
    return std::size_t(std::clamp<qint64>(end("max"_L1) - end("min"_L1) + 1, 1, kMost));
}

} // namespace

QStringView nameOf(TreeKind kind)
{
    return kNames[size_t(kind)];
}

QString FolderText::count() const
{
    // Written in place: a large library has some 100,000 folders.
    std::array<char, 32> text{'['};
    char* at = text.data() + 1;
    const auto write = [&](int number) {
        at = std::to_chars(at, text.data() + text.size(), number).ptr;
    };
    write(own > 0 ? own : total);
    if (own > 0 && total > 0 && total != own) {
        at = std::copy_n(" - ", 3, at);
        write(total);
    }
    *at++ = ']';
    return QString::fromLatin1(text.data(), at - text.data());
}

QString FolderText::title() const
{
    if (level == 0 && !isDisc) {
        return name + u' ' + (volume.isEmpty() ? QString() : volume + u' ');
    }
    // A disc's name carries its volume at the end, which its root alone shows.
    const bool isTold = level > 0 && isDisc && !volume.isEmpty() && name.endsWith(u' ' + volume);
    return (isTold ? name.chopped(volume.size() + 1) : name) + u' ';
}

namespace treerows {

TreeRow root(const QString& caption, const QString& key, const QString& picture)
{
    TreeRow result = row(0, caption, key, picture);
    result.heading = true;
    return result;
}

TreeRow row(int level, const QString& text, const QString& key, const QString& picture)
{
    TreeRow result;
    result.level = level;
    result.text = text;
    result.key = key;
    result.picture = picture;
    return result;
}

void setCounted(TreeRow& row, const QString& name, const QString& count)
{
    row.text = name + u' ' + count;
    row.countLetters = int(count.size());
}

QString pictureOf(const QString& imgkey)
{
    return "tree."_L1 + imgkey;
}

std::vector<TreeRow> directories(Database& database, const ConfigObjects& texts)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavourites(database, u"tree_dir", treekey::favouriteDirectory, RowTick::On, rows);
    rows.reserve(rows.size() + roomForFolders(database));
    PictureNames pictures;
    database.walkRows(
        "select "_L1 + kFolderColumns + " from tree_dir order by id asc"_L1,
        [&](const WalkedRow& cells) { rows.push_back(directoryRow(cells, pictures)); });
    return rows;
}

std::vector<TreeRow> genres(Database& database, const ConfigObjects& texts)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavouriteGenres(database, treekey::favouriteGenre, RowTick::On, {}, rows);
    rows.push_back(root(texts.text(u"tree.root.genre"), {}, u"tree.dir"_s));
    walkNamed(database, u" from tree_genre  order by id asc"_s, [&](const NamedRow& named) {
        rows.push_back(countedRow(named, 1, treekey::genre, tickOf(named.favorit())));
        rows.back().fillable = true;
    });
    return rows;
}

std::vector<TreeRow> albums(Database& database, const ConfigObjects& texts, int threshold)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavourites(database, u"tree_album", treekey::favouriteAlbum, RowTick::On, rows);
    rows.push_back(root(texts.text(u"tree.root.album"), {}, u"tree.dir"_s));
    walkNamed(database,
              " from tree_album where anzahl>"_L1 + sql::number(qint64{threshold}) +
                  " order by id asc"_L1,
              [&](const NamedRow& named) {
                  rows.push_back(countedRow(named, 1, treekey::album, tickOf(named.favorit())));
              });
    return rows;
}

std::vector<TreeRow> artists(Database& database, const ConfigObjects& texts)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavourites(database, u"tree_interpret", treekey::favouriteArtist, RowTick::On, rows);
    rows.push_back(root(texts.text(u"tree.root.interpret"), {}, u"tree.dir"_s));
    const auto add = [&](const QString& caption, const QString& key) {
        rows.push_back(row(1, caption, key, u"tree.dir"_s));
        rows.back().fillable = true;
    };
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        add(QString(QChar(letter)), treekey::artistLetter(QChar(letter)));
    }
    add(u"0-9"_s, treekey::artistDigits());
    add(texts.text(u"tree.root.other"), treekey::artistOthers());
    return rows;
}

std::vector<TreeRow> favourites(Database& database, const ConfigObjects& texts)
{
    std::vector<TreeRow> rows;
    rows.push_back(root(texts.text(u"tree.root.interpret"), {}, u"tree.interpret"_s));
    addFavourites(database, u"tree_interpret", treekey::inFavouritesArtist, RowTick::None, rows);
    rows.push_back(root(texts.text(u"tree.root.directory"), {}, u"tree.dir"_s));
    addFavourites(database, u"tree_dir", treekey::inFavouritesDirectory, RowTick::None, rows);
    rows.push_back(root(texts.text(u"tree.root.album"), {}, u"tree.album"_s));
    addFavourites(database, u"tree_album", treekey::inFavouritesAlbum, RowTick::None, rows);
    rows.push_back(root(texts.text(u"tree.root.genre"), {}, u"tree.genre"_s));
    addFavouriteGenres(database, treekey::inFavouritesGenre, RowTick::None, u"tree.genre"_s, rows);
    return rows;
}

std::vector<TreeRow> statistics(Database& database)
{
    std::vector<TreeRow> rows;
    qint64 year = 0;
    qint64 month = 0;
    database.walkRows(
        u"select tyear, tmon, monat, datum, tday from v_state"_s, [&](const WalkedRow& day) {
            if (day.number(0) != year) {
                year = day.number(0);
                rows.push_back(row(1, QString::number(year) + u' ',
                                   treekey::statisticsYear(int(year)), u"tree.dir"_s));
            }
            if (day.number(1) != month) {
                month = day.number(1);
                rows.push_back(row(2, day.text(2), treekey::statisticsMonth(int(year), int(month)),
                                   u"tree.dir"_s));
            }
            const QString date = day.text(3);
            rows.push_back(
                row(3, date, treekey::statisticsDay(date, int(day.number(4))), u"tree.playlist"_s));
        });
    return rows;
}

std::vector<TreeRow> playlists(Database& database)
{
    std::vector<TreeRow> rows;
    for (const GroupState& group : readGroups(database)) {
        TreeRow heading = row(1, group.name, treekey::group(group.group), u"tree.dir"_s);
        heading.tick = tickOf(group.activ);
        rows.push_back(std::move(heading));
        for (const ListState& list : readListsOfGroup(database, group.group)) {
            rows.push_back(playlist(list));
        }
    }
    return rows;
}

TreeRow playlist(const ListState& list)
{
    TreeRow row = rowOf(list);
    row.level = 2;
    row.dimmed = false;
    row.tick = tickOf(list.activ);
    setCounted(row, list.name, u'[' + QString::number(list.entries) + u']');
    return row;
}

bool isWithoutTracks(Database& database, TreeKind kind)
{
    const QString table = [&] {
        switch (kind) {
        case TreeKind::Dir:
        case TreeKind::Favorit: // whatever can be one has a folder
            return u"tree_dir"_s;
        case TreeKind::Genre:
            return u"tree_genre"_s;
        case TreeKind::Album:
            return u"tree_album"_s;
        case TreeKind::Interpret:
            return u"tree_interpret"_s;
        case TreeKind::Playlist:
        case TreeKind::State:
        case TreeKind::Info:
        case TreeKind::Erweitert:
            break;
        }
        return QString();
    }();
    return !table.isEmpty() && database.OpenRecordset("select top 1 id from "_L1 + table)->Eof() &&
           database.OpenRecordset(u"select top 1 FID from db_all"_s)->Eof();
}

std::vector<TreeRow> children(Database& database, const QString& key)
{
    const auto parts = treekey::split(key);
    if (!parts) {
        return {};
    }
    const QString& name = parts->value;
    switch (treekey::typeOf(key)) {
    case treekey::Type::ArtistLetter: {
        // Each goes in directly below the letter, so the last one read ends on top.
        std::vector<TreeRow> rows = artistsOfLetter(database, name);
        return {rows.rbegin(), rows.rend()};
    }
    case treekey::Type::Genre:
        return artistsOf(database,
                         " from tree_genre_interpret where genre="_L1 + sql::text(name) +
                             " order by id"_L1,
                         [&](const QString& artist) { return treekey::genreArtist(name, artist); });
    case treekey::Type::FavouriteGenre:
        return artistsOf(
            database,
            " from tree_genre_interpret where favorit=true and genre="_L1 + sql::text(name) +
                " order by id"_L1,
            [&](const QString& artist) { return treekey::favouriteGenreArtist(name, artist); });
    case treekey::Type::InFavouritesGenre: {
        std::vector<TreeRow> rows =
            artistsOf(database,
                      " from tree_genre_interpret where favorit=true and genre ="_L1 +
                          sql::text(name) + " order by id desc"_L1,
                      treekey::inFavouritesGenreArtist);
        for (TreeRow& shown : rows) {
            shown.tick = RowTick::None;
        }
        return {rows.rbegin(), rows.rend()};
    }
    default:
        return {};
    }
}

std::vector<std::vector<TreeRow>> childrenOfEach(Database& database, const QStringList& keys)
{
    std::vector<std::vector<TreeRow>> result(std::size_t(keys.size()));
    std::vector<ArtistLetter> letters;
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (auto letter = artistLetterOf(keys[qsizetype(i)])) {
            letter->place = i;
            letters.push_back(std::move(*letter));
        } else {
            result[i] = children(database, keys[qsizetype(i)]);
        }
    }
    if (letters.empty()) {
        return result;
    }
    // Artists stand in the order of their names: mostly the letter of the one before.
    std::size_t last = 0;
    walkNamed(database, u" from tree_interpret order by id asc"_s, [&](const NamedRow& named) {
        const QString folded = textcompare::fold(named.name());
        for (std::size_t tries = 0; tries < letters.size(); ++tries) {
            const std::size_t letter = (last + tries) % letters.size();
            if (letters[letter].holds(folded)) {
                last = letter;
                result[letters[letter].place].push_back(
                    countedRow(named, 2, treekey::artist, tickOf(named.favorit())));
                return;
            }
        }
    });
    return result;
}

} // namespace treerows

} // namespace melovane
