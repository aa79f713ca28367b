#include "intake/intake_fixture.h"
#include "intake/moved_rows.h"

#include <QDir>
#include <QFile>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// Files without an identifier in their tags, which get other places.
class MovedFilesTest : public IntakeFixture
{
protected:
    static QByteArray mp3(quint32 sound, const QString& title = u"Titel"_s, int padding = 0)
    {
        return demomusic::Id3v2Writer().text("TIT2", title).tag(padding) +
               demomusic::variableStream({}, 200, sound);
    }

    void move(const QString& from, const QString& to)
    {
        QDir().mkpath(QFileInfo(music.file(to)).path());
        ASSERT_TRUE(QFile::rename(music.file(from), music.file(to)));
    }

    [[nodiscard]] QString soundFile() const { return suite.file(u"melovane.sounds"_s); }

    [[nodiscard]] QString placeOf(const QString& fid)
    {
        return suite.value(u"select Path & DName from db_all where FID='%1'"_s.arg(fid)).toText();
    }
};

TEST_F(MovedFilesTest, RowsWhoseFileWasSeenOnceAreNotLookedForAgain)
{
    for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s}) {
        suite.library.add({.Titel = u"Stille"_s, .DName = name, .DLen = 4000, .DTimeMsec = 900});
    }
    const auto database = suite.open();
    QStringList looks;
    MovedRows moved(*database, suite.files, [&looks](const QString& fid) {
        looks.append(fid);
        return false;
    });
    ImportedTrack track;
    track.Titel = u"Stille"_s;
    track.DLen = 4000;
    track.DTimeMsec = 900;
    for (int file = 0; file < 3; ++file) {
        EXPECT_EQ(moved.of(track, std::nullopt), QStringList());
    }
    EXPECT_EQ(looks.size(), 3) << "one for each row";
    EXPECT_EQ(looks.removeDuplicates(), 0);
}

TEST_F(MovedFilesTest, AFileThatLiesElsewhereKeepsItsRow)
{
    music.write(u"alt/a.mp3"_s, mp3(1));
    music.write(u"alt/b.mp3"_s, mp3(2));
    ASSERT_EQ(import().added, 2);
    QFile::remove(soundFile());
    const QString fid = of(u"a.mp3"_s, u"FID"_s).toText();
    suite.execute(u"update db_all set Note='5', PlayCountAll=3, DEL=2 where FID='%1'"_s.arg(fid));
    move(u"alt/a.mp3"_s, u"neu/ganz anders.mp3"_s);
    const IntakeReport report = import();
    EXPECT_EQ(report.added, 0);
    EXPECT_EQ(report.moved, 1);
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(placeOf(fid), music.file(u"neu/ganz anders.mp3"_s));
    EXPECT_EQ(of(u"ganz anders.mp3"_s, u"Note"_s).toText(), u"5"_s);
    EXPECT_EQ(of(u"ganz anders.mp3"_s, u"DEL"_s).toLong(), 0);
}

TEST_F(MovedFilesTest, ARetaggedRenamedFileIsKnownByItsSound)
{
    music.write(u"alt/a.mp3"_s, mp3(1));
    ASSERT_EQ(import().added, 1);
    const QString fid = of(u"a.mp3"_s, u"FID"_s).toText();
    QFile::remove(music.file(u"alt/a.mp3"_s));
    music.write(u"neu/x.mp3"_s, mp3(1, u"Ein anderer Titel"_s, 5000));
    EXPECT_EQ(import().moved, 1);
    EXPECT_EQ(placeOf(fid), music.file(u"neu/x.mp3"_s));
    EXPECT_EQ(rows(), 1);
}

TEST_F(MovedFilesTest, ACopyIsATrackOfItsOwn)
{
    music.write(u"a.mp3"_s, mp3(1));
    ASSERT_EQ(import().added, 1);
    music.write(u"kopie/a.mp3"_s, mp3(1));
    const IntakeReport report = import();
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.moved, 0);
    EXPECT_EQ(rows(), 2);
}

TEST_F(MovedFilesTest, TwoFilesOfOneMissingTrackGiveOneMovedAndOneNew)
{
    music.write(u"alt/a.mp3"_s, mp3(1));
    ASSERT_EQ(import().added, 1);
    QFile::remove(music.file(u"alt/a.mp3"_s));
    music.write(u"eins/a.mp3"_s, mp3(1));
    music.write(u"zwei/a.mp3"_s, mp3(1));
    const IntakeReport report = import();
    EXPECT_EQ(report.moved, 1);
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(rows(), 2);
}

TEST_F(MovedFilesTest, AnotherFileOfTheSameSizeAndLengthIsNone)
{
    music.write(u"alt/a.mp3"_s, mp3(1, u"Titel 1"_s));
    ASSERT_EQ(import().added, 1);
    QFile::remove(music.file(u"alt/a.mp3"_s));
    QByteArray other = mp3(1, u"Titel 2"_s);
    other[other.size() / 2] = char(other[other.size() / 2] ^ 1);
    music.write(u"neu/b.mp3"_s, other);
    const IntakeReport report = import();
    EXPECT_EQ(report.moved, 0);
    EXPECT_EQ(report.added, 1);
}

TEST_F(MovedFilesTest, ATrackOnADiscCountsAsThere)
{
    music.write(u"alt/a.mp3"_s, mp3(1));
    ASSERT_EQ(import().added, 1);
    suite.execute(u"update db_all set DriveTyp=4"_s);
    move(u"alt/a.mp3"_s, u"neu/a.mp3"_s);
    EXPECT_EQ(import().added, 1);
    EXPECT_EQ(rows(), 2);
}

} // namespace
