#include "config/update_colors.h"
#include "library/library_columns.h"
#include "library/library_look.h"
#include "support/column_text.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <QHash>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class Row : public RowValues
{
public:
    explicit Row(QHash<QString, Value> values)
        : m_values(std::move(values))
    {}

    [[nodiscard]] Value value(const QString& field) const override { return m_values.value(field); }

private:
    QHash<QString, Value> m_values;
};

struct LibraryLookTest : public testing::Test
{
    LibraryLookTest()
    {
        const auto settings = folders.makeSettings();
        look.setColours(GridColours::from(UpdateColors(*settings)));
    }

    [[nodiscard]] Value hoursAgo(double hours) const
    {
        return clock.now().addMSecs(static_cast<qint64>(-hours * 3'600'000));
    }

    test::SuiteFolders folders;
    test::FakeClock clock{QDateTime(QDate(2026, 11, 20), QTime(14, 30))};
    LibraryLook look{clock};
};

TEST_F(LibraryLookTest, APlaybackOfTheLastTwelveHoursShowsItsTimeOfDay)
{
    EXPECT_EQ(look.text(u"Play"_s, hoursAgo(0.5)), u"14:00"_s);
    EXPECT_EQ(look.text(u"PLAY"_s, hoursAgo(11.5)), u"03:00"_s);
    EXPECT_EQ(look.text(u"Play"_s, hoursAgo(13)), u"20.11.26"_s);
    EXPECT_EQ(look.text(u"Play"_s, hoursAgo(24 * 30)), u"21.10.26"_s);
    EXPECT_EQ(look.text(u"Play"_s, Value()), QString());
}

TEST_F(LibraryLookTest, AVariableBitRateIsNamed)
{
    EXPECT_EQ(look.text(u"DBit"_s, -99), u"VBR"_s);
    EXPECT_EQ(look.text(u"DBit"_s, 320), u"320"_s);
    EXPECT_EQ(look.text(u"Pitch"_s, -99), u"-99"_s);
}

TEST_F(LibraryLookTest, NullIsEmpty)
{
    EXPECT_EQ(look.text(u"PlayCountDay"_s, Value()), QString());
    EXPECT_EQ(look.text(u"DBit"_s, Value()), QString());
}

TEST_F(LibraryLookTest, AFavouriteHasTheGroundOfFavourites)
{
    EXPECT_EQ(look.style(u"Titel"_s, Row({{u"favorit"_s, hoursAgo(100)}})).ground,
              CellGround::Favourite);
    EXPECT_EQ(look.style(u"Titel"_s, Row({})).ground, CellGround::Plain);
}

TEST_F(LibraryLookTest, ARatingIsABadgeInItsColour)
{
    const CellStyle best = look.style(u"Note"_s, Row({{u"Note"_s, u"5"_s}}));
    EXPECT_EQ(best.badge, (Colour{255, 255, 0}));
    EXPECT_EQ(best.badgeText, (Colour{0, 0, 0}));
    EXPECT_TRUE(best.bold);
    EXPECT_EQ(look.style(u"Note"_s, Row({{u"Note"_s, u"2"_s}})).badge, (Colour{0xF0, 0xA2, 0x28}));
    for (const QString& none : {u""_s, u"0"_s, u"6"_s, u"x"_s}) {
        EXPECT_FALSE(look.style(u"Note"_s, Row({{u"Note"_s, none}})).badge) << none.toStdString();
    }
    EXPECT_FALSE(look.style(u"Titel"_s, Row({{u"Note"_s, u"5"_s}})).badge);
}

TEST_F(LibraryLookTest, APlaybackOfTheLastDayIsTinted)
{
    EXPECT_EQ(look.style(u"Play"_s, Row({{u"Play"_s, hoursAgo(23)}})).tint,
              (Colour{0x32, 0xFA, 0x32}));
    EXPECT_FALSE(look.style(u"Play"_s, Row({{u"Play"_s, hoursAgo(25)}})).tint);
    EXPECT_FALSE(look.style(u"Play"_s, Row({})).tint);
    EXPECT_FALSE(look.style(u"Titel"_s, Row({{u"Play"_s, hoursAgo(1)}})).tint);
}

TEST_F(LibraryLookTest, ARowOutOfUseIsColouredAndStruckOut)
{
    for (const int del : {-1, 2, 3}) {
        const CellStyle style = look.style(u"Titel"_s, Row({{u"DEL"_s, del}}));
        EXPECT_TRUE(style.struckOut);
        EXPECT_EQ(style.text, (Colour{255, 0, 0}));
    }
    EXPECT_EQ(look.style(u"Titel"_s, Row({{u"DEL"_s, 0}})).text, std::nullopt);
}

TEST_F(LibraryLookTest, TheTrackInTheMonitorPlayerCarriesGroundAndLoudspeakerAtItsTitle)
{
    const Row heard({{u"FID"_s, u"a"_s}});
    EXPECT_EQ(look.style(u"Titel"_s, Row({})).ground, CellGround::Plain);
    look.setHeardTrack(u"a"_s, u"wird vorgehört"_s);
    EXPECT_EQ(look.style(u"Titel"_s, heard).ground, CellGround::Heard);
    EXPECT_EQ(look.style(u"Titel"_s, heard).icon, u"volume"_s);
    EXPECT_EQ(look.style(u"Titel"_s, heard).iconText, u"wird vorgehört"_s);
    EXPECT_EQ(look.style(u"Titel"_s, Row({{u"FID"_s, u"b"_s}})).ground, CellGround::Plain);
    EXPECT_EQ(look.style(u"Album"_s, heard).ground, CellGround::Plain);
    look.setHeardTrack({}, {});
    EXPECT_EQ(look.style(u"Titel"_s, heard).ground, CellGround::Plain);
    EXPECT_EQ(look.style(u"Titel"_s, Row({{u"FID"_s, QString()}})).ground, CellGround::Plain);
}

TEST_F(LibraryLookTest, AZeroAsTextColourIsBlackAndNotUnset)
{
    const auto settings = folders.makeSettings();
    settings->WriteKeyValue(u"Color"_s, u"NoteTextColor"_s, u"0"_s);
    settings->WriteKeyValue(u"Color"_s, u"RowShowDEL"_s, u"16711680"_s);
    settings->WriteKeyValue(u"Color"_s, u"NoteTextBold"_s, u"0"_s);
    const GridColours colours = GridColours::from(UpdateColors(*settings));
    EXPECT_EQ(colours.noteText, (Colour{0, 0, 0}));
    EXPECT_EQ(colours.rowShowDel, (Colour{0, 0, 255}));
    EXPECT_FALSE(colours.noteTextBold);
}

TEST(LibraryColumns, TheirOrderWidthsAndAlignmentsAreThoseOfTheLayoutThatUsersKnow)
{
    EXPECT_EQ(test::textOf(libraryColumns()),
              u"Note|4|C|shown Titel|40|L|stretched Interpret|18|L|stretched Album|15|L|stretched "
              "Genre|11|L|shown BPM|5|R|shown DTime|6|R|shown Play|8|R|shown "
              "PlayCountDay|6|R|shown PlayCountAll|7|R|shown Jahr|5|R|hidden Track|5|R|hidden "
              "Kommentar|24|L|hidden Kategorie|12|L|hidden Situation|12|L|hidden "
              "Stimmung|12|L|hidden Tempo|12|L|hidden User1|12|L|hidden User2|12|L|hidden "
              "User3|12|L|hidden User4|12|L|hidden User5|12|L|hidden DBit|7|R|hidden "
              "DKhz|8|R|hidden DLen|10|R|hidden Path|30|L|hidden DName|24|L|hidden "
              "DriveName|12|L|hidden DriveTyp|6|R|hidden DTSDatei|18|R|hidden "
              "DTSImport|18|R|hidden favorit|18|R|hidden DTimeMsec|9|R|hidden "
              "FrameStart|8|R|hidden FrameStop|8|R|hidden MixTime|7|R|hidden MixIn|14|L|hidden "
              "MixOut|14|L|hidden eq|14|L|hidden Pitch|6|R|hidden Volume|8|R|hidden "
              "Normalize|8|R|hidden Image|16|L|hidden DEL|6|R|hidden FID|13|L|hidden"_s);
}

TEST(LibraryColumns, TenAreShownAndEveryFieldComesOnce)
{
    QStringList shown;
    QStringList all;
    int stretched = 0;
    for (const GridColumn& column : libraryColumns()) {
        EXPECT_FALSE(all.contains(column.field, Qt::CaseInsensitive));
        all.append(column.field);
        stretched += column.stretched ? 1 : 0;
        if (column.shown) {
            shown.append(column.heading);
        }
    }
    EXPECT_EQ(shown, (QStringList{u"Note"_s, u"Titel"_s, u"Interpret"_s, u"Album"_s, u"Genre"_s,
                                  u"BPM"_s, u"Zeit"_s, u"Gespielt"_s, u"Heute"_s, u"Gesamt"_s}));
    EXPECT_EQ(stretched, 3);
    EXPECT_EQ(all.size(), 45);
}

} // namespace
} // namespace melovane
