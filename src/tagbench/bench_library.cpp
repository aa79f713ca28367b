#include "tagbench/bench_library.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"

namespace melovane::benchlibrary {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList firstColumn(Database& database, const QString& statement)
{
    QStringList result;
    for (const auto rows = database.OpenRecordset(statement); !rows->Eof(); rows->MoveNext()) {
        result.append(rows->value(0).toText());
    }
    result.removeDuplicates();
    result.removeAll(QString());
    return result;
}

} // namespace

std::vector<BenchTrack> markedTracks(Database& database)
{
    const auto rows = database.OpenRecordset(
        u"select * from db_all where FID in (select FID from TEMP_MP3Edit) order by Path, DName"_s);
    std::vector<BenchTrack> result;
    for (; !rows->Eof(); rows->MoveNext()) {
        BenchTrack track;
        track.fid = rows->value(columnOf(TrackField::FID)).toText();
        track.folder = rows->value(columnOf(TrackField::Path)).toText();
        for (const TrackField field : benchFields()) {
            track.stored[size_t(benchSlot(field))] = rows->value(columnOf(field)).toText();
        }
        track.stored[size_t(benchSlot(kBenchCover))] = rows->value(columnOf(kBenchCover)).toText();
        track.stored.back() = track.folder + rows->value(columnOf(TrackField::DName)).toText();
        track.now = track.stored;
        result.push_back(track);
    }
    return result;
}

void forgetMarked(Database& database)
{
    // The library stays free for others.
    Transaction forgetting(database, u"TEMP_MP3Edit"_s);
    database.Execute(u"delete from TEMP_MP3Edit"_s);
    forgetting.commit();
}

QStringList genres(Database& database)
{
    return firstColumn(database, u"select Name from genre where Genre_ID<>255 order by Name"_s);
}

QStringList choices(Database& database, TrackField field, int language)
{
    return firstColumn(database, u"select Beschreibung from config where Name="_s +
                                     sql::text(columnOf(field).toString()) + u" and Lang in ("_s +
                                     QString::number(language) +
                                     u",-1) order by Lang desc, Value, Beschreibung"_s);
}

} // namespace melovane::benchlibrary
