#pragma once

#include <QString>

#include <span>
#include <vector>

namespace melovane::linux_media {

/// An audio file read piece by piece. Never written, never mapped: a file that another program cuts
/// short while it is read gives fewer bytes and nothing worse.
class MpegFile
{
public:
    explicit MpegFile(const QString& path);
    ~MpegFile();
    MpegFile(const MpegFile&) = delete;
    MpegFile& operator=(const MpegFile&) = delete;

    /// False for what is missing, not readable or not a plain file; reason() then says why.
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    [[nodiscard]] const QString& reason() const { return m_reason; }

    [[nodiscard]] qint64 size() const { return m_size; }

    /// The bytes from `offset`, at most `length`; fewer at the end of the file, none beyond it. At
    /// most kLargestPiece are given. Valid until the next call.
    [[nodiscard]] std::span<const quint8> at(qint64 offset, qint64 length);

    /// No text and no search needs more at once.
    static constexpr qint64 kLargestPiece = qint64{1024} * 1024;

private:
    void load(qint64 offset, qint64 length);

    int m_descriptor = -1;
    QString m_reason;
    qint64 m_size = 0;
    qint64 m_begin = 0; ///< place of m_buffer in the file
    qint64 m_filled = 0;
    std::vector<quint8> m_buffer;
};

/// Numbers as audio files store them, most significant byte first. The caller checks the length.
[[nodiscard]] inline quint32 bigEndian32(const quint8* bytes)
{
    return quint32{bytes[0]} << 24U | quint32{bytes[1]} << 16U | quint32{bytes[2]} << 8U | bytes[3];
}

[[nodiscard]] inline quint32 bigEndian24(const quint8* bytes)
{
    return quint32{bytes[0]} << 16U | quint32{bytes[1]} << 8U | bytes[2];
}

/// Seven bits in each of four bytes.
[[nodiscard]] inline quint32 sevenBits32(const quint8* bytes)
{
    return (bytes[0] & 0x7FU) << 21U | (bytes[1] & 0x7FU) << 14U | (bytes[2] & 0x7FU) << 7U |
           (bytes[3] & 0x7FU);
}

} // namespace melovane::linux_media
