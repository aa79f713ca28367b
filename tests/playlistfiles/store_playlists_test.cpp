#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/system/io_error.h"
#include "playlistfiles/m3u_fixture.h"
#include "playlistfiles/store_playlists.h"

#include <QFile>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class StorePlaylistsTest : public M3uTest
{
protected:
    StorePlaylistsTest()
    {
        MelovaneConfiguration::fill(texts);
        lists.settings->SetPlaylistVerzeichnis(music.path() + u'/');
    }

    int changedList(const QString& name, int group)
    {
        const int list = lists.library.addPlaylist(
            {.Name = name, .GRID = group, .tracks = {track}, .Sicherung = true});
        return list;
    }

    QStringList marked()
    {
        return lists.column(u"select name from pl_name where sicherung=true order by nid"_s);
    }

    StorePlaylists::Result run()
    {
        written.clear();
        return StorePlaylists(*lists.engine, *lists.settings, lists.files, texts)
            .run(
                [this](const QString& file) { written.append(file.mid(music.path().size() + 1)); });
    }

    ConfigObjects texts{lists.folders.paths(), lists.folders.profile(), lists.files};
    QString track = lists.library.add({});
    int rock = lists.library.addGroup(u"Rock/Pop"_s);
    int dance = lists.library.addGroup(u"Dance"_s);
    QStringList written;
};

TEST_F(StorePlaylistsTest, EachChangedListIsWrittenIntoTheFolderOfItsGroupAndUnmarked)
{
    const int first = changedList(u"A: B"_s, rock);
    changedList(u"C"_s, dance);
    lists.library.addPlaylist({.Name = u"unchanged"_s, .GRID = dance});
    const auto result = run();
    EXPECT_EQ(result.written, 2);
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(written, (QStringList{u"Rock_Pop/A_ B.m3u"_s, u"Dance/C.m3u"_s}));
    EXPECT_EQ(marked(), QStringList());
    QString target = music.file(u"by hand.m3u"_s);
    ASSERT_TRUE(m3u.SavePlaylist(Pnid(first), target, false, {}));
    EXPECT_EQ(music.read(u"Rock_Pop/A_ B.m3u"_s), music.read(u"by hand.m3u"_s));
    EXPECT_EQ(lists.files.names(music.file(u"Dance"_s)), QStringList{u"C.m3u"_s});
}

TEST_F(StorePlaylistsTest, EntriesWhoseTrackIsGoneAreNamedWithTheirList)
{
    changedList(u"A"_s, rock);
    const int list = changedList(u"B"_s, rock);
    lists.execute(
        u"insert into pl_all (PNID, SID, FID) values (%1, 1, '800000000099')"_s.arg(list));
    const auto result = run();
    EXPECT_EQ(result.written, 2);
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(result.leftOut, QStringList{u"B, 1: 800000000099"_s});
}

TEST_F(StorePlaylistsTest, AListIsStoredInPlaceOfALinkAndNeverThroughIt)
{
    changedList(u"A"_s, rock);
    changedList(u"B"_s, rock);
    music.write(u"04.mp3"_s, "a track");
    ASSERT_TRUE(lists.files.makeFolder(music.file(u"Rock_Pop"_s)));
    ASSERT_TRUE(QFile::link(music.file(u"04.mp3"_s), music.file(u"Rock_Pop/A.m3u"_s)));
    ASSERT_TRUE(QFile::link(music.file(u"05.mp3"_s), music.file(u"Rock_Pop/B.m3u"_s)));
    EXPECT_EQ(run().written, 2);
    EXPECT_EQ(music.read(u"04.mp3"_s), "a track");
    EXPECT_EQ(lists.files.names(music.path()), (QStringList{u"04.mp3"_s, u"Rock_Pop"_s}));
    for (const QString& name : {u"Rock_Pop/A.m3u"_s, u"Rock_Pop/B.m3u"_s}) {
        EXPECT_FALSE(lists.files.facts(music.file(name))->isLink);
        EXPECT_TRUE(music.read(name).startsWith("#Melovane-M3U"));
    }
}

TEST_F(StorePlaylistsTest, NothingChangedWritesNothing)
{
    EXPECT_EQ(run().written, 0);
    EXPECT_EQ(lists.files.names(music.path()), QStringList());
}

TEST_F(StorePlaylistsTest, JingleListsHaveNoFile)
{
    changedList(u"Jingles"_s, -1);
    EXPECT_EQ(run().written, 0);
}

TEST_F(StorePlaylistsTest, ListsAndGroupsOfTheSameNameNeverReplaceOneAnother)
{
    const int other = lists.library.addGroup(u"dance"_s);
    const int small = changedList(u"x"_s, dance);
    const int large = changedList(u"X"_s, dance);
    changedList(u"x"_s, other);
    changedList(u"x"_s, 4711); // a group that is gone
    run();
    EXPECT_EQ(written, (QStringList{u"Dance (%1)/x (%2).m3u"_s.arg(dance).arg(small),
                                    u"Dance (%1)/X (%2).m3u"_s.arg(dance).arg(large),
                                    u"dance (%1)/x.m3u"_s.arg(other), u"_/x.m3u"_s}));
}

TEST_F(StorePlaylistsTest, AListThatTakesTheNameOfAnotherLeavesItsFileAlone)
{
    const int first = changedList(u"Alpha"_s, dance);
    const int second = changedList(u"Beta"_s, dance);
    run();
    const QByteArray beta = music.read(u"Dance/Beta.m3u"_s);
    lists.execute(u"update pl_name set name='Beta', sicherung=true where nid=%1"_s.arg(first));
    lists.execute(u"delete from pl_all where pnid=%1"_s.arg(first));
    run();
    EXPECT_EQ(written, QStringList{u"Dance/Beta (%1).m3u"_s.arg(first)});
    EXPECT_EQ(music.read(u"Dance/Beta.m3u"_s), beta);
    lists.execute(u"update pl_name set sicherung=true where nid=%1"_s.arg(second));
    run();
    EXPECT_EQ(written, QStringList{u"Dance/Beta (%1).m3u"_s.arg(second)});
}

TEST_F(StorePlaylistsTest, AListThatMovesToAnotherGroupGetsItsFileThere)
{
    const int list = changedList(u"C"_s, dance);
    run();
    const QByteArray bytes = music.read(u"Dance/C.m3u"_s);
    lists.names.arrange({{Pnid(list), GroupId(rock), 1}});
    EXPECT_TRUE(m3u.IsChangePlaylist());
    run();
    EXPECT_EQ(written, QStringList{u"Rock_Pop/C.m3u"_s});
    EXPECT_EQ(music.read(u"Rock_Pop/C.m3u"_s), bytes);
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(StorePlaylistsTest, NamesOfDotsLeadNowhereAndLongOnesHaveRoomForTheirNumber)
{
    const int dots = lists.library.addGroup(u".."_s);
    changedList(u"."_s, dots);
    const QString name(126, u'ü');
    changedList(name, dance);
    changedList(name, dance);
    const auto result = run();
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(written[0], u"__/_.m3u"_s);
    EXPECT_NE(written[1], written[2]);
    EXPECT_EQ(lists.files.names(music.path()), (QStringList{u"Dance"_s, u"__"_s}));
}

TEST_F(StorePlaylistsTest, AListThatCannotBeWrittenStaysMarkedAndTheOthersAreWritten)
{
    changedList(u"bad"_s, rock);
    changedList(u"good"_s, dance);
    music.write(u"Rock_Pop"_s, "a file where the folder should be");
    const auto result = run();
    EXPECT_EQ(result.written, 1);
    ASSERT_EQ(result.failures.size(), 1);
    EXPECT_EQ(result.failures[0],
              u"bad: der Ordner %1 lässt sich nicht anlegen"_s.arg(music.file(u"Rock_Pop"_s)));
    EXPECT_EQ(marked(), QStringList{u"bad"_s});
}

/// A disk that takes no more bytes.
class FullDisk : public LinuxFiles
{
public:
    void writeNamed(const QString& path, const QByteArray&) override
    {
        throw IoError(path, u"No space left on device"_s);
    }
};

TEST_F(StorePlaylistsTest, OnAFullDiskAllStayMarkedAndTheReasonIsTold)
{
    changedList(u"A"_s, rock);
    changedList(u"B"_s, rock);
    FullDisk full;
    const auto result = StorePlaylists(*lists.engine, *lists.settings, full, texts).run();
    const QString reason = texts.text(u"system.full"_s);
    EXPECT_EQ(reason, u"auf dem Datenträger ist kein Platz mehr"_s);
    EXPECT_EQ(result.failures, (QStringList{u"A: "_s + reason, u"B: "_s + reason}));
    EXPECT_EQ(marked(), (QStringList{u"A"_s, u"B"_s}));
}

} // namespace
} // namespace melovane::test
