// What the whole console does with files whose names a killed tag tool has left between old and
// new.
#include "platform/linux/job_locks.h"
#include "platform/linux/linux_file_lock.h"
#include "shell/application_fixture.h"
#include "support/mp3_maker.h"
#include "tagbench/file_moves.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class LeftNames : public test::ApplicationTest
{
protected:
    LeftNames()
    {
        addTrack(u"halb.mp3"_s);
        addTrack(u"fertig.mp3"_s);
        killAToolThatRenames();
        // Of the second track the row had followed.
        suite.execute(u"update DB_ALL set DName='neu fertig.mp3' where DName='fertig.mp3'"_s);
    }

    void addTrack(const QString& name)
    {
        music.write(name, test::simpleMp3(name, u"Wer"_s));
        moves.push_back({suite.library.add({.Path = music.path() + u'/', .DName = name}),
                         music.file(name), music.file(u"neu "_s + name)});
    }

    /// Both files have their new names when it dies.
    void killAToolThatRenames()
    {
        const pid_t tool = ::fork();
        if (tool == 0) {
            LinuxFiles files;
            FileMoves renaming(files, suite.dataFolder(), suite.dbName());
            ::_exit(renaming.move(moves, [](int) { return true; }) ? 0 : 1);
        }
        int status = 0;
        ::waitpid(tool, &status, 0);
        ASSERT_EQ(status, 0);
        ASSERT_EQ(names(), (QStringList{u"neu fertig.mp3"_s, u"neu halb.mp3"_s}));
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList found = suite.files.names(music.path());
        found.sort();
        return found;
    }

    [[nodiscard]] bool isLeft() { return RenameJournal(suite.files, suite.dbName()).isLeft(); }

    test::TempFolder music;
    std::vector<FileMove> moves;
};

TEST_F(LeftNames, GetWhatTheirRowsSayBeforeTheWindowIsShown)
{
    ASSERT_TRUE(isLeft());
    QStringList seen;
    ASSERT_EQ(run([&](QMainWindow&) { seen = names(); }), 0);
    EXPECT_EQ(seen, (QStringList{u"halb.mp3"_s, u"neu fertig.mp3"_s}));
    EXPECT_FALSE(isLeft());
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(LeftNames, AreLeftToATagToolThatRenamesNow)
{
    const auto held =
        jobClaim(jobLockFile(suite.files, {suite.folders.environment().runtimeFolder()},
                             u"tagbench"_s, suite.dbName()))();
    ASSERT_NE(held, nullptr);
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(names(), (QStringList{u"neu fertig.mp3"_s, u"neu halb.mp3"_s}));
    EXPECT_TRUE(isLeft());
}

} // namespace
} // namespace melovane
