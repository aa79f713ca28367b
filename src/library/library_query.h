#pragma once

#include "library/create_sql_find.h"
#include "library/search_text.h"

#include <QString>
#include <QStringList>

namespace melovane {

class GlobalSettings;

/// Which rows the library grid shows: kinds of views with the names they have in the suite.
enum class LibraryView
{
    DBGrid,        ///< `db_all`: the search line, and every tree node but those below
    PLGrid,        ///< `vdbpl_all`: a playlist
    DBState,       ///< `vdb_stat_all`: the plays of a day
    DBGridDel,     ///< `vdb_all_del`: tracks marked as deleted
    DBGridNoExist, ///< `vdb_all_nofile`: tracks whose file is missing
};

/// What a node of a tree, or a step in the history, asks for.
struct TreeRequest
{
    QString kind;  ///< "Genre", "playlist", "cddir", "statistik", "allfind" ...
    QString field; ///< find column; for "cddir" the name of the volume
    QString value;
    qint16 byNumber = 0; ///< 1 compares numbers
};

/// Makes the statements of the library view and keeps its sorting.
///
/// Only the first statement of another kind of view opens the database, to learn its columns, and
/// closes it again; a failure there reaches the caller as DbError.
class LibraryQuery
{
public:
    explicit LibraryQuery(DBEngine& engine);

    /// Back to the view of the start over a database; the sorting stays.
    void configure(const QString& database);

    /// \param direction "ASC" or "DESC"; anything else counts as "ASC"
    void setSorting(const QString& column, const QString& direction);

    [[nodiscard]] const QString& SortColName() const { return m_sortColumn; }

    [[nodiscard]] const QString& SortRichtung() const { return m_sortDirection; }

    [[nodiscard]] LibraryView view() const { return m_view; }

    /// The statement of the start: what begins with the start word, which is never shown.
    [[nodiscard]] QString startStatement();

    /// A text of the search line. `columns` are searched beside title and artist.
    [[nodiscard]] QString searchStatement(const QString& text, const QStringList& columns);

    /// The rows behind a node of a tree. A node of the statistics sorts by the time of play from
    /// then on.
    [[nodiscard]] QString treeStatement(const TreeRequest& request, const QStringList& columns);

    /// All rows of `DBGridDel` or `DBGridNoExist`.
    [[nodiscard]] QString wholeView(LibraryView view);

    /// The last statement in the order of another column. Behind the sort column come track,
    /// artist and title, but not in a day's plays by time.
    [[nodiscard]] QString sortedBy(const QString& column, const QString& direction);

    /// What GetCount says of the last statement.
    [[nodiscard]] qint64 count() const;

private:
    void show(LibraryView view);
    void setOrder(const QString& column, const QString& direction);
    void setSecondaryOrder();
    void setFindColumns(const QStringList& columns);
    [[nodiscard]] QString shortFormStatement(const SearchRequest& request);

    cls_CreateSqlFind m_sql;
    LibraryView m_view = LibraryView::DBGrid;
    QString m_sortColumn;
    QString m_sortDirection;
};

/// The find columns that the settings add to title and artist, in their order: album, comment, file
/// name, folder.
[[nodiscard]] QStringList chosenSearchColumns(const GlobalSettings& settings);

} // namespace melovane
