#include "intake/intake.h"

#include "config/config_objects.h"
#include "intake/import_errors.h"
#include "platform/db/db_error.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Files read at once by the second thread: enough to keep it busy while rows are written, few
/// enough that a cancel waits for none of them for long.
constexpr size_t kBatch = 64;
/// DriveTyp of discs: keep.
constexpr int kDisc = 4;
/// Values of column `DEL` from here on mean a missing file: keep.
constexpr int kFirstMissing = 2;

/// Faults of one row's values; the next row may do better.
bool concernsOneRow(const DbError& error)
{
    return error.number() == dberror::kFieldTooSmall || error.number() == dberror::kTypeMismatch ||
           error.number() == dberror::kNullInKey || error.number() == dberror::kRequired ||
           error.number() == dberror::kZeroLength;
}

bool isSameFile(const FileFacts& one, const FileFacts& other)
{
    return one.device == other.device && one.inode == other.inode;
}

bool isChanged(const StoredFile& row, const FileFacts& facts)
{
    const qint64 length = std::min<qint64>(facts.size, std::numeric_limits<int>::max());
    return row.DLen != length || !row.DTSDatei.isValid() ||
           row.DTSDatei.toSecsSinceEpoch() != facts.modified.toSecsSinceEpoch();
}

} // namespace

Intake::Intake(const IntakeParts& parts, IntakeOrder order)
    : m_parts(parts)
    , m_order(std::move(order))
    , m_import(parts.files, parts.clock)
    , m_locator(parts.files, parts.dataFolder)
    , m_readAhead(parts.reader, parts.audio)
{
    m_report.mode = m_order.mode;
    m_import.SetTagChoice(m_order.id3v2Tags);
}

Intake::~Intake() = default;

bool Intake::step(std::chrono::milliseconds budget)
{
    const auto deadline = std::chrono::steady_clock::now() + budget;
    while (m_state != State::Done) {
        try {
            work(deadline);
        } catch (const DbError& error) {
            fail(error);
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            break;
        }
    }
    return m_state != State::Done;
}

void Intake::cancel()
{
    if (m_state != State::Done) {
        m_report.cancelled = true;
        m_state = State::Finishing;
        step(std::chrono::milliseconds{0});
    }
}

void Intake::work(std::chrono::steady_clock::time_point deadline)
{
    switch (m_state) {
    case State::Opening:
        open();
        break;
    case State::Listing:
        list();
        break;
    case State::Reading:
        readSome(deadline);
        break;
    case State::Finishing:
        finish();
        break;
    case State::Done:
        break;
    }
}

void Intake::open()
{
    m_library = std::make_unique<IntakeLibrary>(m_parts.engine, m_order.database, m_parts.files,
                                                m_parts.clock);
    m_import.SetWidths(m_library->columns());
    m_import.LoadGenre(m_library->database());
    if (m_order.mode == IntakeMode::NewFiles) {
        m_library->beginComparing();
        m_walk = std::make_unique<FolderWalk>(m_parts.files, m_order.folders, m_unreached);
        m_moved = std::make_unique<MovedRows>(m_library->database(), m_parts.files,
                                              [this](const QString& fid) { return isGone(fid); });
    } else {
        m_library->openStored();
        m_progress.total = m_library->storedCount();
    }
    if (m_parts.audio && m_parts.soundFiles) {
        m_sounds.emplace(*m_parts.soundFiles, m_order.database);
    }
    m_state = State::Listing;
}

void Intake::list()
{
    if (m_order.mode == IntakeMode::NewFiles) {
        listFiles();
    } else {
        listRow();
    }
    if (m_library->isPortionDue()) {
        commit();
    }
    if (m_state == State::Reading) {
        m_progress.listing = false;
        m_progress.done = 0;
        m_progress.total = static_cast<qint64>(m_pending.size());
    }
}

void Intake::listFiles()
{
    if (m_found.empty()) {
        findFiles();
    } else if (!m_library->readFolder(m_known)) {
        for (const FoundFile& file : m_found) {
            takeFound(file);
        }
        m_progress.file = m_found.back().path();
        m_found.clear();
    }
}

void Intake::findFiles()
{
    auto files = m_walk->next();
    if (!files) {
        m_state = State::Reading;
        return;
    }
    m_found = std::move(*files);
    if (!m_found.empty() && m_knownFolder != m_found.front().folder) {
        m_knownFolder = m_found.front().folder;
        m_known.clear();
        m_library->openFolder(m_knownFolder);
    }
}

void Intake::takeFound(const FoundFile& file)
{
    ++m_report.found;
    const std::pair identity(file.facts.device, file.facts.inode);
    const QString other = m_met.value(identity);
    if (other == file.path()) {
        --m_report.found; // the same folder was chosen twice
        return;
    }
    const auto row = m_known.constFind(file.name);
    if (row != m_known.constEnd()) {
        takeKnown(row->FID, row->DEL, file.path());
    } else if (!other.isEmpty()) {
        m_report.duplicates.push_back(
            {file.path(), 0, m_parts.texts.text(u"intake.samefile", other)});
        return;
    } else {
        m_pending.push_back({file, {}});
    }
    m_met.insert(identity, file.path());
}

void Intake::takeKnown(const QString& fid, int del, const QString& path)
{
    if (del < kFirstMissing) {
        ++m_report.known;
        return;
    }
    m_library->giveBack(fid, del);
    note(&Portion::returned, path);
}

std::optional<FoundFile> Intake::fileOf(const QString& folder, const QString& name)
{
    const auto isFile = [](const auto& facts) { return facts && !facts->isFolder; };
    if (const auto facts = m_parts.files.facts(folder + name); isFile(facts)) {
        return FoundFile{folder, name, *facts};
    }
    // Dearer: lists folders, tries each mapping.
    QString mapped = folder;
    const QString place = m_locator.ExistFile(mapped, name);
    if (const auto facts = m_parts.files.facts(place); isFile(facts)) {
        return FoundFile{path::withSeparator(path::parent(place)), path::fileName(place), *facts};
    }
    return std::nullopt;
}

void Intake::listRow()
{
    const auto row = m_library->nextStored();
    if (!row) {
        m_state = State::Reading;
        return;
    }
    ++m_report.found;
    ++m_progress.done;
    m_progress.file = row->Path + row->DName;
    if (row->DriveTyp == kDisc) {
        ++m_report.known; // the disc in the drive may be another one
        return;
    }
    const auto file = fileOf(row->Path, row->DName);
    if (!file) {
        ++m_report.missing;
    } else if (isChanged(*row, file->facts)) {
        m_pending.push_back({*file, row->FID});
    } else {
        takeKnown(row->FID, row->DEL, m_progress.file);
    }
}

void Intake::readSome(std::chrono::steady_clock::time_point deadline)
{
    if (m_nextReady < m_ready.size()) {
        write(m_ready[m_nextReady++]);
        if (m_library->isPortionDue()) {
            commit();
        }
        return;
    }
    if (!m_readAhead.isBusy()) {
        startBatch();
    }
    if (!m_readAhead.isBusy()) {
        m_state = State::Finishing;
        return;
    }
    if (auto batch = m_readAhead.take(deadline)) {
        m_ready = std::move(*batch);
        m_nextReady = 0;
        startBatch();
    }
}

void Intake::startBatch()
{
    const size_t end = std::min(m_nextPending + kBatch, m_pending.size());
    if (m_nextPending == end) {
        return;
    }
    const auto first = m_pending.begin() + static_cast<std::ptrdiff_t>(m_nextPending);
    const auto last = m_pending.begin() + static_cast<std::ptrdiff_t>(end);
    m_readAhead.start({std::make_move_iterator(first), std::make_move_iterator(last)});
    m_nextPending = end;
}

void Intake::write(ReadFile& file)
{
    ++m_progress.done;
    m_progress.file = file.pending.file.path();
    try {
        if (file.pending.FID.isEmpty()) {
            writeNew(file);
        } else {
            writeChanged(file);
        }
    } catch (const DbError& error) {
        if (!concernsOneRow(error)) {
            m_portion.paths.append(m_progress.file);
            throw;
        }
        refuse(m_progress.file, importerror::kDatabase, error.text());
    }
}

void Intake::keepSound(const QString& fid, const ReadFile& read)
{
    if (m_sounds && read.sound) {
        m_sounds->add(fid, *read.sound);
    }
}

bool Intake::isGone(const QString& fid)
{
    const auto row = m_library->placeOf(fid);
    return row && row->DriveTyp != kDisc && !fileOf(row->Path, row->DName);
}

bool Intake::followMoved(const ReadFile& read, const ImportedTrack& track)
{
    // A tag that says whose it is needs no likeness.
    const QStringList fids = track.FID.isEmpty() ? m_moved->of(track, read.sound) : QStringList();
    if (fids.isEmpty() || m_library->hasFile(track)) {
        return false;
    }
    const auto row = m_library->placeOf(fids.first());
    if (!row) {
        return false;
    }
    m_library->move(*row, track);
    note(&Portion::moved, read.pending.file.path());
    keepSound(row->FID, read);
    return true;
}

void Intake::writeNew(const ReadFile& read)
{
    const FoundFile& file = read.pending.file;
    ImportOutcome outcome = m_import.ImportFile(file.folder, file.name, file.facts, read.reading);
    if (!outcome.isUsable()) {
        refuse(file.path(), outcome.code, outcome.detail);
        return;
    }
    if (followMoved(read, outcome.track)) {
        return;
    }
    const auto result = m_library->add(outcome.track);
    switch (result.kind) {
    case TrackInsert::Result::Kind::Added:
        note(&Portion::added, file.path());
        keepSound(outcome.track.FID, read);
        break;
    case TrackInsert::Result::Kind::FileIsKnown:
        takeKnown(result.row.FID, result.row.DEL, file.path());
        break;
    case TrackInsert::Result::Kind::FidIsTaken:
        meetRow(result.row, file, outcome.track);
        break;
    }
}

void Intake::meetRow(const StoredPlace& row, const FoundFile& file, const ImportedTrack& track)
{
    if (const auto there = fileOf(row.Path, row.DName)) {
        const bool isStoredPlace = there->folder == row.Path && there->name == row.DName;
        if (!isStoredPlace && isSameFile(there->facts, file.facts)) {
            takeKnown(row.FID, row.DEL, file.path());
        } else {
            m_report.duplicates.push_back(
                {file.path(), 0, m_parts.texts.text(u"intake.copyof", there->path())});
        }
    } else if (row.DriveTyp == kDisc) {
        m_report.duplicates.push_back(
            {file.path(), 0, m_parts.texts.text(u"intake.copyofdisc", row.DriveName)});
    } else {
        m_library->move(row, track);
        note(&Portion::moved, file.path());
    }
}

void Intake::writeChanged(const ReadFile& file)
{
    const FoundFile& found = file.pending.file;
    const ImportOutcome outcome =
        m_import.ImportFile(found.folder, found.name, found.facts, file.reading);
    if (!outcome.isUsable()) {
        refuse(found.path(), outcome.code, outcome.detail);
        return;
    }
    m_library->update(file.pending.FID, outcome.track);
    note(&Portion::changed, found.path());
    keepSound(file.pending.FID, file);
}

void Intake::finish()
{
    if (m_library) {
        commit();
        if (m_report.rowsWritten() > 0) {
            m_library->markTrees();
            m_library->commitPortion();
        }
    }
    end();
}

void Intake::end()
{
    auto& refused = m_report.skipped.refused;
    refused.insert(refused.end(), m_unreached.refused.begin(), m_unreached.refused.end());
    m_report.found += static_cast<int>(m_unreached.refused.size());
    m_report.skipped.kinds = m_unreached.kinds;
    std::stable_sort(refused.begin(), refused.end(),
                     [](const Refusal& a, const Refusal& b) { return a.path < b.path; });
    m_state = State::Done;
}

void Intake::commit()
{
    m_library->commitPortion();
    if (m_sounds) {
        m_sounds->write();
    }
    m_report.added += m_portion.added;
    m_report.changed += m_portion.changed;
    m_report.moved += m_portion.moved;
    m_report.returned += m_portion.returned;
    m_portion = {};
}

void Intake::note(int Portion::*count, const QString& path)
{
    ++(m_portion.*count);
    m_portion.paths.append(path);
}

void Intake::refuse(const QString& path, int code, const QString& detail)
{
    m_report.skipped.refused.push_back({path, code, detail});
}

void Intake::fail(const DbError& error)
{
    const QString known = m_parts.texts.text(u"dberror.%1"_s.arg(error.number()), m_order.database);
    const QString why = known.isEmpty() ? error.text() : known;
    if (m_library) {
        m_library->dropPortion();
    }
    for (const QString& path : std::as_const(m_portion.paths)) {
        refuse(path, importerror::kDatabase, why);
    }
    m_portion = {};
    m_report.failure = reasonText(m_parts.texts, {{}, importerror::kDatabase, why});
    end();
}

} // namespace melovane
