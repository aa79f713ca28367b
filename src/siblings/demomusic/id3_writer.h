#pragma once

#include <QByteArray>
#include <QString>

namespace melovane::demomusic {

/// How a tag's texts are stored. Numbers of the format.
enum class TextEncoding
{
    Latin1 = 0,
    Utf16 = 1,   ///< little endian with a byte order mark
    Utf16Be = 2, ///< version 4 only
    Utf8 = 3,    ///< version 4 only
};

/// Collects frames of an ID3v2 tag and writes it. Frames stand in the order of the calls.
class Id3v2Writer
{
public:
    /// \param version 2, 3 or 4 for ID3v2.2, 2.3 and 2.4
    explicit Id3v2Writer(int version = 3, TextEncoding encoding = TextEncoding::Utf16);

    /// A text frame by its four-letter name ("TIT2"), in version 2 stored under its short name.
    Id3v2Writer& text(const QByteArray& id, const QString& value);
    /// A text with a name of the user's own.
    Id3v2Writer& userText(const QString& name, const QString& value);
    Id3v2Writer& comment(const QString& description, const QString& value);
    Id3v2Writer& rating(const QByteArray& address, int value, quint32 counter = 0);
    /// A front cover with an empty description.
    Id3v2Writer& picture(const QByteArray& bytes, const QByteArray& mimeType = "image/jpeg");
    /// A frame as it stands; `flags` are the two bytes behind its size (versions 3 and 4).
    Id3v2Writer& frame(const QByteArray& id, const QByteArray& body, quint16 flags = 0);

    /// Overwrites the size in the header of the frame added last (plain bytes, not seven bits
    /// each), for broken files.
    Id3v2Writer& lieAboutLastSize(quint32 size);

    /// The whole tag: header, frames, padding.
    [[nodiscard]] QByteArray tag(int padding = 0) const;
    /// The tag with a size of its own choosing in the header, for broken files.
    [[nodiscard]] QByteArray tagWithSize(quint32 size, int padding = 0) const;
    /// The tag with unsynchronisation applied to all of its bytes, as version 3 does it.
    [[nodiscard]] QByteArray unsynchronised() const;

private:
    [[nodiscard]] QByteArray encoded(const QString& text, bool terminated) const;
    [[nodiscard]] QByteArray encodingByte() const;
    [[nodiscard]] QByteArray sizeField(quint32 size) const;
    [[nodiscard]] QByteArray header(quint32 size, char flags) const;

    int m_version;
    TextEncoding m_encoding;
    QByteArray m_frames;
    qsizetype m_lastFrame = 0;
};

/// Fields of the old tag at a file's end; texts are cut to their places.
struct Id3v1Fields
{
    QByteArray title, artist, album, year, comment;
    int track = 0;   ///< above 0 the comment is cut to 28 bytes
    int genre = 255; ///< 255 is none
};

/// The 128 bytes of an ID3v1 tag.
[[nodiscard]] QByteArray id3v1Tag(const Id3v1Fields& fields);

} // namespace melovane::demomusic
