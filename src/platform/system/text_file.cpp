#include "platform/system/text_file.h"

#include <QStringDecoder>

#include <array>

namespace melovane::textfile {

namespace {

/// Windows-1252 in the range where it differs from Latin-1; the five unused bytes stay control
/// signs, so that nothing is lost.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromWindows1252(const QByteArray& bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& sign : text) {
        const char16_t code = sign.unicode();
        if (code >= 0x80 && code < 0xA0) {
            sign = kWindows1252[code - 0x80];
        }
    }
    return text;
}

} // namespace

QString decode(const QByteArray& bytes)
{
    const QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF")) {
        const QByteArrayView rest = view.sliced(3);
        return rest.isValidUtf8() ? QString::fromUtf8(rest) : fromWindows1252(bytes.sliced(3));
    }
    if (view.startsWith("\xFF\xFE") || view.startsWith("\xFE\xFF")) {
        QStringDecoder decoder(QStringDecoder::Utf16, QStringDecoder::Flag::Stateless);
        return decoder(view);
    }
    return view.isValidUtf8() ? QString::fromUtf8(view) : fromWindows1252(bytes);
}

QStringList lines(const QString& text)
{
    QStringList result;
    qsizetype start = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] != u'\n' && text[at] != u'\r') {
            continue;
        }
        result.append(text.sliced(start, at - start));
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') {
            ++at;
        }
        start = at + 1;
    }
    if (start < text.size()) {
        result.append(text.sliced(start));
    }
    return result;
}

} // namespace melovane::textfile
