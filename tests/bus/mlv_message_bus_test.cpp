#include "bus/mlv_message_bus.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <QDir>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class MLVMessageBusTest : public testing::Test
{
protected:
    /// A subscriber that writes down what it gets as "name:command".
    MLVMessageBus::Subscription logged(const QString& name)
    {
        return bus.subscribe(
            [this, name](const MLVMessage& message) { log.append(name + u':' + message.Command); });
    }

    void reportDiskFull(bool toFile)
    {
        bus.SendBusErrorMessage({61, u"Datenträger voll"_s, u"Speichern"_s, u"Layout"_s}, toFile);
    }

    [[nodiscard]] QByteArray errorFile()
    {
        return folders.folder().read(folders.configFile(u"bus.err"_s));
    }

    test::SuiteFolders folders;
    test::FakeClock clock;
    MLVMessageBus bus{folders.paths(), folders.files(), clock};
    BusSender sender{bus, u"MLVDB"_s};
    QStringList log;
};

TEST_F(MLVMessageBusTest, EverySubscriberGetsEveryMessageInTheOrderOfSubscription)
{
    const auto a = logged(u"A"_s);
    const auto b = logged(u"B"_s);
    const auto c = logged(u"C"_s);
    sender.SendMessage(u"refresh.all"_s);
    sender.SendMessage(u"nobody.knows.this"_s);
    EXPECT_EQ(log, (QStringList{u"A:refresh.all"_s, u"B:refresh.all"_s, u"C:refresh.all"_s,
                                u"A:nobody.knows.this"_s, u"B:nobody.knows.this"_s,
                                u"C:nobody.knows.this"_s}));
}

TEST_F(MLVMessageBusTest, WithoutSubscribersAMessageCostsNothing)
{
    sender.SendMessage(u"refresh.all"_s);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(MLVMessageBusTest, ANameInAnotherCaseIsMatchedByAReceiverThatLowersIt)
{
    int refreshed = 0;
    const auto view = bus.subscribe([&](const MLVMessage& message) {
        refreshed += message.Command.toLower() == "refresh.all"_L1 ? 1 : 0;
    });
    sender.SendMessage(u"Refresh.All"_s);
    EXPECT_EQ(refreshed, 1);
}

TEST_F(MLVMessageBusTest, SpareFieldsReachTheReceiverAndStayWhenTheValuesAreTakenOrCleared)
{
    QObject view;
    MLVMessage received;
    const auto receiver = bus.subscribe([&](const MLVMessage& message) { received = message; });
    MLVMessage sent;
    EXPECT_EQ(sent.Source, nullptr);
    sent.Source = &view;
    sent.Spare1 = 7;
    sent.Spare2 = -8;
    sent.Spare3 = u"frei"_s;
    sent.Value1 = 1;
    sent.PrintValue();
    bus.SendBusMessage(sent);
    EXPECT_EQ(received.Value1.toLong(), 1);
    received.SetMessageValue({});
    received.ClearValue();
    EXPECT_TRUE(received.Value1.isNull());
    EXPECT_EQ(received.Source, &view);
    EXPECT_EQ(received.Spare1, 7);
    EXPECT_EQ(received.Spare2, -8);
    EXPECT_EQ(received.Spare3, u"frei"_s);
}

TEST_F(MLVMessageBusTest, AValueLeftOutIsNullAndNotAnEmptyText)
{
    MLVMessage seen;
    const auto view = bus.subscribe([&](const MLVMessage& message) { seen = message; });
    sender.SendMessage(u"tree.click.row"_s, Value(u"Ägypten"_s), Value(QString()));
    EXPECT_EQ(seen.Value1.toText(), u"Ägypten"_s);
    EXPECT_FALSE(seen.Value2.isNull());
    EXPECT_TRUE(seen.Value3.isNull());
    EXPECT_TRUE(seen.Value4.isNull());
    EXPECT_EQ(seen.Sender, u"MLVDB"_s);

    sender.SendMessage(u"refresh.all"_s);
    EXPECT_TRUE(seen.Value1.isNull()) << "a value of the message before is still there";
}

TEST_F(MLVMessageBusTest, SetMessageValueTakesTheValuesAloneAndClearValueMakesThemNull)
{
    MLVMessage one;
    one.Command = u"one"_s;
    one.Sender = u"A"_s;
    one.Value1 = Value(1);
    one.Value4 = Value(u"four"_s);
    MLVMessage two;
    two.Command = u"two"_s;
    two.Sender = u"B"_s;
    two.SetMessageValue(one);
    EXPECT_EQ(two.Command, u"two"_s);
    EXPECT_EQ(two.Sender, u"B"_s);
    EXPECT_EQ(two.Value1.toLong(), 1);
    EXPECT_EQ(two.Value4.toText(), u"four"_s);
    two.ClearValue();
    EXPECT_TRUE(two.Value1.isNull());
    EXPECT_TRUE(two.Value4.isNull());
    EXPECT_EQ(two.Command, u"two"_s);
}

TEST_F(MLVMessageBusTest, ANestedMessageReachesAllBeforeTheOuterOneGoesOn)
{
    const auto a = logged(u"A"_s);
    BusSender inner(bus, u"ctl_MP3DB"_s);
    const auto b = bus.subscribe([&](const MLVMessage& message) {
        log.append(u"B:"_s + message.Command);
        if (message.Command == "outer"_L1) {
            inner.SendMessage(u"inner"_s);
        }
    });
    const auto c = logged(u"C"_s);
    sender.SendMessage(u"outer"_s);
    EXPECT_EQ(log, (QStringList{u"A:outer"_s, u"B:outer"_s, u"A:inner"_s, u"B:inner"_s,
                                u"C:inner"_s, u"C:outer"_s}));
}

TEST_F(MLVMessageBusTest, AMessageSentInAHandlerOverwritesTheViewsOwnUnlessItsValuesWereCopied)
{
    Value afterwards;
    Value copied;
    const auto view = bus.subscribe([&](const MLVMessage& message) {
        if (message.Command == "outer"_L1) {
            MLVMessage copy;
            copy.SetMessageValue(message);
            sender.SendMessage(u"inner"_s, Value(u"new"_s));
            afterwards = message.Value1;
            copied = copy.Value1;
        }
    });
    sender.SendMessage(u"outer"_s, Value(u"old"_s));
    EXPECT_EQ(afterwards.toText(), u"new"_s);
    EXPECT_EQ(copied.toText(), u"old"_s);
}

TEST_F(MLVMessageBusTest, TheValuesOfAMessageMayBeSentOnInTheSameMessage)
{
    QStringList values;
    const auto view = bus.subscribe([&](const MLVMessage& message) {
        values.append(message.Value1.toText() + message.Value2.toText());
        if (message.Command == "outer"_L1) {
            sender.SendMessage(u"inner"_s, message.Value2, message.Value1);
        }
    });
    sender.SendMessage(u"outer"_s, Value(u"a"_s), Value(u"b"_s));
    EXPECT_EQ(values, (QStringList{u"ab"_s, u"ba"_s}));
}

TEST_F(MLVMessageBusTest, ASenderKnowsItsOwnMessagesByTheirName)
{
    QStringList passedOn;
    const auto window = bus.subscribe([&](const MLVMessage& message) {
        if (message.Sender != sender.name()) {
            passedOn.append(message.Command);
        }
    });
    BusSender view(bus, u"PlaylistFavorit1"_s);
    sender.SendMessage(u"refresh.playlist.tree"_s);
    view.SendMessage(u"favorit.refresh"_s);
    EXPECT_EQ(passedOn, QStringList(u"favorit.refresh"_s));
}

TEST_F(MLVMessageBusTest, ASubscriberThatLeavesInMidDeliveryIsNotReachedAnyMore)
{
    MLVMessageBus::Subscription b;
    const auto a = bus.subscribe([&](const MLVMessage&) { b.reset(); });
    b = logged(u"B"_s);
    const auto c = logged(u"C"_s);
    sender.SendMessage(u"x"_s);
    EXPECT_EQ(log, QStringList(u"C:x"_s));
}

TEST_F(MLVMessageBusTest, ASubscriberMayLeaveInItsOwnHandler)
{
    const QString kept = u"lives in the handler"_s;
    MLVMessageBus::Subscription a;
    a = bus.subscribe([&, kept](const MLVMessage&) {
        a.reset();
        log.append(kept);
    });
    const auto b = logged(u"B"_s);
    sender.SendMessage(u"x"_s);
    sender.SendMessage(u"y"_s);
    EXPECT_EQ(log, (QStringList{kept, u"B:x"_s, u"B:y"_s}));
}

TEST_F(MLVMessageBusTest, WhoJoinsInMidDeliveryGetsTheNextMessageOnwards)
{
    std::vector<MLVMessageBus::Subscription> late;
    BusSender inner(bus, u"A"_s);
    const auto a = bus.subscribe([&](const MLVMessage& message) {
        if (message.Command == "outer"_L1) {
            late.push_back(logged(u"late"_s));
            inner.SendMessage(u"inner"_s);
        }
    });
    sender.SendMessage(u"outer"_s);
    EXPECT_EQ(log, QStringList(u"late:inner"_s));
    sender.SendMessage(u"next"_s);
    EXPECT_EQ(log.last(), u"late:next"_s);
}

TEST_F(MLVMessageBusTest, AnEndedSubscriptionGetsNothing)
{
    auto a = logged(u"A"_s);
    a.reset();
    sender.SendMessage(u"x"_s);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(MLVMessageBusTest, AnErrorMessageWithoutAFileNameRaisesTheEventAlone)
{
    MLVErrorMessage seen;
    const auto listener = bus.subscribeErrors([&](const MLVErrorMessage& error) { seen = error; });
    const QStringList before = QDir(folders.programFolder()).entryList(QDir::Files);
    reportDiskFull(true);
    EXPECT_EQ(seen.ErrorNumber, 61);
    EXPECT_EQ(seen.ErrorDescription, u"Datenträger voll"_s);
    EXPECT_EQ(QDir(folders.programFolder()).entryList(QDir::Files), before);
}

TEST_F(MLVMessageBusTest, AnErrorMessageThatIsNotForTheFileRaisesTheEventAlone)
{
    int heard = 0;
    const auto listener = bus.subscribeErrors([&](const MLVErrorMessage&) { ++heard; });
    bus.ErrorFileName = u"bus.err"_s;
    reportDiskFull(false);
    EXPECT_EQ(heard, 1);
    EXPECT_FALSE(folders.files().fileExists(folders.configFile(u"bus.err"_s)));
}

TEST_F(MLVMessageBusTest, EachFieldInTheErrorFileBeginsAtTheNextMultipleOf14)
{
    bus.ErrorFileName = u"bus.err"_s;
    reportDiskFull(true);
    bus.SendBusErrorMessage({-2147483647, QString(), u"x"_s, u"vierzehn Stell"_s}, true);
    EXPECT_EQ(QString::fromUtf8(errorFile()).split(u'\n'),
              (QStringList{
                  //        14            28            42            56            70
                  u"14.03.2026 15:09:26         MelovaneDB    Layout        61            "
                  "Datenträger voll            Speichern"_s,
                  // A field that fills its zone goes on after the next one; an empty one takes one.
                  u"14.03.2026 15:09:26         MelovaneDB    vierzehn Stell              "
                  "-2147483647                 x"_s,
                  QString()}));
}

TEST_F(MLVMessageBusTest, AReportWithLineEndsStaysOneLineOfTheErrorFile)
{
    bus.ErrorFileName = u"bus.err"_s;
    bus.SendBusErrorMessage({1, u"one\r\ntwo\nthree"_s, {}, {}}, true);
    EXPECT_EQ(errorFile().count('\n'), 1);
    EXPECT_TRUE(errorFile().contains("one two three"));
}

TEST_F(MLVMessageBusTest, AnErrorFileThatCannotBeWrittenBringsNobodyDown)
{
    ASSERT_TRUE(QDir(folders.programFolder()).mkdir(u"bus.err"_s));
    int heard = 0;
    const auto listener = bus.subscribeErrors([&](const MLVErrorMessage&) { ++heard; });
    bus.ErrorFileName = u"bus.err"_s;
    reportDiskFull(true);
    EXPECT_EQ(heard, 1);
}

TEST_F(MLVMessageBusTest, AFailingListenerOfErrorsBringsNobodyDownAndTheFileIsWritten)
{
    const auto listener =
        bus.subscribeErrors([](const MLVErrorMessage&) { throw std::runtime_error("listener"); });
    bus.ErrorFileName = u"bus.err"_s;
    EXPECT_NO_THROW(reportDiskFull(true));
    EXPECT_EQ(errorFile().count('\n'), 1);
}

} // namespace
} // namespace melovane
