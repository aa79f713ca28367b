#include "support/temp_folder.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>
#include <unistd.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class DemoMusicProcess : public testing::Test
{
protected:
    void SetUp() override
    {
        run();
        QDirIterator files(music, QDir::Files, QDirIterator::Subdirectories);
        ASSERT_TRUE(files.hasNext());
        track = files.next();
        ASSERT_FALSE(files.hasNext());
        bytes = folder.read(track);
        folder.write(u"mine.mp3"_s, "mine");
        ASSERT_TRUE(QFile::remove(track));
    }

    /// One track, and none that wants an encoder.
    void run() const
    {
        QProcess process;
        process.start(QString::fromUtf8(MLV_DEMOMUSIC), {music, u"1"_s, u"1"_s, u"1"_s});
        ASSERT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), 0);
    }

    TempFolder folder;
    QString music = folder.file(u"Musik"_s);
    QString track;
    QByteArray bytes;
};

TEST_F(DemoMusicProcess, ALinkInPlaceOfATrackIsReplacedAndWhatItLeadsToStays)
{
    ASSERT_TRUE(QFile::link(folder.file(u"mine.mp3"_s), track));
    run();
    EXPECT_EQ(folder.read(u"mine.mp3"_s), "mine");
    EXPECT_EQ(folder.read(track), bytes);
}

TEST_F(DemoMusicProcess, SoIsASecondNameOfAnotherFile)
{
    ASSERT_EQ(::link(folder.file(u"mine.mp3"_s).toUtf8().constData(), track.toUtf8().constData()),
              0);
    run();
    EXPECT_EQ(folder.read(u"mine.mp3"_s), "mine");
    EXPECT_EQ(folder.read(track), bytes);
}

TEST_F(DemoMusicProcess, ALinkToNothingMakesNoFileAtItsEnd)
{
    ASSERT_TRUE(QFile::link(folder.file(u"gone.mp3"_s), track));
    run();
    EXPECT_FALSE(QFile::exists(folder.file(u"gone.mp3"_s)));
    EXPECT_EQ(folder.read(track), bytes);
}

} // namespace
} // namespace melovane::test
