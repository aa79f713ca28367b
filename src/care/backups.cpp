#include "care/backups.h"

#include "care/backup_workplace.h"
#include "care/settings_return.h"
#include "platform/db/db_error.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "playlists/history_file.h"
#include "store/error_sink.h"
#include "store/keep_aside.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the last check of each backup has found.
const QString kStateFile = u"Melovane.Backup.state"_s;
const QString kTimeForm = u"yyyyMMdd_HHmmss"_s;

// Members of an archive: keep.
const QString kFacts = u"backup.txt"_s;
const QString kLibrary = u"melovane.mdb"_s;
const QString kHistory = u"melovane.undo.mdb"_s;
const QString kSettings = u"settings/"_s;

// Names in the folder of a work.
const QString kNewArchive = u"new.tar.zst"_s;
const QString kRestored = u"restored.mdb"_s;
const QString kRestoredHistory = u"restored.undo.mdb"_s;

/// A library without one of these is none.
constexpr std::array kTables{u"db_all", u"pl_name", u"pl_all", u"pl_group", u"db_version"};

constexpr std::array kJournals{u"-wal", u"-shm", u"-journal"};

/// The machine, and not the data, is to blame.
bool isOfDisk(const DbError& error)
{
    return error.number() == dberror::kDiskFull || error.number() == dberror::kOutOfMemory;
}

/// The library itself cannot be read any more.
bool isUnreadable(const DbError& error)
{
    constexpr std::array kNumbers{dberror::kCorrupt, dberror::kUnrecognisedFormat,
                                  dberror::kFileNotFound, dberror::kPreviousEngineFile,
                                  dberror::kOther};
    return std::find(kNumbers.begin(), kNumbers.end(), error.number()) != kNumbers.end();
}

Backup named(const QString& name)
{
    Backup backup = backupOfName(name).value_or(Backup());
    backup.name = name;
    return backup;
}

/// Only names that stay below the folder that they are put into.
bool isHarmless(const QString& name)
{
    const QStringList parts = name.split(u'/');
    return std::none_of(parts.begin(), parts.end(), [](const QString& part) {
        return part.isEmpty() || part == u"."_s || part == u".."_s;
    });
}

SliceStep sliceOf(const BackupStep& step, int from, int to)
{
    return [step, from, to](qint64 done, qint64 whole) {
        return step(whole > 0 ? from + int((to - from) * done / whole) : from);
    };
}

CopyStep blocksOf(const BackupStep& step, int from, int to, qint64 whole)
{
    return [slice = sliceOf(step, from, to), whole](qint64 done) {
        return slice(std::min(done, whole), whole);
    };
}

int within(int from, int to, int percent)
{
    return from + (to - from) * percent / 100;
}

} // namespace

Backups::Backups(const Parts& parts, Place place)
    : m_parts(parts)
    , m_place(std::move(place))
{}

QString Backups::fullName(const QString& name) const
{
    return path::join(m_place.dataFolder, name);
}

QString Backups::work(const QString& name) const
{
    return path::join(path::join(m_place.dataFolder, kBackupWork), name);
}

std::vector<Backup> Backups::list() const
{
    std::vector<Backup> backups;
    for (const QString& name : m_parts.files.names(m_place.dataFolder)) {
        if (const auto backup = backupOfName(name)) {
            const Backup known = described(*backup);
            if (known.library.isEmpty() || known.library == m_place.library) {
                backups.push_back(known);
            }
        }
    }
    std::stable_sort(backups.begin(), backups.end(),
                     [](const Backup& a, const Backup& b) { return a.made > b.made; });
    return backups;
}

Backup Backups::described(Backup backup) const
{
    const QString file = fullName(backup.name);
    if (const auto facts = m_parts.files.facts(file)) {
        backup.bytes = facts->size;
    }
    quietly({}, {}, [&] {
        const QString state = QString::fromUtf8(m_parts.files.read(fullName(kStateFile)));
        for (const QString& line : state.split(u'\n')) {
            const QStringList cells = line.split(u'|');
            if (cells.size() == 6 && cells[0] == backup.name &&
                cells[3].toLongLong() == backup.bytes) {
                backup.state = cells[1] == u"good"_s ? BackupState::Good : BackupState::Damaged;
                backup.checked = QDateTime::fromString(cells[2], kTimeForm);
                backup.tracks = cells[4].toInt();
                backup.lists = cells[5].toInt();
            }
        }
    });
    if (!backup.isPlain()) {
        try {
            readFacts(m_parts.archives.first(file), backup);
        } catch (const IoError&) {
            backup.state = BackupState::Damaged;
        }
    }
    return backup;
}

/// Lines of backups that are gone go with the next one that is written.
void Backups::remember(const Backup& backup) const
{
    quietly({}, {}, [&] {
        QStringList lines;
        const QString state = fullName(kStateFile);
        if (m_parts.files.fileExists(state)) {
            for (const QString& line :
                 QString::fromUtf8(m_parts.files.read(state)).split(u'\n', Qt::SkipEmptyParts)) {
                const QString name = line.section(u'|', 0, 0);
                if (name != backup.name && m_parts.files.fileExists(fullName(name))) {
                    lines.append(line);
                }
            }
        }
        lines.append(u"%1|%2|%3|%4|%5|%6"_s.arg(
            backup.name, backup.state == BackupState::Good ? u"good"_s : u"damaged"_s,
            backup.checked.toString(kTimeForm), QString::number(backup.bytes),
            QString::number(backup.tracks), QString::number(backup.lists)));
        m_parts.files.writeWhole(state, lines.join(u'\n').toUtf8() + '\n');
    });
}

bool Backups::isDue() const
{
    const QDate today = m_parts.clock.now().date();
    const std::vector<Backup> backups = list();
    return std::none_of(backups.begin(), backups.end(), [&today](const Backup& backup) {
        return !backup.isPlain() && backup.state != BackupState::Damaged &&
               backup.made.date() == today;
    });
}

BackupOutcome Backups::make(BackupOccasion occasion, const BackupStep& step)
{
    const BackupWorkplace workplace(m_parts.files, m_place.dataFolder, m_parts.lock());
    if (!workplace.isMine()) {
        return BackupOutcome::Busy;
    }
    const BackupOutcome outcome = makeLocked(occasion, step, {});
    if (outcome == BackupOutcome::Done) {
        dropOld();
    }
    return outcome;
}

/// A copy, and what it shrinks to, have to stand beside the library for a while.
void Backups::requireRoom() const
{
    qint64 bytes = 0;
    for (const QString& file : {m_place.library, historyFileOf(m_place.library)}) {
        bytes += m_parts.files.facts(file).value_or(FileFacts{}).size;
    }
    const auto space = m_parts.files.space(m_place.dataFolder);
    if (space && space->free < bytes + bytes / 2) {
        throw IoError(m_place.dataFolder, u"No space left on device"_s, ENOSPC);
    }
}

BackupOutcome Backups::makeLocked(BackupOccasion occasion, const BackupStep& step, const Span& span)
{
    m_damages.clear();
    requireRoom();
    const auto at = [&span](int percent) { return within(span.from, span.to, percent); };
    Backup backup;
    backup.made = m_parts.clock.now();
    while (m_parts.files.fileExists(fullName(backupName(m_place.level, backup.made)))) {
        backup.made = backup.made.addSecs(1);
    }
    backup.name = backupName(m_place.level, backup.made);
    backup.occasion = occasion;
    backup.library = m_place.library;
    const BackupOutcome copied = copyLibrary(step, {at(0), at(60)});
    if (copied != BackupOutcome::Done) {
        return copied;
    }
    backup.tracks = int(m_parts.care.rows(work(kLibrary), u"db_all"_s));
    backup.lists = int(m_parts.care.rows(work(kLibrary), u"pl_name"_s));
    // A history that cannot be copied is no reason to have no backup.
    quietly({}, {}, [&] {
        (void)m_parts.care.copy(historyFileOf(m_place.library), work(kHistory),
                                sliceOf(step, at(60), at(60)));
    });
    if (!packAndProve(backup, step, {at(60), at(100)})) {
        return BackupOutcome::GivenUp;
    }
    m_parts.files.rename(work(kNewArchive), fullName(backup.name));
    backup.bytes = m_parts.files.facts(fullName(backup.name)).value_or(FileFacts{}).size;
    backup.state = BackupState::Good;
    backup.checked = backup.made;
    remember(backup);
    m_parts.files.remove(work(kLibrary));
    m_parts.files.remove(work(kHistory));
    return BackupOutcome::Done;
}

BackupOutcome Backups::copyLibrary(const BackupStep& step, const Span& span)
{
    const int middle = within(span.from, span.to, 66);
    try {
        if (!m_parts.care.copy(m_place.library, work(kLibrary), sliceOf(step, span.from, middle))) {
            return BackupOutcome::GivenUp;
        }
    } catch (const DbError& error) {
        if (error.number() != dberror::kCorrupt) {
            throw;
        }
        m_damages.append(error.text());
        return BackupOutcome::Damaged;
    }
    return checkDatabase(work(kLibrary), step, {middle, span.to});
}

bool Backups::packAndProve(const Backup& backup, const BackupStep& step, const Span& span)
{
    std::vector<ArchiveMember> members{{.name = kFacts, .bytes = factsText(backup)},
                                       {.name = kLibrary, .file = work(kLibrary)}};
    if (m_parts.files.fileExists(work(kHistory))) {
        members.push_back({.name = kHistory, .file = work(kHistory)});
    }
    for (const ArchiveMember& member : settingsMembers()) {
        members.push_back(member);
    }
    const qint64 bytes = m_parts.files.facts(work(kLibrary)).value_or(FileFacts{}).size;
    const int middle = within(span.from, span.to, 75);
    return m_parts.archives.write(work(kNewArchive), members,
                                  blocksOf(step, span.from, middle, bytes)) &&
           m_parts.archives.unpack(
               work(kNewArchive), [](const QString&) { return QString(); },
               blocksOf(step, middle, span.to, bytes));
}

std::vector<ArchiveMember> Backups::settingsMembers() const
{
    std::vector<ArchiveMember> members;
    for (const QString& name : settingsFiles(m_parts.files, m_place.dataFolder)) {
        quietly({}, {}, [&] {
            members.push_back({.name = kSettings + name,
                               .bytes = m_parts.files.read(path::join(m_place.dataFolder, name))});
        });
    }
    return members;
}

BackupOutcome
Backups::checkDatabase(const QString& database, const BackupStep& step, const Span& span)
{
    try {
        const auto lines = m_parts.care.check(database, DatabaseCare::Depth::Pages,
                                              sliceOf(step, span.from, span.to));
        if (!lines) {
            return BackupOutcome::GivenUp;
        }
        m_damages.append(*lines);
        for (const QStringView table : kTables) {
            (void)m_parts.care.rows(database, table.toString());
        }
    } catch (const DbError& error) {
        if (isOfDisk(error)) {
            throw;
        }
        m_damages.append(error.text());
    }
    return m_damages.isEmpty() ? BackupOutcome::Done : BackupOutcome::Damaged;
}

void Backups::dropOld() const
{
    const std::vector<Backup> backups = list();
    for (const QString& name : backupsToDrop(backups, m_parts.clock.now().date())) {
        m_parts.files.remove(fullName(name));
    }
}

QString Backups::placeOf(const QString& member, bool all) const
{
    if (member == kLibrary) {
        return work(kRestored);
    }
    if (!all || !isHarmless(member)) {
        return {};
    }
    if (member == kHistory) {
        return work(kRestoredHistory);
    }
    if (member.startsWith(kSettings)) {
        m_parts.files.makeFolders(path::parent(work(member)));
        return work(member);
    }
    return {};
}

BackupOutcome
Backups::unpackAndCheck(const Backup& backup, bool all, const BackupStep& step, const Span& span)
{
    m_damages.clear();
    const QString file = fullName(backup.name);
    const int middle = within(span.from, span.to, 50);
    // About three to one; what is left of the way is only a bar that jumps.
    const CopyStep blocks = blocksOf(step, span.from, middle, 3 * backup.bytes + 1);
    try {
        const bool isDone =
            backup.isPlain()
                ? m_parts.files.copyInSteps(file, work(kRestored), blocks)
                : m_parts.archives.unpack(
                      file, [this, all](const QString& name) { return placeOf(name, all); },
                      blocks);
        if (!isDone) {
            return BackupOutcome::GivenUp;
        }
    } catch (const IoError& error) {
        if (error.number() != 0) {
            throw; // the disk, not the backup
        }
        m_damages.append(error.reason());
        return BackupOutcome::Damaged;
    }
    return checkDatabase(work(kRestored), step, {middle, span.to});
}

BackupOutcome Backups::check(const QString& name, const BackupStep& step)
{
    const BackupWorkplace workplace(m_parts.files, m_place.dataFolder, m_parts.lock());
    if (!workplace.isMine()) {
        return BackupOutcome::Busy;
    }
    Backup backup = described(named(name));
    const BackupOutcome outcome = unpackAndCheck(backup, false, step, {});
    if (outcome == BackupOutcome::GivenUp) {
        return outcome;
    }
    backup.state = outcome == BackupOutcome::Done ? BackupState::Good : BackupState::Damaged;
    if (backup.state == BackupState::Good) {
        backup.tracks = int(m_parts.care.rows(work(kRestored), u"db_all"_s));
        backup.lists = int(m_parts.care.rows(work(kRestored), u"pl_name"_s));
    }
    backup.checked = m_parts.clock.now();
    remember(backup);
    return outcome;
}

BackupOutcome Backups::restore(const QString& name, bool withSettings, const BackupStep& step)
{
    const BackupWorkplace workplace(m_parts.files, m_place.dataFolder, m_parts.lock());
    if (!workplace.isMine()) {
        return BackupOutcome::Busy;
    }
    const Backup backup = described(named(name));
    const BackupOutcome unpacked = unpackAndCheck(backup, withSettings, step, {0, 40});
    if (unpacked != BackupOutcome::Done) {
        return unpacked;
    }
    const BackupOutcome outcome = bringIn(step, {40, 100});
    if (outcome == BackupOutcome::Done && withSettings) {
        restoreHistory();
        leaveSettings();
    }
    return outcome;
}

BackupOutcome Backups::bringIn(const BackupStep& step, const Span& span)
{
    const int middle = within(span.from, span.to, 60);
    QString damaged; // where a damaged library is kept
    try {
        const BackupOutcome kept = makeLocked(BackupOccasion::Restore, step, {span.from, middle});
        if (kept == BackupOutcome::Damaged) {
            damaged = keepAside(m_parts.files, m_place.library);
        } else if (kept != BackupOutcome::Done) {
            return kept;
        }
        return m_parts.care.restore(work(kRestored), m_place.library,
                                    sliceOf(step, middle, span.to))
                   ? BackupOutcome::Done
                   : BackupOutcome::GivenUp;
    } catch (const DbError& error) {
        if (!isUnreadable(error)) {
            throw;
        }
    }
    if (damaged.isEmpty() && m_parts.files.fileExists(m_place.library)) {
        (void)keepAside(m_parts.files, m_place.library);
    }
    replaceUnreadable();
    return BackupOutcome::Done;
}

/// Nobody can have open what cannot be opened, so that another file may take its place.
void Backups::replaceUnreadable() const
{
    // The journal first: it must never be met by another file.
    for (const QStringView journal : kJournals) {
        m_parts.files.remove(m_place.library + journal.toString());
    }
    (void)m_parts.files.copyInSteps(work(kRestored), m_place.library, [](qint64) { return true; });
}

void Backups::restoreHistory() const
{
    const QString source = work(kRestoredHistory);
    const QString target = historyFileOf(m_place.library);
    if (!m_parts.files.fileExists(source)) {
        return;
    }
    // The library stands; without its steps it is whole all the same.
    quietly({}, {}, [&] {
        if (m_parts.files.fileExists(target)) {
            (void)m_parts.care.restore(source, target, [](qint64, qint64) { return true; });
        } else {
            m_parts.files.rename(source, target);
        }
    });
}

void Backups::leaveSettings() const
{
    const QString folder = path::join(m_place.dataFolder, kReturningSettings);
    removeTree(m_parts.files, folder);
    if (m_parts.files.folderExists(work(u"settings"_s))) {
        m_parts.files.rename(work(u"settings"_s), folder);
    }
}

} // namespace melovane
