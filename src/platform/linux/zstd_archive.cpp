#include "platform/linux/zstd_archive.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/system_names.h"

#include <fcntl.h>
#include <unistd.h>
#include <zstd.h>

#include <algorithm>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Two thirds gone at the speed of a disk; what higher levels gain costs many times the time.
constexpr int kLevel = 1;

/// Bytes that are packed between two questions whether it goes on: some milliseconds.
constexpr qint64 kBlock = qint64{512} * 1024;

/// What others may find too large to unpack in memory; no more is ever needed.
constexpr qint64 kMaxFirst = qint64{1024} * 1024;

// A tar header: 512 bytes of texts and octal numbers.
constexpr qsizetype kHeader = 512;
constexpr qsizetype kNameSize = 100;
constexpr qsizetype kSizeAt = 124;
constexpr qsizetype kSizeSize = 12;
constexpr qsizetype kSumAt = 148;
constexpr qsizetype kSumSize = 8;

QString damaged()
{
    return u"das Archiv ist beschädigt"_s;
}

void put(QByteArray& header, qsizetype at, const QByteArray& text)
{
    header.replace(at, text.size(), text);
}

QByteArray octal(qint64 number, int digits)
{
    return QByteArray::number(number, 8).rightJustified(digits, '0');
}

/// The sum of all bytes, those of the sum itself taken as blanks.
qint64 sumOf(const QByteArray& header)
{
    qint64 sum = 0;
    for (qsizetype i = 0; i < header.size(); ++i) {
        const bool isSum = i >= kSumAt && i < kSumAt + kSumSize;
        sum += isSum ? ' ' : static_cast<unsigned char>(header[i]);
    }
    return sum;
}

/// Eleven octal digits reach to 8 GiB; what is larger has the number in bytes behind a mark.
QByteArray sizeField(qint64 size)
{
    constexpr qint64 kLargestOctal = (qint64{1} << 33) - 1;
    if (size <= kLargestOctal) {
        return octal(size, 11);
    }
    QByteArray field(kSizeSize, '\0');
    field[0] = static_cast<char>(0x80);
    for (qsizetype i = kSizeSize - 1; size > 0; --i, size >>= 8) {
        field[i] = static_cast<char>(size & 0xFF);
    }
    return field;
}

QByteArray headerOf(const QByteArray& name, qint64 size)
{
    QByteArray header(kHeader, '\0');
    put(header, 0, name.left(kNameSize - 1));
    put(header, 100, "0000600");
    put(header, 108, "0000000");
    put(header, 116, "0000000");
    put(header, kSizeAt, sizeField(size));
    put(header, 136, "00000000000");
    put(header, 156, "0");
    put(header, 257, QByteArray("ustar\00000", 8));
    put(header, kSumAt, octal(sumOf(header), 6) + QByteArray("\0 ", 2));
    return header;
}

qint64 paddingOf(qint64 size)
{
    return (kHeader - size % kHeader) % kHeader;
}

struct Entry
{
    QString name; ///< empty at the end of the archive
    qint64 size = 0;
};

Entry entryOf(const QByteArray& header, const QString& archive)
{
    if (header.count('\0') == kHeader) {
        return {};
    }
    bool isNumber = false;
    const qint64 sum = header.mid(kSumAt, 6).toLongLong(&isNumber, 8);
    if (!isNumber || sum != sumOf(header)) {
        throw IoError(archive, damaged());
    }
    const QByteArray field = header.mid(kSizeAt, kSizeSize);
    qint64 size = 0;
    if (static_cast<unsigned char>(field[0]) == 0x80) {
        for (qsizetype i = 4; i < kSizeSize; ++i) {
            size = (size << 8) | static_cast<unsigned char>(field[i]);
        }
    } else {
        size = field.left(kSizeSize - 1).toLongLong(&isNumber, 8);
    }
    if (!isNumber || size < 0) {
        throw IoError(archive, damaged());
    }
    const QByteArray name = header.left(kNameSize);
    const qsizetype end = name.indexOf('\0');
    return {QString::fromUtf8(name.left(end)), size};
}

linuxfiles::Descriptor openFile(const QString& path, int flags)
{
    const QByteArray name = linuxnames::systemPath(path);
    linuxfiles::Descriptor file(::open(name.constData(), flags | O_CLOEXEC, linuxfiles::kOwnMode));
    if (!file.isValid()) {
        linuxfiles::failWithErrno(name);
    }
    return file;
}

/// The next bytes of a file, none at its end. \throws IoError
QByteArray readSome(int file, qint64 size, const QString& path)
{
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    ssize_t count = -1;
    do {
        count = ::read(file, bytes.data(), size_t(size));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        linuxfiles::failWithErrno(linuxnames::systemPath(path));
    }
    bytes.truncate(qsizetype(count));
    return bytes;
}

/// A new file of that name; unless it is finished it vanishes.
class NewFile
{
public:
    explicit NewFile(const QString& path)
        : m_path(path)
        , m_file(openFile(path, O_RDWR | O_CREAT | O_EXCL))
    {}

    ~NewFile()
    {
        if (!m_isFinished) {
            ::unlink(linuxnames::systemPath(m_path).constData());
        }
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(const QByteArray& bytes) const
    {
        linuxfiles::writeAll(m_file.number(), bytes, linuxnames::systemPath(m_path));
    }

    void finish()
    {
        linuxfiles::syncSoFar(m_file.number(), linuxnames::systemPath(m_path));
        m_isFinished = true;
    }

private:
    QString m_path;
    linuxfiles::Descriptor m_file;
    bool m_isFinished = false;
};

/// Packs a stream of bytes into frames.
class Packer
{
public:
    explicit Packer(const NewFile& file)
        : m_file(file)
        , m_context(ZSTD_createCCtx(), ZSTD_freeCCtx)
        , m_room(qsizetype(ZSTD_CStreamOutSize()), Qt::Uninitialized)
    {
        ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_compressionLevel, kLevel);
        ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_checksumFlag, 1);
    }

    void add(const QByteArray& bytes) { pack(bytes, ZSTD_e_continue); }

    void endFrame() { pack({}, ZSTD_e_end); }

private:
    void pack(const QByteArray& bytes, ZSTD_EndDirective end)
    {
        ZSTD_inBuffer in{bytes.constData(), size_t(bytes.size()), 0};
        size_t left = 0;
        do {
            ZSTD_outBuffer out{m_room.data(), size_t(m_room.size()), 0};
            left = ZSTD_compressStream2(m_context.get(), &out, &in, end);
            if (ZSTD_isError(left) != 0) {
                throw IoError({}, QString::fromLatin1(ZSTD_getErrorName(left)));
            }
            m_file.write(QByteArray::fromRawData(m_room.constData(), qsizetype(out.pos)));
        } while (in.pos < in.size || (end == ZSTD_e_end && left > 0));
    }

    const NewFile& m_file;
    std::unique_ptr<ZSTD_CCtx, size_t (*)(ZSTD_CCtx*)> m_context;
    QByteArray m_room;
};

/// The bytes that were packed, checked at the end of each frame.
class Unpacker
{
public:
    explicit Unpacker(const QString& archive)
        : m_archive(archive)
        , m_file(openFile(archive, O_RDONLY))
        , m_context(ZSTD_createDCtx(), ZSTD_freeDCtx)
        , m_room(qsizetype(ZSTD_DStreamOutSize()), Qt::Uninitialized)
    {}

    /// Exactly so many bytes. \throws IoError
    QByteArray take(qint64 size)
    {
        while (m_ready.size() < size) {
            if (!more()) {
                throw IoError(m_archive, damaged());
            }
        }
        const QByteArray bytes = m_ready.left(qsizetype(size));
        m_ready.remove(0, qsizetype(size));
        return bytes;
    }

    /// Reads what is left, up to the last checksum. \throws IoError when a frame is not complete
    void finish()
    {
        while (more()) {
            m_ready.clear();
        }
        if (!m_isBetweenFrames) {
            throw IoError(m_archive, damaged());
        }
    }

private:
    /// False at the end of the file.
    bool more()
    {
        if (m_in.pos == m_in.size) {
            m_packed = readSome(m_file.number(), qint64(ZSTD_DStreamInSize()), m_archive);
            m_in = {m_packed.constData(), size_t(m_packed.size()), 0};
            if (m_packed.isEmpty() && !m_isFull) {
                return false;
            }
        }
        ZSTD_outBuffer out{m_room.data(), size_t(m_room.size()), 0};
        const size_t left = ZSTD_decompressStream(m_context.get(), &out, &m_in);
        if (ZSTD_isError(left) != 0) {
            throw IoError(m_archive, damaged());
        }
        m_isBetweenFrames = left == 0;
        m_isFull = out.pos == out.size;
        m_ready.append(m_room.constData(), qsizetype(out.pos));
        return true;
    }

    QString m_archive;
    linuxfiles::Descriptor m_file;
    std::unique_ptr<ZSTD_DCtx, size_t (*)(ZSTD_DCtx*)> m_context;
    QByteArray m_room;
    QByteArray m_packed;
    ZSTD_inBuffer m_in{nullptr, 0, 0};
    QByteArray m_ready;
    bool m_isBetweenFrames = false;
    bool m_isFull = false; ///< more may wait in the unpacker
};

/// Counts bytes and asks whether it goes on.
class Progress
{
public:
    explicit Progress(const CopyStep& step)
        : m_step(step)
    {}

    [[nodiscard]] bool goesOn(qint64 bytes)
    {
        m_done += bytes;
        return m_step(m_done);
    }

private:
    const CopyStep& m_step;
    qint64 m_done = 0;
};

bool addFile(Packer& packer, const ArchiveMember& member, Progress& progress)
{
    const linuxfiles::Descriptor file = openFile(member.file, O_RDONLY);
    const off_t size = ::lseek(file.number(), 0, SEEK_END);
    ::lseek(file.number(), 0, SEEK_SET);
    packer.add(headerOf(member.name.toUtf8(), size));
    for (qint64 left = size; left > 0;) {
        const QByteArray bytes = readSome(file.number(), std::min(left, kBlock), member.file);
        if (bytes.isEmpty()) {
            throw IoError(member.file, u"die Datei wurde inzwischen kürzer"_s);
        }
        packer.add(bytes);
        left -= bytes.size();
        if (!progress.goesOn(bytes.size())) {
            return false;
        }
    }
    packer.add(QByteArray(qsizetype(paddingOf(size)), '\0'));
    return true;
}

bool addMember(Packer& packer, const ArchiveMember& member, Progress& progress)
{
    if (!member.file.isEmpty()) {
        return addFile(packer, member, progress);
    }
    packer.add(headerOf(member.name.toUtf8(), member.bytes.size()));
    packer.add(member.bytes);
    packer.add(QByteArray(qsizetype(paddingOf(member.bytes.size())), '\0'));
    return progress.goesOn(member.bytes.size());
}

bool takeMember(Unpacker& unpacker, const Entry& entry, const QString& place, Progress& progress)
{
    std::unique_ptr<NewFile> file;
    if (!place.isEmpty()) {
        file = std::make_unique<NewFile>(place);
    }
    for (qint64 left = entry.size; left > 0;) {
        const QByteArray bytes = unpacker.take(std::min(left, kBlock));
        if (file) {
            file->write(bytes);
        }
        left -= bytes.size();
        if (!progress.goesOn(bytes.size())) {
            return false;
        }
    }
    (void)unpacker.take(paddingOf(entry.size));
    if (file) {
        file->finish();
    }
    return true;
}

} // namespace

bool ZstdArchives::write(const QString& archive,
                         const std::vector<ArchiveMember>& members,
                         const CopyStep& step)
{
    NewFile file(archive);
    Packer packer(file);
    Progress progress(step);
    for (size_t i = 0; i < members.size(); ++i) {
        if (!addMember(packer, members[i], progress)) {
            return false;
        }
        if (i == 0) {
            packer.endFrame();
        }
    }
    packer.add(QByteArray(2 * kHeader, '\0'));
    packer.endFrame();
    file.finish();
    return true;
}

QByteArray ZstdArchives::first(const QString& archive)
{
    Unpacker unpacker(archive);
    const Entry entry = entryOf(unpacker.take(kHeader), archive);
    if (entry.name.isEmpty() || entry.size > kMaxFirst) {
        throw IoError(archive, damaged());
    }
    return unpacker.take(entry.size);
}

bool ZstdArchives::unpack(const QString& archive,
                          const std::function<QString(const QString& name)>& placeOf,
                          const CopyStep& step)
{
    Unpacker unpacker(archive);
    Progress progress(step);
    for (;;) {
        const Entry entry = entryOf(unpacker.take(kHeader), archive);
        if (entry.name.isEmpty()) {
            break;
        }
        if (!takeMember(unpacker, entry, placeOf(entry.name), progress)) {
            return false;
        }
    }
    unpacker.finish();
    return true;
}

} // namespace melovane
