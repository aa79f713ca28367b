#include "siblings/melovanejob/jobs_program.h"

#include "bus/message_numbers.h"
#include "bus/suite_messages.h"
#include "platform/linux/job_locks.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/path_text.h"
#include "siblings/melovanejob/job_library.h"

#include <QCoreApplication>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Seldom enough that nobody notices it, often enough for times of day and for a console that goes.
constexpr std::chrono::seconds kBetweenLooks{5};

constexpr std::chrono::milliseconds kPatience{1000};

/// Programs that hold a lock while they work in a library.
constexpr std::array<QStringView, 4> kWorkers{u"writetags", u"storeplaylists", u"rebuildtree",
                                              u"mediaintake"};

QString nameOf(JobKind kind)
{
    switch (kind) {
    case JobKind::Tags:
        return u"Task.WriteTags"_s;
    case JobKind::Lists:
        return u"Task.StorePlaylists"_s;
    case JobKind::Trees:
        return u"Task.RebuildTree"_s;
    }
    return {};
}

} // namespace

JobsProgram::JobsProgram()
    : m_paths(m_environment, m_files)
    , m_engine(sqlite::makeEngine(m_clock))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_loan(m_files, lockFolders())
    , m_messages(MessagePlace(m_environment.runtimeFolder()))
    , m_control(m_messages.makeControl())
    , m_loop(loopParts())
    , m_job([this](bool allDone) { m_loop.jobEnded(allDone); })
    , m_endSignals([this] { m_loop.end(); })
{
    m_timer.setInterval(kBetweenLooks);
    m_timer.setTimerType(Qt::CoarseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { m_loop.look(); });
    m_control->setMessageNumber([this](qint32 id, qint32, qint32 lParam) {
        answer(id, lParam);
        return 0;
    });
}

JobsProgram::~JobsProgram() = default;

JobLoop::Parts JobsProgram::loopParts()
{
    const QString settings = path::join(m_paths.GetConfigPath(), u"MelovaneJob.ini");
    return {.clock = m_clock,
            .passing = m_passing,
            .settings = [this, settings] { return readJobSettings(m_profile, settings); },
            .library = [this] { return libraryState(m_files, library()); },
            .consoleIsAlive = [this] { return consoleIsAlive(); },
            .isTaken = [this] { return isTaken(); },
            .hasWork =
                [this](JobKind kind) {
                    return !programOf(kind).isEmpty() && hasWork(*m_engine, library(), kind);
                },
            .start = [this](JobKind kind) { return startJob(kind); },
            .stopJob = [this] { m_job.stop(); },
            .endProgram = [] { QCoreApplication::quit(); }};
}

bool JobsProgram::start()
{
    if (!claim()) {
        return false;
    }
    m_settings.WriteKeyValue(section::kGlobal.toString(), kJobsHandleKey.toString(),
                             QString::number(m_control->handle()));
    m_timer.start();
    QTimer::singleShot(0, &m_timer, [this] { m_loop.look(); });
    return true;
}

void JobsProgram::withdraw()
{
    m_settings.WriteKeyValue(section::kGlobal.toString(), kJobsHandleKey.toString(), u"0"_s);
}

QStringList JobsProgram::lockFolders()
{
    return {m_environment.runtimeFolder(), m_paths.GetConfigPath()};
}

/// Empty when the library that the settings name is not there: none is taken in its stead.
QString JobsProgram::library() const
{
    const QString& named = m_settings.namedDbName();
    return named == m_settings.DbName() ? named : QString();
}

/// True when no other jobs program looks after the library.
bool JobsProgram::claim()
{
    const QString path = library();
    const QString name = path::baseName(path::fileName(
        path.isEmpty() ? QString() : jobLockFile(m_files, lockFolders(), u"MelovaneJob"_s, path)));
    if (name.isEmpty() || name == m_claimed) {
        return true;
    }
    m_onlyCopy.emplace(lockFolders(), name);
    m_claimed = name;
    return m_onlyCopy->claim();
}

bool JobsProgram::isTaken()
{
    m_settings.Refresh();
    return !claim() || (!library().isEmpty() && m_loan.isLent(library()));
}

bool JobsProgram::consoleIsAlive()
{
    return m_messages.IsMsgWindow(m_settings.MessageHandleDB());
}

bool JobsProgram::othersWork()
{
    return std::any_of(kWorkers.begin(), kWorkers.end(), [this](QStringView worker) {
        return isLocked(jobLockFile(m_files, lockFolders(), worker.toString(), library()));
    });
}

/// Empty when it is not installed.
QString JobsProgram::programOf(JobKind kind)
{
    const QString file = path::join(m_paths.programFolder(), nameOf(kind));
    return m_files.fileExists(file) ? file : QString();
}

bool JobsProgram::startJob(JobKind kind)
{
    if (othersWork()) {
        return false;
    }
    // Nobody has asked for it: what fails stays to be done, and no window tells of it.
    QStringList arguments;
    if (kind == JobKind::Tags) {
        arguments = {QString::number(m_control->handle()), u"--quiet"_s};
    } else if (kind == JobKind::Lists) {
        arguments = {u"--quiet"_s};
    }
    return m_job.start(programOf(kind), arguments,
                       jobLockFile(m_files, lockFolders(), u"job"_s, library()));
}

void JobsProgram::answer(qint32 id, qint32 lParam)
{
    if (id == message::kEndJobs) {
        // Who asks does not wait for the job that runs.
        QTimer::singleShot(0, &m_timer, [this] { m_loop.end(); });
    } else if (id == message::kReleaseDatabase) {
        m_loop.end();
        m_control->setTarget(lParam);
        // An asker that hangs must not keep this program from ending.
        m_control->SendWithin(kPatience, message::kReleaseDatabase, 0, message::kDatabaseIsFree);
    }
}

} // namespace melovane
