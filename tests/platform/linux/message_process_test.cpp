#include "platform/linux/linux_messages.h"
#include "support/message_sibling.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
namespace sibling = test::sibling;

/// Two programs: this one and a sibling.
class MessageProcess : public testing::Test
{
protected:
    /// Longer than any test may take: who waited for it would fail.
    explicit MessageProcess(std::chrono::milliseconds patience = 1h)
        : messages(place(patience))
        , control(messages.makeControl())
        , other(folder.path())
    {
        control->setTarget(other.handle());
    }

    MessagePlace place(std::chrono::milliseconds patience)
    {
        MessagePlace result(folder.path());
        result.patience = patience;
        result.refreshes = {sibling::kRefresh};
        return result;
    }

    qint32 send(qint32 id, qint32 wParam = 0)
    {
        return control->Send(id, wParam, control->handle());
    }

    /// Answers like the sibling does.
    void answerPingPong()
    {
        control->setMessageNumber([this](qint32, qint32 left, qint32 from) {
            control->setTarget(from);
            return left > 0 ? send(sibling::kPingPong, left - 1) + 1 : 0;
        });
    }

    test::TempFolder folder;
    LinuxMessages messages;
    std::unique_ptr<KSMessage> control;
    test::Sibling other;
};

class ImpatientMessageProcess : public MessageProcess
{
protected:
    ImpatientMessageProcess()
        : MessageProcess(150ms)
    {}
};

TEST_F(MessageProcess, SendReturnsTheResultOfTheReceiversHandler)
{
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 42);
    EXPECT_EQ(control->Send(sibling::kAdd, -2'147'483'647, -1), std::numeric_limits<qint32>::min());
}

TEST_F(MessageProcess, AnIdThatTheReceiverDoesNotKnowIsAnswered0)
{
    EXPECT_EQ(control->Send(4711, 1, 1), 0);
    EXPECT_TRUE(messages.lastSendWasAnswered());
}

TEST_F(MessageProcess, ASendIsServedWhileTheSenderWaitsForItsOwnAnswer)
{
    control->setMessageNumber([](qint32, qint32 wParam, qint32 lParam) { return wParam + lParam; });
    EXPECT_EQ(send(sibling::kSendBack, 6), 1007);
}

TEST_F(MessageProcess, EveryControlOfAWaitingProgramIsServed)
{
    const auto second = messages.makeControl();
    second->setMessageNumber([](qint32, qint32 wParam, qint32) { return wParam * 2; });
    EXPECT_EQ(control->Send(sibling::kSendBack, 21, second->handle()), 1042);
}

TEST_F(MessageProcess, SendsNestFiftyDeepBetweenTwoPrograms)
{
    answerPingPong();
    EXPECT_EQ(send(sibling::kPingPong, 100), 100);
}

TEST_F(MessageProcess, NestingWithoutEndIsCutAndBothProgramsGoOn)
{
    answerPingPong();
    const qint32 depth = send(sibling::kPingPong, 100'000);
    EXPECT_GE(depth, 128);
    EXPECT_LE(depth, 130);
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 42);
}

TEST_F(MessageProcess, FiveThousandSendsEachWayAtOnceLoseNothingAndDoNotLock)
{
    constexpr qint32 kCount = 5000;
    qint32 received = 0;
    control->setMessageNumber([&](qint32, qint32 number, qint32) {
        ++received;
        return number + 1;
    });
    control->Post(sibling::kStorm, kCount, control->handle());
    qint32 answered = 0;
    for (qint32 i = 0; i < kCount; ++i) {
        answered += control->Send(sibling::kStormDrop, i, 0) == i + 1 ? 1 : 0;
    }
    EXPECT_EQ(answered, kCount);
    EXPECT_TRUE(test::waitFor([&] { return received == kCount; }));
    EXPECT_EQ(control->Send(sibling::kStormReceived, 0, 0), kCount);
    EXPECT_EQ(control->Send(sibling::kStormAnswered, 0, 0), kCount);
}

TEST_F(MessageProcess, APeerThatIsKilledInItsHandlerAnswers0AtOnce)
{
    EXPECT_EQ(control->Send(sibling::kDie, 0, 0), 0);
    EXPECT_FALSE(messages.lastSendWasAnswered());
    // The kernel closes the sockets of a dying process one after the other.
    EXPECT_TRUE(test::waitFor([this] { return !messages.IsMsgWindow(other.handle()); }));
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 0);
}

TEST_F(MessageProcess, AKilledPeerIsDeadAndItsHandleStaleButNoError)
{
    EXPECT_TRUE(messages.IsMsgWindow(other.handle()));
    EXPECT_EQ(control->Send(sibling::kAdd, 1, 1), 2);
    other.killAndWait();
    EXPECT_FALSE(messages.IsMsgWindow(other.handle()));
    EXPECT_EQ(control->Send(sibling::kAdd, 1, 1), 0);
    control->Post(sibling::kAdd, 1, 1);
}

TEST_F(MessageProcess, WhatAKilledPeerHasLeftIsSweptWhenTheNextControlIsMade)
{
    const QString socket = folder.file(u"AfxOleControl42.%1"_s.arg(other.handle()));
    other.killAndWait();
    ASSERT_TRUE(QFileInfo::exists(socket));
    const auto next = messages.makeControl();
    EXPECT_FALSE(QFileInfo::exists(socket));
    EXPECT_TRUE(messages.IsMsgWindow(control->handle()));
}

TEST_F(MessageProcess, APeerThatStartedAgainIsReachedUnderItsNewHandle)
{
    other.killAndWait();
    const test::Sibling again(folder.path());
    EXPECT_NE(again.handle(), other.handle());
    control->setTarget(again.handle());
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 42);
}

TEST_F(MessageProcess, ASendWithAPatienceOfItsOwnSaysWhetherItWasAnswered)
{
    EXPECT_TRUE(control->SendWithin(1h, sibling::kAdd, 40, 2));
    other.stop();
    EXPECT_FALSE(control->SendWithin(150ms, sibling::kAdd, 40, 2));
    other.killAndWait();
    EXPECT_FALSE(control->SendWithin(1h, sibling::kAdd, 40, 2));
}

TEST_F(ImpatientMessageProcess, AHungPeerAnswers0AfterTheTimeAndIsAliveAllTheSame)
{
    other.stop();
    EXPECT_TRUE(messages.IsMsgWindow(other.handle()));
    QElapsedTimer watch;
    watch.start();
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 0);
    EXPECT_FALSE(messages.lastSendWasAnswered());
    EXPECT_GE(watch.elapsed(), 150);
    EXPECT_LT(watch.elapsed(), test::kLongWaitMs);
}

TEST_F(ImpatientMessageProcess, TheLateAnswerOfAHungPeerIsNotTakenForTheNextOne)
{
    other.stop();
    EXPECT_EQ(control->Send(sibling::kAdd, 1, 1), 0);
    EXPECT_EQ(control->Send(sibling::kAdd, 2, 2), 0);
    other.goOn();
    // 0 says that it was not answered in time.
    const auto answerTo = [&](qint32 left, qint32 right) {
        qint32 answer = 0;
        EXPECT_TRUE(test::waitFor([&] {
            answer = control->Send(sibling::kAdd, left, right);
            return answer != 0;
        }));
        return answer;
    };
    EXPECT_EQ(answerTo(40, 2), 42);
    EXPECT_EQ(answerTo(30, 3), 33);
}

TEST_F(ImpatientMessageProcess, PostsToAHungPeerWaitThereAndArriveInOrder)
{
    constexpr qint32 kCount = 3000;
    other.stop();
    QElapsedTimer watch;
    watch.start();
    for (qint32 i = 0; i < kCount; ++i) {
        control->Post(sibling::kCountPosts, i, 0);
    }
    // One that waited would take 150 ms.
    EXPECT_LT(watch.elapsed(), test::kLongWaitMs);
    other.goOn();
    EXPECT_TRUE(
        test::waitFor([&] { return control->Send(sibling::kPostsInOrder, 0, 0) == kCount; }));
}

TEST_F(MessageProcess, PostsArriveFromTheMessageLoopInTheOrderPostedAndNotDuringASend)
{
    QList<qint32> seen;
    control->setMessageNumber([&](qint32, qint32 wParam, qint32) {
        seen.append(wParam);
        return 0;
    });
    EXPECT_EQ(send(sibling::kPostBack, 500), 500);
    EXPECT_EQ(control->Send(sibling::kAdd, 1, 1), 2);
    EXPECT_TRUE(seen.isEmpty());
    EXPECT_TRUE(test::waitFor([&] { return seen.size() == 500; }));
    EXPECT_TRUE(std::is_sorted(seen.cbegin(), seen.cend()));
}

TEST_F(MessageProcess, ABurstOfTenThousandPostsNeverStandsOnTheStackThoughEachHandlerTurnsTheLoop)
{
    constexpr qint32 kCount = 10'000;
    int depth = 0;
    int deepest = 0;
    QList<qint32> seen;
    control->setMessageNumber([&](qint32, qint32 wParam, qint32) {
        deepest = std::max(deepest, ++depth);
        seen.append(wParam);
        QCoreApplication::processEvents();
        --depth;
        return 0;
    });
    EXPECT_EQ(send(sibling::kPostBack, kCount), kCount);
    EXPECT_TRUE(test::waitFor([&] { return seen.size() == kCount; }));
    EXPECT_EQ(deepest, 1);
    EXPECT_TRUE(std::is_sorted(seen.cbegin(), seen.cend()));
}

TEST_F(MessageProcess, RefreshesOfAnotherProgramThatWaitTogetherAreHandledOnce)
{
    constexpr qint32 kCount = 10'000;
    int refreshes = 0;
    bool behind = false;
    control->setMessageNumber([&](qint32 id, qint32, qint32) {
        refreshes += id == sibling::kRefresh ? 1 : 0;
        behind = behind || id == sibling::kAdd;
        return 0;
    });
    EXPECT_EQ(send(sibling::kPostRefresh, kCount), kCount);
    EXPECT_EQ(send(sibling::kPostBack, 1), 1);
    EXPECT_TRUE(test::waitFor([&] { return behind; }));
    EXPECT_GE(refreshes, 1);
    // What came between two turns of the loop was one; a socket holds some hundreds.
    EXPECT_LT(refreshes, kCount / 10);
}

TEST_F(ImpatientMessageProcess, AHungPeerThatHasMoreThanEnoughGetsWhatWaitedInOrder)
{
    const QString text(65536, u'x');
    other.stop();
    constexpr qint32 kCount = 1000;
    for (qint32 i = 0; i < kCount; ++i) {
        control->Post(sibling::kCountPosts, i, 0);
    }
    for (int i = 0; i < 400; ++i) {
        control->PostText(1, 0, text);
    }
    other.goOn();
    EXPECT_TRUE(
        test::waitFor([&] { return control->Send(sibling::kPostsInOrder, 0, 0) == kCount; }));
}

TEST_F(MessageProcess, NeitherTimersNorEventsRunWhileASendWaits)
{
    answerPingPong();
    int fired = 0;
    QTimer timer;
    timer.callOnTimeout([&] { ++fired; });
    timer.start(0ms);
    QMetaObject::invokeMethod(
        qApp, [&] { ++fired; }, Qt::QueuedConnection);
    EXPECT_EQ(send(sibling::kPingPong, 60), 60);
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(test::waitFor([&] { return fired > 1; }));
}

TEST_F(MessageProcess, ATextGoesOverWhole)
{
    for (const QString& text : {QString(), u"Ägypten \u266B '\"\n"_s, QString(65536, u'x'),
                                QString(32768, QChar(0x00E4))}) {
        EXPECT_EQ(control->SendText(3075, 1, text), text.size());
        QString back;
        control->setMessageText([&](qint32, qint32, const QString& received) {
            back = received;
            return 5;
        });
        EXPECT_EQ(send(sibling::kTextBack), 5);
        EXPECT_EQ(back, text);
    }
}

TEST_F(MessageProcess, ATextThatIsTooLongIsRefusedWith0)
{
    EXPECT_EQ(control->SendText(3075, 1, QString(65537, u'x')), 0);
    EXPECT_EQ(control->SendText(3075, 1, QString(32769, QChar(0x00E4))), 0);
    control->PostText(3075, 1, QString(65537, u'x'));
    EXPECT_EQ(control->Send(sibling::kAdd, 40, 2), 42);
}

TEST_F(MessageProcess, AProgramSeesControlsOfAnotherAsAliveUntilTheyAreDestroyed)
{
    auto second = messages.makeControl();
    const MessageHandle handle = second->handle();
    EXPECT_EQ(control->Send(sibling::kIsLive, 0, handle), 1);
    second.reset();
    EXPECT_EQ(control->Send(sibling::kIsLive, 0, handle), 0);
}

TEST_F(MessageProcess, AHandlerThatDestroysItsControlStillAnswersTheSenderOnce)
{
    auto second = messages.makeControl();
    const MessageHandle handle = second->handle();
    second->setMessageNumber([&](qint32, qint32 wParam, qint32 lParam) {
        second.reset();
        return wParam + lParam;
    });
    EXPECT_EQ(control->Send(sibling::kSendBack, 41, handle), 1042);
    EXPECT_FALSE(second);
    EXPECT_EQ(control->Send(sibling::kSendBack, 41, handle), 1000);
}

TEST_F(MessageProcess, LiveControlsAreListedWithTheirProcesses)
{
    QHash<MessageHandle, qint64> found;
    for (const LiveControl& live : messages.liveControls()) {
        found.insert(live.handle, live.process);
    }
    EXPECT_EQ(found.size(), 2);
    EXPECT_EQ(found.value(other.handle()), other.process());
    EXPECT_EQ(found.value(control->handle()), qint64(QCoreApplication::applicationPid()));
}

// ---- the sibling itself

/// The next bytes of a pipe; empty at its end, which comes when nobody holds the other side.
QByteArray nextBytes(int pipe)
{
    pollfd wanted{pipe, POLLIN, 0};
    if (::poll(&wanted, 1, 20'000) != 1) {
        ADD_FAILURE() << "silent, and somebody holds it still";
        return "nothing";
    }
    std::array<char, 64> bytes{};
    return {bytes.data(), qMax(qsizetype(0), ::read(pipe, bytes.data(), bytes.size()))};
}

TEST(MessageSibling, EndsWithTheProgramThatHasStartedIt)
{
    const test::TempFolder folder;
    const QString start = u"'%1' '%2' & echo shell $$ ; wait"_s;
    const QString command = start.arg(test::siblingProgram(), folder.path());
    FILE* const starter = ::popen(command.toLocal8Bit().constData(), "r");
    ASSERT_NE(starter, nullptr);
    QByteArray told; // the number of the shell and the handle of the sibling, whoever is first
    while (told.count('\n') < 2) {
        const QByteArray next = nextBytes(::fileno(starter));
        ASSERT_FALSE(next.isEmpty());
        told += next;
    }
    const QByteArray shell = told.mid(told.indexOf("shell ") + 6);
    ASSERT_EQ(::kill(shell.left(shell.indexOf('\n')).toInt(), SIGKILL), 0);
    EXPECT_TRUE(nextBytes(::fileno(starter)).isEmpty());
    ::pclose(starter);
}

} // namespace
} // namespace melovane
