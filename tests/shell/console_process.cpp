#include "shell/console_process.h"

#include "support/wait_for.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

ConsoleProcess::ConsoleProcess(Suite& suite, const QString& name, const QString& runtime)
    : m_suite(suite)
    , m_runtime(runtime)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    const EnvironmentPlaces& places = suite.folders.places();
    for (const auto& [variable, value] :
         {std::pair{u"XDG_RUNTIME_DIR"_s, runtime},
          {u"XDG_CACHE_HOME"_s, places.cacheBase},
          {u"XDG_DATA_HOME"_s, places.userData},
          {u"HOME"_s, suite.dataFolder()},
          {u"XDG_CONFIG_HOME"_s, places.userFile.section(u'/', 0, -3)}}) {
        m_environment.insert(variable, value);
    }
    m_process.setProcessEnvironment(m_environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QString::fromUtf8(MLV_CONSOLE_HAND),
                    {suite.dataFolder(), name, places.machineFile});
    EXPECT_TRUE(waitFor([this] { return !isAlive() || state().contains(u"tracks"_s); }));
    EXPECT_TRUE(isAlive());
}

ConsoleProcess::~ConsoleProcess()
{
    if (m_isOver) {
        return;
    }
    m_process.closeWriteChannel();
    EXPECT_TRUE(waitFor([this] { return m_process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_process.exitCode(), 0);
}

QJsonObject ConsoleProcess::act(const QStringList& words)
{
    m_process.write(
        QJsonDocument(QJsonArray::fromStringList(words)).toJson(QJsonDocument::Compact) + '\n');
    if (!waitFor([this] { return m_process.canReadLine() || !isAlive(); }) ||
        !m_process.canReadLine()) {
        ADD_FAILURE() << "no answer to " << words.join(u' ').toStdString();
        return {};
    }
    return QJsonDocument::fromJson(m_process.readLine()).object();
}

void ConsoleProcess::stop() const
{
    EXPECT_EQ(::kill(pid_t(process()), SIGSTOP), 0);
    EXPECT_TRUE(waitFor([this] {
        QFile file(u"/proc/%1/stat"_s.arg(process()));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains(") T ");
    }));
}

void ConsoleProcess::goOn() const
{
    EXPECT_EQ(::kill(pid_t(process()), SIGCONT), 0);
}

void ConsoleProcess::end(int signal)
{
    EXPECT_EQ(::kill(pid_t(process()), signal), 0);
    EXPECT_TRUE(waitFor([this] { return m_process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(m_process.exitStatus(),
              signal == SIGKILL ? QProcess::CrashExit : QProcess::NormalExit);
    m_isOver = true;
}

MessageHandle ConsoleProcess::handle() const
{
    return m_suite.folders.makeSettings()->MessageHandleDB();
}

void ConsoleProcess::nameLibrary(const QString& library)
{
    m_suite.folders.makeSettings()->SetDbName(library);
}

void ConsoleProcess::tell(qint32 id, qint32 wParam, qint32 lParam)
{
    const auto sender =
        send({u"number"_s, QString::number(id), QString::number(wParam), QString::number(lParam)});
    EXPECT_TRUE(ended(*sender));
}

std::unique_ptr<QProcess> ConsoleProcess::send(const QStringList& errand) const
{
    auto sender = std::make_unique<QProcess>();
    sender->setProcessEnvironment(m_environment);
    sender->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    sender->start(QString::fromUtf8(MLV_SUITE_SENDER),
                  QStringList{m_runtime + u"/melovane"_s, QString::number(handle())} + errand);
    return sender;
}

bool ended(QProcess& process)
{
    return waitFor([&] { return process.state() == QProcess::NotRunning; }) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace melovane::test
