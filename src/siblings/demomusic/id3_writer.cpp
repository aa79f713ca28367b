#include "siblings/demomusic/id3_writer.h"

#include <QHash>
#include <QStringEncoder>

namespace melovane::demomusic {

namespace {

/// Sizes are stored with seven bits in each byte so that no byte looks like the start of a frame.
QByteArray sevenBits(quint32 size)
{
    QByteArray bytes(4, '\0');
    for (int i = 3; i >= 0; --i) {
        bytes[i] = static_cast<char>(size & 0x7FU);
        size >>= 7U;
    }
    return bytes;
}

QByteArray bigEndian(quint32 number, int width)
{
    QByteArray bytes(width, '\0');
    for (int i = width - 1; i >= 0; --i) {
        bytes[i] = static_cast<char>(number & 0xFFU);
        number >>= 8U;
    }
    return bytes;
}

QByteArray shortName(const QByteArray& id)
{
    static const QHash<QByteArray, QByteArray> names = {
        {"TIT2", "TT2"}, {"TPE1", "TP1"}, {"TALB", "TAL"}, {"TCON", "TCO"},
        {"TYER", "TYE"}, {"TDRC", "TYE"}, {"TRCK", "TRK"}, {"TBPM", "TBP"},
        {"COMM", "COM"}, {"TXXX", "TXX"}, {"POPM", "POP"}, {"APIC", "PIC"}};
    return names.value(id, id.left(3));
}

} // namespace

Id3v2Writer::Id3v2Writer(int version, TextEncoding encoding)
    : m_version(version)
    , m_encoding(encoding)
{}

QByteArray Id3v2Writer::encodingByte() const
{
    return QByteArray(1, static_cast<char>(m_encoding));
}

QByteArray Id3v2Writer::encoded(const QString& text, bool terminated) const
{
    switch (m_encoding) {
    case TextEncoding::Latin1:
        return text.toLatin1() + QByteArray(terminated ? 1 : 0, '\0');
    case TextEncoding::Utf8:
        return text.toUtf8() + QByteArray(terminated ? 1 : 0, '\0');
    case TextEncoding::Utf16: {
        QStringEncoder encoder(QStringConverter::Utf16LE);
        return QByteArray("\xFF\xFE", 2) + QByteArray(encoder(text)) +
               QByteArray(terminated ? 2 : 0, '\0');
    }
    case TextEncoding::Utf16Be: {
        QStringEncoder encoder(QStringConverter::Utf16BE);
        return QByteArray(encoder(text)) + QByteArray(terminated ? 2 : 0, '\0');
    }
    }
    return {};
}

QByteArray Id3v2Writer::sizeField(quint32 size) const
{
    if (m_version == 2) {
        return bigEndian(size, 3);
    }
    return m_version == 4 ? sevenBits(size) : bigEndian(size, 4);
}

Id3v2Writer& Id3v2Writer::frame(const QByteArray& id, const QByteArray& body, quint16 flags)
{
    m_lastFrame = m_frames.size();
    m_frames += m_version == 2 ? shortName(id) : id;
    m_frames += sizeField(static_cast<quint32>(body.size()));
    if (m_version != 2) {
        m_frames += bigEndian(flags, 2);
    }
    m_frames += body;
    return *this;
}

Id3v2Writer& Id3v2Writer::lieAboutLastSize(quint32 size)
{
    const int idLength = m_version == 2 ? 3 : 4;
    const QByteArray field = m_version == 2 ? bigEndian(size, 3) : bigEndian(size, 4);
    m_frames.replace(m_lastFrame + idLength, field.size(), field);
    return *this;
}

Id3v2Writer& Id3v2Writer::text(const QByteArray& id, const QString& value)
{
    return frame(id, encodingByte() + encoded(value, false));
}

Id3v2Writer& Id3v2Writer::userText(const QString& name, const QString& value)
{
    return frame("TXXX", encodingByte() + encoded(name, true) + encoded(value, false));
}

Id3v2Writer& Id3v2Writer::comment(const QString& description, const QString& value)
{
    return frame("COMM",
                 encodingByte() + "deu" + encoded(description, true) + encoded(value, false));
}

Id3v2Writer& Id3v2Writer::rating(const QByteArray& address, int value, quint32 counter)
{
    return frame("POPM", address + '\0' + static_cast<char>(value) + bigEndian(counter, 4));
}

Id3v2Writer& Id3v2Writer::picture(const QByteArray& bytes, const QByteArray& mimeType)
{
    constexpr char kFrontCover = 3;
    const QByteArray latin1(1, '\0');
    const QByteArray type = m_version == 2 ? QByteArray("JPG") : mimeType + '\0';
    return frame("APIC", latin1 + type + kFrontCover + '\0' + bytes);
}

QByteArray Id3v2Writer::header(quint32 size, char flags) const
{
    return QByteArray("ID3") + static_cast<char>(m_version) + '\0' + flags + sevenBits(size);
}

QByteArray Id3v2Writer::tag(int padding) const
{
    return tagWithSize(static_cast<quint32>(m_frames.size() + padding), padding);
}

QByteArray Id3v2Writer::tagWithSize(quint32 size, int padding) const
{
    return header(size, '\0') + m_frames + QByteArray(padding, '\0');
}

QByteArray Id3v2Writer::unsynchronised() const
{
    QByteArray safe;
    for (qsizetype i = 0; i < m_frames.size(); ++i) {
        safe += m_frames.at(i);
        const bool last = i + 1 == m_frames.size();
        const auto next = static_cast<unsigned char>(last ? 0 : m_frames.at(i + 1));
        if (static_cast<unsigned char>(m_frames.at(i)) == 0xFF &&
            (last || next == 0 || next >= 0xE0)) {
            safe += '\0';
        }
    }
    return header(static_cast<quint32>(safe.size()), static_cast<char>(0x80)) + safe;
}

QByteArray id3v1Tag(const Id3v1Fields& fields)
{
    const auto place = [](const QByteArray& text, int width) {
        return text.left(width).leftJustified(width, '\0');
    };
    QByteArray tag = "TAG" + place(fields.title, 30) + place(fields.artist, 30) +
                     place(fields.album, 30) + place(fields.year, 4) + place(fields.comment, 30);
    if (fields.track > 0) {
        tag[125] = '\0';
        tag[126] = static_cast<char>(fields.track);
    }
    return tag + static_cast<char>(fields.genre);
}

} // namespace melovane::demomusic
