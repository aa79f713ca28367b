#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

/// Why a backup was made.
enum class BackupOccasion
{
    Daily, ///< the first start of a day
    ByHand,
    Cleaning, ///< before rows were removed
    Relink,   ///< before tracks got the places where their files were found again
    Merge,    ///< before doubles were merged
    Restore,  ///< before another backup took the library's place
    Upgrade   ///< before the library was brought to another level
};

/// What is known about a backup as a file.
enum class BackupState
{
    Unchecked,
    Good,
    Damaged
};

/// One backup, as the list of them shows it.
struct Backup
{
    QString name; ///< of the file, without its folder
    QDateTime made;
    qint64 bytes = 0;
    int tracks = -1; ///< -1: nobody has counted yet
    int lists = -1;
    BackupOccasion occasion = BackupOccasion::Upgrade;
    int level = 0;   ///< of the release that made it, or to which it was upgraded behind it
    QString library; ///< full path; empty when the file does not tell
    BackupState state = BackupState::Unchecked;
    QDateTime checked; ///< when the state was found

    /// Made before an upgrade: a plain copy of the database, without settings.
    [[nodiscard]] bool isPlain() const;
};

/// "Melovane.Backup.(<level>).<time>.tar.zst". A packed one ends with what it is, so that any
/// archiver opens it; what is made before an upgrade keeps the ending ".mdb" of a plain copy. Keep:
/// siblings know both.
[[nodiscard]] QString backupName(int level, const QDateTime& made);

/// What a file name says; nothing for one that is no backup's.
[[nodiscard]] std::optional<Backup> backupOfName(const QString& name);

/// What stands in the first member of an archive: facts that its name does not tell.
[[nodiscard]] QByteArray factsText(const Backup& backup);
void readFacts(const QByteArray& text, Backup& backup);

/// Names of the backups that make room: all but the newest of each of the last seven days, four
/// weeks and twelve months that have one. Those made by hand or before an upgrade stay, and those
/// before a work that changes much for seven days. A damaged one stands for no day, and goes after
/// seven; the newest that is not known to be damaged always stays.
[[nodiscard]] QStringList backupsToDrop(const std::vector<Backup>& backups, const QDate& today);

} // namespace melovane
