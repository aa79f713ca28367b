#include "trackedit/set_id3_tag.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

namespace melovane::Mod_Set_ID3_TAG {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char kPrivateMark[] = "AUD";
constexpr char kTagMark[] = "TAG";
/// Value and place of the number that every written private block holds.
constexpr quint16 kPrivateNumber = 300;
constexpr qsizetype kPrivateNumberAt = 3;
constexpr qsizetype kPrivateRestAt = 5;
/// Hours of music fit; a file of this size is read as a whole.
constexpr qint64 kMaxFile = 1024LL * 1024 * 1024;
/// Letters that the buffers of the former store gave back, without the terminator: keep.
constexpr qsizetype kMaxRegistryText = 1023;
constexpr qsizetype kMaxClassName = 249;

const QString kControlClass = u"AfxOleControl42"_s;

QByteArray field(const QString& text, qsizetype length)
{
    return text.toLatin1().leftJustified(length, '\0', true);
}

/// The program in "Software\Melovane\<program>"; the empty text for the key above; null for others.
QString programOf(const QString& path)
{
    const QStringList parts = path::components(path);
    const bool ours = (parts.size() == 2 || parts.size() == 3) &&
                      parts[0].compare("Software"_L1, Qt::CaseInsensitive) == 0 &&
                      parts[1].compare("Melovane"_L1, Qt::CaseInsensitive) == 0;
    return ours ? parts.value(2, u""_s) : QString();
}

} // namespace

QByteArray tailBytes(const FileTail& tail)
{
    QByteArray bytes(kPrivateMark);
    bytes += char(kPrivateNumber & 0xFF);
    bytes += char(kPrivateNumber >> 8);
    bytes += tail.privateRest.leftJustified(kPrivateLength - kPrivateRestAt, '\0', true);
    bytes += kTagMark;
    bytes += field(tail.Title, 30) + field(tail.Artist, 30) + field(tail.Album, 30);
    bytes += field(tail.Year, 4) + field(tail.Comment, 30);
    bytes += char(tail.Genre);
    return bytes;
}

qint64 tailOffset(QByteArrayView last, qint64 size)
{
    if (last.startsWith(kPrivateMark)) {
        return size - kTailLength;
    }
    if (last.size() >= kTailLength && last.sliced(kPrivateLength).startsWith(kTagMark)) {
        return size - kTagLength;
    }
    return size - 1;
}

bool writeFileTail(Files& files, const QString& path, const FileTail& tail)
{
    try {
        const auto facts = files.facts(path);
        QByteArray bytes = files.read(path, kMaxFile);
        if (!facts || bytes.size() < kTailLength) {
            return false;
        }
        const QByteArray last = bytes.last(kTailLength);
        bytes.truncate(tailOffset(last, bytes.size()));
        files.makeWritable(path);
        files.writeWhole(path, bytes + tailBytes(tail));
        return files.setModified(path, facts->modified);
    } catch (const IoError&) {
        return false;
    }
}

bool writeRegistryText(Environment& environment,
                       RootKey root,
                       const QString& path,
                       const QString& name,
                       const QString& text)
{
    const QString program = programOf(path);
    if (root != RootKey::CurrentUser || program.isEmpty()) {
        return false;
    }
    const QString stored = text.isEmpty() ? u" "_s : text;
    environment.setUserValue(program, name, stored);
    return environment.userValue(program, name) == stored;
}

QString readRegistryValue(const Environment& environment,
                          RootKey root,
                          const QString& path,
                          const QString& name)
{
    const QString program = programOf(path);
    QString value;
    if (root == RootKey::CurrentUser && !program.isEmpty()) {
        value = environment.userValue(program, name);
    } else if (root == RootKey::LocalMachine && !program.isNull() && program.isEmpty()) {
        value = environment.machineValue(name);
    }
    const qsizetype zero = value.indexOf(QChar(u'\0'));
    return value.left(zero < 0 ? kMaxRegistryText : qMin(zero, kMaxRegistryText));
}

bool isControlWindow(const std::function<QString(int)>& classNameOf, int handle)
{
    const QString name = classNameOf(handle).left(kMaxClassName);
    return name.size() > 1 && name.contains(kControlClass);
}

} // namespace melovane::Mod_Set_ID3_TAG
