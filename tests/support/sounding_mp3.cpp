#include "support/sounding_mp3.h"

#include "support/temp_folder.h"

#include <QHash>
#include <QProcess>

#include <gtest/gtest.h>
#include <mpg123.h>

#include <cmath>
#include <random>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A rising tone in noise, each channel its own.
QByteArray pcm(const Sound& sound)
{
    std::mt19937 random(7);
    QByteArray bytes;
    const auto moments = static_cast<int>(sound.seconds * sound.sampleRate);
    bytes.reserve(qsizetype{2} * moments * sound.channels);
    double phase = 0;
    for (int i = 0; i < moments; ++i) {
        phase += 0.02 + 0.1 * i / moments;
        for (int channel = 0; channel < sound.channels; ++channel) {
            const double tone = 9000 * std::sin(phase * (1 + channel));
            const auto value =
                static_cast<qint16>(tone + static_cast<double>(random() % 6000) - 3000);
            bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        }
    }
    return bytes;
}

QByteArray encode(const Sound& sound)
{
    const TempFolder folder;
    const QString raw = folder.write(u"sound.pcm"_s, pcm(sound));
    QProcess lame;
    lame.start(u"lame"_s, QStringList{u"--quiet"_s, u"-r"_s, u"-s"_s,
                                      QString::number(sound.sampleRate / 1000.0), u"--resample"_s,
                                      QString::number(sound.sampleRate / 1000.0), u"-m"_s,
                                      sound.channels == 1 ? u"m"_s : u"j"_s} +
                              sound.encoding + QStringList{raw, folder.file(u"sound.mp3"_s)});
    EXPECT_TRUE(lame.waitForFinished());
    EXPECT_EQ(lame.exitCode(), 0) << lame.readAllStandardError().toStdString();
    return folder.read(u"sound.mp3"_s);
}

} // namespace

QByteArray soundingMp3(const Sound& sound)
{
    static QHash<QString, QByteArray> made;
    const QString key = u"%1 %2 %3 %4"_s.arg(sound.sampleRate)
                            .arg(sound.channels)
                            .arg(sound.seconds)
                            .arg(sound.encoding.join(u' '));
    if (!made.contains(key)) {
        made.insert(key, encode(sound));
    }
    return made.value(key);
}

std::vector<qint16> wholeSound(const QString& file)
{
    std::vector<qint16> samples;
    mpg123_handle* handle = mpg123_new(nullptr, nullptr);
    mpg123_param(handle, MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_QUIET, 0);
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    EXPECT_EQ(mpg123_open(handle, file.toUtf8().constData()), MPG123_OK);
    EXPECT_EQ(mpg123_getformat(handle, &rate, &channels, &encoding), MPG123_OK);
    EXPECT_EQ(encoding, MPG123_ENC_SIGNED_16);
    std::vector<qint16> block(16384);
    size_t got = 0;
    int answer = MPG123_OK;
    while (answer == MPG123_OK) {
        answer = mpg123_read(handle, reinterpret_cast<unsigned char*>(block.data()),
                             block.size() * sizeof(qint16), &got);
        samples.insert(samples.end(), block.begin(),
                       block.begin() + static_cast<std::ptrdiff_t>(got / sizeof(qint16)));
    }
    EXPECT_EQ(answer, MPG123_DONE);
    mpg123_delete(handle);
    return samples;
}

} // namespace melovane::test
