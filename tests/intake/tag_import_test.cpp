#include "intake/import_errors.h"
#include "intake/tag_import.h"
#include "platform/db/definitions.h"
#include "platform/linux/linux_files.h"
#include "support/fake_clock.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class TagImportTest : public testing::Test
{
protected:
    TagImportTest()
    {
        m_import.genres().add(17, u"Rock"_s);
        m_facts.size = 123456;
        m_facts.modified = QDateTime(QDate(2024, 2, 29), QTime(12, 34, 56));
        m_reading.audio = {240'000, 192, 44100, 2};
        m_reading.tags.FID = u"654321000001"_s;
        m_reading.tags.hasId3v2 = true;
        m_reading.tags.id3v2.Titel = u"Title"_s;
        m_reading.tags.id3v2.Interpret = u"Artist"_s;
    }

    ImportOutcome import(const QString& name = u"x.mp3"_s)
    {
        return m_import.ImportFile(m_folder.path(), name, m_facts, m_reading);
    }

    TempFolder m_folder;
    LinuxFiles m_files;
    FakeClock m_clock;
    TagImport m_import{m_files, m_clock};
    FileFacts m_facts;
    MediaReading m_reading;
};

TEST_F(TagImportTest, ARowHoldsPlaceSoundAndDates)
{
    const ImportOutcome outcome = import();
    ASSERT_TRUE(outcome.isUsable());
    const ImportedTrack& track = outcome.track;
    EXPECT_EQ(track.FID, u"654321000001"_s);
    EXPECT_EQ(track.Path, m_folder.path() + u'/');
    EXPECT_EQ(track.DName, u"x.mp3"_s);
    EXPECT_EQ(track.DLen, 123456);
    EXPECT_EQ(track.DTimeMsec, 240'000);
    EXPECT_EQ(track.DTime, u"04:00"_s);
    EXPECT_EQ(track.DKhz, 44100);
    EXPECT_EQ(track.DBit, 192);
    EXPECT_EQ(track.DTSDatei, m_facts.modified);
    EXPECT_EQ(track.DTSImport, m_clock.now());
    EXPECT_EQ(track.DEL, 0);
    EXPECT_EQ(track.FrameStart, 0);
    EXPECT_EQ(track.FrameStop, 9187); // 240000 / 26.12245 = 9187.50...
    EXPECT_EQ(track.DriveTyp, static_cast<int>(m_files.volume(m_folder.path()).kind));
}

TEST(FrameStop, IsTheLengthInFramesRoundedHalfToEven)
{
    EXPECT_EQ(frameStopOf(0), 0);
    EXPECT_EQ(frameStopOf(26), 1);
    EXPECT_EQ(frameStopOf(13), 0);
    EXPECT_EQ(frameStopOf(14), 1);
    EXPECT_EQ(frameStopOf(180'000), 6891);
}

TEST_F(TagImportTest, TheIdentifierInTheTagIsTheCandidate)
{
    m_reading.tags.FID = u" 654321000777 "_s;
    EXPECT_EQ(import().track.FID, u"654321000777"_s);
}

TEST_F(TagImportTest, TheSettingDecidesBetweenTheTags)
{
    m_reading.tags.hasId3v1 = true;
    m_reading.tags.id3v1.Titel = u"Old"_s;
    EXPECT_EQ(import().track.Titel, u"Old"_s);
    m_import.SetTagChoice(2);
    EXPECT_EQ(import().track.Titel, u"Title"_s);
    m_import.SetTagChoice(3);
    EXPECT_EQ(import().track.Interpret, QString());
}

TEST_F(TagImportTest, WithoutTitleAndArtistTheFileNameGivesThem)
{
    m_reading.tags.id3v2 = {};
    const ImportOutcome outcome = import(u"marla_glen - believer.mp3"_s);
    EXPECT_EQ(outcome.track.Interpret, u"Marla Glen"_s);
    EXPECT_EQ(outcome.track.Titel, u"Believer"_s);
}

TEST_F(TagImportTest, ATitleAloneIsEnoughToLeaveTheFileNameAlone)
{
    m_reading.tags.id3v2.Interpret.clear();
    EXPECT_EQ(import(u"a - b.mp3"_s).track.Interpret, QString());
}

TEST_F(TagImportTest, NumericFieldsAreNumbersAsText)
{
    m_reading.tags.id3v2.Track = u"04/11"_s;
    m_reading.tags.id3v2.Jahr = u"1999-01-01"_s;
    m_reading.tags.BPM = u"128.00"_s;
    const ImportedTrack track = import().track;
    EXPECT_EQ(track.Track, u"4"_s);
    EXPECT_EQ(track.Jahr, u"1999"_s);
    EXPECT_EQ(track.BPM, u"128"_s);
    m_reading.tags.BPM = u"fast"_s;
    EXPECT_EQ(import().track.BPM, QString());
}

TEST_F(TagImportTest, TheGenreNumberOfTheOldTagBecomesItsName)
{
    m_reading.tags.id3v1.Genre = u"17"_s;
    EXPECT_EQ(import().track.Genre, u"Rock"_s);
    m_reading.tags.id3v1.Genre = u"250"_s;
    m_reading.tags.id3v2.Genre = u"Polka"_s;
    EXPECT_EQ(import().track.Genre, u"Polka"_s);
}

TEST_F(TagImportTest, ExtendedTagsAndRatingAreTaken)
{
    m_reading.tags.Note = u"4"_s;
    m_reading.tags.Stimmung = u" heiter "_s;
    m_reading.tags.User3 = u"u3"_s;
    const ImportedTrack track = import().track;
    EXPECT_EQ(track.Note, u"4"_s);
    EXPECT_EQ(track.Stimmung, u"heiter"_s);
    EXPECT_EQ(track.User3, u"u3"_s);
}

TEST_F(TagImportTest, TextsAreCutToTheWidthsOfTheirColumns)
{
    TableDef table;
    table.Fields.push_back({u"Titel"_s, FieldType::Text, 5, 0, {}, true, false});
    table.Fields.push_back({u"Kommentar"_s, FieldType::Memo, 0, 0, {}, true, false});
    m_import.SetWidths(table);
    m_reading.tags.id3v2.Titel = u"A long title"_s;
    m_reading.tags.id3v2.Kommentar = QString(10'000, u'k');
    const ImportedTrack track = import().track;
    EXPECT_EQ(track.Titel, u"A lon"_s);
    EXPECT_EQ(track.Kommentar.size(), 10'000);
}

TEST_F(TagImportTest, EachFaultHasItsCodeAndNoIdentifier)
{
    const std::vector<std::pair<MediaFault, int>> codes = {
        {MediaFault::NotFound, importerror::kFileNotFound},
        {MediaFault::NoAudio, importerror::kNoAudio},
        {MediaFault::Truncated, importerror::kNoAudio},
        {MediaFault::Empty, importerror::kCannotOpen},
        {MediaFault::TagSize, importerror::kCannotOpen}};
    for (const auto& [fault, code] : codes) {
        m_reading.fault = fault;
        m_reading.detail = u"why"_s;
        const ImportOutcome outcome = import();
        EXPECT_EQ(outcome.code, code);
        EXPECT_EQ(outcome.detail, u"why"_s);
        EXPECT_FALSE(outcome.isUsable());
        EXPECT_EQ(outcome.track.FID, QString());
    }
}

TEST_F(TagImportTest, SoundWithoutLengthOrRateIsAFaultyMp3)
{
    for (const AudioFacts& audio : {AudioFacts{0, 128, 44100, 2}, AudioFacts{1000, 0, 44100, 2},
                                    AudioFacts{1000, 128, 0, 2}}) {
        m_reading.audio = audio;
        EXPECT_EQ(import().code, importerror::kNoAudio);
    }
}

TEST_F(TagImportTest, AFileLargerThanTheColumnHoldsIsClamped)
{
    m_facts.size = qint64{5} * 1024 * 1024 * 1024;
    EXPECT_EQ(import().track.DLen, 2147483647);
}

TEST(ImportedTrackColumns, AreAsManyAsValues)
{
    EXPECT_EQ(
        ImportedTrack::columns().join(u' '),
        u"FID Titel Interpret Album Genre Jahr Track Kommentar Note BPM Path DName DLen DTime "
        "DTimeMsec DKhz DBit DTSDatei DTSImport DriveTyp DriveName DEL FrameStart FrameStop "
        "Normalize Pitch Volume Kategorie Situation Stimmung Tempo User1 User2 User3 User4 "
        "User5"_s);
    EXPECT_EQ(static_cast<size_t>(ImportedTrack::columns().size()),
              ImportedTrack().values().size());
}

TEST(ImportedTrackColumns, ExtendedTagsWithoutATextAreNullAndOthersEmpty)
{
    ImportedTrack track;
    const auto values = track.values();
    const auto at = [&](const QString& column) {
        return values.at(static_cast<size_t>(ImportedTrack::columns().indexOf(column)));
    };
    EXPECT_TRUE(at(u"Kategorie"_s).isNull());
    EXPECT_FALSE(at(u"Titel"_s).isNull());
    EXPECT_EQ(at(u"DTSDatei"_s).toDateTime(), QDateTime());
}

} // namespace
