#include "bus/message_names.h"
#include "bus/message_numbers.h"
#include "platform/linux/linux_messages.h"
#include "shell/fakes.h"
#include "shell/jobs_link.h"
#include "shell/sibling_control.h"
#include "support/suite_fixture.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The console's bus and its links to other programs; those are controls of this process.
class SuiteLinks : public SuiteFixture
{
protected:
    std::unique_ptr<KSMessage> program(const QString& section, const QString& key)
    {
        auto made = messages.makeControl();
        settings->WriteKeyValue(section, key, QString::number(made->handle()));
        made->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            seen.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        made->setMessageText([this](qint32 id, qint32 number, const QString& text) {
            seen.append(u"%1 %2 %3"_s.arg(id).arg(number).arg(text));
            return 0;
        });
        return made;
    }

    [[nodiscard]] QStringList taken() { return std::exchange(seen, {}); }

    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    LinuxMessages messages{MessagePlace(suite.folders.environment().runtimeFolder())};
    MLVMessageBus bus{suite.folders.paths(), suite.files, suite.clock};
    BusSender sender{bus, u"MLVDB"_s};
    RecordingProcesses processes;
    SiblingControl siblings{suite.folders.paths(), suite.files, processes};
    QStringList seen; ///< "id number number" or "id number text"
};

TEST_F(SuiteLinks, ALibraryThatIsLentIsAskedOfTheJobsAndGivenBackToThem)
{
    suite.folders.install(u"MelovaneJob"_s, "x");
    const JobsLink link(bus, *settings, messages, siblings);
    auto jobs = program(u"Global"_s, u"MessageHandleJobs"_s);
    sender.SendMessage(bus::kDbDisconnect);
    EXPECT_EQ(taken(), QStringList{u"1037 0 0"_s});
    EXPECT_EQ(processes.commands, QStringList());
    jobs.reset();
    sender.SendMessage(bus::kDbReconnect);
    EXPECT_EQ(processes.commands.size(), 1);
    sender.SendMessage(bus::kDbReconnect);
    EXPECT_EQ(processes.commands.size(), 1);
}

TEST_F(SuiteLinks, JobsThatTheUserHasEndedStayEnded)
{
    suite.folders.install(u"MelovaneJob"_s, "x");
    const JobsLink link(bus, *settings, messages, siblings);
    program(u"Global"_s, u"MessageHandleJobs"_s).reset();
    sender.SendMessage(bus::kDbDisconnect);
    sender.SendMessage(bus::kDbReconnect);
    EXPECT_EQ(processes.commands, QStringList());
}

} // namespace
} // namespace melovane::test
