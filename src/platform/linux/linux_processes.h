#pragma once

#include "platform/system/programs.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

/// A command line taken apart.
struct CommandLine
{
    QString program;
    QStringList arguments;
};

/// Every way to read a command line, the likeliest first. A program in double quotes is taken so.
/// Else the program may hold blanks: it ends at the last blank, at the one before, and so on.
///
/// Arguments are separated by blanks; double quotes hold one together, and two in a row within them
/// are one of its letters. Backslashes are letters, as the suite's paths need them.
[[nodiscard]] std::vector<CommandLine> readingsOf(const QString& commandLine);

/// Starts programs on Linux.
///
/// The first reading of the command line whose program exists and may be run is started, "X.exe"
/// as it stands and then without ".exe" (also when the first turns out not to be a program of this
/// system). The new process leads a session of its own, inherits no file, socket or lock, and its
/// input and output lead nowhere. The style of its window is an environment variable, see
/// platform/system/window_start.h, which programs of the suite follow.
///
/// "notepad.exe" and "explorer.exe" without a folder stand for the desktop's opener; all that
/// follows, quotes left out, is one path.
class LinuxProcesses : public Programs
{
public:
    /// \param opener the program that opens a file or folder as the desktop does; one without a
    /// folder is looked for in $PATH
    explicit LinuxProcesses(QString opener = QStringLiteral("xdg-open"));

    bool start(const QString& commandLine, WindowStyle style) override;
    bool startProgram(const QString& program, const QString& arguments, WindowStyle style) override;

private:
    QString m_opener;
};

} // namespace melovane
