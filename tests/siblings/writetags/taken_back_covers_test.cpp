#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/controls/file_chooser.h"
#include "platform/controls/warnings.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/system/worker.h"
#include "playlists/list_history.h"
#include "siblings/writetags/write_tags.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "trackedit/cover_change.h"
#include "trackedit/save_image.h"

#include <QFile>

#include <sys/stat.h>

namespace melovane::test {
namespace {

using namespace demomusic;
using namespace linux_media;
using namespace Qt::Literals::StringLiterals;

class ImmediateWorker : public Worker
{
public:
    void run(std::function<void()> work, std::function<void()> done) override
    {
        work();
        done();
    }
};

/// A picture is what it is.
class SamePictures : public PictureMaker
{
public:
    [[nodiscard]] QByteArray jpeg(const QByteArray& picture, int, int) const override
    {
        return picture;
    }
};

class NamedFile : public FileChooser
{
public:
    [[nodiscard]] QStringList openFiles(const FileQuestion&) override { return {name}; }

    [[nodiscard]] QString saveFile(const FileQuestion&) override { return {}; }

    QString name;
};

class CountedWarnings : public Warnings
{
public:
    WarningAnswer ShowWarning(const QString&,
                              WarningType,
                              const QString&,
                              const QString&,
                              const QString&) override
    {
        ++shown;
        return WarningAnswer::Ok;
    }

    int shown = 0;
};

/// The console: everything in it is made anew after a restart, but for what lies on the disc.
struct Console
{
    explicit Console(Suite& data, GlobalSettings& values)
        : suite(data)
        , settings(values)
    {}

    Suite& suite;
    GlobalSettings& settings;
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.folders.files()};
    ListHistory history{*suite.engine, suite.folders.files(), suite.clock, settings, {}};
    Id3CoverReader reader;
    SamePictures pictures;
    LinuxTagWriter writer{suite.file(u"tagjournal"_s)};
    ImmediateWorker worker;
    NamedFile chooser;
    CountedWarnings warnings;
    Covers covers{{suite.files, suite.files, suite.dataFolder(), reader, pictures, writer, worker}};
    EventGuard guard{texts, [this] { return suite.dbName(); }, [](const QString&) {}, {}};
    CoverChange change{
        {.covers = covers,
         .chooser = chooser,
         .warnings = warnings,
         .settings = settings,
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
         .changed = [](const QString&) {},
         .tell = [](const QString&) {}}};
};

class TakenBackCovers : public SuiteFixture
{
protected:
    TakenBackCovers() { restart(); }

    void restart() { console = std::make_unique<Console>(suite, *settings); }

    /// A track whose file begins with that tag.
    QString add(const QByteArray& tag, const QString& name = u"lied.mp3"_s)
    {
        music.write(name, tag + shortStream());
        NewTrack track;
        track.DName = name;
        track.Path = music.path() + u'/';
        return suite.library.add(track);
    }

    [[nodiscard]] QString image(const QString& fid) const
    {
        return suite.value(u"select Image from db_all where fid='%1'"_s.arg(fid)).toText();
    }

    /// Chooses a picture of these bytes for a track.
    void choose(const QString& fid, const QByteArray& picture, int second)
    {
        console->chooser.name = suite.write(u"bild%1.png"_s.arg(second), picture);
        suite.files.setModified(console->chooser.name,
                                QDateTime(QDate(1970, 1, 1), QTime(2, 0, second)));
        console->change.choose({fid, image(fid), music.file(u"lied.mp3"_s)});
    }

    /// What `Task.WriteTags` does.
    WriteTagsReport writeTags()
    {
        const LinuxTagReader reader;
        WriteTags work({.engine = *suite.engine,
                        .files = suite.files,
                        .reader = reader,
                        .covers = console->reader,
                        .writer = console->writer,
                        .clock = suite.clock,
                        .dataFolder = suite.dataFolder(),
                        .isLent = [] { return false; }},
                       {suite.dbName(), 2});
        while (work.step(64)) {
        }
        return work.report();
    }

    [[nodiscard]] QByteArray inTag() const
    {
        return Id3CoverReader().cover(music.file(u"lied.mp3"_s));
    }

    [[nodiscard]] QByteArray frontCover() const
    {
        return Id3CoverReader().frontCover(music.file(u"lied.mp3"_s));
    }

    TempFolder music;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    std::unique_ptr<Console> console;
};

/// A frame of another program: a description in wide letters, which is empty.
QByteArray foreignTag()
{
    const QByteArray content = '\1' + QByteArray("image/jpg\0\3\xFF\xFE\0\0", 15) + "fremd";
    return Id3v2Writer(3).text("TIT2", u"Titel"_s).frame("APIC", content).tag(3000);
}

TEST_F(TakenBackCovers, TheFirstCoverOfATrackLeavesItsFileAndEntersItAgain)
{
    const QString fid = add(Id3v2Writer(3).text("TIT2", u"Titel"_s).tag(3000));
    choose(fid, "neu", 1);
    ASSERT_EQ(inTag(), "neu");
    writeTags();
    EXPECT_EQ(inTag(), "neu");

    ASSERT_EQ(console->history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(image(fid), QString());
    EXPECT_EQ(writeTags().written, 1);
    EXPECT_EQ(inTag(), QByteArray());
    EXPECT_EQ(suite.column(u"select fid from db_edit"_s), QStringList());

    ASSERT_EQ(console->history.redo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inTag(), "neu");
}

TEST_F(TakenBackCovers, APictureOfAnotherProgramComesBackByteForByteAfterARestart)
{
    const QString fid = add(foreignTag());
    const QByteArray before = frontCover();
    choose(fid, "neu", 1);
    ASSERT_NE(frontCover(), before);
    writeTags();

    restart();
    ASSERT_EQ(console->history.undo().outcome, ListHistory::Outcome::Done);
    restart();
    EXPECT_EQ(writeTags().written, 1);
    EXPECT_EQ(frontCover(), before);

    restart();
    ASSERT_EQ(console->history.redo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inTag(), "neu");
    ASSERT_EQ(console->history.undo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(frontCover(), before);
}

TEST_F(TakenBackCovers, SeveralStepsGoBackAndForwardAtOnce)
{
    const QString fid = add(foreignTag());
    const QByteArray before = frontCover();
    choose(fid, "erstes", 1);
    choose(fid, "zweites", 2);
    choose(fid, "drittes", 3);
    console->history.undo();
    console->history.undo();
    writeTags();
    EXPECT_EQ(inTag(), "erstes");
    console->history.undo();
    writeTags();
    EXPECT_EQ(frontCover(), before);
    console->history.redo();
    console->history.redo();
    console->history.redo();
    writeTags();
    EXPECT_EQ(inTag(), "drittes");
}

TEST_F(TakenBackCovers, ACoverThatDidNotReachItsFileIsWrittenWithTheTags)
{
    const QString fid = add(foreignTag());
    const QByteArray before = frontCover();
    ASSERT_EQ(::chmod(QFile::encodeName(music.file(u"lied.mp3"_s)).constData(), 0444), 0);
    choose(fid, "neu", 1);
    EXPECT_EQ(console->warnings.shown, 1);
    EXPECT_EQ(writeTags().failures.size(), 1U);
    EXPECT_EQ(suite.column(u"select fid from db_edit"_s), QStringList{fid});
    ASSERT_EQ(::chmod(QFile::encodeName(music.file(u"lied.mp3"_s)).constData(), 0644), 0);
    EXPECT_EQ(writeTags().written, 1);
    EXPECT_EQ(inTag(), "neu");
    console->history.undo();
    writeTags();
    EXPECT_EQ(frontCover(), before);
}

TEST_F(TakenBackCovers, AFileThatWasAwayWhenItsCoverWasChosenGetsItWhenItIsThereAgain)
{
    const QString fid = add(foreignTag());
    const QByteArray before = frontCover();
    const QByteArray whole = music.read(u"lied.mp3"_s);
    ASSERT_TRUE(QFile::remove(music.file(u"lied.mp3"_s)));
    choose(fid, "neu", 1);
    EXPECT_EQ(writeTags().failures.size(), 1U);
    music.write(u"lied.mp3"_s, whole);
    writeTags();
    EXPECT_EQ(inTag(), "neu");
    console->history.undo();
    writeTags();
    EXPECT_EQ(frontCover(), before);
}

TEST_F(TakenBackCovers, OnlyTheFileThatGotTheCoverIsWrittenBack)
{
    const QString fid = add(foreignTag());
    const QString other = add(foreignTag(), u"anderes.mp3"_s);
    suite.execute(u"update db_all set Image='alt'"_s);
    suite.files.makeFolders(suite.file(u"Image"_s));
    suite.write(u"Image/alt.jpg"_s, "alt");
    const QByteArray untouched = music.read(u"anderes.mp3"_s);
    choose(fid, "neu", 1);
    ASSERT_EQ(image(other), image(fid));
    suite.execute(u"delete from db_edit"_s);
    console->history.undo();
    ASSERT_EQ(image(other), u"alt"_s);
    writeTags();
    EXPECT_EQ(inTag(), "fremd");
    EXPECT_EQ(Id3CoverReader().cover(music.file(u"anderes.mp3"_s)), "fremd");
    EXPECT_TRUE(music.read(u"anderes.mp3"_s).endsWith(shortStream()));
    EXPECT_EQ(untouched.size(), music.read(u"anderes.mp3"_s).size());
}

TEST_F(TakenBackCovers, TwoPicturesOfTheSameSecondGetTwoNames)
{
    const QString fid = add(foreignTag());
    choose(fid, "erstes", 1);
    choose(fid, "zweites", 1);
    EXPECT_EQ(inTag(), "zweites");
    console->history.undo();
    writeTags();
    EXPECT_EQ(inTag(), "erstes");
}

TEST_F(TakenBackCovers, WhatWasKeptAndIsRubbishChangesNoFile)
{
    const QString fid = add(foreignTag());
    choose(fid, "neu", 1);
    writeTags();
    for (const QString& name : suite.files.names(suite.file(u"Image/tags"_s))) {
        if (name.endsWith(u".id3"_s)) {
            suite.write(u"Image/tags/"_s + name, "rubbish");
        }
    }
    const QByteArray before = music.read(u"lied.mp3"_s);
    console->history.undo();
    EXPECT_TRUE(writeTags().isComplete());
    EXPECT_EQ(music.read(u"lied.mp3"_s), before);
}

} // namespace
} // namespace melovane::test
