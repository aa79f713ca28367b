#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

class DBEngine;

/// A secondary sort column.
struct KsSort
{
    QString name;
    int kind = 0; ///< kAscending, anything else is descending
};

/// Turns a description (table, columns, find columns with kinds, one find text, sorting, an extra
/// filter) into the statement text that a library grid shows.
///
/// The text is compared letter by letter to decide whether a requery is needed, so its doubled
/// blanks and line feeds are contract. Making text touches no file; only SetFieldsFromTable,
/// SetFieldsFromView, GetCount and the four name lookups open the database, and close it again.
/// Their failures reach the caller as DbError. Nothing is validated: a wrong description makes a
/// statement that the engine refuses.
class cls_CreateSqlFind
{
public:
    /// Value of AddOrderBy for an ascending column.
    static constexpr int kAscending = 100;

    explicit cls_CreateSqlFind(DBEngine& engine);

    /// The file that the lookups open.
    void SetDataBaseName(const QString& name) { m_database = name; }

    void SetTableName(const QString& name) { m_table = name; }

    /// The select list becomes all columns of a table, in its order; calls ClearTableFields first.
    void SetFieldsFromTable(const QString& table);
    /// The same for a stored query.
    void SetFieldsFromView(const QString& query);

    /// Accepted without effect.
    void SetFieldsFromConfigTable(const QString& name);

    /// Adds a column in upper case; one that is there already is skipped.
    void AddTableField(const QString& name);

    /// Empties the select list and the view filter, so ViewDEL comes after it. An empty select list
    /// makes "select *".
    void ClearTableFields();

    [[nodiscard]] int GetFieldCount() const { return static_cast<int>(m_fields.size()); }

    /// A find column, optionally with its kind: "Titel", "PNID:long", "DTSImport:date", "x:where".
    /// A find text of kind "where" is a whole condition.
    void AddFieldFind(const QString& name) { m_finds.append(name); }

    void ClearFieldFind() { m_finds.clear(); }

    /// The text that all find columns are compared with. Each of ' [ ] becomes "*", so no text can
    /// end its quotes.
    void SetFind(const QString& text);

    /// The statement of the rows that meet a complete condition, whatever was to be found before.
    /// \param condition without brackets around it; quotes and brackets in it stay
    [[nodiscard]] QString GetSqlWhere(const QString& condition);

    /// The main sort column; empty for no order clause. Needs not be in the select list.
    void SetOrderBy(const QString& name) { m_orderBy = name; }

    /// "ASC" or "DESC", pasted as it is.
    void SetSortRichtung(const QString& direction) { m_direction = direction; }

    /// A secondary sort column; one that is known (whatever its letter case) keeps its place and
    /// changes its kind. Used only while it is in the select list and not the main column.
    void AddOrderBy(const QString& name, int kind);

    void RemoveOrderBy() { m_orderList.clear(); }

    /// Text pasted behind the find clause, as " and del in (0,-1) "; unused without find columns.
    void ViewDEL(const QString& text) { m_viewFilter = text; }

    /// The find columns as one condition without the word where; empty for none.
    [[nodiscard]] QString GetWehre() const;

    /// The whole statement.
    ///
    /// \param mode 2 finds texts that begin with the find text, 3 equal texts in any column, 4
    /// equal texts in all columns. 1 makes a text that no engine runs: write "*" into the find text
    /// for a search inside.
    /// With one find column and no "*" in the find text every "like" in the statement becomes "=",
    /// also one inside the find text.
    [[nodiscard]] QString GetSql(int mode);

    /// The last statement made, with the order clause of now.
    [[nodiscard]] QString GetLastSQL() const;

    /// Tracks of a folder on a disc; find columns and view filter play no part.
    [[nodiscard]] QString GetCDSql(const QString& path, const QString& drive);

    /// Numeric equality on every find column; mode 3 is the one that makes a valid statement.
    [[nodiscard]] QString GetSqlByNummer(int mode);
    /// Numeric greater-or-equal; the mode has no effect.
    [[nodiscard]] QString GetSqlByNummerGreater(int mode);
    /// Greater-or-equal by text: "98" lies above "130". The mode has no effect.
    [[nodiscard]] QString GetSqlByTextGreater(int mode);

    /// The statement that GetCount runs. Kinds of find columns have no meaning here.
    [[nodiscard]] QString countStatement(int mode) const;
    /// Number of rows that begin with the find text.
    [[nodiscard]] qint64 GetCount(int mode) const;

    /// Names by number; an unknown number gives an empty text.
    [[nodiscard]] QString GetGroupName(int id) const;
    [[nodiscard]] QString GetGenreName(int id) const;
    [[nodiscard]] QString GetPlaylistname(int id) const;
    [[nodiscard]] std::optional<int> GetGenreID(const QString& name) const;

private:
    [[nodiscard]] QString selectFrom() const;
    [[nodiscard]] QString orderClause() const;
    [[nodiscard]] QString comparison(const QString& findColumn, int mode) const;
    /// Keeps the statement as the last one and gives it its order clause.
    [[nodiscard]] QString keep(const QString& statement);
    /// One comparison per find column: "[column" + before + find text + behind.
    [[nodiscard]] QString
    numberStatement(const QString& before, const QString& behind, const QString& end);
    [[nodiscard]] QString lookUpName(const QString& statement) const;

    DBEngine& m_engine;
    QString m_database;
    QString m_table;
    QStringList m_fields; ///< upper case, each once
    QStringList m_finds;
    QString m_find;
    QString m_orderBy;
    QString m_direction;
    std::vector<KsSort> m_orderList;
    QString m_viewFilter;
    QString m_lastStatement; ///< without its order clause
};

} // namespace melovane
