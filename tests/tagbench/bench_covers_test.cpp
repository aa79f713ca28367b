#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/system/worker.h"
#include "playlists/list_history.h"
#include "siblings/writetags/write_tags.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "tagbench/bench_session.h"
#include "trackedit/covers.h"

namespace melovane {
namespace {

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

/// A picture is what it is; "bad" cannot be read.
class SamePictures : public PictureMaker
{
public:
    [[nodiscard]] QByteArray jpeg(const QByteArray& picture, int, int) const override
    {
        return picture.startsWith("bad") ? QByteArray() : picture;
    }
};

/// The tag tool over real files, with what `Task.WriteTags` does behind it.
class CoversOnTheBench : public test::SuiteFixture
{
protected:
    CoversOnTheBench()
    {
        MelovaneConfiguration::fill(texts);
        settings->SetDbName(suite.dbName());
    }

    QString add(const QString& name)
    {
        music.write(name, test::simpleMp3(name, u"Wer"_s));
        const QString fid = suite.library.add(
            {.Titel = name, .Interpret = u"Wer"_s, .Path = music.path() + u'/', .DName = name});
        suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
        return fid;
    }

    void open(BenchMode mode = BenchMode::Edit)
    {
        session = std::make_unique<BenchSession>(
            BenchSession::Parts{*suite.engine, history, *settings, suite.files, *reader,
                                suite.clock, texts, covers, pictures, worker, suite.dataFolder()},
            mode);
        session->load();
    }

    /// Chooses a picture, whose file is as old as that.
    bool choose(const QByteArray& picture, const std::vector<int>& tracks, int second = 0)
    {
        bool isRead = false;
        session->covers().choose(picture, QDateTime(QDate(2026, 1, 1), QTime(2, 0, second)), {},
                                 tracks, [&](bool is) { isRead = is; });
        return isRead;
    }

    BenchOutcome apply()
    {
        return session->apply(false, [](int, int) { return true; });
    }

    [[nodiscard]] BenchCovers::Shown shown(const std::vector<int>& tracks)
    {
        BenchCovers::Shown result;
        session->covers().show(tracks, [&](const BenchCovers::Shown& is) { result = is; });
        return result;
    }

    /// What `Task.WriteTags` does.
    void writeTags()
    {
        WriteTags work({.engine = *suite.engine,
                        .files = suite.files,
                        .reader = *reader,
                        .covers = covers,
                        .writer = writer,
                        .clock = suite.clock,
                        .dataFolder = suite.dataFolder(),
                        .isLent = [] { return false; }},
                       {suite.dbName(), 2});
        while (work.step(64)) {
        }
        EXPECT_TRUE(work.report().isComplete());
    }

    [[nodiscard]] QByteArray inTag(const QString& name) const
    {
        return covers.cover(music.file(name));
    }

    [[nodiscard]] QString image(const QString& fid)
    {
        return suite.value(u"select Image from db_all where FID='%1'"_s.arg(fid)).toText();
    }

    [[nodiscard]] QStringList pictureFiles()
    {
        QStringList result;
        for (const QString& name : suite.files.names(suite.file(u"Image"_s))) {
            if (name.endsWith(u".jpg"_s)) {
                result.append(name);
            }
        }
        return result;
    }

    /// A cover that another program has written into the file.
    void writeForeign(const QString& name, const QByteArray& picture)
    {
        TagWork work{music.file(name), {}};
        work.changes.cover = CoverPicture{picture, u"image/jpeg"_s};
        EXPECT_EQ(writer.write({&work, 1})[0].fault, TagWriteFault::None);
    }

    test::TempFolder music;
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    std::unique_ptr<TagReader> reader = linux_media::makeTagReader();
    ListHistory history{*suite.engine, suite.files, suite.clock, *settings, {}};
    linux_media::Id3CoverReader covers;
    linux_media::LinuxTagWriter writer{suite.file(u"tagjournal"_s)};
    SamePictures pictures;
    ImmediateWorker worker;
    std::unique_ptr<BenchSession> session;
};

TEST_F(CoversOnTheBench, OnePictureForManyIsOneFileAndReachesAllOfThem)
{
    const QString one = add(u"a.mp3"_s);
    const QString two = add(u"b.mp3"_s);
    const QString other = add(u"c.mp3"_s);
    open();
    ASSERT_TRUE(choose("prisma", {0, 1}));
    EXPECT_TRUE(pictureFiles().isEmpty()) << "nothing happens before it is applied";
    EXPECT_EQ(shown({0, 1}).pictures, 1);
    EXPECT_EQ(shown({0, 1, 2}).without, 1);
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_EQ(pictureFiles().size(), 1);
    EXPECT_FALSE(image(one).isEmpty());
    EXPECT_EQ(image(one), image(two));
    EXPECT_EQ(image(other), QString());
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "prisma");
    EXPECT_EQ(inTag(u"b.mp3"_s), "prisma");
    EXPECT_EQ(inTag(u"c.mp3"_s), QByteArray());
    EXPECT_TRUE(suite.column(u"select FID from db_edit"_s).isEmpty());
}

TEST_F(CoversOnTheBench, CoversAndFieldsAreOneStepThatIsTakenBackInTheFilesToo)
{
    const QString one = add(u"a.mp3"_s);
    const QString two = add(u"b.mp3"_s);
    writeForeign(u"b.mp3"_s, "foreign");
    open();
    choose("prisma", {0, 1});
    session->tracks().change({{0, TrackField::Album, u"Prisma"_s}});
    EXPECT_TRUE(apply().problems.empty());
    writeTags();
    EXPECT_EQ(inTag(u"b.mp3"_s), "prisma");
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    EXPECT_EQ(suite.value(u"select Album from db_all where FID='%1'"_s.arg(one)).toText(),
              QString());
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), QByteArray());
    EXPECT_EQ(inTag(u"b.mp3"_s), "foreign");
    EXPECT_EQ(history.redo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "prisma");
    EXPECT_EQ(inTag(u"b.mp3"_s), "prisma");
    EXPECT_EQ(image(one), image(two));
}

TEST_F(CoversOnTheBench, ACoverIsTakenOffAndComesBack)
{
    const QString one = add(u"a.mp3"_s);
    writeForeign(u"a.mp3"_s, "foreign");
    open();
    EXPECT_EQ(shown({0}).pictures, 1);
    EXPECT_EQ(shown({0}).picture, "foreign");
    session->covers().takeOff({0});
    EXPECT_EQ(session->tracks().changedCells(), 1);
    EXPECT_EQ(shown({0}).pictures, 0);
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_EQ(image(one), QString());
    EXPECT_EQ(shown({0}).pictures, 0) << "also before the file follows";
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), QByteArray());
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "foreign");
}

TEST_F(CoversOnTheBench, ACoverThatWasTakenOffCanBeChosenAnew)
{
    const QString one = add(u"a.mp3"_s);
    writeForeign(u"a.mp3"_s, "foreign");
    open();
    session->covers().takeOff({0});
    EXPECT_TRUE(apply().problems.empty());
    writeTags();
    choose("neu", {0});
    EXPECT_TRUE(apply().problems.empty());
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "neu");
}

/// A track whose file has covers of other programs: front covers with a description, an artist.
class CoversOfOthers : public CoversOnTheBench
{
protected:
    CoversOfOthers()
    {
        const QByteArray kind = '\0' + QByteArray("image/jpeg\0", 11);
        const QByteArray tag = demomusic::Id3v2Writer(3)
                                   .text("TIT2", u"Titel"_s)
                                   .frame("APIC", kind + QByteArray("\3Cover\0front", 12))
                                   .frame("APIC", kind + artist)
                                   .tag(3000);
        fid = add(u"a.mp3"_s);
        music.write(u"a.mp3"_s, tag + test::simpleMp3(u"a.mp3"_s, u"Wer"_s));
        open();
    }

    /// What the tag panel of the console shows of the track.
    [[nodiscard]] QByteArray inPanel()
    {
        QByteArray picture = "never told";
        panel.show({fid, image(fid), music.file(u"a.mp3"_s)},
                   [&](const QByteArray& is) { picture = is; });
        return picture;
    }

    /// What the tree of information asks for when it shows the track.
    [[nodiscard]] QString takenOut()
    {
        QString name = u"never told"_s;
        panel.takeOut({fid, image(fid), music.file(u"a.mp3"_s)}, 500,
                      [&](const QString& is) { name = is; });
        return name;
    }

    void takeOff()
    {
        session->covers().takeOff({0});
        EXPECT_TRUE(apply().problems.empty());
    }

    const QByteArray artist{"\x8\0artist", 8};
    QString fid;
    Covers panel{{suite.files, suite.files, suite.dataFolder(), covers, pictures, writer, worker}};
};

TEST_F(CoversOfOthers, AreNotShownWhenTheCoverWasTakenOffAndThoseOfOtherKindsStayInTheFile)
{
    EXPECT_EQ(inPanel(), "front");
    takeOff();
    EXPECT_EQ(inPanel(), QByteArray()) << "also before the file follows";
    EXPECT_EQ(takenOut(), QString()) << "which would give the row its cover again";
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "artist");
    EXPECT_EQ(inPanel(), QByteArray());
    EXPECT_EQ(takenOut(), QString());
    open();
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid));
    session->load();
    EXPECT_EQ(shown({0}).without, 1);
}

TEST_F(CoversOfOthers, ComeBackWhenTheTakingOffIsTakenBack)
{
    const QByteArray before = covers.frontCover(music.file(u"a.mp3"_s));
    takeOff();
    writeTags();
    EXPECT_FALSE(covers.hasFrontCover(music.file(u"a.mp3"_s)));
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(covers.frontCover(music.file(u"a.mp3"_s)), before);
    EXPECT_EQ(inPanel(), "front");
    EXPECT_EQ(history.redo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inPanel(), QByteArray());
}

TEST_F(CoversOfOthers, AreShownWhenAnotherProgramPutsThemThereLater)
{
    takeOff();
    writeTags();
    writeForeign(u"a.mp3"_s, "later");
    EXPECT_EQ(inPanel(), "later");
}

TEST_F(CoversOfOthers, StayOffWhenACoverThatWasChosenLaterIsTakenBack)
{
    takeOff();
    writeTags();
    choose("neu", {0});
    EXPECT_TRUE(apply().problems.empty());
    writeTags();
    EXPECT_EQ(inPanel(), "neu");
    EXPECT_EQ(history.undo().outcome, ListHistory::Outcome::Done);
    writeTags();
    EXPECT_EQ(inPanel(), QByteArray());
    EXPECT_EQ(inTag(u"a.mp3"_s), "artist");
}

TEST_F(CoversOnTheBench, WhatIsCancelledLeavesNoPictureAndNoOrder)
{
    const QString one = add(u"a.mp3"_s);
    writeForeign(u"a.mp3"_s, "foreign");
    open();
    session->covers().takeOff({0});
    EXPECT_TRUE(session->apply(false, [](int done, int) { return done == 0; }).isCancelled);
    session->tracks().undo();
    choose("neu", {0});
    EXPECT_TRUE(session->apply(false, [](int done, int) { return done == 0; }).isCancelled);
    session->tracks().undo();
    EXPECT_EQ(image(one), QString());
    // The next change of the track says nothing of its cover.
    session->tracks().change({{0, TrackField::Album, u"Prisma"_s}});
    EXPECT_EQ(apply().written.size(), 1U);
    writeTags();
    EXPECT_EQ(inTag(u"a.mp3"_s), "foreign");
    EXPECT_FALSE(pictureFiles().contains(u"neu"_s));
}

TEST_F(CoversOnTheBench, APictureThatOthersStillHaveStays)
{
    add(u"a.mp3"_s);
    const QString two = add(u"b.mp3"_s);
    open();
    choose("alt", {0, 1});
    EXPECT_TRUE(apply().problems.empty());
    choose("neu", {0}, 1);
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_EQ(pictureFiles().size(), 2);
    EXPECT_TRUE(pictureFiles().contains(image(two) + u".jpg"_s));
    choose("neu", {1}, 1);
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_EQ(pictureFiles().size(), 1) << "the former one waits aside";
}

TEST_F(CoversOnTheBench, WhatIsNoPictureChangesNothing)
{
    add(u"a.mp3"_s);
    open();
    EXPECT_FALSE(choose("bad bytes", {0}));
    EXPECT_FALSE(choose({}, {0}));
    EXPECT_EQ(session->tracks().changedCells(), 0);
}

TEST_F(CoversOnTheBench, DifferentCoversAreCountedInFilesAndRows)
{
    for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s, u"d.mp3"_s}) {
        add(name);
    }
    writeForeign(u"a.mp3"_s, "gleich");
    writeForeign(u"b.mp3"_s, "gleich");
    writeForeign(u"c.mp3"_s, "anders");
    open();
    const BenchCovers::Shown all = shown({0, 1, 2, 3});
    EXPECT_EQ(all.pictures, 2);
    EXPECT_EQ(all.without, 1);
    EXPECT_EQ(all.picture, "gleich");
    EXPECT_EQ(shown({0, 1}).pictures, 1);
}

TEST_F(CoversOnTheBench, ANewFileIsImportedWithItsCover)
{
    music.write(u"neu.mp3"_s, test::simpleMp3(u"Neu"_s, u"Wer"_s));
    open(BenchMode::Import);
    session->addFiles({music.path()}, [](int, int) { return true; });
    ASSERT_EQ(session->tracks().count(), 1);
    choose("prisma", {0});
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_FALSE(suite.value(u"select Image from db_all"_s).toText().isEmpty());
    writeTags();
    EXPECT_EQ(inTag(u"neu.mp3"_s), "prisma");
}

TEST_F(CoversOnTheBench, APictureThatCannotBeWrittenIsToldAndAllElseIsWritten)
{
    const QString one = add(u"a.mp3"_s);
    open();
    choose("prisma", {0});
    session->tracks().change({{0, TrackField::Album, u"Prisma"_s}});
    const QString place = u"Image/"_s + session->tracks().text(0, kBenchCover) + u".jpg"_s;
    suite.write(place + u"/x"_s, "a folder of that name");
    const BenchOutcome outcome = apply();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].fault, BenchFault::NoCover);
    EXPECT_EQ(suite.value(u"select Album from db_all where FID='%1'"_s.arg(one)).toText(),
              u"Prisma"_s);
    EXPECT_EQ(image(one), QString());
    // The picture alone still waits.
    EXPECT_EQ(session->tracks().changedCells(), 1);
    suite.files.remove(suite.file(place + u"/x"_s));
    suite.files.removeFolder(suite.file(place));
    EXPECT_TRUE(apply().problems.empty());
    EXPECT_FALSE(image(one).isEmpty());
}

} // namespace
} // namespace melovane
