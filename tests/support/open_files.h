#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstring>
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

/// Watches who opens or makes a database file of a folder, whichever process it is.
class OpenWatch
{
public:
    explicit OpenWatch(const QString& folder)
        : m_queue(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        ::inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_OPEN | IN_CREATE);
    }

    ~OpenWatch() { ::close(m_queue); }

    OpenWatch(const OpenWatch&) = delete;
    OpenWatch& operator=(const OpenWatch&) = delete;

    /// Names of the files that were opened since the last call, each once, sorted.
    std::string opened()
    {
        QStringList names;
        alignas(inotify_event) std::array<char, 65536> bytes = {};
        for (ssize_t size = 0; (size = ::read(m_queue, bytes.data(), bytes.size())) > 0;) {
            for (ssize_t at = 0; at < size;) {
                inotify_event event = {};
                std::memcpy(&event, bytes.data() + at, sizeof event);
                const QString name = QFile::decodeName(bytes.data() + at + sizeof event);
                if (event.len > 0 && name.contains(QLatin1String(".mdb"))) {
                    names.append(name);
                }
                at += ssize_t(sizeof event + event.len);
            }
        }
        names.removeDuplicates();
        names.sort();
        return names.join(QLatin1Char(' ')).toStdString();
    }

private:
    int m_queue;
};

} // namespace melovane::test
