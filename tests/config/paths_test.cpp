#include "config/paths.h"
#include "platform/system/path_text.h"
#include "support/suite_folders.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Layout = test::SuiteFolders::Layout;

class Paths : public testing::Test
{
protected:
    /// The paths of a program that starts now.
    [[nodiscard]] Mod_API start() { return Mod_API(suite.environment(), suite.files()); }

    void setMode(const QByteArray& mode)
    {
        suite.folder().write(suite.places().machineFile, "AppPathConfig=" + mode + "\n");
    }

    void installAll()
    {
        for (const char* name : {"melovane.mdb", "melovane.ini", "MelovaneJob.ini",
                                 "Skin/melovane.skn", "Skin/Light.SKN", "Skin/readme.txt",
                                 "Layout/default.grx", "Layout/gridlayout_db.grx"}) {
            suite.install(QString::fromLatin1(name), QByteArray("new ") + name);
        }
    }

    [[nodiscard]] QString config(QStringView name = {}) const
    {
        return path::join(path::join(suite.places().userData, u"Melovane"), name);
    }

    [[nodiscard]] QByteArray read(const QString& path) { return suite.folder().read(path); }

    test::SuiteFolders suite{Layout::UserNormal};
};

TEST_F(Paths, TheMachinesModeIsReadWithoutRegardToCase)
{
    setMode("Local");
    EXPECT_EQ(start().GetPathMode(), u"local"_s);
    setMode("USER.Global");
    EXPECT_EQ(start().GetPathMode(), u"user.global"_s);
}

TEST_F(Paths, TheModeIsReadOnce)
{
    setMode("local");
    Mod_API paths = start();
    EXPECT_EQ(paths.GetPathMode(), u"local"_s);
    setMode("user.global");
    EXPECT_EQ(paths.GetPathMode(), u"local"_s);
}

TEST_F(Paths, AnUnknownModeFallsBackToTheLocationTestAsAnAbsentOneDoes)
{
    EXPECT_EQ(start().GetPathMode(), u"user.normal"_s);
    setMode("portable");
    EXPECT_EQ(start().GetPathMode(), u"user.normal"_s);
    test::SuiteFolders stick(Layout::Local);
    EXPECT_EQ(stick.paths().GetPathMode(), u"local"_s);
    stick.folder().write(stick.places().machineFile, "AppPathConfig=portable\n");
    EXPECT_EQ(Mod_API(stick.environment(), stick.files()).GetPathMode(), u"local"_s);
}

/// An environment that tells where the program and the installed programs lie.
QString modeOf(const QString& programFolder, const QString& programFiles)
{
    const test::TempFolder folder;
    EnvironmentPlaces places;
    places.programFolder = programFolder;
    places.programFiles = programFiles;
    places.machineFile = folder.file(u"machine.conf"_s);
    LinuxEnvironment environment(places);
    LinuxFiles files;
    return Mod_API(environment, files).GetPathMode();
}

TEST_F(Paths, AProgramFolderThatDiffersOnlyInCaseCountsAsBelow)
{
    EXPECT_EQ(modeOf(u"/OPT/Suite/lib"_s, u"/opt/suite"_s), u"user.normal"_s);
    EXPECT_EQ(modeOf(u"c:\\program files\\Melovane"_s, u"C:\\Program Files"_s), u"user.normal"_s);
}

TEST_F(Paths, AFolderWhoseNameOnlyBeginsLikeTheOtherIsNotBelow)
{
    EXPECT_EQ(modeOf(u"/usrlocal/melovane"_s, u"/usr"_s), u"local"_s);
    EXPECT_EQ(modeOf(u"/media/stick/usr/melovane"_s, u"/usr"_s), u"local"_s);
    EXPECT_EQ(modeOf(u"/usr/lib/melovane"_s, u"/usr"_s), u"user.normal"_s);
}

TEST_F(Paths, EachModeHasItsFolders)
{
    const auto& places = suite.places();
    setMode("user.global");
    EXPECT_EQ(start().GetConfigPath(), path::join(places.commonData, u"Melovane"));
    EXPECT_EQ(start().GetPlaylistRoot(), path::join(places.commonDocuments, u"Melovane"));
    setMode("user.normal");
    EXPECT_EQ(start().GetConfigPath(), path::join(places.userData, u"Melovane"));
    EXPECT_EQ(start().GetPlaylistRoot(), path::join(places.userDocuments, u"Melovane"));
    setMode("local");
    EXPECT_EQ(start().GetConfigPath(), places.programFolder);
    EXPECT_EQ(start().GetPlaylistRoot(), places.programFolder);
}

TEST_F(Paths, ThePlaylistRootIsMade)
{
    EXPECT_TRUE(suite.files().folderExists(start().GetPlaylistRoot()));
}

TEST_F(Paths, TheFirstStartCopiesTheFirstSetOfFiles)
{
    installAll();
    EXPECT_EQ(start().GetConfigPath(), config());
    for (const char* name : {"melovane.mdb", "melovane.ini", "MelovaneJob.ini", "Skin/melovane.skn",
                             "Skin/Light.SKN", "Layout/default.grx"}) {
        EXPECT_EQ(read(config(QString::fromLatin1(name))), QByteArray("new ") + name);
    }
    EXPECT_EQ(suite.files().names(config(u"Skin")),
              (QStringList{u"Light.SKN"_s, u"melovane.skn"_s}));
    EXPECT_EQ(suite.files().names(config(u"Layout")), QStringList{u"default.grx"_s});
    EXPECT_TRUE(suite.files().folderExists(config(u"Image")));
    EXPECT_EQ(start().GetUserRegistryValue(u"SkinVersion"_s, u"null"_s), u"3.8"_s);
}

TEST_F(Paths, LanguageFilesComeWithTheFirstStart)
{
    suite.install(u"lang_English.ini"_s, "new");
    suite.install(u"language.ini"_s, "no language file");
    suite.folder().write(config(u"melovane.ini"), "old");
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_EQ(read(config(u"lang_English.ini")), "new");
    EXPECT_FALSE(suite.files().fileExists(config(u"language.ini")));
}

TEST_F(Paths, AUsersOwnWordingStaysUntilTheShippedTextsChange)
{
    suite.install(u"lang_English.ini"_s, "first");
    static_cast<void>(start().GetConfigPath());
    suite.folder().write(config(u"lang_English.ini"), "own");
    static_cast<void>(start().GetConfigPath());
    EXPECT_EQ(read(config(u"lang_English.ini")), "own");
    suite.install(u"lang_English.ini"_s, "second");
    static_cast<void>(start().GetConfigPath());
    EXPECT_EQ(read(config(u"lang_English.ini")), "second");
    QFile::remove(config(u"lang_English.ini"));
    static_cast<void>(start().GetConfigPath());
    EXPECT_EQ(read(config(u"lang_English.ini")), "second");
}

TEST_F(Paths, ANewReleaseReplacesSkinsOnlyNeverSettingsOrDatabase)
{
    installAll();
    for (const char* name : {"melovane.mdb", "melovane.ini", "Skin/melovane.skn", "Skin/own.skn",
                             "Layout/default.grx"}) {
        suite.folder().write(config(QString::fromLatin1(name)), "old");
    }
    start().SetUserRegistryValue(u"SkinVersion"_s, u"3.7"_s);
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_EQ(read(config(u"Skin/melovane.skn")), "new Skin/melovane.skn");
    EXPECT_EQ(read(config(u"Skin/own.skn")), "old");
    EXPECT_EQ(read(config(u"melovane.mdb")), "old");
    EXPECT_EQ(read(config(u"melovane.ini")), "old");
    EXPECT_EQ(read(config(u"Layout/default.grx")), "old");
    EXPECT_FALSE(suite.files().fileExists(config(u"MelovaneJob.ini")));
}

TEST_F(Paths, SkinsOfThisReleaseAreLeftAlone)
{
    installAll();
    suite.folder().write(config(u"Skin/melovane.skn"), "changed by the user");
    start().SetUserRegistryValue(u"SkinVersion"_s, u"3.8"_s);
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_EQ(read(config(u"Skin/melovane.skn")), "changed by the user");
}

TEST_F(Paths, ADeletedLayoutFolderComesBackWithTheDefaultLayoutAlone)
{
    installAll();
    EXPECT_EQ(start().GetConfigPath(), config());
    suite.folder().write(config(u"Layout/gridlayout_db.grx"), "mine");
    ASSERT_TRUE(suite.files().remove(config(u"Layout/gridlayout_db.grx")));
    ASSERT_TRUE(suite.files().remove(config(u"Layout/default.grx")));
    ASSERT_TRUE(QDir().rmdir(config(u"Layout")));
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_EQ(suite.files().names(config(u"Layout")), QStringList{u"default.grx"_s});
}

TEST_F(Paths, WithoutASkinVersionTheSkinsAreCopiedOnceMore)
{
    installAll();
    suite.folder().write(config(u"Skin/melovane.skn"), "old");
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_EQ(read(config(u"Skin/melovane.skn")), "new Skin/melovane.skn");
    EXPECT_EQ(start().GetUserRegistryValue(u"SkinVersion"_s, u"null"_s), u"3.8"_s);
}

TEST_F(Paths, TheCopyingHappensOncePerProcess)
{
    installAll();
    Mod_API paths = start();
    EXPECT_EQ(paths.GetConfigPath(), config());
    ASSERT_TRUE(suite.files().remove(config(u"Layout/default.grx")));
    ASSERT_TRUE(QDir().rmdir(config(u"Layout")));
    EXPECT_EQ(paths.GetConfigPath(), config());
    EXPECT_FALSE(suite.files().folderExists(config(u"Layout")));
}

TEST_F(Paths, AMissingFirstSetIsIgnored)
{
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_TRUE(suite.files().folderExists(config(u"Skin")));
    EXPECT_FALSE(suite.files().fileExists(config(u"melovane.mdb")));
}

TEST_F(Paths, FilesFromAReadOnlyProgramFolderCanBeWrittenInTheirCopy)
{
    installAll();
    const QString ini = path::join(suite.programFolder(), u"melovane.ini");
    ASSERT_TRUE(QFile::setPermissions(ini, QFile::ReadOwner | QFile::ReadOther));
    EXPECT_EQ(start().GetConfigPath(), config());
    EXPECT_TRUE(suite.profile().write(config(u"melovane.ini"), u"A"_s, u"b"_s, u"c"_s));
}

TEST_F(Paths, ALocalCopyKeepsEverythingBesideTheProgram)
{
    test::SuiteFolders stick(Layout::Local);
    stick.install(u"melovane.ini"_s, "mine");
    stick.install(u"Skin/melovane.skn"_s, "mine");
    EXPECT_EQ(stick.paths().GetConfigPath(), stick.programFolder());
    EXPECT_EQ(stick.folder().read(stick.configFile(u"melovane.ini"_s)), "mine");
    EXPECT_TRUE(stick.files().folderExists(stick.configFile(u"Layout"_s)));
}

TEST_F(Paths, AShellFolderThatCannotBeToldLeavesThePathAtTheRoot)
{
    EnvironmentPlaces places = suite.places();
    places.userDocuments = u""_s;
    places.userData = u""_s;
    LinuxEnvironment environment(places);

    class Untouchable : public LinuxFiles
    {
    public:
        bool makeFolder(const QString&) override { return false; }

        bool makeFolders(const QString&) override { return false; }

        void writeWhole(const QString& path, const QByteArray&) override
        {
            throw IoError(path, u"refused"_s);
        }
    } files;

    Mod_API paths(environment, files);
    EXPECT_EQ(paths.GetConfigPath(), u"/Melovane"_s);
    EXPECT_EQ(paths.GetPlaylistRoot(), u"/Melovane"_s);
}

TEST_F(Paths, AUserValueComesBackAndAnEmptyOneIsStoredAsOneBlank)
{
    Mod_API paths = start();
    EXPECT_EQ(paths.GetUserRegistryValue(u"gridlayout_db.grx"_s, u"none"_s), u"none"_s);
    paths.SetUserRegistryValue(u"gridlayout_db.grx"_s, u"repair"_s);
    EXPECT_EQ(paths.GetUserRegistryValue(u"gridlayout_db.grx"_s, u"none"_s), u"repair"_s);
    paths.SetUserRegistryValue(u"gridlayout_db.grx"_s, QString());
    EXPECT_EQ(paths.GetUserRegistryValue(u"gridlayout_db.grx"_s, u"none"_s), u" "_s);
}

TEST_F(Paths, TheVersionTextsFollowFromOneNumber)
{
    EXPECT_EQ(GetVersionString(), u"3.4 build(150)"_s);
    EXPECT_EQ(mainWindowCaption(), u"Melovane DB 3.4 build(150)"_s);
    EXPECT_EQ(databaseLevelOfThisRelease(), 34150);
}

} // namespace
} // namespace melovane
