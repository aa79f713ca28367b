#include "playlists/track_entries.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/letter_case.h"
#include "playlists/entry_places.h"
#include "store/milli_sec_to_min.h"
#include "store/row_statements.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Tracks asked for with one statement.
constexpr qsizetype kTracksAtOnce = 1000;

/// Where the stop stands among the values of a track.
constexpr auto kStop =
    std::size_t(std::ranges::find(kTakenFields, TrackField::FrameStop) - kTakenFields.begin());

} // namespace

TrackEntries::TrackEntries(Database& database, const QStringList& fids)
    : m_database(database)
    , m_fids(fids)
{
    for (qsizetype first = 0; first < fids.size(); first += kTracksAtOnce) {
        QStringList quoted;
        for (const QString& fid :
             fids.sliced(first, std::min(kTracksAtOnce, fids.size() - first))) {
            quoted.append(sql::text(fid));
        }
        read(u"fid in ("_s + quoted.join(u',') + u')');
    }
}

void TrackEntries::read(const QString& condition)
{
    const auto rows = m_database.OpenRecordset(
        u"select %1, %2 from db_all where "_s.arg(
            columnList({TrackField::FID, TrackField::DTimeMsec}), columnList(kTakenFields)) +
        condition);
    for (; !rows->Eof(); rows->MoveNext()) {
        const int length = rows->value(1).toLong();
        if (length <= 0) {
            continue;
        }
        Track track;
        for (std::size_t i = 0; i < track.size(); ++i) {
            track[i] = rows->value(int(i) + 2);
        }
        if (Value& stop = track[kStop]; !stop.isNull() && stop.toLong() == 0) {
            stop = length / Mod_MilliSecToMin::kFrameMs;
        }
        m_tracks.insert(lowerCase(rows->value(0).toText()), track);
    }
}

void TrackEntries::append(Pnid list, qint64 before, int aktion)
{
    const QString table = kEntryTable.toString();
    RowInsert insert(m_database, table,
                     writtenColumns(m_database, table,
                                    QStringList{u"FID"_s, u"SID"_s, u"PNID"_s, u"Aktion"_s} +
                                        columnNames(kTakenFields)));
    for (const QString& id : m_fids) {
        const auto track = m_tracks.constFind(lowerCase(id));
        if (track != m_tracks.cend()) {
            std::vector<Value> values{id, numberOf(clampedSid(++before)), numberOf(list), aktion};
            values.insert(values.end(), track->begin(), track->end());
            insert.run(values);
        }
    }
}

} // namespace melovane
