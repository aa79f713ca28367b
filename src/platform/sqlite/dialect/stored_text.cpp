#include "platform/sqlite/dialect/stored_text.h"

namespace melovane::sqlite {

namespace {

constexpr QChar kReplacement(0xFFFD);

void appendSurrogate(QByteArray& bytes, char16_t unit)
{
    bytes.append(char(0xE0 | (unit >> 12)));
    bytes.append(char(0x80 | ((unit >> 6) & 0x3F)));
    bytes.append(char(0x80 | (unit & 0x3F)));
}

/// True when a surrogate in three bytes begins at `at`.
bool isSurrogate(const char* bytes, qsizetype size, qsizetype at)
{
    const auto byte = [&](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    return at + 2 < size && byte(at) == 0xED && byte(at + 1) >= 0xA0 && byte(at + 1) <= 0xBF &&
           (byte(at + 2) & 0xC0) == 0x80;
}

QByteArray toBytesUnitByUnit(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (unit.isNull()) {
            continue;
        }
        if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            bytes.append(text.sliced(i, 2).toUtf8());
            ++i;
        } else if (unit.isSurrogate()) {
            appendSurrogate(bytes, unit.unicode());
        } else {
            bytes.append(text.sliced(i, 1).toUtf8());
        }
    }
    return bytes;
}

QString fromBytesWithSurrogates(const char* bytes, qsizetype size)
{
    QString text;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < size; ++i) {
        if (!isSurrogate(bytes, size, i)) {
            continue;
        }
        text.append(QString::fromUtf8(bytes + begin, i - begin));
        text.append(QChar(0xD000 | ((bytes[i + 1] & 0x3F) << 6) | (bytes[i + 2] & 0x3F)));
        i += 2;
        begin = i + 1;
    }
    return text + QString::fromUtf8(bytes + begin, size - begin);
}

} // namespace

QByteArray toBytes(QStringView text)
{
    if (text.isValidUtf16() && !text.contains(QChar(u'\0'))) {
        return text.toUtf8();
    }
    return toBytesUnitByUnit(text);
}

QString fromBytes(const char* bytes, qsizetype size)
{
    QString text = QString::fromUtf8(bytes, size);
    return text.contains(kReplacement) ? fromBytesWithSurrogates(bytes, size) : text;
}

QString quotedName(QStringView name)
{
    QString result = name.toString();
    result.replace(u'"', QStringLiteral("\"\""));
    return u'"' + result + u'"';
}

QString nameKey(QStringView name)
{
    return name.toString().toLower();
}

} // namespace melovane::sqlite
