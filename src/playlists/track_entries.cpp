#include "playlists/track_entries.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/letter_case.h"
#include "playlists/entry_places.h"
#include "playlists/playlist_table.h"
#include "store/milli_sec_to_min.h"
#include "store/row_statements.h"
#include "store/track_fields.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Tracks asked for with one statement.
constexpr qsizetype kTracksAtOnce = 1000;

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
    using F = TrackField;
    const auto rows =
        m_database.OpenRecordset(u"select "_s +
                                 columnList({F::FID, F::DTimeMsec, F::FrameStart, F::FrameStop,
                                             F::Pitch, F::Volume, F::MixIn, F::MixOut, F::eq}) +
                                 u" from db_all where "_s + condition);
    for (; !rows->Eof(); rows->MoveNext()) {
        const int length = rows->value(1).toLong();
        if (length <= 0) {
            continue;
        }
        Track track{rows->value(2), rows->value(3), rows->value(4), rows->value(5),
                    rows->value(6), rows->value(7), rows->value(8)};
        if (!track.FrameStop.isNull() && track.FrameStop.toLong() == 0) {
            track.FrameStop = length / Mod_MilliSecToMin::kFrameMs;
        }
        m_tracks.insert(lowerCase(rows->value(0).toText()), track);
    }
}

void TrackEntries::append(Pnid list, qint64 before, int aktion)
{
    RowInsert insert(
        m_database, kEntryTable.toString(),
        writtenColumns(m_database, kEntryTable.toString(),
                       {u"FID"_s, u"SID"_s, u"PNID"_s, u"FrameStart"_s, u"FrameStop"_s, u"Pitch"_s,
                        u"Volume"_s, u"MixIn"_s, u"MixOut"_s, u"EQ"_s, u"Aktion"_s}));
    for (const QString& id : m_fids) {
        const auto track = m_tracks.constFind(lowerCase(id));
        if (track != m_tracks.cend()) {
            insert.run({id, numberOf(clampedSid(++before)), numberOf(list), track->FrameStart,
                        track->FrameStop, track->Pitch, track->Volume, track->MixIn, track->MixOut,
                        track->eq, aktion});
        }
    }
}

} // namespace melovane
