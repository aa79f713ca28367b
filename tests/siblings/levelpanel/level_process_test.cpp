#include "bus/message_numbers.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The volume monitor as the console starts it; this test is the console.
class LevelProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_LEVELPANEL), program()));
        m_first.start(program(), QStringList());
        ASSERT_TRUE(waitFor([this] { return m_messages.IsMsgWindow(published()); }));
    }

    void TearDown() override
    {
        m_first.terminate();
        EXPECT_TRUE(m_first.waitForFinished());
    }

    [[nodiscard]] QString program() const { return suite.file(u"LevelPanel"_s); }

    [[nodiscard]] MessageHandle published()
    {
        return suite.makeSettings()->GetKeyValueLong(u"Global"_s,
                                                     u"Message.Handle.Volume.Monitor"_s, 0);
    }

    LinuxMessages m_messages{MessagePlace(LinuxEnvironment().runtimeFolder())};
    std::unique_ptr<KSMessage> m_console = m_messages.makeControl();
    QProcess m_first;
};

TEST_F(LevelProcess, IsFoundByTheSuiteAndAnswersWhenItIsToShow)
{
    EXPECT_EQ(suite.makeSettings()->GetKeyValueLong(u"Message.Handle"_s, u"LevelPanel.exe"_s, 0),
              published());
    m_console->setTarget(published());
    EXPECT_TRUE(m_console->SendWithin(std::chrono::seconds(30), message::kShowVolumeMonitor, 0, 0));
}

TEST_F(LevelProcess, ASecondOneEndsAndLeavesTheFirst)
{
    const MessageHandle first = published();
    QProcess second;
    second.start(program(), QStringList());
    ASSERT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(published(), first);
    EXPECT_EQ(m_first.state(), QProcess::Running);
}

} // namespace
} // namespace melovane::test
