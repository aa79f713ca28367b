#include "platform/linux/linux_environment.h"
#include "platform/system/path_text.h"
#include "support/temp_folder.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Sets a variable for the life of this object.
class Variable
{
public:
    Variable(const char* name, const QByteArray& value)
        : m_name(name)
        , m_before(qgetenv(name))
    {
        qputenv(name, value);
    }

    ~Variable() { qputenv(m_name, m_before); }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_before;
};

enum class Answer
{
    No,
    Yes,
    NoSuchFolder ///< the condition could not be made
};

/// Lets root's own folder stand in place of a folder, for this process alone: in a user namespace
/// of its own everybody may mount.
bool mountRootsFolderOn(const QByteArray& place)
{
    const uid_t user = ::geteuid();
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        return false;
    }
    // Never to the number that stands for everybody who is unknown there.
    const QByteArray map = "0 " + QByteArray::number(user) + " 1";
    const int file = ::open("/proc/self/uid_map", O_WRONLY | O_CLOEXEC);
    const bool mapped = ::write(file, map.constData(), size_t(map.size())) == map.size();
    ::close(file);
    return mapped && ::mount("/root", place.constData(), nullptr, MS_BIND | MS_REC, nullptr) == 0;
}

/// Asks while the folder belongs to somebody else: root gives it away, others see root's in its
/// place.
Answer withFolderOfSomebodyElse(const QString& folder, const std::function<bool()>& question)
{
    const QByteArray place = folder.toUtf8();
    if (::geteuid() == 0) {
        const bool given = ::chown(place.constData(), 1234, 1234) == 0;
        return !given ? Answer::NoSuchFolder : question() ? Answer::Yes : Answer::No;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(int(!mountRootsFolderOn(place) ? Answer::NoSuchFolder
                    : question()               ? Answer::Yes
                                               : Answer::No));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? Answer(WEXITSTATUS(status)) : Answer::NoSuchFolder;
}

class Machine : public testing::Test
{
protected:
    Machine()
    {
        places.machineFile = folder.file(u"etc/machine.conf"_s);
        places.userFile = folder.file(u"config/Melovane/user.conf"_s);
        places.runtimeBase = folder.file(u"run"_s);
        places.temporaryBase = folder.file(u"tmp"_s);
        LinuxFiles files;
        EXPECT_TRUE(files.makeFolder(places.runtimeBase));
        EXPECT_TRUE(files.makeFolder(places.temporaryBase));
    }

    [[nodiscard]] LinuxEnvironment start() const { return LinuxEnvironment(places); }

    [[nodiscard]] static struct stat factsOf(const QString& path)
    {
        struct stat facts = {};
        EXPECT_EQ(::lstat(path.toUtf8().constData(), &facts), 0);
        return facts;
    }

    test::TempFolder folder;
    EnvironmentPlaces places;
};

TEST_F(Machine, TheProgramIsTheRunningExecutable)
{
    const LinuxEnvironment environment = start();
    EXPECT_EQ(environment.programName(), u"linux_test"_s);
    EXPECT_TRUE(LinuxFiles().fileExists(
        path::join(environment.programFolder(), environment.programName())));
}

TEST_F(Machine, TheCacheFollowsTheDesktopsVariableAndIsNotMadeByAsking)
{
    const Variable cache("XDG_CACHE_HOME", qPrintable(folder.file(u"cache"_s)));
    EXPECT_EQ(start().cacheFolder(), folder.file(u"cache/Melovane"_s));
    EXPECT_FALSE(LinuxFiles().folderExists(folder.file(u"cache"_s)));
    const Variable relative("XDG_CACHE_HOME", "relative");
    EXPECT_TRUE(start().cacheFolder().endsWith(u"/.cache/Melovane"_s));
}

TEST_F(Machine, ShellFoldersFollowTheDesktopsVariables)
{
    const Variable data("XDG_DATA_HOME", "/home/u/data/");
    const LinuxEnvironment environment = start();
    EXPECT_EQ(environment.specialFolder(26), u"/home/u/data"_s);
    EXPECT_EQ(environment.specialFolder(35), u"/var/lib"_s);
    EXPECT_EQ(environment.specialFolder(46), u"/var/lib"_s);
    EXPECT_FALSE(environment.specialFolder(5).isEmpty());
    EXPECT_EQ(environment.specialFolder(0), QString());
    EXPECT_EQ(environment.specialFolder(-1), QString());
}

TEST_F(Machine, ADataFolderStandsForEveryPlaceOfTheUser)
{
    const Variable data("MELOVANE_DATA_DIR", "/home/x/my data");
    const LinuxEnvironment environment;
    EXPECT_EQ(environment.specialFolder(26), u"/home/x/my data"_s);
    EXPECT_EQ(environment.specialFolder(5), u"/home/x/my data/lists"_s);
    EXPECT_EQ(environment.cacheFolder(), u"/home/x/my data/cache/Melovane"_s);
    EXPECT_EQ(environment.machineValue(u"AppPathConfig"_s), u"user.normal"_s);
}

TEST_F(Machine, ProgramsOfTwoDataFoldersDoNotMeet)
{
    const Variable one("MELOVANE_DATA_DIR", "/one");
    const test::TempFolder base;
    EnvironmentPlaces named;
    named.runtimeBase = base.path();
    const QString first = LinuxEnvironment(named).runtimeFolder();
    const Variable two("MELOVANE_DATA_DIR", "/two");
    EXPECT_NE(LinuxEnvironment(named).runtimeFolder(), first);
    EXPECT_TRUE(first.startsWith(base.path() + u"/melovane-"_s));
}

TEST_F(Machine, AVariableThatIsNoFullPathIsIgnored)
{
    const Variable home("HOME", "/home/u");
    const Variable data("XDG_DATA_HOME", "relative");
    EXPECT_EQ(start().specialFolder(26), u"/home/u/.local/share"_s);
    const Variable empty("XDG_DATA_HOME", "");
    EXPECT_EQ(start().specialFolder(26), u"/home/u/.local/share"_s);
}

TEST_F(Machine, ProgramFilesIsThePrefixOfAnInstalledCopy)
{
    places.programFolder = u"/opt/suite/lib/melovane"_s;
    EXPECT_EQ(start().specialFolder(38), u"/opt/suite"_s);
    places.programFolder = u"/media/stick/melovane"_s;
    EXPECT_EQ(start().specialFolder(38), u"/usr"_s);
    places.programFolder = u"/lib/melovane"_s;
    EXPECT_EQ(start().specialFolder(38), u"/usr"_s);
}

TEST_F(Machine, MachineWideValuesAreLinesOfAFile)
{
    EXPECT_EQ(start().machineValue(u"AppPathConfig"_s), QString());
    folder.write(places.machineFile, "; set by the administrator\nAppPathConfig = Local\n");
    EXPECT_EQ(start().machineValue(u"apppathconfig"_s), u"Local"_s);
    EXPECT_EQ(start().machineValue(u"other"_s), QString());
}

TEST_F(Machine, UserValuesAreKeptPerProgram)
{
    LinuxEnvironment environment = start();
    EXPECT_EQ(environment.userValue(u"MelovaneDB"_s, u"SkinVersion"_s), QString());
    environment.setUserValue(u"MelovaneDB"_s, u"SkinVersion"_s, u"3.8"_s);
    environment.setUserValue(u"tagbench"_s, u"SkinVersion"_s, u"1.0"_s);
    environment.setUserValue(u"MelovaneDB"_s, u"blank"_s, u" "_s);
    const LinuxEnvironment later = start();
    EXPECT_EQ(later.userValue(u"MelovaneDB"_s, u"SkinVersion"_s), u"3.8"_s);
    EXPECT_EQ(later.userValue(u"tagbench"_s, u"SkinVersion"_s), u"1.0"_s);
    EXPECT_EQ(later.userValue(u"MelovaneDB"_s, u"blank"_s), u" "_s);
}

TEST_F(Machine, ANumberAmongTheValuesReadsAsItsDecimalDigits)
{
    folder.write(places.machineFile, "Limit=number:ff\n");
    folder.write(places.userFile, "[MelovaneDB]\na=number:0000001F\nb=number:ffffffff\n"
                                  "c=number:\nd=number:1x\ne=number:123456789\nf=1f\n");
    const LinuxEnvironment environment = start();
    EXPECT_EQ(environment.machineValue(u"Limit"_s), u"255"_s);
    const auto value = [&](const QString& name) {
        return environment.userValue(u"MelovaneDB"_s, name);
    };
    EXPECT_EQ(value(u"a"_s), u"31"_s);
    EXPECT_EQ(value(u"b"_s), u"-1"_s);
    EXPECT_EQ(value(u"c"_s), u"number:"_s);
    EXPECT_EQ(value(u"d"_s), u"number:1x"_s);
    EXPECT_EQ(value(u"e"_s), u"number:123456789"_s);
    EXPECT_EQ(value(u"f"_s), u"1f"_s);
}

TEST_F(Machine, AUserValueThatCannotBeWrittenStaysAsItWas)
{
    folder.write(u"config/Melovane"_s, "a file in the place of the folder");
    LinuxEnvironment environment = start();
    environment.setUserValue(u"MelovaneDB"_s, u"a"_s, u"b"_s);
    EXPECT_EQ(environment.userValue(u"MelovaneDB"_s, u"a"_s), QString());
}

TEST_F(Machine, TheRuntimeFolderIsMadeForTheUserAlone)
{
    const QString made = start().runtimeFolder();
    EXPECT_EQ(made, path::join(places.runtimeBase, u"melovane"));
    EXPECT_EQ(factsOf(made).st_mode & 0777U, 0700U);
    ASSERT_EQ(::chmod(made.toUtf8().constData(), 0755), 0);
    EXPECT_EQ(start().runtimeFolder(), made);
    EXPECT_EQ(factsOf(made).st_mode & 0777U, 0700U);
}

TEST_F(Machine, WithoutARuntimePlaceATemporaryFolderOfTheUserIsTaken)
{
    const QString fallback = path::join(places.temporaryBase, u"melovane-%1"_s.arg(::geteuid()));
    places.runtimeBase = u""_s;
    EXPECT_EQ(start().runtimeFolder(), fallback);
    places.runtimeBase = u"/no/such/place"_s;
    EXPECT_EQ(start().runtimeFolder(), fallback);
    EXPECT_EQ(factsOf(fallback).st_mode & 0777U, 0700U);
}

TEST_F(Machine, AFolderOfSomebodyElseOrALinkIsRefused)
{
    const QString place = path::join(places.runtimeBase, u"melovane");
    ASSERT_TRUE(LinuxFiles().makeFolder(folder.file(u"trap"_s)));
    ASSERT_EQ(::symlink(folder.file(u"trap"_s).toUtf8().constData(), place.toUtf8().constData()),
              0);
    EXPECT_TRUE(start().runtimeFolder().startsWith(places.temporaryBase));
    ASSERT_TRUE(LinuxFiles().remove(place));
    ASSERT_TRUE(LinuxFiles().makeFolder(place));
    EXPECT_EQ(start().runtimeFolder(), place);
    EXPECT_EQ(withFolderOfSomebodyElse(
                  place, [&] { return start().runtimeFolder().startsWith(places.temporaryBase); }),
              Answer::Yes);
}

TEST_F(Machine, WhenNoPlaceWillDoTheRuntimeFolderIsEmpty)
{
    places.runtimeBase = u""_s;
    places.temporaryBase = u"/no/such/place"_s;
    EXPECT_EQ(start().runtimeFolder(), QString());
}

} // namespace
} // namespace melovane
