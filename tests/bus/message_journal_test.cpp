#include "bus/message_journal.h"
#include "bus/message_numbers.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A control with a journal, and another one that it speaks to.
struct JournalTest : test::SuiteFixture
{
    JournalTest()
    {
        other->setMessageNumber([](qint32 id, qint32, qint32) { return id + 1; });
        other->setTarget(control.handle());
        control.setTarget(other->handle());
    }

    /// Without the moment.
    [[nodiscard]] QStringList told() const
    {
        QStringList result;
        for (const QString& line : control.lines()) {
            result.append(line.section(u"  "_s, 1));
        }
        return result;
    }

    LinuxMessages messages{MessagePlace(suite.folders.environment().runtimeFolder())};
    std::unique_ptr<KSMessage> other = messages.makeControl();
    JournalControl control{messages.makeControl(), suite.clock};
};

TEST_F(JournalTest, WhatIsSentAndWhatArrivesIsRememberedWithItsAnswer)
{
    control.setMessageNumber([](qint32, qint32 wParam, qint32) { return wParam * 2; });
    EXPECT_EQ(control.Send(1046, 1, 2), 1047);
    EXPECT_EQ(other->Send(1039, 4, 0), 8);
    EXPECT_EQ(other->SendText(3075, 11011, u"Zeile\nzwei"_s), 0);
    const QString partner = QString::number(other->handle());
    EXPECT_EQ(told(), (QStringList{u"> "_s + partner + u"  1046 1 2  = 1047"_s,
                                   u"<  1039 4 0  = 8"_s, u"<  3075 11011 \"Zeile.zwei\"  = 0"_s}));
}

TEST_F(JournalTest, APatientSendSaysWhetherItWasAnsweredAndAPostHasNoAnswer)
{
    EXPECT_TRUE(control.SendWithin(std::chrono::seconds(5), 1037, 0, 0));
    control.Post(1042, 0, 0);
    const QString partner = QString::number(other->handle());
    other.reset();
    EXPECT_FALSE(control.SendWithin(std::chrono::milliseconds(10), 1037, 0, 0));
    EXPECT_EQ(told(), (QStringList{u"> "_s + partner + u"  1037 0 0  ="_s,
                                   u"> "_s + partner + u"  1042 0 0"_s,
                                   u"> "_s + partner + u"  1037 0 0  -"_s}));
}

TEST_F(JournalTest, OnlyTheLastMessagesAreKept)
{
    for (qint32 id = 0; id < 100; ++id) {
        EXPECT_EQ(control.Send(id, 0, 0), id + 1);
    }
    EXPECT_EQ(control.lines().size(), 40);
    EXPECT_TRUE(control.lines().last().contains(u"99 0 0"_s));
}

TEST_F(JournalTest, WhoAsksForTheJournalGetsItAndTheTargetStays)
{
    EXPECT_EQ(control.Send(1046, 0, 0), 1047);
    const auto asker = messages.makeControl();
    QString got;
    asker->setMessageText([&got](qint32 id, qint32, const QString& text) {
        got = id == message::kTellJournal ? text : QString();
        return 0;
    });
    asker->setTarget(control.handle());
    EXPECT_EQ(asker->Send(message::kTellJournal, 0, asker->handle()), 1);
    EXPECT_EQ(got, control.lines().join(u'\n'));
    EXPECT_EQ(control.target(), other->handle());
    EXPECT_EQ(control.lines().size(), 1);
}

TEST_F(JournalTest, AHandlerMayDestroyTheControlThatItWasCalledFor)
{
    auto dying = std::make_unique<JournalControl>(messages.makeControl(), suite.clock);
    dying->setMessageNumber([&dying](qint32, qint32, qint32) {
        dying.reset();
        return 7;
    });
    other->setTarget(dying->handle());
    (void)other->Send(1, 0, 0);
    EXPECT_EQ(dying, nullptr);
}

} // namespace
} // namespace melovane
