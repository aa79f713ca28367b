#include "platform/linux/process_name.h"

#include "platform/linux/linux_files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// More than the system keeps of a process's name, in bytes.
constexpr qint64 kLongestName = 4096;

} // namespace

QString processName(qint64 process)
{
    try {
        const QByteArray name = LinuxFiles().read(u"/proc/%1/comm"_s.arg(process), kLongestName);
        return QString::fromUtf8(name).trimmed();
    } catch (const IoError&) {
        return u"-"_s;
    }
}

} // namespace melovane
