#include "bus/suite_messages.h"
#include "platform/linux/linux_messages.h"
#include "support/message_sibling.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The console's messages; other programs are controls of this process, or real siblings.
class SuiteMessagesTest : public test::SuiteFixture
{
protected:
    /// Makes a program that is published under a key.
    std::unique_ptr<KSMessage> program(const QString& section, const QString& key)
    {
        auto made = messages.makeControl();
        publish(section, key, made->handle());
        made->setMessageNumber([this, key](qint32 id, qint32 wParam, qint32 lParam) {
            seen.append(u"%1 %2 %3 %4"_s.arg(key).arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        return made;
    }

    /// Writes a handle into the settings file, as another program does.
    void publish(const QString& section, const QString& key, MessageHandle handle)
    {
        suite.folders.profile().write(suite.file(u"melovane.ini"_s), section, key,
                                      QString::number(handle));
    }

    std::optional<QString> published(const QString& section, const QString& key)
    {
        return suite.folders.profile().value(suite.file(u"melovane.ini"_s), section, key);
    }

    [[nodiscard]] Value todo(qint32 id) const
    {
        return suite.value(u"select fid from todo where id=%1"_s.arg(id));
    }

    QString runtime = suite.folders.environment().runtimeFolder();
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    LinuxMessages messages{MessagePlace(runtime)};
    std::unique_ptr<KSMessage> control = messages.makeControl();
    QStringList told; ///< failures of quiet operations
    SuiteMessages console{*settings, *suite.engine, messages, *control,
                          [this](const QString& where, const QString&) { told.append(where); }};
    QStringList seen; ///< "key id wParam lParam"
};

TEST_F(SuiteMessagesTest, TwoSetTodoCallsWithTheSameIdLeaveOneRowWithTheLastFid)
{
    console.SetTodo(1046, u"836123456001"_s);
    console.SetTodo(1046, u"836123456002"_s);
    console.SetTodo(1047, u"836123456003"_s);
    EXPECT_EQ(suite.value(u"select count(*) as anz from todo where id=1046"_s).toLong(), 1);
    EXPECT_EQ(todo(1046).toText(), u"836123456002"_s);
    EXPECT_EQ(todo(1047).toText(), u"836123456003"_s);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(SuiteMessagesTest, AFidWithAQuoteIsStoredAsItStands)
{
    const QString hostile = u"x'); drop table todo; --"_s;
    console.SetTodo(1046, hostile);
    console.SetTodo(1046, hostile + u"'"_s);
    EXPECT_EQ(todo(1046).toText(), hostile + u"'"_s);
}

TEST_F(SuiteMessagesTest, TheMailboxHoldsTheTrackBeforeThePlayerGetsTheNumber)
{
    const auto player = program(u"Message"_s, u"Handle.DJ"_s);
    QString found;
    player->setMessageNumber([&](qint32 id, qint32 wParam, qint32 lParam) {
        found = todo(id).toText();
        return wParam + lParam;
    });
    EXPECT_TRUE(console.SendToPlayer(u"836123456001"_s, message::kPlayNow));
    EXPECT_EQ(found, u"836123456001"_s);
    EXPECT_EQ(control->target(), player->handle());
}

TEST_F(SuiteMessagesTest, AMailboxThatCannotBeWrittenIsToldAndTheNumberIsSentAllTheSame)
{
    const auto player = program(u"Message"_s, u"Handle.DJ"_s);
    suite.execute(u"drop table todo"_s);
    EXPECT_TRUE(console.SendToPlayer(u"836123456001"_s, message::kPlayNext));
    EXPECT_EQ(told, QStringList(u"SetTodo"_s));
    EXPECT_EQ(seen, QStringList(u"Handle.DJ 1046 0 0"_s));
}

TEST_F(SuiteMessagesTest, AMailboxOfALibraryThatAnotherProgramHasStaysAsItIsAndTheNumberIsSent)
{
    const auto player = program(u"Message"_s, u"Handle.DJ"_s);
    console.SetTodo(1046, u"836123456001"_s);
    suite.engine->GiveAway(suite.dbName());
    try {
        static_cast<void>(console.SendToPlayer(u"836123456002"_s, message::kPlayNext));
        ADD_FAILURE() << "nobody would be told";
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kReleased);
    }
    EXPECT_EQ(seen, QStringList(u"Handle.DJ 1046 0 0"_s));
    suite.engine->TakeBack(suite.dbName());
    EXPECT_EQ(todo(1046).toText(), u"836123456001"_s);
}

TEST_F(SuiteMessagesTest, AMissingHandleOfThePlayerReadsAs0AndMessagesGoNowhere)
{
    EXPECT_FALSE(console.playerIsAlive());
    EXPECT_TRUE(console.sendToPlayer(message::kRefreshPlaylistTree));
    console.postToPlayer(message::kRefreshPlaylist);
    EXPECT_EQ(control->target(), 0);
}

TEST_F(SuiteMessagesTest, TheStaleNumberOfADeadPlayerIsNoPlayer)
{
    {
        test::Sibling player(runtime);
        publish(u"Message"_s, u"Handle.DJ"_s, player.handle());
        EXPECT_TRUE(console.playerIsAlive());
    }
    EXPECT_FALSE(console.playerIsAlive());
    EXPECT_TRUE(console.sendToPlayer(message::kRefreshPlaylistTree));
}

TEST_F(SuiteMessagesTest, APlayerThatWasStartedAgainIsFoundWithoutARefreshOfTheSettings)
{
    const test::Sibling first(runtime);
    publish(u"Message"_s, u"Handle.DJ"_s, first.handle());
    EXPECT_TRUE(console.sendToPlayer(message::kRefreshPlaylistTree));
    const test::Sibling second(runtime);
    publish(u"Message"_s, u"Handle.DJ"_s, second.handle());
    EXPECT_TRUE(console.sendToPlayer(message::kRefreshPlaylistTree));
    const auto count = [&](const test::Sibling& player) {
        control->setTarget(player.handle());
        return control->Send(test::sibling::kSeen, 0, 0);
    };
    EXPECT_EQ(count(first), 1);
    EXPECT_EQ(count(second), 1);
    EXPECT_EQ(control->Send(test::sibling::kSeenId, 0, 0), 1079);
}

TEST_F(SuiteMessagesTest, APostedNumberReachesThePlayersMessageLoop)
{
    const auto player = program(u"Message"_s, u"Handle.DJ"_s);
    console.postToPlayer(message::kRefreshPlaylist);
    EXPECT_TRUE(seen.isEmpty());
    EXPECT_TRUE(test::waitFor([&] { return seen.size() == 1; }));
    EXPECT_EQ(seen[0], u"Handle.DJ 1042 0 0"_s);
}

TEST_F(SuiteMessagesTest, StopOtherMonitorsReachesEveryLiveHandleButTheOwn)
{
    const test::Sibling player(runtime);
    publish(u"Message"_s, u"Handle.DJ"_s, player.handle());
    const auto sampler = program(u"Message"_s, u"Handle.Kiv"_s);
    const auto foreign = program(u"Message"_s, u"Some.Plugin"_s);
    const auto elsewhere = program(u"Message.Handle"_s, u"Other.exe"_s);
    publish(u"Message"_s, u"Stale"_s, 4711000);
    publish(u"Message"_s, u"Handle.DB"_s, control->handle());
    suite.folders.profile().write(suite.file(u"melovane.ini"_s), u"Message"_s, u"Text"_s, u"=x="_s);
    control->setMessageNumber([this](qint32 id, qint32, qint32) {
        seen.append(u"own %1"_s.arg(id));
        return 0;
    });
    EXPECT_TRUE(console.StopOtherMonitors());
    EXPECT_EQ(seen, (QStringList{u"Handle.Kiv 1078 0 0"_s, u"Some.Plugin 1078 0 0"_s}));
    control->setTarget(player.handle());
    EXPECT_EQ(control->Send(test::sibling::kSeen, 0, 0), 1);
    EXPECT_EQ(control->Send(test::sibling::kSeenId, 0, 0), 1078);
}

TEST_F(SuiteMessagesTest, AProgramThatHangsIsToldTheOthersAreStoppedAndItHearsOfItLater)
{
    const test::Sibling player(runtime);
    publish(u"Message"_s, u"Handle.DJ"_s, player.handle());
    const auto sampler = program(u"Message"_s, u"Handle.Kiv"_s);
    player.stop();
    EXPECT_FALSE(console.StopOtherMonitors());
    EXPECT_FALSE(console.StopOtherMonitors());
    EXPECT_FALSE(console.sendToPlayer(message::kRefreshPlaylistTree));
    EXPECT_EQ(seen.count(u"Handle.Kiv 1078 0 0"_s), 2);
    player.goOn();
    // Answered behind all that has waited for it.
    control->setTarget(player.handle());
    EXPECT_EQ(control->Send(test::sibling::kSeen, 0, 0), 3);
    EXPECT_TRUE(console.StopOtherMonitors());
}

TEST_F(SuiteMessagesTest, WithoutOtherProgramsStopOtherMonitorsDoesNothing)
{
    EXPECT_TRUE(console.StopOtherMonitors());
    EXPECT_TRUE(seen.isEmpty());
}

TEST_F(SuiteMessagesTest, TheAnswerToAReleaseOfTheDatabaseIs1037With2)
{
    const test::Sibling asker(runtime);
    console.answerDatabaseRelease(asker.handle());
    EXPECT_EQ(control->Send(test::sibling::kSeenId, 0, 0), 1037);
    EXPECT_EQ(control->Send(test::sibling::kSeenLParam, 0, 0), 2);
}

TEST_F(SuiteMessagesTest, TheJobsProgramIsAskedToEnd)
{
    const auto jobs = program(u"Global"_s, u"MessageHandleJobs"_s);
    EXPECT_TRUE(console.endJobs());
    EXPECT_EQ(seen, QStringList(u"MessageHandleJobs 1058 0 0"_s));
}

TEST_F(SuiteMessagesTest, AVolumeMonitorThatRunsIsShownAndOneThatDoesNotIsToldToTheCaller)
{
    EXPECT_FALSE(console.showVolumeMonitor());
    EXPECT_FALSE(console.isRunning(u"LevelPanel"_s));
    const auto monitor = program(u"Global"_s, u"Message.Handle.Volume.Monitor"_s);
    EXPECT_TRUE(console.showVolumeMonitor());
    EXPECT_TRUE(console.isRunning(u"LevelPanel"_s));
    EXPECT_FALSE(console.isRunning(u"Melovanekiv"_s));
    EXPECT_EQ(seen, QStringList(u"Message.Handle.Volume.Monitor 1075 0 0"_s));
}

TEST_F(SuiteMessagesTest, ASampleToolThatRunsGetsTheEntryAndOneThatDoesNotIsToldToTheCaller)
{
    EXPECT_FALSE(console.editSample());
    const auto tool = program(u"Message"_s, u"Handle.Kiv"_s);
    EXPECT_TRUE(console.editSample());
    EXPECT_TRUE(console.isRunning(u"Melovanekiv"_s));
    EXPECT_EQ(seen, QStringList(u"Handle.Kiv 1229 0 0"_s));
}

TEST_F(SuiteMessagesTest, HandlesArePublishedUnderTheirKeysAndTheMainOneIsWithdrawn)
{
    const QString handle = QString::number(control->handle());
    console.publishControl(suite.folders.paths());
    EXPECT_EQ(published(u"Message.Handle"_s, u"MelovaneDB.exe"_s), handle);
    EXPECT_EQ(published(u"Message"_s, u"Handle.DB"_s), std::nullopt);
    console.publishWindow(4711);
    EXPECT_EQ(published(u"Message"_s, u"Handle.DB"_s), handle);
    EXPECT_EQ(published(u"Global"_s, u"HandleDB"_s), u"4711"_s);
    EXPECT_EQ(settings->MessageHandleDB(), control->handle());
    console.withdraw();
    EXPECT_EQ(published(u"Message"_s, u"Handle.DB"_s), std::nullopt);
    EXPECT_EQ(settings->MessageHandleDB(), 0);
}

} // namespace
} // namespace melovane
