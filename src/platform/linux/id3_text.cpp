#include "platform/linux/id3_text.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>

namespace melovane::linux_media {

namespace {

constexpr int kLatin1 = 0;
constexpr int kUtf16 = 1;
constexpr int kUtf16Be = 2;
constexpr int kUtf8 = 3;

/// The letters of Windows-1252 at 0x80 to 0x9F; the five places without one keep their number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isWide(int encoding)
{
    return encoding == kUtf16 || encoding == kUtf16Be;
}

/// Length of the first text in bytes, without its terminator.
size_t textLength(int encoding, std::span<const quint8> bytes)
{
    if (!isWide(encoding)) {
        const void* zero = bytes.empty() ? nullptr : std::memchr(bytes.data(), 0, bytes.size());
        return zero == nullptr
                   ? bytes.size()
                   : static_cast<size_t>(static_cast<const quint8*>(zero) - bytes.data());
    }
    size_t length = 0;
    while (length + 1 < bytes.size() && (bytes[length] != 0 || bytes[length + 1] != 0)) {
        length += 2;
    }
    return length;
}

void cutBlanksAtEnd(QString& text)
{
    qsizetype length = text.size();
    while (length > 0 && (text.at(length - 1) == u' ' || text.at(length - 1) == u'\0')) {
        --length;
    }
    text.truncate(length);
}

QString fromWide(std::span<const quint8> bytes, bool bigEndian)
{
    QString text(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    QChar* out = text.data();
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned high = bigEndian ? bytes[i] : bytes[i + 1];
        const unsigned low = bigEndian ? bytes[i + 1] : bytes[i];
        *out++ = QChar(static_cast<char16_t>(high << 8U | low));
    }
    // Half a pair could not be stored as UTF-8 by anybody.
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate()) {
            continue;
        }
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() &&
            text.at(i + 1).isLowSurrogate()) {
            ++i;
        } else {
            text[i] = QChar::ReplacementCharacter;
        }
    }
    return text;
}

/// The upper bytes of most letters are zero.
bool isBigEndianWithoutMark(std::span<const quint8> bytes)
{
    int upperFirst = 0;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        upperFirst += (bytes[i] == 0 ? 1 : 0) - (bytes[i + 1] == 0 ? 1 : 0);
    }
    return upperFirst > 0;
}

QString fromUtf16WithMark(std::span<const quint8> bytes)
{
    bool bigEndian = isBigEndianWithoutMark(bytes);
    if (bytes.size() >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF) {
        bigEndian = true;
        bytes = bytes.subspan(2);
    } else if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
        bigEndian = false;
        bytes = bytes.subspan(2);
    }
    return fromWide(bytes, bigEndian);
}

QString fromUtf8(std::span<const quint8> bytes)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(bytes.data()),
                             static_cast<qsizetype>(bytes.size()));
}

QString fromSingleBytes(std::span<const quint8> bytes)
{
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (const quint8 byte : bytes) {
        *out++ = QChar(byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80U] : char16_t{byte});
    }
    return text;
}

} // namespace

QString decodeText(int encoding, std::span<const quint8> bytes)
{
    const size_t widest = static_cast<size_t>(kLongestText) * (isWide(encoding) ? 2 : 1);
    bytes = bytes.first(std::min(textLength(encoding, bytes), widest));
    QString text;
    switch (encoding) {
    case kLatin1:
        text = isUtf8InSingleBytes(bytes) ? fromUtf8(bytes) : fromSingleBytes(bytes);
        break;
    case kUtf16:
        text = fromUtf16WithMark(bytes);
        break;
    case kUtf16Be:
        text = fromWide(bytes, true);
        break;
    case kUtf8:
        text = fromUtf8(bytes);
        break;
    }
    cutBlanksAtEnd(text);
    return text;
}

QString decodeValues(int encoding, std::span<const quint8> bytes)
{
    QString result;
    while (!bytes.empty() && result.size() < kLongestText) {
        const QString value = decodeText(encoding, bytes);
        if (!result.isEmpty() && !value.isEmpty()) {
            result += kValueSeparator;
        }
        result += value;
        bytes = behindText(encoding, bytes);
    }
    return result.left(kLongestText);
}

bool isUtf8InSingleBytes(std::span<const quint8> bytes)
{
    if (std::all_of(bytes.begin(), bytes.end(), [](quint8 byte) { return byte < 0x80; })) {
        return false;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    return !decoder.hasError() && std::none_of(text.begin(), text.end(), [](QChar letter) {
        return letter.unicode() >= 0x80 && letter.unicode() < 0xA0;
    });
}

std::span<const quint8> behindText(int encoding, std::span<const quint8> bytes)
{
    const size_t skip = textLength(encoding, bytes) + (isWide(encoding) ? 2 : 1);
    return skip < bytes.size() ? bytes.subspan(skip) : std::span<const quint8>();
}

NamedText decodeComment(std::span<const quint8> content)
{
    constexpr size_t kLanguage = 3;
    if (content.size() < 1 + kLanguage) {
        return {};
    }
    const int encoding = content[0];
    const auto texts = content.subspan(1 + kLanguage);
    return {decodeText(encoding, texts), decodeText(encoding, behindText(encoding, texts))};
}

NamedText decodeUserText(std::span<const quint8> content)
{
    if (content.empty()) {
        return {};
    }
    constexpr size_t kLongestName = 64;
    const int encoding = content[0];
    const auto texts = content.subspan(1);
    return {decodeText(encoding, texts.first(std::min(texts.size(), kLongestName))),
            decodeText(encoding, behindText(encoding, texts))};
}

QString decodeSingleBytes(std::span<const quint8> bytes)
{
    QString text = fromSingleBytes(bytes.first(textLength(kLatin1, bytes)));
    cutBlanksAtEnd(text);
    return text;
}

QString yearOfRecordingTime(const QString& text)
{
    return text.size() > 4 && text.at(4) == u'-' ? text.left(4) : text;
}

} // namespace melovane::linux_media
