#include "trees/tree_rows.h"

#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "trees/directory_rows.h"
#include "trees/favorit_rows.h"
#include "trees/named_rows.h"
#include "trees/tree_key.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

using treerows::countedRow;
using treerows::KeyOf;
using treerows::NamedRow;
using treerows::tickOf;
using treerows::walkNamed;

namespace {

constexpr std::array<QStringView, kTreeKinds> kNames{
    u"TreeDir",      u"TreeGenre", u"TreeAlbum", u"TreeInterpret",     u"TreeFavorit",
    u"TreePlaylist", u"TreeState", u"info",      u"TreeAlbumErweitert"};

void addFavourites(Database& database,
                   QStringView table,
                   const KeyOf& keyOf,
                   RowTick tick,
                   std::vector<TreeRow>& to)
{
    walkNamed(
        database, " from "_L1 + table.toString() + " where favorit=true order by tstamp desc"_L1,
        keyOf, [&](const NamedRow& named) { to.push_back(countedRow(named, 1, tick)); },
        table == u"tree_dir" ? u"Path"_s : u"Name"_s);
}

/// The same for genres, which stand there without a count and open to their artists.
void addFavouriteGenres(Database& database,
                        const KeyOf& keyOf,
                        RowTick tick,
                        const QString& picture,
                        std::vector<TreeRow>& to)
{
    walkNamed(database, u" from tree_genre where favorit=true order by tstamp desc"_s, keyOf,
              [&](const NamedRow& named) {
                  TreeRow row = treerows::row(1, named.name(), named.key(),
                                              picture.isEmpty() ? named.picture() : picture);
                  row.tick = tick;
                  row.fillable = true;
                  to.push_back(std::move(row));
              });
}

} // namespace

QStringView nameOf(TreeKind kind)
{
    return kNames[size_t(kind)];
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
    addFolders(database, rows);
    return rows;
}

std::vector<TreeRow> genres(Database& database, const ConfigObjects& texts)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavouriteGenres(database, treekey::favouriteGenre, RowTick::On, {}, rows);
    rows.push_back(root(texts.text(u"tree.root.genre"), {}, u"tree.dir"_s));
    walkNamed(database, u" from tree_genre  order by id asc"_s, treekey::genre,
              [&](const NamedRow& named) {
                  rows.push_back(countedRow(named, 1, tickOf(named.favorit())));
                  rows.back().fillable = true;
              });
    return rows;
}

std::vector<TreeRow> albums(Database& database, const ConfigObjects& texts, int threshold)
{
    std::vector<TreeRow> rows{root(texts.text(u"tree.root.favorit"), {}, u"tree.Favorit"_s)};
    addFavourites(database, u"tree_album", treekey::favouriteAlbum, RowTick::On, rows);
    rows.push_back(root(texts.text(u"tree.root.album"), {}, u"tree.dir"_s));
    rows.reserve(rows.size() + treerows::roomFor(database, u"tree_album"_s));
    walkNamed(database,
              " from tree_album where anzahl>"_L1 + sql::number(qint64{threshold}) +
                  " order by id asc"_L1,
              treekey::album, [&](const NamedRow& named) {
                  rows.push_back(countedRow(named, 1, tickOf(named.favorit())));
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

} // namespace treerows

} // namespace melovane
