#include "platform/system/trim_blanks.h"

#include <QString>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TrimBlanks, TrimTakesBlanksOnly)
{
    EXPECT_EQ(trimBlanks(u"  a b \t "), u"a b \t"_s);
    EXPECT_EQ(trimBlanks(u"   "), QString());
}

} // namespace
} // namespace melovane
