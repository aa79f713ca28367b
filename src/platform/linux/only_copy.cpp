#include "platform/linux/only_copy.h"

#include "platform/linux/system_names.h"
#include "platform/system/path_text.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using linuxfiles::Descriptor;

namespace {

/// Letters of the longest handle and its line end.
constexpr size_t kLongest = 16;

} // namespace

OnlyCopy::OnlyCopy(const QStringList& folders, const QString& program)
    : OnlyCopy(folders.value(std::distance(
                   folders.begin(),
                   std::find_if(folders.begin(),
                                folders.end(),
                                [](const QString& folder) { return !folder.isEmpty(); }))),
               program)
{}

OnlyCopy::OnlyCopy(const QString& folder, const QString& program)
    : m_path(folder.isEmpty() ? QByteArray()
                              : linuxnames::encode(path::join(folder, program + u".lock"_s)))
{}

bool OnlyCopy::claim()
{
    Descriptor file(::open(m_path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isValid()) {
        return true;
    }
    int result = -1;
    do {
        result = ::flock(file.number(), LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        return errno != EWOULDBLOCK;
    }
    m_lock = std::move(file);
    // What a killed copy has left would lead to nobody.
    write({});
    return true;
}

void OnlyCopy::publish(MessageHandle control)
{
    if (m_lock.isValid()) {
        write(QByteArray::number(control) + '\n');
    }
}

/// In place: a file that is replaced would leave the lock behind on the old one. On a full disk a
/// later copy ends without bringing this one to the front.
void OnlyCopy::write(const QByteArray& text)
{
    if (::ftruncate(m_lock.number(), 0) == 0 && !text.isEmpty()) {
        [[maybe_unused]] const ssize_t count =
            ::pwrite(m_lock.number(), text.constData(), size_t(text.size()), 0);
    }
}

MessageHandle OnlyCopy::runningCopy() const
{
    const Descriptor file(::open(m_path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    std::array<char, kLongest> text = {};
    const ssize_t size = ::read(file.number(), text.data(), text.size());
    // The line end tells that the number is whole.
    const QByteArrayView line(text.data(), std::max<ssize_t>(size, 0));
    return line.endsWith('\n') ? line.trimmed().toInt() : 0;
}

} // namespace melovane
