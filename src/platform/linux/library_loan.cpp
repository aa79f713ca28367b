#include "platform/linux/library_loan.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/system_names.h"
#include "platform/system/path_text.h"

#include <QCryptographicHash>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Longer than anybody looks.
constexpr std::chrono::milliseconds kPatience{1000};

} // namespace

LibraryLoan::LibraryLoan(const Files& files, const QStringList& folders)
    : m_files(files)
{
    const auto found = std::find_if(folders.begin(), folders.end(),
                                    [](const QString& folder) { return !folder.isEmpty(); });
    if (found != folders.end()) {
        m_folder = *found;
    }
}

/// The same for every path that leads to the library's place; its file may be another one when it
/// comes back. Keep: other programs look for it.
QString LibraryLoan::markOf(const QString& library) const
{
    const QString place = m_files.canonical(library);
    const QByteArray name = (place.isEmpty() ? library : place).toUtf8();
    const QByteArray sign = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex();
    return path::join(m_folder, u"lent-"_s + QString::fromLatin1(sign) + u".lock"_s);
}

void LibraryLoan::begin(const QString& library)
{
    if (!m_folder.isEmpty()) {
        m_mark = lockFile(markOf(library), kPatience);
    }
}

bool LibraryLoan::isLent(const QString& library) const
{
    if (m_folder.isEmpty()) {
        return false;
    }
    const QByteArray mark = linuxnames::systemPath(markOf(library));
    const linuxfiles::Descriptor file(::open(mark.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isValid()) {
        return false; // nobody has ever lent it
    }
    int result = -1;
    do {
        result = ::flock(file.number(), LOCK_SH | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result != 0 && errno == EWOULDBLOCK;
}

} // namespace melovane
