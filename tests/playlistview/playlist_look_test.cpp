#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "config/update_colors.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "playlistview/playlist_look.h"
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
    explicit Row(QHash<QString, Value> values, qint64 row = 0)
        : m_values(std::move(values))
        , m_row(row)
    {}

    [[nodiscard]] Value value(const QString& field) const override { return m_values.value(field); }

    [[nodiscard]] qint64 row() const override { return m_row; }

private:
    QHash<QString, Value> m_values;
    qint64 m_row;
};

struct PlaylistLookTest : public testing::Test
{
    PlaylistLookTest()
    {
        MelovaneConfiguration::fill(texts);
        look.setColours(UpdateColors(*settings));
        look.setDefaultMixTime(5000);
    }

    [[nodiscard]] QString shown(const QString& field, const Row& row) const
    {
        return look.rowText(field, row.value(field), row);
    }

    test::SuiteFolders folders;
    test::FakeClock clock;
    std::unique_ptr<DBEngine> engine = sqlite::makeEngine(clock);
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings(*engine);
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    PlaylistLook look{clock, texts};
};

TEST_F(PlaylistLookTest, PlayIsATimeForHalfADayAndADayBeforeThat)
{
    const QDateTime now = clock.now();
    EXPECT_EQ(look.text(u"play"_s, Value(now.addSecs(qint64{-11} * 3600))),
              now.addSecs(qint64{-11} * 3600).toString(u"HH:mm"_s));
    EXPECT_EQ(look.text(u"play"_s, Value(now.addSecs(qint64{-13} * 3600))),
              now.addSecs(qint64{-13} * 3600).toString(u"dd.MM.yy"_s));
}

TEST_F(PlaylistLookTest, APlayValueThatIsNoDateIsShownAsItIs)
{
    EXPECT_EQ(look.text(u"play"_s, Value(u"gestern <b>"_s)), u"gestern <b>"_s);
    EXPECT_EQ(look.text(u"play"_s, Value()), QString());
}

TEST_F(PlaylistLookTest, MixTimesAreSecondsAndZeroIsTheDefault)
{
    EXPECT_EQ(look.text(u"mixtime"_s, Value(2340)), u"2.34"_s);
    EXPECT_EQ(look.text(u"mixtime"_s, Value(0)), u"5.00"_s);
    EXPECT_EQ(look.text(u"MixTime"_s, Value()), u"5.00"_s);
}

TEST_F(PlaylistLookTest, FramesAreShownAsTimes)
{
    const Row row({{u"Start"_s, 100},
                   {u"FrameStart"_s, 100},
                   {u"Stop"_s, 2397},
                   {u"FrameStop"_s, 2397},
                   {u"DTimeMsec"_s, 99'000}});
    EXPECT_EQ(shown(u"Start"_s, row), u"00:02:61"_s);
    EXPECT_EQ(shown(u"Stop"_s, row), u"01:02:62"_s);
    EXPECT_EQ(shown(u"DTime"_s, row), u"01:00"_s);
}

TEST_F(PlaylistLookTest, AStopOfZeroIsTheEndOfTheTrack)
{
    const Row row({{u"Start"_s, 0},
                   {u"FrameStart"_s, 0},
                   {u"Stop"_s, 0},
                   {u"FrameStop"_s, 0},
                   {u"DTimeMsec"_s, 61'000}});
    EXPECT_EQ(shown(u"Stop"_s, row), u"01:01:00"_s);
    EXPECT_EQ(shown(u"DTime"_s, row), u"01:01"_s);
}

TEST_F(PlaylistLookTest, RowsAreNumberedFromOneAndABitRateThatVariesSaysSo)
{
    EXPECT_EQ(shown(u"Nr"_s, Row({{u"Nr"_s, 1}}, 41)), u"42."_s);
    EXPECT_EQ(look.text(u"dbit"_s, Value(-99)), u"VBR"_s);
    EXPECT_EQ(look.text(u"dbit"_s, Value(320)), u"320"_s);
}

TEST_F(PlaylistLookTest, PlayingNextAndHeardEntriesDifferByGroundAndPicture)
{
    look.setPlayed(Plid{7}, Plid{8});
    look.setHeard(Plid{9});
    const auto nr = [this](int plid) { return look.style(u"Nr"_s, Row({{u"PLID"_s, plid}})); };
    EXPECT_EQ(nr(7).ground, CellGround::Playing);
    EXPECT_EQ(nr(7).icon, u"volume"_s);
    EXPECT_EQ(nr(8).ground, CellGround::Next);
    EXPECT_EQ(nr(8).icon, u"forward"_s);
    EXPECT_EQ(nr(9).ground, CellGround::Heard);
    EXPECT_EQ(nr(10).ground, CellGround::Plain);
    EXPECT_EQ(look.style(u"Titel"_s, Row({{u"PLID"_s, 7}})).ground, CellGround::Plain);
}

TEST_F(PlaylistLookTest, ATrackHeardFromElsewhereMarksEveryEntryOfItAndAnEntryOnlyItself)
{
    const Row first({{u"PLID"_s, 1}, {u"FID"_s, u"a"_s}});
    const Row again({{u"PLID"_s, 2}, {u"FID"_s, u"a"_s}});
    look.setHeard(Plid{}, u"a"_s);
    EXPECT_EQ(look.style(u"Nr"_s, first).ground, CellGround::Heard);
    EXPECT_EQ(look.style(u"Nr"_s, again).ground, CellGround::Heard);
    EXPECT_FALSE(look.style(u"Nr"_s, again).iconText.isEmpty());
    look.setHeard(Plid{2}, u"a"_s);
    EXPECT_EQ(look.style(u"Nr"_s, first).ground, CellGround::Plain);
    EXPECT_EQ(look.style(u"Nr"_s, again).ground, CellGround::Heard);
}

TEST_F(PlaylistLookTest, EntriesWithoutANumberAreNeverMarked)
{
    EXPECT_EQ(look.style(u"Nr"_s, Row({})).ground, CellGround::Plain);
}

TEST_F(PlaylistLookTest, InAJingleListTheRowsThatThePlayerHasReadyAreMarked)
{
    look.setJingleMode(true, 5);
    look.setPlayed(Plid{7}, Plid{8});
    EXPECT_EQ(look.style(u"Nr"_s, Row({{u"PLID"_s, 1}}, 4)).ground, CellGround::Playing);
    EXPECT_EQ(look.style(u"Nr"_s, Row({{u"PLID"_s, 7}}, 5)).ground, CellGround::Plain);
}

TEST_F(PlaylistLookTest, EveryActionHasAPictureThatSaysWhatItMeans)
{
    for (const int aktion : {0, 1, 2, 3, 11, 12}) {
        const CellStyle style = look.style(u"Aktion"_s, Row({{u"Aktion"_s, aktion}}));
        EXPECT_FALSE(style.icon.isEmpty()) << aktion;
        EXPECT_FALSE(style.iconText.isEmpty()) << aktion;
    }
    EXPECT_TRUE(look.style(u"Aktion"_s, Row({{u"Aktion"_s, 99}})).icon.isEmpty());
    EXPECT_EQ(aktionLook(11)->key, u"Aktion.Jingle.1");
    EXPECT_EQ(shown(u"Aktion"_s, Row({{u"Aktion"_s, 1}})), QString());
}

TEST_F(PlaylistLookTest, RatingsAreBadgesAndFlaggedTracksAreStruckOut)
{
    EXPECT_TRUE(look.style(u"Note"_s, Row({{u"Note"_s, u"5"_s}})).badge.has_value());
    EXPECT_FALSE(look.style(u"Note"_s, Row({{u"Note"_s, u"6"_s}})).badge.has_value());
    EXPECT_TRUE(look.style(u"Titel"_s, Row({{u"DEL"_s, 2}})).struckOut);
}

TEST_F(PlaylistLookTest, ARatingIsNeverBoldHereWhateverTheLibrarysIs)
{
    settings->WriteKeyValue(u"Color"_s, u"NoteTextBold"_s, u"-1"_s);
    look.setColours(UpdateColors(*settings));
    const CellStyle style = look.style(u"Note"_s, Row({{u"Note"_s, u"5"_s}}));
    EXPECT_TRUE(style.badge.has_value());
    EXPECT_FALSE(style.bold);
}

TEST_F(PlaylistLookTest, ALockedListStepsBack)
{
    look.setLocked(true);
    EXPECT_TRUE(look.style(u"Titel"_s, Row({})).dimmed);
    look.setLocked(false);
    EXPECT_FALSE(look.style(u"Titel"_s, Row({})).dimmed);
}

TEST(PlaylistColumns, TheirOrderWidthsAndAlignmentsAreThoseOfTheLayoutThatUsersKnow)
{
    EXPECT_EQ(
        test::textOf(playlistColumns()),
        u"Aktion|6|C|shown Nr|5|R|shown Note|4|C|shown Titel|40|L|stretched Interpret|18|L|stretched "
        "BPM|5|R|shown Start|8|R|shown Stop|8|R|shown DTime|6|R|shown MixTime|7|R|shown "
        "Play|8|R|shown Album|15|L|hidden Genre|11|L|hidden Jahr|5|R|hidden Track|5|R|hidden "
        "Kommentar|24|L|hidden Kategorie|12|L|hidden Situation|12|L|hidden "
        "Stimmung|12|L|hidden Tempo|12|L|hidden User1|12|L|hidden User2|12|L|hidden "
        "User3|12|L|hidden User4|12|L|hidden User5|12|L|hidden PlayCountDay|6|R|hidden "
        "PlayCountAll|7|R|hidden Pitch|6|R|hidden Volume|8|R|hidden DBit|7|R|hidden "
        "DKhz|8|R|hidden Path|30|L|hidden DName|24|L|hidden FID|13|L|hidden"_s);
}

} // namespace
} // namespace melovane
