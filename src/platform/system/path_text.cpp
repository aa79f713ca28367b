#include "platform/system/path_text.h"

#include <QString>

#include <algorithm>

namespace melovane::path {

namespace {

bool isDrive(QStringView path)
{
    return path.size() >= 2 && path[1] == u':' && path[0].unicode() < 128 && path[0].isLetter();
}

qsizetype separatorsAt(QStringView path, qsizetype at)
{
    qsizetype end = at;
    while (end < path.size() && isSeparator(path[end])) {
        ++end;
    }
    return end - at;
}

/// Letters of the root with all separators behind it: "/" "C:\" "C:" "\\" or nothing.
qsizetype rootEnd(QStringView path)
{
    const qsizetype drive = isDrive(path) ? 2 : 0;
    return drive + separatorsAt(path, drive);
}

/// The root as it is written, a run of separators reduced: two backslashes (a server) stay two.
QString rootText(QStringView path)
{
    const qsizetype end = rootEnd(path);
    const qsizetype drive = isDrive(path) ? 2 : 0;
    const bool server = drive == 0 && path.startsWith(u"\\\\");
    return path.first(qMin(end, drive + (server ? 2 : 1))).toString();
}

/// Behind the last component, so without separators at the end; not before the root's end.
qsizetype lastComponentEnd(QStringView path)
{
    const qsizetype root = rootEnd(path);
    qsizetype end = path.size();
    while (end > root && isSeparator(path[end - 1])) {
        --end;
    }
    return end;
}

qsizetype lastComponentStart(QStringView path, qsizetype end)
{
    const qsizetype root = rootEnd(path);
    qsizetype start = end;
    while (start > root && !isSeparator(path[start - 1])) {
        --start;
    }
    return start;
}

/// Place of the dot of the last extension, or -1. A dot at the beginning belongs to the name.
qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    const bool onlyDots = std::all_of(name.begin(), name.end(), [](QChar c) { return c == u'.'; });
    return dot > 0 && !onlyDots ? dot : -1;
}

} // namespace

bool isSeparator(QChar sign)
{
    return sign == u'/' || sign == u'\\';
}

QChar separatorOf(QStringView path)
{
    const auto* found = std::find_if(path.begin(), path.end(), isSeparator);
    return found == path.end() ? kSeparator : *found;
}

QString join(QStringView folder, QStringView name)
{
    if (folder.isEmpty() || name.isEmpty()) {
        return (folder.isEmpty() ? name : folder).toString();
    }
    return withSeparator(folder).append(name.sliced(separatorsAt(name, 0)));
}

QString withSeparator(QStringView folder)
{
    if (folder.isEmpty()) {
        return {};
    }
    const QString bare = withoutSeparator(folder);
    return isSeparator(bare.back()) ? bare : bare + separatorOf(folder);
}

QString withoutSeparator(QStringView folder)
{
    const qsizetype end = lastComponentEnd(folder);
    return end == rootEnd(folder) ? rootText(folder) : folder.first(end).toString();
}

QString parent(QStringView path)
{
    const qsizetype end = lastComponentEnd(path);
    const qsizetype start = lastComponentStart(path, end);
    return start == end ? QString() : withoutSeparator(path.first(start));
}

QString fileName(QStringView path)
{
    const qsizetype end = lastComponentEnd(path);
    const qsizetype start = lastComponentStart(path, end);
    return path.sliced(start, end - start).toString();
}

QString baseName(QStringView path)
{
    const QString name = fileName(path);
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? name : name.first(dot);
}

QString extension(QStringView path)
{
    const QString name = fileName(path);
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? QString() : name.sliced(dot + 1);
}

QStringList components(QStringView path)
{
    QStringList result;
    qsizetype at = rootEnd(path);
    if (at > 0) {
        result.append(isDrive(path) ? path.first(2).toString() : rootText(path));
    }
    while (at < path.size()) {
        qsizetype end = at;
        while (end < path.size() && !isSeparator(path[end])) {
            ++end;
        }
        result.append(path.sliced(at, end - at).toString());
        at = end + separatorsAt(path, end);
    }
    return result;
}

bool isAbsolute(QStringView path)
{
    const qsizetype drive = isDrive(path) ? 2 : 0;
    return path.size() > drive && isSeparator(path[drive]);
}

QString toSystem(QStringView path)
{
    return path.toString().replace(u'\\', kSeparator);
}

} // namespace melovane::path
