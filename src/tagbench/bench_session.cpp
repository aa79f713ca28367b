#include "tagbench/bench_session.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/refusals.h"
#include "intake/folder_walk.h"
#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "store/check_database.h"
#include "tagbench/bench_library.h"
#include "tagbench/cover_work.h"
#include "tagbench/library_visit.h"
#include "tagbench/rename_journal.h"

#include <QSet>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Language numbers of the table `config`: keep.
constexpr int kGerman = 49;
constexpr int kEnglish = 44;

BenchTrack newTrack(const FoundFile& file, const ImportedTrack& read)
{
    BenchTrack track;
    track.folder = file.folder;
    for (const TrackField field : benchFields()) {
        track.stored[size_t(benchSlot(field))] = read.value(field).toText();
    }
    track.stored.back() = file.path();
    track.now = track.stored;
    return track;
}

QString faultKey(BenchFault fault)
{
    switch (fault) {
    case BenchFault::Gone:
        return u"bench.fault.gone"_s;
    case BenchFault::ChangedElse:
        return u"bench.fault.changed"_s;
    case BenchFault::NotImported:
        return u"bench.fault.import"_s;
    case BenchFault::NotRenamed:
        return u"bench.fault.rename"_s;
    case BenchFault::NoCover:
        return u"bench.fault.cover"_s;
    }
    return {};
}

} // namespace

BenchSession::BenchSession(const Parts& parts, BenchMode mode)
    : m_parts(parts)
    , m_mode(mode)
    , m_library(parts.settings.DbName())
    , m_covers({parts.files, parts.dataFolder, parts.covers, parts.pictures},
               parts.worker,
               m_tracks)
{}

BenchSession::~BenchSession() = default;

std::unique_ptr<NewTracks> BenchSession::newTracks(Database& database) const
{
    return std::make_unique<NewTracks>(database, m_parts.settings, m_parts.files, m_parts.reader,
                                       m_parts.clock);
}

/// The list of marked tracks lies in a file beside the library that the first program makes.
void BenchSession::prepareSideFile() const
{
    CheckDatabase(m_parts.engine, m_parts.files, m_parts.clock,
                  {m_library, m_parts.dataFolder, u"tagbench"_s}, {})
        .checkTempTables();
}

void BenchSession::load()
{
    if (m_mode == BenchMode::Edit) {
        prepareSideFile();
    }
    const LibraryVisit library(m_parts.engine, m_library);
    RenameJournal(m_parts.files, m_library).mend(*library, m_parts.claim);
    if (m_mode == BenchMode::Edit) {
        auto marked = benchlibrary::markedTracks(*library);
        benchlibrary::forgetMarked(*library);
        m_tracks.setTracks(std::move(marked));
    }
}

void BenchSession::addFiles(const QStringList& places, const GoOn& goOn)
{
    Skipped skipped;
    FolderWalk walk(m_parts.files, places, skipped);
    std::vector<FoundFile> files;
    QSet<QString> there;
    for (int track = 0; track < m_tracks.count(); ++track) {
        there.insert(m_tracks.at(track).storedPlace());
    }
    for (auto found = walk.next(); found; found = walk.next()) {
        if (!goOn(0, 0)) {
            return;
        }
        files.insert(files.end(), found->begin(), found->end());
    }
    m_addedText = obstacle();
    if (!m_addedText.isEmpty()) {
        return;
    }
    const LibraryVisit library(m_parts.engine, m_library);
    const auto fresh = newTracks(*library);
    std::vector<BenchTrack> tracks;
    int known = 0;
    int refused = 0;
    for (size_t at = 0; at < files.size() && goOn(int(at), int(files.size())); ++at) {
        m_addedText = obstacle();
        if (!m_addedText.isEmpty()) {
            return;
        }
        const FoundFile& file = files[at];
        if (there.contains(file.path()) || !fresh->find(file.folder, file.name)->Eof()) {
            ++known;
        } else if (const auto reading = fresh->read(file.path()); reading.track) {
            tracks.push_back(newTrack(file, *reading.track));
        } else {
            ++refused;
        }
    }
    m_addedText = texts().text(u"bench.added"_s, qint64(tracks.size()), known, refused);
    m_tracks.addTracks(std::move(tracks));
}

/// The files of tracks that have no row yet. False when it was ended.
bool BenchSession::readNewFiles(NewTracks& fresh, const GoOn& goOn) const
{
    for (int track = 0; track < m_tracks.count(); ++track) {
        const BenchTrack& asked = m_tracks.at(track);
        if (asked.fid.isEmpty()) {
            (void)fresh.read(asked.storedPlace()); // one that fails is told when all are applied
            if (!goOn(0, m_tracks.count())) {
                return false;
            }
        }
    }
    return true;
}

BenchOutcome BenchSession::apply(bool removeEmptyFolders, const GoOn& goOn)
{
    const auto lock = m_parts.claim ? m_parts.claim() : nullptr;
    if (!lock && m_parts.claim) {
        return {.isCancelled = true, .reason = texts().text(u"bench.busy")};
    }
    QString reason;
    const auto isWanted = [&](int done, int size) {
        reason = obstacle();
        return reason.isEmpty() && goOn(done, size);
    };
    BenchOutcome outcome =
        applyTo(*LibraryVisit(m_parts.engine, m_library), removeEmptyFolders, isWanted);
    outcome.reason = reason;
    if (!outcome.found.empty()) {
        m_tracks.setFound(outcome.found);
    }
    if (outcome.hasChanged()) {
        m_tracks.setStored(outcome.written, outcome.left);
        if (whenWritten) {
            whenWritten();
        }
    }
    return outcome;
}

BenchOutcome BenchSession::applyTo(Database& library, bool removeEmptyFolders, const GoOn& goOn)
{
    RenameJournal(m_parts.files, m_library).mend(library);
    const auto fresh = m_mode == BenchMode::Import ? newTracks(library) : nullptr;
    if (fresh && !readNewFiles(*fresh, goOn)) {
        return {.isCancelled = true};
    }
    CoverWork covers(m_covers.sources(), m_covers.pictures());
    return BenchApply({.database = library,
                       .history = m_parts.history,
                       .files = m_parts.files,
                       .dataFolder = m_parts.dataFolder,
                       .library = m_library,
                       .newTracks = fresh.get(),
                       .covers = &covers,
                       .removeEmptyFolders = removeEmptyFolders})
        .apply(m_tracks, goOn);
}

QStringList BenchSession::outcomeLines(const BenchOutcome& outcome) const
{
    if (outcome.isCancelled) {
        return {outcome.reason.isEmpty() ? texts().text(u"bench.cancelled")
                                         : texts().text(u"bench.failed"_s, outcome.reason)};
    }
    QStringList lines{countedText(texts(), u"bench.written"_s, qint64(outcome.written.size()))};
    if (outcome.renamed > 0) {
        lines.first() += u' ' + countedText(texts(), u"bench.renamed"_s, outcome.renamed);
    }
    if (!outcome.problems.empty()) {
        lines.first() +=
            u' ' + countedText(texts(), u"bench.left"_s, qint64(outcome.problems.size()));
    }
    for (const BenchProblem& problem : outcome.problems) {
        QString line = m_tracks.at(problem.track).storedPlace() + u": "_s +
                       texts().text(faultKey(problem.fault));
        if (!problem.reason.isEmpty()) {
            line += u" ("_s + systemReasonText(texts(), problem.reason) + u')';
        }
        lines.append(line);
    }
    return lines;
}

bool BenchSession::canApply() const
{
    if (m_tracks.changedCells() > 0) {
        return true;
    }
    for (int track = 0; track < m_tracks.count(); ++track) {
        if (m_tracks.at(track).fid.isEmpty()) {
            return true;
        }
    }
    return false;
}

QStringList BenchSession::genres()
{
    return benchlibrary::genres(*LibraryVisit(m_parts.engine, m_library));
}

QStringList BenchSession::choices(TrackField field)
{
    const bool isGerman = texts().text(u"Sprach.Code") != "en"_L1;
    return benchlibrary::choices(*LibraryVisit(m_parts.engine, m_library), field,
                                 isGerman ? kGerman : kEnglish);
}

QString BenchSession::title() const
{
    return texts().text(m_mode == BenchMode::Edit ? u"bench.title.edit"_s
                                                  : u"bench.title.import"_s);
}

} // namespace melovane
