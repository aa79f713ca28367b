#include "platform/system/quoted_record.h"

#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString quoted(QString text)
{
    text.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\r', u' ');
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

/// Takes a quoted field off the front of `rest`; nothing when its quote is not closed.
std::optional<QString> takeQuoted(QStringView& rest)
{
    QString text;
    for (qsizetype at = 1; at < rest.size(); ++at) {
        if (rest[at] != u'"') {
            text += rest[at];
        } else if (at + 1 < rest.size() && rest[at + 1] == u'"') {
            text += rest[++at];
        } else {
            rest = rest.mid(at + 1);
            return text;
        }
    }
    return std::nullopt;
}

QStringView withoutLeadingBlanks(QStringView text)
{
    while (text.startsWith(u' ')) {
        text = text.mid(1);
    }
    return text;
}

} // namespace

QString recordLine(const std::vector<RecordField>& fields)
{
    QStringList parts;
    for (const RecordField& field : fields) {
        const auto* const text = std::get_if<QString>(&field);
        parts.append(text ? quoted(*text) : QString::number(std::get<qint64>(field)));
    }
    return parts.join(u',');
}

std::optional<QStringList> readRecordLine(QStringView line)
{
    QStringList fields;
    QStringView rest = line;
    while (true) {
        rest = withoutLeadingBlanks(rest);
        if (rest.startsWith(u'"')) {
            const auto text = takeQuoted(rest);
            rest = withoutLeadingBlanks(rest);
            if (!text || !(rest.isEmpty() || rest.startsWith(u','))) {
                return std::nullopt;
            }
            fields.append(*text);
        } else {
            const qsizetype comma = rest.indexOf(u',');
            fields.append(trimBlanks(comma < 0 ? rest : rest.left(comma)));
            rest = comma < 0 ? QStringView() : rest.mid(comma);
        }
        if (rest.isEmpty()) {
            return fields;
        }
        rest = rest.mid(1);
    }
}

} // namespace melovane
