#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/// A database as a file: whose it is, told before SQLite touches it.
namespace melovane::sqlite {

/// Marks a file as one of ours ("MLVD" in its header at byte 68). Keep.
inline constexpr qint32 kApplicationId = 0x4D4C5644;

/// The thing behind a path; another file under the same path has another one.
struct FileId
{
    quint64 device = 0;
    quint64 inode = 0;

    bool operator==(const FileId&) const = default;
};

/// Nothing when there is no such file.
[[nodiscard]] std::optional<FileId> fileId(const QString& path);

/// Reads the first bytes of an existing database and changes nothing.
/// \throws DbError kFileNotFound, kCannotOpen (a folder, a device, no rights), kPreviousEngineFile,
/// kUnrecognisedFormat, kCorrupt
FileId checkDatabaseFile(const QString& path);

/// False on file systems of the network, where shared memory between programs does not work.
/// \param fileSystem `f_type` of statfs
[[nodiscard]] bool sharesMemory(qint64 fileSystem);

/// sharesMemory() of the file system that holds the path.
[[nodiscard]] bool onLocalFileSystem(const QString& path);

/// True when the folder of the file takes no new files, as on read-only media.
[[nodiscard]] bool inReadOnlyFolder(const QString& path);

/// What a program leaves beside a write-protected file when it is killed is write-protected too,
/// and would make the file read only for ever: gives it the rights of a file that may be written.
void makeJournalsWritable(const QString& path);

/// True when changes stand beside the file that are not in it yet.
[[nodiscard]] bool hasJournal(const QString& path);

/// A database file as it was when it was opened, with the journal beside it. Knows when another
/// file took its place: what is written to the old one is seen by nobody.
class OpenedFile
{
public:
    /// \param id what checkDatabaseFile() found; the journal is looked for now, so the file has
    /// been read by now
    OpenedFile(QString path, const FileId& id);

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] const FileId& id() const { return m_id; }

    /// False when another file, or none, stands behind the path or behind the path of the journal.
    [[nodiscard]] bool isCurrent() const;

    /// True when only the file itself went away: its journal would be played into the next one.
    [[nodiscard]] bool leftJournal() const;

    /// True when only the journal went away.
    [[nodiscard]] bool lostJournal() const;

private:
    [[nodiscard]] bool hasOwnJournal() const;

    QString m_path;
    FileId m_id;
    std::optional<FileId> m_journal; ///< WAL, when there is one
    std::optional<FileId> m_sharedMemory;
};

/// A name beside the file that nobody uses.
[[nodiscard]] QString temporaryBeside(const QString& path);

/// Removes temporary files of that target whose program was killed at work a day or longer ago.
/// \param now the time of day by which files are dated
void removeAbandoned(const QString& path, const QDateTime& now);

/// Removes what SQLite keeps beside a database file: left alone, the journal of a file that is gone
/// would be played into the next file of that name.
void removeJournals(const QString& path);

/// Makes a written file safe against power loss, and renames it. Until then an existing target is
/// whole, its journal included.
/// \param replace false: an existing target stays. \throws DbError kObjectExists, kDiskError
void moveIntoPlace(const QString& temporary, const QString& target, bool replace);

} // namespace melovane::sqlite
