#pragma once

#include "platform/controls/tree_control.h"

#include <QString>
#include <QStringView>

#include <vector>

/// What the library tree shows of the tree tables: one function for each kind of tree.
///
/// Each reads over a database that is open already and gives rows from top to bottom. A failing
/// read throws DbError. Texts are those of the tables, so one that holds a quote or a star stands
/// in row and key as it is; only statements double the quotes.
namespace melovane {

class ConfigObjects;
class Database;
struct ListState;

/// The kinds of the library tree, in the order of their grids; the numbers are the suite's.
enum class TreeKind
{
    Dir,
    Genre,
    Album,
    Interpret,
    Favorit,
    Playlist,
    State,
    Info,
    Erweitert,
};

inline constexpr int kTreeKinds = 9;

/// What the suite calls a kind: "TreeDir", "info" ...
[[nodiscard]] QStringView nameOf(TreeKind kind);

namespace treerows {

// -- Helpers of every fill --

/// A row of level 0 in the colours of root rows. Without a key it is a mere heading.
[[nodiscard]] TreeRow root(const QString& caption, const QString& key, const QString& picture);

/// \param picture looked up without regard to case
[[nodiscard]] TreeRow
row(int level, const QString& text, const QString& key, const QString& picture);

/// "Name [count]", the count as second text.
void setCounted(TreeRow& row, const QString& name, const QString& count);

/// The picture of an `imgkey` of a table.
[[nodiscard]] QString pictureOf(const QString& imgkey);

// -- The kinds --

/// Favourite folders, then all: `tree_dir` in its order.
[[nodiscard]] std::vector<TreeRow> directories(Database& database, const ConfigObjects& texts);
[[nodiscard]] std::vector<TreeRow> genres(Database& database, const ConfigObjects& texts);
/// \param threshold albums with more tracks than that are listed; favourites always
[[nodiscard]] std::vector<TreeRow>
albums(Database& database, const ConfigObjects& texts, int threshold);
/// Favourite artists and 28 rows that are filled when they are opened.
[[nodiscard]] std::vector<TreeRow> artists(Database& database, const ConfigObjects& texts);
[[nodiscard]] std::vector<TreeRow> favourites(Database& database, const ConfigObjects& texts);
/// Years, months and days with playbacks; a month is told from the one before it alone.
[[nodiscard]] std::vector<TreeRow> statistics(Database& database);

/// All groups with their lists. The row of the list that plays is bold.
[[nodiscard]] std::vector<TreeRow> playlists(Database& database);
/// A list with its count, ticked while the panel of lists shows it.
[[nodiscard]] TreeRow playlist(const ListState& list);

/// Whether the library has no tracks and the table of a kind no rows, so that only headings stand
/// there. False for kinds that show something else than tracks.
[[nodiscard]] bool isWithoutTracks(Database& database, TreeKind kind);

} // namespace treerows

} // namespace melovane
