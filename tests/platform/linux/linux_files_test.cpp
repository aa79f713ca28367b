#include "platform/linux/file_writing.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/system_names.h"
#include "support/as_nobody.h"
#include "support/temp_folder.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class RealFiles : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString& name) const { return folder.file(name); }

    [[nodiscard]] QByteArray system(const QString& name) const { return path(name).toUtf8(); }

    [[nodiscard]] mode_t modeOf(const QString& name) const
    {
        struct stat facts = {};
        EXPECT_EQ(::stat(system(name).constData(), &facts), 0);
        return facts.st_mode & 07777U;
    }

    [[nodiscard]] bool isLink(const QString& name) const
    {
        struct stat facts = {};
        EXPECT_EQ(::lstat(system(name).constData(), &facts), 0);
        return S_ISLNK(facts.st_mode);
    }

    [[nodiscard]] QStringList everything() const { return files.names(folder.path()); }

    test::TempFolder folder;
    LinuxFiles files;
};

// ---- questions

TEST_F(RealFiles, FilesAndFoldersAreToldApartAlsoBehindLinks)
{
    folder.write(u"a/x.mp3"_s, "x");
    ASSERT_EQ(::symlink(system(u"a"_s).constData(), system(u"folder.link"_s).constData()), 0);
    ASSERT_EQ(::symlink("a/x.mp3", system(u"file.link"_s).constData()), 0);
    ASSERT_EQ(::symlink("nowhere", system(u"dead.link"_s).constData()), 0);
    EXPECT_TRUE(files.fileExists(path(u"a/x.mp3"_s)));
    EXPECT_TRUE(files.fileExists(path(u"file.link"_s)));
    EXPECT_TRUE(files.folderExists(path(u"folder.link"_s)));
    EXPECT_TRUE(files.folderExists(path(u"a/"_s)));
    EXPECT_FALSE(files.fileExists(path(u"a"_s)));
    EXPECT_FALSE(files.folderExists(path(u"a/x.mp3"_s)));
    EXPECT_FALSE(files.fileExists(path(u"dead.link"_s)));
    EXPECT_FALSE(files.fileExists(QString()));
    EXPECT_FALSE(files.facts(u"/no/such/thing"_s));
}

TEST_F(RealFiles, PathsMayCarryEitherSeparator)
{
    folder.write(u"a/b/x.mp3"_s, "content");
    EXPECT_TRUE(files.fileExists(folder.path() + u"\\a\\b\\x.mp3"_s));
    EXPECT_EQ(files.read(folder.path() + u"/a\\b/x.mp3"_s, 100), "content");
}

TEST_F(RealFiles, FactsGiveSizeTimeAndIdentity)
{
    folder.write(u"a"_s, "12345");
    ASSERT_EQ(::link(system(u"a"_s).constData(), system(u"b"_s).constData()), 0);
    const QDateTime date(QDate(1995, 5, 6), QTime(7, 8, 9, 123));
    EXPECT_TRUE(files.setModified(path(u"a"_s), date));
    const auto a = files.facts(path(u"a"_s));
    const auto b = files.facts(path(u"b"_s));
    EXPECT_EQ(a->size, 5);
    EXPECT_EQ(a->modified, date);
    EXPECT_FALSE(a->isFolder);
    EXPECT_EQ(a->inode, b->inode);
    EXPECT_EQ(a->device, b->device);
    EXPECT_TRUE(files.facts(folder.path())->isFolder);
}

TEST_F(RealFiles, ADateBefore1970IsKept)
{
    folder.write(u"a"_s, "");
    const QDateTime date(QDate(1965, 5, 6), QTime(7, 8, 9, 123));
    EXPECT_TRUE(files.setModified(path(u"a"_s), date));
    EXPECT_EQ(files.facts(path(u"a"_s))->modified, date);
    EXPECT_FALSE(files.setModified(path(u"a"_s), QDateTime()));
    EXPECT_FALSE(files.setModified(path(u"missing"_s), date));
}

TEST_F(RealFiles, NamesAreSortedByBytes)
{
    for (const QString& name : {u"b"_s, u"B"_s, u"a"_s, u"ä"_s, u".x"_s}) {
        folder.write(name, "");
    }
    EXPECT_EQ(everything(), (QStringList{u".x"_s, u"B"_s, u"a"_s, u"b"_s, u"ä"_s}));
    EXPECT_EQ(files.names(path(u"missing"_s)), QStringList());
    EXPECT_EQ(files.names(path(u"b"_s)), QStringList());
}

TEST_F(RealFiles, ANameThatIsNotUtf8IsListedInAFormThatOpens)
{
    const QByteArray name = folder.path().toUtf8() + "/Sch\xF6n\xFF.mp3";
    const int made = ::open(name.constData(), O_CREAT | O_WRONLY, 0644);
    ASSERT_GE(made, 0);
    ::close(made);
    ASSERT_EQ(everything().size(), 1);
    const QString listed = path(everything().front());
    EXPECT_TRUE(files.fileExists(listed));
    files.writeWhole(listed, "new");
    EXPECT_EQ(files.read(listed, 100), "new");
    EXPECT_EQ(everything().size(), 1);
    EXPECT_EQ(files.resolve(listed), listed);
    EXPECT_TRUE(files.remove(listed));
    EXPECT_TRUE(everything().isEmpty());
}

// ---- second look-up

TEST_F(RealFiles, ThePathWithoutLinksIsTheSameForEveryNameOfAFile)
{
    folder.write(u"real/song.mp3"_s, "x");
    const QString real = files.canonical(path(u"real/song.mp3"_s));
    EXPECT_TRUE(real.endsWith(u"/real/song.mp3"_s));
    ASSERT_EQ(::symlink("real", system(u"link"_s).constData()), 0);
    ASSERT_EQ(::symlink("real/song.mp3", system(u"other.mp3"_s).constData()), 0);
    EXPECT_FALSE(files.facts(path(u"link/song.mp3"_s))->isLink);
    EXPECT_TRUE(files.facts(path(u"other.mp3"_s))->isLink);
    EXPECT_EQ(files.facts(path(u"other.mp3"_s))->size, 1);
    EXPECT_EQ(files.canonical(path(u"link/song.mp3"_s)), real);
    EXPECT_EQ(files.canonical(path(u"other.mp3"_s)), real);
    EXPECT_EQ(files.canonical(path(u"real/../link/./song.mp3"_s)), real);
    EXPECT_EQ(files.canonical(path(u"none"_s)), QString());
    EXPECT_EQ(files.canonical({}), QString());
}

TEST_F(RealFiles, OnlyAFolderThatMayBeReadCanBeListed)
{
    folder.write(u"locked/song.mp3"_s, "x");
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(::chmod(system(u"locked"_s).constData(), 0), 0);
    {
        const test::AsNobody nobody;
        EXPECT_TRUE(files.canList(folder.path()));
        EXPECT_FALSE(files.canList(path(u"locked"_s)));
        EXPECT_TRUE(files.names(path(u"locked"_s)).isEmpty());
    }
    ASSERT_EQ(::chmod(system(u"locked"_s).constData(), 0755), 0);
    EXPECT_FALSE(files.canList(path(u"none"_s)));
}

TEST_F(RealFiles, AnExactPathResolvesToItself)
{
    folder.write(u"Music/x.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"Music/x.mp3"_s)), path(u"Music/x.mp3"_s));
    EXPECT_EQ(files.resolve(folder.path() + u"\\Music\\x.mp3"_s), path(u"Music/x.mp3"_s));
    EXPECT_EQ(files.resolve(u"/"_s), u"/"_s);
}

TEST_F(RealFiles, LetterCaseAndUnicodeFormAreFoundFolderByFolder)
{
    // Written with the letter and its mark apart, as some systems store names.
    folder.write(u"Mu\u0308sik/BJO\u0308RK - Jo\u0301ga.MP3"_s, "");
    EXPECT_EQ(files.resolve(path(u"MÜSIK/Björk - Jóga.mp3"_s)),
              path(u"Mu\u0308sik/BJO\u0308RK - Jo\u0301ga.MP3"_s));
    EXPECT_EQ(files.resolve(folder.path() + u"\\müsik"_s), path(u"Mu\u0308sik"_s));
}

TEST_F(RealFiles, ASpellingThatLeadsToTheEndWinsOverOneThatDoesNot)
{
    folder.write(u"music/other.mp3"_s, "");
    folder.write(u"MUSIC/x.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"music/X.mp3"_s)), path(u"MUSIC/x.mp3"_s));
    EXPECT_EQ(files.resolve(path(u"Music/OTHER.mp3"_s)), path(u"music/other.mp3"_s));
}

TEST_F(RealFiles, WhatIsNotThereResolvesToNothing)
{
    folder.write(u"Music/x.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"music/y.mp3"_s)), QString());
    EXPECT_EQ(files.resolve(path(u"music/x.mp3/z"_s)), QString());
    EXPECT_EQ(files.resolve(u"C:\\Music\\x.mp3"_s), QString());
    EXPECT_EQ(files.resolve(QString()), QString());
    EXPECT_EQ(files.resolve(u"a"_s + QChar(u'\0')), QString());
}

TEST_F(RealFiles, ALookUpSeesAFileMadeJustAfterAnEarlierOne)
{
    folder.write(u"Music/x.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"music/new.mp3"_s)), QString());
    folder.write(u"Music/NEW.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"music/new.mp3"_s)), path(u"Music/NEW.mp3"_s));
    ASSERT_TRUE(files.remove(path(u"Music/NEW.mp3"_s)));
    EXPECT_EQ(files.resolve(path(u"music/new.mp3"_s)), QString());
}

TEST_F(RealFiles, ALookUpInAnUnchangedOldFolderSeesALaterChange)
{
    folder.write(u"Music/x.mp3"_s, "");
    const QDateTime old = QDateTime::currentDateTime().addDays(-1);
    ASSERT_TRUE(files.setModified(path(u"Music"_s), old));
    EXPECT_EQ(files.resolve(path(u"Music/X.mp3"_s)), path(u"Music/x.mp3"_s));
    folder.write(u"Music/NEW.mp3"_s, "");
    EXPECT_EQ(files.resolve(path(u"Music/new.mp3"_s)), path(u"Music/NEW.mp3"_s));
}

TEST_F(RealFiles, ThousandsOfLookUpsInOneFolderReadItOnce)
{
    for (int i = 0; i < 2000; ++i) {
        folder.write(u"Music/Track %1.MP3"_s.arg(i), "");
    }
    ASSERT_TRUE(files.setModified(path(u"Music"_s), QDateTime::currentDateTime().addDays(-1)));
    // The processor's time, not the clock's: other programs may be busy.
    const std::clock_t start = std::clock();
    for (int i = 0; i < 2000; ++i) {
        EXPECT_FALSE(files.resolve(path(u"music/track %1.mp3"_s.arg(i))).isEmpty());
    }
    // Reading it each time takes 17 seconds.
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
}

// ---- reading

TEST_F(RealFiles, AFileThatIsTooLargeAFolderOrMissingIsAnError)
{
    folder.write(u"a"_s, "12345");
    EXPECT_EQ(files.read(path(u"a"_s), 5), "12345");
    EXPECT_THROW(files.read(path(u"a"_s), 4), IoError);
    EXPECT_THROW(files.read(folder.path(), 100), IoError);
    EXPECT_THROW(files.read(path(u"missing"_s), 100), IoError);
    EXPECT_THROW(files.read(QString(), 100), IoError);
}

TEST_F(RealFiles, APipeOrDeviceIsAnErrorAndNeverAWait)
{
    ASSERT_EQ(::mkfifo(system(u"pipe"_s).constData(), 0600), 0);
    EXPECT_THROW(files.read(path(u"pipe"_s), 100), IoError);
    EXPECT_THROW(files.read(u"/dev/zero"_s, 100), IoError);
    EXPECT_THROW(files.append(path(u"pipe"_s), "x"), IoError);
    EXPECT_THROW(files.writeWhole(path(u"pipe"_s), "x"), IoError);
}

TEST_F(RealFiles, AFileOfTheKernelWithoutASizeIsReadWhole)
{
    EXPECT_FALSE(files.read(u"/proc/self/status"_s, 100000).isEmpty());
}

TEST_F(RealFiles, AnErrorNamesThePathAndTheReason)
{
    try {
        static_cast<void>(files.read(path(u"missing"_s), 100));
        FAIL();
    } catch (const IoError& error) {
        EXPECT_EQ(error.path(), path(u"missing"_s));
        EXPECT_FALSE(error.reason().isEmpty());
    }
}

// ---- writing

TEST_F(RealFiles, AFileIsReplacedAsAWholeAndKeepsItsMode)
{
    folder.write(u"a"_s, "a long old content");
    ASSERT_EQ(::chmod(system(u"a"_s).constData(), 0640), 0);
    files.writeWhole(path(u"a"_s), "new");
    EXPECT_EQ(folder.read(u"a"_s), "new");
    EXPECT_EQ(modeOf(u"a"_s), 0640U);
    EXPECT_EQ(everything(), QStringList{u"a"_s});
}

TEST_F(RealFiles, AFileThatCouldNotBeWrittenIsKnownUntilItIs)
{
    ASSERT_TRUE(files.makeFolder(path(u"a"_s)));
    EXPECT_THROW(files.writeWhole(path(u"a"_s), "new"), IoError);
    files.writeWhole(path(u"b"_s), "new");
    EXPECT_EQ(files.unwritten(), QStringList{path(u"a"_s)});
    ASSERT_EQ(::rmdir(system(u"a"_s).constData()), 0);
    files.writeWhole(path(u"a"_s), "new");
    EXPECT_EQ(files.unwritten(), QStringList());
}

TEST_F(RealFiles, WhatIsNewIsItsOwnersAloneAndWhatTheUserHasOpenedStaysOpen)
{
    const mode_t old = ::umask(0);
    files.writeWhole(path(u"a"_s), "new");
    files.writeNamed(path(u"b"_s), "new");
    files.append(path(u"c"_s), "new");
    EXPECT_TRUE(files.makeFolders(path(u"d/e"_s)));
    EXPECT_NE(lockFile(path(u"f.lock"_s), std::chrono::milliseconds(0)), nullptr);
    ::umask(old);
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"f.lock"_s}) {
        EXPECT_EQ(modeOf(name), 0600U) << qPrintable(name);
    }
    EXPECT_EQ(modeOf(u"d"_s), 0700U);
    EXPECT_EQ(modeOf(u"d/e"_s), 0700U);

    ASSERT_EQ(::chmod(system(u"c"_s).constData(), 0644), 0);
    files.append(path(u"c"_s), "more");
    EXPECT_EQ(modeOf(u"c"_s), 0644U);
}

TEST_F(RealFiles, TheOwnerIsKeptWhenWeMayGiveFilesAway)
{
    folder.write(u"a"_s, "old");
    // Root may give a file to anybody, others to the groups that they are in.
    std::vector<gid_t> groups(size_t(std::max(0, ::getgroups(0, nullptr))));
    ASSERT_EQ(::getgroups(int(groups.size()), groups.data()), int(groups.size()));
    const bool isRoot = ::geteuid() == 0;
    const uid_t user = isRoot ? 1234 : ::geteuid();
    const gid_t group = isRoot ? 1235 : groups.empty() ? ::getegid() : groups.back();
    ASSERT_EQ(::chown(system(u"a"_s).constData(), user, group), 0);
    files.writeWhole(path(u"a"_s), "new");
    struct stat facts = {};
    ASSERT_EQ(::stat(system(u"a"_s).constData(), &facts), 0);
    EXPECT_EQ(facts.st_uid, user);
    EXPECT_EQ(facts.st_gid, group);
}

TEST_F(RealFiles, ALinkIsFollowedAndStaysALink)
{
    folder.write(u"real/a"_s, "old");
    ASSERT_EQ(::symlink("real/a", system(u"link"_s).constData()), 0);
    ASSERT_EQ(::symlink("real/b", system(u"to.new"_s).constData()), 0);
    files.writeWhole(path(u"link"_s), "new");
    files.writeWhole(path(u"to.new"_s), "made");
    EXPECT_EQ(folder.read(u"real/a"_s), "new");
    EXPECT_EQ(folder.read(u"real/b"_s), "made");
    EXPECT_TRUE(isLink(u"link"_s));
}

TEST_F(RealFiles, AnEndlessChainOfLinksIsAnError)
{
    ASSERT_EQ(::symlink("b", system(u"a"_s).constData()), 0);
    ASSERT_EQ(::symlink("a", system(u"b"_s).constData()), 0);
    EXPECT_THROW(files.writeWhole(path(u"a"_s), "x"), IoError);
}

TEST_F(RealFiles, OfANamedFileALinkIsReplacedItselfAndWhatItLeadsToStays)
{
    folder.write(u"real/a"_s, "old");
    ASSERT_EQ(::symlink("real/a", system(u"link"_s).constData()), 0);
    ASSERT_EQ(::symlink("link", system(u"to.link"_s).constData()), 0);
    ASSERT_EQ(::symlink("real", system(u"to.folder"_s).constData()), 0);
    for (const QString& name : {u"to.link"_s, u"link"_s, u"to.folder"_s}) {
        files.writeNamed(path(name), "new");
        EXPECT_EQ(folder.read(name), "new");
        EXPECT_FALSE(isLink(name)) << name.toStdString();
    }
    EXPECT_EQ(folder.read(u"real/a"_s), "old");
    EXPECT_EQ(files.names(path(u"real"_s)), QStringList{u"a"_s});
}

TEST_F(RealFiles, OfANamedFileALinkToNothingOrInACircleIsReplacedAndMakesNothingAtItsEnd)
{
    ASSERT_TRUE(files.makeFolder(path(u"real"_s)));
    ASSERT_EQ(::symlink("real/b", system(u"link"_s).constData()), 0);
    ASSERT_EQ(::symlink("circle", system(u"circle"_s).constData()), 0);
    files.writeNamed(path(u"link"_s), "new");
    files.writeNamed(path(u"circle"_s), "new");
    EXPECT_EQ(folder.read(u"link"_s), "new");
    EXPECT_EQ(folder.read(u"circle"_s), "new");
    EXPECT_TRUE(files.names(path(u"real"_s)).isEmpty());
}

TEST_F(RealFiles, ANamedFileKeepsItsModeAndIsLeftAloneWhenNobodyMayWriteIt)
{
    folder.write(u"a"_s, "old");
    ASSERT_EQ(::chmod(system(u"a"_s).constData(), 0640), 0);
    files.writeNamed(path(u"a"_s), "new");
    EXPECT_EQ(folder.read(u"a"_s), "new");
    EXPECT_EQ(modeOf(u"a"_s), 0640U);
    ASSERT_EQ(::chmod(system(u"a"_s).constData(), 0444), 0);
    EXPECT_THROW(files.writeNamed(path(u"a"_s), "newer"), IoError);
    EXPECT_EQ(folder.read(u"a"_s), "new");
    EXPECT_THROW(files.writeNamed(folder.path(), "x"), IoError);
}

TEST_F(RealFiles, ACopyInStepsNeverGoesThroughALinkAtItsTarget)
{
    folder.write(u"a"_s, "sound");
    folder.write(u"library/04.mp3"_s, "another track");
    ASSERT_TRUE(files.makeFolder(path(u"stick"_s)));
    ASSERT_EQ(::symlink("../library/04.mp3", system(u"stick/link"_s).constData()), 0);
    ASSERT_EQ(::symlink("../library/05.mp3", system(u"stick/to.nothing"_s).constData()), 0);
    ASSERT_EQ(::symlink("../a", system(u"stick/to.source"_s).constData()), 0);
    EXPECT_FALSE(
        files.copyInSteps(path(u"a"_s), path(u"stick/link"_s), [](qint64) { return false; }));
    EXPECT_TRUE(isLink(u"stick/link"_s)) << "a copy that is given up leaves the link";
    for (const QString& name : {u"stick/link"_s, u"stick/to.nothing"_s, u"stick/to.source"_s}) {
        EXPECT_TRUE(files.copyInSteps(path(u"a"_s), path(name), [](qint64) { return true; }));
        EXPECT_EQ(folder.read(name), "sound");
        EXPECT_FALSE(isLink(name)) << name.toStdString();
    }
    EXPECT_EQ(folder.read(u"library/04.mp3"_s), "another track");
    EXPECT_EQ(files.names(path(u"library"_s)), QStringList{u"04.mp3"_s});
}

TEST_F(RealFiles, ACopyInStepsOfALinkOntoItselfLeavesIt)
{
    folder.write(u"real/a"_s, "sound");
    ASSERT_EQ(::symlink("real/a", system(u"link"_s).constData()), 0);
    EXPECT_TRUE(files.copyInSteps(path(u"link"_s), path(u"link"_s), [](qint64) { return true; }));
    EXPECT_TRUE(isLink(u"link"_s));
    EXPECT_EQ(folder.read(u"real/a"_s), "sound");
}

TEST_F(RealFiles, AFileThatNobodyMayWriteIsLeftAlone)
{
    folder.write(u"a"_s, "old");
    folder.write(u"b"_s, "source");
    ASSERT_EQ(::chmod(system(u"a"_s).constData(), 0444), 0);
    EXPECT_THROW(files.writeWhole(path(u"a"_s), "new"), IoError);
    EXPECT_THROW(files.append(path(u"a"_s), "new"), IoError);
    EXPECT_THROW(files.copy(path(u"b"_s), path(u"a"_s)), IoError);
    EXPECT_EQ(folder.read(u"a"_s), "old");
    EXPECT_TRUE(files.makeWritable(path(u"a"_s)));
    files.writeWhole(path(u"a"_s), "new");
    EXPECT_EQ(folder.read(u"a"_s), "new");
}

TEST_F(RealFiles, AFolderInThePlaceOfTheFileIsAnError)
{
    ASSERT_TRUE(files.makeFolder(path(u"a"_s)));
    EXPECT_THROW(files.writeWhole(path(u"a"_s), "x"), IoError);
    EXPECT_THROW(files.append(path(u"a"_s), "x"), IoError);
    EXPECT_THROW(files.writeWhole(path(u"missing/a"_s), "x"), IoError);
    EXPECT_EQ(everything(), QStringList{u"a"_s});
}

/// Files cannot grow beyond a size while this lives, as on a full disk.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~SmallDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        static_cast<void>(std::signal(SIGXFSZ, m_handler));
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit m_before = {};
    void (*m_handler)(int) = nullptr;
};

TEST_F(RealFiles, AFailureInTheMiddleLeavesTheTargetUntouchedAndNothingBehind)
{
    folder.write(u"a"_s, "old");
    folder.write(u"large"_s, QByteArray(qsizetype{3} * 1024 * 1024, 'x'));
    {
        const SmallDisk disk(1000);
        EXPECT_THROW(files.writeWhole(path(u"a"_s), QByteArray(5000, 'n')), IoError);
        EXPECT_THROW(files.copy(path(u"large"_s), path(u"a"_s)), IoError);
        EXPECT_THROW(files.writeWhole(path(u"new"_s), QByteArray(5000, 'n')), IoError);
    }
    EXPECT_EQ(folder.read(u"a"_s), "old");
    EXPECT_EQ(everything(), (QStringList{u"a"_s, u"large"_s}));
}

TEST_F(RealFiles, AFileThatCannotTakeItsPlaceAtTheEndLeavesNothingBesideIt)
{
    {
        linuxfiles::Replacement late(system(u"a"_s), linuxfiles::TargetLink::Followed);
        ASSERT_EQ(::mkdir(system(u"a"_s).constData(), 0700), 0);
        EXPECT_THROW(late.commit(), IoError);
    }
    EXPECT_EQ(everything(), QStringList(u"a"_s));
}

TEST_F(RealFiles, WhatAKilledWriterHasLeftIsRemovedByTheNextWriteIntoTheFolder)
{
    folder.write(u".mlv-3w5e11264sgsf"_s, "half");
    folder.write(u"stick/.mlv-0"_s, "half");
    files.writeWhole(path(u"a"_s), "new");
    EXPECT_EQ(everything(), (QStringList{u"a"_s, u"stick"_s}));
    ASSERT_TRUE(files.copyInSteps(path(u"a"_s), path(u"stick/a"_s), [](qint64) { return true; }));
    EXPECT_EQ(files.names(path(u"stick"_s)), QStringList{u"a"_s});
}

TEST_F(RealFiles, WhatALivingProgramIsWritingAndWhatOnlyLooksLikeItStays)
{
    folder.write(u".mlv-1living"_s, "of a sibling");
    folder.write(u".mlv-Notes.txt"_s, "of the user");
    folder.write(u".mlv-"_s, "of the user");
    folder.write(u".mlv-2folder/a"_s, "of the user");
    ASSERT_EQ(::symlink(".mlv-Notes.txt", system(u".mlv-3link"_s).constData()), 0);
    const auto writer = lockFile(path(u".mlv-1living"_s), std::chrono::milliseconds(0));
    ASSERT_NE(writer, nullptr);
    const QStringList before = everything();
    files.writeWhole(path(u"a"_s), "new");
    EXPECT_EQ(everything(), before + QStringList{u"a"_s});
}

TEST_F(RealFiles, AFileThatIsBeingWrittenIsLockedByItsWriter)
{
    linuxfiles::Replacement writing(system(u"a"_s), linuxfiles::TargetLink::Followed);
    linuxfiles::writeAll(writing.descriptor(), "new", system(u"a"_s));
    writing.commit();
    const auto other = lockFile(path(u"a"_s), std::chrono::milliseconds(0));
    EXPECT_EQ(other, nullptr) << "it had a name of its own before, and a sweep could have met it";
}

TEST_F(RealFiles, AppendMakesTheFileAndGoesOnBehindIt)
{
    files.append(path(u"log"_s), "one\n");
    files.append(path(u"log"_s), "two\n");
    EXPECT_EQ(folder.read(u"log"_s), "one\ntwo\n");
    EXPECT_THROW(files.append(path(u"missing/log"_s), "x"), IoError);
}

TEST_F(RealFiles, ACopyBringsModeAndTime)
{
    const QByteArray content(3 * 1024 * 1024 + 7, 'x');
    folder.write(u"a"_s, content);
    ASSERT_EQ(::chmod(system(u"a"_s).constData(), 0600), 0);
    const QDateTime date(QDate(2001, 2, 3), QTime(4, 5, 6));
    ASSERT_TRUE(files.setModified(path(u"a"_s), date));
    folder.write(u"b"_s, "older");
    files.copy(path(u"a"_s), path(u"b"_s));
    EXPECT_EQ(folder.read(u"b"_s), content);
    EXPECT_EQ(modeOf(u"b"_s), 0600U);
    EXPECT_EQ(files.facts(path(u"b"_s))->modified, date);
    EXPECT_EQ(everything().size(), 2);
}

TEST_F(RealFiles, ACopyOntoItselfChangesNothing)
{
    folder.write(u"a"_s, "x");
    const auto before = files.facts(path(u"a"_s));
    files.copy(path(u"a"_s), path(u"a"_s));
    EXPECT_EQ(files.facts(path(u"a"_s))->inode, before->inode);
    EXPECT_THROW(files.copy(path(u"missing"_s), path(u"a"_s)), IoError);
    EXPECT_EQ(folder.read(u"a"_s), "x");
}

TEST_F(RealFiles, ACopyInStepsIsAskedAfterEveryBlockAndComesOutWhole)
{
    const QByteArray bytes = QByteArray(qsizetype{6} * 1024 * 1024, 'x') + "end";
    folder.write(u"a"_s, bytes);
    std::vector<qint64> steps;
    EXPECT_TRUE(files.copyInSteps(path(u"a"_s), path(u"b"_s), [&](qint64 copied) {
        steps.push_back(copied);
        return true;
    }));
    EXPECT_EQ(folder.read(u"b"_s), bytes);
    ASSERT_EQ(steps.size(), 7U);
    EXPECT_EQ(steps.front(), 1024 * 1024);
    EXPECT_EQ(steps.back(), bytes.size());
    EXPECT_EQ(files.facts(path(u"b"_s))->modified, files.facts(path(u"a"_s))->modified);
}

TEST_F(RealFiles, ACopyThatIsGivenUpLeavesTheTargetAsItWasAndNothingBesideIt)
{
    folder.write(u"a"_s, QByteArray(qsizetype{3} * 1024 * 1024, 'x'));
    folder.write(u"to/b"_s, "old");
    EXPECT_FALSE(files.copyInSteps(path(u"a"_s), path(u"to/b"_s), [](qint64) { return false; }));
    EXPECT_FALSE(files.copyInSteps(path(u"a"_s), path(u"to/c"_s), [](qint64) { return false; }));
    EXPECT_EQ(folder.read(u"to/b"_s), "old");
    EXPECT_EQ(files.names(path(u"to"_s)), QStringList{u"b"_s});
}

TEST_F(RealFiles, TheSpaceOfAVolumeIsToldInWholeBlocksAndOfWhatIsNotThereNotAtAll)
{
    const auto space = files.space(folder.path());
    ASSERT_TRUE(space);
    EXPECT_GT(space->free, 0);
    EXPECT_GT(space->block, 0);
    EXPECT_EQ(space->free % space->block, 0);
    EXPECT_FALSE(files.space(path(u"missing"_s)));
    EXPECT_FALSE(files.space({}));
}

TEST_F(RealFiles, FoldersAreMadeOneOrAll)
{
    EXPECT_FALSE(files.makeFolder(path(u"a/b"_s)));
    EXPECT_TRUE(files.makeFolders(folder.path() + u"\\a\\b\\c\\"_s));
    EXPECT_TRUE(files.folderExists(path(u"a/b/c"_s)));
    EXPECT_TRUE(files.makeFolders(path(u"a/b/c"_s)));
    EXPECT_TRUE(files.makeFolder(path(u"a"_s)));
    folder.write(u"file"_s, "");
    EXPECT_FALSE(files.makeFolder(path(u"file"_s)));
    EXPECT_FALSE(files.makeFolders(path(u"file/x"_s)));
    EXPECT_FALSE(files.makeFolders(QString()));
}

TEST_F(RealFiles, RemoveTakesFilesAndLinksNeverFolders)
{
    folder.write(u"real"_s, "x");
    ASSERT_TRUE(files.makeFolder(path(u"folder"_s)));
    ASSERT_EQ(::symlink("real", system(u"link"_s).constData()), 0);
    EXPECT_TRUE(files.remove(path(u"link"_s)));
    EXPECT_TRUE(files.fileExists(path(u"real"_s)));
    EXPECT_FALSE(files.remove(path(u"folder"_s)));
    EXPECT_TRUE(files.remove(path(u"real"_s)));
    EXPECT_FALSE(files.remove(path(u"real"_s)));
}

TEST_F(RealFiles, ARenamedFileReplacesNothing)
{
    folder.write(u"a"_s, "a");
    folder.write(u"b"_s, "b");
    ASSERT_EQ(::symlink("b", system(u"link"_s).constData()), 0);
    EXPECT_THROW(files.rename(path(u"a"_s), path(u"b"_s)), IoError);
    EXPECT_THROW(files.rename(path(u"a"_s), path(u"link"_s)), IoError);
    EXPECT_THROW(files.rename(path(u"gone"_s), path(u"c"_s)), IoError);
    EXPECT_THROW(files.rename(path(u"a"_s), path(u"none/c"_s)), IoError);
    EXPECT_THROW(files.rename(path(u"a"_s), QString()), IoError);
    EXPECT_EQ(folder.read(u"b"_s), "b");
    files.rename(path(u"a"_s), path(u"A"_s));
    files.rename(path(u"link"_s), path(u"other"_s));
    EXPECT_EQ(everything(), (QStringList{u"A"_s, u"b"_s, u"other"_s}));
    EXPECT_TRUE(isLink(u"other"_s));
}

TEST_F(RealFiles, OnlyAnEmptyFolderIsRemoved)
{
    folder.write(u"full/file"_s, "x");
    ASSERT_TRUE(files.makeFolder(path(u"empty"_s)));
    EXPECT_FALSE(files.removeFolder(path(u"full"_s)));
    EXPECT_FALSE(files.removeFolder(path(u"full/file"_s)));
    EXPECT_TRUE(files.removeFolder(path(u"empty"_s)));
    EXPECT_FALSE(files.removeFolder(path(u"empty"_s)));
    EXPECT_FALSE(files.removeFolder(QString()));
}

} // namespace
} // namespace melovane
