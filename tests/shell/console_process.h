#pragma once

#include "platform/message/message_control.h"
#include "support/suite_fixture.h"

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <memory>

namespace melovane::test {

/// A real console in a process of its own, with a user at its window who does what he is told.
///
/// Several stand beside each other, over one library too, when each has an installation and a name
/// of its own and all have the same runtime folder, in which their messages meet.
class ConsoleProcess
{
public:
    /// Starts it and waits for its window; the test fails when it does not come up.
    /// \param suite  its installation, which outlives it
    /// \param name   of the program
    /// \param runtime stands for $XDG_RUNTIME_DIR
    ConsoleProcess(Suite& suite, const QString& name, const QString& runtime);
    ~ConsoleProcess();
    ConsoleProcess(const ConsoleProcess&) = delete;
    ConsoleProcess& operator=(const ConsoleProcess&) = delete;

    /// Does something, see the table in console_hand_main.cpp, and returns what stands on the
    /// screen then. Empty, and the test fails, when the console does not answer.
    QJsonObject act(const QStringList& words);

    QJsonObject state() { return act({QStringLiteral("state")}); }

    /// The control that it has published in its settings.
    [[nodiscard]] MessageHandle handle() const;

    [[nodiscard]] qint64 process() const { return m_process.processId(); }

    void stop() const; ///< as if it hung; it does nothing more when this returns
    void goOn() const; ///< after stop

    /// Ends it by a signal, SIGKILL or one that asks it to end, and waits for that.
    void end(int signal);

    [[nodiscard]] bool isAlive() const { return m_process.state() != QProcess::NotRunning; }

    [[nodiscard]] Suite& suite() const { return m_suite; }

    /// Its settings name that library from now on; nobody tells it.
    void nameLibrary(const QString& library);

    /// Sends it a number as another program does, and waits for it.
    void tell(qint32 id, qint32 wParam = 0, qint32 lParam = 0);

    /// An errand of suite_sender to this console, not yet over.
    [[nodiscard]] std::unique_ptr<QProcess> send(const QStringList& errand) const;

    /// Environment of programs that belong to this console.
    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }

private:
    Suite& m_suite;
    QString m_runtime;
    QProcessEnvironment m_environment;
    QProcess m_process;
    bool m_isOver = false; ///< by a signal of ours
};

/// Waits for the end of a process; false when it failed.
[[nodiscard]] bool ended(QProcess& process);

} // namespace melovane::test
