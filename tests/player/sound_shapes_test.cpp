#include "platform/linux/linux_files.h"
#include "platform/linux/mp3_stream.h"
#include "player/sound_shapes.h"
#include "support/held_worker.h"
#include "support/sounding_mp3.h"
#include "support/temp_folder.h"
#include "support/tone_files.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

TEST(SoundShape, EachFiftiethOfASecondTellsItsPeaksAndItsLoudness)
{
    ToneFiles files;
    files.addTone(u"tone"_s, 1000, 1.01, 0.5);
    // The second half is silent.
    auto& samples = files[u"tone"_s].samples;
    std::fill(samples.begin() + 44'100, samples.end(), qint16{0});
    const auto stream = files.maker()();
    ASSERT_EQ(PlayFault::None, stream->open(u"tone"_s));
    const SoundShape shape = measureShape(*stream);
    ASSERT_EQ(51U, shape.bins.size());
    EXPECT_NEAR(64, shape.bins[3].high, 1);
    EXPECT_NEAR(-64, shape.bins[3].low, 1);
    EXPECT_NEAR(255 * 0.5 * 0.7071, shape.bins[3].power, 2);
    EXPECT_EQ((ShapeBin{0, 0, 0}), shape.bins[30]);
}

TEST(SoundShape, FewerColumnsLoseNoPeak)
{
    SoundShape shape;
    shape.bins.resize(1000);
    shape.bins[777] = {-100, 90, 80};
    const auto columns = reduceShape(shape, 0, 1000, 70);
    ASSERT_EQ(70U, columns.size());
    EXPECT_EQ(-100, columns[54].low);
    EXPECT_EQ(90, columns[54].high);
    EXPECT_EQ(0, columns[50].high);
}

TEST(SoundShape, WhatLiesOutsideOfTheFileIsSilent)
{
    SoundShape shape;
    shape.bins = {{-10, 10, 10}};
    const auto columns = reduceShape(shape, -5, 5, 10);
    EXPECT_EQ(0, columns[0].high);
    EXPECT_EQ(10, columns[5].high);
    EXPECT_EQ(0, columns[9].high);
}

TEST(SoundShape, ComesBackFromItsBytes)
{
    SoundShape shape;
    shape.bins = {{-127, 127, 255}, {0, 1, 2}};
    EXPECT_EQ(shape, shapeOfBytes(shapeToBytes(shape)));
    EXPECT_FALSE(shapeOfBytes("MLVSHAPE1xx"));
    EXPECT_FALSE(shapeOfBytes("something"));
    EXPECT_FALSE(shapeOfBytes({}));
}

class SoundShapesTest : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        const QString file = folder.path() + u'/' + name;
        QFile out(file);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        return file;
    }

    SoundShapes shapes(qint64 mostBytes = ShapeCache::kMostBytes)
    {
        return {worker,
                [this] {
                    ++opened;
                    return std::make_unique<linux_media::Mp3Stream>();
                },
                ShapeCache(files, cacheFolder, mostBytes)};
    }

    SoundShape shapeOf(SoundShapes& from, const QString& file)
    {
        SoundShape result;
        from.want(file, [&](const SoundShape& shape) { result = shape; });
        worker.finish();
        return result;
    }

    TempFolder folder;
    QString cacheFolder = folder.path() + u"/cache/shapes"_s;
    LinuxFiles files;
    HeldWorker worker;
    int opened = 0;
};

TEST_F(SoundShapesTest, AFileIsMeasuredOnceAndThenRemembered)
{
    const QString file = write(u"a.mp3"_s, soundingMp3());
    SoundShapes first = shapes();
    const SoundShape shape = shapeOf(first, file);
    EXPECT_NEAR(4 * SoundShape::kPerSecond, double(shape.bins.size()), 5);
    SoundShapes second = shapes();
    EXPECT_EQ(shape, shapeOf(second, file));
    EXPECT_EQ(1, opened);
}

TEST_F(SoundShapesTest, AFileThatWasChangedIsMeasuredAnew)
{
    const QString file = write(u"a.mp3"_s, soundingMp3());
    SoundShapes all = shapes();
    (void)shapeOf(all, file);
    write(u"a.mp3"_s, soundingMp3({.seconds = 2}));
    EXPECT_NEAR(2 * SoundShape::kPerSecond, double(shapeOf(all, file).bins.size()), 5);
    EXPECT_EQ(2, opened);
}

TEST_F(SoundShapesTest, NoMoreIsKeptThanTheFolderMayHoldAndTheOldestGo)
{
    SoundShapes all = shapes(5000);
    for (int i = 0; i < 12; ++i) {
        (void)shapeOf(all, write(QString::number(i) + u".mp3"_s, soundingMp3()));
    }
    qint64 bytes = 0;
    for (const QFileInfo& kept : QDir(cacheFolder).entryInfoList(QDir::Files)) {
        bytes += kept.size();
    }
    EXPECT_LE(bytes, 5000);
    EXPECT_GT(bytes, 2000);
    const int before = opened;
    (void)shapeOf(all, folder.path() + u"/11.mp3"_s);
    EXPECT_EQ(before, opened);
}

TEST_F(SoundShapesTest, AFileThatCannotBeReadHasNoShape)
{
    SoundShapes all = shapes();
    EXPECT_TRUE(shapeOf(all, folder.path() + u"/gone.mp3"_s).bins.empty());
    EXPECT_TRUE(shapeOf(all, write(u"text.mp3"_s, "no music")).bins.empty());
}

TEST_F(SoundShapesTest, WithoutAPlaceToKeepThemFilesAreMeasuredAllTheSame)
{
    write(u"cache"_s, "a file where the folder should be");
    const QString file = write(u"a.mp3"_s, soundingMp3());
    SoundShapes all = shapes();
    EXPECT_FALSE(shapeOf(all, file).bins.empty());
}

} // namespace
