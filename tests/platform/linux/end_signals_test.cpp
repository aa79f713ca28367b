#include "platform/linux/end_signals.h"
#include "support/wait_for.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

TEST(EndSignalsTest, EachSignalToEndIsToldFromTheMessageLoopAndThenDoesWhatItDidBefore)
{
    struct sigaction before = {};
    ::sigaction(SIGTERM, nullptr, &before);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        int asked = 0;
        const EndSignals ending([&asked] { ++asked; });
        ::raise(number);
        ::raise(number);
        EXPECT_EQ(asked, 0) << "a handler may not run the program's own code";
        EXPECT_TRUE(test::waitFor([&asked] { return asked > 0; }));
        EXPECT_EQ(asked, 1);
    }
    struct sigaction after = {};
    ::sigaction(SIGTERM, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
}

} // namespace
} // namespace melovane
