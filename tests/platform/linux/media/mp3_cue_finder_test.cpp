#include "platform/linux/mp3_cue_finder.h"
#include "platform/media/player.h"
#include "siblings/demomusic/mp3_frames.h"
#include "support/sounding_mp3.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Mp3CueFinderTest : public testing::Test
{
    static QByteArray silence(int frames)
    {
        return demomusic::constantStream(demomusic::FrameFormat(), frames);
    }

    std::optional<CueRange> find(const QByteArray& bytes, int withinMs = 10'000)
    {
        return finder.find(folder.write(u"ton.mp3"_s, bytes), withinMs, 700);
    }

    test::TempFolder folder;
    linux_media::Mp3CueFinder finder;
};

TEST_F(Mp3CueFinderTest, SilenceAtBothEndsIsLeftOut)
{
    const double soundFrames = 4000 / kFrameMs;
    const auto found = find(silence(100) + test::soundingMp3() + silence(200));
    ASSERT_TRUE(found);
    // An encoder puts a frame of its own in front and some silence at either end.
    EXPECT_GE(found->start, 100);
    EXPECT_LE(found->start, 105);
    EXPECT_GE(found->stop, 100 + int(soundFrames) - 3);
    EXPECT_LE(found->stop, 100 + int(soundFrames) + 6);
}

TEST_F(Mp3CueFinderTest, AnEndWithoutSoundForSoLongKeepsAll)
{
    const auto found = find(silence(300) + test::soundingMp3() + silence(300), 1000);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->start, 0);
    EXPECT_GE(found->stop, 600 + int(4000 / kFrameMs));
    const auto silent = find(silence(50));
    ASSERT_TRUE(silent);
    EXPECT_EQ(silent->start, 0);
    EXPECT_NEAR(silent->stop, 50, 1);
}

TEST_F(Mp3CueFinderTest, AFileThatIsNoMusicHasNone)
{
    EXPECT_FALSE(find("not at all"));
    EXPECT_FALSE(finder.find(folder.file(u"missing.mp3"_s), 10'000, 700));
}

} // namespace
} // namespace melovane
