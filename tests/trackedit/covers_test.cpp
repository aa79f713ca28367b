#include "bus/event_guard.h"
#include "platform/controls/file_chooser.h"
#include "platform/controls/warnings.h"
#include "platform/db/recordset.h"
#include "platform/media/cover_reader.h"
#include "platform/media/picture_maker.h"
#include "support/held_worker.h"
#include "trackedit/cover_change.h"
#include "trackedit/cover_files.h"
#include "trackedit/covers.h"
#include "trackedit/panel_fixture.h"
#include "trackedit/save_image.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TagsWithCover : public CoverReader
{
public:
    [[nodiscard]] QByteArray cover(const QString& path) const override
    {
        return covers.value(path);
    }

    [[nodiscard]] bool hasFrontCover(const QString& path) const override
    {
        return !cover(path).isEmpty();
    }

    [[nodiscard]] QByteArray frontCover(const QString& path) const override
    {
        return "tag of " + covers.value(path);
    }

    QHash<QString, QByteArray> covers;
};

/// "picture" becomes "jpeg of picture"; what begins with "bad" cannot be read.
class NamedPictures : public PictureMaker
{
public:
    [[nodiscard]] QByteArray jpeg(const QByteArray& picture, int width, int quality) const override
    {
        asked = {width, quality};
        return picture.isEmpty() || picture.startsWith("bad") ? QByteArray() : "jpeg of " + picture;
    }

    mutable std::pair<int, int> asked;
};

class WrittenTags : public TagWriter
{
public:
    [[nodiscard]] std::vector<TagWriting> write(std::span<const TagWork> work) override
    {
        for (const TagWork& one : work) {
            written.append(one.path + u'=' + QString::fromUtf8(one.changes.cover->bytes));
        }
        return {TagWriting{fault, {}, fault == TagWriteFault::None}};
    }

    void repair() override {}

    QStringList written;
    TagWriteFault fault = TagWriteFault::None;
};

class OneFile : public FileChooser
{
public:
    [[nodiscard]] QStringList openFiles(const FileQuestion& question) override
    {
        asked = question;
        return chosen.isEmpty() ? QStringList() : QStringList(chosen);
    }

    [[nodiscard]] QString saveFile(const FileQuestion&) override { return {}; }

    FileQuestion asked;
    QString chosen;
};

class HeardWarnings : public Warnings
{
public:
    WarningAnswer ShowWarning(const QString& text,
                              WarningType type,
                              const QString& title,
                              const QString&,
                              const QString&) override
    {
        warnings.append(u"%1 %2: %3"_s.arg(int(type)).arg(title, text));
        return WarningAnswer::Ok;
    }

    QStringList warnings;
};

class CoverTest : public test::TagPanelTest
{
protected:
    CoverTest()
    {
        suite.execute(u"update db_all set Image='alt' where fid='%1'"_s.arg(one));
        suite.write(u"neu.png"_s, "neues Bild");
        suite.files.setModified(suite.file(u"neu.png"_s),
                                QDateTime(QDate(1970, 1, 1), QTime(2, 1, 5)));
        chooser.chosen = suite.file(u"neu.png"_s);
    }

    [[nodiscard]] Covers::Track track() const
    {
        return {one, cell(u"Image"_s, one), u"/music/eins.mp3"_s};
    }

    /// What is shown for a track, behind all work.
    [[nodiscard]] QByteArray shown(const Covers::Track& wanted)
    {
        QByteArray result = "nothing told";
        covers.show(wanted, [&](const QByteArray& picture) { result = picture; });
        worker.finish();
        return result;
    }

    void choose()
    {
        change.choose(track());
        worker.finish();
    }

    TagsWithCover reader;
    NamedPictures pictures;
    WrittenTags writer;
    test::HeldWorker worker;
    OneFile chooser;
    HeardWarnings warnings;
    QStringList told;
    QStringList changed;
    Covers covers{{suite.files, suite.files, suite.dataFolder(), reader, pictures, writer, worker}};
    EventGuard guard{texts,
                     [this] { return suite.dbName(); },
                     [this](const QString& text) { told.append(text); },
                     {}};
    CoverChange change{
        {.covers = covers,
         .chooser = chooser,
         .warnings = warnings,
         .settings = *settings,
         .texts = texts,
         .guard = guard,
         .save =
             [this](const Covers::Track& of, const QString& image) {
                 SaveImage(history, *suite.open(), of.fid, image, of.image);
             },
         .name =
             [this](const QString& fid, const QString& image) {
                 suite.execute(u"update db_all set Image='%1' where fid='%2'"_s.arg(image, fid));
             },
         .changed = [this](const QString& fid) { changed.append(fid); },
         .tell = [this](const QString& text) { told.append(text); }}};
};

// ---- files

TEST_F(CoverTest, ACoverLiesInTheImageFolderWhichIsMadeAndNowhereElse)
{
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), u"bild"_s), QString());
    EXPECT_TRUE(suite.files.folderExists(suite.file(u"Image"_s)));
    const QString file = suite.write(u"Image/bild.jpg"_s, "jpeg");
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), u"bild"_s), file);
    suite.write(u"fremd.jpg"_s, "jpeg");
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), u"../fremd"_s), QString());
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), u"..\\fremd"_s), QString());
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), QString()), QString());
}

TEST_F(CoverTest, AWaitingCoverIsMovedToTheOthers)
{
    suite.files.makeFolders(suite.file(u"Image/temp"_s));
    suite.write(u"Image/temp/bild.jpg"_s, "jpeg");
    EXPECT_EQ(coverFile(suite.files, suite.dataFolder(), u"bild"_s),
              suite.file(u"Image/bild.jpg"_s));
    EXPECT_EQ(suite.read(u"Image/bild.jpg"_s), "jpeg");
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"Image/temp/bild.jpg"_s)));
}

TEST_F(CoverTest, ANameHoldsTheTrackAndTheSecondsOfThePicture)
{
    EXPECT_EQ(coverName(u"8"_s, QDateTime(QDate(1970, 1, 1), QTime(2, 0))), u"8_0"_s);
    EXPECT_EQ(coverName(u"8"_s, QDateTime(QDate(2026, 7, 1), QTime(2, 0, 1))), u"8_1782864001"_s);
}

// ---- shown

TEST_F(CoverTest, ThePictureFileIsShownElseThePictureOfTheTag)
{
    reader.covers.insert(u"/music/eins.mp3"_s, "Bild im Tag");
    EXPECT_EQ(shown(track()), "jpeg of Bild im Tag");
    suite.files.makeFolders(suite.file(u"Image"_s));
    suite.write(u"Image/alt.jpg"_s, "Bilddatei");
    EXPECT_EQ(shown(track()), "jpeg of Bilddatei");
    EXPECT_EQ(shown({two, {}, {}}), QByteArray());
}

TEST_F(CoverTest, OfSeveralQuestionsOnlyTheLastOneIsAnswered)
{
    reader.covers.insert(u"a"_s, "A");
    reader.covers.insert(u"b"_s, "B");
    QByteArrayList answers;
    covers.show({one, {}, u"a"_s}, [&](const QByteArray& picture) { answers.append(picture); });
    covers.show({two, {}, u"b"_s}, [&](const QByteArray& picture) { answers.append(picture); });
    EXPECT_TRUE(answers.isEmpty()) << "nothing is read before the window goes on";
    worker.finish();
    EXPECT_EQ(answers, QByteArrayList{"jpeg of B"});
}

TEST_F(CoverTest, ACoverInTheTagAloneIsWrittenToAPictureFile)
{
    reader.covers.insert(u"a"_s, "A");
    static_cast<void>(covers.fileOf({}));
    QStringList images;
    covers.takeOut({two, {}, u"a"_s}, 500, [&](const QString& image) { images.append(image); });
    covers.takeOut({one, u"alt"_s, u"a"_s}, 500,
                   [&](const QString& image) { images.append(image); });
    covers.takeOut({two, {}, u"none"_s}, 500, [&](const QString& image) { images.append(image); });
    worker.finish();
    EXPECT_EQ(images, (QStringList{two, u"alt"_s, QString()}));
    EXPECT_EQ(suite.read(u"Image/%1.jpg"_s.arg(two)), "jpeg of A");
}

// ---- a new one

TEST_F(CoverTest, ANewCoverIsScaledKeptStoredAndWrittenIntoTheFile)
{
    suite.files.makeFolders(suite.file(u"Image"_s));
    suite.write(u"Image/alt.jpg"_s, "alt");
    settings->WriteKeyValue(u"Global"_s, u"Import.Image.Max.Size"_s, u"320"_s);
    settings->WriteKeyValue(u"Global"_s, u"Import.Image.Quality"_s, u"60"_s);
    choose();
    const QString image = one + u"_65"_s;
    EXPECT_EQ(pictures.asked, std::pair(320, 60));
    EXPECT_EQ(suite.read(u"tempcover.jpg"_s), "jpeg of neues Bild");
    EXPECT_EQ(suite.read(u"Image/%1.jpg"_s.arg(image)), "jpeg of neues Bild");
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"Image/alt.jpg"_s)));
    EXPECT_EQ(cell(u"Image"_s, one), image);
    EXPECT_EQ(entered(), QStringList{one});
    EXPECT_EQ(writer.written, QStringList{u"/music/eins.mp3=jpeg of neues Bild"_s});
    EXPECT_EQ(changed, QStringList{one});
    EXPECT_TRUE(warnings.warnings.isEmpty());
    EXPECT_EQ(settings->GetKeyValue(u"Global"_s, u"NewImage.Such.DIR"_s, QString()) + u'/',
              suite.dataFolder() + u'/');
}

TEST_F(CoverTest, TheDialogBeginsInTheLastFolderAndCancelChangesNothing)
{
    settings->WriteKeyValue(u"Global"_s, u"NewImage.Such.DIR"_s, u"/bilder"_s);
    chooser.chosen.clear();
    choose();
    EXPECT_EQ(chooser.asked.start, u"/bilder"_s);
    EXPECT_EQ(chooser.asked.kind, u"Bilddateien"_s);
    EXPECT_TRUE(chooser.asked.patterns.contains(u"*.png"_s));
    EXPECT_EQ(cell(u"Image"_s, one), u"alt"_s);
    EXPECT_TRUE(writer.written.isEmpty());
}

TEST_F(CoverTest, TracksThatSharedTheFormerCoverFollow)
{
    const QString three = suite.library.add({});
    suite.execute(u"update db_all set Image='alt.jpg' where fid='%1'"_s.arg(two));
    suite.execute(u"update db_all set Image='alt' where fid='%1'"_s.arg(three));
    const QString other = suite.library.add({});
    choose();
    const QString image = one + u"_65"_s;
    EXPECT_EQ(cell(u"Image"_s, two), image);
    EXPECT_EQ(cell(u"Image"_s, three), image);
    EXPECT_EQ(cell(u"Image"_s, other), QString());
    EXPECT_EQ(entered(), QStringList{one});
}

TEST_F(CoverTest, ATrackWithoutACoverDragsNoOtherOnesWithIt)
{
    suite.execute(u"update db_all set Image='' where fid='%1'"_s.arg(one));
    suite.execute(u"update db_all set Image='' where fid='%1'"_s.arg(two));
    choose();
    EXPECT_EQ(cell(u"Image"_s, one), one + u"_65"_s);
    EXPECT_EQ(cell(u"Image"_s, two), QString());
}

TEST_F(CoverTest, APictureThatCannotBeReadChangesNothingAndIsTold)
{
    suite.write(u"neu.png"_s, "bad");
    choose();
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(cell(u"Image"_s, one), u"alt"_s);
    EXPECT_TRUE(writer.written.isEmpty());
    chooser.chosen = suite.file(u"gone.png"_s);
    choose();
    EXPECT_EQ(told.size(), 2);
}

TEST_F(CoverTest, AFileThatDoesNotTakeTheCoverIsTold)
{
    writer.fault = TagWriteFault::ReadOnly;
    choose();
    EXPECT_EQ(warnings.warnings,
              QStringList{u"16 Fehler beim Speichern des ID3v2-Tag: Beim Speichern ist ein Fehler "
                          "aufgetreten:\n/music/eins.mp3"_s});
    EXPECT_EQ(cell(u"Image"_s, one), one + u"_65"_s);
}

TEST_F(CoverTest, ALibraryThatTakesNothingKeepsTheFormerCover)
{
    suite.files.makeFolders(suite.file(u"Image"_s));
    suite.write(u"Image/alt.jpg"_s, "alt");
    suite.engine->GiveAway(suite.dbName());
    change.choose({one, u"alt"_s, u"/music/eins.mp3"_s});
    worker.finish();
    suite.engine->TakeBack(suite.dbName());
    EXPECT_EQ(cell(u"Image"_s, one), u"alt"_s);
    EXPECT_TRUE(suite.files.fileExists(suite.file(u"Image/alt.jpg"_s)));
    EXPECT_TRUE(writer.written.isEmpty());
    EXPECT_EQ(told.size(), 1);
}

TEST_F(CoverTest, ANewCoverCanBeTakenBackAndTheFormerPictureIsThereAgain)
{
    suite.files.makeFolders(suite.file(u"Image"_s));
    suite.write(u"Image/alt.jpg"_s, "alt");
    suite.execute(u"update db_all set Image='alt' where fid='%1'"_s.arg(two));
    choose();
    ASSERT_NE(cell(u"Image"_s, two), u"alt"_s);
    history.undo();
    EXPECT_EQ(cell(u"Image"_s, one), u"alt"_s);
    EXPECT_EQ(cell(u"Image"_s, two), u"alt"_s);
    EXPECT_EQ(shown(track()), "jpeg of alt");
}

TEST_F(CoverTest, ACoverThatStoodInTheTagAloneComesBackToo)
{
    suite.execute(u"update db_all set Image='' where fid='%1'"_s.arg(one));
    reader.covers.insert(u"/music/eins.mp3"_s, "Bild im Tag");
    choose();
    reader.covers.insert(u"/music/eins.mp3"_s, "neues Bild");
    EXPECT_EQ(shown(track()), "jpeg of jpeg of neues Bild");
    history.undo();
    EXPECT_EQ(cell(u"Image"_s, one), one);
    EXPECT_EQ(shown(track()), "jpeg of jpeg of Bild im Tag");
}

TEST_F(CoverTest, TheSamePictureChosenTwiceStays)
{
    choose();
    choose();
    EXPECT_EQ(suite.read(u"Image/%1_65.jpg"_s.arg(one)), "jpeg of neues Bild");
}

} // namespace
} // namespace melovane
