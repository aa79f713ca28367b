#include "playlistfiles/template_path.h"

#include <gtest/gtest.h>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

TemplateValues track()
{
    return {u"Freitag"_s, u"Nachtfahrt"_s, u"Mara Vossberg"_s,        u"Lichter"_s,
            u"House"_s,   u"Hauptset"_s,   u"07 Lichter (neu).mp3"_s, u"7"_s};
}

QString pathOf(const QString& text, const TemplateValues& values, qint64 at = 1, qint64 count = 5)
{
    return Template2Path(text).path(values, at, count);
}

struct Expanded
{
    const char* text;
    const char* path;
};

class TemplateMarkers : public testing::TestWithParam<Expanded>
{};

TEST_P(TemplateMarkers, GiveThePath)
{
    EXPECT_EQ(pathOf(QString::fromUtf8(GetParam().text), track(), 3).toStdString(),
              GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Template2Path,
    TemplateMarkers,
    testing::Values(Expanded{"%O", "07 Lichter (neu).mp3"},
                    Expanded{"%P/%O", "Hauptset/07 Lichter (neu).mp3"},
                    Expanded{"%P/%TP_%I - %N", "Hauptset/03_Mara Vossberg - Lichter.mp3"},
                    Expanded{"%A/%TO_%I - %N", "Nachtfahrt/07_Mara Vossberg - Lichter.mp3"},
                    Expanded{"%G/%A/%O", "House/Nachtfahrt/07 Lichter (neu).mp3"},
                    Expanded{"%GN/%P/%I - %N", "Freitag/Hauptset/Mara Vossberg - Lichter.mp3"},
                    Expanded{"%I/%A/%O", "Mara Vossberg/Nachtfahrt/07 Lichter (neu).mp3"},
                    Expanded{"%G/%TP_%I - %N", "House/03_Mara Vossberg - Lichter.mp3"},
                    Expanded{"%I/%A/%TO_%I - %N",
                             "Mara Vossberg/Nachtfahrt/07_Mara Vossberg - Lichter.mp3"},
                    // Case, both separators, separators at the ends and twice.
                    Expanded{"%g\\%a\\%o", "House/Nachtfahrt/07 Lichter (neu).mp3"},
                    Expanded{"/%gN//%tP\\", "Freitag/03.mp3"},
                    Expanded{"%GNeu", "Freitageu.mp3"},
                    Expanded{"%GG", "HouseG.mp3"},
                    // What is no marker stands for itself.
                    Expanded{"100% %T %X %%N", "100% %T %X %Lichter.mp3"},
                    Expanded{"fest", "fest.mp3"},
                    Expanded{"  Ordner  / %N  ", "Ordner/Lichter.mp3"},
                    Expanded{"a:b/c*?\"<>|d", "a_b/c______d.mp3"},
                    Expanded{"", ".mp3"},
                    Expanded{" / \\ ", ".mp3"}));

TEST(Template2Path, AnEmptyAlbumIsLeftOutSoTheFileLandsInTheGenreFolder)
{
    TemplateValues values = track();
    values.Album.clear();
    EXPECT_EQ(pathOf(u"%G/%A/%O"_s, values), u"House/07 Lichter (neu).mp3"_s);
}

TEST(Template2Path, ASeparatorInATitleBecomesALineAndOpensNoFolder)
{
    TemplateValues values = track();
    values.Titel = u"AC/DC \\ live"_s;
    EXPECT_EQ(pathOf(u"%A/%N"_s, values), u"Nachtfahrt/AC_DC _ live.mp3"_s);
}

TEST(Template2Path, TheDigitsOfThePositionFollowTheNumberOfRows)
{
    EXPECT_EQ(pathOf(u"%TP"_s, track(), 1, 150), u"001.mp3"_s);
    EXPECT_EQ(pathOf(u"%TP"_s, track(), 150, 150), u"150.mp3"_s);
    EXPECT_EQ(pathOf(u"%TP"_s, track(), 1, 5), u"01.mp3"_s);
    EXPECT_EQ(pathOf(u"%TP"_s, track(), 5, 5), u"05.mp3"_s);
    EXPECT_EQ(pathOf(u"%TP"_s, track(), 7, 10000), u"00007.mp3"_s);
}

TEST(Template2Path, TracksWithoutANumberTakeTheNextValuesOfTheCounter)
{
    Template2Path paths(u"%TO %TO"_s);
    TemplateValues without = track();
    without.Track = u"0"_s;
    EXPECT_EQ(paths.path(without, 1, 5), u"01 01.mp3"_s);
    EXPECT_EQ(paths.path(track(), 2, 5), u"07 07.mp3"_s);
    without.Track.clear();
    EXPECT_EQ(paths.path(without, 3, 5), u"02 02.mp3"_s);
    without.Track = u"A1"_s;
    EXPECT_EQ(paths.path(without, 4, 5), u"03 03.mp3"_s);
}

TEST(Template2Path, ATrackNumberIsTheNumberAtItsBeginningAndHasTwoDigits)
{
    TemplateValues values = track();
    values.Track = u"3/12"_s;
    EXPECT_EQ(pathOf(u"%TO"_s, values), u"03.mp3"_s);
    values.Track = u"112"_s;
    EXPECT_EQ(pathOf(u"%TO"_s, values), u"112.mp3"_s);
    values.Track = u"-5"_s;
    EXPECT_EQ(pathOf(u"%TO"_s, values), u"-05.mp3"_s);
}

TEST(Template2Path, TheExtensionIsAlwaysMp3)
{
    TemplateValues values = track();
    for (const char* name : {"a.MP3", "a.mp2", "a.wav", "a"}) {
        values.DName = QString::fromUtf8(name);
        EXPECT_EQ(pathOf(u"%O"_s, values), u"a.mp3"_s) << name;
    }
    values.DName = u"a.b.mp3"_s;
    EXPECT_EQ(pathOf(u"%O"_s, values), u"a.b.mp3"_s);
}

TEST(Template2Path, AMarkerInAValueIsNotExpandedAgain)
{
    TemplateValues values = track();
    values.Titel = u"100%I %TO"_s;
    values.Album = u"%"_s;
    EXPECT_EQ(pathOf(u"%N"_s, values), u"100%I %TO.mp3"_s);
    EXPECT_EQ(pathOf(u"%AN"_s, values), u"%N.mp3"_s);
}

TEST(Template2Path, ThePreviewShowsTheSampleWithBothNumbersOne)
{
    const TemplateValues sample{
        u"Gruppenname"_s, u"Album"_s,        u"Interpret"_s,          u"Titel"_s,
        u"Genre"_s,       u"Playlistname"_s, u"Original-Dateiname"_s, u"12"_s};
    EXPECT_EQ(Template2Path(u"%GN/%P/%A/%G/%TO_%TP_%I - %N (%O)"_s).preview(sample),
              u"Gruppenname/Playlistname/Album/Genre/01_01_Interpret - Titel "
              "(Original-Dateiname).mp3"_s);
}

TEST(Template2Path, TheOfferedTemplatesStandInTheirOrder)
{
    EXPECT_EQ(Template2Path::offered(),
              (QStringList{u"%O"_s, u"%P/%O"_s, u"%P/%TP_%I - %N"_s, u"%A/%TO_%I - %N"_s,
                           u"%G/%A/%O"_s, u"%GN/%P/%I - %N"_s, u"%I/%A/%O"_s, u"%G/%TP_%I - %N"_s,
                           u"%I/%A/%TO_%I - %N"_s}));
}

TEST(Template2Path, SignsThatNoFileNameHasCannotBeTypedButSeparatorsCan)
{
    EXPECT_EQ(Template2Path::typeable(u"%G:/<%A>\\*%O?|\""_s), u"%G/%A\\%O\""_s);
}

// ---- values that want out

TEST(Template2Path, NamesOfDotsLeadNowhere)
{
    TemplateValues values = track();
    values.Album = u".."_s;
    values.Genre = u"."_s;
    values.Titel = u"../../etc/passwd"_s;
    EXPECT_EQ(pathOf(u"%G/%A/%N"_s, values), u"_/__/_._.._etc_passwd.mp3"_s);
    EXPECT_EQ(pathOf(u"../../%A/ . ./%N"_s, values), u"__/__/__/_ _/_._.._etc_passwd.mp3"_s);
    EXPECT_EQ(pathOf(u"/../%N"_s, track()), u"__/Lichter.mp3"_s);
    values.DName = u"../x.mp3"_s;
    EXPECT_EQ(pathOf(u"%O"_s, values), u"_._x.mp3"_s);
}

TEST(Template2Path, NoNameIsHidden)
{
    TemplateValues values = track();
    values.Interpret = u".38 Kaliber"_s;
    EXPECT_EQ(pathOf(u"%I/%I - %N"_s, values), u"_38 Kaliber/_38 Kaliber - Lichter.mp3"_s);
}

TEST(Template2Path, AValueOfTwoHalvesOfAStepUpIsOneName)
{
    TemplateValues values = track();
    values.Album = u"."_s;
    values.Genre = u"."_s;
    EXPECT_EQ(pathOf(u"%G%A/%N"_s, values), u"__/Lichter.mp3"_s);
}

TEST(Template2Path, SignsWithoutAPictureBecomeLines)
{
    TemplateValues values = track();
    values.Titel = u"a"_s + QChar(u'\0') + u"b\nc\td"_s + QChar(0x7F);
    EXPECT_EQ(pathOf(u"%N"_s, values), u"a_b_c_d_.mp3"_s);
    values.Titel = QString(QChar(0xD800)) + u"x"_s + QChar(0xDC00) + u"\U0001F3B5"_s;
    EXPECT_EQ(pathOf(u"%N"_s, values), u"_x_\U0001F3B5.mp3"_s);
}

TEST(Template2Path, ALongNameIsCutBetweenLettersToWhatAFileSystemTakes)
{
    TemplateValues values = track();
    values.Titel = u"x"_s.repeated(10'000);
    EXPECT_EQ(pathOf(u"%N"_s, values), u"x"_s.repeated(251) + u".mp3"_s);
    values.Titel = u"ä"_s.repeated(300);
    EXPECT_EQ(pathOf(u"%N"_s, values), u"ä"_s.repeated(125) + u".mp3"_s);
    values.Album = u"x"_s.repeated(249) + u" \U0001F3B5"_s;
    EXPECT_EQ(pathOf(u"%A/%TP"_s, values), u"x"_s.repeated(249) + u"/01.mp3"_s);
}

TEST(NameForPath, MakesOneNameOfAnyText)
{
    EXPECT_EQ(nameForPath(u"  Rock / Pop: \"Live\"  "_s), u"Rock _ Pop_ _Live_"_s);
    EXPECT_EQ(nameForPath(u".."_s), u"__"_s);
    EXPECT_EQ(nameForPath(u"R.E.M."_s), u"R.E.M."_s);
    EXPECT_EQ(nameForPath({}), QString());
}

} // namespace

} // namespace melovane
