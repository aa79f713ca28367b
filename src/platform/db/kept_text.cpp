#include "platform/db/kept_text.h"

#include <QStringDecoder>

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

} // namespace

QString keptText(std::string_view bytes)
{
    return hasSurrogate(bytes) ? withSurrogates(bytes) : decoded(bytes);
}

void appendKept(QString& to, std::string_view bytes)
{
    if (hasSurrogate(bytes)) {
        to.append(withSurrogates(bytes));
        return;
    }
    const qsizetype before = to.size();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    to.resize(before + decoder.requiredSpace(qsizetype(bytes.size())));
    const QChar* const end = decoder.appendToBuffer(
        to.data() + before, QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    to.resize(end - to.constData());
}

} // namespace melovane
