#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The settings program as the console starts it; this test is the console.
class ConfigProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_MLVCONFIG), program()));
        m_first.start(program(), {QString::number(m_console->handle())});
        ASSERT_TRUE(waitFor([this] { return m_messages.IsMsgWindow(published()); }));
    }

    void TearDown() override
    {
        m_first.terminate();
        EXPECT_TRUE(m_first.waitForFinished());
    }

    [[nodiscard]] QString program() const { return suite.file(u"mlvconfig"_s); }

    [[nodiscard]] MessageHandle published()
    {
        return suite.makeSettings()->GetKeyValueLong(u"Message.Handle"_s, u"mlvconfig.exe"_s, 0);
    }

    LinuxMessages m_messages{MessagePlace(LinuxEnvironment().runtimeFolder())};
    std::unique_ptr<KSMessage> m_console = m_messages.makeControl();
    QProcess m_first;
};

TEST_F(ConfigProcess, ASecondWindowBringsTheFirstToTheFrontAndEnds)
{
    const MessageHandle first = published();
    QProcess second;
    second.start(program(), {QString::number(m_console->handle())});
    ASSERT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(published(), first);
    EXPECT_EQ(m_first.state(), QProcess::Running);
}

TEST_F(ConfigProcess, OpeningTheWindowWritesNothingButItsControl)
{
    const QByteArray before = suite.read(u"melovane.ini"_s);
    QProcess second;
    second.start(program(), QStringList());
    ASSERT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_EQ(suite.read(u"melovane.ini"_s), before);
}

TEST_F(ConfigProcess, AnArgumentThatIsNoControlIsAWrongCall)
{
    QProcess wrong;
    wrong.start(program(), {u"keys"_s});
    ASSERT_TRUE(wrong.waitForFinished(kLongWaitMs));
    EXPECT_EQ(wrong.exitCode(), 2);
}

} // namespace
} // namespace melovane::test
