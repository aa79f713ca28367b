#include "playlists/bulk_edits.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/list_edit.h"
#include "playlists/playlist_table.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

BulkEdits::BulkEdits(PlaylistParts parts)
    : m_parts(std::move(parts))
{}

void BulkEdits::change(Pnid list, ListAction action, const QString& statement)
{
    quietly(m_parts.sink, u"Playlist values"_s, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        const QString entries = u"pnid="_s + sql::number(numberOf(list));
        ListEdit edit(m_parts.history, *database, action, list);
        edit.before(entries);
        database->Execute(statement);
        markChanged(*database, list);
        edit.after(entries);
        edit.commit();
    });
}

void BulkEdits::setAllMixStyle(const QString& list, const QString& outOf, const QString& inOf)
{
    const std::optional<qint64> number = entryNumber(list);
    const std::optional<qint64> out = entryNumber(outOf);
    const std::optional<qint64> in = entryNumber(inOf);
    if (!number || !out || !in) {
        return;
    }
    QString statement =
        u"update pl_all set mixout = (select max(mixout) from pl_all where plid=%splid%) , "
        "mixin=(select max(mixin) from pl_all where plid=%snextplid%) where pnid="_s +
        sql::number(*number);
    statement.replace(u"%splid%"_s, sql::number(*out));
    statement.replace(u"%snextplid%"_s, sql::number(*in));
    change(Pnid(int(*number)), ListAction::Styles, statement);
}

void BulkEdits::reset(Pnid list)
{
    QString statement = u" UPDATE VPL_ALL as pl_all"
                        " SET PL_ALL.FrameStart = 0, PL_ALL.FrameStop = "
                        "(pl_ALL.DTIMEMSEC/26.12245), PL_ALL.Pitch = 0, "
                        " PL_ALL.MixIn = Null, PL_ALL.MixOut = Null, PL_ALL.EQ = Null, "
                        "PL_ALL.Command = Null, "
                        " PL_ALL.Volume = 0"
                        " WHERE (((PL_ALL.PNID)=%pnid%)) "_s;
    statement.replace(u"%pnid%"_s, sql::number(numberOf(list)));
    change(list, ListAction::Reset, statement);
}

void BulkEdits::deleteAllMixStyle(Pnid list)
{
    change(list, ListAction::Styles,
           u"update pl_all set Mixout=null, MixIn=null, mixtime=0 where PNID="_s +
               sql::number(numberOf(list)));
}

} // namespace melovane
