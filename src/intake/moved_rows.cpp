#include "intake/moved_rows.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "platform/system/files.h"
#include "store/kept_sounds.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows read at once: a few milliseconds.
constexpr int kRowsPerRead = 5000;

bool isSmaller(qint64 one, qint64 other)
{
    return one < other;
}

} // namespace

MovedRows::MovedRows(Database& database, const Files& files)
    : m_database(database)
    , m_reading(
          database.OpenRecordset(u"select FID, DLen, DTimeMsec from db_all where drivetyp<>4"_s))
    , m_sounds(KeptSounds::read(files, database.Name()))
{
    for (auto sound = m_sounds.cbegin(); sound != m_sounds.cend(); ++sound) {
        m_bySound.insert(sound->bytes, sound.key());
    }
}

MovedRows::~MovedRows() = default;

bool MovedRows::read()
{
    for (int i = 0; i < kRowsPerRead && m_reading && !m_reading->Eof();
         ++i, m_reading->MoveNext()) {
        const QString fid = m_reading->value(0).toText();
        const Row row{m_reading->value(1).toLong(), fid.toLongLong(), m_reading->value(2).toLong()};
        if (row.size > 0 && row.milliseconds > 0 && QString::number(row.fid) == fid) {
            m_rows.push_back(row);
        }
    }
    if (m_reading && m_reading->Eof()) {
        m_reading.reset();
        std::ranges::sort(m_rows, isSmaller, &Row::size);
    }
    return m_reading != nullptr;
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

QStringList MovedRows::of(const ImportedTrack& track, const std::optional<AudioPrint>& sound) const
{
    QStringList fids;
    if (sound) {
        for (const QString& fid : m_bySound.values(sound->bytes)) {
            if (m_sounds.value(fid) == sound) {
                fids.append(fid);
            }
        }
        fids.sort();
    }
    const qint64 size = track.value(TrackField::DLen).toLong();
    const int milliseconds = track.value(TrackField::DTimeMsec).toLong();
    for (const Row& row : std::ranges::equal_range(m_rows, size, isSmaller, &Row::size)) {
        const QString fid = QString::number(row.fid);
        if (row.milliseconds == milliseconds && !fids.contains(fid) && isLike(row.fid, track)) {
            fids.append(fid);
        }
    }
    return fids;
}

} // namespace melovane
