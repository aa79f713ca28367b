#include "store/track_mix_values.h"
#include "store/track_reader.h"
#include "support/suite_fixture.h"

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

class GetAllDataByFid : public test::SuiteFixture
{
protected:
    MlvAllData read(const QString& fid, const MixDefaults& defaults = {})
    {
        return m_reader.GetAllDataByFid(suite.dbName(), fid, defaults);
    }

    /// Adds a track and sets one more column of it.
    QString addWith(const QString& column, const Value& value)
    {
        const QString fid = suite.library.add();
        const auto database = suite.open();
        const auto set =
            database->OpenRecordset(u"select * from db_all where fid='"_s + fid + u"'"_s);
        set->Edit();
        set->setValue(column, value);
        set->Update();
        return fid;
    }

    QStringList m_log;
    TrackReader m_reader{*suite.engine, [this](const QString& where, const QString& what) {
                             m_log.append(where);
                             EXPECT_FALSE(what.isEmpty());
                         }};
};

} // namespace

TEST_F(GetAllDataByFid, EveryColumnReachesItsField)
{
    const QString fid = suite.library.add();
    QStringList expected;
    {
        const auto database = suite.open();
        const auto set = database->OpenRecordset(u"db_all"_s);
        set->Edit();
        for (int i = 1; i < set->fieldCount(); ++i) {
            const FieldDef& field = set->fieldDef(i);
            if (field.Type == FieldType::Long) {
                set->setValue(i, 100 + i);
            } else if (field.Type == FieldType::Date) {
                set->setValue(i, Value(QDateTime(QDate(2026, 1, i % 28 + 1), QTime(1, 2, 3))));
            } else {
                set->setValue(i, field.Name.left(field.Size == 0 ? 99 : field.Size));
            }
        }
        set->setValue(u"MixIn", u"1,2,3,4,5"_s);
        set->setValue(u"MixOut", u"5,4,3,2,1"_s);
        set->setValue(u"eq", u"9,8,7,6,5"_s);
        set->Update();
        set->Refresh();
        for (const QString& name :
             u"FID Titel Pitch Volume Track Note Interpret Kommentar Album Jahr Genre DName "
             "DTimeMsec DLen DTime DTSDatei DTSImport DKhz DBit BPM DEL FrameStart FrameStop "
             "Normalize Play PlayCountDay PlayCountAll Path DriveTyp DriveName MixIn MixOut eq "
             "MixTime Image Kategorie Situation Stimmung Tempo User1 User2 User3 User4 User5"_s
                 .split(u' ')) {
            expected.append(set->value(name).toText());
        }
    }
    const MlvAllData d = read(fid);
    const auto n = [](int number) { return QString::number(number); };
    EXPECT_EQ(QStringList({d.FID,
                           d.Titel,
                           n(d.Pitch),
                           n(d.Volume),
                           d.Track,
                           d.Note,
                           d.Interpret,
                           d.Kommentar,
                           d.Album,
                           d.Jahr,
                           d.Genre,
                           d.DName,
                           n(d.DTimeMsec),
                           n(d.DLen),
                           d.DTime,
                           d.DTSDatei,
                           d.DTSImport,
                           n(d.DKhz),
                           n(d.DBit),
                           d.BPM,
                           n(d.DEL),
                           n(d.FrameStart),
                           n(d.FrameStop),
                           n(d.Normalize),
                           d.Play,
                           n(d.PlayCountDay),
                           n(d.PlayCountAll),
                           d.Path,
                           n(d.DriveTyp),
                           d.DriveName,
                           MixStyleToString(d.MixIn),
                           MixStyleToString(d.MixOut),
                           EQStyleToString(d.EQ),
                           n(d.MixTime),
                           d.Image,
                           d.Kategorie,
                           d.Situation,
                           d.Stimmung,
                           d.Tempo,
                           d.User1,
                           d.User2,
                           d.User3,
                           d.User4,
                           d.User5}),
              expected);
    EXPECT_EQ(m_log, QStringList());
}

TEST_F(GetAllDataByFid, NullsReadAsEmptyAndZero)
{
    suite.execute(u"insert into db_all (FID,DLen,DEL,DTSImport) values "
                  "('826816166000',null,null,null)"_s);
    const MlvAllData data = read(u"826816166000"_s);
    EXPECT_EQ(data.FID, u"826816166000"_s);
    EXPECT_EQ(data.PlayCountAll, 0);
    EXPECT_EQ(data.DLen, 0);
    EXPECT_EQ(data.Titel, QString());
    EXPECT_EQ(data.Play, QString());
    EXPECT_FALSE(data.IsUser());
    EXPECT_FALSE(data.IsMusicMatch());
    EXPECT_EQ(m_log, QStringList());
}

TEST_F(GetAllDataByFid, AnUnknownIdentifierGivesANewRecordAndALogLine)
{
    const MlvAllData data = read(u"999"_s);
    EXPECT_EQ(data.FID, QString());
    EXPECT_FALSE(data.MixIn.IsSet);
    EXPECT_EQ(m_log, QStringList{u"GetAllDataByFid"_s});
}

TEST_F(GetAllDataByFid, AMissingDatabaseGivesANewRecordAndALogLine)
{
    const MlvAllData data =
        m_reader.GetAllDataByFid(suite.file(u"none.mdb"_s), u"826816166000"_s, {});
    EXPECT_EQ(data.FID, QString());
    EXPECT_EQ(m_log, QStringList{u"GetAllDataByFid"_s});
}

TEST_F(GetAllDataByFid, ATableThatLacksAColumnGivesWhatStoodInFrontOfIt)
{
    const QString fid = suite.library.add({.Titel = u"Here"_s, .Path = u"/there/"_s});
    suite.execute(u"alter table db_all drop column Jahr"_s);
    const MlvAllData data = read(fid);
    EXPECT_EQ(data.Titel, u"Here"_s);
    EXPECT_EQ(data.Path, QString());
    EXPECT_EQ(m_log, QStringList{u"GetAllDataByFid"_s});
}

TEST_F(GetAllDataByFid, ATrackWithoutStylesHasTheDefaults)
{
    const MlvAllData data = read(suite.library.add());
    EXPECT_EQ(data.MixIn, MixStyleSplit(u"5000,2000,3000,0,10000"));
    EXPECT_EQ(data.MixOut, MixStyleSplit(u"0,3000,2000,5000,10000"));
    EXPECT_EQ(data.EQ, EQStyleSplit(u"0,100,100,100,100"));
    EXPECT_EQ(data.MixTime, 5000);
}

TEST_F(GetAllDataByFid, AnEmptyStyleTextHasTheDefaultToo)
{
    const QString fid = addWith(u"MixOut"_s, QString(u""_s));
    EXPECT_TRUE(read(fid).MixOut.IsSet);
}

TEST_F(GetAllDataByFid, TheDefaultNullLeavesTheStyleUnset)
{
    const MlvAllData data = read(suite.library.add(), {.DefaultMixStyleIN = u"null"_s});
    EXPECT_FALSE(data.MixIn.IsSet);
    EXPECT_TRUE(data.MixOut.IsSet);
}

TEST_F(GetAllDataByFid, AStoredStyleAndMixTimeAreKept)
{
    EXPECT_EQ(read(addWith(u"MixIn"_s, u"1,2,3,4,5"_s)).MixIn, MixStyleSplit(u"1,2,3,4,5"));
    EXPECT_EQ(read(addWith(u"MixTime"_s, 1200)).MixTime, 1200);
}

TEST_F(GetAllDataByFid, AMixTimeOfZeroStaysWhenTheDefaultIsBelowOne)
{
    EXPECT_EQ(read(suite.library.add(), {.DefaultMixTime = 0}).MixTime, 0);
}

TEST_F(GetAllDataByFid, DatesReadAsTheirText)
{
    const MlvAllData data =
        read(suite.library.add({.DTSImport = QDateTime(QDate(2026, 2, 1), QTime(7, 8, 9))}));
    EXPECT_EQ(data.DTSImport, u"01.02.2026 07:08:09"_s);
    EXPECT_EQ(data.Play, QString());
}

TEST_F(GetAllDataByFid, HostileIdentifiersBreakNoStatement)
{
    const QString kept = suite.library.add();
    for (const QString& hostile :
         {u"'"_s, u"' or '1'='1"_s, u"'; delete from db_all; --"_s, u"[x]"_s, u"*"_s, u"\n"_s,
          QString(10000, u'\''), QString(u"a\0b"_s), QString(QChar(0xD800))}) {
        EXPECT_EQ(read(hostile).FID, QString());
    }
    EXPECT_EQ(read(kept).FID, kept);
    EXPECT_EQ(suite.column(u"select FID from db_all"_s).size(), 1);
}

TEST_F(GetAllDataByFid, HostileTextsComeOutAsTheyWentIn)
{
    for (const QString& hostile :
         {u"Rock 'n' \"Roll\""_s, u"[brackets] {and} #hash# 100%"_s, u"star * and ?"_s,
          u"line\r\nfeed\ttab"_s, u"'; drop table db_all; --"_s,
          u"Ärger \u6F22\u5B57 \U0001F3B5"_s}) {
        const MlvAllData data = read(suite.library.add({.Titel = hostile,
                                                        .Kommentar = hostile + QString(10000, u'x'),
                                                        .Path = u"/a'b/["_s + hostile + u"/"_s,
                                                        .DName = hostile}));
        EXPECT_EQ(data.Titel, hostile);
        EXPECT_EQ(data.Kommentar.size(), hostile.size() + 10000);
        EXPECT_EQ(data.Path, u"/a'b/["_s + hostile + u"/"_s);
        EXPECT_EQ(data.DName, hostile);
    }
    EXPECT_EQ(m_log, QStringList());
}

namespace {

class Mp3DbData : public test::SuiteFixture
{
protected:
    GetMP3DBData m_data{*suite.engine};
};

} // namespace

TEST_F(Mp3DbData, ReadsThePlayersFieldsAndTimesOfStartAndStop)
{
    const QString fid = suite.library.add();
    suite.execute(u"update db_all set FrameStart=100, FrameStop=8269, Volume=7000, Pitch=-20, "
                  "MixIn='1,2,3,4,5', MixTime=1500, Normalize=3"_s);
    m_data.DBOpen(suite.dbName());
    ASSERT_TRUE(m_data.GetData(fid));
    EXPECT_EQ(m_data.MixIn, u"1,2,3,4,5"_s);
    EXPECT_EQ(m_data.MixTime, 1500);
    EXPECT_EQ(m_data.DTime, u"03:36"_s);
    EXPECT_EQ(m_data.Volume, 7000);
    EXPECT_EQ(m_data.Pitch, -20);
    EXPECT_EQ(m_data.Normalize, 3);
    EXPECT_EQ(m_data.Start, u"00:02"_s);
    EXPECT_EQ(m_data.Stop, u"03:36"_s);
}

TEST_F(Mp3DbData, NullsReadAsEmptyAndNoDefaultIsFilledIn)
{
    const QString fid = suite.library.add();
    m_data.DBOpen(suite.dbName());
    ASSERT_TRUE(m_data.GetData(fid));
    EXPECT_EQ(m_data.MixIn, QString());
    EXPECT_EQ(m_data.MixTime, 0);
}

TEST_F(Mp3DbData, AnUnknownIdentifierEmptiesTheFields)
{
    const QString fid = suite.library.add();
    m_data.DBOpen(suite.dbName());
    ASSERT_TRUE(m_data.GetData(fid));
    EXPECT_FALSE(m_data.GetData(u"' or '1'='1"_s));
    EXPECT_EQ(m_data.DTime, QString());
    EXPECT_EQ(m_data.Stop, QString());
}

TEST_F(Mp3DbData, FramesBeyondAllTracksDoNotOverflow)
{
    const QString fid = suite.library.add();
    suite.execute(u"update db_all set FrameStart=-5, FrameStop=2147483647"_s);
    m_data.DBOpen(suite.dbName());
    ASSERT_TRUE(m_data.GetData(fid));
    EXPECT_EQ(m_data.Start, u"00:00"_s);
}

TEST_F(Mp3DbData, WithoutAnOpenDatabaseNothingIsRead)
{
    EXPECT_FALSE(m_data.GetData(u"826816166000"_s));
    m_data.DBOpen(suite.dbName());
    m_data.DBClose();
    EXPECT_FALSE(m_data.GetData(u"826816166000"_s));
}

TEST_F(Mp3DbData, RecCloseKeepsTheFieldsAndTheConnection)
{
    const QString fid = suite.library.add();
    m_data.DBOpen(suite.dbName());
    ASSERT_TRUE(m_data.GetData(fid));
    m_data.RecClose();
    EXPECT_EQ(m_data.DTime, u"03:36"_s);
    EXPECT_TRUE(m_data.GetData(fid));
}
