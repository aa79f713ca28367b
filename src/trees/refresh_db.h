#pragma once

#include "store/error_sink.h"
#include "trees/parked_favorits.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Clock;
class Database;
class DBEngine;
class Files;
class LibraryCounts;
struct TrackFolder;

/// Refills the tables that the navigation trees show from the tracks of the library, and keeps a
/// few other derived values. Nobody else writes rows of tree tables, favourite marks apart.
///
/// Each operation opens the library, works and closes it. Each table is emptied and refilled in one
/// transaction on the trees' side file alone: readers see the old rows or the new ones, edits of
/// the library never wait for it, and an end at any moment leaves the old rows with their marks.
///
/// Favourites are rows of these tables, too. They are parked in `~tree.tmp` in the data folder
/// while their table is refilled. The file is written, read and deleted under the write lock of the
/// side file, so two rebuilds never meet in it, and one that was left behind is never read.
class RefreshDB
{
public:
    struct Parts
    {
        DBEngine& engine;
        Files& files;
        const Clock& clock;
        QString dataFolder;            ///< of `~tree.tmp`
        std::function<void()> yield{}; ///< lets a window work once, before a rebuild; may be empty
        ErrorSink sink{};              ///< learns of every ignored failure; may be empty
    };

    explicit RefreshDB(Parts parts);
    ~RefreshDB();

    /// The library of all operations; to be called before any of them.
    void SetDbName(const QString& name) { m_dbName = name; }

    /// Counts the entries of every playlist. A list whose number was wrong gets it, and the moment
    /// as its `UpdateTime`. Quiet: what was done before an error stays done.
    void PlnameCount();

    /// Offers what users typed into the four selection fields beside the values of the catalogue,
    /// in table `config`. Quiet: a statement that fails is passed over.
    void MusicMatch();

    /// `tree_genre`, then `tree_genre_interpret`. Quiet: after an error the table keeps its rows.
    void TreeGenre();
    /// Likewise `tree_album`.
    void TreeAlbum();

    /// Refills `tree_<column>` with the values of that column of the library.
    ///
    /// The word "table" of the statements' pattern is replaced wherever it stands, so a favourite
    /// whose name holds it in small letters ceases to be one.
    /// \throws DbError, IoError; the table then keeps its rows
    void TreeTable(const QString& column);

    /// `tree_importdate`, which has no favourites. \throws DbError
    void TreeTableImportDate();

    /// Likewise `tree_interpret`.
    void TreeInterpret();

    /// `tree_dir` with its totals. Quiet: an error before the rows are written leaves the table as
    /// it is; from there on a row or mark that fails is left out.
    void TreeDir();

    /// Counts the tracks for all tables in one walk. The operations that follow fill their tables
    /// from that, as long as nobody else has written the library since.
    /// \param library outlives this, and is used for no tree table.
    /// Quiet: after an error each operation counts by itself.
    void countOnce(Database& library);

    /// \see soundexOf
    [[nodiscard]] static QString Soundex(const QString& word);

private:
    /// How one tree table is refilled.
    struct Refill
    {
        QString table;
        QStringList keys{}; ///< columns whose values are parked with a favourite
        std::function<void(Database&)> fill;
        std::function<QString(const ParkedFavorit&)> restore{};
        bool skipsErrors = false; ///< of restoring statements
    };

    [[nodiscard]] QString parkedFile() const;
    void yield() const;
    void quiet(const QString& where, const std::function<void()>& step) const;
    [[nodiscard]] std::unique_ptr<Database> open() const;
    void refill(Database& database, const Refill& refill) const;
    void park(Database& database, const Refill& refill) const;
    void restore(Database& database, const Refill& refill) const;

    /// How the rows of a table with names are made.
    struct NamedFill
    {
        QString table;
        QStringList columns; ///< of the library; with two the first is the genre
        QString imgkey;
        QString query{}; ///< stored, that fills the table; empty for none
    };

    [[nodiscard]] bool isCounted() const;
    void fillNames(Database& database, const NamedFill& fill) const;
    void refillStored(Database& database, const NamedFill& fill) const;
    /// Opens the library, lets the window work once and refills tables one behind the other, up to
    /// the first failure.
    void refillQuietly(const QString& where, const std::vector<NamedFill>& fills) const;
    void fillImportDates(Database& database) const;
    [[nodiscard]] std::vector<TrackFolder> folders(Database& database) const;
    void writeFolders(Database& database) const;

    Parts m_parts;
    QString m_dbName;
    std::unique_ptr<LibraryCounts> m_counts; ///< of countOnce()
};

} // namespace melovane
