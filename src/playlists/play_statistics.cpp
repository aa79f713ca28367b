#include "playlists/play_statistics.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/clock.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

void addRow(Database& database, const MlvPlaylistDetail& played, QDateTime now)
{
    // The table keeps whole seconds.
    now.setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
    const auto rows = database.OpenRecordset(u"select * from pl_stat"_s);
    rows->AddNew();
    rows->setValue(u"FID", played.FID);
    rows->setValue(u"FrameStart", played.FrameStart);
    rows->setValue(u"FrameStop", played.FrameStop);
    rows->setValue(u"Volume", played.Volume);
    rows->setValue(u"MixTime", played.MixTime);
    rows->setValue(u"Pitch", played.Pitch);
    rows->setValue(u"MixIn", played.MixIn);
    rows->setValue(u"MixOut", played.MixOut);
    rows->setValue(u"eq", played.eq);
    rows->setValue(u"tstamp", Value(now));
    rows->setValue(u"tmon", now.date().month());
    rows->setValue(u"tyear", now.date().year());
    rows->setValue(u"tday", now.toString(u"yyyyMMdd"_s).toInt());
    rows->Update();
}

} // namespace

void savePlayStatistics(const PlaylistParts& parts,
                        const Clock& clock,
                        const MlvPlaylistDetail& played)
{
    if (played.FID.isEmpty()) {
        return;
    }
    const QString where = u"PlaylistSaveStatistik"_s;
    quietly(parts.sink, where, [&] {
        const auto database = parts.engine.OpenDatabase(parts.settings.DbName());
        quietly(parts.sink, where, [&] {
            database->Execute(u"update db_all set play=cdate(format(now,'dd.mm.yyyy hh:mm:ss')), "
                              "PlayCountDay=iif(isnull(PlayCountDay),1,PlayCountDay+1),"
                              "PlayCountAll=iif(isnull(PlayCountAll),1,PlayCountAll+1) "
                              "where fid="_s +
                              sql::text(played.FID) + u' ');
        });
        addRow(*database, played, clock.now());
    });
}

} // namespace melovane
