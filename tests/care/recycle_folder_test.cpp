#include "care/care_fixture.h"
#include "care/recycle_folder.h"
#include "care/removed_track.h"
#include "platform/linux/system_names.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Files whose volume is a folder of the test, with a home folder beside it.
class DiskOfTest : public LinuxFiles
{
public:
    explicit DiskOfTest(QString root)
        : m_root(std::move(root))
    {}

    [[nodiscard]] VolumeFacts volume(const QString&) const override
    {
        return {VolumeKind::Fixed, u"MUSIC"_s, m_root};
    }

    void rename(const QString& source, const QString& target) override
    {
        if (isOtherVolume) {
            throw IoError(target, u"Invalid cross-device link"_s, EXDEV);
        }
        LinuxFiles::rename(source, target);
    }

    bool makeFolder(const QString& path) override
    {
        return path != unwritable && LinuxFiles::makeFolder(path);
    }

    bool isOtherVolume = false;
    QString unwritable;

private:
    QString m_root;
};

class RecycleFolderTest : public CareTest
{
protected:
    RecycleFolderTest()
        : files(disk.path())
    {}

    [[nodiscard]] RecycleFolder folder()
    {
        return RecycleFolder(
            {.files = files,
             .clock = suite.clock,
             .dataFolder = suite.dataFolder(),
             .homeFolder = home.path(),
             .systemName = [](const QString& path) { return linuxnames::encode(path); }});
    }

    [[nodiscard]] RemovedTrack removed(const QString& fid) const
    {
        return tracksToRemove(*suite.open(), u"fid='%1'"_s.arg(fid), Dependencies::Go).at(0);
    }

    bool take(const QString& fid, RecycleFolder::Reason reason = RecycleFolder::Reason::Deleted)
    {
        return folder().take(removed(fid), reason, [](qint64) { return true; });
    }

    [[nodiscard]] QString recycler(const QString& name = {}) const
    {
        return disk.file(u"MelovaneRecycler/"_s + name);
    }

    DiskOfTest files;
    TempFolder home;
};

} // namespace

TEST_F(RecycleFolderTest, AFileKeepsItsFoldersBelowTheRootOfItsVolume)
{
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/New/"_s);
    EXPECT_TRUE(take(fid));
    EXPECT_FALSE(QFile::exists(music(u"Rock/New/a.mp3"_s)));
    EXPECT_EQ(disk.read(recycler(u"Rock/New/a.mp3"_s)), fid.toUtf8());
    EXPECT_EQ(disk.read(recycler(u"ReMoveFiles.bat"_s)),
              "Move /Y \"" + recycler(u"Rock/New/a.mp3"_s).toUtf8() + "\" \"" +
                  music(u"Rock/New/"_s).toUtf8() + "\"\n");
}

TEST_F(RecycleFolderTest, ADamagedFileGoesIntoTheFolderOfItsOwn)
{
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_TRUE(take(fid, RecycleFolder::Reason::Damaged));
    EXPECT_EQ(disk.read(recycler(u"MP3ERROR/Rock/a.mp3"_s)), fid.toUtf8());
    EXPECT_TRUE(QFile::exists(recycler(u"ReMoveFiles.bat"_s)));
}

TEST_F(RecycleFolderTest, TheShellScriptReallyPutsFilesWithHostileNamesBack)
{
    const QStringList names{u"it's.mp3"_s, u"two\nlines.mp3"_s, u"\"q\" $(id).mp3"_s,
                            u"damaged\uEFE4.mp3"_s, u"ä%1.mp3"_s};
    for (const QString& name : names) {
        const QString fid = addTrack({.DName = name}, u"it's \"x\"\n/"_s);
        files.writeNamed(music(u"it's \"x\"\n/"_s + name), "by the bytes of its name");
        EXPECT_TRUE(take(fid)) << name.toStdString();
    }
    const QByteArray before = disk.read(recycler(u"ReMoveFiles.bat"_s));
    EXPECT_EQ(before.count("Move /Y "), names.size());
    EXPECT_EQ(before.count('\n'), names.size()) << "a line for each file";
    EXPECT_EQ(QProcess::execute(u"/bin/sh"_s, {recycler(u"ReMoveFiles.sh"_s)}), 0);
    for (const QString& name : names) {
        EXPECT_TRUE(files.fileExists(music(u"it's \"x\"\n/"_s + name))) << name.toStdString();
    }
}

TEST_F(RecycleFolderTest, AFileInTheRecyclerIsNeverReplaced)
{
    disk.write(recycler(u"Rock/a.mp3"_s), "older");
    QFile::link(disk.file(u"nowhere"_s), recycler(u"Rock/a (2).mp3"_s));
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_TRUE(take(fid));
    EXPECT_EQ(disk.read(recycler(u"Rock/a.mp3"_s)), "older");
    EXPECT_EQ(disk.read(recycler(u"Rock/a (3).mp3"_s)), fid.toUtf8());
    EXPECT_FALSE(QFile::exists(disk.file(u"nowhere"_s)));
    EXPECT_EQ(QProcess::execute(u"/bin/sh"_s, {recycler(u"ReMoveFiles.sh"_s)}), 0);
    EXPECT_EQ(disk.read(music(u"Rock/a.mp3"_s)), fid.toUtf8()) << "under the name that it had";
}

TEST_F(RecycleFolderTest, NoFileLeavesThroughALinkInTheRecycler)
{
    QDir().mkpath(recycler());
    QDir().mkpath(disk.file(u"elsewhere"_s));
    QFile::link(disk.file(u"elsewhere"_s), recycler(u"Rock"_s));
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_FALSE(take(fid));
    EXPECT_TRUE(QFile::exists(music(u"Rock/a.mp3"_s)));
    EXPECT_TRUE(QDir(disk.file(u"elsewhere"_s)).isEmpty());
}

TEST_F(RecycleFolderTest, WhereTheUserMayNotWriteTheHomeFolderIsTaken)
{
    files.unwritable = disk.file(u"MelovaneRecycler"_s);
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_TRUE(take(fid));
    EXPECT_EQ(home.read(home.path() + u"/MelovaneRecycler"_s + music(u"Rock/a.mp3"_s)),
              fid.toUtf8());
}

TEST_F(RecycleFolderTest, AcrossVolumesTheFileIsCopiedComparedAndThenRemoved)
{
    files.isOtherVolume = true;
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_TRUE(take(fid));
    EXPECT_FALSE(QFile::exists(music(u"Rock/a.mp3"_s)));
    EXPECT_EQ(disk.read(recycler(u"Rock/a.mp3"_s)), fid.toUtf8());
}

TEST_F(RecycleFolderTest, ACopyThatIsGivenUpLeavesTheFileWhereItIs)
{
    files.isOtherVolume = true;
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    EXPECT_FALSE(
        folder().take(removed(fid), RecycleFolder::Reason::Deleted, [](qint64) { return false; }));
    EXPECT_EQ(disk.read(music(u"Rock/a.mp3"_s)), fid.toUtf8());
    EXPECT_FALSE(QFile::exists(recycler(u"Rock/a.mp3"_s)));
}

TEST_F(RecycleFolderTest, AFileWhoseRecordWasWrittenTwiceIsThereOnceAndForgottenWhole)
{
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    files.isOtherVolume = true;
    // The record is there, and the file has not followed.
    ASSERT_FALSE(
        folder().take(removed(fid), RecycleFolder::Reason::Deleted, [](qint64) { return false; }));
    ASSERT_TRUE(take(fid));
    const auto all = folder().all();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(all[0].isHere);
    folder().putBack(all[0], {});
    folder().forget(all);
    EXPECT_TRUE(folder().all().empty());
    EXPECT_FALSE(QFile::exists(recycler(u"ReMoveFiles.jsonl"_s)));
}

TEST_F(RecycleFolderTest, AFileOfADiscAndAMissingOneStay)
{
    EXPECT_FALSE(take(addTrack({.DName = u"a.mp3"_s, .DriveTyp = 4})));
    EXPECT_TRUE(QFile::exists(music(u"a.mp3"_s)));
    EXPECT_FALSE(take(suite.library.add({.Path = music(), .DName = u"gone.mp3"_s})));
    EXPECT_FALSE(QFile::exists(recycler()));
}

TEST_F(RecycleFolderTest, AFileThatChangeDirLeadsToIsTakenFromWhereItIs)
{
    disk.write(music(u"new/a.mp3"_s), "x");
    suite.write(u"ChangeDir.conf"_s, "C:\\Music ?? " + music(u"new"_s).toUtf8());
    EXPECT_TRUE(take(suite.library.add({.Path = u"C:\\Music\\"_s, .DName = u"a.mp3"_s})));
    EXPECT_EQ(disk.read(recycler(u"new/a.mp3"_s)), "x");
}

TEST_F(RecycleFolderTest, AFileThatIsPutBackIsForgottenByRecordAndScripts)
{
    const QString first = addTrack({.DName = u"a\nb.mp3"_s}, u"Rock/"_s);
    const QString second = addTrack({.DName = u"b.mp3"_s}, u"Rock/"_s);
    ASSERT_TRUE(take(first));
    ASSERT_TRUE(take(second));
    RecycleFolder bin = folder();
    const auto all = bin.all();
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0].fid, first);
    EXPECT_EQ(all[0].title, u"Interpret - Titel"_s);
    EXPECT_EQ(all[0].moment, suite.clock.now());
    bin.putBack(all[0], {});
    bin.forget({all[0]});
    EXPECT_EQ(disk.read(music(u"Rock/a\nb.mp3"_s)), first.toUtf8());
    ASSERT_EQ(bin.all().size(), 1);
    EXPECT_EQ(bin.all()[0].fid, second);
    EXPECT_FALSE(disk.read(recycler(u"ReMoveFiles.sh"_s)).contains("a\nb.mp3"));
    EXPECT_EQ(disk.read(recycler(u"ReMoveFiles.bat"_s)).count("Move /Y"), 1);
    EXPECT_EQ(QProcess::execute(u"/bin/sh"_s, {recycler(u"ReMoveFiles.sh"_s)}), 0);
    EXPECT_EQ(disk.read(music(u"Rock/b.mp3"_s)), second.toUtf8());
    bin.forget(bin.all());
    EXPECT_EQ(files.names(recycler()), QStringList{u"Rock"_s}) << "nothing is left to be put back";
}

TEST_F(RecycleFolderTest, LinesOfOtherProgramsStayInTheScript)
{
    disk.write(recycler(u"ReMoveFiles.bat"_s), "Move /Y \"C:\\r\\x.mp3\" \"C:\\\"\n");
    ASSERT_TRUE(take(addTrack({})));
    RecycleFolder bin = folder();
    bin.forget(bin.all());
    EXPECT_EQ(disk.read(recycler(u"ReMoveFiles.bat"_s)), "Move /Y \"C:\\r\\x.mp3\" \"C:\\\"\n");
}

TEST_F(RecycleFolderTest, WhatIsInTheWayOfAFileStays)
{
    const QString fid = addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s);
    ASSERT_TRUE(take(fid));
    disk.write(music(u"Rock/a.mp3"_s), "newer");
    RecycleFolder bin = folder();
    EXPECT_THROW(bin.putBack(bin.all().at(0), {}), IoError);
    EXPECT_EQ(disk.read(music(u"Rock/a.mp3"_s)), "newer");
    EXPECT_EQ(disk.read(recycler(u"Rock/a.mp3"_s)), fid.toUtf8());
}

TEST_F(RecycleFolderTest, ARecordThatNamesOtherFilesOfTheUserReachesNone)
{
    ASSERT_TRUE(take(addTrack({.DName = u"a.mp3"_s}, u"Rock/"_s)));
    home.write(u"secret"_s, "his own");
    disk.write(recycler(u"planted"_s), "foreign");
    const auto line = [this](const QString& from, const QString& to) {
        QFile record(recycler(u"ReMoveFiles.jsonl"_s));
        EXPECT_TRUE(record.open(QIODevice::Append));
        record.write(u"{\"from\":\"%1\",\"to\":\"%2\"}\n"_s.arg(from, to).toUtf8());
    };
    line(disk.file(u"taken"_s), home.file(u"secret"_s));
    line(disk.file(u"taken"_s), recycler(u"../../secret"_s));
    line(home.file(u"autostart"_s), recycler(u"planted"_s));
    line(disk.file(u"../autostart"_s), recycler(u"planted"_s));
    const std::vector<RecycledFile> offered = folder().all();
    ASSERT_EQ(offered.size(), size_t{1});
    EXPECT_EQ(offered[0].from, music(u"Rock/a.mp3"_s));
}

TEST_F(RecycleFolderTest, NoLinkLeadsAFileThatIsPutBackToAnotherPlace)
{
    QDir().mkpath(recycler());
    ASSERT_TRUE(QFile::link(home.path(), recycler(u"out"_s)));
    ASSERT_TRUE(QFile::link(home.path(), disk.file(u"out"_s)));
    home.write(u"secret"_s, "his own");
    disk.write(recycler(u"planted"_s), "foreign");
    RecycleFolder bin = folder();
    EXPECT_THROW(bin.putBack({.folder = recycler(),
                              .from = disk.file(u"taken"_s),
                              .to = recycler(u"out/secret"_s),
                              .isHere = true},
                             {}),
                 IoError);
    EXPECT_THROW(bin.putBack({.folder = recycler(),
                              .from = disk.file(u"out/autostart"_s),
                              .to = recycler(u"planted"_s),
                              .isHere = true},
                             {}),
                 IoError);
    EXPECT_EQ(home.read(u"secret"_s), "his own");
    EXPECT_FALSE(QFile::exists(home.file(u"autostart"_s)));
}

TEST_F(RecycleFolderTest, TheRowsOfARemovedTrackComeBack)
{
    const QString fid = addTrack({.Titel = u"It's\ta\n\"song\""_s, .DEL = -1, .PlayCountAll = 3});
    const QString other = addTrack({});
    const int list = suite.library.addPlaylist({.tracks = {other, fid, fid}});
    suite.library.addPlayback(fid, suite.clock.now());
    const QStringList track = suite.column(u"select titel from db_all where fid='%1'"_s.arg(fid));
    const QString rows = removed(fid).rows;
    suite.execute(u"delete from db_all where fid='%1'"_s.arg(fid));
    suite.execute(u"delete from pl_all where fid='%1'"_s.arg(fid));
    suite.execute(u"delete from pl_stat where fid='%1'"_s.arg(fid));
    suite.execute(u"update pl_name set anzahl=1 where nid=%1"_s.arg(list));
    const auto database = suite.open();
    const BroughtBack back = bringBack(*database, rows);
    EXPECT_TRUE(back.hasTrack);
    EXPECT_EQ(back.entries, 2);
    EXPECT_EQ(back.plays, 1);
    EXPECT_EQ(suite.column(u"select titel from db_all where fid='%1'"_s.arg(fid)), track);
    EXPECT_EQ(suite.column(u"select fid from pl_all where pnid=%1 order by sid"_s.arg(list)),
              (QStringList{other, fid, fid}));
    EXPECT_EQ(suite.value(u"select anzahl from pl_name where nid=%1"_s.arg(list)).toLong(), 3);
    EXPECT_EQ(del(fid), 0) << "it is wanted again";
    const BroughtBack again = bringBack(*database, rows);
    EXPECT_FALSE(again.hasTrack);
    EXPECT_EQ(again.entries + again.plays, 0);
}

TEST_F(RecycleFolderTest, AnEntryWhoseNumberWasGivenAwayGetsANewOneAndThatOfAGoneListStaysAway)
{
    const QString fid = addTrack({});
    const QString other = addTrack({});
    const int list = suite.library.addPlaylist({.tracks = {fid}});
    const int gone = suite.library.addPlaylist({.tracks = {fid}});
    const QString rows = removed(fid).rows;
    suite.execute(u"delete from db_all where fid='%1'"_s.arg(fid));
    suite.execute(u"update pl_all set fid='%1' where pnid=%2"_s.arg(other).arg(list));
    suite.execute(u"delete from pl_all where pnid=%1"_s.arg(gone));
    suite.execute(u"delete from pl_name where nid=%1"_s.arg(gone));
    const auto database = suite.open();
    EXPECT_EQ(bringBack(*database, rows).entries, 1);
    EXPECT_EQ(suite.column(u"select fid from pl_all where pnid=%1 order by plid"_s.arg(list)),
              (QStringList{other, fid}));
    EXPECT_EQ(suite.value(u"select count(*) from pl_all where pnid=%1"_s.arg(gone)).toLong(), 0);
}

} // namespace melovane::test
