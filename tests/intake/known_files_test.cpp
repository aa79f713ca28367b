#include "intake/intake_fixture.h"

#include <QDir>
#include <QFile>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// Three files in two folders, and names that lead to them.
class KnownFilesTest : public IntakeFixture
{
protected:
    void SetUp() override
    {
        for (const QString& name : {u"Album/a.mp3"_s, u"Album/b.mp3"_s, u"c.mp3"_s}) {
            music.write(name, simpleMp3(name, u"Artist"_s));
        }
        ASSERT_TRUE(QFile::link(music.path(), link()));
    }

    [[nodiscard]] QString link() const { return m_elsewhere.file(u"Musik"_s); }

    IntakeReport importOf(const QStringList& folders)
    {
        IntakeOrder what = order();
        what.folders = folders;
        return run(what);
    }

    /// Imports one folder, then the same files by another name of theirs.
    void expectKnown(const QString& first, const QString& then)
    {
        ASSERT_EQ(importOf({first}).added, 3);
        const QStringList before = suite.column(u"select Path & DName from db_all"_s);
        const IntakeReport report = importOf({then});
        EXPECT_EQ(report.added, 0);
        EXPECT_EQ(report.known, 3);
        EXPECT_EQ(suite.column(u"select Path & DName from db_all"_s), before);
    }

    TempFolder m_elsewhere;
};

TEST_F(KnownFilesTest, AFolderThatIsReachedThroughALinkIsTheSame)
{
    expectKnown(music.path(), link());
}

TEST_F(KnownFilesTest, AFolderThatIsStoredThroughALinkIsTheSame)
{
    expectKnown(link(), music.path());
}

TEST_F(KnownFilesTest, TwoLinksLeadToTheSame)
{
    ASSERT_TRUE(QFile::link(music.path(), m_elsewhere.file(u"Zweite"_s)));
    expectKnown(link(), m_elsewhere.file(u"Zweite"_s));
}

TEST_F(KnownFilesTest, ADetourThroughTheFolderAboveIsTheSame)
{
    expectKnown(music.path(), music.file(u"Album/.."_s));
}

TEST_F(KnownFilesTest, WhatIsNewInAKnownFolderEntersThroughItsLink)
{
    ASSERT_EQ(importOf({music.path()}).added, 3);
    music.write(u"Album/new.mp3"_s, simpleMp3(u"New"_s, u"Artist"_s));
    const IntakeReport report = importOf({link()});
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.known, 3);
    EXPECT_EQ(of(u"new.mp3"_s, u"Path"_s).toText(), link() + u"/Album/"_s);
    EXPECT_EQ(importOf({music.path()}).known, 4);
}

TEST_F(KnownFilesTest, ALinkToAFileOfTheLibraryIsThatFile)
{
    ASSERT_EQ(importOf({music.path()}).added, 3);
    TempFolder stick;
    ASSERT_TRUE(QFile::link(music.file(u"Album/a.mp3"_s), stick.file(u"01 Song.mp3"_s)));
    EXPECT_EQ(importOf({stick.path()}).known, 1);
    EXPECT_EQ(rows(), 3);
}

TEST_F(KnownFilesTest, AFileThatWasMissingIsThereAgainUnderEachOfItsNames)
{
    ASSERT_EQ(importOf({music.path()}).added, 3);
    suite.execute(u"update db_all set del=2 where DName='a.mp3'"_s);
    EXPECT_EQ(importOf({link()}).returned, 1);
    EXPECT_EQ(of(u"a.mp3"_s, u"DEL"_s).toLong(), 0);
}

TEST_F(KnownFilesTest, FoldersOfOneNameAreNotOneFolder)
{
    TempFolder other;
    other.write(u"Album/a.mp3"_s, simpleMp3(u"Other"_s, u"Artist"_s));
    ASSERT_EQ(importOf({music.path()}).added, 3);
    EXPECT_EQ(importOf({other.path()}).added, 1);
}

TEST_F(KnownFilesTest, TheSameFolderNamedTwiceCountsOnce)
{
    const IntakeReport report =
        importOf({music.path(), music.path(), link(), music.file(u"Album"_s)});
    EXPECT_EQ(report.found, 3);
    EXPECT_EQ(report.added, 3);
    EXPECT_TRUE(report.duplicates.empty());
}

TEST_F(KnownFilesTest, AFileNamedBesideItsFolderCountsOnce)
{
    const IntakeReport report =
        importOf({music.path(), music.file(u"c.mp3"_s), music.file(u"c.mp3"_s)});
    EXPECT_EQ(report.found, 3);
    EXPECT_EQ(report.added, 3);
    EXPECT_TRUE(report.duplicates.empty());
}

TEST_F(KnownFilesTest, WhatAnotherImportAddsBetweenLookAndInsertIsNotAddedAgain)
{
    Intake first(parts(), order());
    while (first.progress().listing) {
        ASSERT_TRUE(first.step(std::chrono::milliseconds{0}));
    }
    ASSERT_EQ(import().added, 3);
    while (first.step(std::chrono::seconds{1})) {
    }
    EXPECT_EQ(first.report().added, 0);
    EXPECT_EQ(first.report().known, 3);
    EXPECT_EQ(rows(), 3);
}

} // namespace
