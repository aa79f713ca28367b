#include "shell/fakes.h"
#include "shell/idle_work.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kIntervalMs = 2;

struct IdleWorkTest : public testing::Test
{
    /// A work of so many slices that writes its name down in each.
    IdleWork::Slice work(const QString& name, int slices)
    {
        return [this, name, slices]() mutable {
            done += name;
            return --slices > 0;
        };
    }

    test::SteppedLoop loop;
    IdleWork idle{loop};
    QString done;
};

TEST_F(IdleWorkTest, WorksTakeTurnsUntilTheyAreDone)
{
    idle.add(work(u"a"_s, 3));
    idle.add(work(u"b"_s, 1));
    EXPECT_TRUE(done.isEmpty()) << "nothing runs before the events that wait";
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"ab"_s);
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"abaa"_s);
    EXPECT_FALSE(loop.fire(kIntervalMs)) << "without work the program sleeps";
}

TEST_F(IdleWorkTest, ASliceMayAddWork)
{
    idle.add([this] {
        done += u'x';
        idle.add(work(u"y"_s, 1));
        return false;
    });
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"x"_s);
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"xy"_s);
    EXPECT_FALSE(loop.fire(kIntervalMs));
}

TEST_F(IdleWorkTest, ASliceThatFailsEndsItsOwnWorkAlone)
{
    idle.add(work(u"a"_s, 2));
    idle.add([]() -> bool { throw std::runtime_error("broken"); });
    idle.add(work(u"b"_s, 1));
    EXPECT_THROW(loop.fire(kIntervalMs), std::runtime_error);
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"aab"_s);
    EXPECT_FALSE(loop.fire(kIntervalMs));
}

TEST_F(IdleWorkTest, NewWorkWakesItUpAgain)
{
    idle.add(work(u"a"_s, 1));
    loop.fire(kIntervalMs);
    idle.add(work(u"b"_s, 1));
    EXPECT_TRUE(loop.fire(kIntervalMs));
    EXPECT_EQ(done, u"ab"_s);
}

} // namespace
} // namespace melovane
