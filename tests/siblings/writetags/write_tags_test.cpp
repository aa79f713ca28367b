#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_reader.h"
#include "siblings/writetags/write_tags.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "trackedit/unwritten_tags.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace melovane::test {
namespace {

using namespace demomusic;
using namespace linux_media;
using namespace Qt::Literals::StringLiterals;

/// The real writer, watched, and interrupted on demand.
class WatchedWriter : public TagWriter
{
public:
    explicit WatchedWriter(const QString& folder)
        : m_writer(folder)
    {}

    std::vector<TagWriting> write(std::span<const TagWork> work) override
    {
        for (const TagWork& each : work) {
            written.push_back(each);
        }
        const auto results = m_writer.write(work);
        if (behind) {
            behind();
        }
        return results;
    }

    void repair() override { m_writer.repair(); }

    std::vector<TagWork> written;
    std::function<void()> behind; ///< when the files are written

private:
    LinuxTagWriter m_writer;
};

class WriteTagsTest : public SuiteFixture
{
protected:
    /// A file in the music folder and its row, in step with each other.
    QString add(const QByteArray& content, NewTrack track = {})
    {
        track.DName = u"%1.mp3"_s.arg(++m_files);
        track.Path = music.path() + u'/';
        const QString path = music.write(track.DName, content);
        const QString fid = suite.library.add(track);
        const auto database = suite.open();
        const auto row = database->OpenRecordset(u"select * from db_all where fid='%1'"_s.arg(fid));
        row->Edit();
        row->setValue(u"DLen", int(content.size()));
        row->setValue(u"DTSDatei", QFileInfo(path).lastModified());
        row->Update();
        suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(fid));
        return fid;
    }

    [[nodiscard]] QString pathOf(const QString& fid) const
    {
        return music.file(
            suite.value(u"select DName from db_all where fid='%1'"_s.arg(fid)).toText());
    }

    [[nodiscard]] TrackTags tagsOf(const QString& fid) const
    {
        return m_reader.read(pathOf(fid)).tags;
    }

    [[nodiscard]] QStringList waiting() const
    {
        return suite.column(u"select fid from db_edit order by fid"_s);
    }

    WriteTags make()
    {
        return WriteTags({.engine = *suite.engine,
                          .files = suite.files,
                          .reader = m_reader,
                          .covers = m_coverReader,
                          .writer = writer,
                          .clock = suite.clock,
                          .dataFolder = suite.dataFolder(),
                          .isLent = [this] { return lent; }},
                         {suite.dbName(), 2});
    }

    WriteTagsReport run(int files = 64)
    {
        WriteTags work = make();
        while (work.step(files)) {
        }
        return work.report();
    }

    TempFolder music;
    LinuxTagReader m_reader;
    Id3CoverReader m_coverReader;
    WatchedWriter writer{suite.file(u"tagjournal"_s)};
    bool lent = false;
    int m_files = 0;
};

QByteArray tagged(int padding = 3000)
{
    return Id3v2Writer(3)
               .text("TIT2", u"Titel"_s)
               .text("TPE1", u"Interpret"_s)
               .text("TCON", u"(17)"_s)
               .text("TRCK", u"3/12"_s)
               .frame("PRIV", "foreign")
               .tag(padding) +
           shortStream();
}

TEST_F(WriteTagsTest, AChangedTrackIsWrittenAndLeavesTheTable)
{
    const QString fid =
        add(tagged(), {.Titel = u"Neuer Titel"_s, .Genre = u"Rock"_s, .Note = u"4"_s});
    const WriteTagsReport report = run();
    EXPECT_EQ(report.written, 1);
    EXPECT_TRUE(report.isComplete());
    EXPECT_EQ(waiting(), QStringList());
    const TrackTags tags = tagsOf(fid);
    EXPECT_EQ(tags.id3v2.Titel, u"Neuer Titel"_s);
    EXPECT_EQ(tags.Note, u"4"_s);
    EXPECT_EQ(tags.FID, fid);
    EXPECT_TRUE(QFile(pathOf(fid)).exists());
}

TEST_F(WriteTagsTest, OnlyWhatTheRowSaysOtherwiseIsHandedToTheWriter)
{
    NewTrack track{.Titel = u"Neu"_s, .Genre = u"Rock"_s};
    const QString fid = add(tagged(), track);
    suite.execute(u"update db_all set track='3' where fid='%1'"_s.arg(fid));
    run();
    ASSERT_EQ(writer.written.size(), 1U);
    const TagChanges& changes = writer.written[0].changes;
    EXPECT_EQ(changes.Titel, u"Neu"_s);
    EXPECT_EQ(changes.FID, fid);
    EXPECT_EQ(changes.Interpret, std::nullopt);
    EXPECT_EQ(changes.Genre, std::nullopt) << "(17) is Rock";
    EXPECT_EQ(changes.Track, std::nullopt) << "3/12 is 3";
    EXPECT_EQ(changes.cover, std::nullopt);
}

TEST_F(WriteTagsTest, ATrackThatWasNotChangedLeavesTheTableAndItsFileAlone)
{
    const QString fid = add(tagged(), {.Genre = u"Rock"_s});
    suite.execute(u"update db_all set track='3' where fid='%1'"_s.arg(fid));
    suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(fid));
    const QByteArray before = music.read(u"1.mp3"_s);
    EXPECT_EQ(run().written, 0);
    EXPECT_EQ(writer.written.size(), 0U);
    EXPECT_EQ(waiting(), QStringList());
    EXPECT_EQ(music.read(u"1.mp3"_s), before);
}

TEST_F(WriteTagsTest, AFileWithoutATagGetsAllThatTheRowKnows)
{
    const QByteArray old = id3v1Tag({"Titel", "Interpret", "Album", "1999", "", 3, 17});
    const QString fid =
        add(shortStream() + old, {.Album = u"Album"_s, .Genre = u"Pop"_s, .Jahr = u"1999"_s});
    EXPECT_EQ(run().written, 1);
    const TrackTags tags = tagsOf(fid);
    EXPECT_EQ(tags.id3v2.Titel, u"Titel"_s);
    EXPECT_EQ(tags.id3v2.Album, u"Album"_s);
    EXPECT_EQ(tags.id3v2.Genre, u"Pop"_s);
    EXPECT_EQ(tags.id3v1.Genre, u"13"_s) << "its number in the old tag";
}

TEST_F(WriteTagsTest, AnEmptiedFieldIsTakenOutOfTheFile)
{
    const QString fid = add(Id3v2Writer(3)
                                    .text("TIT2", u"Titel"_s)
                                    .text("TPE1", u"Interpret"_s)
                                    .text("TALB", u"Album"_s)
                                    .tag() +
                                shortStream(),
                            {});
    EXPECT_EQ(run().written, 1);
    EXPECT_EQ(tagsOf(fid).id3v2.Album, QString());
}

TEST_F(WriteTagsTest, TheRowKnowsSizeAndDateOfTheWrittenFile)
{
    const QString fid = add(tagged(0), {.Titel = QString(200, u'n')});
    run();
    const QFileInfo file(pathOf(fid));
    const QString where = u" from db_all where fid='%1'"_s.arg(fid);
    EXPECT_EQ(suite.value(u"select DLen"_s + where).toLong(), file.size());
    EXPECT_EQ(suite.value(u"select DTSDatei"_s + where).toDateTime().toSecsSinceEpoch(),
              file.lastModified().toSecsSinceEpoch());
}

TEST_F(WriteTagsTest, AFileThatAnImportHasYetToReadKeepsCountingAsChanged)
{
    const QString fid = add(tagged(0), {.Titel = QString(200, u'n')});
    suite.execute(u"update db_all set DLen=7 where fid='%1'"_s.arg(fid));
    EXPECT_EQ(run().written, 1);
    EXPECT_EQ(suite.value(u"select DLen from db_all where fid='%1'"_s.arg(fid)).toLong(), 7);
}

TEST_F(WriteTagsTest, AFileThatFailsKeepsItsRowAndSaysWhy)
{
    const QString gone = add(tagged(), {.Titel = u"A"_s});
    const QString sealed = add(tagged(), {.Titel = u"B"_s});
    const QString silent = add("no sound at all", {.Titel = u"C"_s});
    const QString lying =
        add(Id3v2Writer(3).tagWithSize(500'000) + shortStream(), {.Titel = u"D"_s});
    const QString good = add(tagged(), {.Titel = u"E"_s});
    ASSERT_TRUE(QFile::remove(pathOf(gone)));
    ASSERT_TRUE(QFile::setPermissions(pathOf(sealed), QFile::ReadOwner));

    const WriteTagsReport report = run();

    EXPECT_EQ(report.written, 1);
    QStringList kept{gone, sealed, silent, lying};
    kept.sort();
    EXPECT_EQ(waiting(), kept);
    EXPECT_EQ(tagsOf(good).id3v2.Titel, u"E"_s);
    std::vector<TagWriteFault> faults;
    for (const UnwrittenFile& file : report.failures) {
        faults.push_back(file.fault);
    }
    EXPECT_THAT(faults,
                testing::UnorderedElementsAre(TagWriteFault::NotFound, TagWriteFault::ReadOnly,
                                              TagWriteFault::NoAudio, TagWriteFault::TagSize));
    EXPECT_FALSE(report.isComplete());
}

TEST_F(WriteTagsTest, WhatFailedIsKeptForTheConsoleUntilItIsWritten)
{
    const QString fid = add(tagged(), {.Titel = u"Neu"_s});
    const QString other = add(tagged(), {.Titel = u"Neu"_s});
    ASSERT_EQ(::chmod(QFile::encodeName(pathOf(fid)).constData(), 0444), 0);
    run();
    const auto kept = unwrittenOf(suite.files, suite.dataFolder(), fid);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->fault, TagWriteFault::ReadOnly);
    EXPECT_EQ(kept->detail, u"Permission denied"_s);
    EXPECT_FALSE(unwrittenOf(suite.files, suite.dataFolder(), other));
    EXPECT_FALSE(unwrittenOf(suite.files, suite.dataFolder(), QString()));

    ASSERT_EQ(::chmod(QFile::encodeName(pathOf(fid)).constData(), 0644), 0);
    run();
    EXPECT_FALSE(unwrittenOf(suite.files, suite.dataFolder(), fid));
    suite.write(u"unwritten.txt"_s, QByteArray("\xFF\0\t\n\t\t\n", 7) + fid.toUtf8() + "\tnew\t\n");
    EXPECT_EQ(unwrittenOf(suite.files, suite.dataFolder(), fid)->fault, TagWriteFault::Failed);
}

TEST_F(WriteTagsTest, ATrackThatIsChangedWhileItIsWrittenIsWrittenAgain)
{
    const QString fid = add(tagged(), {.Titel = u"First"_s});
    writer.behind = [this, fid] {
        suite.execute(u"update db_all set titel='Second' where fid='%1'"_s.arg(fid));
        suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(fid));
        writer.behind = {};
    };
    EXPECT_EQ(run().written, 2);
    EXPECT_EQ(tagsOf(fid).id3v2.Titel, u"Second"_s);
    EXPECT_EQ(waiting(), QStringList());
}

TEST_F(WriteTagsTest, ATrackThatNeverRestsIsLeftForTheNextRun)
{
    const QString fid = add(tagged(), {.Titel = u"First"_s});
    int changes = 0;
    writer.behind = [&] {
        suite.execute(u"update db_all set titel='%1' where fid='%2'"_s.arg(++changes).arg(fid));
    };
    run();
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(waiting(), QStringList{fid});
}

TEST_F(WriteTagsTest, WhatIsAddedWhileItWorksIsWrittenToo)
{
    add(tagged(), {.Titel = u"First"_s});
    writer.behind = [this] {
        writer.behind = {};
        add(tagged(), {.Titel = u"Second"_s});
    };
    EXPECT_EQ(run().written, 2);
    EXPECT_EQ(waiting(), QStringList());
}

TEST_F(WriteTagsTest, ATrackThatIsNoLongerInTheLibraryLeavesTheTable)
{
    suite.execute(u"insert into db_edit (fid) values ('it''s gone')"_s);
    EXPECT_TRUE(run().isComplete());
    EXPECT_EQ(waiting(), QStringList());
}

TEST_F(WriteTagsTest, ACancelKeepsWhatWasWrittenAndTheRestWaits)
{
    for (int i = 0; i < 5; ++i) {
        add(tagged(), {.Titel = u"Neu"_s});
    }
    WriteTags work = make();
    EXPECT_TRUE(work.step(2));
    EXPECT_EQ(work.done(), 2);
    EXPECT_EQ(work.total(), 5);
    work.cancel();
    EXPECT_FALSE(work.step(2));
    EXPECT_EQ(work.report().written, 2);
    EXPECT_EQ(waiting().size(), 3);
}

TEST_F(WriteTagsTest, ALentLibraryIsLetGoOfAtOnce)
{
    for (int i = 0; i < 3; ++i) {
        add(tagged(), {.Titel = u"Neu"_s});
    }
    WriteTags work = make();
    EXPECT_TRUE(work.step(1));
    lent = true;
    EXPECT_FALSE(work.step(1));
    EXPECT_TRUE(work.report().isLent);
    EXPECT_EQ(waiting().size(), 2);
}

TEST_F(WriteTagsTest, ADatabaseThatFailsEndsItAndIsTold)
{
    suite.engine->Release(suite.dbName());
    QFile::remove(suite.dbName());
    const WriteTagsReport report = run();
    EXPECT_NE(report.dbError, 0);
    EXPECT_FALSE(report.isComplete());
}

} // namespace
} // namespace melovane::test
