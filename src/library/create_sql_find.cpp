#include "library/create_sql_find.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/letter_case.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The name of a find column without its kind.
QString columnName(const QString& findColumn)
{
    return findColumn.section(u':', 0, 0);
}

QString kindOf(const QString& findColumn)
{
    return lowerCase(findColumn.section(u':', 1, 1));
}

bool sameName(const QString& left, const QString& right)
{
    return upperCase(left) == upperCase(right);
}

/// What stands behind " [name] like '" of a text column. Mode 1 writes neither the find text nor
/// the closing quote; any other number writes nothing.
QString likeTail(const QString& find, int mode)
{
    switch (mode) {
    case 1:
        return u"*"_s;
    case 2:
        return find + "*' or "_L1;
    case 3:
        return find + "' or "_L1;
    case 4:
        return find + "' and"_L1;
    }
    return {};
}

} // namespace

cls_CreateSqlFind::cls_CreateSqlFind(DBEngine& engine)
    : m_engine(engine)
{}

void cls_CreateSqlFind::SetFieldsFromTable(const QString& table)
{
    ClearTableFields();
    const auto database = m_engine.OpenDatabase(m_database);
    for (const FieldDef& field : database->tableDefs().Item(table).Fields) {
        AddTableField(field.Name);
    }
}

void cls_CreateSqlFind::SetFieldsFromView(const QString& query)
{
    ClearTableFields();
    const auto database = m_engine.OpenDatabase(m_database);
    for (const FieldDef& field : database->queryDefs().Item(query)->Fields()) {
        AddTableField(field.Name);
    }
}

void cls_CreateSqlFind::SetFieldsFromConfigTable(const QString& name)
{
    Q_UNUSED(name)
}

void cls_CreateSqlFind::AddTableField(const QString& name)
{
    const QString key = upperCase(name);
    if (!m_fields.contains(key)) {
        m_fields.append(key);
    }
}

void cls_CreateSqlFind::ClearTableFields()
{
    m_fields.clear();
    m_viewFilter.clear();
}

void cls_CreateSqlFind::SetFind(const QString& text)
{
    m_find.clear();
    for (const QChar sign : text) {
        const bool special = sign == u'\'' || sign == u'[' || sign == u']';
        m_find.append(special ? QChar(u'*') : sign);
    }
    // No quote is left to double, but a zero character would end the statement.
    m_find = sql::quoted(m_find);
}

void cls_CreateSqlFind::AddOrderBy(const QString& name, int kind)
{
    for (KsSort& sort : m_orderList) {
        if (sameName(sort.name, name)) {
            sort.kind = kind;
            return;
        }
    }
    m_orderList.push_back({name, kind});
}

QString cls_CreateSqlFind::selectFrom() const
{
    QString text = u"select "_s;
    if (m_fields.isEmpty()) {
        text += " * "_L1;
    }
    for (const QString& field : m_fields) {
        text += " ["_L1 + field + "] ,"_L1;
    }
    text.chop(1);
    return text + " from "_L1 + m_table + u'\n';
}

QString cls_CreateSqlFind::orderClause() const
{
    if (m_orderBy.isEmpty()) {
        return {};
    }
    QString text = "order by ["_L1 + m_orderBy + "] "_L1 + m_direction;
    for (const KsSort& sort : m_orderList) {
        if (m_fields.contains(upperCase(sort.name)) && !sameName(sort.name, m_orderBy)) {
            text += " , ["_L1 + sort.name;
            text += sort.kind == kAscending ? "] ASC  "_L1 : "] DESC "_L1;
        }
    }
    return text;
}

QString cls_CreateSqlFind::keep(const QString& statement)
{
    m_lastStatement = statement;
    return GetLastSQL();
}

QString cls_CreateSqlFind::GetLastSQL() const
{
    return m_lastStatement + orderClause();
}

QString cls_CreateSqlFind::comparison(const QString& findColumn, int mode) const
{
    const QString name = columnName(findColumn);
    const QString kind = kindOf(findColumn);
    if (kind == "long"_L1) {
        return " ["_L1 + name + "] = "_L1 + m_find + " or "_L1;
    }
    if (kind == "date"_L1) {
        return " format(["_L1 + name + "],'DD.MM.YYYY') = '"_L1 + m_find + "' or "_L1;
    }
    if (kind == "where"_L1) {
        return u' ' + m_find + " Or "_L1;
    }
    return " ["_L1 + name + "] like '"_L1 + likeTail(m_find, mode);
}

QString cls_CreateSqlFind::GetSql(int mode)
{
    QString text = selectFrom();
    if (!m_finds.isEmpty()) {
        text += " where ("_L1;
        for (const QString& findColumn : std::as_const(m_finds)) {
            text += comparison(findColumn, mode);
        }
        text.chop(3);
        text += " ) "_L1 + m_viewFilter + u'\n';
        if (m_finds.size() == 1 && !m_find.contains(u'*')) {
            // Blind on purpose: it also hits these letters inside the find text.
            text.replace("like"_L1, "="_L1);
        }
    }
    return keep(text);
}

QString cls_CreateSqlFind::GetSqlWhere(const QString& condition)
{
    return keep(selectFrom() + " where ( "_L1 + QString(condition).remove(QChar(0)) + "  ) "_L1 +
                m_viewFilter + u'\n');
}

QString cls_CreateSqlFind::GetCDSql(const QString& path, const QString& drive)
{
    return keep(selectFrom() + " where path like "_L1 + sql::text(path) + " and drivename="_L1 +
                sql::text(drive) + " and del=false "_L1);
}

QString
cls_CreateSqlFind::numberStatement(const QString& before, const QString& behind, const QString& end)
{
    QString text = selectFrom();
    if (!m_finds.isEmpty()) {
        text += " where ( "_L1;
        for (const QString& findColumn : std::as_const(m_finds)) {
            text += " ["_L1 + findColumn + before + m_find + behind;
        }
        text.chop(2);
        text += end + m_viewFilter + u'\n';
    }
    return keep(text);
}

QString cls_CreateSqlFind::GetSqlByNummer(int mode)
{
    return numberStatement(mode == 1 ? u"] =*"_s : u"] ="_s, mode == 3 ? u" or"_s : u"*' or"_s,
                           u" ) "_s);
}

QString cls_CreateSqlFind::GetSqlByNummerGreater(int mode)
{
    Q_UNUSED(mode)
    return numberStatement(u"] >="_s, u" or"_s, u") "_s);
}

QString cls_CreateSqlFind::GetSqlByTextGreater(int mode)
{
    Q_UNUSED(mode)
    return numberStatement(u"] >='"_s, u"' or"_s, u") "_s);
}

QString cls_CreateSqlFind::countStatement(int mode) const
{
    QString text = "select count(*) as anz from "_L1 + m_table + u'\n';
    if (!m_finds.isEmpty()) {
        text += " where ("_L1;
        for (const QString& findColumn : m_finds) {
            text += " ["_L1 + columnName(findColumn) + "] like '"_L1;
            text += mode == 1 ? "*"_L1 : ""_L1;
            text += m_find + "*' or"_L1;
        }
        text.chop(2);
        text += ") "_L1 + m_viewFilter;
    }
    return text;
}

qint64 cls_CreateSqlFind::GetCount(int mode) const
{
    const auto database = m_engine.OpenDatabase(m_database);
    const auto set = database->OpenRecordset(countStatement(mode));
    return set->Eof() ? 0 : set->value(u"anz").toLong();
}

QString cls_CreateSqlFind::GetWehre() const
{
    QString text;
    for (const QString& findColumn : m_finds) {
        text += columnName(findColumn) + " like '"_L1 + m_find + "*' or "_L1;
    }
    text.chop(4);
    return text;
}

QString cls_CreateSqlFind::lookUpName(const QString& statement) const
{
    const auto database = m_engine.OpenDatabase(m_database);
    const auto set = database->OpenRecordset(statement);
    return set->Eof() ? QString() : set->value(u"name").toText();
}

QString cls_CreateSqlFind::GetGroupName(int id) const
{
    return lookUpName("select name from pl_group where grid="_L1 + sql::number(qint64{id}));
}

QString cls_CreateSqlFind::GetGenreName(int id) const
{
    return lookUpName("select name from genre where genre_id="_L1 + sql::number(qint64{id}));
}

QString cls_CreateSqlFind::GetPlaylistname(int id) const
{
    return lookUpName("select name from pl_name where nid="_L1 + sql::number(qint64{id}));
}

std::optional<int> cls_CreateSqlFind::GetGenreID(const QString& name) const
{
    const auto database = m_engine.OpenDatabase(m_database);
    const auto set =
        database->OpenRecordset("select * from genre where name="_L1 + sql::text(name));
    if (set->Eof()) {
        return std::nullopt;
    }
    return set->value(u"Genre_ID").toLong();
}

} // namespace melovane
