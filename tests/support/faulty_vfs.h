#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

struct sqlite3_vfs;

namespace melovane::test {

/// What SQLite asks of its file layer.
enum class FileCall
{
    Open,
    Delete,
    Look, ///< whether a file exists
    Read,
    Write,
    Truncate,
    Sync,
    Size,
    Lock,
    MapMemory,  ///< shared memory of WAL
    LockMemory, ///< locks in it
};

/// The n-th call of a kind fails.
struct Fault
{
    FileCall call = FileCall::Write;
    int nth = 1;          ///< from 1
    int code = 0;         ///< SQLite's result code; a write that fails leaves half of its bytes
    bool lasting = false; ///< all later calls of the kind fail too
};

/// The file layer under SQLite with faults in it. While it lives, every connection that is opened
/// in this process goes through it; connections end before it does. One at a time, one thread.
class FaultyVfs
{
public:
    FaultyVfs();
    ~FaultyVfs();
    FaultyVfs(const FaultyVfs&) = delete;
    FaultyVfs& operator=(const FaultyVfs&) = delete;

    void arm(const Fault& fault);

    /// Ends the faults. \return true when there was one
    bool disarm();

    /// Calls of the kind since arm() or armPowerCut().
    [[nodiscard]] int count(FileCall call) const { return m_counts.value(call); }

    /// Calls that change a file, since then.
    [[nodiscard]] int countOfChanges() const;

    /// From now on knows what of each file is safe on the disk. The power fails at the n-th call
    /// that changes a file, never for 0: it and every later call of any kind fail.
    void armPowerCut(int nth);

    /// Turns the files into what a disk may hold after the cut: what was synced, and of the rest
    /// any sectors. To be called when no connection is open. \return true when there was a cut
    bool restorePower(quint32 seed);

    /// SQLite's side; for the file layer alone.
    [[nodiscard]] int before(FileCall call);
    void noteOpened(const QString& path);
    void noteWrite(const QString& path, qint64 offset, const QByteArray& bytes);
    void noteTruncate(const QString& path, qint64 size);
    void noteSync(const QString& path);
    void noteDelete(const QString& path);

    [[nodiscard]] sqlite3_vfs* base() const { return m_base; }

private:
    struct Change
    {
        qint64 offset = 0;
        QByteArray bytes;
        qint64 truncatedTo = -1; ///< else a write
    };

    /// A file as the disk has it for sure, and what may be lost of it.
    struct DiskFile
    {
        QByteArray safe;
        std::vector<Change> doubtful;
    };

    static void apply(const Change& change, QByteArray& bytes);

    sqlite3_vfs* m_base;
    std::unique_ptr<sqlite3_vfs> m_vfs;
    Fault m_fault;
    int m_left = 0; ///< calls until the fault; 0 when none is armed
    bool m_fired = false;
    QHash<FileCall, int> m_counts;
    int m_leftToCut = 0;
    bool m_watchesPower = false;
    bool m_isDead = false;
    QHash<QString, DiskFile> m_disk;
};

} // namespace melovane::test
