#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class MLVFunction;
class TreeControl;
class TreePages;
struct TreeRow;

/// What a tick of the library tree does: the flag in its table, and the rows that show the same.
///
/// A row that is ticked becomes a favourite in place: its key is that of a favourite until the next
/// fill, so a tick that goes again is that of a favourite. The asymmetries are the suite's: an
/// artist that a fill shows ticked keeps its flag when the tick goes below its letter, and a folder
/// that a fill shows among the favourites keeps its flag when the tick goes there.
class FavouriteTicks
{
public:
    /// \param listsChanged the lists that the panel of lists shows are others now
    FavouriteTicks(TreePages& pages, MLVFunction& functions, std::function<void()> listsChanged);

    /// The user has changed the tick of a row of the tree that is seen.
    void ticked(int row, bool on);

    /// What the tool tip over a tick says, with what the tick can't do.
    [[nodiscard]] static QString tip(const TreeRow& row, const ConfigObjects& texts);

private:
    void directory(int row, bool on);
    void favouriteDirectory(int row);
    void genre(int row, bool on);
    void favouriteGenre(int row);
    void genreArtist(int row, bool on);
    void favouriteGenreArtist(int row);
    void named(int row, bool on);
    void favouriteNamed(int row);
    void list(int row, bool on);

    [[nodiscard]] TreeControl& tree() const;
    [[nodiscard]] int folderOf(const QString& favouriteKey) const;
    void setTick(int row, bool on);
    void setChildTicks(int row, bool on);
    void insertFavourite(const TreeRow& row);
    int makeFavourite(int row, const QString& picture);
    void addFavouriteArtist(int row, const QString& genreKey);
    void unmake(int row);
    void removeTwin(const QString& favouriteKey);
    [[nodiscard]] int endOfFavourites() const;
    [[nodiscard]] int findBelowFavourites(const QString& key) const;

    TreePages& m_pages;
    MLVFunction& m_functions;
    std::function<void()> m_listsChanged;
};

} // namespace melovane
