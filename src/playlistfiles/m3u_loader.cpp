#include "playlistfiles/m3u_loader.h"

#include "intake/import_errors.h"
#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"
#include "playlistfiles/m3u_errors.h"
#include "playlistfiles/m3u_place.h"
#include "store/file_locator.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Records whose identifiers are looked up with one statement.
constexpr size_t kAtOnce = 500;
/// Milliseconds of work between two turns of the message loop.
constexpr qint64 kBetweenTurns = 40;

using F = TrackField;
using R = M3uRow;
constexpr std::array kFields = std::to_array<M3uField>({
    {F::FID, &R::FID},
    {F::Path, &R::Path},
    {F::DName, &R::DName},
    {F::Volume, &R::Volume},
    {F::Pitch, &R::Pitch},
    {F::FrameStart, &R::FrameStart},
    {F::FrameStop, &R::FrameStop},
    {F::MixTime, &R::MixTime},
    {F::MixIn, &R::MixIn},
    {F::MixOut, &R::MixOut},
    {F::eq, &R::eq},
});

} // namespace

std::span<const M3uField> m3uFields()
{
    return kFields;
}

M3uLoader::M3uLoader(const M3uParts& parts,
                     const M3uEvents& events,
                     Database& database,
                     NewTracks& tracks,
                     M3uErrors& errors)
    : m_parts(parts)
    , m_events(events)
    , m_database(database)
    , m_tracks(tracks)
    , m_errors(errors)
{}

M3uLoader::~M3uLoader() = default;

bool M3uLoader::mayGoOn(qint64 done, qint64 size)
{
    if (!m_events.goOn || m_sinceTurn.elapsed() < kBetweenTurns) {
        return true;
    }
    const bool goesOn = m_events.goOn(done, size);
    m_sinceTurn.restart();
    return goesOn;
}

bool M3uLoader::load(const QString& file)
{
    M3uLines lines(m_parts.files.read(file, kLargestList));
    m_listFolder = path::withSeparator(path::parent(file));
    m_onDisc = m_parts.files.volume(m_listFolder).kind == VolumeKind::Optical;
    m_sinceTurn.start();
    M3uParser parser;
    std::vector<M3uRecord> records;
    for (bool isOver = false; !isOver;) {
        records.clear();
        while (!isOver && records.size() < kAtOnce) {
            const auto line = lines.next();
            auto record = line ? parser.take(*line) : std::nullopt;
            if (record) {
                records.push_back(std::move(*record));
            }
            isOver = !line;
        }
        readKnown(records);
        for (const M3uRecord& record : records) {
            store(record);
            if (!mayGoOn(lines.position(), lines.size())) {
                return false;
            }
        }
    }
    return true;
}

void M3uLoader::readKnown(const std::vector<M3uRecord>& records)
{
    QStringList asked;
    for (const M3uRecord& record : records) {
        if (!record.FID.isEmpty()) {
            asked.append(sql::text(record.FID));
        }
    }
    m_known.clear();
    if (asked.isEmpty()) {
        return;
    }
    const auto found = m_database.OpenRecordset(u"select fid from db_all where fid in ("_s +
                                                asked.join(u',') + u')');
    for (; !found->Eof(); found->MoveNext()) {
        m_known.insert(lowerCase(found->value(0).toText()));
    }
}

void M3uLoader::fail(int code, const QString& source, const QString& file)
{
    m_errors.add(code, source, file);
    if (m_events.Message) {
        m_events.Message(code, file, source);
    }
}

void M3uLoader::store(const M3uRecord& record)
{
    if (!record.FID.isEmpty() && m_known.contains(lowerCase(record.FID))) {
        storeAsTold(record, record.FID);
        return;
    }
    if (m_onDisc) {
        fail(importerror::kOnDisc, u"SaveData"_s,
             path::join(path::parent(record.file), path::fileName(record.file)));
        return;
    }
    const Place place = placeOf(record);
    if (place.folder.isEmpty()) {
        fail(importerror::kPathNotFound, u"FindFile"_s, record.file);
    } else if (!takeFromLibrary(record, place)) {
        storeNew(record, place);
    }
}

void M3uLoader::storeAsTold(const M3uRecord& record, const QString& fid)
{
    const QString folder = path::parent(record.file);
    m_rows.push_back({fid, path::withSeparator(folder), path::fileName(record.file), record.Volume,
                      record.Pitch, record.FrameStart, record.FrameStop, record.MixTime,
                      record.MixIn, record.MixOut, record.eq});
}

QString M3uLoader::located(const QString& folder)
{
    auto known = m_folders.constFind(folder);
    if (known == m_folders.cend()) {
        const bool isThere = m_parts.files.folderExists(folder);
        known = m_folders.insert(folder, isThere ? folder : m_parts.files.resolve(folder));
    }
    return *known;
}

M3uLoader::Place M3uLoader::placeOf(const M3uRecord& record)
{
    Place best;
    for (const QString& text : m3uplace::readings(record.file, record.line)) {
        Place place = placeOf(text);
        if (place.isThere) {
            return place;
        }
        if (best.folder.isEmpty()) {
            best = std::move(place);
        }
    }
    return best;
}

M3uLoader::Place M3uLoader::placeOf(const QString& text)
{
    QStringList candidates;
    // What is relative counts from the list, never from the folder that the program was started in.
    if (path::isAbsolute(text)) {
        candidates.append(m3uplace::cleaned(text));
    }
    candidates.append(m3uplace::cleaned(path::join(m_listFolder, text)));
    Place best;
    for (const QString& candidate : candidates) {
        const QString there = located(path::parent(candidate));
        if (there.isEmpty() && &candidate == &candidates.last()) {
            break; // no folder below that of the list, so no file either
        }
        QString folder = path::withSeparator(path::parent(candidate));
        const QString name = path::fileName(candidate);
        const QString file = m_parts.locator.ExistFile(folder, name);
        if (m_parts.files.fileExists(file)) {
            return {path::withSeparator(path::parent(file)), path::fileName(file), true};
        }
        if (best.folder.isEmpty() && !there.isEmpty()) {
            best = {path::withSeparator(there), name, false};
        }
    }
    return best;
}

bool M3uLoader::takeFromLibrary(const M3uRecord& record, const Place& place)
{
    const auto track = m_tracks.find(place.folder, place.name);
    if (!track->Eof()) {
        storeTrack(*track, place);
        return true;
    }
    // A library that came from another system still has the folder that the list names.
    const QString folder = path::withSeparator(path::parent(record.file));
    if (folder.isEmpty() || folder == place.folder) {
        return false;
    }
    const auto asWritten = m_tracks.find(folder, trimBlanks(path::fileName(record.file)));
    if (!asWritten->Eof()) {
        storeTrack(*asWritten, place);
    }
    return !asWritten->Eof();
}

void M3uLoader::storeTrack(const Recordset& track, const Place& place)
{
    M3uRow row;
    for (const M3uField& known : kFields) {
        known.read(track.value(columnOf(known.field)), row);
    }
    row.Path = place.folder;
    row.DName = place.name;
    if (row.FrameStop == 0) {
        row.FrameStop = frameStopOf(track.value(columnOf(TrackField::DTimeMsec)).toLong());
    }
    m_rows.push_back(row);
}

void M3uLoader::storeNew(const M3uRecord& record, const Place& place)
{
    const QString file = place.folder + place.name;
    if (!place.isThere) {
        fail(importerror::kFileNotFound, u"FindFile"_s, file);
        return;
    }
    if (m_events.ProgressImport && !m_tracks.wasRead(file)) {
        m_events.ProgressImport(file);
    }
    const NewTracks::Reading reading = m_tracks.read(file);
    if (reading.track == nullptr) {
        fail(reading.code, u"ImportFile"_s, file);
        return;
    }
    m_newRows.push_back({m_rows.size(), reading.track->FrameStop});
    storeAsTold(record, record.FID);
    m_rows.back().Path = place.folder;
    m_rows.back().DName = place.name;
}

void M3uLoader::takeWritten()
{
    for (const NewRow& added : m_newRows) {
        M3uRow& row = m_rows[added.row];
        const QString told = std::exchange(row.FID, m_tracks.fidOf(row.Path + row.DName));
        // A file that carries the identifier of the list is the very track that the list means, so
        // its stop counts, too.
        if (row.FID != told || row.FrameStop == 0) {
            row.FrameStop = added.FrameStop;
        }
    }
    m_newRows.clear();
}

} // namespace melovane
