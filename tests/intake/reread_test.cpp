#include "intake/intake_fixture.h"

#include <QDateTime>
#include <QFile>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class RereadTest : public IntakeFixture
{
protected:
    void SetUp() override
    {
        music.write(u"a.mp3"_s, simpleMp3(u"First"_s, u"Artist"_s));
        ASSERT_EQ(import().added, 1);
        fid = of(u"a.mp3"_s, u"FID"_s).toText();
    }

    /// Gives a file other bytes and another date.
    void change(const QString& name, const QByteArray& bytes)
    {
        music.write(name, bytes);
        QFile file(music.file(name));
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_TRUE(file.setFileTime(QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5)),
                                     QFileDevice::FileModificationTime));
    }

    QString fid;
};

TEST_F(RereadTest, AFileThatIsAsItWasIsNotRead)
{
    const IntakeReport report = reread();
    EXPECT_EQ(report.found, 1);
    EXPECT_EQ(report.known, 1);
    EXPECT_EQ(report.changed, 0);
    EXPECT_EQ(summary(texts, report), u"1 Datei geprüft: 1 unverändert."_s);
}

TEST_F(RereadTest, AChangedFileIsReadAndKeepsWhatTheUserMadeOfIt)
{
    suite.execute(u"update db_all set PlayCountAll=3, Note='4', MixTime=77, favorit=now, BPM='99', "
                  u"Volume=1, DTSImport=cdate(40000)"_s);
    change(u"a.mp3"_s, Id3v2Writer().text("TIT2", u"Second"_s).text("TPE1", u"Other"_s).tag() +
                           constantStream(FrameFormat(), 60));
    EXPECT_EQ(reread().changed, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"Titel"_s).toText(), u"Second"_s);
    EXPECT_EQ(of(u"a.mp3"_s, u"DTimeMsec"_s).toLong(), millisecondsOf(60));
    EXPECT_EQ(of(u"a.mp3"_s, u"FrameStop"_s).toLong(), 60);
    EXPECT_EQ(of(u"a.mp3"_s, u"FID"_s).toText(), fid);
    EXPECT_EQ(of(u"a.mp3"_s, u"PlayCountAll"_s).toLong(), 3);
    EXPECT_EQ(of(u"a.mp3"_s, u"Note"_s).toText(), u"4"_s);
    EXPECT_EQ(of(u"a.mp3"_s, u"BPM"_s).toText(), u"99"_s);
    EXPECT_EQ(of(u"a.mp3"_s, u"MixTime"_s).toLong(), 77);
    EXPECT_EQ(of(u"a.mp3"_s, u"DTSImport"_s).toDateTime().date(), QDate(2009, 7, 6));
    EXPECT_FALSE(of(u"a.mp3"_s, u"favorit"_s).isNull());
    EXPECT_EQ(reread().changed, 0) << "read once";
}

TEST_F(RereadTest, ADateAloneIsAChange)
{
    change(u"a.mp3"_s, music.read(u"a.mp3"_s));
    EXPECT_EQ(reread().changed, 1);
}

TEST_F(RereadTest, ARowWhoseEditsWaitForTheFileKeepsItsTexts)
{
    suite.execute(u"update db_all set Titel='Edited'"_s);
    suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(fid));
    change(u"a.mp3"_s, simpleMp3(u"From the file"_s, u"x"_s) + shortStream());
    EXPECT_EQ(reread().changed, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"Titel"_s).toText(), u"Edited"_s);
    EXPECT_EQ(of(u"a.mp3"_s, u"DTimeMsec"_s).toLong(), millisecondsOf(40));
}

TEST_F(RereadTest, StartAndStopStayUnlessTheyLieBehindTheNewEnd)
{
    suite.execute(u"update db_all set FrameStart=3, FrameStop=15"_s);
    change(u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s) + shortStream());
    static_cast<void>(reread());
    EXPECT_EQ(of(u"a.mp3"_s, u"FrameStart"_s).toLong(), 3);
    EXPECT_EQ(of(u"a.mp3"_s, u"FrameStop"_s).toLong(), 15);
    suite.execute(u"update db_all set FrameStart=30, FrameStop=39, DLen=1"_s);
    change(u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    static_cast<void>(reread());
    EXPECT_EQ(of(u"a.mp3"_s, u"FrameStart"_s).toLong(), 0);
    EXPECT_EQ(of(u"a.mp3"_s, u"FrameStop"_s).toLong(), 20);
}

TEST_F(RereadTest, AFileThatBecameBrokenIsListedAndItsRowStays)
{
    change(u"a.mp3"_s, "no music any more");
    const IntakeReport report = reread();
    EXPECT_EQ(report.changed, 0);
    ASSERT_EQ(report.skipped.refused.size(), 1U);
    EXPECT_EQ(report.skipped.refused[0].path, music.file(u"a.mp3"_s));
    EXPECT_EQ(of(u"a.mp3"_s, u"Titel"_s).toText(), u"First"_s);
}

TEST_F(RereadTest, AMissingFileIsCountedAndAReturnedOneLosesItsMark)
{
    suite.library.add({.FID = u"654321000008"_s, .Path = u"/gone/"_s, .DName = u"gone.mp3"_s});
    suite.library.add(
        {.FID = u"654321000009"_s, .Path = u"/cd/"_s, .DName = u"disc.mp3"_s, .DriveTyp = 4});
    suite.execute(u"update db_all set DEL=3 where DName='a.mp3'"_s);
    const IntakeReport report = reread();
    EXPECT_EQ(report.missing, 1);
    EXPECT_EQ(report.known, 1);
    EXPECT_EQ(report.returned, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"DEL"_s).toLong(), -1);
    EXPECT_EQ(of(u"gone.mp3"_s, u"DEL"_s).toLong(), 0) << "marking is the scan's work";
}

TEST_F(RereadTest, AMappedFileIsReadAgainAndItsRowKeepsThePlaceItHasStored)
{
    mapFolder(u"C:\\Musik\\"_s, u"new"_s);
    music.write(u"new/Rock/m.mp3"_s, simpleMp3(u"From the file"_s, u"Artist"_s));
    suite.library.add({.FID = u"654321000008"_s,
                       .Path = u"C:\\Musik\\Rock\\"_s,
                       .DName = u"m.mp3"_s,
                       .DriveName = u"MUSIK"_s,
                       .DEL = 2});
    const IntakeReport report = reread();
    EXPECT_EQ(report.missing, 0);
    EXPECT_EQ(report.changed, 1);
    EXPECT_EQ(of(u"m.mp3"_s, u"Titel"_s).toText(), u"From the file"_s);
    EXPECT_EQ(of(u"m.mp3"_s, u"Path"_s).toText(), u"C:\\Musik\\Rock\\"_s);
    EXPECT_EQ(of(u"m.mp3"_s, u"DriveName"_s).toText(), u"MUSIK"_s);
    EXPECT_EQ(of(u"m.mp3"_s, u"DEL"_s).toLong(), 0);
    EXPECT_EQ(reread().known, 2) << "read once";
}

TEST_F(RereadTest, ARowThatDiffersInLetterCaseFromTheDiskCountsAsThereAndKeepsItsSpelling)
{
    suite.execute(u"update db_all set DName='A.MP3', DEL=2"_s);
    EXPECT_EQ(reread().returned, 1);
    change(u"a.mp3"_s, simpleMp3(u"Second"_s, u"Artist"_s));
    EXPECT_EQ(reread().changed, 1);
    EXPECT_EQ(suite.value(u"select Titel from db_all"_s).toText(), u"Second"_s);
    EXPECT_EQ(suite.value(u"select DName from db_all"_s).toText(), u"A.MP3"_s);
}

TEST_F(RereadTest, ANameInAnotherUnicodeFormCountsAsThere)
{
    music.write(u"u\u0308ber.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    suite.library.add(
        {.FID = u"654321000008"_s, .Path = music.path() + u'/', .DName = u"\u00fcber.mp3"_s});
    EXPECT_EQ(reread().missing, 0);
}

} // namespace
