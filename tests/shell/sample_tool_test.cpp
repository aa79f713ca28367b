#include "shell/sample_tool.h"
#include "shell/window_fixture.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

class SampleToolTest : public test::WindowFixture
{
protected:
    SampleToolTest()
    {
        entry.FID = u"823456789012"_s;
        entry.PLID = Plid{17};
        entry.Titel = u"Licht"_s;
        entry.FrameStart = 5;
    }

    [[nodiscard]] QByteArray state()
    {
        return folders.files().read(data.file(u"global.kiv"_s), 10'000);
    }

    test::TempFolder data;
    MlvPlaylistDetail entry;
    SampleTool tool{{folders.files(), data.path(), folders.programFolder(), suite, siblings,
                     [this](const QString& program) { log.append(u"missing "_s + program); }}};
};

TEST_F(SampleToolTest, AToolThatRunsIsToldThatAnEntryLiesReady)
{
    settings->WriteKeyValue(u"Message"_s, u"Handle.Kiv"_s, u"99"_s);
    messages.alive.insert(99);
    taken();
    tool.edit(entry, 4711);
    EXPECT_EQ(taken(), QStringList{u"send 1229 0 0 to 99"_s});
    EXPECT_EQ(processes.commands, QStringList());
    EXPECT_TRUE(state().startsWith("823456789012\n"));
    EXPECT_TRUE(state().contains("\n 4711 \n 17 \n"));
}

TEST_F(SampleToolTest, AToolThatDoesNotRunIsStartedBehindTheStateFile)
{
    settings->WriteKeyValue(u"Message"_s, u"Handle.Kiv"_s, u"99"_s);
    taken();
    tool.edit(entry, 4711);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(processes.commands, QStringList{command(u"Melovanekiv.exe"_s)});
    EXPECT_FALSE(state().isEmpty());
}

TEST_F(SampleToolTest, AToolThatIsNotThereIsTold)
{
    processes.succeeds = false;
    taken();
    tool.edit(entry, 4711);
    EXPECT_EQ(taken(), QStringList{u"missing Melovanekiv"_s});
}

TEST_F(SampleToolTest, WhatTheToolHasWrittenIsReadBack)
{
    folders.install(u"global.kiv"_s, "823456789012\nx.mp3\n/x.mp3\n 1 \n 17 \n 0 \n 40 \n 900 \n");
    const SampleEdit edit = tool.read();
    EXPECT_EQ(edit.FID, u"823456789012"_s);
    EXPECT_EQ(edit.PLID, Plid{17});
    EXPECT_EQ(edit.FrameStart, 40);
    EXPECT_EQ(edit.FrameStop, 900);
}

TEST_F(SampleToolTest, WhatLiesInTheDataFolderComesBeforeWhatAnOlderToolHasLeft)
{
    folders.install(u"global.kiv"_s, "823456789012\nx.mp3\n/x.mp3\n 1 \n 17 \n 0 \n 40 \n 900 \n");
    entry.PLID = Plid{18};
    tool.edit(entry, 4711);
    EXPECT_EQ(tool.read().PLID, Plid{18});
    EXPECT_TRUE(folders.files()
                    .read(folders.programFolder() + u"/global.kiv"_s, 10'000)
                    .contains("\n 17 \n"));
}

TEST_F(SampleToolTest, WithoutAStateFileThereIsNoEntry)
{
    EXPECT_EQ(tool.read().PLID, Plid{});
    EXPECT_EQ(tool.read().FID, QString());
}

} // namespace

} // namespace melovane
