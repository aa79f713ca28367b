#include "library/library_query.h"

#include "config/global_settings.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"
#include "store/track_fields.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows of the library that views show: normal ones and those marked as deleted.
const QString kViewFilter = u" and del in (0,-1) "_s;

/// The find text of the start, never shown: a library is empty until the first search.
const QString kStartFind = u"Melovane"_s;

/// Builder modes: texts that begin with the find text, and equal ones.
constexpr int kPrefixMode = 2;
constexpr int kEqualMode = 3;

constexpr qint16 kByNumber = 1;

QString sourceOf(LibraryView view)
{
    switch (view) {
    case LibraryView::DBGrid:
        return u"db_all"_s;
    case LibraryView::PLGrid:
        return u"vdbpl_all"_s;
    case LibraryView::DBState:
        return u"vdb_stat_all"_s;
    case LibraryView::DBGridDel:
        return u"vdb_all_del"_s;
    case LibraryView::DBGridNoExist:
        return u"vdb_all_nofile"_s;
    }
    return {};
}

/// The name of a field in the find columns of a statement.
QString findColumn(TrackField field)
{
    const TrackFieldRow& row = rowOf(field);
    return (row.search.spelling.isEmpty() ? row.column : row.search.spelling).toString();
}

LibraryView viewOf(const QString& kind)
{
    if (kind == "playlist"_L1) {
        return LibraryView::PLGrid;
    }
    return kind == "statistik"_L1 ? LibraryView::DBState : LibraryView::DBGrid;
}

} // namespace

QStringList chosenSearchColumns(const GlobalSettings& settings)
{
    QStringList columns;
    for (const TrackField field : searchedFields()) {
        const auto chosenBy = rowOf(field).search.chosenBy;
        if (chosenBy && (settings.*chosenBy)() != 0) {
            columns.append(findColumn(field));
        }
    }
    return columns;
}

LibraryQuery::LibraryQuery(DBEngine& engine)
    : m_sql(engine)
{}

void LibraryQuery::configure(const QString& database)
{
    m_view = LibraryView::DBGrid;
    m_sql.SetDataBaseName(database);
    m_sql.SetTableName(sourceOf(m_view));
    m_sql.SetFieldsFromTable(sourceOf(m_view));
    m_sql.SetFind(kStartFind);
    m_sql.ViewDEL(kViewFilter);
    setFindColumns({});
    m_sql.RemoveOrderBy();
    setSecondaryOrder();
    setOrder(m_sortColumn, m_sortDirection);
}

void LibraryQuery::setSorting(const QString& column, const QString& direction)
{
    m_sortColumn = column;
    m_sortDirection = upperCase(trimBlanks(direction)) == "DESC"_L1 ? u"DESC"_s : u"ASC"_s;
    setOrder(m_sortColumn, m_sortDirection);
}

void LibraryQuery::setOrder(const QString& column, const QString& direction)
{
    m_sql.SetOrderBy(column);
    m_sql.SetSortRichtung(direction);
}

void LibraryQuery::setSecondaryOrder()
{
    for (const TrackField field : {TrackField::Track, TrackField::Interpret, TrackField::Titel}) {
        m_sql.AddOrderBy(columnOf(field).toString(), cls_CreateSqlFind::kAscending);
    }
}

void LibraryQuery::setFindColumns(const QStringList& columns)
{
    m_sql.ClearFieldFind();
    for (const TrackField field : searchedFields()) {
        if (!rowOf(field).search.chosenBy) {
            m_sql.AddFieldFind(findColumn(field));
        }
    }
    for (const QString& column : columns) {
        m_sql.AddFieldFind(column);
    }
}

void LibraryQuery::show(LibraryView view)
{
    if (view == m_view) {
        return;
    }
    const QString source = sourceOf(view);
    m_sql.ClearTableFields();
    if (view == LibraryView::DBGrid) {
        m_sql.SetFieldsFromTable(source);
    } else {
        m_sql.SetFieldsFromView(source);
    }
    m_sql.SetTableName(source);
    m_view = view;
}

QString LibraryQuery::startStatement()
{
    return m_sql.GetSql(kPrefixMode);
}

QString LibraryQuery::searchStatement(const QString& text, const QStringList& columns)
{
    show(LibraryView::DBGrid);
    const SearchRequest request = readSearchText(text);
    m_sql.ViewDEL(kViewFilter);
    m_sql.SetFind(request.value);
    setOrder(m_sortColumn, m_sortDirection);
    if (request.form != SearchForm::Text) {
        return shortFormStatement(request);
    }
    setFindColumns(columns);
    return m_sql.GetSql(kPrefixMode);
}

QString LibraryQuery::shortFormStatement(const SearchRequest& request)
{
    m_sql.ClearFieldFind();
    m_sql.AddFieldFind(request.column);
    switch (request.form) {
    case SearchForm::Text:
    case SearchForm::Equal:
        break;
    case SearchForm::TextGreater:
        return m_sql.GetSqlByTextGreater(kPrefixMode);
    case SearchForm::NumberGreater:
        return m_sql.GetSqlByNummerGreater(kPrefixMode);
    }
    return m_sql.GetSql(kEqualMode);
}

QString LibraryQuery::treeStatement(const TreeRequest& request, const QStringList& columns)
{
    const QString kind = lowerCase(request.kind);
    show(viewOf(kind));
    m_sql.ClearFieldFind();
    m_sql.SetFind(request.value);
    if (kind == "playlist"_L1) {
        m_sql.AddFieldFind(u"PNID:long"_s);
        setOrder(u"SID"_s, u"ASC"_s);
    } else if (kind == "statistik"_L1) {
        m_sql.AddFieldFind(request.field);
        setSorting(columnOf(TrackField::Play).toString(), u"ASC"_s);
    } else {
        m_sql.ViewDEL(kViewFilter);
        setOrder(m_sortColumn, m_sortDirection);
        if (kind == "cddir"_L1) {
            return m_sql.GetCDSql(request.value, request.field);
        }
        if (kind.endsWith(":where"_L1)) {
            return m_sql.GetSqlWhere(request.value);
        }
        if (kind == "allfind"_L1) {
            setFindColumns(columns);
        } else {
            m_sql.AddFieldFind(request.field);
        }
    }
    return request.byNumber == kByNumber ? m_sql.GetSqlByNummer(kEqualMode)
                                         : m_sql.GetSql(kEqualMode);
}

QString LibraryQuery::wholeView(LibraryView view)
{
    show(view);
    m_sql.ClearFieldFind();
    setOrder(m_sortColumn, m_sortDirection);
    return m_sql.GetSql(kPrefixMode);
}

QString LibraryQuery::sortedBy(const QString& column, const QString& direction)
{
    m_sql.RemoveOrderBy();
    const bool isByPlay = columnOf(TrackField::Play).compare(column, Qt::CaseInsensitive) == 0;
    if (m_view != LibraryView::DBState || !isByPlay) {
        setSecondaryOrder();
    }
    setSorting(column, direction);
    return m_sql.GetLastSQL();
}

qint64 LibraryQuery::count() const
{
    return m_sql.GetCount(kPrefixMode);
}

} // namespace melovane
