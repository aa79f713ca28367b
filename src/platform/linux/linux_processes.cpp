#include "platform/linux/linux_processes.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/system_names.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"
#include "platform/system/window_start.h"

#include <QStandardPaths>

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using linuxfiles::Descriptor;
using WindowStyle = Processes::WindowStyle;

/// Beyond the usual limit of open files.
constexpr int kMaxDescriptors = 65536;

QStringList readArguments(QStringView text)
{
    QStringList arguments;
    QString current;
    bool quoted = false;
    bool begun = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'"' && quoted && i + 1 < text.size() && text[i + 1] == u'"') {
            current += text[i++];
        } else if (text[i] == u'"') {
            quoted = !quoted;
            begun = true;
        } else if (text[i] == u' ' && !quoted) {
            if (begun) {
                arguments.append(std::exchange(current, {}));
            }
            begun = false;
        } else {
            current += text[i];
            begun = true;
        }
    }
    if (begun) {
        arguments.append(current);
    }
    return arguments;
}

QStringList spellingsOf(const QString& program)
{
    QStringList spellings = {program};
    if (program.endsWith(".exe"_L1, Qt::CaseInsensitive)) {
        spellings.append(program.chopped(4));
    }
    return spellings;
}

bool isRunnable(const QByteArray& path)
{
    struct stat facts = {};
    return !path.isEmpty() && ::stat(path.constData(), &facts) == 0 && S_ISREG(facts.st_mode) &&
           ::access(path.constData(), X_OK) == 0;
}

/// Marks all descriptors but the first three as closed by exec; kernels before 5.11 cannot do it in
/// one call.
void closeAllAtExec()
{
    if (::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) == 0) {
        return;
    }
    for (int descriptor = 3; descriptor < kMaxDescriptors; ++descriptor) {
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
}

/// In the child, between fork and exec: only calls that are safe there.
[[noreturn]] void
becomeProgram(const char* path, char* const* arguments, char* const* environment, int report)
{
    ::setsid();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int number = 1; number < NSIG; ++number) {
        ::signal(number, SIG_DFL);
    }
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        ::dup2(nowhere, descriptor);
    }
    closeAllAtExec();
    // The grandchild belongs to nobody, so no sibling is ever left behind as a zombie.
    const pid_t child = ::fork();
    if (child == 0) {
        ::execve(path, arguments, environment);
    }
    if (child <= 0) {
        const int reason = errno;
        [[maybe_unused]] const ssize_t told = ::write(report, &reason, sizeof reason);
    }
    ::_exit(0);
}

/// What exec takes: pointers to the texts, which outlive them, and a null behind.
std::vector<char*> pointersTo(QList<QByteArray>& texts)
{
    std::vector<char*> pointers;
    for (QByteArray& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// The environment of this program, with the style of the window in place of the own one.
QList<QByteArray> environmentFor(WindowStyle style)
{
    const QByteArray head = QByteArray(windowstart::kVariable) + '=';
    QList<QByteArray> result;
    for (char** entry = ::environ; *entry != nullptr; ++entry) {
        if (!QByteArrayView(*entry).startsWith(head)) {
            result.append(*entry);
        }
    }
    if (style != WindowStyle::Normal) {
        result.append(
            head + (style == WindowStyle::Hidden ? windowstart::kHidden : windowstart::kMinimised));
    }
    return result;
}

bool run(const QByteArray& path, const QStringList& arguments, WindowStyle style)
{
    QList<QByteArray> texts = {path};
    for (const QString& argument : arguments) {
        texts.append(linuxnames::encode(argument));
    }
    QList<QByteArray> surroundings = environmentFor(style);
    const std::vector<char*> pointers = pointersTo(texts);
    const std::vector<char*> environment = pointersTo(surroundings);

    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    const Descriptor reader(ends[0]);
    Descriptor writer(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        becomeProgram(path.constData(), pointers.data(), environment.data(), writer.number());
    }
    writer.reset();
    if (child < 0) {
        return false;
    }
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    // The pipe closes unwritten when exec succeeds.
    int reason = 0;
    ssize_t count = -1;
    do {
        count = ::read(reader.number(), &reason, sizeof reason);
    } while (count < 0 && errno == EINTR);
    return count == 0;
}

/// Starts the first spelling of a program that may be run.
bool runAnySpelling(const CommandLine& wanted, WindowStyle style)
{
    for (const QString& program : spellingsOf(wanted.program)) {
        const QByteArray path = linuxnames::systemPath(program);
        if (isRunnable(path) && run(path, wanted.arguments, style)) {
            return true;
        }
    }
    return false;
}

/// The path to open when the command line is for the desktop's opener, else nothing.
std::optional<QString> pathToOpen(const QString& commandLine)
{
    const QString line = trimBlanks(commandLine);
    for (const QString& head : {u"notepad.exe"_s, u"explorer.exe"_s}) {
        const bool is = line.startsWith(head, Qt::CaseInsensitive) &&
                        (line.size() == head.size() || line[head.size()] == u' ');
        if (is) {
            QString path = trimBlanks(QStringView(line).sliced(head.size()));
            return path.remove(u'"');
        }
    }
    return {};
}

} // namespace

std::vector<CommandLine> readingsOf(const QString& commandLine)
{
    const QString line = trimBlanks(commandLine);
    if (line.isEmpty() || line.contains(QChar(u'\0'))) {
        return {};
    }
    if (line.startsWith(u'"')) {
        const qsizetype close = line.indexOf(u'"', 1);
        const qsizetype end = close < 0 ? line.size() : close;
        return {{line.mid(1, end - 1), readArguments(QStringView(line).mid(end + 1))}};
    }
    std::vector<CommandLine> readings = {{line, {}}};
    for (qsizetype at = line.size() - 1; at > 0; --at) {
        if (line[at] == u' ' && line[at - 1] != u' ') {
            readings.push_back({line.first(at), readArguments(QStringView(line).sliced(at))});
        }
    }
    return readings;
}

LinuxProcesses::LinuxProcesses(QString opener)
    : m_opener(std::move(opener))
{}

bool LinuxProcesses::start(const QString& commandLine, WindowStyle style)
{
    if (const auto path = pathToOpen(commandLine)) {
        const QString opener =
            m_opener.contains(u'/') ? m_opener : QStandardPaths::findExecutable(m_opener);
        const QByteArray target = linuxnames::systemPath(*path);
        return !target.isEmpty() && isRunnable(linuxnames::encode(opener)) &&
               run(linuxnames::encode(opener), {linuxnames::decode(target)}, WindowStyle::Normal);
    }
    const auto readings = readingsOf(commandLine);
    return std::any_of(readings.begin(), readings.end(), [style](const CommandLine& reading) {
        return runAnySpelling(reading, style);
    });
}

bool LinuxProcesses::startProgram(const QString& program,
                                  const QString& arguments,
                                  WindowStyle style)
{
    const QChar end(u'\0');
    return !program.contains(end) && !arguments.contains(end) &&
           runAnySpelling({program, readArguments(arguments)}, style);
}

} // namespace melovane
