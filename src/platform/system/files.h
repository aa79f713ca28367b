#pragma once

#include "platform/system/io_error.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace melovane {

/// Facts about a file or folder.
struct FileFacts
{
    bool isFolder = false;
    qint64 size = 0;    ///< bytes
    QDateTime modified; ///< local time
    quint64 device = 0; ///< with inode: the identity of the thing behind every link to it
    quint64 inode = 0;
    bool isLink = false; ///< the name is a link; all else is about what it leads to
};

/// Volume kinds of column `DriveTyp`: keep.
enum class VolumeKind
{
    Unknown = 0,
    Removable = 1,
    Fixed = 2,
    Network = 3,
    Optical = 4
};

struct VolumeFacts
{
    VolumeKind kind = VolumeKind::Unknown;
    QString label;
    QString root; ///< mount point
};

/// What a volume has left for this user.
struct VolumeSpace
{
    qint64 free = 0;  ///< bytes
    qint64 block = 1; ///< bytes; every file takes up whole blocks
};

/// Asked between two blocks of a copy with the bytes copied so far; false gives the copy up.
using CopyStep = std::function<bool(qint64 copied)>;

/// Files and folders. Paths may carry either separator; they become system paths here and nowhere
/// else. Tests that ask a question never throw.
class Files
{
public:
    virtual ~Files() = default;

    /// True for a file (not a folder), also behind a link.
    [[nodiscard]] virtual bool fileExists(const QString& path) const = 0;
    [[nodiscard]] virtual bool folderExists(const QString& path) const = 0;

    /// Follows links; nothing for what is not there.
    [[nodiscard]] virtual std::optional<FileFacts> facts(const QString& path) const = 0;

    /// The path of an existing file or folder as the disk spells it: the path itself when it
    /// exists, otherwise found folder by folder without regard to letter case and Unicode form.
    /// Empty when there is none.
    [[nodiscard]] virtual QString resolve(const QString& path) const = 0;

    /// The path of an existing file or folder without links, "." and ".."; empty when there is
    /// none.
    [[nodiscard]] virtual QString canonical(const QString& path) const = 0;

    /// True when the names in a folder can be read.
    [[nodiscard]] virtual bool canList(const QString& folder) const = 0;

    /// Names in a folder, sorted by bytes, without "." and ".."; none when they cannot be read.
    [[nodiscard]] virtual QStringList names(const QString& folder) const = 0;

    /// \throws IoError when it cannot be read, or is larger than maxBytes
    [[nodiscard]] virtual QByteArray read(const QString& path,
                                          qint64 maxBytes = qint64{256} * 1024 * 1024) const = 0;

    /// Replaces the file as a whole: written beside, synced, renamed; the mode of an existing file
    /// is kept, a new one is its owner's alone. A link is followed, so that what it points at is
    /// replaced. \throws IoError
    virtual void writeWhole(const QString& path, const QByteArray& bytes) = 0;

    /// The same for a file whose name the user gave: a link of that name is replaced itself, and
    /// what it leads to stays as it is, or stays absent. \throws IoError
    virtual void writeNamed(const QString& path, const QByteArray& bytes) = 0;

    /// \throws IoError
    virtual void append(const QString& path, const QByteArray& bytes) = 0;

    /// Copies a file, replacing the target as a whole; mode and modification time come along. A
    /// link at the target is followed. \throws IoError
    virtual void copy(const QString& source, const QString& target) = 0;

    /// The same for large files and slow volumes, with a call after every block; what is written is
    /// synced along the way, so that no single step takes long. A link at the target is replaced
    /// itself, as by writeNamed; a target that is the source's own name stays as it is. False when
    /// `step` gave up: the target is then as it was. \throws IoError
    [[nodiscard]] virtual bool
    copyInSteps(const QString& source, const QString& target, const CopyStep& step) = 0;

    /// Makes one folder, its owner's alone; true when it exists afterwards.
    virtual bool makeFolder(const QString& path) = 0;
    /// Makes a folder and all above it.
    virtual bool makeFolders(const QString& path) = 0;

    virtual bool remove(const QString& path) = 0;

    /// Gives a file another name on the same volume; a link is renamed itself. What has that name
    /// already is never replaced, but for the file itself, when the names differ in letter case or
    /// Unicode form alone and the volume does not tell them apart. \throws IoError
    virtual void rename(const QString& source, const QString& target) = 0;

    /// Removes an empty folder; false for one that holds something.
    virtual bool removeFolder(const QString& path) = 0;

    /// Sets the modification time of a file; false when that fails.
    virtual bool setModified(const QString& path, const QDateTime& moment) = 0;

    /// Gives the owner the right to write a file; false when that fails.
    virtual bool makeWritable(const QString& path) = 0;

    [[nodiscard]] virtual VolumeFacts volume(const QString& path) const = 0;

    /// Of the volume that holds an existing file or folder; nothing when the system cannot tell.
    [[nodiscard]] virtual std::optional<VolumeSpace> space(const QString& path) const = 0;
};

/// Holds an advisory lock on a file that other programs of the suite honour; free when destroyed.
class FileLock
{
public:
    virtual ~FileLock() = default;
};

/// Where programs and users keep things, and values outside the settings file.
class Environment
{
public:
    virtual ~Environment() = default;

    /// Folder of the running executable, links resolved; no separator at its end.
    [[nodiscard]] virtual QString programFolder() const = 0;
    /// Name of the executable without extension: "MelovaneDB".
    [[nodiscard]] virtual QString programName() const = 0;

    /// The folder of a shell folder number: 26 and 35 for user and common data, 5 and 46 for user
    /// and common documents, 38 for installed programs; empty for others.
    [[nodiscard]] virtual QString specialFolder(int csidl) const = 0;

    /// A value kept for the whole machine under "Software\Melovane"; empty when absent.
    [[nodiscard]] virtual QString machineValue(const QString& name) const = 0;

    /// A value kept per user and program; empty when absent.
    [[nodiscard]] virtual QString userValue(const QString& program, const QString& name) const = 0;
    /// Failure is silent: the value then stays as it was.
    virtual void
    setUserValue(const QString& program, const QString& name, const QString& value) = 0;

    /// A folder of mode 0700 for locks and sockets of this user's suite; made when missing.
    [[nodiscard]] virtual QString runtimeFolder() const = 0;
};

/// The suite's siblings.
class Processes
{
public:
    virtual ~Processes() = default;

    enum class WindowStyle
    {
        Hidden,
        Normal,
        Minimised
    };

    /// Starts a command line "program arguments" detached, never through a shell. A program named
    /// X.exe is looked for as it stands, then without ".exe". False when there is none.
    virtual bool start(const QString& commandLine, WindowStyle style) = 0;
};

} // namespace melovane
