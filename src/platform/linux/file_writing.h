#pragma once

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

#include <optional>
#include <utility>

namespace melovane::linuxfiles {

/// Rights of a new file and a new folder: what music somebody has, plays and searches is nobody
/// else's business. What is there keeps its own rights.
inline constexpr mode_t kOwnMode = 0600;
inline constexpr mode_t kOwnFolderMode = 0700;

/// A file descriptor that closes itself. -1 for none.
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {}

    ~Descriptor() { reset(); }

    Descriptor(Descriptor&& other) noexcept
        : m_number(other.release())
    {}

    Descriptor& operator=(Descriptor&& other) noexcept
    {
        reset(other.release());
        return *this;
    }

    [[nodiscard]] int number() const { return m_number; }

    [[nodiscard]] bool isValid() const { return m_number >= 0; }

    int release() { return std::exchange(m_number, -1); }

    void reset(int number = -1);

private:
    int m_number;
};

/// The path of the folder that holds a file or folder of that path.
[[nodiscard]] QByteArray folderOf(const QByteArray& path);

/// The system's words for an error number, in the one language that the texts know.
[[nodiscard]] QString systemWords(int error);

/// Fails with the reason that the system gave last (errno).
/// \throws IoError
[[noreturn]] void failWithErrno(const QByteArray& path);

/// The end of a chain of links, whether it exists or not; a chain without end throws.
/// \throws IoError
[[nodiscard]] QByteArray linkTarget(const QByteArray& path);

/// Writes all bytes, going on after interruptions. \throws IoError naming `path`
void writeAll(int descriptor, const QByteArray& bytes, const QByteArray& path);

/// Has the disk take what was written up to now. \throws IoError naming `path`
void syncSoFar(int descriptor, const QByteArray& path);

/// Has the disk take which names a folder holds, where its file system can do that.
void syncFolder(const QByteArray& path);

/// Removes what killed programs of this user left in a folder while they replaced files there.
void sweepLeftovers(const QByteArray& folder);

/// What is done about a target that is a link.
enum class TargetLink
{
    Followed, ///< the file that it leads to is replaced, or made
    Replaced  ///< the link is, and what it leads to is never touched
};

/// A file that takes the place of another one as a whole.
///
/// Written in the target's folder, without a name where the file system knows that, so that even a
/// killed program leaves nothing behind. Elsewhere (a FAT stick) it is called ".mlv-" and letters,
/// and locked as long as its writer lives: the first write of a run into a folder removes what has
/// such a name there and no writer. Before commit() the target is untouched; a replacement
/// that is not committed vanishes.
class Replacement
{
public:
    /// \param target bytes of a path; links among its folders are followed
    /// A target that is a folder or a device, or may not be written, is refused.
    /// \throws IoError
    Replacement(const QByteArray& target, TargetLink link);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Open for reading and writing.
    [[nodiscard]] int descriptor() const { return m_file.number(); }

    /// Path of the file that is replaced; a followed link is resolved.
    [[nodiscard]] const QByteArray& target() const { return m_target; }

    /// The replaced file's facts; st_mode is 0 when there is none, or a link only.
    [[nodiscard]] const struct stat& replaced() const { return m_replaced; }

    /// Mode and modification time of the file that this one is a copy of; they then win over the
    /// mode of the replaced file. A file system that cannot hold them keeps its own. \throws
    /// IoError
    void keepFrom(const struct stat& original);

    /// Gives owner and mode of the replaced file, when there is one, syncs, renames and syncs the
    /// folder. \throws IoError
    void commit();

    /// The first step of commit() alone: owner and mode. \throws IoError
    void takeRights();

    /// The renaming of commit() alone, for who replaces many files and syncs all of them at once,
    /// before it and their folders behind it. \throws IoError
    void takePlace();

private:
    void refuseUnlessReplaceable();
    void open();
    void openNamed();
    void giveName();

    QByteArray m_target;
    QByteArray m_folder;
    QByteArray m_name; ///< of the new file; empty as long as it has none
    struct stat m_replaced = {};
    std::optional<mode_t> m_mode;
    Descriptor m_file;
};

} // namespace melovane::linuxfiles
