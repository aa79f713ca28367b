#include "support/faulty_vfs.h"

#include <QFile>
#include <QRandomGenerator>

#include <sqlite3.h>

#include <algorithm>
#include <new>

namespace melovane::test {

namespace {

/// What a disk writes as a whole.
constexpr qsizetype kSector = 512;

/// SQLite's file object; the one of the system's layer stands behind it in the same block.
struct FaultyFile
{
    sqlite3_file face;
    FaultyVfs* owner;
    QString* path; ///< null for a file without a name

    [[nodiscard]] sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

FaultyFile* faulty(sqlite3_file* file)
{
    return reinterpret_cast<FaultyFile*>(file);
}

FaultyVfs* owner(sqlite3_vfs* vfs)
{
    return static_cast<FaultyVfs*>(vfs->pAppData);
}

/// The call of the system's layer, unless a fault stands before it.
template <typename Call> int pass(sqlite3_file* file, FileCall kind, Call&& call)
{
    if (const int code = faulty(file)->owner->before(kind)) {
        return code;
    }
    sqlite3_file* const real = faulty(file)->real();
    return call(real, real->pMethods);
}

int closeFile(sqlite3_file* file)
{
    sqlite3_file* const real = faulty(file)->real();
    delete faulty(file)->path;
    return real->pMethods ? real->pMethods->xClose(real) : SQLITE_OK;
}

int readFile(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset)
{
    return pass(file, FileCall::Read, [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
        return methods->xRead(real, bytes, size, offset);
    });
}

int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset)
{
    FaultyFile* const self = faulty(file);
    sqlite3_file* const real = self->real();
    const int code = self->owner->before(FileCall::Write);
    const int written = code == SQLITE_OK ? size : size / 2;
    const int real_code = real->pMethods->xWrite(real, bytes, written, offset);
    if (self->path) {
        self->owner->noteWrite(*self->path, offset,
                               QByteArray(static_cast<const char*>(bytes), written));
    }
    return code == SQLITE_OK ? real_code : code;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    return pass(file, FileCall::Truncate,
                [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
                    if (faulty(file)->path) {
                        faulty(file)->owner->noteTruncate(*faulty(file)->path, size);
                    }
                    return methods->xTruncate(real, size);
                });
}

int syncFile(sqlite3_file* file, int flags)
{
    return pass(file, FileCall::Sync, [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
        if (faulty(file)->path) {
            faulty(file)->owner->noteSync(*faulty(file)->path);
        }
        return methods->xSync(real, flags);
    });
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size)
{
    return pass(file, FileCall::Size, [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
        return methods->xFileSize(real, size);
    });
}

int lockFile(sqlite3_file* file, int level)
{
    return pass(file, FileCall::Lock, [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
        return methods->xLock(real, level);
    });
}

int unlockFile(sqlite3_file* file, int level)
{
    sqlite3_file* const real = faulty(file)->real();
    return real->pMethods->xUnlock(real, level);
}

int checkReservedLock(sqlite3_file* file, int* result)
{
    return pass(file, FileCall::Lock, [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
        return methods->xCheckReservedLock(real, result);
    });
}

int controlFile(sqlite3_file* file, int operation, void* argument)
{
    sqlite3_file* const real = faulty(file)->real();
    return real->pMethods->xFileControl(real, operation, argument);
}

int sectorSize(sqlite3_file* file)
{
    sqlite3_file* const real = faulty(file)->real();
    return real->pMethods->xSectorSize(real);
}

int deviceTraits(sqlite3_file* file)
{
    sqlite3_file* const real = faulty(file)->real();
    return real->pMethods->xDeviceCharacteristics(real);
}

int mapMemory(sqlite3_file* file, int page, int size, int extend, volatile void** memory)
{
    return pass(file, FileCall::MapMemory,
                [&](sqlite3_file* real, const sqlite3_io_methods* methods) {
                    return methods->xShmMap(real, page, size, extend, memory);
                });
}

int lockMemory(sqlite3_file* file, int offset, int count, int flags)
{
    sqlite3_file* const real = faulty(file)->real();
    if ((flags & SQLITE_SHM_UNLOCK) != 0) {
        return real->pMethods->xShmLock(real, offset, count, flags);
    }
    return pass(file, FileCall::LockMemory, [&](sqlite3_file*, const sqlite3_io_methods* methods) {
        return methods->xShmLock(real, offset, count, flags);
    });
}

void memoryBarrier(sqlite3_file* file)
{
    sqlite3_file* const real = faulty(file)->real();
    real->pMethods->xShmBarrier(real);
}

int unmapMemory(sqlite3_file* file, int remove)
{
    sqlite3_file* const real = faulty(file)->real();
    return real->pMethods->xShmUnmap(real, remove);
}

const sqlite3_io_methods kMethods = {2,
                                     closeFile,
                                     readFile,
                                     writeFile,
                                     truncateFile,
                                     syncFile,
                                     sizeOfFile,
                                     lockFile,
                                     unlockFile,
                                     checkReservedLock,
                                     controlFile,
                                     sectorSize,
                                     deviceTraits,
                                     mapMemory,
                                     lockMemory,
                                     memoryBarrier,
                                     unmapMemory,
                                     nullptr,
                                     nullptr};

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    if (const int code = owner(vfs)->before(FileCall::Open)) {
        return code;
    }
    FaultyFile* const self = faulty(file);
    self->owner = owner(vfs);
    self->path = nullptr;
    const int code =
        self->owner->base()->xOpen(self->owner->base(), name, self->real(), flags, outFlags);
    if (code == SQLITE_OK) {
        if (name) {
            self->path = new QString(QFile::decodeName(name));
            self->owner->noteOpened(*self->path);
        }
        file->pMethods = &kMethods;
    }
    return code;
}

int deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder)
{
    if (const int code = owner(vfs)->before(FileCall::Delete)) {
        return code;
    }
    owner(vfs)->noteDelete(QFile::decodeName(name));
    return owner(vfs)->base()->xDelete(owner(vfs)->base(), name, syncFolder);
}

int lookForFile(sqlite3_vfs* vfs, const char* name, int flags, int* result)
{
    if (const int code = owner(vfs)->before(FileCall::Look)) {
        return code;
    }
    return owner(vfs)->base()->xAccess(owner(vfs)->base(), name, flags, result);
}

bool changesFiles(FileCall call)
{
    return call == FileCall::Write || call == FileCall::Sync || call == FileCall::Truncate ||
           call == FileCall::Delete;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

FaultyVfs::FaultyVfs()
    : m_base(sqlite3_vfs_find(nullptr))
    , m_vfs(std::make_unique<sqlite3_vfs>(*m_base))
{
    m_vfs->zName = "mlv-faulty";
    m_vfs->pAppData = this;
    m_vfs->pNext = nullptr;
    m_vfs->szOsFile = int(sizeof(FaultyFile)) + m_base->szOsFile;
    m_vfs->xOpen = openFile;
    m_vfs->xDelete = deleteFile;
    m_vfs->xAccess = lookForFile;
    sqlite3_vfs_register(m_vfs.get(), 1);
}

FaultyVfs::~FaultyVfs()
{
    sqlite3_vfs_unregister(m_vfs.get());
    sqlite3_vfs_register(m_base, 1);
}

void FaultyVfs::arm(const Fault& fault)
{
    m_fault = fault;
    m_left = fault.nth;
    m_fired = false;
    m_counts.clear();
}

bool FaultyVfs::disarm()
{
    m_left = 0;
    return m_fired;
}

void FaultyVfs::armPowerCut(int nth)
{
    m_leftToCut = nth;
    m_watchesPower = true;
    m_isDead = false;
    m_counts.clear();
    m_disk.clear();
}

int FaultyVfs::countOfChanges() const
{
    int count = 0;
    for (auto kind = m_counts.cbegin(); kind != m_counts.cend(); ++kind) {
        count += changesFiles(kind.key()) ? kind.value() : 0;
    }
    return count;
}

int FaultyVfs::before(FileCall call)
{
    ++m_counts[call];
    if (m_leftToCut > 0 && changesFiles(call) && --m_leftToCut == 0) {
        m_isDead = true;
    }
    if (m_isDead) {
        return SQLITE_IOERR;
    }
    if (m_left == 0 || call != m_fault.call) {
        return SQLITE_OK;
    }
    if (m_left > 1) {
        --m_left;
        return SQLITE_OK;
    }
    m_fired = true;
    m_left = m_fault.lasting ? 1 : 0;
    return m_fault.code;
}

void FaultyVfs::noteOpened(const QString& path)
{
    if (m_watchesPower && !m_disk.contains(path)) {
        m_disk.insert(path, {bytesOf(path), {}});
    }
}

void FaultyVfs::noteWrite(const QString& path, qint64 offset, const QByteArray& bytes)
{
    if (m_watchesPower && !m_isDead) {
        m_disk[path].doubtful.push_back({offset, bytes, -1});
    }
}

void FaultyVfs::noteTruncate(const QString& path, qint64 size)
{
    if (m_watchesPower) {
        m_disk[path].doubtful.push_back({0, {}, size});
    }
}

void FaultyVfs::noteSync(const QString& path)
{
    if (m_watchesPower) {
        DiskFile& file = m_disk[path];
        for (const Change& change : file.doubtful) {
            apply(change, file.safe);
        }
        file.doubtful.clear();
    }
}

void FaultyVfs::noteDelete(const QString& path)
{
    m_disk.remove(path);
}

void FaultyVfs::apply(const Change& change, QByteArray& bytes)
{
    if (change.truncatedTo >= 0) {
        bytes.resize(change.truncatedTo);
        return;
    }
    const qsizetype end = change.offset + change.bytes.size();
    if (bytes.size() < end) {
        bytes.append(QByteArray(end - bytes.size(), '\0'));
    }
    bytes.replace(change.offset, change.bytes.size(), change.bytes);
}

bool FaultyVfs::restorePower(quint32 seed)
{
    const bool wasCut = std::exchange(m_isDead, false);
    m_watchesPower = false;
    m_leftToCut = 0;
    QRandomGenerator random(seed);
    for (auto file = m_disk.begin(); wasCut && file != m_disk.end(); ++file) {
        QByteArray bytes = file->safe;
        for (const Change& change : file->doubtful) {
            if (change.truncatedTo >= 0 && random.bounded(2) == 0) {
                apply(change, bytes);
            }
            for (qsizetype at = 0; at < change.bytes.size(); at += kSector) {
                if (random.bounded(2) == 0) {
                    apply({change.offset + at, change.bytes.mid(at, kSector), -1}, bytes);
                }
            }
        }
        QFile out(file.key());
        if (out.open(QIODevice::WriteOnly)) {
            out.write(bytes);
        }
        QFile::remove(file.key() + QStringLiteral("-shm"));
    }
    m_disk.clear();
    return wasCut;
}

} // namespace melovane::test
