// What the user asks of the player and of other programs of the suite.
#include "shell/window_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct PlayerCommandsTest : public test::WindowFixture
{
    PlayerCommandsTest()
    {
        settings->SetMessageHandleDJ(55);
        messages.alive = {55};
    }

    QStringList told;
    PlayerCommands commands{suite, texts,
                            [this](const QString& order) { return siblings.startPlayer(order); },
                            [this](const QString& text) { told.append(text); }};
};

TEST_F(PlayerCommandsTest, ATrackIsPlayedNextOrNow)
{
    EXPECT_TRUE(commands.playNext(u"1"_s));
    EXPECT_TRUE(commands.playNow(u"1"_s));
    EXPECT_EQ(taken(), (QStringList{u"send 1046 0 0 to 55"_s, u"send 1047 0 0 to 55"_s}));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlayerCommandsTest, APlayerThatHangsHoldsTheWindowForASecondOnceAndIsTold)
{
    const QString silent =
        u"Der Player antwortet nicht; was verlangt war, bekommt er, sobald er weiterläuft."_s;
    control.answers = false;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(commands.playNext(u"1"_s));
    }
    EXPECT_EQ(control.patiences, (QList<qint64>{1000, 100, 100}));
    EXPECT_EQ(told, (QStringList{silent, silent, silent}));
    EXPECT_EQ(taken().size(), 3) << "it gets them all the same";
    mlvdb.load();
    others.SendMessage(u"refresh.playlist.tree"_s);
    EXPECT_EQ(shown(), silent);

    control.answers = true;
    told.clear();
    control.patiences.clear();
    commands.playNext(u"1"_s);
    commands.playNext(u"1"_s);
    EXPECT_EQ(control.patiences, (QList<qint64>{100, 1000}));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlayerCommandsTest, WithoutAPlayerThatIsToldAndTheKeyIsTakenAllTheSame)
{
    messages.alive.clear();
    EXPECT_TRUE(commands.playNext(u"1"_s));
    EXPECT_EQ(told, QStringList{u"Der Player läuft nicht."_s});
    EXPECT_TRUE(taken().isEmpty());
}

TEST_F(PlayerCommandsTest, APlayerThatDoesNotRunIsStartedWithWhatIsAskedOfIt)
{
    messages.alive.clear();
    install(u"MelovaneDJ.exe"_s);
    EXPECT_TRUE(commands.playNow(u"1"_s));
    EXPECT_TRUE(commands.playNext(u"2"_s));
    commands.showPlayer();
    ASSERT_EQ(processes.commands.size(), 3);
    EXPECT_TRUE(processes.commands[0].endsWith(u"MelovaneDJ.exe now"_s));
    EXPECT_TRUE(processes.commands[1].endsWith(u"MelovaneDJ.exe next"_s));
    EXPECT_TRUE(processes.commands[2].endsWith(u"MelovaneDJ.exe"_s));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlayerCommandsTest, WithoutATrackNothingIsAskedNorTold)
{
    EXPECT_FALSE(commands.playNext({}));
    messages.alive.clear();
    EXPECT_FALSE(commands.playNow({}));
    EXPECT_TRUE(taken().isEmpty());
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlayerCommandsTest, ThePlayersWindowIsAskedToTheFrontUnderItsPresentHandle)
{
    folders.makeSettings()->SetMessageHandleDJ(66);
    messages.alive = {66};
    commands.showPlayer();
    EXPECT_EQ(taken(), QStringList{u"post 2001 to 66"_s});
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PlayerCommandsTest, APlayerThatDoesNotRunHasNoWindowAndThatIsTold)
{
    messages.alive.clear();
    commands.showPlayer();
    EXPECT_EQ(told, QStringList{u"Der Player läuft nicht."_s});
    EXPECT_TRUE(taken().isEmpty());
}

struct SiblingCommandsTest : public test::WindowFixture
{
    QStringList told;
    SiblingCommands commands{siblings, texts, [this](const QString& text) { told.append(text); }};
};

TEST_F(SiblingCommandsTest, ProgramsAreStartedWithoutAWord)
{
    install(u"tagbench.exe"_s);
    commands.importMusic();
    commands.editTags();
    commands.rebuildTrees();
    commands.findTempo(u"manuell"_s, u"1"_s, u"7"_s);
    EXPECT_EQ(processes.commands.size(), 4);
    EXPECT_TRUE(processes.commands[0].startsWith(command(u"mediaintake"_s)));
    EXPECT_EQ(processes.commands[1], command(u"tagbench.exe edit"_s));
    EXPECT_TRUE(processes.commands[2].startsWith(command(u"Task.RebuildTree"_s)));
    EXPECT_EQ(processes.commands[3], command(u"beatgauge.exe fid=1 cmd=manuell plid=7"_s));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(SiblingCommandsTest, EachProgramThatIsMissingIsToldByItsName)
{
    processes.succeeds = false;
    commands.importMusic();
    commands.editTags();
    commands.rebuildTrees();
    commands.findTempo(u"auto"_s, u"1"_s);
    QStringList expected;
    for (const QString& program :
         {u"mediaintake"_s, u"tagbench"_s, u"Task.RebuildTree"_s, u"beatgauge"_s}) {
        expected.append(texts.text(u"status.sibling.missing"_s, program));
    }
    EXPECT_EQ(told, expected);
}

} // namespace
} // namespace melovane
