#include "platform/linux/mpeg_file.h"

#include "platform/linux/system_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace melovane::linux_media {

namespace {

/// Read at once: the tag's texts and the first frames of most files lie within it.
constexpr qint64 kPiece = qint64{16} * 1024;

QString systemReason(int number)
{
    return QString::fromStdString(std::generic_category().message(number));
}

} // namespace

MpegFile::MpegFile(const QString& path)
{
    // A pipe named like a song would block without O_NONBLOCK.
    m_descriptor =
        ::open(linuxnames::systemPath(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_descriptor < 0) {
        m_reason = systemReason(errno);
        return;
    }
    struct stat facts = {};
    if (::fstat(m_descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        m_reason = QStringLiteral("keine gewöhnliche Datei");
        ::close(m_descriptor);
        m_descriptor = -1;
        return;
    }
    m_size = facts.st_size;
}

MpegFile::~MpegFile()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

std::span<const quint8> MpegFile::at(qint64 offset, qint64 length)
{
    if (offset < 0 || offset >= m_size || length <= 0) {
        return {};
    }
    length = std::min({length, m_size - offset, kLargestPiece});
    if (offset < m_begin || offset + length > m_begin + m_filled) {
        load(offset, std::max(length, kPiece));
    }
    const qint64 have = std::clamp<qint64>(m_begin + m_filled - offset, 0, length);
    return {m_buffer.data() + (offset - m_begin), static_cast<size_t>(have)};
}

void MpegFile::load(qint64 offset, qint64 length)
{
    length = std::min(length, m_size - offset);
    if (m_buffer.size() < static_cast<size_t>(length)) {
        m_buffer.resize(static_cast<size_t>(length));
    }
    m_begin = offset;
    m_filled = 0;
    while (m_filled < length) {
        const ssize_t got = ::pread(m_descriptor, m_buffer.data() + m_filled,
                                    static_cast<size_t>(length - m_filled), offset + m_filled);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return;
        }
        m_filled += got;
    }
}

} // namespace melovane::linux_media
