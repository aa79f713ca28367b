#include "playlistview/playlist_summary.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "store/milli_sec_to_min.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::optional<PlaylistSummary> readSummary(Database& database, Pnid list)
{
    // Aggregates alone: one row comes also when there is no list, and its key is null then.
    const auto row = database.OpenRecordset(
        u"select max(n.nid) as nid, max(n.Name) as Name, count(a.plid) as anz, "
        "sum(a.framestop-a.framestart) as frtime "
        "from pl_name as n left join pl_all as a on n.nid=a.pnid where n.nid="_s +
        sql::number(numberOf(list)));
    if (row->value(u"nid").isNull()) {
        return std::nullopt;
    }
    PlaylistSummary summary;
    summary.name = row->value(u"Name").toText();
    summary.entries = row->value(u"anz").toLong();
    summary.milliseconds = qint64(row->value(u"frtime").toDouble() * Mod_MilliSecToMin::kFrameMs);
    return summary;
}

} // namespace melovane
