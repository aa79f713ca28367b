#include "shell/start_fakes.h"
#include "shell/start_up_db.h"
#include "shell/sub_main.h"
#include "support/answer_queue.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A loop that writes down its turns.
class TurnLog : public test::SteppedLoop
{
public:
    explicit TurnLog(QStringList& calls)
        : m_calls(calls)
    {}

    void turn() override { m_calls.append(u"turn"_s); }

private:
    QStringList& m_calls;
};

struct SubMainTest : public testing::Test
{
    StartResult run()
    {
        const auto note = [this](const QString& call) { calls.append(call); };
        const StartSteps steps{[=, this] {
                                   note(u"open"_s);
                                   return fault;
                               },
                               [=, this] {
                                   note(u"config"_s);
                                   catalogue.fill();
                               },
                               [=, this] {
                                   note(u"copy"_s);
                                   return secondCopy;
                               },
                               [=, this] {
                                   note(u"exists"_s);
                                   return exists;
                               },
                               [=, this] {
                                   note(u"version"_s);
                                   return versionFits;
                               },
                               [=, this] {
                                   note(u"window"_s);
                                   delayAtWindow = splash.StartupCloseDelay;
                               }};
        return SubMain(steps, {*settings, catalogue.texts, answers, messages, loop, splash}).run();
    }

    test::TextCatalogue catalogue;
    std::unique_ptr<GlobalSettings> settings = catalogue.folders.makeSettings();
    test::AnswerQueue answers;
    test::KnownHandles messages;
    QStringList calls;
    TurnLog loop{calls};
    test::SplashLog form{calls};
    frmStartUpDB splash{catalogue.texts, loop, form, [] {}};
    OpenFault fault;
    bool secondCopy = false;
    bool exists = true;
    bool versionFits = true;
    int delayAtWindow = -1;
};

TEST_F(SubMainTest, TakesItsStepsInTheirOrderAndShowsTheSplashOverTheWindow)
{
    EXPECT_EQ(run(), StartResult::Run);
    EXPECT_EQ(calls, (QStringList{u"open"_s, u"config"_s, u"copy"_s, u"exists"_s, u"version"_s,
                                  u"splash"_s, u"turn"_s, u"window"_s, u"front"_s}));
    EXPECT_EQ(delayAtWindow, 500);
    EXPECT_TRUE(loop.fire(5000)) << "the splash goes by itself";
    EXPECT_EQ(calls.last(), u"unload"_s);
}

TEST_F(SubMainTest, WithALivePlayerThereIsNoSplash)
{
    settings->SetMessageHandleDJ(4711);
    messages.alive = {4711};
    EXPECT_EQ(run(), StartResult::Run);
    EXPECT_EQ(calls, (QStringList{u"open"_s, u"config"_s, u"copy"_s, u"exists"_s, u"version"_s,
                                  u"window"_s}));
}

TEST_F(SubMainTest, WithTheStaleHandleOfADeadPlayerTheSplashIsShown)
{
    settings->SetMessageHandleDJ(4711);
    messages.alive = {4712};
    EXPECT_EQ(run(), StartResult::Run);
    EXPECT_TRUE(calls.contains(u"splash"_s));
}

TEST_F(SubMainTest, ASecondCopyEndsWithoutAWordEvenWhenTheDatabaseIsBroken)
{
    secondCopy = true;
    fault = {u"kaputt"_s, 3049};
    EXPECT_EQ(run(), StartResult::SecondCopy);
    EXPECT_EQ(calls, (QStringList{u"open"_s, u"config"_s, u"copy"_s}));
}

TEST_F(SubMainTest, AFailedOpenTestIsToldBeforeAMissingFile)
{
    fault = {u"Tabelle $1 fehlt"_s, 1};
    exists = false;
    answers.expectMessage(u"Achtung !: Melovane kann nicht gestartet werden, da folgender Fehler "
                          "aufgetreten ist.\n\nTabelle $1 fehlt"_s);
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_FALSE(answers.lastMessage.question);
    EXPECT_EQ(calls.last(), u"copy"_s);
}

TEST_F(SubMainTest, AKnownErrorIsToldInTheUsersLanguage)
{
    fault = {u"The file does not exist: x"_s, 3024};
    answers.expectMessage(u"Die Datenbankdatei ist nicht vorhanden:\n"_s + settings->DbName());
    EXPECT_EQ(run(), StartResult::Refused);
}

TEST_F(SubMainTest, AMissingDatabaseIsNamed)
{
    exists = false;
    answers.expectMessage(u"Achtung !: Melovane Datenbank nicht gefunden "_s + settings->DbName());
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_EQ(calls.last(), u"exists"_s);
}

TEST_F(SubMainTest, AWrongVersionIsToldWithBothVersionsUnderItsOddTitle)
{
    versionFits = false;
    settings->SetDBVersion(u"2.9"_s);
    answers.expectMessage(
        u"ooop's: Falsche Melovane Datenbankversion\n%1\nIhre Datenbank hat die Versionsnummer: "
        "2.9 benötigt wird aber die Version: 3.4"_s.arg(settings->DbName()));
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_EQ(calls.last(), u"version"_s);
}

} // namespace
} // namespace melovane
