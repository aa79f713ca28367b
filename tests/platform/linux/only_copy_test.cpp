#include "platform/linux/linux_environment.h"
#include "platform/linux/only_copy.h"
#include "support/temp_folder.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

/// While it is set, every file lies on a file system that answers a lock with this error.
int lockError = 0;

} // namespace

/// Stands before the system's for the whole test program.
extern "C" int flock(int descriptor, int operation) noexcept
{
    if (lockError != 0) {
        errno = lockError;
        return -1;
    }
    return int(::syscall(SYS_flock, descriptor, operation));
}

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class OnlyCopyTest : public testing::Test
{
protected:
    [[nodiscard]] OnlyCopy copy() const { return {folder.path(), u"MelovaneDB"_s}; }

    test::TempFolder folder;
    QString file = folder.file(u"MelovaneDB.lock"_s);
};

TEST_F(OnlyCopyTest, TheFirstIsTheOneUntilItEndsAndTellsItsHandleToLaterOnes)
{
    OnlyCopy later = copy();
    {
        OnlyCopy first = copy();
        EXPECT_TRUE(first.claim());
        EXPECT_FALSE(later.claim());
        EXPECT_EQ(later.runningCopy(), 0);
        first.publish(2'147'483'646);
        EXPECT_FALSE(later.claim());
        EXPECT_EQ(later.runningCopy(), 2'147'483'646);
        first.publish(65536);
        EXPECT_EQ(later.runningCopy(), 65536);
    }
    EXPECT_TRUE(later.claim());
}

TEST_F(OnlyCopyTest, AFileSystemWithoutLocksKeepsNoProgramFromStarting)
{
    for (const int error : {ENOLCK, EOPNOTSUPP, ENOSYS}) {
        lockError = error;
        OnlyCopy first = copy();
        OnlyCopy second = copy();
        const bool both = first.claim() && second.claim();
        lockError = 0;
        EXPECT_TRUE(both) << error;
    }
}

TEST_F(OnlyCopyTest, AnotherProgramIsNoOtherCopy)
{
    OnlyCopy console = copy();
    OnlyCopy importer(folder.path(), u"mediaintake"_s);
    EXPECT_TRUE(console.claim());
    EXPECT_TRUE(importer.claim());
}

TEST_F(OnlyCopyTest, AKilledCopyLeavesNoLockAndItsHandleIsForgotten)
{
    const pid_t child = ::fork();
    if (child == 0) {
        OnlyCopy first = copy();
        static_cast<void>(first.claim());
        first.publish(4711000);
        ::raise(SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder.read(file), "4711000\n");
    OnlyCopy next = copy();
    EXPECT_TRUE(next.claim());
    EXPECT_EQ(folder.read(file), QByteArray());
    EXPECT_EQ(copy().runningCopy(), 0);
}

TEST_F(OnlyCopyTest, WithoutARuntimeFolderTheFolderBehindItKeepsASecondCopyAway)
{
    test::TempFolder machine;
    EnvironmentPlaces places;
    places.runtimeBase = QString(u""_s);
    places.temporaryBase = machine.path();
    // Something that is not ours stands where the folder would be.
    machine.write(u"melovane-%1"_s.arg(::geteuid()), "foreign");
    const QString runtime = LinuxEnvironment(places).runtimeFolder();
    ASSERT_TRUE(runtime.isEmpty());
    OnlyCopy first(QStringList{runtime, folder.path()}, u"MelovaneDB"_s);
    OnlyCopy second(QStringList{runtime, folder.path()}, u"MelovaneDB"_s);
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(OnlyCopyTest, ALaterCopyDoesNotPublish)
{
    OnlyCopy first = copy();
    ASSERT_TRUE(first.claim());
    first.publish(4711000);
    OnlyCopy later = copy();
    EXPECT_FALSE(later.claim());
    later.publish(4711001);
    EXPECT_EQ(later.runningCopy(), 4711000);
}

TEST_F(OnlyCopyTest, WhatIsNoWholeHandleIsNobody)
{
    for (const QByteArray& text :
         {QByteArray(), QByteArray("4711"), QByteArray("x\n"), QByteArray("99999999999\n"),
          QByteArray(5000, '1'), QByteArray("47\n11\n")}) {
        folder.write(file, text);
        EXPECT_EQ(copy().runningCopy(), 0) << text.toStdString();
    }
}

TEST_F(OnlyCopyTest, APlaceWithoutALockKeepsNobodyFromStarting)
{
    OnlyCopy nowhere(QString(), u"MelovaneDB"_s);
    EXPECT_TRUE(nowhere.claim());
    nowhere.publish(4711000);
    EXPECT_EQ(nowhere.runningCopy(), 0);
    const QString target = folder.write(u"other.txt"_s, "kept");
    ASSERT_TRUE(QFile::link(target, file));
    OnlyCopy linked = copy();
    EXPECT_TRUE(linked.claim());
    linked.publish(4711000);
    EXPECT_EQ(folder.read(target), "kept");
}

} // namespace
} // namespace melovane
