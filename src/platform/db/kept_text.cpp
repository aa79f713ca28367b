#include "platform/db/kept_text.h"

namespace melovane {

namespace {

constexpr QChar kReplacement(0xFFFD);

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

} // namespace

QString keptText(std::string_view bytes)
{
    QString text = decoded(bytes);
    return text.contains(kReplacement) ? withSurrogates(bytes) : text;
}

} // namespace melovane
