#include "library/library_query.h"

#include "config/global_settings.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"

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
    const std::pair<bool, QString> choices[] = {{settings.SuchAlbum() != 0, u"Album"_s},
                                                {settings.SuchKommentar() != 0, u"Kommentar"_s},
                                                {settings.SuchDatei() != 0, u"Dname"_s},
                                                {settings.SuchPath() != 0, u"Path"_s}};
    QStringList columns;
    for (const auto& [chosen, column] : choices) {
        if (chosen) {
            columns.append(column);
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
    for (const QString& column : {u"Track"_s, u"Interpret"_s, u"Titel"_s}) {
        m_sql.AddOrderBy(column, cls_CreateSqlFind::kAscending);
    }
}

void LibraryQuery::setFindColumns(const QStringList& columns)
{
    m_sql.ClearFieldFind();
    m_sql.AddFieldFind(u"Titel"_s);
    m_sql.AddFieldFind(u"Interpret"_s);
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

QString LibraryQuery::startStatement(const QString& lastSearch)
{
    if (!lastSearch.isEmpty()) {
        m_sql.SetFind(lastSearch);
    }
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
        setSorting(u"Play"_s, u"ASC"_s);
    } else {
        m_sql.ViewDEL(kViewFilter);
        setOrder(m_sortColumn, m_sortDirection);
        if (kind == "cddir"_L1) {
            return m_sql.GetCDSql(request.value, request.field);
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
    const bool isByPlay = column.compare("Play"_L1, Qt::CaseInsensitive) == 0;
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
