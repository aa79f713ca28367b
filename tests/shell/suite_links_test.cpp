#include "bus/message_names.h"
#include "bus/message_numbers.h"
#include "bus/viewer_messages.h"
#include "platform/linux/linux_messages.h"
#include "platform/qt/qt_message_loop.h"
#include "shell/fakes.h"
#include "shell/jobs_link.h"
#include "shell/sibling_control.h"
#include "shell/viewer_link.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

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
    QtMessageLoop loop;
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

TEST_F(SuiteLinks, TheViewerHearsOfTheRowOnWhichTheUserStays)
{
    ViewerLink link(bus, *settings, messages, loop);
    const auto viewer = program(u"Message.Handle"_s, u"SleeveViewer.exe"_s);
    for (const QString& fid : {u"836123456001"_s, u"836123456002"_s, u"836123456003"_s}) {
        sender.SendMessage(bus::kInfoFromFid, fid);
    }
    EXPECT_TRUE(waitFor([this] { return !seen.isEmpty(); }));
    EXPECT_EQ(taken(), QStringList{u"2002 0 836123456003"_s});
    link.trackEntered(u"836123456004"_s);
    EXPECT_TRUE(waitFor([this] { return !seen.isEmpty(); }));
    EXPECT_EQ(taken(), QStringList{u"2002 0 836123456004"_s});
    sender.SendMessage(bus::kDbRefreshByFid, u"836123456004"_s);
    EXPECT_TRUE(waitFor([this] { return !seen.isEmpty(); })) << "it may have another cover";
    EXPECT_EQ(taken(), QStringList{u"2002 0 836123456004"_s});
}

TEST_F(SuiteLinks, AViewerThatHasJustBeenStartedGetsTheRowWhenItAsks)
{
    const ViewerLink link(bus, *settings, messages, loop);
    sender.SendMessage(bus::kCreateToolBars, QString());
    const auto viewer = program(u"Message.Handle"_s, u"Other.exe"_s);
    sender.SendMessage(bus::kInfoFromFid, u"836123456001"_s);
    viewer->setTarget(settings->GetKeyValueLong(u"Message.Handle"_s, u"MelovaneDB.Row"_s, 0));
    viewer->PostText(message::kViewerWantsRow, viewer->handle(), {});
    EXPECT_TRUE(waitFor([this] { return !seen.isEmpty(); }));
    EXPECT_EQ(taken(), QStringList{u"2002 0 836123456001"_s});
}

} // namespace
} // namespace melovane::test
