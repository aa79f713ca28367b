#include "platform/db/kept_text.h"

#include <algorithm>

namespace melovane {

namespace {

/// The first byte of every surrogate in three bytes, and of few other letters.
constexpr char kSurrogateLead = '\xED';

/// True when a surrogate in three bytes begins at `at`.
bool isSurrogate(std::string_view bytes, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    return at + 2 < bytes.size() && byte(at) == 0xED && byte(at + 1) >= 0xA0 &&
           byte(at + 1) <= 0xBF && (byte(at + 2) & 0xC0) == 0x80;
}

QString decoded(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

QString withSurrogates(std::string_view bytes)
{
    QString text;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!isSurrogate(bytes, i)) {
            continue;
        }
        text.append(decoded(bytes.substr(begin, i - begin)));
        text.append(QChar(0xD000 | ((bytes[i + 1] & 0x3F) << 6) | (bytes[i + 2] & 0x3F)));
        i += 2;
        begin = i + 1;
    }
    return text + decoded(bytes.substr(begin));
}

bool hasSurrogate(std::string_view bytes)
{
    std::size_t at = bytes.find(kSurrogateLead);
    while (at != std::string_view::npos && !isSurrogate(bytes, at)) {
        at = bytes.find(kSurrogateLead, at + 1);
    }
    return at != std::string_view::npos;
}

bool isAscii(std::string_view bytes)
{
    // Without a way out of the loop many bytes are looked at at once.
    unsigned char all = 0;
    for (const char byte : bytes) {
        all |= static_cast<unsigned char>(byte);
    }
    return all < 0x80;
}

/// Writes letters of one and two bytes, which most texts have alone.
/// \return behind what was written; null when there are others
QChar* writeLatin(QChar* to, std::string_view bytes)
{
    if (isAscii(bytes)) {
        return std::transform(bytes.begin(), bytes.end(), to,
                              [](char byte) { return QLatin1Char(byte); });
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x80) {
            *to++ = QLatin1Char(bytes[i]);
            continue;
        }
        const auto next = static_cast<unsigned char>(i + 1 < bytes.size() ? bytes[i + 1] : '\0');
        if (byte < 0xC2 || byte > 0xDF || (next & 0xC0) != 0x80) {
            return nullptr;
        }
        *to++ = QChar(char16_t((byte & 0x1F) << 6 | (next & 0x3F)));
        ++i;
    }
    return to;
}

} // namespace

QString keptText(std::string_view bytes)
{
    return hasSurrogate(bytes) ? withSurrogates(bytes) : decoded(bytes);
}

void appendKept(QString& to, std::string_view bytes)
{
    const qsizetype before = to.size();
    to.resize(before + qsizetype(bytes.size()));
    const QChar* const end = writeLatin(to.data() + before, bytes);
    if (end) {
        to.resize(end - to.constData());
    } else {
        to.resize(before);
        to.append(keptText(bytes));
    }
}

} // namespace melovane
