#include "platform/qt/qt_message_loop.h"
#include "settings/test_tone.h"
#include "support/capture_output.h"
#include "support/wait_for.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The loudest of the next moments.
int loudest(CaptureOutput& output, int moments)
{
    output.heard.clear();
    output.pull(moments);
    return *std::max_element(output.heard.begin(), output.heard.end());
}

TEST(TestToneTest, SoundsForHalfASecondAsLoudAsTheVolumeAndThenLetsGoOfTheCard)
{
    QtMessageLoop loop;
    CaptureOutput output;
    TestTone tone(output, loop);
    ASSERT_TRUE(tone.play(u"Zweite"_s, 10000));
    EXPECT_EQ(output.openCard, 2);
    EXPECT_GT(loudest(output, 22050), 16000);
    EXPECT_EQ(loudest(output, 100), 0);
    EXPECT_TRUE(waitFor([&output] { return !output.isOpen(); }));
    // A card that is not there leaves it to the one of the system.
    ASSERT_TRUE(tone.play(u"Fort"_s, 2500));
    EXPECT_EQ(output.openCard, kSystemCard);
    EXPECT_NEAR(loudest(output, 22050), 4096, 60);
}

TEST(TestToneTest, ACardThatRefusesIsTold)
{
    QtMessageLoop loop;
    CaptureOutput output;
    output.refuses = true;
    TestTone tone(output, loop);
    EXPECT_FALSE(tone.play({}, 10000));
}

} // namespace
} // namespace melovane::test
