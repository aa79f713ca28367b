#include "platform/linux/system_names.h"
#include "support/temp_folder.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace melovane::linuxnames {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(SystemNames, Utf8IsReadAsItIs)
{
    EXPECT_EQ(decode("Sch\xC3\xB6n \xF0\x9F\x8E\xB5"), u"Schön \U0001F3B5"_s);
    EXPECT_EQ(encode(u"Schön"_s), "Sch\xC3\xB6n");
    EXPECT_EQ(decode(""), QString());
}

TEST(SystemNames, ABrokenByteBecomesAPrivateLetterAndTheByteAgain)
{
    EXPECT_EQ(decode("Sch\xF6n"), u"Sch\uEFF6n"_s);
    EXPECT_EQ(encode(u"Sch\uEFF6n"_s), "Sch\xF6n");
}

TEST(SystemNames, AValidNameWithSuchALetterComesBackToo)
{
    const QByteArray name = u"\uEF80x"_s.toUtf8();
    EXPECT_NE(decode(name), u"\uEF80x"_s);
    EXPECT_EQ(encode(decode(name)), name);
}

TEST(SystemNames, AnyBytesComeBackAsTheyWere)
{
    QRandomGenerator random(7);
    for (int round = 0; round < 5000; ++round) {
        QByteArray name;
        for (int i = 0; i < 12; ++i) {
            // Mostly lead and continuation bytes, where the traps are.
            name += char(random.bounded(2) == 0 ? random.bounded(0x80, 0x100)
                                                : random.bounded(1, 0x100));
        }
        const QString text = decode(name);
        EXPECT_EQ(encode(text), name);
        EXPECT_EQ(encode(QString::fromUtf8(text.toUtf8())), name) << "survives a database";
    }
}

TEST(SystemNames, ABackslashSeparatesUnlessTheNameExistsAsItStands)
{
    const test::TempFolder folder;
    EXPECT_EQ(systemPath(folder.path() + u"\\a\\b"_s), folder.path().toUtf8() + "/a/b");
    folder.write(u"a\\b"_s, "x");
    EXPECT_EQ(systemPath(folder.file(u"a\\b"_s)), folder.path().toUtf8() + "/a\\b");
}

TEST(SystemNames, WhatNoSystemCallTakesIsEmpty)
{
    EXPECT_TRUE(systemPath(QString()).isEmpty());
    EXPECT_TRUE(systemPath(u"/tmp/a"_s + QChar(u'\0') + u"b"_s).isEmpty());
}

} // namespace
} // namespace melovane::linuxnames
