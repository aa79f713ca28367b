#include "platform/system/io_error.h"
#include "playlistfiles/m3u_fixture.h"
#include "playlistfiles/m3u_writer.h"

#include <QFile>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class M3uWriterTest : public M3uTest
{
protected:
    /// Two entries with all kinds of values.
    Pnid sampleList(const QString& name = u"Party"_s)
    {
        const QString first = lists.library.add({.FID = u"800000000001"_s,
                                                 .Titel = u"Ä \"quoted\" 'title'"_s,
                                                 .Interpret = u"Müller"_s,
                                                 .Genre = u"Rock"_s,
                                                 .BPM = u"128"_s,
                                                 .Path = u"C:\\Musik\\"_s,
                                                 .DName = u"ä.mp3"_s,
                                                 .DTimeMsec = 216'000});
        const QString second = lists.library.add(
            {.FID = u"800000000002"_s, .Titel = u"A|B"_s, .Interpret = {}, .DName = u"b.mp3"_s});
        const int list = lists.library.addPlaylist({.Name = name, .tracks = {first, second}});
        lists.execute(u"update pl_all set FrameStart=10, FrameStop=-20, Volume=5, Pitch=-3, "
                      "MixTime=5000, MixIn='5000,2000,3000,0,10000', MixOut='', EQ='1,2' where "
                      "fid='800000000001'"_s);
        lists.execute(u"update pl_all set FrameStop=Null where fid='800000000002'"_s);
        return Pnid(list);
    }

    QByteArray saved(Pnid list, bool relative = false)
    {
        QString target = music.file(u"out.m3u"_s);
        EXPECT_TRUE(m3u.SavePlaylist(list, target, relative, {}));
        return music.read(u"out.m3u"_s);
    }
};

const QByteArray kHead = "#Melovane-M3U www.melovane.example\r\n#MLV:VER=1.0\r\n";

TEST_F(M3uWriterTest, EveryLineIsWrittenInItsExactForm)
{
    EXPECT_EQ(saved(sampleList()), kHead +
                                       "#MLV:FID=800000000001\r\n"
                                       "#MLV:TIT=\xC3\x84 \"quoted\" 'title'|M\xC3\xBCller|Rock\r\n"
                                       "#MLV:VOL= 5 |-3 |128| 216000 \r\n"
                                       "#MLV:MIX= 10 |-20 | 5000 |5000,2000,3000,0,10000||1,2\r\n"
                                       "C:\\Musik\\\xC3\xA4.mp3\r\n"
                                       "#MLV:FID=800000000002\r\n"
                                       "#MLV:TIT=A|B|Null|Null\r\n"
                                       "#MLV:VOL= 0 | 0 |Null| 216000 \r\n"
                                       "#MLV:MIX= 0 |Null| 0 |Null|Null|Null\r\n"
                                       "/music/b.mp3\r\n");
}

TEST_F(M3uWriterTest, RelativeNamesStandWithoutTheirFolder)
{
    const Pnid list = sampleList();
    lists.execute(u"update db_all set DName='#1 hit.mp3' where fid='800000000002'"_s);
    const QList<QByteArray> lines = saved(list, true).split('\n');
    EXPECT_EQ(lines.at(6), "\xC3\xA4.mp3\r");
    EXPECT_EQ(lines.at(11), "./#1 hit.mp3\r"); // no comment
}

TEST_F(M3uWriterTest, AnEmptyListWritesTheHeadAlone)
{
    EXPECT_EQ(saved(Pnid(lists.library.addPlaylist({}))), kHead);
}

TEST_F(M3uWriterTest, SlashAndColonInTheNameOfAListBecomeUnderscoresInThatOfItsFile)
{
    const Pnid list = sampleList(u"  Set 1/2: \"a\\b\" *?<>|\t "_s);
    QString target;
    ASSERT_TRUE(m3u.SavePlaylist(list, target, false, music.path()));
    EXPECT_EQ(target, music.file(u"Set 1_2_ _a_b_ ______.m3u"_s));
    EXPECT_TRUE(music.read(target).startsWith(kHead));
}

TEST_F(M3uWriterTest, AnEmptyListIsNamedAfterItselfToo)
{
    QString target;
    ASSERT_TRUE(m3u.SavePlaylist(Pnid(lists.library.addPlaylist({.Name = u"Leer"_s})), target,
                                 false, music.path()));
    EXPECT_EQ(target, music.file(u"Leer.m3u"_s));
}

TEST_F(M3uWriterTest, ATargetOfAnotherKindGetsTheExtensionBehindItAndCapitalsStay)
{
    EXPECT_EQ(m3uline::withExtension(u"/x/list.txt"_s), u"/x/list.txt.m3u"_s);
    EXPECT_EQ(m3uline::withExtension(u"/x/list.M3U"_s), u"/x/list.M3U"_s);
    EXPECT_EQ(m3uline::withExtension(u"/x.m3u/list"_s), u"/x.m3u/list.m3u"_s);
    QString target = music.file(u"list.txt"_s);
    ASSERT_TRUE(m3u.SavePlaylist(sampleList(), target, false, {}));
    EXPECT_EQ(target, music.file(u"list.txt.m3u"_s));
}

TEST_F(M3uWriterTest, ATitleWithABarIsWrittenAsItStandsAndReadingSplitsItThere)
{
    const QByteArray bytes = saved(sampleList());
    EXPECT_TRUE(bytes.contains("#MLV:TIT=A|B|Null|Null\r\n"));
    M3uParser parser;
    M3uLines lines(bytes);
    M3uRecord last;
    while (const auto line = lines.next()) {
        last = parser.take(*line).value_or(last);
    }
    EXPECT_EQ(last.Titel, u"A"_s);
    EXPECT_EQ(last.Interpret, u"B"_s);
}

TEST_F(M3uWriterTest, ANullMixStyleIsWrittenAsNullAndReadsBackAsNoStyle)
{
    const Pnid list = sampleList();
    QString target = music.file(u"out.m3u"_s);
    ASSERT_TRUE(m3u.SavePlaylist(list, target, false, {}));
    ASSERT_EQ(m3u.LoadPlaylist(target), 0);
    EXPECT_EQ(m3u.Append(list), 2);
    EXPECT_EQ(rows(u"select MixIn, MixOut, EQ from pl_all where pnid=%1 order by sid"_s.arg(
                  numberOf(list))),
              (QStringList{u"5000,2000,3000,0,10000||1,2"_s, u"Null|Null|Null"_s,
                           u"5000,2000,3000,0,10000||1,2"_s, u"||"_s}));
}

TEST_F(M3uWriterTest, EntriesStandInTheOrderOfTheirPositions)
{
    const Pnid list = sampleList();
    lists.execute(u"update pl_all set sid=99 where fid='800000000001'"_s);
    const QByteArray bytes = saved(list);
    EXPECT_LT(bytes.indexOf("800000000002"), bytes.indexOf("800000000001"));
}

TEST_F(M3uWriterTest, ALineEndInAValueNeverMakesALine)
{
    const Pnid list = sampleList();
    lists.execute(u"update db_all set Titel='x' + chr(13) + chr(10) + '/etc/passwd'"_s);
    const QByteArray bytes = saved(list);
    EXPECT_TRUE(bytes.contains("#MLV:TIT=x  /etc/passwd|"));
    EXPECT_EQ(bytes.count("\r\n"), 12);
    EXPECT_EQ(bytes.count('\n'), 12);
}

TEST_F(M3uWriterTest, NamesOfListsThatNoFileCanHaveAreMadeOnesThatItCan)
{
    EXPECT_EQ(m3uline::fileName(Value()), u"_"_s);
    EXPECT_EQ(m3uline::fileName(u"  "_s), u"_"_s);
    EXPECT_EQ(m3uline::fileName(u".Test:x"_s), u"_Test_x"_s)
        << "a hidden file is shown by no player";
    EXPECT_EQ(m3uline::fileName(u"a\nb"_s), u"a_b"_s);
    EXPECT_EQ(m3uline::fileName(QString(255, u'ä')).toUtf8().size(), 250);
    EXPECT_EQ(m3uline::replaced(Value(), u"ab", u'_'), QString());
    EXPECT_EQ(m3uline::replaced(u"cabbage"_s, u"ab", u'_'), u"c____ge"_s);
}

TEST_F(M3uWriterTest, SavingNeverClearsTheMarkOfAChangedList)
{
    const Pnid list = sampleList();
    lists.execute(u"update pl_name set sicherung=true"_s);
    static_cast<void>(saved(list));
    EXPECT_EQ(lists.value(u"select sicherung from pl_name"_s).toLong(), -1);
}

TEST_F(M3uWriterTest, AChangedListIsSeenAndAllCanBeMarked)
{
    EXPECT_FALSE(m3u.IsChangePlaylist());
    sampleList();
    EXPECT_FALSE(m3u.IsChangePlaylist());
    m3u.ChangeAllPlaylist();
    EXPECT_TRUE(m3u.IsChangePlaylist());
}

TEST_F(M3uWriterTest, ANewListStandsAtThePositionOfItsNumber)
{
    const int group = lists.library.addGroup(u"G"_s);
    lists.library.addPlaylist({});
    for (const QString& name : {u"Neu"_s, u"O'Neill \"x\""_s, QString(300, u'x')}) {
        const Pnid list = m3u.CreatePlaylist(name, GroupId(group));
        EXPECT_NE(numberOf(list), 0);
        EXPECT_EQ(rows(u"select name, grid, sid from pl_name where nid=%1"_s.arg(numberOf(list))),
                  QStringList{name.left(255) + u"|%1|%2"_s.arg(group).arg(numberOf(list))});
    }
}

TEST_F(M3uWriterTest, AListIsNeverWrittenThroughALink)
{
    const Pnid list = sampleList();
    music.write(u"04.mp3"_s, "a track");
    ASSERT_TRUE(QFile::link(music.file(u"04.mp3"_s), music.file(u"out.m3u"_s)));
    ASSERT_TRUE(QFile::link(music.file(u"gone.mp3"_s), music.file(u"other.m3u"_s)));
    for (const QString& name : {u"out.m3u"_s, u"other.m3u"_s}) {
        QString target = music.file(name);
        EXPECT_TRUE(m3u.SavePlaylist(list, target, false, {}));
        EXPECT_TRUE(music.read(name).startsWith("#Melovane-M3U")) << music.read(name).toStdString();
        EXPECT_FALSE(lists.files.facts(music.file(name))->isLink);
    }
    EXPECT_EQ(music.read(u"04.mp3"_s), "a track");
    EXPECT_FALSE(lists.files.fileExists(music.file(u"gone.mp3"_s)));
}

/// A disk on which nothing can be written any more.
class FullDisk : public LinuxFiles
{
public:
    void writeNamed(const QString& path, const QByteArray&) override
    {
        throw IoError(path, u"No space left on device"_s);
    }
};

TEST_F(M3uWriterTest, AFullDiskIsToldAndTheOldFileAndTheMarkStay)
{
    const Pnid list = sampleList();
    lists.execute(u"update pl_name set sicherung=true"_s);
    music.write(u"out.m3u"_s, "old");
    FullDisk full;
    MlvM3U writer({*lists.engine,
                   *lists.settings,
                   full,
                   lists.locator,
                   *reader,
                   lists.clock,
                   lists.history,
                   lists.snapshots,
                   {lists.dataFolder()}});
    writer.events = m3u.events;
    QString target = music.file(u"out.m3u"_s);
    EXPECT_FALSE(writer.SavePlaylist(list, target, false, {}));
    EXPECT_EQ(told, QStringList{u"20002 SavePlaylist ! No space left on device"_s});
    EXPECT_EQ(music.read(u"out.m3u"_s), "old");
    EXPECT_TRUE(log().contains("MlvM3U.SavePlaylist"));
    EXPECT_TRUE(log().contains("No space left on device"));
    EXPECT_TRUE(m3u.IsChangePlaylist());
}

TEST_F(M3uWriterTest, AFolderThatIsGoneIsToldAndNoFileIsBegun)
{
    QString target;
    EXPECT_FALSE(m3u.SavePlaylist(sampleList(), target, false, music.file(u"gone"_s)));
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(target, QString());
    EXPECT_EQ(lists.files.names(music.path()), QStringList());
}

} // namespace
} // namespace melovane::test
