#include "platform/system/readable_name.h"

#include "platform/system/text_file.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString readableName(QString name)
{
    for (QChar& letter : name) {
        if (standsForByte(letter)) {
            // One byte alone is never taken for the mark of another encoding.
            const QChar read = textfile::decode(QByteArray(1, char(letter.unicode() & 0xFF))).at(0);
            letter = read.isPrint() ? read : QChar(u'?');
        }
    }
    return name;
}

QString shortened(const QString& text, qsizetype max)
{
    if (text.size() <= max) {
        return text;
    }
    const QString gap = u" ... "_s;
    const qsizetype head = (max - gap.size()) / 2;
    const qsizetype tail = max - gap.size() - head;
    // Never half of a letter of two units.
    const bool headTorn = text[head - 1].isHighSurrogate();
    const bool tailTorn = text[text.size() - tail].isLowSurrogate();
    return text.first(headTorn ? head - 1 : head) + gap + text.last(tailTorn ? tail - 1 : tail);
}

} // namespace melovane
