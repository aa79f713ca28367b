#include "tagbench/name_reader.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// "Interpret=A, Titel=B", or "-" for a name that does not fit.
QString readAs(const QString& text, const QString& folder, const QString& name, bool blanks = true)
{
    const auto read = NameReader(text, blanks).read(folder, name);
    if (!read) {
        return u"-"_s;
    }
    QStringList result;
    for (const NameReader::Read& field : *read) {
        result.append(columnOf(field.field).toString() + u'=' + field.text);
    }
    return result.join(u", "_s);
}

TEST(NameReader, FieldsAreReadFromTheName)
{
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/m/"_s, u"Wer - Was.mp3"_s), u"Interpret=Wer, Titel=Was"_s);
    EXPECT_EQ(readAs(u"%to_%i - %n"_s, u"/m/"_s, u"07_Wer - Was.mp3"_s),
              u"Track=7, Interpret=Wer, Titel=Was"_s);
    EXPECT_EQ(readAs(u"%O - %N"_s, u"/m/"_s, u"Egal - Was.mp3"_s), u"Titel=Was"_s);
    EXPECT_EQ(readAs(u"%TO%N"_s, u"/m/"_s, u"000 Was.mp3"_s), u"Track=0, Titel=Was"_s);
}

TEST(NameReader, FoldersCountFromTheFileUpwards)
{
    EXPECT_EQ(readAs(u"%I/%A/%TO_%N"_s, u"/m/Wer/Platte/"_s, u"1_Was.mp3"_s),
              u"Interpret=Wer, Album=Platte, Track=1, Titel=Was"_s);
    EXPECT_EQ(readAs(u"%A\\%N"_s, u"C:\\Musik\\Platte\\"_s, u"Was.mp3"_s),
              u"Album=Platte, Titel=Was"_s);
    EXPECT_EQ(readAs(u"%G/%I/%A/%N"_s, u"/m/"_s, u"Was.mp3"_s), u"-"_s);
}

TEST(NameReader, AMarkerEndsWhereTheTextBehindItBegins)
{
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"A - B - C.mp3"_s), u"Interpret=A, Titel=B - C"_s);
    EXPECT_EQ(readAs(u"%N (x)"_s, u"/"_s, u"A (x) (x).mp3"_s), u"Titel=A (x)"_s);
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u" - B.mp3"_s), u"-"_s);
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"A - .mp3"_s), u"-"_s);
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"Nordkap.mp3"_s), u"-"_s);
    EXPECT_EQ(readAs(u"%TO %N"_s, u"/"_s, u"x7 B.mp3"_s), u"-"_s);
}

TEST(NameReader, UnderscoresAreBlanksOnlyInWhatIsRead)
{
    EXPECT_EQ(readAs(u"%I_-_%N"_s, u"/"_s, u"Der_Wer_-_Das_Was.mp3"_s),
              u"Interpret=Der Wer, Titel=Das Was"_s);
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"A_B - C.mp3"_s, false), u"Interpret=A_B, Titel=C"_s);
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"___ - C.mp3"_s), u"-"_s);
}

TEST(NameReader, ATemplateThatWouldGuessIsNotUsed)
{
    for (const QString& text :
         {u""_s, u"abc"_s, u"%O"_s, u"%I%N"_s, u"%I %I"_s, u"%I%TO"_s, u"%"_s}) {
        EXPECT_FALSE(NameReader(text, true).isUsable()) << text.toStdString();
        EXPECT_EQ(readAs(text, u"/"_s, u"abc.mp3"_s), u"-"_s);
    }
    EXPECT_TRUE(NameReader(u"%TO%N"_s, true).isUsable());
}

TEST(NameReader, HostileNamesAreReadAsTheyStand)
{
    EXPECT_EQ(readAs(u"%I - %N"_s, u"/"_s, u"O'Neil \"x\" - 100% %N.mp3"_s),
              u"Interpret=O'Neil \"x\", Titel=100% %N"_s);
    EXPECT_EQ(readAs(u"%N"_s, u"/"_s, u".mp3"_s), u"Titel=.mp3"_s);
    EXPECT_EQ(readAs(u"%N"_s, u"/"_s, QString()), u"-"_s);
    const QString lengthy(255, u'-');
    EXPECT_EQ(readAs(u"%I-%N"_s, u"/"_s, lengthy), u"Interpret=-, Titel="_s + QString(253, u'-'));
}

} // namespace
} // namespace melovane
