#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "support/suite_folders.h"
#include "views/command_gate.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct CommandGateTest : public testing::Test
{
    CommandGateTest() { MelovaneConfiguration::fill(texts); }

    test::SuiteFolders folders;
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    QStringList installed;
    QStringList running;
    bool playerThere = true;
    bool readOnly = false;
    CommandGate gate{
        texts,
        {.isInstalled = [this](const QString& program) { return installed.contains(program); },
         .isRunning = [this](const QString& program) { return running.contains(program); },
         .isPlayerThere = [this] { return playerThere; },
         .isReadOnly = [this] { return readOnly; }}};
};

TEST_F(CommandGateTest, ACommandWithoutItsProgramSaysWhichIsMissingInTheUsersWords)
{
    const QStringList commands = {
        u"mnuConfig"_s,         u"mnuImpMP3_0"_s,          u"mnuImpMP3_1"_s,
        u"mnuImpMP3_2"_s,       u"mnuToDatei"_s,           u"mnuExpPlaylistBas"_s,
        u"mnuRefreshTree"_s,    u"all.import"_s,           u"mnuImpMP3_1"_s,
        u"all.sample"_s,        u"all.volume"_s,           u"show.tageditor"_s,
        u"show.melovane.kiv"_s, u"BeatGauge.Menu.Click"_s, u"BeatGauge.Menu.Manuell.Click"_s};
    for (const QString& command : commands) {
        const QString reason = gate.whyNot(command);
        EXPECT_TRUE(reason.endsWith(u"ist nicht installiert"_s)) << command.toStdString();
        EXPECT_FALSE(reason.contains(u"mediaintake"_s) || reason.contains(u"Task."_s));
    }
    installed = QStringList{u"mlvconfig"_s,           u"mediaintake"_s,    u"tagbench"_s,
                            u"Task.StorePlaylists"_s, u"Task.WriteTags"_s, u"Task.RebuildTree"_s,
                            u"Melovanekiv"_s,         u"LevelPanel"_s,     u"beatgauge"_s};
    for (const QString& command : commands) {
        EXPECT_EQ(gate.whyNot(command), QString()) << command.toStdString();
    }
}

TEST_F(CommandGateTest, AProgramThatRunsNeedsNoFileInTheProgramFolder)
{
    running = QStringList{u"Melovanekiv"_s, u"LevelPanel"_s};
    for (const QString& command : {u"all.sample"_s, u"all.volume"_s, u"show.melovane.kiv"_s}) {
        EXPECT_EQ(gate.whyNot(command), QString()) << command.toStdString();
    }
    EXPECT_NE(gate.whyNot(u"show.tageditor"), QString());
}

TEST_F(CommandGateTest, WhatWritesIsRefusedInAReadOnlyLibraryAndWhatReadsIsNot)
{
    readOnly = true;
    for (const QString& command :
         {u"all.delete"_s, u"all.clip.cut"_s, u"all.clip.insert"_s, u"all.db.append"_s,
          u"all.undo"_s, u"note"_s, u"aktion"_s, u"mnuImpPlaylistBas"_s, u"mnuDelDayCount"_s}) {
        EXPECT_EQ(gate.whyNot(command), texts.text(u"library.readonly"_s)) << command.toStdString();
    }
    for (const QString& command : {u"all.copy"_s, u"play.start"_s, u"mnuAktivePlaylist"_s}) {
        EXPECT_EQ(gate.whyNot(command), QString()) << command.toStdString();
    }
}

TEST_F(CommandGateTest, TheReasonIsTheOneThatTheUserMustEndFirst)
{
    CommandPlace place{.isLent = true,
                       .hasRow = false,
                       .hasList = false,
                       .isLocked = true,
                       .canUndo = false,
                       .canRedo = false};
    EXPECT_EQ(gate.whyNot(u"all.delete", place), texts.text(u"library.lent.title"_s));
    place.isLent = false;
    EXPECT_EQ(gate.whyNot(u"all.delete", place), texts.text(u"playlist.none.title"_s));
    place.hasList = true;
    EXPECT_EQ(gate.whyNot(u"all.delete", place), texts.text(u"playlist.norows.locked"_s));
    place.isLocked = false;
    EXPECT_EQ(gate.whyNot(u"all.delete", place), texts.text(u"command.norow"_s));
    place.hasRow = true;
    EXPECT_EQ(gate.whyNot(u"all.delete", place), QString());
    EXPECT_EQ(gate.whyNot(u"all.undo", place), texts.text(u"history.undo.nothing"_s));
    EXPECT_EQ(gate.whyNot(u"all.redo", place), texts.text(u"history.redo.nothing"_s));
    playerThere = false;
    EXPECT_EQ(gate.whyNot(u"play.next", place), texts.text(u"status.player.missing"_s));
}

TEST_F(CommandGateTest, TheKeyOfACommandIsTheUsersBinding)
{
    EXPECT_EQ(commandKey(*settings, u"all.copy"), QString()) << "keys are not loaded yet";
    settings->InitTasten();
    EXPECT_EQ(commandKey(*settings, u"all.clip.append"), u"Ctrl+A"_s);
    EXPECT_EQ(commandKey(*settings, u"play.sofort"), u"Ctrl+S"_s);
    EXPECT_EQ(commandKey(*settings, u"all.clip.cut"), u"Ctrl+X"_s);
    EXPECT_EQ(commandKey(*settings, u"play.start"), QString());
    settings->Tasten(u"PLPLMonitorPlay"_s).KeyName = u"STRG-TASTE + P-TASTE"_s;
    EXPECT_EQ(commandKey(*settings, u"play.start"), u"Ctrl+P"_s);
    EXPECT_EQ(commandKey(*settings, u"no.such.command"), QString());
}

} // namespace
} // namespace melovane
