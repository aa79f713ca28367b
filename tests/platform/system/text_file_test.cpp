#include "platform/system/text_file.h"

#include <gtest/gtest.h>

namespace melovane::textfile {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TextFile, AByteOrderMarkTellsTheEncoding)
{
    EXPECT_EQ(decode("\xEF\xBB\xBF"
                     "\xC3\xA4"),
              u"ä"_s);
    EXPECT_EQ(decode(QByteArray("\xFF\xFE\xE4\0x\0", 6)), u"äx"_s);
    EXPECT_EQ(decode(QByteArray("\xFE\xFF\0\xE4\0x", 6)), u"äx"_s);
}

TEST(TextFile, ValidUtf8IsReadAsIt)
{
    EXPECT_EQ(decode("Sch\xC3\xB6n \xF0\x9F\x8E\xB5"), u"Schön \U0001F3B5"_s);
    EXPECT_EQ(decode(""), QString());
}

TEST(TextFile, OtherBytesAreWindows1252)
{
    EXPECT_EQ(decode("Sch\xF6n \x80 \x84x\x93"), u"Schön € „x“"_s);
    EXPECT_EQ(decode("\xC3"), u"Ã"_s) << "a cut sequence is not UTF-8";
    EXPECT_EQ(decode("\xC0\x80"), u"À€"_s) << "an overlong sequence is not UTF-8";
    EXPECT_EQ(decode("\xEF\xBB\xBF\xE4"), u"ä"_s) << "a mark that lies";
}

TEST(TextFile, EveryByteGivesOneLetterOfWindows1252)
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(char(byte));
    }
    const QString text = decode(all);
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), 256);
}

TEST(TextFile, EveryKindOfLineEndEndsALine)
{
    EXPECT_EQ(lines(u"a\nb\r\nc\rd"_s), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(lines(u"a\n\n b \n"_s), (QStringList{u"a"_s, QString(), u" b "_s}));
    EXPECT_EQ(lines(u"a\r\r\n"_s), (QStringList{u"a"_s, QString()}));
    EXPECT_EQ(lines(QString()), QStringList());
    EXPECT_EQ(lines(u"\n"_s), QStringList{QString()});
}

} // namespace
} // namespace melovane::textfile
