#include "siblings/writetags/write_tags.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "siblings/writetags/track_changes.h"
#include "trackedit/unwritten_tags.h"

#include <algorithm>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A track whose row is changed again and again while it is written is left for the next run.
constexpr int kMaxTries = 3;
/// `DEL` and the like are not asked: a track that lies in the waste keeps what the user wrote.
constexpr QStringView kFileColumns = u"Path, DName, DLen, DTSDatei, Image";

QString rowStatement(const QString& fid)
{
    return u"select FID, %1, %2 from db_all where fid="_s.arg(
               taggedColumns().sliced(1).join(u", "_s), kFileColumns) +
           sql::text(fid);
}

int lengthOf(const FileFacts& facts)
{
    return int(std::min<qint64>(facts.size, std::numeric_limits<int>::max()));
}

TagWriteFault faultOf(MediaFault fault)
{
    switch (fault) {
    case MediaFault::NotFound:
        return TagWriteFault::NotFound;
    case MediaFault::TagSize:
        return TagWriteFault::TagSize;
    case MediaFault::None:
    case MediaFault::Empty:
    case MediaFault::NoAudio:
    case MediaFault::Truncated:
        break;
    }
    return TagWriteFault::NoAudio;
}

} // namespace

WriteTags::WriteTags(WriteTagsParts parts, WriteTagsOrder order)
    : m_parts(std::move(parts))
    , m_order(std::move(order))
    , m_import(m_parts.files, m_parts.clock)
    , m_locator(m_parts.files, m_parts.dataFolder)
    , m_covers(m_parts.files, m_parts.dataFolder, m_parts.covers)
{
    m_import.SetTagChoice(m_order.id3v2Tags);
}

WriteTags::~WriteTags() = default;

bool WriteTags::step(int files)
{
    if (m_over) {
        return false;
    }
    try {
        if (m_parts.isLent()) {
            m_report.isLent = true;
            m_over = true;
        } else {
            open();
            m_over = m_waiting.isEmpty() && !collect();
        }
        if (!m_over) {
            write(std::min<qsizetype>(files, m_waiting.size()));
        }
    } catch (const DbError& error) {
        m_report.dbError = error.number();
        m_report.dbText = error.text();
        m_over = true;
    }
    if (m_over) {
        m_database.reset();
        keepFailures();
    }
    return !m_over;
}

void WriteTags::keepFailures()
{
    std::vector<UnwrittenTag> tracks;
    for (const UnwrittenFile& file : m_report.failures) {
        tracks.push_back({file.fid, file.fault, file.detail});
    }
    keepUnwritten(m_parts.files, m_parts.dataFolder, tracks);
}

void WriteTags::open()
{
    if (!m_database) {
        m_database = m_parts.engine.OpenDatabase(m_order.database);
        m_import.LoadGenre(*m_database);
        m_import.SetWidths(m_database->tableDefs().Item(u"db_all"_s));
    }
}

/// False when nothing waits that could be done now.
bool WriteTags::collect()
{
    const auto rows =
        m_database->OpenRecordset(u"select distinct fid from db_edit where fid is not null"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        const QString fid = rows->value(0).toText();
        if (m_tries.value(fid) < kMaxTries) {
            m_waiting.append(fid);
        }
    }
    m_total += m_waiting.size();
    return !m_waiting.isEmpty();
}

void WriteTags::write(qsizetype count)
{
    std::vector<Track> tracks;
    std::vector<TagWork> work;
    for (qsizetype i = 0; i < count; ++i) {
        tracks.push_back(prepare(m_waiting.at(i), work));
    }
    const std::vector<TagWriting> results = m_parts.writer.write(work);
    settle(tracks, results);
    m_waiting.remove(0, count);
    m_done += count;
}

WriteTags::Track WriteTags::prepare(const QString& fid, std::vector<TagWork>& work)
{
    ++m_tries[fid];
    Track track;
    track.fid = fid;
    const auto row = m_database->OpenRecordset(rowStatement(fid));
    track.isGone = row->Eof();
    if (track.isGone) {
        return track;
    }
    track.texts = taggedTexts(*row);
    track.image = row->value(u"Image").toText();
    QString folder = row->value(u"Path").toText();
    track.path = m_locator.ExistFile(folder, row->value(u"DName").toText());
    m_file = track.path;
    const auto facts = m_parts.files.facts(track.path);
    if (!facts || facts->isFolder) {
        fail(track, TagWriteFault::NotFound, {});
        track.isFailing = true;
        return track;
    }
    track.isInStep = row->value(u"DLen").toLong() == lengthOf(*facts) &&
                     row->value(u"DTSDatei").toDateTime().toSecsSinceEpoch() ==
                         facts->modified.toSecsSinceEpoch();
    compare(track, *facts, work);
    return track;
}

void WriteTags::compare(Track& track, const FileFacts& facts, std::vector<TagWork>& work)
{
    const MediaReading reading = m_parts.reader.read(track.path);
    const ImportOutcome file =
        m_import.ImportFile(path::parent(track.path), path::fileName(track.path), facts, reading);
    if (!file.isUsable()) {
        fail(track, faultOf(reading.fault), {});
        track.isFailing = true;
        return;
    }
    const auto cover = m_covers.due(track.fid, track.image, track.path);
    track.hasCover = cover.has_value();
    if (auto changes =
            changesOf(track.texts, file.track, reading.tags, m_import.genres(), track.hasCover)) {
        if (cover) {
            changes->cover = cover->cover;
            changes->formerCover = cover->formerCover;
        }
        track.work = int(work.size());
        work.push_back({track.path, std::move(*changes)});
    }
}

void WriteTags::settle(const std::vector<Track>& tracks, const std::vector<TagWriting>& results)
{
    Transaction transaction(*m_database);
    for (const Track& track : tracks) {
        const TagWriting result = track.work < 0 ? TagWriting() : results[size_t(track.work)];
        if (track.isFailing) {
            continue;
        }
        if (result.fault != TagWriteFault::None) {
            fail(track, result.fault, result.detail);
            continue;
        }
        if (track.hasCover) {
            m_covers.written(track.fid, track.image);
        }
        m_report.written += result.changed ? 1 : 0;
        if (result.changed && track.isInStep) {
            noteFile(track);
        }
        if (track.isGone || isStillSo(track)) {
            m_database->Execute(u"delete from db_edit where fid="_s + sql::text(track.fid));
        }
    }
    transaction.commit();
}

bool WriteTags::isStillSo(const Track& track)
{
    const auto row = m_database->OpenRecordset(rowStatement(track.fid));
    return row->Eof() ||
           (taggedTexts(*row) == track.texts && row->value(u"Image").toText() == track.image);
}

void WriteTags::noteFile(const Track& track)
{
    const auto facts = m_parts.files.facts(track.path);
    const auto row =
        m_database->OpenRecordset(u"select * from db_all where fid="_s + sql::text(track.fid));
    if (!facts || row->Eof()) {
        return;
    }
    row->Edit();
    row->setValue(u"DLen", lengthOf(*facts));
    row->setValue(u"DTSDatei", facts->modified);
    row->Update();
}

void WriteTags::fail(const Track& track, TagWriteFault fault, const QString& detail)
{
    m_tries[track.fid] = kMaxTries;
    m_report.failures.push_back({track.fid, track.path, fault, detail});
}

} // namespace melovane
