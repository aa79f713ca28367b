#include "config/global_settings.h"
#include "platform/system/keyboard.h"
#include "shell/fakes.h"
#include "shell/key_commands.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

#include <set>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kLockMs = 500;

class HeldKeys : public Keyboard
{
public:
    [[nodiscard]] bool isDown(int code) const override { return codes.count(code) != 0; }

    std::set<int> codes;
};

class KeyCommandsTest : public testing::Test
{
protected:
    KeyCommandsTest()
    {
        settings->InitTasten();
        settings->SetKeyboard(&keyboard);
    }

    bool press(const std::set<int>& codes)
    {
        keyboard.codes = codes;
        return commands.keyPressed();
    }

    void bind(const QString& id, const QString& keys) { settings->Tasten(id).KeyName = keys; }

    test::SuiteFolders suite;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    HeldKeys keyboard;
    test::SteppedLoop loop;
    QStringList done;
    bool viewHasFocus = true;
    KeyCommands commands{*settings,
                         loop,
                         {[this](const QString& command) {
                              done.append(command);
                              return viewHasFocus;
                          },
                          [this] { done.append(u"stop"_s); }, [this] { done.append(u"favorit"_s); },
                          [this] {
                              done.append(u"next"_s);
                              return true;
                          },
                          [this] {
                              done.append(u"now"_s);
                              return true;
                          },
                          [this] { done.append(u"player"_s); }}};
};

TEST_F(KeyCommandsTest, TheCombinationRunsItsBinding)
{
    EXPECT_TRUE(press({17, 'C'}));
    EXPECT_TRUE(press({17, 'V'}));
    EXPECT_TRUE(press({17, 'A'}));
    EXPECT_TRUE(press({17, 'N'}));
    EXPECT_TRUE(press({17, 'S'}));
    EXPECT_TRUE(press({122}));
    EXPECT_EQ(done,
              (QStringList{u"copy"_s, u"insert"_s, u"append"_s, u"next"_s, u"now"_s, u"player"_s}));
}

TEST_F(KeyCommandsTest, KeysOfTheUserRunTheBindingsThatHaveNoneOfTheirOwn)
{
    bind(u"PLPLMonitorPlay"_s, u"F1-TASTE"_s);
    bind(u"PLPLMonitorStop"_s, u"F2-TASTE"_s);
    bind(u"PLPLMonitorPlayCenter"_s, u"F3-TASTE"_s);
    bind(u"DBSelall"_s, u"F4-TASTE"_s);
    bind(u"DBDetail"_s, u"F5-TASTE"_s);
    for (int code = 112; code <= 116; ++code) {
        EXPECT_TRUE(press({code}));
    }
    EXPECT_EQ(done, (QStringList{u"play.start"_s, u"stop"_s, u"play.center"_s, u"selall"_s,
                                 u"favorit"_s}));
}

TEST_F(KeyCommandsTest, OfTwoBindingsWithTheSameKeysTheFirstActs)
{
    bind(u"DBSelall"_s, u"STRG-TASTE + C-TASTE"_s);
    press({17, 'C'});
    EXPECT_EQ(done, (QStringList{u"selall"_s}));
}

TEST_F(KeyCommandsTest, PressingTheSameCombinationTwiceWithin500MsFiresOnce)
{
    EXPECT_TRUE(press({17, 'C'}));
    EXPECT_TRUE(press({17, 'C'})) << "the second press belongs to the binding all the same";
    EXPECT_EQ(done.size(), 1);
    ASSERT_TRUE(loop.fire(kLockMs));
    EXPECT_TRUE(press({17, 'C'}));
    EXPECT_EQ(done.size(), 2);
}

TEST_F(KeyCommandsTest, LettingGoOfCtrlBetweenTwoPressesKeepsTheLock)
{
    EXPECT_TRUE(press({17, 'V'}));
    EXPECT_FALSE(press({17})) << "Ctrl comes down first";
    EXPECT_TRUE(press({17, 'V'}));
    EXPECT_EQ(done.size(), 1);
    press({17});
    EXPECT_TRUE(press({17, 'C'}));
    EXPECT_EQ(done, (QStringList{u"insert"_s, u"copy"_s}));
    bind(u"PLPLMonitorStop"_s, u"STRG-TASTE"_s);
    EXPECT_TRUE(press({17})) << "bound by itself";
    EXPECT_EQ(done.last(), u"stop"_s);
    EXPECT_TRUE(press({17, 'C'}));
    ASSERT_TRUE(loop.fire(kLockMs));
    EXPECT_TRUE(press({17, 'C'}));
    EXPECT_EQ(done.count(u"copy"_s), 3);
}

TEST_F(KeyCommandsTest, TheLockEndsOnceAndStopsItself)
{
    press({17, 'C'});
    EXPECT_TRUE(loop.fire(kLockMs));
    EXPECT_FALSE(loop.fire(kLockMs));
}

TEST_F(KeyCommandsTest, ACommandWithoutAViewInFocusIsLeftToTheControl)
{
    viewHasFocus = false;
    EXPECT_FALSE(press({17, 'C'}));
    EXPECT_FALSE(press({17, 'C'}));
    EXPECT_EQ(done.size(), 1);
}

TEST_F(KeyCommandsTest, KeysWithoutABindingAreNotTaken)
{
    EXPECT_FALSE(press({'X'}));
    EXPECT_FALSE(press({}));
    EXPECT_TRUE(press({17, 'C'}));
    loop.fire(kLockMs);
    EXPECT_FALSE(press({})) << "a key without a code";
    EXPECT_EQ(done.size(), 1);
}

TEST_F(KeyCommandsTest, BindingsOfTheSiblingsDoNothingHere)
{
    EXPECT_FALSE(press({17, 'L'}));
    EXPECT_FALSE(press({17, 'M'}));
    EXPECT_FALSE(press({123}));
    EXPECT_TRUE(done.isEmpty());
}

} // namespace
} // namespace melovane
