#include "bus/viewer_messages.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QFile>
#include <QProcess>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The viewer as the console starts it; this test is the console.
class ViewerProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_SLEEVEVIEWER), program()));
        m_console->setMessageText([this](qint32 id, qint32 number, const QString& text) {
            m_heard.append(u"%1 %2"_s.arg(id).arg(text));
            m_viewer = number;
            return 0;
        });
        suite.write(u"melovane.ini"_s, "[Message.Handle]\nMelovaneDB.Row=" +
                                           QByteArray::number(m_console->handle()) + "\n");
    }

    void TearDown() override
    {
        if (m_first.state() != QProcess::NotRunning) {
            m_first.terminate();
            EXPECT_TRUE(m_first.waitForFinished());
        }
    }

    [[nodiscard]] QString program() const { return suite.file(u"SleeveViewer"_s); }

    [[nodiscard]] MessageHandle published()
    {
        return suite.makeSettings()->GetKeyValueLong(u"Message.Handle"_s, u"SleeveViewer.exe"_s, 0);
    }

    LinuxMessages m_messages{MessagePlace(LinuxEnvironment().runtimeFolder())};
    std::unique_ptr<KSMessage> m_console = m_messages.makeControl();
    QStringList m_heard;
    MessageHandle m_viewer = 0;
    QProcess m_first;
};

TEST_F(ViewerProcess, StartedWithoutACoverItAsksForTheRowAndIsFoundByItsName)
{
    m_first.start(program(), QStringList());
    ASSERT_TRUE(waitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"2003 "_s});
    EXPECT_EQ(published(), m_viewer);
    EXPECT_TRUE(m_messages.IsMsgWindow(m_viewer));
}

TEST_F(ViewerProcess, ASecondOneHandsItsCoverToTheFirstAndEnds)
{
    m_first.start(program(), QStringList());
    ASSERT_TRUE(waitFor([this] { return !m_heard.isEmpty(); }));
    const MessageHandle viewer = published();
    QProcess second;
    second.start(program(), {u"a"_s, u"b.jpg"_s});
    EXPECT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(published(), viewer);
    // One that is started for the row has the first ask for it again.
    second.start(program(), QStringList());
    EXPECT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_TRUE(waitFor([this] { return m_heard.size() == 2; }));
    EXPECT_EQ(m_first.state(), QProcess::Running);
}

} // namespace
} // namespace melovane::test
