#include "platform/sqlite/dialect/stored_text.h"

#include "platform/db/kept_text.h"

namespace melovane::sqlite {

namespace {

void appendSurrogate(QByteArray& bytes, char16_t unit)
{
    bytes.append(char(0xE0 | (unit >> 12)));
    bytes.append(char(0x80 | ((unit >> 6) & 0x3F)));
    bytes.append(char(0x80 | (unit & 0x3F)));
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
    return keptText({bytes, std::size_t(size)});
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
