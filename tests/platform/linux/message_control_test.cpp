#include "platform/linux/linux_messages.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Two controls of one program, as the main window and a view each have one.
class MessageControl : public testing::Test
{
protected:
    MessageControl()
        : MessageControl(std::set<qint32>())
    {}

    /// \param refreshes identifiers of posts that may become one
    explicit MessageControl(std::set<qint32> refreshes)
        : messages(makeMessages(folder.path(), std::move(refreshes)))
    {
        one->setTarget(two->handle());
        two->setTarget(one->handle());
    }

    static std::unique_ptr<LinuxMessages> makeMessages(const QString& path,
                                                       std::set<qint32> refreshes)
    {
        MessagePlace place(path);
        place.refreshes = std::move(refreshes);
        return std::make_unique<LinuxMessages>(std::move(place));
    }

    test::TempFolder folder;
    std::unique_ptr<LinuxMessages> messages;
    std::unique_ptr<KSMessage> one = messages->makeControl();
    std::unique_ptr<KSMessage> two = messages->makeControl();
};

/// Posts of one identifier only ask to read again.
class RefreshingControl : public MessageControl
{
protected:
    using Seen = std::pair<qint32, qint32>; ///< id and wParam

    static constexpr qint32 kRefresh = 5;
    static constexpr qint32 kStep = 6;

    RefreshingControl()
        : MessageControl({kRefresh})
    {
        two->setMessageNumber([this](qint32 id, qint32 wParam, qint32) {
            seen.append({id, wParam});
            return 0;
        });
    }

    QList<Seen> seen;
};

TEST_F(MessageControl, HandlesArePositiveAndNotBelow65536AndTheControlsAreAlive)
{
    EXPECT_GE(one->handle(), 65536);
    EXPECT_GE(two->handle(), 65536);
    EXPECT_NE(one->handle(), two->handle());
    EXPECT_TRUE(messages->IsMsgWindow(one->handle()));
    EXPECT_EQ(one->target(), two->handle());
}

TEST_F(MessageControl, SendsWithinOneProgramReachTheHandlerAtOnce)
{
    two->setMessageNumber(
        [](qint32 id, qint32 wParam, qint32 lParam) { return id * 100 + wParam * 10 + lParam; });
    EXPECT_EQ(one->Send(1, 2, 3), 123);
    two->setMessageText(
        [](qint32 id, qint32 number, const QString& text) { return id + number + text.size(); });
    EXPECT_EQ(one->SendText(1, 2, u"Ägypten"_s), 10);
}

TEST_F(MessageControl, WithoutAHandlerTheAnswerIs0)
{
    EXPECT_EQ(one->Send(1, 2, 3), 0);
    EXPECT_EQ(one->SendText(1, 2, u"x"_s), 0);
    two->setMessageNumber([](qint32, qint32, qint32) { return 5; });
    two->setMessageNumber({});
    EXPECT_EQ(one->Send(1, 2, 3), 0);
}

TEST_F(MessageControl, NobodyAndAHandleThatNeverWasAreNoErrors)
{
    for (const MessageHandle target : {0, -1, 65536, std::numeric_limits<MessageHandle>::max()}) {
        one->setTarget(target);
        EXPECT_EQ(one->Send(1, 2, 3), 0);
        EXPECT_EQ(one->SendText(1, 2, u"x"_s), 0);
        one->Post(1, 2, 3);
        one->PostText(1, 2, u"x"_s);
        EXPECT_FALSE(messages->IsMsgWindow(target));
    }
}

TEST_F(MessageControl, TheLengthOfATextIsLimitedWithinTheProgramToo)
{
    int texts = 0;
    two->setMessageText([&](qint32, qint32, const QString&) { return ++texts; });
    EXPECT_EQ(one->SendText(1, 2, QString(65536, u'x')), 1);
    EXPECT_EQ(one->SendText(1, 2, QString(65537, u'x')), 0);
    one->PostText(1, 2, QString(65537, u'x'));
    one->PostText(1, 2, {});
    EXPECT_TRUE(test::waitFor([&] { return texts == 2; }));
}

TEST_F(MessageControl, EndlessNestingWithinOneProgramIsCutAfter64Sends)
{
    int depth = 0;
    one->setMessageNumber([&](qint32, qint32, qint32) {
        ++depth;
        return one->Send(1, 0, 0);
    });
    two->setMessageNumber([&](qint32, qint32, qint32) {
        ++depth;
        return two->Send(1, 0, 0);
    });
    EXPECT_EQ(one->Send(1, 0, 0), 0);
    EXPECT_EQ(depth, 64);
    depth = 0;
    EXPECT_EQ(one->Send(1, 0, 0), 0);
    EXPECT_EQ(depth, 64);
}

TEST_F(MessageControl, PostsWithinOneProgramComeFromTheMessageLoopInOrder)
{
    QStringList seen;
    two->setMessageNumber([&](qint32 id, qint32, qint32) {
        seen.append(QString::number(id));
        return 0;
    });
    two->setMessageText([&](qint32, qint32, const QString& text) {
        seen.append(text);
        return 0;
    });
    one->Post(1, 0, 0);
    one->PostText(2, 0, u"text"_s);
    one->Post(3, 0, 0);
    EXPECT_TRUE(seen.isEmpty());
    EXPECT_TRUE(test::waitFor([&] { return seen.size() == 3; }));
    EXPECT_EQ(seen, (QStringList{u"1"_s, u"text"_s, u"3"_s}));
}

TEST_F(MessageControl, AMessageLoopInsideAHandlerGetsThePostsBehindItWhenTheHandlerHasReturned)
{
    QList<qint32> seen;
    bool turned = false;
    two->setMessageNumber([&](qint32 id, qint32, qint32) {
        seen.append(id);
        if (id == 1) {
            // As a dialog does; long enough for a timer that was started before.
            QTimer::singleShot(0, qApp, [&] { turned = true; });
            EXPECT_TRUE(test::waitFor([&] { return turned; }));
            QCoreApplication::processEvents();
            EXPECT_EQ(seen, QList<qint32>{1});
        }
        return 0;
    });
    for (const qint32 id : {1, 2, 3}) {
        one->Post(id, 0, 0);
    }
    EXPECT_TRUE(test::waitFor([&] { return seen.size() == 3; }));
    EXPECT_EQ(seen, (QList<qint32>{1, 2, 3}));
}

TEST_F(MessageControl, ASendReachesTheHandlerWhileAPostedOneRunsAMessageLoop)
{
    qint32 answer = 0;
    two->setMessageNumber([&](qint32 id, qint32 wParam, qint32) {
        if (id == 1) {
            QTimer::singleShot(0, qApp, [&] { answer = one->Send(2, 41, 0); });
            EXPECT_TRUE(test::waitFor([&] { return answer != 0; }));
        }
        return wParam + 1;
    });
    one->Post(1, 0, 0);
    EXPECT_TRUE(test::waitFor([&] { return answer == 42; }));
}

TEST_F(RefreshingControl, TenThousandEqualRefreshesThatWaitBecomeOneAndOthersStay)
{
    for (int i = 0; i < 10'000; ++i) {
        one->Post(kRefresh, 1, 0);
    }
    one->Post(kRefresh, 2, 0);
    one->Post(kStep, 1, 0);
    one->Post(kStep, 1, 0);
    EXPECT_TRUE(test::waitFor([&] { return seen.size() >= 4; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (QList<Seen>{{kRefresh, 1}, {kRefresh, 2}, {kStep, 1}, {kStep, 1}}));
}

TEST_F(RefreshingControl, ARefreshBehindAChangeIsNotTakenForTheOneBefore)
{
    one->Post(kRefresh, 1, 0);
    one->Post(kStep, 1, 0);
    one->Post(kRefresh, 1, 0);
    EXPECT_TRUE(test::waitFor([&] { return seen.size() >= 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (QList<Seen>{{kStep, 1}, {kRefresh, 1}}));
}

TEST_F(RefreshingControl, ARefreshThatIsPostedWhileItsLikeIsHandledComesOnceMore)
{
    two->setMessageNumber([&](qint32 id, qint32 wParam, qint32) {
        seen.append({id, wParam});
        if (seen.size() == 1) {
            one->Post(kRefresh, 1, 0);
            one->Post(kRefresh, 1, 0);
        }
        return 0;
    });
    one->Post(kRefresh, 1, 0);
    EXPECT_TRUE(test::waitFor([&] { return seen.size() >= 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(MessageControl, AHandlerMayReplaceItself)
{
    const QString kept = u"a text that lives in the handler"_s;
    two->setMessageNumber([&, kept](qint32, qint32, qint32) {
        two->setMessageNumber([](qint32, qint32, qint32) { return 2; });
        return qint32(kept.size());
    });
    EXPECT_EQ(one->Send(1, 0, 0), kept.size());
    EXPECT_EQ(one->Send(1, 0, 0), 2);
}

TEST_F(MessageControl, AHandlerMayDestroyItsControlAndTheSendersToo)
{
    two->setMessageNumber([&](qint32, qint32, qint32) {
        two.reset();
        one.reset();
        return 9;
    });
    EXPECT_EQ(one->Send(1, 0, 0), 9);
    EXPECT_FALSE(one);
}

TEST_F(MessageControl, APostedMessageMayEndAllControlsOfTheProgram)
{
    bool ended = false;
    two->setMessageNumber([&](qint32, qint32, qint32) {
        messages.reset();
        one.reset();
        two.reset();
        ended = true;
        return 0;
    });
    one->Post(1, 0, 0);
    one->Post(2, 0, 0);
    EXPECT_TRUE(test::waitFor([&] { return ended; }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::System | QDir::Files).isEmpty());
}

TEST_F(MessageControl, APostToAControlThatIsGoneWhenItsTurnComesIsDropped)
{
    int seen = 0;
    two->setMessageNumber([&](qint32, qint32, qint32) { return ++seen; });
    one->setMessageNumber([&](qint32, qint32, qint32) { return ++seen; });
    one->Post(1, 0, 0);
    two.reset();
    one->setTarget(one->handle());
    one->Post(1, 0, 0);
    EXPECT_TRUE(test::waitFor([&] { return seen == 1; }));
}

TEST_F(MessageControl, ControlsOutliveTheirFactory)
{
    messages.reset();
    two->setMessageNumber([](qint32, qint32, qint32) { return 4; });
    EXPECT_EQ(one->Send(1, 0, 0), 4);
}

TEST_F(MessageControl, AProgramThatNeverReturnsToItsLoopLosesPostsInsteadOfItsMemory)
{
    int seen = 0;
    two->setMessageText([&](qint32, qint32, const QString&) { return ++seen; });
    const QString text(65536, u'x');
    for (int i = 0; i < 2000; ++i) {
        one->PostText(1, 0, text);
    }
    int numbers = 0;
    two->setMessageNumber([&](qint32, qint32, qint32) { return ++numbers; });
    EXPECT_TRUE(test::waitFor([&] { return seen > 500; }));
    one->Post(1, 0, 0);
    EXPECT_TRUE(test::waitFor([&] { return numbers == 1; }));
    EXPECT_LT(seen, 520);
}

} // namespace
} // namespace melovane
