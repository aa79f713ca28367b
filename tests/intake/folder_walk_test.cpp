#include "intake/folder_walk.h"
#include "platform/linux/linux_files.h"
#include "support/as_nobody.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class FolderWalkTest : public testing::Test
{
protected:
    QStringList walk(const QStringList& roots)
    {
        Skipped skipped;
        FolderWalk folders(m_files, roots, skipped);
        QStringList names;
        while (const auto files = folders.next()) {
            for (const FoundFile& file : *files) {
                names.append(file.path().mid(m_folder.path().size() + 1));
            }
        }
        m_refused = skipped.refused;
        m_kinds = kindsText(skipped);
        return names;
    }

    QStringList walk() { return walk({m_folder.path()}); }

    TempFolder m_folder;
    LinuxFiles m_files;
    std::vector<Refusal> m_refused;
    QString m_kinds;
};

TEST_F(FolderWalkTest, GivesMp3FilesOfAllSubfoldersInOrder)
{
    for (const QString& name : {u"b/2.mp3"_s, u"b/1.MP3"_s, u"a/x.Mp3"_s, u"z.mp3"_s,
                                u"b/c/3.mp3"_s, u"b/cover.jpg"_s, u"b/list.m3u"_s, u"mp3"_s}) {
        m_folder.write(name, "x");
    }
    EXPECT_EQ(walk(),
              (QStringList{u"z.mp3"_s, u"a/x.Mp3"_s, u"b/1.MP3"_s, u"b/2.mp3"_s, u"b/c/3.mp3"_s}));
}

TEST_F(FolderWalkTest, GivesALargeFolderInPartsWithItsOwnFilesStillBeforeThoseOfSubfolders)
{
    QStringList expected;
    for (int i = 0; i < 3 * FolderWalk::kNamesPerLook; ++i) {
        expected.append(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')));
        m_folder.write(expected.last(), "x");
    }
    m_folder.write(u"00001/first.mp3"_s, "x");
    m_folder.write(u"00700/second.mp3"_s, "x");
    expected += {u"00001/first.mp3"_s, u"00700/second.mp3"_s};
    EXPECT_EQ(walk(), expected);
    Skipped skipped;
    FolderWalk folders(m_files, {m_folder.path()}, skipped);
    while (const auto files = folders.next()) {
        EXPECT_LE(files->size(), static_cast<size_t>(FolderWalk::kNamesPerLook));
    }
}

TEST_F(FolderWalkTest, LeavesHiddenNamesOut)
{
    m_folder.write(u".trash/1.mp3"_s, "x");
    m_folder.write(u".hidden.mp3"_s, "x");
    m_folder.write(u"seen.mp3"_s, "x");
    EXPECT_EQ(walk(), QStringList{u"seen.mp3"_s});
}

TEST_F(FolderWalkTest, EndsWhereLinksGoInCircles)
{
    m_folder.write(u"a/b/1.mp3"_s, "x");
    ASSERT_TRUE(QFile::link(m_folder.path(), m_folder.file(u"a/b/up"_s)));
    ASSERT_TRUE(QFile::link(m_folder.file(u"a"_s), m_folder.file(u"a/self"_s)));
    EXPECT_EQ(walk(), QStringList{u"a/b/1.mp3"_s});
}

TEST_F(FolderWalkTest, FollowsALinkToAFolderElsewhere)
{
    const TempFolder elsewhere;
    elsewhere.write(u"1.mp3"_s, "x");
    ASSERT_TRUE(QFile::link(elsewhere.path(), m_folder.file(u"more"_s)));
    EXPECT_EQ(walk(), QStringList{u"more/1.mp3"_s});
}

TEST_F(FolderWalkTest, VisitsAFolderOnceThoughItIsChosenTwice)
{
    m_folder.write(u"a/1.mp3"_s, "x");
    EXPECT_EQ(walk({m_folder.path(), m_folder.file(u"a"_s)}).size(), 1);
}

TEST_F(FolderWalkTest, AFolderNamedLikeAFileIsAFolder)
{
    m_folder.write(u"album.mp3/1.mp3"_s, "x");
    EXPECT_EQ(walk(), QStringList{u"album.mp3/1.mp3"_s});
}

TEST_F(FolderWalkTest, NamesWhatIsNotThere)
{
    ASSERT_TRUE(QFile::link(u"/nowhere/at/all.mp3"_s, m_folder.file(u"dangling.mp3"_s)));
    EXPECT_TRUE(walk({m_folder.path(), u"/no/such/folder"_s}).isEmpty());
    ASSERT_EQ(m_refused.size(), 2U);
    EXPECT_EQ(m_refused[0].path, m_folder.file(u"dangling.mp3"_s));
    EXPECT_EQ(m_refused[0].code, 10002);
    EXPECT_EQ(m_refused[1].path, u"/no/such/folder"_s);
    EXPECT_EQ(m_refused[1].code, 10001);
}

TEST_F(FolderWalkTest, SoundOfOtherKindsIsCountedByKindAndNothingElseIs)
{
    for (const char* name : {"a.flac", "b.FLAC", "c.ogg", "sub/d.wma", "e.m4a", "cover.jpg", "x"}) {
        m_folder.write(QString::fromLatin1(name), "x");
    }
    m_folder.write(u"song.mp3"_s, "x");
    EXPECT_EQ(walk(), QStringList{u"song.mp3"_s});
    EXPECT_EQ(m_kinds, u"2 FLAC, 1 M4A, 1 Ogg, 1 WMA"_s);
    EXPECT_TRUE(m_refused.empty());
    EXPECT_TRUE(walk({m_folder.file(u"c.ogg"_s)}).isEmpty());
    EXPECT_EQ(m_kinds, u"1 Ogg"_s);
}

TEST_F(FolderWalkTest, AFolderThatCannotBeReadIsNamedAndAnEmptyOneIsNot)
{
    m_folder.write(u"locked/song.mp3"_s, "x");
    m_folder.write(u"open/song.mp3"_s, "x");
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"empty"_s));
    const QByteArray top = m_folder.path().toUtf8();
    ASSERT_EQ(::chmod(top.constData(), 0755), 0);
    ASSERT_EQ(::chmod((top + "/locked").constData(), 0), 0);
    {
        const AsNobody nobody;
        EXPECT_EQ(walk(), QStringList{u"open/song.mp3"_s});
    }
    ASSERT_EQ(::chmod((top + "/locked").constData(), 0755), 0);
    ASSERT_EQ(m_refused.size(), 1U);
    EXPECT_EQ(m_refused[0].path, m_folder.file(u"locked"_s) + u'/');
    EXPECT_EQ(m_refused[0].code, 20002);
}

TEST_F(FolderWalkTest, ASingleFileMayBeChosen)
{
    m_folder.write(u"one.mp3"_s, "x");
    EXPECT_EQ(walk({m_folder.file(u"one.mp3"_s)}), QStringList{u"one.mp3"_s});
}

} // namespace
