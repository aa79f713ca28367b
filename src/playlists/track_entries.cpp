#include "playlists/track_entries.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/text_number.h"

#include <algorithm>
#include <limits>

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
    const auto rows = m_database.OpenRecordset(
        u"select FID, DTimeMsec, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, eq "
        "from db_all where "_s +
        condition);
    for (; !rows->Eof(); rows->MoveNext()) {
        const int length = rows->value(1).toLong();
        if (length <= 0) {
            continue;
        }
        Track track{rows->value(2), rows->value(3), rows->value(4), rows->value(5),
                    rows->value(6), rows->value(7), rows->value(8)};
        if (!track.FrameStop.isNull() && track.FrameStop.toLong() == 0) {
            track.FrameStop = length / kFrameMs;
        }
        m_tracks.insert(lowerCase(rows->value(0).toText()), track);
    }
}

void TrackEntries::append(Pnid list, qint64 before, int aktion)
{
    const auto set = m_database.OpenRecordset(u"select * from pl_all where pnid="_s +
                                              sql::number(numberOf(list)) + u" order by sid"_s);
    const auto column = [&](QStringView name) { return set->fieldIndex(name); };
    const int fid = column(u"FID");
    const int sid = column(u"SID");
    const int pnid = column(u"PNID");
    const int frameStart = column(u"FrameStart");
    const int frameStop = column(u"FrameStop");
    const int pitch = column(u"Pitch");
    const int volume = column(u"Volume");
    const int mixIn = column(u"MixIn");
    const int mixOut = column(u"MixOut");
    const int eq = column(u"eq");
    const int action = column(u"Aktion");
    for (const QString& id : m_fids) {
        const auto track = m_tracks.constFind(lowerCase(id));
        if (track == m_tracks.cend()) {
            continue;
        }
        ++before;
        set->AddNew();
        set->setValue(fid, id);
        set->setValue(sid, int(std::min<qint64>(before, std::numeric_limits<qint32>::max())));
        set->setValue(pnid, numberOf(list));
        set->setValue(frameStart, track->FrameStart);
        set->setValue(frameStop, track->FrameStop);
        set->setValue(pitch, track->Pitch);
        set->setValue(volume, track->Volume);
        set->setValue(mixIn, track->MixIn);
        set->setValue(mixOut, track->MixOut);
        set->setValue(eq, track->eq);
        set->setValue(action, aktion);
        set->Update();
    }
}

} // namespace melovane
