#include "siblings/sleeveviewer/picture_reader.h"
#include "support/temp_folder.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray encoded(const QSize& size, const char* format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The check sum of a PNG's chunk.
quint32 checkSum(const QByteArray& bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    return ~sum;
}

/// A PNG that says in its head how large it is, and holds nothing of it.
QByteArray pngHead(quint32 width, quint32 height)
{
    QByteArray bytes = encoded({1, 1}, "png");
    bytes.replace(16, 4, bigEndian(width)).replace(20, 4, bigEndian(height));
    return bytes.replace(29, 4, bigEndian(checkSum(bytes.sliced(12, 17))));
}

class PictureReader : public testing::Test
{
protected:
    [[nodiscard]] ReadPicture read(const QString& name, const QByteArray& bytes)
    {
        return readPicture(folder.write(name, bytes));
    }

    TempFolder folder;
};

TEST_F(PictureReader, EachKindIsReadByItsContentWhateverItsNameSays)
{
    for (const char* format : {"jpeg", "png", "bmp"}) {
        const ReadPicture picture = read(u"cover.gif"_s, encoded({40, 20}, format));
        EXPECT_EQ(picture.fault, PictureFault::None) << format;
        EXPECT_EQ(picture.image.size(), QSize(40, 20)) << format;
        EXPECT_EQ(picture.size, QSize(40, 20)) << format;
    }
}

TEST_F(PictureReader, ALargeJpegIsKeptSmallerAndTellsItsOwnSize)
{
    const ReadPicture picture = read(u"a.jpg"_s, encoded({6000, 3000}, "jpeg"));
    EXPECT_EQ(picture.fault, PictureFault::None);
    EXPECT_EQ(picture.image.size(), QSize(4096, 2048));
    EXPECT_EQ(picture.size, QSize(6000, 3000));
}

TEST_F(PictureReader, HostileFilesAreRefusedAndSaidWhy)
{
    EXPECT_EQ(read(u"a.jpg"_s, {}).fault, PictureFault::NoPicture);
    EXPECT_EQ(read(u"a.jpg"_s, "just a text").fault, PictureFault::NoPicture);
    EXPECT_EQ(read(u"a.jpg"_s, QByteArray(5000, '\0')).fault, PictureFault::NoPicture);
    EXPECT_EQ(
        read(u"a.jpg"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>").fault,
        PictureFault::NoPicture);
    EXPECT_EQ(read(u"a.jpg"_s, "P6\n90000 90000\n255\n").fault, PictureFault::NoPicture);
    EXPECT_EQ(read(u"a.png"_s, pngHead(30'000, 30'000)).fault, PictureFault::TooLarge);
    EXPECT_EQ(read(u"a.png"_s, pngHead(11'000, 11'000)).fault, PictureFault::TooLarge);
    EXPECT_EQ(read(u"a.bmp"_s, encoded({1, 30'000}, "bmp")).fault, PictureFault::TooLarge);
    EXPECT_EQ(read(u"a.png"_s, encoded({40, 20}, "png").first(50)).fault, PictureFault::Damaged);
    EXPECT_EQ(read(u"a.jpg"_s, QByteArray(kMaxPictureBytes + 1, 'x')).fault,
              PictureFault::TooLarge);
}

TEST_F(PictureReader, WhatIsNoFileIsMissing)
{
    EXPECT_EQ(readPicture({}).fault, PictureFault::Missing);
    EXPECT_EQ(readPicture(folder.file(u"none.jpg"_s)).fault, PictureFault::Missing);
    EXPECT_EQ(readPicture(folder.path()).fault, PictureFault::Missing);
    const QString pipe = folder.file(u"pipe.jpg"_s);
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(readPicture(pipe).fault, PictureFault::Missing);
}

TEST_F(PictureReader, APictureOfATagIsReadByTheSameRules)
{
    EXPECT_EQ(readPictureBytes(encoded({40, 20}, "jpeg")).image.size(), QSize(40, 20));
    EXPECT_EQ(readPictureBytes({}).fault, PictureFault::Missing);
    EXPECT_EQ(readPictureBytes("text").fault, PictureFault::NoPicture);
    EXPECT_EQ(readPictureBytes(pngHead(30'000, 30'000)).fault, PictureFault::TooLarge);
}

TEST_F(PictureReader, ACutPictureOfAnyLengthIsSurvived)
{
    for (const char* format : {"jpeg", "png", "bmp"}) {
        const QByteArray whole = encoded({60, 60}, format);
        for (qsizetype length = 0; length < whole.size(); length += 7) {
            const ReadPicture picture = read(u"a.jpg"_s, whole.first(length));
            EXPECT_EQ(picture.image.isNull(), picture.fault != PictureFault::None);
        }
    }
}

} // namespace
} // namespace melovane::test
