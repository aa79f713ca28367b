#include "trees/tree_statements.h"

#include "platform/db/sql_text.h"

namespace melovane::treesql {

using namespace Qt::Literals::StringLiterals;

namespace {

QString restore(const QString& table, const QString& stamp)
{
    return u"update "_s + table + u" set tstamp="_s + stamp + u" , favorit=true where "_s;
}

QString forColumn(QString statement, const QString& column)
{
    return statement.replace(u"%X%"_s, column);
}

} // namespace

QString favorits(const QString& table)
{
    return u"select * from "_s + table + u" where favorit=true"_s;
}

QString empty(const QString& table)
{
    return u"delete from "_s + table;
}

QString quotedName(QString name)
{
    // Without an apostrophe the text is its own quoted form but for zero characters.
    return sql::quoted(name.replace(u'\'', u'*'));
}

QString restoreName(const QString& table, const ParkedFavorit& favorit)
{
    return restore(table, favorit.stamp) + u"name='"_s + quotedName(favorit.names[0]) + u"' "_s;
}

QString restoreGenreName(const ParkedFavorit& favorit)
{
    return restore(u"tree_genre_interpret"_s, favorit.stamp) + u"name='"_s +
           quotedName(favorit.names[1]) + u"' "_s + u" and genre='"_s +
           quotedName(favorit.names[0]) + u"' "_s;
}

QString restorePath(const ParkedFavorit& favorit)
{
    return restore(u"tree_dir"_s, favorit.stamp) + u"path='"_s + quotedName(favorit.names[0]) +
           u"' "_s;
}

QString fillTable()
{
    return u"INSERT INTO tree_table ( name, anzahl, imgkey ) "
           u"SELECT db_all.table AS name, Count(*) AS anzahl, 'Tree.table' AS imgkey "
           u"From db_all "
           u"Where db_all.table <> '' And del = False "
           u"GROUP BY db_all.table "
           u"ORDER BY db_all.table "_s;
}

QString fillImportDate()
{
    // "Imprtdate" is the key's spelling.
    return u"INSERT INTO tree_importdate (name, anzahl, imgkey ) "
           u"SELECT format(db_all.DTSImport,'dd.mm.yyyy') AS name, Count(*) AS anzahl, "
           u"'Tree.Imprtdate' AS imgkey "
           u"From db_all "
           u"Where del = False and db_all.DTSImport is not null "
           u"GROUP BY format(db_all.DTSImport,'yyyymmdd'),format(db_all.DTSImport,'dd.mm.yyyy')  "
           u"ORDER BY format(db_all.DTSImport,'yyyymmdd')  "_s;
}

QString addTypedValues(const QString& column)
{
    return forColumn(u"insert into config (Lang,Name,[Value],Beschreibung) select -1 , '%X%', "
                     u"'User', %X% from db_all where %X% is not null and %X% <>'' group by %X%"_s,
                     column);
}

QString dropKnownValues(const QString& column)
{
    return forColumn(u"delete from config where lang=-1 and Name='%X%' and beschreibung in (select "
                     u"beschreibung from config where lang<>-1 and Name='%X%')"_s,
                     column);
}

} // namespace melovane::treesql
