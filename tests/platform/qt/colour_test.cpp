#include "platform/controls/colour.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Colour, ANumberOfTheSettingsHasBlueInItsHighestByte)
{
    EXPECT_EQ(Colour::fromBgr(255), (Colour{255, 0, 0}));
    EXPECT_EQ(Colour::fromBgr(0x28A2F0), (Colour{0xF0, 0xA2, 0x28}));
    EXPECT_EQ(Colour::fromBgr(-1), (Colour{255, 255, 255}));
}

TEST(Colour, OnlySixFiguresBehindAHashAreAColour)
{
    EXPECT_EQ(Colour::fromText(u"#1a2B3c"), (Colour{0x1A, 0x2B, 0x3C}));
    for (const QString& text : {u""_s, u"#fff"_s, u"1a2b3c"_s, u"#1a2b3g"_s, u"#1a2b3c4"_s}) {
        EXPECT_FALSE(Colour::fromText(text)) << text.toStdString();
    }
}

TEST(Colour, ItsTextReadsBack)
{
    const Colour colour{1, 0x20, 0xFF};
    EXPECT_EQ(colour.toText(), u"#0120ff"_s);
    EXPECT_EQ(Colour::fromText(colour.toText()), colour);
}

TEST(Colour, ContrastRunsFromOneToTwentyOne)
{
    const Colour black;
    const Colour white{255, 255, 255};
    EXPECT_NEAR(contrast(black, white), 21.0, 1e-9);
    EXPECT_NEAR(contrast(white, black), 21.0, 1e-9);
    EXPECT_NEAR(contrast(white, white), 1.0, 1e-9);
    // The grey that just passes on white.
    EXPECT_NEAR(contrast(Colour{0x76, 0x76, 0x76}, white), 4.54, 0.01);
}

TEST(Colour, AReadableColourKeepsItsValue)
{
    const Colour text{0xDD, 0xE1, 0xE7};
    EXPECT_EQ(readableOn(text, Colour{0x1A, 0x1D, 0x23}), text);
}

TEST(Colour, EveryColourOnEveryGroundCanBeReadAfterwards)
{
    for (int text = 0; text < 0x1000000; text += 0x0C1F35) {
        for (int ground = 0; ground < 0x1000000; ground += 0x0B3D17) {
            const Colour on = Colour::fromBgr(ground);
            const Colour result = readableOn(Colour::fromBgr(text), on);
            // A ground of middle grey lets neither black nor white reach more than 4.58.
            EXPECT_GE(contrast(result, on), kReadableContrast)
                << on.toText().toStdString() << ' ' << result.toText().toStdString();
        }
    }
}

TEST(Colour, RedOnADarkGroundBecomesALighterRed)
{
    const Colour result = readableOn(Colour{255, 0, 0}, Colour{0x24, 0x46, 0x6F});
    EXPECT_EQ(result.red, 255);
    EXPECT_GT(result.green, 0);
    EXPECT_LT(result.green, 255);
}

TEST(Colour, MixingGoesFromOneColourToTheOther)
{
    const Colour one{0, 100, 200};
    const Colour two{100, 0, 200};
    EXPECT_EQ(mixed(one, two, 0), one);
    EXPECT_EQ(mixed(one, two, 1), two);
    EXPECT_EQ(mixed(one, two, 0.5), (Colour{50, 50, 200}));
}

} // namespace
} // namespace melovane
