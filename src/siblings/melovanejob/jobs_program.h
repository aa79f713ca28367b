#pragma once

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/linux/end_signals.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/system/clock.h"
#include "platform/system/passing_time.h"
#include "siblings/melovanejob/job_loop.h"
#include "siblings/melovanejob/job_process.h"

#include <QTimer>

#include <memory>
#include <optional>

namespace melovane {

/// The jobs program over the machine: the library of the settings, its console, the jobs beside the
/// own program. Ends the application when nobody needs it any more.
class JobsProgram
{
public:
    JobsProgram();
    ~JobsProgram();
    JobsProgram(const JobsProgram&) = delete;
    JobsProgram& operator=(const JobsProgram&) = delete;

    /// Begins to look after the library and publishes the own control. False when another jobs
    /// program does already.
    [[nodiscard]] bool start();

    /// Nobody finds the own control any more.
    void withdraw();

private:
    [[nodiscard]] JobLoop::Parts loopParts();
    [[nodiscard]] QStringList lockFolders();
    [[nodiscard]] QString library() const;
    [[nodiscard]] bool claim();
    [[nodiscard]] bool isTaken();
    [[nodiscard]] bool consoleIsAlive();
    [[nodiscard]] bool othersWork();
    [[nodiscard]] QString programOf(JobKind kind);
    [[nodiscard]] bool startJob(JobKind kind);
    void answer(qint32 id, qint32 lParam);

    SystemClock m_clock;
    SystemPassingTime m_passing;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    LibraryLoan m_loan;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    QString m_claimed; ///< name of the lock in m_onlyCopy
    std::optional<OnlyCopy> m_onlyCopy;
    JobLoop m_loop;
    JobProcess m_job;
    EndSignals m_endSignals;
    QTimer m_timer;
};

} // namespace melovane
