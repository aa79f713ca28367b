#pragma once

#include "care/backups.h"
#include "care/desk_tools.h"

#include <atomic>
#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;

/// What is known about a backup as a file, in a word for a person.
[[nodiscard]] QString backupStateText(const ConfigObjects& texts, BackupState state);

/// The parts of the program that the backups use; they outlive the desk.
struct BackupDeskParts
{
    DeskTools tools;
    const Files& files;
    /// The backups of the present library, with all that they use: they share nothing with the
    /// window and may be used on another thread.
    std::function<std::shared_ptr<Backups>()> makeBackups;
    std::function<QString()> library; ///< full path
    QString dataFolder;
};

/// What the user does with backups, in words of his language. The window stays alive meanwhile.
class BackupDesk
{
public:
    explicit BackupDesk(BackupDeskParts parts);
    /// A work that goes on in the background is given up; it leaves nothing.
    ~BackupDesk();

    BackupDesk(const BackupDesk&) = delete;
    BackupDesk& operator=(const BackupDesk&) = delete;

    /// Newest first.
    [[nodiscard]] std::vector<Backup> list() const;

    /// "Jetzt sichern". True when it stands; otherwise the user was told why not.
    bool makeNow();

    /// Before a work that may lose rows. False when there is no backup and the user does not want
    /// to go on without one.
    [[nodiscard]] bool makeBefore(BackupOccasion occasion);

    /// "Prüfen"; tells what it found.
    void check(const Backup& backup);

    /// Asks, takes the library away from all, restores it and gives it back. True when it holds the
    /// backup now.
    bool restore(const Backup& backup, bool withSettings);

    /// Makes the backup of the day behind the window, when it is due. What goes wrong is told in
    /// the status line.
    void startDaily();

    /// Asks, for a library that cannot be opened, whether the last backup is to be restored, and
    /// does so. False when there is none, or the user does not want it, or it fails.
    /// \param fault why it cannot be opened
    [[nodiscard]] bool rescue(const QString& fault);

    // Texts of the window.

    [[nodiscard]] const ConfigObjects& texts() const { return m_parts.tools.texts; }

    [[nodiscard]] QString dateText(const QDateTime& moment) const;
    [[nodiscard]] QString sizeText(qint64 bytes) const;
    [[nodiscard]] QString occasionText(const Backup& backup) const;
    [[nodiscard]] QString stateText(const Backup& backup) const;
    /// When it was checked, and with which result.
    [[nodiscard]] QString checkText(const Backup& backup) const;
    /// What is free where the backups lie; empty when nobody knows.
    [[nodiscard]] QString freeText() const;

private:
    struct Result;
    struct Running;
    using Work = std::function<BackupOutcome(Backups& backups, const BackupStep& step)>;

    [[nodiscard]] Result run(const QString& title, const Work& work);
    [[nodiscard]] QString faultText(const Result& result, const QString& name) const;
    void tellFault(const Result& result, const QString& name);
    void dailyDone(const Running& running);
    void log(const Result& result) const;

    BackupDeskParts m_parts;
    std::shared_ptr<Running> m_daily; ///< null when none is made
};

} // namespace melovane
