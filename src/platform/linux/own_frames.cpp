#include "platform/linux/own_frames.h"

#include "platform/linux/id3_tags.h"
#include "platform/linux/id3_text.h"

#include <QStringEncoder>

#include <array>
#include <cstring>

namespace melovane::linux_media {

using namespace Qt::Literals::StringLiterals;

namespace {

enum class Encoding : char
{
    SingleBytes = 0,
    Utf16 = 1,
    Utf8 = 3,
};

/// Picture type of a front cover.
constexpr quint8 kFrontCover = 3;
/// Counter of plays of a new rating frame.
constexpr int kCounterLength = 4;
/// With its terminator.
constexpr qsizetype kAddressLength = sizeof kRatingAddress;

struct FrameName
{
    FrameContent content;
    const char* short2; ///< version 2.2
    const char* name;
};

constexpr std::array kFrameNames = std::to_array<FrameName>({
    {FrameContent::Titel, "TT2", "TIT2"},
    {FrameContent::Interpret, "TP1", "TPE1"},
    {FrameContent::Album, "TAL", "TALB"},
    {FrameContent::Genre, "TCO", "TCON"},
    {FrameContent::Year, "TYE", "TYER"},
    {FrameContent::RecordingTime, "TYE", "TDRC"},
    {FrameContent::Track, "TRK", "TRCK"},
    {FrameContent::BPM, "TBP", "TBPM"},
    {FrameContent::Comment, "COM", "COMM"},
    {FrameContent::Rating, "POP", "POPM"},
    {FrameContent::UserText, "TXX", "TXXX"},
    {FrameContent::Picture, "PIC", "APIC"},
});

Bytes viewOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()), size_t(bytes.size())};
}

/// Single bytes are read as Windows-1252, which has other letters at 0x80 to 0x9F.
bool fitsSingleBytes(const QString& text)
{
    const bool isNarrow = std::all_of(text.begin(), text.end(), [](QChar letter) {
        return letter.unicode() < 0x80 || (letter.unicode() >= 0xA0 && letter.unicode() <= 0xFF);
    });
    // What is UTF-8 by chance would be read as such.
    return isNarrow && !isUtf8InSingleBytes(viewOf(text.toLatin1()));
}

Encoding encodingOf(const QString& text, int version)
{
    if (fitsSingleBytes(text)) {
        return Encoding::SingleBytes;
    }
    return version == 4 ? Encoding::Utf8 : Encoding::Utf16;
}

QByteArray encoded(const QString& text, Encoding encoding)
{
    switch (encoding) {
    case Encoding::SingleBytes:
        return text.toLatin1();
    case Encoding::Utf8:
        return text.toUtf8();
    case Encoding::Utf16:
        break;
    }
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    return encoder(text);
}

QByteArray terminated(const QString& text, Encoding encoding)
{
    return encoded(text, encoding) + QByteArray(encoding == Encoding::Utf16 ? 2 : 1, '\0');
}

QByteArray bytesOf(Bytes bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())};
}

/// Rating byte of "1" to "5"; it lies in the middle of the band that reads so.
char ratingByte(const QString& note)
{
    constexpr std::array<int, 6> kBytes = {0, 1, 64, 128, 196, 255};
    return char(kBytes[std::size_t(std::clamp(note.toInt(), 0, 5))]);
}

QByteArray ratingContent(char rating, Bytes former)
{
    const bool known = qsizetype(former.size()) > kAddressLength;
    const QByteArray counter =
        known ? bytesOf(former).mid(kAddressLength + 1) : QByteArray(kCounterLength, '\0');
    return QByteArray(kRatingAddress, kAddressLength) + rating + counter;
}

QByteArray commentContent(const QString& text, int version, Bytes former)
{
    const Encoding encoding = encodingOf(text, version);
    // Most programs look for a comment in this language first.
    const QByteArray language = former.size() >= 4 ? bytesOf(former.subspan(1, 3)) : "eng"_ba;
    return char(encoding) + language + terminated(QString(), encoding) + encoded(text, encoding);
}

QByteArray userTextContent(const QString& name, const QString& text, int version)
{
    const Encoding encoding = encodingOf(name + text, version);
    return char(encoding) + terminated(name, encoding) + encoded(text, encoding);
}

/// The text as its frame holds it: several values stand there with zeros between them.
QString valuesOf(const OwnField& field, const QString& text, int version, Bytes former)
{
    QString values = text;
    if (holdsValues(field.content, version) && !former.empty() &&
        !behindText(former[0], former.subspan(1)).empty()) {
        values.replace(kValueSeparator.toString(), QString(QChar(u'\0')));
    }
    return values;
}

struct Picture
{
    QByteArray kind; ///< MIME type, in version 2.2 three letters
    int type = -1;   ///< -1 for content that is cut short
    QString description;
    Bytes bytes;
};

Picture pictureOf(int version, Bytes plain)
{
    Picture picture;
    if (plain.empty()) {
        return picture;
    }
    const int encoding = plain[0];
    Bytes rest = plain.subspan(1);
    const void* const end =
        version == 2 || rest.empty() ? nullptr : std::memchr(rest.data(), 0, rest.size());
    if (version != 2 && end == nullptr) {
        return picture;
    }
    const size_t length = version == 2 ? 3 : size_t(static_cast<const quint8*>(end) - rest.data());
    const size_t skip = version == 2 ? length : length + 1;
    if (rest.size() <= skip) {
        return picture;
    }
    picture.kind = bytesOf(rest.first(length));
    picture.type = rest[skip];
    rest = rest.subspan(skip + 1);
    picture.description = decodeText(encoding, rest);
    picture.bytes = behindText(encoding, rest);
    return picture;
}

QByteArray kindOf(int version, const CoverPicture& picture)
{
    if (version != 2) {
        return picture.mimeType.toLatin1();
    }
    return picture.mimeType.endsWith("png"_L1) ? "PNG"_ba : "JPG"_ba;
}

} // namespace

QByteArray frameNameOf(FrameContent content, int version)
{
    const FrameContent stored =
        content == FrameContent::Year && version == 4 ? FrameContent::RecordingTime : content;
    const auto* const found =
        std::find_if(kFrameNames.begin(), kFrameNames.end(),
                     [stored](const FrameName& name) { return name.content == stored; });
    return found == kFrameNames.end() ? QByteArray()
                                      : QByteArray(version == 2 ? found->short2 : found->name);
}

bool holdsField(const OwnField& field, Bytes plain)
{
    switch (field.content) {
    case FrameContent::Comment:
        return plain.size() >= 4 && decodeComment(plain).name.isEmpty();
    case FrameContent::UserText:
        return decodeUserText(plain).name.compare(field.name, Qt::CaseInsensitive) == 0;
    case FrameContent::Rating:
        return qsizetype(plain.size()) > kAddressLength &&
               std::memcmp(plain.data(), kRatingAddress, size_t(kAddressLength)) == 0;
    case FrameContent::Picture:
    case FrameContent::Nothing:
        return false;
    default:
        return true;
    }
}

QString fieldText(const OwnField& field, Bytes plain, int version)
{
    if (plain.empty() || !holdsField(field, plain)) {
        return {};
    }
    switch (field.content) {
    case FrameContent::Comment:
        return decodeComment(plain).text;
    case FrameContent::UserText:
        return decodeUserText(plain).text;
    case FrameContent::Rating:
        return ratingOfByte(plain[size_t(kAddressLength)]);
    default:
        return holdsValues(field.content, version) ? decodeValues(plain[0], plain.subspan(1))
                                                   : decodeText(plain[0], plain.subspan(1));
    }
}

QByteArray contentWith(const OwnField& field, const QString& text, int version, Bytes former)
{
    switch (field.content) {
    case FrameContent::Comment:
        return commentContent(text, version, former);
    case FrameContent::UserText: {
        const QString known = decodeUserText(former).name;
        return userTextContent(known.isEmpty() ? field.name : known, text, version);
    }
    case FrameContent::Rating:
        return ratingContent(ratingByte(text), former);
    default:
        const QString values = valuesOf(field, text, version, former);
        const Encoding encoding = encodingOf(values, version);
        return char(encoding) + encoded(values, encoding);
    }
}

QByteArray contentWithoutRating(Bytes former)
{
    const QByteArray content = ratingContent('\0', former);
    const QByteArray counter = content.mid(kAddressLength + 1);
    const bool counted =
        std::any_of(counter.begin(), counter.end(), [](char byte) { return byte != 0; });
    return counted ? content : QByteArray();
}

bool isFrontCover(int version, Bytes plain)
{
    const Picture picture = pictureOf(version, plain);
    return picture.type == kFrontCover && picture.description.isEmpty();
}

bool isFrontPicture(int version, Bytes plain)
{
    return pictureOf(version, plain).type == kFrontCover;
}

bool showsPicture(int version, Bytes plain, const CoverPicture& picture)
{
    const Picture shown = pictureOf(version, plain);
    return shown.kind == kindOf(version, picture) && bytesOf(shown.bytes) == picture.bytes;
}

CoverPicture coverOf(int version, Bytes plain)
{
    const Picture picture = pictureOf(version, plain);
    const QString kind = QString::fromLatin1(picture.kind);
    const bool isPng = kind.compare("PNG"_L1, Qt::CaseInsensitive) == 0;
    const QString mime = version != 2 ? kind : isPng ? u"image/png"_s : u"image/jpeg"_s;
    return {bytesOf(picture.bytes), mime};
}

QByteArray coverContent(int version, const CoverPicture& picture)
{
    QByteArray content(1, char(Encoding::SingleBytes));
    content += kindOf(version, picture);
    if (version != 2) {
        content += '\0';
    }
    content += char(kFrontCover);
    content += '\0';
    return content + picture.bytes;
}

} // namespace melovane::linux_media
