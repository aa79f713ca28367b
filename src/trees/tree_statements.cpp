#include "trees/tree_statements.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"

#include <algorithm>
#include <array>

namespace melovane::treesql {

using namespace Qt::Literals::StringLiterals;

namespace {

struct StoredQuery
{
    QLatin1StringView name;
    QLatin1StringView text;
};

/// As `resources/schema/queries` ships them.
constexpr std::array kShipped{
    StoredQuery{"UPDATE_TREE_ALBUM"_L1,
                "INSERT INTO tree_album (Name, anzahl, imgkey) "
                "SELECT Album, Count(*), 'album' FROM db_all "
                "WHERE DEL = False AND Album <> '' GROUP BY Album ORDER BY Album"_L1},
    StoredQuery{"UPDATE_TREE_GENRE"_L1,
                "INSERT INTO tree_genre (Name, anzahl, imgkey) "
                "SELECT Genre, Count(*), 'genre' FROM db_all "
                "WHERE DEL = False AND Genre <> '' GROUP BY Genre ORDER BY Genre"_L1},
    StoredQuery{"UPDATE_TREE_GENRE_interpret"_L1,
                "INSERT INTO tree_genre_interpret (Genre, Name, anzahl, imgkey) "
                "SELECT Genre, Interpret, Count(*), 'interpret' FROM db_all "
                "WHERE DEL = False AND Genre <> '' AND Interpret <> '' "
                "GROUP BY Genre, Interpret ORDER BY Genre, Interpret"_L1},
    StoredQuery{"UPDATE_TREE_interpret"_L1,
                "INSERT INTO tree_interpret (Name, anzahl, imgkey) "
                "SELECT Interpret, Count(*), 'interpret' FROM db_all "
                "WHERE DEL = False AND Interpret <> '' GROUP BY Interpret ORDER BY Interpret"_L1},
    StoredQuery{"v_tree_dir"_L1,
                "SELECT db_all.Path, Nz(Max(db_all.DriveName), '') AS DriveName, "
                "Max(db_all.DriveTyp) AS DriveTyp, Count(*) AS anzahl "
                "FROM db_all "
                "WHERE DEL = False AND Path <> '' "
                "GROUP BY db_all.Path, IIf(db_all.DriveTyp = 4, 1, 0), "
                "IIf(db_all.DriveTyp = 4, Nz(db_all.DriveName, ''), '') "
                "ORDER BY db_all.Path, IIf(db_all.DriveTyp = 4, Nz(db_all.DriveName, ''), '')"_L1},
};

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

bool isShipped(Database& database, const QString& query)
{
    const auto* const shipped =
        std::find_if(kShipped.begin(), kShipped.end(),
                     [&](const StoredQuery& stored) { return stored.name == query; });
    return shipped != kShipped.end() && database.queryDefs().Contains(query) &&
           database.queryDefs().Item(query)->SQL().simplified() == shipped->text;
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
