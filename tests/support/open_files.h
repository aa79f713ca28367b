#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>

#include <unistd.h>

#include <climits>
#include <string>

namespace melovane::test {

/// Database files of a folder, with what lies beside them, that this process has open: their names,
/// sorted. One whose name is gone ends with " (deleted)".
inline std::string openDatabasesIn(const QString& folder)
{
    const QString inside = QDir(folder).canonicalPath() + QLatin1Char('/');
    QStringList result;
    const QString descriptors = QStringLiteral("/proc/self/fd");
    for (const QString& name : QDir(descriptors).entryList(QDir::System | QDir::Files)) {
        QByteArray text(PATH_MAX, '\0');
        const QByteArray link = QFile::encodeName(descriptors + QLatin1Char('/') + name);
        const ssize_t size = ::readlink(link.constData(), text.data(), size_t(text.size()));
        const QString file = QFile::decodeName(text.first(qMax<ssize_t>(size, 0)));
        if (file.startsWith(inside) && file.contains(QLatin1String(".mdb"))) {
            result.append(file.sliced(inside.size()));
        }
    }
    result.sort();
    return result.join(QLatin1Char(' ')).toStdString();
}

} // namespace melovane::test
