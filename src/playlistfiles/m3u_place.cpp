#include "playlistfiles/m3u_place.h"

#include "platform/system/path_text.h"
#include "platform/system/text_file.h"

namespace melovane::m3uplace {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters; no system has longer paths.
constexpr qsizetype kLongestPath = 32'767;

/// Each "%" with two hexadecimal digits as the byte that it stands for.
QString decoded(const QString& text)
{
    return textfile::decode(QByteArray::fromPercentEncoding(text.toUtf8()));
}

/// The path of an address, without its "file:"; what stands as a host is a server.
QString withoutScheme(const QString& address)
{
    QString rest = address.mid(5);
    if (!rest.startsWith("//"_L1)) {
        return rest;
    }
    rest.remove(0, 2);
    if (rest.startsWith("localhost/"_L1, Qt::CaseInsensitive)) {
        rest.remove(0, 9);
    }
    const bool isDrive =
        rest.size() > 2 && path::isAbsolute(QStringView(rest).mid(1)) && rest[2] == u':';
    if (rest.startsWith(u'/')) {
        return isDrive ? rest.mid(1) : rest;
    }
    return path::isAbsolute(rest) ? rest : u"\\\\"_s + rest;
}

} // namespace

QString cleaned(const QString& path)
{
    if (path.size() > kLongestPath) {
        return {};
    }
    const QStringList parts = path::components(path);
    const bool hasRoot = path::isAbsolute(path);
    const bool isDrive = parts.size() > 1 && path.startsWith(parts[0] + parts[1]);
    if (!hasRoot && isDrive) {
        return path; // "C:x" counts from the folder that is current on that drive
    }
    QStringList kept;
    for (const QString& part : parts) {
        if (part == ".."_L1 && !kept.isEmpty() && kept.last() != ".."_L1) {
            if (kept.size() > (hasRoot ? 1 : 0)) {
                kept.removeLast();
            }
        } else if (part != "."_L1) {
            kept.append(part);
        }
    }
    if (kept.isEmpty()) {
        return {};
    }
    const QChar separator = path::separatorOf(path);
    QString result = kept.takeFirst();
    for (const QString& part : kept) {
        if (!path::isSeparator(result.back())) {
            result += separator;
        }
        result += part;
    }
    return result;
}

QStringList readings(const QString& file, const QString& line)
{
    QStringList result;
    const bool isAddress = file.startsWith("file:"_L1, Qt::CaseInsensitive);
    const QString plain = isAddress ? withoutScheme(file) : file;
    const bool isEncoded = plain.contains(u'%');
    // An address is always encoded, a plain path hardly ever is.
    if (isAddress && isEncoded) {
        result.append(decoded(plain));
    }
    result.append(plain);
    if (!isAddress && isEncoded) {
        result.append(decoded(plain));
    }
    if (line.size() != file.size() && !isAddress) {
        result.append(line);
    }
    const QString bare = plain.trimmed();
    if (bare != plain && !bare.isEmpty()) {
        result.append(bare);
    }
    return result;
}

} // namespace melovane::m3uplace
