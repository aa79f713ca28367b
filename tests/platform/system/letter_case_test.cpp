#include "platform/system/letter_case.h"

#include <QString>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(LetterCase, CaseMapsLetterByLetter)
{
    EXPECT_EQ(upperCase(u"straße äö"), u"STRAßE ÄÖ"_s);
    EXPECT_EQ(lowerCase(u"ÄÖÜ"), u"äöü"_s);
}

} // namespace
} // namespace melovane
