#pragma once

#include "care/backup_record.h"
#include "platform/db/database_care.h"
#include "platform/system/archive.h"

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class FileLock;

/// How far a work on backups is, for who watches it from another thread.
using BackupStep = std::function<bool(int percent)>;

/// What became of a work on backups.
enum class BackupOutcome
{
    Done,
    GivenUp, ///< by the step; nothing has changed
    Busy,    ///< another program works on the backups; nothing has changed
    Damaged  ///< the library, or the backup, is damaged; nothing has changed
};

/// The backups of a library, which lie in the data folder beside it.
///
/// Each is one archive: the library, its steps of undo, the settings and the layouts. It is made in
/// a folder of its own, checked page by page, packed, unpacked again for a proof, and only then
/// stands among the others; a kill, a full disk or a power cut leaves what was there. One program
/// at a time works on them. Nothing here touches a window or an engine, so it may run on a worker;
/// but not two at a time.
class Backups
{
public:
    struct Parts
    {
        DatabaseCare& care;
        Archives& archives;
        Files& files;
        const Clock& clock;
        /// Keeps other programs off the backups as long as it lives; null when one is at work.
        std::function<std::unique_ptr<FileLock>()> lock;
    };

    struct Place
    {
        QString library;    ///< full path
        QString dataFolder; ///< of the backups, the settings and the layouts
        int level = 0;      ///< of this release
    };

    Backups(const Parts& parts, Place place);

    /// Newest first. One of another library is left out. A backup that cannot be read is there, and
    /// damaged. Quiet: a folder that cannot be read gives none.
    [[nodiscard]] std::vector<Backup> list() const;

    /// True when none that is whole was made on this day.
    [[nodiscard]] bool isDue() const;

    /// Makes one and then drops those that the rules do not keep.
    /// \throws DbError, IoError also when there is no room; then all is as it was
    [[nodiscard]] BackupOutcome make(BackupOccasion occasion, const BackupStep& step);

    /// Unpacks all of it and checks the database in it page by page; remembers what it found.
    /// Damaged for one that is. \throws IoError, DbError when there is no room for that
    [[nodiscard]] BackupOutcome check(const QString& name, const BackupStep& step);

    /// Gives the library the content of a backup, after a backup of what it holds now. A library
    /// that is damaged itself is kept aside instead. To be called while no program has it.
    ///
    /// \param withSettings the steps of undo come back too, and settings and layouts at the next
    ///                     start, see SettingsReturn
    /// \throws DbError kInvalidOperation for pages of another size; and as make(). Until the rows
    /// stand the library holds what it held
    [[nodiscard]] BackupOutcome
    restore(const QString& name, bool withSettings, const BackupStep& step);

    [[nodiscard]] QString fullName(const QString& name) const;

    /// What the engine said about a damaged library or backup; for the log.
    [[nodiscard]] const QStringList& damages() const { return m_damages; }

private:
    /// A part of the way from 0 to 100.
    struct Span
    {
        int from = 0;
        int to = 100;
    };

    [[nodiscard]] BackupOutcome
    makeLocked(BackupOccasion occasion, const BackupStep& step, const Span& span);
    [[nodiscard]] BackupOutcome
    unpackAndCheck(const Backup& backup, bool all, const BackupStep& step, const Span& span);
    [[nodiscard]] BackupOutcome copyLibrary(const BackupStep& step, const Span& span);
    [[nodiscard]] BackupOutcome
    checkDatabase(const QString& database, const BackupStep& step, const Span& span);
    [[nodiscard]] QString placeOf(const QString& member, bool all) const;
    [[nodiscard]] BackupOutcome bringIn(const BackupStep& step, const Span& span);
    [[nodiscard]] bool packAndProve(const Backup& backup, const BackupStep& step, const Span& span);
    void replaceUnreadable() const;
    void restoreHistory() const;
    void leaveSettings() const;
    [[nodiscard]] std::vector<ArchiveMember> settingsMembers() const;
    void requireRoom() const;
    [[nodiscard]] QString work(const QString& name) const;
    [[nodiscard]] Backup described(Backup backup) const;
    void remember(const Backup& backup) const;
    void dropOld() const;

    Parts m_parts;
    Place m_place;
    QStringList m_damages;
};

} // namespace melovane
