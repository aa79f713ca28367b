#include "siblings/mediaintake/command_line.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

TEST(IntakeCommandLine, KnowsItsForms)
{
    EXPECT_EQ(parseCommandLine({})->mode, IntakeMode::NewFiles);
    EXPECT_EQ(parseCommandLine({u"1"_s})->mode, IntakeMode::NewFiles);
    EXPECT_EQ(parseCommandLine({u"2"_s})->mode, IntakeMode::ChangedFiles);
    const auto quiet =
        parseCommandLine({u"1"_s, u"--folder"_s, u"/a"_s, u"--folder"_s, u"/b"_s, u"--quiet"_s});
    EXPECT_TRUE(quiet->quiet);
    EXPECT_EQ(quiet->folders, (QStringList{u"/a"_s, u"/b"_s}));
}

TEST(IntakeCommandLine, RefusesWhatItDoesNotKnow)
{
    EXPECT_FALSE(parseCommandLine({u"3"_s}));
    EXPECT_FALSE(parseCommandLine({u"1"_s, u"--folder"_s}));
    EXPECT_FALSE(parseCommandLine({u"1"_s, u"--quiet"_s}));
    EXPECT_FALSE(parseCommandLine({u"1"_s, u"--loud"_s}));
    EXPECT_FALSE(parseCommandLine({u"--quiet"_s, u"2"_s}));
}

} // namespace
