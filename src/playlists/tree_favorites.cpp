#include "playlists/tree_favorites.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"

#include <QStringList>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What stands behind the "??" of a key; empty for a key of another form.
QString valueOf(QStringView key)
{
    const QStringList halves = key.toString().split("??"_L1);
    return halves.size() == 2 ? halves[1] : QString();
}

/// A name as statements of the suite carry it, with its quotes.
QString quotedName(QString name)
{
    return sql::text(name.replace(u'\'', u'*'));
}

/// "true" for "update", "false" for "delete", empty for other words.
QString flagOf(QStringView word)
{
    if (word == u"update") {
        return u"true"_s;
    }
    return word == u"delete" ? u"false"_s : QString();
}

} // namespace

TreeFavorites::TreeFavorites(DBEngine& engine, const GlobalSettings& settings, ErrorSink sink)
    : m_engine(engine)
    , m_settings(settings)
    , m_sink(std::move(sink))
{}

void TreeFavorites::quiet(QStringView where, const std::function<void(Database&)>& work)
{
    quietly(m_sink, where.toString(), [&] { work(*m_engine.OpenDatabase(m_settings.DbName())); });
}

/// \param head the statement up to the flag: "update tree_album set favorit="
void TreeFavorites::named(QStringView where, QStringView name, QStringView head, QStringView word)
{
    const QString flag = flagOf(word);
    if (!name.isEmpty() && !flag.isEmpty()) {
        quiet(where, [&](Database& database) {
            database.Execute(head.toString() + flag + ", tstamp=now where "_L1 +
                             (head.contains(u"tree_dir") ? "path="_L1 : "name="_L1) +
                             quotedName(name.toString()));
        });
    }
}

void TreeFavorites::numbered(QStringView where,
                             QStringView key,
                             QStringView table,
                             QStringView column,
                             QStringView word)
{
    const QString value = valueOf(key);
    const QString flag = flagOf(word);
    if (!value.isEmpty() && !flag.isEmpty()) {
        quiet(where, [&](Database& database) {
            database.Execute("update "_L1 + table.toString() + " set activ="_L1 + flag +
                             ", UpdateTime=now where "_L1 + column.toString() + u'=' +
                             sql::number(qint64{leadingLong(value)}));
        });
    }
}

void TreeFavorites::UpdateTreeDirFavorit(QStringView key, QStringView word)
{
    QString path = valueOf(key);
    path.chop(1);
    named(u"UpdateTreeDirFavorit", path, u"update tree_dir set favorit=", word);
}

void TreeFavorites::UpdateTreeAlbum(QStringView key, QStringView word)
{
    named(u"UpdateTreeAlbum", valueOf(key), u"update tree_album set favorit=", word);
}

void TreeFavorites::UpdateTreeInterpret(QStringView key, QStringView word)
{
    named(u"UpdateTreeInterpret", valueOf(key), u"update tree_Interpret set favorit=", word);
}

void TreeFavorites::UpdateTreePlaylist(QStringView key, QStringView word)
{
    numbered(u"UpdateTreePlaylist", key, u"pl_name", u"nid", word);
}

void TreeFavorites::UpdateTreePlaylistGroup(QStringView key, QStringView word)
{
    numbered(u"UpdateTreePlaylistGroup", key, u"pl_group", u"grid", word);
}

void TreeFavorites::UpdateTreeGenreFavorit(QStringView key, QStringView word)
{
    const QString value = valueOf(key);
    if (value.isEmpty()) {
        return;
    }
    const QString name = quotedName(value);
    quiet(u"UpdateTreeGenreFavorit", [&](Database& database) {
        // Genre and artists are one change of the user's.
        Transaction change(database);
        if (word == u"delete") {
            database.Execute(u"update tree_genre set favorit=false where name="_s + name);
            database.Execute(
                u"update tree_genre_interpret set favorit=false,tstamp=now where genre="_s + name);
        } else if (word == u"update") {
            database.Execute(u"update tree_genre set favorit=true ,tstamp=now where name="_s +
                             name);
            database.Execute(
                u"update tree_genre_interpret set favorit=true,tstamp=now where genre="_s + name);
        } else if (word == u"delete_fav") {
            database.Execute(
                u"update tree_genre_interpret set favorit=false,tstamp=now where name="_s + name);
        } else if (word == u"update_fav") {
            database.Execute(
                u"update tree_genre_interpret set favorit=true,tstamp=now where name="_s + name);
        } else if (word == u"update_fav_dir") {
            database.Execute(u"update tree_genre set favorit=true , tstamp=now where name="_s +
                             name);
        }
        change.commit();
    });
}

void TreeFavorites::SetCollapsInfoState(qint64 id, QStringView state)
{
    quiet(u"SetCollapsInfoState", [&](Database& database) {
        database.Execute("update TreeErweitertConfig set RowExpand="_L1 + state.toString() +
                         " where id = "_L1 + sql::number(id));
    });
}

} // namespace melovane
