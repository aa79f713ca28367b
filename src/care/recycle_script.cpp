#include "care/recycle_script.h"

namespace melovane::recyclescript {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The first letter that is no control character.
constexpr char16_t kFirstLetter = u' ';

QString inQuotes(const QString& path)
{
    QString inner;
    for (const QChar sign : path) {
        if (sign == u'"' || sign.unicode() < kFirstLetter) {
            inner += u'?';
        } else if (sign == u'%') {
            inner += u"%%"_s;
        } else {
            inner += sign;
        }
    }
    return u'"' + inner + u'"';
}

QByteArray asOneWord(QByteArray text)
{
    return '\'' + text.replace('\'', "'\\''") + '\'';
}

} // namespace

QString batchLine(const QString& recycled, const QString& oldFolder)
{
    return u"Move /Y "_s + inQuotes(recycled) + u' ' + inQuotes(oldFolder) + u'\n';
}

QByteArray shellHead()
{
    return R"(#!/bin/sh
# Puts files back where they were; run it with sh. A file that is in the way stays.
back() {
    if [ ! -e "$1" ] && [ ! -L "$1" ]; then
        return 0
    fi
    if [ -e "$2" ] || [ -L "$2" ]; then
        printf '%s: is there already\n' "$2" >&2
        failed=1
        return 0
    fi
    mkdir -p -- "${2%/*}/" && mv -- "$1" "$2" || failed=1
}
failed=0
trap 'exit $failed' EXIT
)";
}

QByteArray shellLine(const QByteArray& recycled, const QByteArray& original)
{
    return "back " + asOneWord(recycled) + ' ' + asOneWord(original) + '\n';
}

} // namespace melovane::recyclescript
