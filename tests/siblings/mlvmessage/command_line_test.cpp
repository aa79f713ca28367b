#include "config/program_call.h"
#include "siblings/mlvmessage/command_line.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

std::optional<MessageCommand> parsed(const QString& line)
{
    return parseCommandLine(line.split(u' ', Qt::SkipEmptyParts));
}

TEST(MessageCommandLine, SendAndPostTakeATargetANumberAndUpToTwoMore)
{
    const auto whole = parsed(u"send MelovaneDB 1042 -3 2147483647"_s);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->action, MessageCommand::Action::Send);
    EXPECT_EQ(whole->target, u"MelovaneDB"_s);
    EXPECT_EQ(whole->id, 1042);
    EXPECT_EQ(whole->wParam, -3);
    EXPECT_EQ(whole->lParam, 2147483647);
    EXPECT_EQ(whole->wait, 10s);
    const auto least = parsed(u"post 4711000 1079"_s);
    ASSERT_TRUE(least);
    EXPECT_EQ(least->action, MessageCommand::Action::Post);
    EXPECT_EQ(least->wParam, 0);
    EXPECT_FALSE(least->text);
}

TEST(MessageCommandLine, ATextTakesTheSecondNumbersPlaceAndMayBeAnything)
{
    const auto text =
        parseCommandLine({u"send"_s, u"DB"_s, u"3075"_s, u"11011"_s, u"--text"_s, u"--wait"_s});
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text, u"--wait"_s);
    EXPECT_EQ(text->wParam, 11011);
    EXPECT_TRUE(parseCommandLine({u"post"_s, u"DB"_s, u"3075"_s, u"--text"_s, QString()}));
    EXPECT_FALSE(parsed(u"send DB 3075 1 2 --text x"_s));
}

TEST(MessageCommandLine, ListenTakesItsOwnOptions)
{
    const auto listen = parsed(u"listen --as DJ --answer -1 --count 3 --seconds 0.5"_s);
    ASSERT_TRUE(listen);
    EXPECT_EQ(listen->name, u"DJ"_s);
    EXPECT_EQ(listen->answer, -1);
    EXPECT_EQ(listen->count, 3);
    EXPECT_GE(listen->duration, 500ms);
    EXPECT_LE(listen->duration, 501ms);
}

class WrongCommandLine : public testing::TestWithParam<const char*>
{};

TEST_P(WrongCommandLine, IsRefused)
{
    EXPECT_FALSE(parsed(QString::fromUtf8(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(All,
                         WrongCommandLine,
                         testing::Values("",
                                         "fly",
                                         "list all",
                                         "alive",
                                         "alive a b",
                                         "send DB",
                                         "send DB x",
                                         "send DB 1 2 3 4",
                                         "send DB 99999999999",
                                         "send DB 1.5",
                                         "send DB 1 --wait",
                                         "send DB 1 --wait 0",
                                         "send DB 1 --wait nan",
                                         "send DB 1 --wait 1e9",
                                         "send DB 1 --count 3",
                                         "post DB 1 --wait 3",
                                         "listen --count 0",
                                         "listen --count x",
                                         "listen --as a=b",
                                         "listen --seconds -1",
                                         "listen here",
                                         "list --text x",
                                         "--help me"));

TEST(MessageCommandLine, TheHelpNamesEveryActionAndExitCode)
{
    const QString help = programPage(u"mlvmessage", PageLanguage::German);
    for (const QString& word :
         {u"list"_s, u"alive"_s, u"send"_s, u"post"_s, u"listen"_s, u"--wait"_s, u"--as"_s,
          u"--answer"_s, u"--count"_s, u"--seconds"_s, u"--text"_s, u"Ergebnis: 0"_s}) {
        EXPECT_TRUE(help.contains(word)) << word.toStdString();
    }
    for (const QString& line : help.split(u'\n')) {
        EXPECT_LE(line.size(), 80) << line.toStdString();
    }
}

} // namespace
} // namespace melovane
