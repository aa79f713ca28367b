#include "platform/linux/linux_processes.h"
#include "shell/fakes.h"
#include "shell/sibling_control.h"
#include "support/suite_folders.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Style = Processes::WindowStyle;

struct SiblingControlTest : public testing::Test
{
    /// What was started, without the program folder in front.
    [[nodiscard]] QStringList commands() const
    {
        QStringList result;
        for (const QString& command : processes.commands) {
            EXPECT_TRUE(command.startsWith(folders.programFolder() + u'/'));
            result.append(command.sliced(folders.programFolder().size() + 1));
        }
        return result;
    }

    test::SuiteFolders folders;
    test::RecordingProcesses processes;
    SiblingControl siblings{folders.paths(), folders.files(), processes};
};

TEST_F(SiblingControlTest, StartLinesAreThoseThatTheSiblingsKnow)
{
    siblings.startConfig(4711);
    siblings.startImport(0);
    siblings.startImport(1);
    siblings.startImport(2);
    siblings.startStorePlaylists();
    siblings.startWriteTags(4711);
    siblings.startRebuildTree();
    siblings.startSleeveViewer(u"/music/a b.jpg"_s);
    siblings.startSampleTool();
    siblings.findTempo(u"auto"_s, u"123456789012"_s);
    siblings.findTempo(u"manuell"_s, u"123456789012"_s);
    siblings.startPlugIn(u"helper"_s, u"7"_s);
    siblings.startPlugIn(u"helper"_s, {});
    EXPECT_EQ(commands(),
              (QStringList{u"mlvconfig.exe 4711"_s, u"mediaintake.exe 1"_s,
                           u"tagbench.exe import"_s, u"mediaintake.exe 2"_s,
                           u"Task.StorePlaylists.exe "_s, u"Task.WriteTags.exe 4711"_s,
                           u"Task.RebuildTree.exe 1"_s, u"SleeveViewer.exe /music/a b.jpg"_s,
                           u"Melovanekiv.exe"_s, u"beatgauge.exe cmd=auto fid=123456789012"_s,
                           u"beatgauge.exe cmd=manuell fid=123456789012"_s, u"helper.exe 7"_s,
                           u"helper.exe "_s}));
    EXPECT_EQ(
        processes.styles,
        (std::vector{Style::Normal, Style::Normal, Style::Normal, Style::Normal, Style::Minimised,
                     Style::Minimised, Style::Minimised, Style::Normal, Style::Normal,
                     Style::Minimised, Style::Minimised, Style::Normal, Style::Normal}));
}

TEST_F(SiblingControlTest, TheProgramAndItsArgumentsTravelApart)
{
    siblings.startWriteTags(4711);
    siblings.startPlugIn(u"my helper"_s, u"7"_s);
    EXPECT_EQ(processes.programs, (QStringList{folders.programFolder() + u"/Task.WriteTags.exe"_s,
                                               folders.programFolder() + u"/my helper.exe"_s}));
}

TEST(SiblingControlOnDisk, AForeignFileBeforeTheBlankOfTheProgramFolderIsNeverStarted)
{
    test::SuiteFolders outer;
    EnvironmentPlaces places = outer.places();
    places.programFolder += u"/My Programs"_s;
    ASSERT_TRUE(QDir().mkpath(places.programFolder));
    const QString foreign = outer.install(u"My"_s, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(foreign, QFile::ReadOwner | QFile::ExeOwner));
    LinuxEnvironment environment(places);
    Mod_API paths(environment, outer.files());
    LinuxProcesses processes;
    ASSERT_TRUE(processes.start(foreign, Style::Normal));
    SiblingControl siblings(paths, outer.files(), processes);
    EXPECT_FALSE(siblings.startRebuildTree());
    EXPECT_FALSE(siblings.startPlugIn(u"helper"_s, u"7"_s));
    const QString ours = outer.install(u"My Programs/Task.RebuildTree"_s, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(ours, QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_TRUE(siblings.startRebuildTree());
}

TEST_F(SiblingControlTest, ThreeProgramsAreStartedOnlyWhereTheyAreInstalled)
{
    EXPECT_FALSE(siblings.startTagEditor());
    EXPECT_FALSE(siblings.startLevelPanel());
    EXPECT_FALSE(siblings.startJobs());
    EXPECT_EQ(commands(), QStringList());
    folders.install(u"tagbench.exe"_s, "x");
    folders.install(u"LevelPanel"_s, "x");
    folders.install(u"MelovaneJob"_s, "x");
    EXPECT_TRUE(siblings.startTagEditor());
    EXPECT_TRUE(siblings.startLevelPanel());
    EXPECT_TRUE(siblings.startJobs());
    EXPECT_EQ(commands(),
              (QStringList{u"tagbench.exe edit"_s, u"LevelPanel.exe"_s, u"MelovaneJob.exe"_s}));
    EXPECT_EQ(processes.styles, (std::vector{Style::Normal, Style::Normal, Style::Hidden}));
}

TEST_F(SiblingControlTest, TwoAutomaticRequestsForATrackStartTheFinderOnceTwoManualOnesTwice)
{
    siblings.StartBeatGauge(u"auto"_s, u"1"_s, u"0"_s);
    siblings.StartBeatGauge(u"auto"_s, u"1"_s, u"0"_s);
    EXPECT_EQ(commands().size(), 1);
    siblings.StartBeatGauge(u"Manuell"_s, u"1"_s, u"0"_s);
    siblings.StartBeatGauge(u"MANUELL"_s, u"1"_s, u"0"_s);
    EXPECT_EQ(commands().size(), 3);
    siblings.StartBeatGauge(u"auto"_s, u"2"_s, u"0"_s);
    siblings.StartBeatGauge(u"auto"_s, u"1"_s, u"0"_s);
    EXPECT_EQ(commands().size(), 5);
}

TEST_F(SiblingControlTest, APlidOf0OrNoneAddsNoArgument)
{
    siblings.StartBeatGauge(u"auto"_s, u" 1 "_s, u"0"_s);
    siblings.StartBeatGauge(u"auto"_s, u"2"_s, {});
    siblings.StartBeatGauge(u" auto "_s, u"3"_s, u" 77 "_s);
    EXPECT_EQ(commands(),
              (QStringList{u"beatgauge.exe fid=1 cmd=auto"_s, u"beatgauge.exe fid=2 cmd=auto"_s,
                           u"beatgauge.exe fid=3 cmd=auto plid=77"_s}));
}

TEST_F(SiblingControlTest, TheHelpIsOpenedWhereItIsInstalled)
{
    EXPECT_FALSE(siblings.openPage(kHelpPage));
    const QString file = folders.install(u"Melovane.html"_s, "x");
    EXPECT_TRUE(siblings.openPage(kHelpPage));
    EXPECT_EQ(processes.commands, QStringList{u"explorer.exe "_s + file});
}

} // namespace
} // namespace melovane
