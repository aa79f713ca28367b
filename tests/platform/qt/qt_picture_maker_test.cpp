#include "platform/qt/qt_picture_maker.h"
#include "platform/qt/qt_worker.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray picture(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer out(&bytes);
    out.open(QIODevice::WriteOnly);
    image.save(&out, format);
    return bytes;
}

QImage plain(int width, int height, const QColor& colour = Qt::red)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

TEST(PictureMaker, AWidePictureIsMadeNarrowerInProportionAndASmallOneStays)
{
    const QtPictureMaker maker;
    const QImage small = QImage::fromData(maker.jpeg(picture(plain(1000, 400), "PNG"), 500, 75));
    EXPECT_EQ(small.size(), QSize(500, 200));
    const QImage same = QImage::fromData(maker.jpeg(picture(plain(300, 900), "JPEG"), 500, 75));
    EXPECT_EQ(same.size(), QSize(300, 900));
}

TEST(PictureMaker, WhatIsTransparentBecomesWhite)
{
    const QByteArray jpeg =
        QtPictureMaker().jpeg(picture(plain(20, 20, Qt::transparent), "PNG"), 500, 90);
    EXPECT_EQ(QImage::fromData(jpeg).pixelColor(10, 10), QColor(Qt::white));
}

TEST(PictureMaker, TheQualityDecidesTheSize)
{
    QImage noise(200, 200, QImage::Format_RGB32);
    for (int at = 0; at < 200 * 200; ++at) {
        noise.setPixel(at % 200, at / 200, qRgb(at * 7 % 256, at * 31 % 256, at * 101 % 256));
    }
    const QByteArray bytes = picture(noise, "PNG");
    const QtPictureMaker maker;
    EXPECT_LT(maker.jpeg(bytes, 500, 20).size(), maker.jpeg(bytes, 500, 90).size());
    EXPECT_FALSE(maker.jpeg(bytes, 500, 1000).isEmpty());
}

TEST(PictureMaker, OtherKindsDamagedAndHugePicturesAreRefused)
{
    const QtPictureMaker maker;
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
    // A bitmap whose header speaks of 100,000 columns.
    QByteArray huge = picture(plain(2, 2), "BMP");
    huge.replace(18, 4, QByteArray("\xA0\x86\x01\x00", 4));
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("Text"), drawing, picture(plain(9, 9), "PPM"), huge,
          picture(plain(50, 50), "PNG").left(60)}) {
        EXPECT_EQ(maker.jpeg(bytes, 500, 75), QByteArray());
    }
}

TEST(Worker, WorkIsDoneBesideTheWindowOneByOneAndToldOnItsThread)
{
    QStringList order;
    const auto window = std::this_thread::get_id();
    std::thread::id worked;
    QtWorker worker;
    worker.run([&] { worked = std::this_thread::get_id(); },
               [&] {
                   EXPECT_EQ(std::this_thread::get_id(), window);
                   order.append(u"one"_s);
               });
    worker.run([] {}, [&] { order.append(u"two"_s); });
    EXPECT_TRUE(order.isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (QStringList{u"one"_s, u"two"_s}));
    EXPECT_NE(worked, window);
}

TEST(Worker, OneThatIsGoneTellsNothingMore)
{
    bool told = false;
    std::atomic<bool> worked = false;
    {
        // Its end waits for the work, or drops it; the loop does not turn before.
        QtWorker worker;
        worker.run([&] { worked = true; }, [&] { told = true; });
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(told);
}

} // namespace
} // namespace melovane
