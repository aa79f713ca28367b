#include "intake/moved_rows.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/row_walk.h"
#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "platform/system/files.h"
#include "store/kept_sounds.h"

#include <algorithm>
#include <string>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {} // namespace

MovedRows::MovedRows(Database& database, const Files& files, IsGone isGone)
    : m_database(database)
    , m_isGone(std::move(isGone))
    , m_sounds(KeptSounds::read(files, database.Name()))
{
    database.walkRows(u"select FID, DLen, DTimeMsec from db_all where drivetyp<>4"_s,
                      [this](const WalkedRow& row) { addRow(row); });
    std::sort(m_rows.begin(), m_rows.end(),
              [](const Row& one, const Row& other) { return one.size < other.size; });
    for (auto sound = m_sounds.cbegin(); sound != m_sounds.cend(); ++sound) {
        m_bySound.insert(sound->bytes, sound.key());
    }
}

void MovedRows::addRow(const WalkedRow& row)
{
    const Row added{row.number(1), row.number(0), int(row.number(2))};
    if (added.size > 0 && added.milliseconds > 0 && std::to_string(added.fid) == row.bytes(0)) {
        m_rows.push_back(added);
    }
}

/// A moved file keeps its date and its title, one that was sent somewhere keeps its name at least.
bool MovedRows::isLike(qint64 fid, const ImportedTrack& track) const
{
    const auto row =
        m_database.OpenRecordset(u"select DName, DTSDatei, Titel from db_all where FID="_s +
                                 sql::text(QString::number(fid)));
    if (row->Eof()) {
        return false;
    }
    const QDateTime modified = row->value(1).toDateTime();
    return textcompare::equal(row->value(0).toText(), track.DName) ||
           (modified.isValid() && row->value(2).toText() == track.Titel &&
            modified.toSecsSinceEpoch() ==
                track.value(TrackField::DTSDatei).toDateTime().toSecsSinceEpoch());
}

QStringList MovedRows::soundingLike(const AudioPrint& sound)
{
    QStringList fids;
    for (auto at = m_bySound.find(sound.bytes); at != m_bySound.end() && at.key() == sound.bytes;) {
        const bool isAlike = m_sounds.value(*at) == sound;
        if (isAlike && !m_isGone(*at)) {
            at = m_bySound.erase(at);
            continue;
        }
        if (isAlike) {
            fids.append(*at);
        }
        ++at;
    }
    fids.sort();
    return fids;
}

QStringList MovedRows::of(const ImportedTrack& track, const std::optional<AudioPrint>& sound)
{
    QStringList fids = sound ? soundingLike(*sound) : QStringList();
    const qint64 size = track.value(TrackField::DLen).toLong();
    const int milliseconds = track.value(TrackField::DTimeMsec).toLong();
    const auto first = std::partition_point(m_rows.begin(), m_rows.end(),
                                            [size](const Row& row) { return row.size < size; });
    for (auto at = first; at != m_rows.end() && at->size == size; ++at) {
        Row& row = *at;
        if (row.isThere || row.milliseconds != milliseconds) {
            continue;
        }
        const QString fid = QString::number(row.fid);
        row.isThere = !m_isGone(fid);
        if (!row.isThere && !fids.contains(fid) && isLike(row.fid, track)) {
            fids.append(fid);
        }
    }
    return fids;
}

} // namespace melovane
