#include "platform/linux/system_names.h"

#include "platform/system/path_text.h"
#include "platform/system/readable_name.h"

#include <sys/stat.h>

namespace melovane::linuxnames {

namespace {

uchar byteAt(const QByteArray& bytes, qsizetype at)
{
    return at < bytes.size() ? uchar(bytes[at]) : uchar(0);
}

/// Bytes of the valid UTF-8 sequence at a place, 0 when there is none.
qsizetype sequenceLength(const QByteArray& bytes, qsizetype at)
{
    const uchar first = byteAt(bytes, at);
    const qsizetype length = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
    const bool whole = length > 0 && at + length <= bytes.size();
    return whole && QByteArrayView(bytes).sliced(at, length).isValidUtf8() ? length : 0;
}

} // namespace

QString decode(const QByteArray& name)
{
    QString text = QString::fromUtf8(name);
    const bool plain = QByteArrayView(name).isValidUtf8() &&
                       std::none_of(text.cbegin(), text.cend(), standsForByte);
    if (plain) {
        return text;
    }
    text.clear();
    for (qsizetype at = 0; at < name.size();) {
        const qsizetype length = sequenceLength(name, at);
        const QString letter = QString::fromUtf8(QByteArrayView(name).sliced(at, length));
        if (length > 0 && !standsForByte(letter.front())) {
            text += letter;
            at += length;
        } else {
            text += QChar(char16_t(kByteLetters + byteAt(name, at)));
            ++at;
        }
    }
    return text;
}

QByteArray encode(const QString& name)
{
    QByteArray bytes;
    bytes.reserve(name.size());
    qsizetype start = 0;
    for (qsizetype at = 0; at < name.size(); ++at) {
        if (standsForByte(name[at])) {
            bytes += QStringView(name).sliced(start, at - start).toUtf8();
            bytes += char(name[at].unicode() & 0xFF);
            start = at + 1;
        }
    }
    return bytes + QStringView(name).sliced(start).toUtf8();
}

QByteArray systemPath(const QString& path)
{
    if (path.isEmpty() || path.contains(QChar(u'\0'))) {
        return {};
    }
    const QByteArray asItStands = encode(path);
    struct stat facts = {};
    // A backslash is a letter of Linux, too: such a name is listed, so it must open again.
    if (!path.contains(u'\\') || ::lstat(asItStands.constData(), &facts) == 0) {
        return asItStands;
    }
    return encode(path::toSystem(path));
}

} // namespace melovane::linuxnames
