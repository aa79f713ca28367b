#include "siblings/melovanejob/job_process.h"

#include "platform/system/window_start.h"

#include <QProcessEnvironment>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kStartMs = 5000;
/// Between asking a job to end and ending it. A console waits for less than a second meanwhile.
constexpr int kEndMs = 700;

QProcessEnvironment withoutWindow()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(windowstart::kVariable),
                       QString::fromLatin1(windowstart::kHidden));
    return environment;
}

} // namespace

JobProcess::JobProcess(std::function<void(bool allDone)> ended)
    : m_ended(std::move(ended))
{
    m_process.setProcessEnvironment(withoutWindow());
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([this] { m_lock.keepInChild(); });
    QObject::connect(&m_process, &QProcess::finished, &m_process,
                     [this](int code, QProcess::ExitStatus status) {
                         m_lock.release();
                         m_ended(status == QProcess::NormalExit && code == 0);
                     });
}

bool JobProcess::start(const QString& program, const QStringList& arguments, const QString& lock)
{
    if (!m_lock.take(lock)) {
        return false;
    }
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(kStartMs)) {
        m_lock.release();
        return false;
    }
    return true;
}

void JobProcess::stop()
{
    m_process.terminate();
    if (!m_process.waitForFinished(kEndMs)) {
        m_process.kill();
        m_process.waitForFinished(kEndMs);
    }
}

} // namespace melovane
