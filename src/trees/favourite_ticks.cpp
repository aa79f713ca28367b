#include "trees/favourite_ticks.h"

#include "config/config_objects.h"
#include "playlists/mlv_function.h"
#include "trees/tree_key.h"
#include "trees/tree_pages.h"

#include <utility>
#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using treekey::Type;

/// The key of a folder without the star at its end, which one that a fill has made for a favourite
/// lacks; other keys as they are.
QString withoutStar(const QString& key)
{
    const bool isFolder = treekey::typeOf(key) == Type::FavouriteDirectory;
    return isFolder && key.endsWith(u'*') ? key.chopped(1) : key;
}

bool isSameFavourite(const QString& key, const QString& other)
{
    return withoutStar(key) == withoutStar(other);
}

} // namespace

FavouriteTicks::FavouriteTicks(TreePages& pages,
                               MLVFunction& functions,
                               std::function<void()> listsChanged)
    : m_pages(pages)
    , m_functions(functions)
    , m_listsChanged(std::move(listsChanged))
{}

TreeControl& FavouriteTicks::tree() const
{
    return m_pages.top();
}

void FavouriteTicks::ticked(int row, bool on)
{
    switch (treekey::typeOf(tree().row(row).key)) {
    case Type::Directory:
        directory(row, on);
        break;
    case Type::Genre:
        genre(row, on);
        break;
    case Type::GenreArtist:
        genreArtist(row, on);
        break;
    case Type::Album:
    case Type::Artist:
        named(row, on);
        break;
    case Type::Group:
    case Type::Playlist:
        list(row, on);
        return;
    case Type::FavouritePlaylist:
        if (on) {
            setTick(row, false);
        } else {
            list(row, on);
        }
        return;
    case Type::FavouriteDirectory:
    case Type::FavouriteGenre:
    case Type::FavouriteGenreArtist:
    case Type::FavouriteAlbum:
    case Type::FavouriteArtist:
        if (on) {
            // Ignored by the suite: what is shown must not say otherwise.
            setTick(row, false);
            return;
        }
        unmake(row);
        break;
    default:
        return;
    }
    // The tree of favourites shows the flags, too.
    m_pages.setStale(TreeKind::Favorit);
}

void FavouriteTicks::unmake(int row)
{
    switch (treekey::typeOf(tree().row(row).key)) {
    case Type::FavouriteDirectory:
        favouriteDirectory(row);
        break;
    case Type::FavouriteGenre:
        favouriteGenre(row);
        break;
    case Type::FavouriteGenreArtist:
        favouriteGenreArtist(row);
        break;
    default:
        favouriteNamed(row);
    }
}

// ---- rows that show the same

/// The row behind the last one of the favourite section on top.
int FavouriteTicks::endOfFavourites() const
{
    int row = 1;
    while (row < tree().rowCount() && tree().row(row).level > 0) {
        ++row;
    }
    return row;
}

int FavouriteTicks::findBelowFavourites(const QString& key) const
{
    return tree().findNext(key, endOfFavourites() - 1);
}

void FavouriteTicks::setTick(int row, bool on)
{
    TreeRow shown = tree().row(row);
    if (shown.tick != RowTick::None) {
        shown.tick = on ? RowTick::On : RowTick::Off;
        tree().setRow(row, shown);
    }
}

void FavouriteTicks::setChildTicks(int row, bool on)
{
    const int level = tree().row(row).level;
    for (int child = row + 1; child < tree().rowCount() && tree().row(child).level > level;
         ++child) {
        setTick(child, on);
    }
}

/// Puts a row on top of the favourite section, which opens for its first one.
void FavouriteTicks::insertFavourite(const TreeRow& row)
{
    const bool isFirst = endOfFavourites() == 1;
    tree().insertRow(1, row);
    if (isFirst) {
        tree().setOpen(0, true);
    }
}

/// The row becomes a favourite in place, and a row of the same key heads the favourite section.
/// \return where the row is then
int FavouriteTicks::makeFavourite(int row, const QString& picture)
{
    TreeRow shown = tree().row(row);
    shown.key = treekey::madeFavourite(shown.key);
    shown.tick = RowTick::On;
    tree().setRow(row, shown);
    shown.level = 1;
    shown.heading = false;
    shown.picture = picture;
    shown.fillable = false;
    if (treekey::typeOf(shown.key) == Type::FavouriteGenre) {
        shown.text.chop(shown.countLetters > 0 ? shown.countLetters + 1 : 0);
        shown.countLetters = 0;
        shown.fillable = true;
        m_pages.forget(shown.key);
    }
    insertFavourite(shown);
    return row + 1;
}

/// Takes the rows of that key out of the favourite section.
void FavouriteTicks::removeTwin(const QString& favouriteKey)
{
    for (int favourite = endOfFavourites() - 1; favourite > 0; --favourite) {
        if (isSameFavourite(tree().row(favourite).key, favouriteKey)) {
            tree().removeRow(favourite);
        }
    }
}

// ---- one kind of row each

void FavouriteTicks::directory(int row, bool on)
{
    const QString key = tree().row(row).key;
    m_functions.favorites().UpdateTreeDirFavorit(key, on ? u"update" : u"delete");
    if (on) {
        makeFavourite(row, u"ALL.AUDIO"_s);
    } else {
        removeTwin(treekey::madeFavourite(key));
    }
}

/// The row below the favourites that shows the folder of a favourite, or -1: with its own key or, a
/// favourite in place, with that of one; with the star or without.
int FavouriteTicks::folderOf(const QString& favouriteKey) const
{
    const int last = endOfFavourites() - 1;
    const QString plain = withoutStar(favouriteKey);
    int folder = -1;
    for (const QString& key : {plain, QString(plain + u'*')}) {
        for (const QString& shown : {key, treekey::unmadeFavourite(key)}) {
            const int place = tree().findNext(shown, last);
            folder = folder < 0 || (place >= 0 && place < folder) ? place : folder;
        }
    }
    return folder;
}

void FavouriteTicks::favouriteDirectory(int row)
{
    const QString key = tree().row(row).key;
    m_functions.favorites().UpdateTreeDirFavorit(key, u"delete");
    if (const int folder = folderOf(key); folder >= 0) {
        TreeRow shown = tree().row(folder);
        shown.key = treekey::unmadeFavourite(shown.key);
        shown.tick = RowTick::Off;
        tree().setRow(folder, shown);
    }
    removeTwin(key);
}

void FavouriteTicks::genre(int row, bool on)
{
    const QString key = tree().row(row).key;
    m_functions.favorites().UpdateTreeGenreFavorit(key, on ? u"update" : u"delete");
    setChildTicks(row, on);
    if (on) {
        makeFavourite(row, u"Tree.Genre"_s);
    } else {
        removeTwin(treekey::madeFavourite(key));
        m_pages.forget(key);
    }
}

void FavouriteTicks::favouriteGenre(int row)
{
    const QString key = tree().row(row).key;
    m_functions.favorites().UpdateTreeGenreFavorit(key, u"delete");
    m_pages.forget(key);
    int place = findBelowFavourites(key);
    if (place < 0) {
        place = findBelowFavourites(treekey::unmadeFavourite(key));
    }
    if (place >= 0) {
        TreeRow shown = tree().row(place);
        shown.key = treekey::unmadeFavourite(shown.key);
        shown.tick = RowTick::Off;
        tree().setRow(place, shown);
        setChildTicks(place, false);
    }
    removeTwin(key);
}

void FavouriteTicks::genreArtist(int row, bool on)
{
    const QString key = tree().row(row).key;
    const auto parts = treekey::split(key);
    if (!parts) {
        return;
    }
    if (!on) {
        m_functions.favorites().UpdateTreeGenreFavorit(key, u"delete_fav");
        removeTwin(treekey::madeFavourite(key));
        return;
    }
    const QString genreKey = treekey::favouriteGenre(parts->aux);
    if (tree().find(genreKey) < 0) {
        m_functions.favorites().UpdateTreeGenreFavorit(genreKey, u"update_fav_dir");
        TreeRow shown = treerows::row(1, parts->aux, genreKey, u"tree.DIR"_s);
        shown.tick = RowTick::On;
        shown.fillable = true;
        m_pages.forget(genreKey);
        insertFavourite(shown);
        ++row;
        if (const int genreRow = findBelowFavourites(treekey::genre(parts->aux)); genreRow >= 0) {
            setTick(genreRow, true);
        }
    }
    m_functions.favorites().UpdateTreeGenreFavorit(key, u"update_fav");
    addFavouriteArtist(row, genreKey);
}

void FavouriteTicks::addFavouriteArtist(int row, const QString& genreKey)
{
    TreeRow shown = tree().row(row);
    shown.key = treekey::madeFavourite(shown.key);
    shown.tick = RowTick::On;
    tree().setRow(row, shown);
    const int genreRow = tree().find(genreKey);
    // A favourite genre that was not opened yet reads its artists when it is.
    if (genreRow >= 0 && genreRow < endOfFavourites() && !tree().row(genreRow).fillable) {
        shown.picture = u"all.AUDIO"_s;
        shown.level = 2;
        tree().insertRow(genreRow + 1, shown);
    }
}

void FavouriteTicks::favouriteGenreArtist(int row)
{
    const QString key = tree().row(row).key;
    m_functions.favorites().UpdateTreeGenreFavorit(key, u"delete_fav");
    favouriteNamed(row);
}

void FavouriteTicks::named(int row, bool on)
{
    const QString key = tree().row(row).key;
    TreeFavorites& flags = m_functions.favorites();
    const bool isAlbum = treekey::typeOf(key) == Type::Album;
    if (on) {
        if (isAlbum) {
            flags.UpdateTreeAlbum(key, u"update");
        } else {
            flags.UpdateTreeInterpret(key, u"update");
        }
        makeFavourite(row, isAlbum ? u"Tree.Album"_s : u"tree.interpret"_s);
        return;
    }
    // Of an artist, too: other programs of the suite count on it that the table of albums changes.
    flags.UpdateTreeAlbum(key, u"delete");
    removeTwin(treekey::madeFavourite(key));
}

/// An artist or album among the favourites, or one that was ticked in place: every row that shows
/// it loses its tick.
void FavouriteTicks::favouriteNamed(int row)
{
    const QString key = tree().row(row).key;
    if (treekey::typeOf(key) == Type::FavouriteAlbum) {
        m_functions.favorites().UpdateTreeAlbum(key, u"delete");
    } else if (treekey::typeOf(key) == Type::FavouriteArtist) {
        m_functions.favorites().UpdateTreeInterpret(key, u"delete");
    }
    const QString plain = treekey::unmadeFavourite(key);
    const int favourites = endOfFavourites();
    std::vector<int> places;
    for (const QString& same : {key, plain}) {
        for (int place = tree().findNext(same, 0); place >= 0;
             place = tree().findNext(same, place)) {
            places.push_back(place);
        }
    }
    for (const int place : places) {
        TreeRow shown = tree().row(place);
        shown.key = place < favourites ? shown.key : plain;
        shown.tick = RowTick::Off;
        tree().setRow(place, shown);
    }
}

void FavouriteTicks::list(int row, bool on)
{
    TreeRow shown = tree().row(row);
    const QStringView word = on ? u"update" : u"delete";
    if (treekey::typeOf(shown.key) == Type::Group) {
        m_functions.favorites().UpdateTreePlaylistGroup(shown.key, word);
    } else {
        m_functions.favorites().UpdateTreePlaylist(shown.key, word);
        shown.key = on ? treekey::madeFavourite(shown.key) : shown.key;
    }
    shown.tick = on ? RowTick::On : RowTick::Off;
    tree().setRow(row, shown);
    m_listsChanged();
}

// ---- tool tip

QString FavouriteTicks::tip(const TreeRow& row, const ConfigObjects& texts)
{
    if (row.tick == RowTick::None) {
        return {};
    }
    const bool on = row.tick == RowTick::On;
    const QString tip = texts.text(on ? u"tree.tick.remove" : u"tree.tick.add");
    const auto parts = treekey::split(row.key);
    const Type type = treekey::typeOf(row.key);
    const bool isList =
        type == Type::Group || type == Type::Playlist || type == Type::FavouritePlaylist;
    QStringView reason;
    if (parts && !isList && parts->value.contains(u'\'')) {
        reason = u"tree.tick.apostrophe";
    } else if (on && type == Type::Artist) {
        reason = u"tree.tick.artist";
    } else if (on && type == Type::FavouriteDirectory && !row.key.endsWith(u'*')) {
        reason = u"tree.tick.folder";
    } else if (!on && treekey::unmadeFavourite(row.key) != row.key) {
        reason = u"tree.tick.again";
    }
    return reason.isEmpty() ? tip : tip + u'\n' + texts.text(reason);
}

} // namespace melovane
