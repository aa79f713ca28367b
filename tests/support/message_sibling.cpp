#include "support/message_sibling.h"

#include <gtest/gtest.h>

#include <csignal>

namespace melovane::test {

namespace {

constexpr int kStartMs = 20'000;

}

QString siblingProgram()
{
    return QStringLiteral(MLV_MESSAGE_SIBLING);
}

Sibling::Sibling(const QString& folder)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(siblingProgram(), {folder});
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kStartMs)) {
    }
    m_handle = m_process.readLine().trimmed().toInt();
    EXPECT_GT(m_handle, 0);
}

Sibling::~Sibling()
{
    killAndWait();
}

void Sibling::stop() const
{
    EXPECT_EQ(::kill(pid_t(process()), SIGSTOP), 0);
}

void Sibling::goOn() const
{
    EXPECT_EQ(::kill(pid_t(process()), SIGCONT), 0);
}

void Sibling::killAndWait()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace melovane::test
