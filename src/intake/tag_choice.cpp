#include "intake/tag_choice.h"

#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/readable_name.h"
#include "platform/system/trim_blanks.h"

#include <QStringList>

namespace melovane::tagchoice {

using namespace Qt::Literals::StringLiterals;

QString choose(const QString& id3v1, const QString& id3v2, int setting)
{
    const QString old = trimBlanks(id3v1);
    const QString current = trimBlanks(id3v2);
    switch (setting) {
    case 1:
        return old.isEmpty() ? current : old;
    case 2:
        return current.isEmpty() ? old : current;
    case 3:
        return old;
    case 4:
        return current;
    default:
        return current.size() > old.size() ? current : old;
    }
}

QString numeric(const QString& text)
{
    const QString trimmed = trimBlanks(text);
    return trimmed.isEmpty() ? QString() : QString::number(leadingLong(trimmed));
}

QString cut(const QString& text, int width)
{
    if (width <= 0 || text.size() <= width) {
        return text;
    }
    const bool torn = text.at(width - 1).isHighSurrogate();
    return text.left(torn ? width - 1 : width);
}

QString properCase(const QString& text)
{
    QString result = lowerCase(text);
    bool wordBegins = true;
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (wordBegins) {
            result.replace(i, 1, upperCase(QStringView(result).mid(i, 1)));
        }
        wordBegins = result.at(i).isSpace();
    }
    return result;
}

TitleAndArtist fromFileName(const QString& name)
{
    QString text = readableName(name);
    text.remove(u".mp3"_s, Qt::CaseInsensitive).replace(u'_', u' ');
    const QStringList parts = properCase(text).split(u'-');
    if (parts.size() < 2) {
        return {trimBlanks(parts.first()), {}};
    }
    return {trimBlanks(parts.at(1)), trimBlanks(parts.at(0))};
}

} // namespace melovane::tagchoice
