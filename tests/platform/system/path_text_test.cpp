#include "platform/system/path_text.h"

#include <gtest/gtest.h>

#include <ostream>

namespace melovane::path {
namespace {

using namespace Qt::Literals::StringLiterals;

struct PathCase
{
    QString path;
    QString parent;
    QString name;
    QString base;
    QString extension;
    QStringList components;
};

void PrintTo(const PathCase& c, std::ostream* out)
{
    *out << c.path.toStdString();
}

class PathText : public testing::TestWithParam<PathCase>
{};

TEST_P(PathText, FallsIntoItsParts)
{
    const PathCase& c = GetParam();
    EXPECT_EQ(parent(c.path), c.parent);
    EXPECT_EQ(fileName(c.path), c.name);
    EXPECT_EQ(baseName(c.path), c.base);
    EXPECT_EQ(extension(c.path), c.extension);
    EXPECT_EQ(components(c.path), c.components);
}

INSTANTIATE_TEST_SUITE_P(
    Paths,
    PathText,
    testing::Values(
        PathCase{u""_s, u""_s, u""_s, u""_s, u""_s, {}},
        PathCase{u"a.mp3"_s, u""_s, u"a.mp3"_s, u"a"_s, u"mp3"_s, {u"a.mp3"_s}},
        PathCase{u"/"_s, u""_s, u""_s, u""_s, u""_s, {u"/"_s}},
        PathCase{u"/a"_s, u"/"_s, u"a"_s, u"a"_s, u""_s, {u"/"_s, u"a"_s}},
        PathCase{u"/a/b.c.d"_s,
                 u"/a"_s,
                 u"b.c.d"_s,
                 u"b.c"_s,
                 u"d"_s,
                 {u"/"_s, u"a"_s, u"b.c.d"_s}},
        PathCase{u"/a/b/"_s, u"/a"_s, u"b"_s, u"b"_s, u""_s, {u"/"_s, u"a"_s, u"b"_s}},
        PathCase{u"//a///b//"_s, u"//a"_s, u"b"_s, u"b"_s, u""_s, {u"/"_s, u"a"_s, u"b"_s}},
        PathCase{u"C:\\"_s, u""_s, u""_s, u""_s, u""_s, {u"C:"_s}},
        PathCase{u"C:\\Music\\x.mp3"_s,
                 u"C:\\Music"_s,
                 u"x.mp3"_s,
                 u"x"_s,
                 u"mp3"_s,
                 {u"C:"_s, u"Music"_s, u"x.mp3"_s}},
        PathCase{u"C:\\x"_s, u"C:\\"_s, u"x"_s, u"x"_s, u""_s, {u"C:"_s, u"x"_s}},
        PathCase{u"\\\\nas\\music\\x.mp3"_s,
                 u"\\\\nas\\music"_s,
                 u"x.mp3"_s,
                 u"x"_s,
                 u"mp3"_s,
                 {u"\\\\"_s, u"nas"_s, u"music"_s, u"x.mp3"_s}},
        PathCase{u"C:/Mixed\\x.mp3"_s,
                 u"C:/Mixed"_s,
                 u"x.mp3"_s,
                 u"x"_s,
                 u"mp3"_s,
                 {u"C:"_s, u"Mixed"_s, u"x.mp3"_s}},
        PathCase{u"a/.hidden"_s, u"a"_s, u".hidden"_s, u".hidden"_s, u""_s, {u"a"_s, u".hidden"_s}},
        PathCase{u"a/.."_s, u"a"_s, u".."_s, u".."_s, u""_s, {u"a"_s, u".."_s}},
        PathCase{u"a/end."_s, u"a"_s, u"end."_s, u"end"_s, u""_s, {u"a"_s, u"end."_s}}));

TEST(PathJoin, PutsExactlyOneSeparatorOfTheFolderBetween)
{
    EXPECT_EQ(join(u"/a", u"b"), u"/a/b"_s);
    EXPECT_EQ(join(u"/a/", u"/b"), u"/a/b"_s);
    EXPECT_EQ(join(u"/a//", u"\\\\b"), u"/a/b"_s);
    EXPECT_EQ(join(u"C:\\Music\\", u"x.mp3"), u"C:\\Music\\x.mp3"_s);
    EXPECT_EQ(join(u"C:\\Music", u"x/y.mp3"), u"C:\\Music\\x/y.mp3"_s);
    EXPECT_EQ(join(u"/", u"a"), u"/a"_s);
    EXPECT_EQ(join(u"C:\\", u"a"), u"C:\\a"_s);
    EXPECT_EQ(join(u"a", u"b"), u"a/b"_s);
}

TEST(PathJoin, AnEmptySideGivesTheOther)
{
    EXPECT_EQ(join(u"", u"b"), u"b"_s);
    EXPECT_EQ(join(u"/a", u""), u"/a"_s);
    EXPECT_EQ(join(u"", u""), QString());
}

TEST(PathSeparator, IsTheOneThatTheTextUses)
{
    EXPECT_EQ(separatorOf(u"C:\\a/b"), u'\\');
    EXPECT_EQ(separatorOf(u"a/b\\c"), u'/');
    EXPECT_EQ(separatorOf(u"name"), kSeparator);
}

TEST(PathSeparator, AtTheEndIsOneOrNone)
{
    EXPECT_EQ(withSeparator(u"/a"), u"/a/"_s);
    EXPECT_EQ(withSeparator(u"/a//"), u"/a/"_s);
    EXPECT_EQ(withSeparator(u"C:\\a"), u"C:\\a\\"_s);
    EXPECT_EQ(withSeparator(u"/"), u"/"_s);
    EXPECT_EQ(withSeparator(u""), QString());
    EXPECT_EQ(withoutSeparator(u"/a//"), u"/a"_s);
    EXPECT_EQ(withoutSeparator(u"a\\"), u"a"_s);
}

TEST(PathSeparator, ARootKeepsItsOwn)
{
    EXPECT_EQ(withoutSeparator(u"/"), u"/"_s);
    EXPECT_EQ(withoutSeparator(u"///"), u"/"_s);
    EXPECT_EQ(withoutSeparator(u"C:\\"), u"C:\\"_s);
    EXPECT_EQ(withoutSeparator(u"C:\\\\"), u"C:\\"_s);
    EXPECT_EQ(withoutSeparator(u"C:"), u"C:"_s);
    EXPECT_EQ(withoutSeparator(u""), QString());
}

TEST(PathKind, AbsoluteBeginsAtARoot)
{
    EXPECT_TRUE(isAbsolute(u"/a"));
    EXPECT_TRUE(isAbsolute(u"C:\\a"));
    EXPECT_TRUE(isAbsolute(u"\\\\nas\\a"));
    EXPECT_FALSE(isAbsolute(u"a/b"));
    EXPECT_FALSE(isAbsolute(u"C:a"));
    EXPECT_FALSE(isAbsolute(u""));
}

TEST(PathKind, SystemFormHasTheSeparatorOfThisPlatform)
{
    EXPECT_EQ(toSystem(u"C:\\a/b\\c"), u"C:/a/b/c"_s);
    EXPECT_EQ(toSystem(u""), QString());
}

} // namespace
} // namespace melovane::path
