#include "intake/intake_fixture.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "store/track_fields.h"
#include "support/work_time.h"

#include <QDir>
#include <QFile>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class IntakeTest : public IntakeFixture
{
protected:
    void writeMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            music.write(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')),
                        simpleMp3(u"Title %1"_s.arg(i), u"Artist"_s));
        }
    }
};

/// A tag in which every frame of a field of a track says "4", a genre a name, and the identifier
/// itself. Pictures are not imported.
QByteArray tagOfAllFields(int version, const QString& fid)
{
    Id3v2Writer writer(version);
    for (const TrackFieldRow& row : trackFields()) {
        const QByteArray id = (version == 4 ? row.frame.idOf24 : row.frame.id).toLatin1();
        if (id == "TXXX") {
            writer.userText(row.frame.description.toString(),
                            row.field == TrackField::FID ? fid : u"4"_s);
        } else if (id == "COMM") {
            writer.comment({}, u"4"_s);
        } else if (id == "POPM") {
            writer.rating("rating@melovane", 196);
        } else if (!id.isEmpty() && id != "APIC") {
            writer.text(id, row.field == TrackField::Genre ? u"Eigenes"_s : u"4"_s);
        }
    }
    return writer.tag();
}

TEST_F(IntakeTest, EveryFrameThatAFieldHasInATagReachesItsColumnInBothVersions)
{
    for (const int version : {3, 4}) {
        const QString name = u"%1.mp3"_s.arg(version);
        const QString fid = u"65432100000%1"_s.arg(version);
        music.write(name, tagOfAllFields(version, fid) + shortStream());
        ASSERT_EQ(import().added, 1);
        int seen = 0;
        for (const TrackFieldRow& row : trackFields()) {
            if (row.frame.id.isEmpty() || row.field == TrackField::Image) {
                continue;
            }
            ++seen;
            const QString expected = row.field == TrackField::FID     ? fid
                                     : row.field == TrackField::Genre ? u"Eigenes"_s
                                                                      : u"4"_s;
            EXPECT_EQ(of(name, row.column.toString()).toText(), expected)
                << version << ' ' << row.column.toString().toStdString();
        }
        EXPECT_EQ(seen, 19);
    }
}

TEST_F(IntakeTest, AFileBecomesARowWithAllItSays)
{
    Id3v2Writer writer;
    writer.text("TIT2", u"Über"_s)
        .text("TPE1", u"Käthe"_s)
        .text("TALB", u"Album"_s)
        .text("TCON", u"(17)"_s)
        .text("TYER", u"1999"_s)
        .text("TRCK", u"3/9"_s)
        .text("TBPM", u"128"_s)
        .comment({}, u"Notiz"_s)
        .rating("rating@melovane", 255)
        .userText(u"Stimmung"_s, u"ruhig"_s)
        .userText(u"FID"_s, u"654321000007"_s);
    music.write(u"sub/x.mp3"_s, writer.tag() + shortStream());
    const IntakeReport report = import();
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.found, 1);
    const auto database = suite.open();
    const auto row = database->OpenRecordset(u"select * from db_all"_s);
    EXPECT_EQ(row->value(u"FID").toText(), u"654321000007"_s);
    EXPECT_EQ(row->value(u"Titel").toText(), u"Über"_s);
    EXPECT_EQ(row->value(u"Interpret").toText(), u"Käthe"_s);
    EXPECT_EQ(row->value(u"Genre").toText(), u"Rock"_s);
    EXPECT_EQ(row->value(u"Jahr").toText(), u"1999"_s);
    EXPECT_EQ(row->value(u"Track").toText(), u"3"_s);
    EXPECT_EQ(row->value(u"BPM").toText(), u"128"_s);
    EXPECT_EQ(row->value(u"Kommentar").toText(), u"Notiz"_s);
    EXPECT_EQ(row->value(u"Note").toText(), u"5"_s);
    EXPECT_EQ(row->value(u"Stimmung").toText(), u"ruhig"_s);
    EXPECT_EQ(row->value(u"Path").toText(), music.path() + u"/sub/"_s);
    EXPECT_EQ(row->value(u"DName").toText(), u"x.mp3"_s);
    EXPECT_EQ(row->value(u"DTimeMsec").toLong(), millisecondsOf(20));
    EXPECT_EQ(row->value(u"DBit").toLong(), 128);
    EXPECT_EQ(row->value(u"DKhz").toLong(), 44100);
    EXPECT_EQ(row->value(u"DTSImport").toDateTime(), suite.clock.now());
    EXPECT_EQ(row->value(u"DEL").toLong(), 0);
    EXPECT_TRUE(row->value(u"PlayCountAll").isNull());
    EXPECT_TRUE(row->value(u"favorit").isNull());
    EXPECT_TRUE(row->value(u"MixIn").isNull());
}

TEST_F(IntakeTest, AFileThatTheLibraryHasIsNotAddedTwice)
{
    writeMany(3);
    EXPECT_EQ(import().added, 3);
    const IntakeReport second = import();
    EXPECT_EQ(second.added, 0);
    EXPECT_EQ(second.known, 3);
    EXPECT_EQ(rows(), 3);
}

TEST_F(IntakeTest, NamesThatDifferOnlyInLetterCaseAreTwoFiles)
{
    music.write(u"a.mp3"_s, simpleMp3(u"1"_s, u"A"_s));
    music.write(u"A.mp3"_s, simpleMp3(u"2"_s, u"A"_s));
    music.write(u"Sub/a.mp3"_s, simpleMp3(u"3"_s, u"A"_s));
    EXPECT_EQ(import().added, 3);
    music.write(u"sub/a.mp3"_s, simpleMp3(u"4"_s, u"A"_s));
    EXPECT_EQ(import().added, 1);
    EXPECT_EQ(import().known, 4);
}

TEST_F(IntakeTest, AMovedFileWithItsIdentifierBecomesTheNewPlaceOfItsRow)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    const QString old = music.write(u"old/a.mp3"_s, bytes);
    static_cast<void>(import());
    suite.execute(u"update db_all set PlayCountAll=7, Titel='Edited', DEL=2"_s);
    ASSERT_TRUE(QFile::remove(old));
    music.write(u"new/b.mp3"_s, bytes);
    const IntakeReport report = import();
    EXPECT_EQ(report.moved, 1);
    EXPECT_EQ(report.added, 0);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(of(u"b.mp3"_s, u"Path"_s).toText(), music.path() + u"/new/"_s);
    EXPECT_EQ(of(u"b.mp3"_s, u"DEL"_s).toLong(), 0);
    EXPECT_EQ(of(u"b.mp3"_s, u"PlayCountAll"_s).toLong(), 7);
    EXPECT_EQ(of(u"b.mp3"_s, u"Titel"_s).toText(), u"Edited"_s);
}

TEST_F(IntakeTest, AMovedFileOfARowMarkedAsDeletedStaysMarked)
{
    music.write(u"a.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s));
    suite.library.add(
        {.FID = u"654321000007"_s, .Path = u"/gone/"_s, .DName = u"x.mp3"_s, .DEL = 3});
    EXPECT_EQ(import().moved, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"DEL"_s).toLong(), -1);
}

TEST_F(IntakeTest, ACopyOfAFileThatIsStillThereIsListedAndSkipped)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    music.write(u"a.mp3"_s, bytes);
    static_cast<void>(import());
    music.write(u"copy.mp3"_s, bytes);
    const IntakeReport report = import();
    EXPECT_EQ(report.added + report.moved, 0);
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_EQ(report.duplicates[0].path, music.file(u"copy.mp3"_s));
    EXPECT_TRUE(reasonText(texts, report.duplicates[0]).contains(music.file(u"a.mp3"_s)));
    EXPECT_EQ(rows(), 1);
}

TEST_F(IntakeTest, ACopyOfAFileThatOnlyAMappedFolderHasIsADuplicateAndItsRowStays)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    const TempFolder elsewhere;
    elsewhere.write(u"Rock/a.mp3"_s, bytes);
    suite.write(u"ChangeDir.conf"_s, "C:\\Musik\\ ?? " + elsewhere.path().toUtf8() + '/');
    suite.library.add(
        {.FID = u"654321000007"_s, .Path = u"C:\\Musik\\Rock\\"_s, .DName = u"a.mp3"_s});
    music.write(u"copy.mp3"_s, bytes);
    const IntakeReport report = import();
    EXPECT_EQ(report.moved + report.added, 0);
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_EQ(report.duplicates[0].path, music.file(u"copy.mp3"_s));
    EXPECT_TRUE(reasonText(texts, report.duplicates[0]).contains(elsewhere.file(u"Rock/a.mp3"_s)))
        << reasonText(texts, report.duplicates[0]).toStdString();
    EXPECT_EQ(of(u"a.mp3"_s, u"Path"_s).toText(), u"C:\\Musik\\Rock\\"_s);
    EXPECT_EQ(rows(), 1);
}

/// Numbers its files on each disk from the same number on, as the disks of one make do.
class EqualDisks : public LinuxFiles
{
public:
    explicit EqualDisks(QString otherDisk)
        : m_otherDisk(std::move(otherDisk))
    {}

    [[nodiscard]] std::optional<FileFacts> facts(const QString& path) const override
    {
        auto found = LinuxFiles::facts(path);
        if (found && !found->isFolder) {
            found->inode = 12;
            found->device = path.startsWith(m_otherDisk) ? 2 : 1;
        }
        return found;
    }

private:
    QString m_otherDisk;
};

TEST_F(IntakeTest, AFileOfAnotherDiskWithTheSameNumberThereIsACopyAndNotTheFileOfTheRow)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    const TempFolder elsewhere;
    elsewhere.write(u"Rock/a.mp3"_s, bytes);
    suite.write(u"ChangeDir.conf"_s, "C:\\Musik\\ ?? " + elsewhere.path().toUtf8() + '/');
    suite.library.add(
        {.FID = u"654321000007"_s, .Path = u"C:\\Musik\\Rock\\"_s, .DName = u"a.mp3"_s});
    music.write(u"copy.mp3"_s, bytes);
    EqualDisks disks(elsewhere.path());
    Intake intake({*suite.engine, disks, reader, suite.clock, texts, suite.dataFolder()}, order());
    while (intake.step(std::chrono::seconds(1))) {
    }
    const IntakeReport report = intake.report();
    EXPECT_EQ(report.known + report.moved + report.added, 0);
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_EQ(report.duplicates[0].path, music.file(u"copy.mp3"_s));
}

TEST_F(IntakeTest, WithoutItsMappingTheSameRowMovesToTheCopy)
{
    suite.library.add(
        {.FID = u"654321000007"_s, .Path = u"C:\\Musik\\Rock\\"_s, .DName = u"a.mp3"_s});
    music.write(u"copy.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s));
    EXPECT_EQ(import().moved, 1);
    EXPECT_EQ(of(u"copy.mp3"_s, u"Path"_s).toText(), music.path() + u'/');
}

TEST_F(IntakeTest, TheMappedFileItselfIsKnownAndItsRowKeepsItsPlaceAndLosesItsMissingMark)
{
    mapFolder(u"C:\\Musik\\"_s, u"new"_s);
    music.write(u"new/a.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s));
    suite.library.add(
        {.FID = u"654321000007"_s, .Path = u"C:\\Musik\\"_s, .DName = u"a.mp3"_s, .DEL = 2});
    EXPECT_EQ(import().returned, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"DEL"_s).toLong(), 0);
    const IntakeReport second = import();
    EXPECT_EQ(second.known, 1);
    EXPECT_TRUE(second.duplicates.empty());
    EXPECT_EQ(of(u"a.mp3"_s, u"Path"_s).toText(), u"C:\\Musik\\"_s);
    EXPECT_EQ(rows(), 1);
}

TEST_F(IntakeTest, ARowThatDiffersInLetterCaseFromTheDiskCountsAsThere)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    music.write(u"Rock/Song.mp3"_s, bytes);
    music.write(u"copy.mp3"_s, bytes);
    const QString stored = music.path() + u"/ROCK/"_s;
    suite.library.add({.FID = u"654321000007"_s, .Path = stored, .DName = u"SONG.MP3"_s});
    const IntakeReport report = import();
    EXPECT_EQ(report.moved + report.added, 0);
    EXPECT_EQ(report.known, 1);
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_EQ(report.duplicates[0].path, music.file(u"copy.mp3"_s));
    EXPECT_TRUE(reasonText(texts, report.duplicates[0]).endsWith(music.file(u"Rock/Song.mp3"_s)));
    EXPECT_EQ(suite.value(u"select Path from db_all"_s).toText(), stored);
}

TEST_F(IntakeTest, OfTwoFilesWithOneIdentifierInOneRunTheFirstIsTaken)
{
    const QByteArray bytes = mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s);
    music.write(u"a.mp3"_s, bytes);
    music.write(u"b.mp3"_s, bytes);
    const IntakeReport report = import();
    EXPECT_EQ(report.added, 1);
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_EQ(report.duplicates[0].path, music.file(u"b.mp3"_s));
}

TEST_F(IntakeTest, ATrackOnADiscThatIsNotInsertedCountsAsThere)
{
    suite.library.add({.FID = u"654321000007"_s,
                       .Path = u"/media/cd/"_s,
                       .DName = u"x.mp3"_s,
                       .DriveTyp = 4,
                       .DriveName = u"HITS"_s});
    music.write(u"a.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"654321000007"_s));
    const IntakeReport report = import();
    ASSERT_EQ(report.duplicates.size(), 1U);
    EXPECT_TRUE(reasonText(texts, report.duplicates[0]).contains(u"HITS"_s));
}

TEST_F(IntakeTest, ALinkToAFileOfTheSameRunIsADuplicate)
{
    music.write(u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    ASSERT_TRUE(QFile::link(music.file(u"a.mp3"_s), music.file(u"link.mp3"_s)));
    const IntakeReport report = import();
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.duplicates.size(), 1U);
}

TEST_F(IntakeTest, ForeignIdentifiersInTagsAreReplaced)
{
    music.write(u"a.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"1'; delete from db_all"_s));
    music.write(u"b.mp3"_s, mp3WithFid(u"T"_s, u"A"_s, u"000000000001"_s));
    EXPECT_EQ(import().added, 2);
    for (const QString& fid : suite.column(u"select FID from db_all"_s)) {
        EXPECT_EQ(fid.size(), 12);
        EXPECT_GT(fid.toLongLong(), 500'000'000'000LL);
    }
}

TEST_F(IntakeTest, ThousandsOfFilesInOneSecondGetIdentifiersOfTheirOwn)
{
    writeMany(2500);
    EXPECT_EQ(import().added, 2500); // the clock of the test stands
    EXPECT_EQ(rows(), 2500);
    EXPECT_EQ(suite.column(u"select distinct FID from db_all"_s).size(), 2500);
}

TEST_F(IntakeTest, NewIdentifiersAvoidThoseThatExist)
{
    writeMany(1);
    static_cast<void>(import());
    const QString taken = suite.value(u"select FID from db_all"_s).toText();
    music.write(u"other.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    EXPECT_EQ(import().added, 1);
    EXPECT_NE(of(u"other.mp3"_s, u"FID"_s).toText(), taken);
}

TEST_F(IntakeTest, QuotesAndOddSignsInEveryFieldGoInUnharmed)
{
    const QString odd = u"O'Neil \"x\" [y] *?#%; -- `z`\nÄ\U0001F3B5"_s;
    Id3v2Writer writer;
    writer.text("TIT2", odd)
        .text("TPE1", odd)
        .text("TALB", odd)
        .text("TCON", odd)
        .comment({}, odd)
        .userText(u"Kategorie"_s, odd)
        .userText(u"Situation"_s, odd)
        .userText(u"Stimmung"_s, odd)
        .userText(u"Tempo"_s, odd)
        .userText(u"User1"_s, odd)
        .userText(u"User5"_s, odd);
    const QString folder = u"it's \"a\" [folder] * ? #"_s;
    music.write(folder + u"/o'neil \"b\" [c].mp3"_s, writer.tag() + shortStream());
    EXPECT_EQ(import().added, 1);
    for (const QString& column :
         {u"Titel"_s, u"Interpret"_s, u"Album"_s, u"Genre"_s, u"Kommentar"_s, u"Kategorie"_s,
          u"Situation"_s, u"Stimmung"_s, u"Tempo"_s, u"User1"_s, u"User5"_s}) {
        EXPECT_EQ(suite.value(u"select %1 from db_all"_s.arg(column)).toText(), odd)
            << column.toStdString();
    }
    EXPECT_EQ(suite.value(u"select Path from db_all"_s).toText(),
              music.path() + u'/' + folder + u'/');
    EXPECT_EQ(import().known, 1) << "the folder is found again";
}

TEST_F(IntakeTest, TextsOfTenThousandLettersAreCutToTheirColumnsAndACommentStaysWhole)
{
    const QString longText(10'000, u'ü');
    Id3v2Writer writer;
    writer.text("TIT2", longText)
        .text("TPE1", longText)
        .comment({}, longText)
        .text("TYER", longText);
    music.write(u"a.mp3"_s, writer.tag() + shortStream());
    EXPECT_EQ(import().added, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"Titel"_s).toText(), longText.left(255));
    EXPECT_EQ(of(u"a.mp3"_s, u"Kommentar"_s).toText(), longText);
}

TEST_F(IntakeTest, BrokenFilesAreListedWithAReasonAndTheRestGoesIn)
{
    int playable = 0;
    int broken = 0;
    for (const OddFile& odd : oddFiles()) {
        music.write(QString::fromLatin1(odd.name) + u".mp3"_s, odd.bytes);
        ++(odd.playable ? playable : broken);
    }
    const IntakeReport report = import();
    EXPECT_EQ(report.added, playable);
    EXPECT_EQ(report.skipped.refused.size(), static_cast<size_t>(broken));
    EXPECT_EQ(rows(), playable);
    for (const Refusal& refusal : report.skipped.refused) {
        EXPECT_TRUE(refusal.code == 10003 || refusal.code == 10004) << refusal.code;
        EXPECT_TRUE(reasonText(texts, refusal).contains(u'('))
            << reasonText(texts, refusal).toStdString();
        EXPECT_TRUE(refusal.path.startsWith(music.path()));
    }
}

TEST_F(IntakeTest, TheCountsAddUpAndRefusedFilesAreListedByPathWithDeadLinksAmongThem)
{
    writeMany(2);
    static_cast<void>(import());
    music.write(u"new.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    music.write(u"a/broken.mp3"_s, "x");
    music.write(u"z/broken.mp3"_s, "x");
    ASSERT_TRUE(QFile::link(u"/nowhere/at/all.mp3"_s, music.file(u"m-dead.mp3"_s)));
    ASSERT_TRUE(QFile::link(music.file(u"new.mp3"_s), music.file(u"twin.mp3"_s)));
    IntakeOrder what = order();
    what.folders.append(music.file(u"none"_s));
    const IntakeReport report = run(what);
    EXPECT_EQ(report.leftOver(), 0);
    QStringList refused;
    for (const Refusal& refusal : report.skipped.refused) {
        refused.append(refusal.path.mid(music.path().size() + 1));
    }
    EXPECT_EQ(refused,
              (QStringList{u"a/broken.mp3"_s, u"m-dead.mp3"_s, u"none"_s, u"z/broken.mp3"_s}));
    EXPECT_EQ(summary(texts, report),
              u"8 Dateien geprüft: 1 neu, 2 schon in der Datenbank, 1 doppelt, "
              u"4 abgelehnt."_s);
}

TEST_F(IntakeTest, AFileWithoutTagsGetsArtistAndTitleFromItsName)
{
    music.write(u"die_band - mein LIED.MP3"_s, shortStream());
    static_cast<void>(import());
    EXPECT_EQ(suite.value(u"select Interpret from db_all"_s).toText(), u"Die Band"_s);
    EXPECT_EQ(suite.value(u"select Titel from db_all"_s).toText(), u"Mein Lied"_s);
}

TEST_F(IntakeTest, ANameThatIsNotUtf8GoesInAndIsFoundAgain)
{
    const QByteArray name = QFile::encodeName(music.path()) + "/caf\xE9.mp3";
    const QString good = music.write(u"good.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    ASSERT_EQ(::rename(QFile::encodeName(good).constData(), name.constData()), 0);
    EXPECT_EQ(import().added, 1);
    EXPECT_EQ(import().known, 1);
}

TEST_F(IntakeTest, AMissingMarkGoesWhenTheFileIsThereAgain)
{
    writeMany(2);
    static_cast<void>(import());
    suite.execute(u"update db_all set DEL=2 where DName='00000.mp3'"_s);
    suite.execute(u"update db_all set DEL=3 where DName='00001.mp3'"_s);
    EXPECT_EQ(import().returned, 2);
    EXPECT_EQ(of(u"00000.mp3"_s, u"DEL"_s).toLong(), 0);
    EXPECT_EQ(of(u"00001.mp3"_s, u"DEL"_s).toLong(), -1);
}

TEST_F(IntakeTest, ALoopOfLinksEnds)
{
    writeMany(2);
    ASSERT_TRUE(QFile::link(music.path(), music.file(u"loop"_s)));
    EXPECT_EQ(import().added, 2);
}

TEST_F(IntakeTest, ACancelTakesEffectAtOnceAndKeepsWhatWasRead)
{
    writeMany(1500);
    Intake intake(parts(), order());
    while (intake.progress().done < 300 && intake.step(std::chrono::milliseconds(1))) {
    }
    const WorkTime timer;
    intake.cancel();
    EXPECT_FALSE(intake.step(std::chrono::milliseconds(0)));
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_TRUE(intake.report().cancelled);
    EXPECT_GE(intake.report().added, 300);
    EXPECT_LT(intake.report().added, 1500);
    EXPECT_EQ(rows(), intake.report().added);
    EXPECT_EQ(intake.report().leftOver(), 1500 - rows());
    const IntakeReport rest = import();
    EXPECT_EQ(rest.known, intake.report().added);
    EXPECT_EQ(rows(), 1500);
}

TEST_F(IntakeTest, WhileItRunsOthersCountTheRowsThatItHasGotTo)
{
    // More than stand in one transaction, however fast the machine is.
    writeMany(2100);
    Intake intake(parts(), order());
    int seen = 0;
    while (intake.step(std::chrono::milliseconds(0)) && seen == 0) {
        seen = rows();
    }
    EXPECT_GT(seen, 0);
    EXPECT_LT(seen, 2100);
    EXPECT_EQ(seen, intake.report().added);
    while (intake.step(std::chrono::seconds(1))) {
    }
    EXPECT_EQ(rows(), 2100);
}

TEST_F(IntakeTest, AStepEndsInTheMiddleOfALargeFolderAndTheWholeStillFindsAll)
{
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i) {
        music.write(u"%1.mp3"_s.arg(i), "x");
    }
    Intake intake(parts(), order());
    int stepsWhileListing = 0;
    int before = 0;
    while (intake.progress().listing && intake.step(std::chrono::milliseconds(0))) {
        const int found = intake.report().found;
        EXPECT_LE(found - before, FolderWalk::kNamesPerLook);
        before = found;
        ++stepsWhileListing;
    }
    EXPECT_GT(stepsWhileListing, kFiles / FolderWalk::kNamesPerLook);
    while (intake.step(std::chrono::milliseconds(1))) {
    }
    EXPECT_EQ(intake.report().found, kFiles);
    EXPECT_EQ(intake.report().skipped.refused.size(), static_cast<size_t>(kFiles));
}

TEST_F(IntakeTest, ACancelInTheMiddleOfALargeFolderLeavesItsRestAlone)
{
    writeMany(1000);
    static_cast<void>(import());
    suite.execute(u"update db_all set DEL=2"_s);
    Intake intake(parts(), order());
    while (intake.report().found == 0 && intake.step(std::chrono::milliseconds(0))) {
    }
    intake.cancel();
    EXPECT_FALSE(intake.step(std::chrono::milliseconds(0)));
    const IntakeReport& report = intake.report();
    EXPECT_LT(report.found, 1000);
    EXPECT_EQ(report.returned, report.found);
    EXPECT_EQ(suite.value(u"select count(*) from db_all where DEL=0"_s).toLong(), report.found);
    EXPECT_EQ(import().returned, 1000 - report.returned) << "the next import takes the rest";
}

TEST_F(IntakeTest, RereadingLooksAtOneRowAfterTheOther)
{
    writeMany(20);
    static_cast<void>(import());
    Intake intake(parts(), order(IntakeMode::ChangedFiles));
    EXPECT_TRUE(intake.step(std::chrono::milliseconds(0)));
    EXPECT_TRUE(intake.step(std::chrono::milliseconds(0)));
    EXPECT_EQ(intake.progress().done, 1);
    EXPECT_EQ(intake.progress().total, 20);
    while (intake.step(std::chrono::milliseconds(1))) {
    }
    EXPECT_EQ(intake.report().known, 20);
}

TEST_F(IntakeTest, ACancelBeforeTheFirstStepDoesNothing)
{
    writeMany(2);
    Intake intake(parts(), order());
    intake.cancel();
    EXPECT_FALSE(intake.step(std::chrono::seconds(1)));
    EXPECT_EQ(rows(), 0);
}

TEST_F(IntakeTest, ProgressTellsCountsAndTheFile)
{
    writeMany(100);
    Intake intake(parts(), order());
    EXPECT_TRUE(intake.progress().listing);
    while (intake.step(std::chrono::milliseconds(1))) {
    }
    EXPECT_FALSE(intake.progress().listing);
    EXPECT_EQ(intake.progress().total, 100);
    EXPECT_EQ(intake.progress().done, 100);
    EXPECT_TRUE(intake.progress().file.startsWith(music.path()));
}

TEST_F(IntakeTest, AMissingDatabaseIsSaidAndNothingIsMade)
{
    IntakeOrder what = order();
    what.database = suite.file(u"none.mdb"_s);
    const IntakeReport report = run(what);
    EXPECT_TRUE(report.failure.startsWith(u"Datenbank Fehler"_s));
    EXPECT_FALSE(QFile::exists(what.database));
}

TEST_F(IntakeTest, ADatabaseThatSomebodyHoldsEndsTheImportWithItsFilesListed)
{
    writeMany(5);
    const auto impatient = sqlite::makeEngine(suite.clock, {std::chrono::milliseconds(20)});
    const auto other = suite.open();
    IntakeReport report;
    {
        const Transaction held(*other);
        other->Execute(u"update genre set Name=Name"_s);
        Intake intake({*impatient, suite.files, reader, suite.clock, texts, suite.dataFolder()},
                      order());
        while (intake.step(std::chrono::seconds(1))) {
        }
        report = intake.report();
    }
    EXPECT_TRUE(report.failure.startsWith(u"Datenbank Fehler"_s));
    EXPECT_EQ(report.added, 0);
    EXPECT_GE(report.skipped.refused.size(), 1U);
    EXPECT_EQ(report.leftOver() + static_cast<int>(report.skipped.refused.size()), 5);
    EXPECT_EQ(report.skipped.refused.front().code, 20001);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(import().added, 5) << "the next import takes them";
}

TEST_F(IntakeTest, TreesAreMarkedForTheirRebuildOnceAndOnlyWhenRowsCame)
{
    static_cast<void>(import());
    EXPECT_EQ(suite.value(u"select count(*) from ChangeTree"_s).toLong(), 0);
    writeMany(1);
    static_cast<void>(import());
    music.write(u"more.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    static_cast<void>(import());
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree order by TreeName"_s),
              (QStringList{u"Album"_s, u"Dir"_s, u"Genre"_s, u"Interpret"_s}));
}

} // namespace
