#pragma once

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

/// True when changes stand beside the file that are not in it yet.
[[nodiscard]] bool hasJournal(const QString& path);

/// A name beside the file that nobody uses.
[[nodiscard]] QString temporaryBeside(const QString& path);

/// Removes what SQLite keeps beside a database file: left alone, the journal of a file that is gone
/// would be played into the next file of that name.
void removeJournals(const QString& path);

/// Makes a written file safe against power loss, and renames it.
/// \param replace false: an existing target stays. \throws DbError kObjectExists, kDiskError
void moveIntoPlace(const QString& temporary, const QString& target, bool replace);

} // namespace melovane::sqlite
