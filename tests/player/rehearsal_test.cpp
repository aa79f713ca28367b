#include "player/mix_engine.h"
#include "player/rehearsal.h"
#include "shell/fakes.h"
#include "support/capture_output.h"
#include "support/tone_files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

constexpr int kTickMs = 50;
constexpr int kTickFrames = kAirRate * kTickMs / 1000;

class RehearsalTest : public testing::Test
{
protected:
    RehearsalTest()
    {
        files.addTone(u"a"_s, 200, 60, 0.4);
        files.addTone(u"b"_s, 200, 60, 0.4);
        engine.forbidStandIn();
    }

    static MlvPlaylistDetail entry(const QString& file, int start, int stop)
    {
        MlvPlaylistDetail out;
        out.file = file;
        out.DName = file + u".mp3"_s;
        out.FrameStart = start;
        out.FrameStop = stop;
        out.Volume = kUnchangedVolume;
        out.MixTime = 4000;
        out.mixInStyle = MixStyleSplit(kDefaultMixStyleIn);
        out.mixOutStyle = MixStyleSplit(kDefaultMixStyleOut);
        return out;
    }

    /// Time goes on, as long as the rehearsal wants it to.
    void hear(int seconds)
    {
        for (int i = 0; i < seconds * 1000 / kTickMs && loop.fire(kTickMs); ++i) {
            output.pull(kTickFrames);
        }
    }

    [[nodiscard]] double loudness(double second) const
    {
        int loudest = 0;
        const auto at = size_t(second * kAirRate) * 2;
        for (size_t i = at; i < std::min(at + 2000, output.heard.size()); ++i) {
            loudest = std::max(loudest, std::abs(int(output.heard[i])));
        }
        return loudest / 32768.0;
    }

    ToneFiles files;
    CaptureOutput output;
    CaptureOutput unused;
    SteppedLoop loop;
    MixEngine engine{files.maker(), output, unused};
    std::vector<std::pair<PlayFault, QString>> ends;
    Rehearsal rehearsal{{.engine = engine,
                         .beat = [this] { engine.beat(); },
                         .loop = loop,
                         .settings = [] { return AirSettings(); },
                         .ended = [this](PlayFault fault,
                                         const QString& file) { ends.emplace_back(fault, file); }}};
};

TEST_F(RehearsalTest, TheLastTenSecondsGoOverIntoTheFirstTenAlongTheirCurves)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"b"_s, 500, 2200), u"Zweite"_s, kUnchangedVolume);
    hear(40);
    EXPECT_EQ(2, output.openCard);
    EXPECT_EQ(1, output.opened);
    ASSERT_EQ(1U, ends.size());
    EXPECT_EQ(PlayFault::None, ends[0].first);
    EXPECT_FALSE(rehearsal.isPlaying());
    EXPECT_FALSE(output.isOpen());
    EXPECT_NEAR(0.4, loudness(5), 0.01);
    EXPECT_NEAR(0.4, loudness(12), 0.01);
    EXPECT_EQ(0, loudness(16.5));
}

TEST_F(RehearsalTest, ItIsAsLoudAsTheMonitor)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"b"_s, 500, 2200), {}, 5000);
    hear(5);
    EXPECT_NEAR(0.2, loudness(3), 0.005);
}

TEST_F(RehearsalTest, StopIsSilenceAndGivesTheCardBack)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"b"_s, 500, 2200), {}, kUnchangedVolume);
    hear(3);
    rehearsal.stop();
    const double stopped = double(output.heard.size()) / 2 / kAirRate;
    hear(3);
    EXPECT_EQ(0, loudness(stopped + 0.06));
    EXPECT_FALSE(output.isOpen());
    EXPECT_TRUE(ends.empty());
}

TEST_F(RehearsalTest, AFileThatCannotBePlayedIsTold)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"gone"_s, 0, 300), {}, kUnchangedVolume);
    hear(3);
    ASSERT_EQ(1U, ends.size());
    EXPECT_EQ(PlayFault::Missing, ends[0].first);
    EXPECT_EQ(u"gone.mp3"_s, ends[0].second);
}

TEST_F(RehearsalTest, ACardThatIsPulledOutIsNotReplacedByTheOneInTheHall)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"b"_s, 500, 2200), u"Zweite"_s, kUnchangedVolume);
    hear(2);
    output.installed.pop_back();
    output.pulledOut = true;
    hear(1);
    ASSERT_EQ(1U, ends.size());
    EXPECT_EQ(PlayFault::NoCard, ends[0].first);
    EXPECT_EQ(1, output.opened);
}

TEST_F(RehearsalTest, ACardThatIsNotThereIsNotReplacedEither)
{
    rehearsal.play(entry(u"a"_s, 0, 2000), entry(u"b"_s, 500, 2200), u"Dritte"_s, kUnchangedVolume);
    hear(1);
    ASSERT_EQ(1U, ends.size());
    EXPECT_EQ(PlayFault::NoCard, ends[0].first);
    EXPECT_EQ(0, output.opened);
}

} // namespace
