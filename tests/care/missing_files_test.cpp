#include "care/care_fixture.h"
#include "care/library_scan.h"
#include "care/missing_files.h"
#include "platform/db/db_error.h"

#include <QFile>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class MissingFilesTest : public CareTest
{
protected:
    void scan() { MissingFiles(missingParts()).Scan(); }

    void scanMissing()
    {
        dialogs.expectMessage(u"Einige Dateien konnten nicht gefunden werden"_s);
        scan();
    }

    void remove(const QString& fid) { QFile::remove(music(fid + u".mp3"_s)); }

    void putBack(const QString& fid) const { disk.write(music(fid + u".mp3"_s), "x"); }

    [[nodiscard]] QByteArray list() const { return suite.read(u"FileNotExist.txt"_s); }

    [[nodiscard]] QByteArray line(const QString& fid) const
    {
        return music(fid).toUtf8() + ".mp3\n";
    }
};

} // namespace

TEST_F(MissingFilesTest, AMissingFileIsMarkedAndListedAndTheTreesAreRebuilt)
{
    const QString there = addTrack({});
    const QString gone = addTrack({});
    remove(gone);
    scanMissing();
    EXPECT_EQ(del(there), 0);
    EXPECT_EQ(del(gone), 2);
    EXPECT_EQ(list(), line(gone));
    EXPECT_EQ(treesRebuilt, 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(MissingFilesTest, TheMessageHasItsTextWordByWord)
{
    remove(addTrack({}));
    dialogs.expectMessage(
        u"Einige Dateien konnten nicht gefunden werden, genauere Informationen zu diesen "
        "Dateien finden Sie in "_s +
        suite.dataFolder() +
        u"/FileNotExist.txt\nDie Einträge in der Datenbank wurden als nicht vorhanden "
        "markiert. Wenn die Dateien wieder zur Verfügung stehen, können Sie diese Aktion "
        "wiederholen um die Datenbankeinträge wieder zu aktiviere."_s);
    scan();
    EXPECT_TRUE(dialogs.messages.last().startsWith(u"Melovane: "_s));
}

TEST_F(MissingFilesTest, RowsMarkedBeforeWhoseFileIsStillGoneAreListedAgainWithoutAnUpdate)
{
    const QString two = addTrack({.DEL = 2});
    const QString three = addTrack({.DEL = 3});
    remove(two);
    remove(three);
    scanMissing();
    EXPECT_EQ(list(), line(two) + line(three));
    EXPECT_EQ(changes, 0);
    scanMissing();
    EXPECT_EQ(list(), line(two) + line(three));
    EXPECT_EQ(del(two), 2);
    EXPECT_EQ(del(three), 3);
}

TEST_F(MissingFilesTest, ADeletedTrackThatVanishesAndComesBackIsDeletedAgain)
{
    const QString fid = addTrack({.DEL = -1});
    remove(fid);
    scanMissing();
    EXPECT_EQ(del(fid), 3);
    putBack(fid);
    scan();
    EXPECT_EQ(del(fid), -1);
    EXPECT_EQ(treesRebuilt, 2);
}

TEST_F(MissingFilesTest, ATrackThatIsBackIsNoLongerMissingAndTheTreesAreRebuilt)
{
    const QString fid = addTrack({.DEL = 2});
    scan();
    EXPECT_EQ(del(fid), 0);
    EXPECT_EQ(treesRebuilt, 1);
    EXPECT_EQ(list(), "");
    EXPECT_EQ(told, QStringList{u"Alle Dateien sind vorhanden."_s});
}

TEST_F(MissingFilesTest, WhatTheUserMarksWhileADiskIsLookedAtStays)
{
    const QString gone = addTrack({});
    const QString away = addTrack({});
    remove(gone);
    remove(away);
    MissingFilesParts parts = missingParts();
    parts.beside.filesIn = [&](const QString& folder) {
        suite.execute(u"update db_all set del=-1 where fid='%1'"_s.arg(gone));
        suite.execute(u"delete from db_all where fid='%1'"_s.arg(away));
        return filesIn(folder);
    };
    dialogs.expectMessage(u"Einige Dateien konnten nicht gefunden werden"_s);
    MissingFiles(std::move(parts)).Scan();
    EXPECT_EQ(del(gone), 3);
    putBack(gone);
    scan();
    EXPECT_EQ(del(gone), -1);
}

TEST_F(MissingFilesTest, OtherMarksAreLeftAloneAndTheirMissingFilesListed)
{
    const QString there = addTrack({.DEL = 7});
    const QString gone = addTrack({.DEL = 7});
    remove(gone);
    scanMissing();
    EXPECT_EQ(del(there), 7);
    EXPECT_EQ(del(gone), 7);
    EXPECT_EQ(list(), line(gone));
}

TEST_F(MissingFilesTest, TracksOfDiscsAreLeftOut)
{
    const QString disc = addTrack({.DriveTyp = 4});
    remove(disc);
    scan();
    EXPECT_EQ(del(disc), 0);
    EXPECT_EQ(list(), "");
}

TEST_F(MissingFilesTest, AListedLineBeginsWithTheNameOfTheVolumeAndANullNameIsNothing)
{
    const QString named = suite.library.add({.Path = u"/gone/"_s, .DriveName = u"STICK"_s});
    const QString unnamed = suite.library.add({.Path = u"/gone/"_s});
    scanMissing();
    EXPECT_EQ(list(),
              "STICK/gone/" + named.toUtf8() + ".mp3\n/gone/" + unnamed.toUtf8() + ".mp3\n");
}

TEST_F(MissingFilesTest, FilesOnADriveThatIsNotHereAreTold)
{
    suite.library.add({.Path = u"/media/u/STICK/"_s, .DriveName = u"STICK"_s});
    suite.library.add({.Path = u"D:\\Neu\\"_s, .DriveName = u"NEUES"_s});
    remove(addTrack({}));
    scanMissing();
    EXPECT_TRUE(dialogs.messages.last().endsWith(
        u"aktiviere.\n\n2 Dateien davon liegen auf einem Laufwerk, das nicht angeschlossen ist: "
        "NEUES, STICK."_s))
        << dialogs.messages.last().toStdString();
}

TEST_F(MissingFilesTest, AFileThatChangeDirLeadsToIsThereAndItsRowKeepsItsFolder)
{
    disk.write(music(u"new/a.mp3"_s), "x");
    suite.write(u"ChangeDir.conf"_s, "C:\\Music ?? " + music(u"new"_s).toUtf8());
    const QString fid =
        suite.library.add({.Path = u"C:\\Music\\"_s, .DName = u"A.mp3"_s, .DEL = 2});
    scan();
    EXPECT_EQ(del(fid), 0);
    EXPECT_EQ(suite.value(u"select path from db_all"_s).toText(), u"C:\\Music\\"_s);
}

TEST_F(MissingFilesTest, NamesWithQuotesAndLineFeedsAreFoundAndMissed)
{
    const QString there = addTrack({.DName = u"it's \"a\"\nsong.mp3"_s});
    const QString gone = suite.library.add({.Path = music(), .DName = u"it's gone.mp3"_s});
    scanMissing();
    EXPECT_EQ(del(there), 0);
    EXPECT_EQ(del(gone), 2);
}

TEST_F(MissingFilesTest, MoreRowsThanOneTransactionTakesAreAllWritten)
{
    auto database = suite.open();
    Transaction rows(*database);
    for (int i = 0; i < 2500; ++i) {
        database->Execute(u"insert into db_all (FID, Path, DName, DEL, DriveTyp) values "
                          "('%1', '/gone/', '%1.mp3', 0, 2)"_s.arg(826816166000 + i));
    }
    rows.commit();
    scanMissing();
    EXPECT_EQ(suite.value(u"select count(*) from db_all where del=2"_s).toLong(), 2500);
    EXPECT_EQ(list().count('\n'), 2500);
}

TEST_F(MissingFilesTest, WhatWasWrittenStaysWhenTheUserEndsItAndTheListIsTheOldOne)
{
    suite.write(u"FileNotExist.txt"_s, "old\n");
    auto database = suite.open();
    for (int i = 0; i < 2500; ++i) {
        database->Execute(u"insert into db_all (FID, Path, DName, DEL, DriveTyp) values "
                          "('%1', '/gone/', '%1.mp3', 0, 2)"_s.arg(826816166000 + i));
    }
    endsAt = 3; // before, behind the look, behind the second thousand
    scan();
    EXPECT_EQ(suite.value(u"select count(*) from db_all where del=2"_s).toLong(), 2000);
    EXPECT_EQ(list(), "old\n");
    EXPECT_EQ(treesRebuilt, 1);
    EXPECT_EQ(told, QStringList{u"Die Suche nach fehlenden Dateien wurde abgebrochen."_s});
    endsAt = 0;
    scanMissing();
    EXPECT_EQ(suite.value(u"select count(*) from db_all where del=2"_s).toLong(), 2500);
}

TEST_F(MissingFilesTest, ADiskThatDoesNotAnswerIsLeftAloneWhenTheUserWantsAnEnd)
{
    remove(addTrack({}));
    wait.isDead = true;
    endsAt = 4;
    scan();
    EXPECT_EQ(progress.size(), 4);
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(treesRebuilt, 0);
}

TEST_F(MissingFilesTest, ALibraryThatCannotBeReadIsToldAndNothingIsWritten)
{
    suite.write(u"FileNotExist.txt"_s, "old\n");
    suite.engine->Release(suite.dbName());
    suite.write(u"melovane.mdb"_s, "no library");
    EXPECT_THROW(scan(), DbError);
    EXPECT_EQ(list(), "old\n");
}

TEST_F(MissingFilesTest, AListThatCannotBeWrittenIsToldBehindTheMessage)
{
    const QString fid = addTrack({});
    remove(fid);
    QDir().mkpath(suite.file(u"FileNotExist.txt"_s));
    dialogs.expectMessage(u"Einige Dateien"_s);
    EXPECT_THROW(scan(), IoError);
    EXPECT_EQ(del(fid), 2);
    EXPECT_EQ(treesRebuilt, 1);
}

} // namespace melovane::test
