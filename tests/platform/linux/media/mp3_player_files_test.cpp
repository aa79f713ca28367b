#include "platform/linux/media/player_fixture.h"
#include "support/mp3_maker.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

struct Kind
{
    const char* name;
    Sound sound;
    LastBit lastBit = LastBit::Exact;
};

class EveryKindOfFile : public PlayerFixture, public testing::WithParamInterface<Kind>
{
protected:
    const Sound& sound() { return GetParam().sound; }
};

TEST_P(EveryKindOfFile, FromFrame40ToFrame100ItsVerySamplesAreHeard)
{
    const auto all = wholeSound(load(sound()));
    EXPECT_EQ(m_player.playRange(40 * kFrameMs, 100 * kFrameMs), PlayFault::None);
    playToTheEnd();
    EXPECT_EQ(m_output.format, (AudioFormat{sound().sampleRate, sound().channels}));
    expectHeard(part(all, sampleOf(40, sound().sampleRate), sampleOf(100, sound().sampleRate),
                     sound().channels),
                GetParam().lastBit);
}

TEST_P(EveryKindOfFile, TheWholeFileIsHeardFromItsFirstSampleToItsLast)
{
    const auto all = wholeSound(load(sound()));
    m_player.play();
    playToTheEnd();
    expectHeard(all);
    EXPECT_DOUBLE_EQ(m_player.positionMs(), m_player.lengthMs());
    EXPECT_EQ(m_ended, PlayFault::None);
}

TEST_P(EveryKindOfFile, EveryPlaceIsFoundAgain)
{
    const auto all = wholeSound(load(sound()));
    const int rate = sound().sampleRate;
    for (const double frame : {150.0, 1.0, 77.5, 33.0, 149.0, 0.0, 120.0}) {
        m_output.heard.clear();
        m_player.seek(frame * kFrameMs);
        m_player.play();
        m_output.pull(3000);
        m_player.stop();
        expectHeard(
            part(all, sampleOf(frame, rate), sampleOf(frame, rate) + 3000, sound().channels),
            GetParam().lastBit);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Mp3Player,
    EveryKindOfFile,
    testing::Values(Kind{"constant", {44100, 2, 5, {u"-b"_s, u"128"_s}}},
                    Kind{"variable", {44100, 2, 5, {u"-V"_s, u"2"_s}}},
                    Kind{"variable_without_header", {44100, 2, 5, {u"-V"_s, u"2"_s, u"-t"_s}}},
                    Kind{"constant_without_header", {44100, 2, 5, {u"-b"_s, u"192"_s, u"-t"_s}}},
                    Kind{"low_rate", {44100, 2, 5, {u"-b"_s, u"32"_s}}},
                    Kind{"khz48", {48000, 2, 5, {u"-b"_s, u"320"_s}}},
                    Kind{"khz22", {22050, 2, 5, {u"-b"_s, u"64"_s}}, LastBit::MayDiffer},
                    Kind{"khz8_lowest_rate", {8000, 1, 5, {u"-b"_s, u"8"_s}}, LastBit::MayDiffer},
                    Kind{"mono", {44100, 1, 5, {u"-b"_s, u"64"_s}}, LastBit::MayDiffer}),
    [](const auto& kind) { return std::string(kind.param.name); });

class Mp3PlayerFiles : public PlayerFixture
{
protected:
    PlayFault loadBytes(const QByteArray& bytes)
    {
        return m_player.load(m_folder.write(u"odd.mp3"_s, bytes));
    }
};

TEST_F(Mp3PlayerFiles, AFileThatIsMissingOrNoFileIsToldSo)
{
    load();
    EXPECT_EQ(m_player.load(m_folder.file(u"nowhere.mp3"_s)), PlayFault::Missing);
    EXPECT_FALSE(m_player.isLoaded());
    EXPECT_EQ(m_player.load(m_folder.path()), PlayFault::Missing);
    EXPECT_EQ(m_player.load({}), PlayFault::Missing);
    EXPECT_EQ(m_player.load(u"/dev/zero"_s), PlayFault::Missing);
}

TEST_F(Mp3PlayerFiles, APipeOfThatNameDoesNotBlock)
{
    const QString pipe = m_folder.file(u"pipe.mp3"_s);
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(m_player.load(pipe), PlayFault::Missing);
}

TEST_F(Mp3PlayerFiles, OddFilesAreRefusedOrPlayedToTheirEnd)
{
    for (const OddFile& odd : oddFiles()) {
        SCOPED_TRACE(odd.name);
        const PlayFault fault = loadBytes(odd.bytes);
        if (odd.playable) {
            EXPECT_EQ(fault, PlayFault::None);
        }
        EXPECT_EQ(m_player.isLoaded(), fault == PlayFault::None);
        if (m_player.isLoaded()) {
            m_player.play();
            playToTheEnd();
            m_player.seek(m_player.lengthMs() / 2);
            m_player.play();
            playToTheEnd();
        }
    }
}

TEST_F(Mp3PlayerFiles, EmptyFilesAndOtherFormatsHoldNoAudio)
{
    EXPECT_EQ(loadBytes({}), PlayFault::NoAudio);
    EXPECT_EQ(loadBytes("not a song"), PlayFault::NoAudio);
    EXPECT_EQ(loadBytes(QByteArray(50000, '\0')), PlayFault::NoAudio);
    EXPECT_FALSE(m_player.isLoaded());
}

TEST_F(Mp3PlayerFiles, DamagedBytesInTheMiddleDoNotEndTheTrack)
{
    QByteArray bytes = soundingMp3();
    for (qsizetype i = bytes.size() / 2; i < bytes.size() / 2 + 900; ++i) {
        bytes[i] = static_cast<char>(i * 31);
    }
    ASSERT_EQ(loadBytes(bytes), PlayFault::None);
    EXPECT_GT(m_player.lengthMs(), 3800);
    m_player.play();
    playToTheEnd();
    EXPECT_GT(m_player.positionMs(), 3800);
}

TEST_F(Mp3PlayerFiles, MutilatedFilesNeverHangOrCrash)
{
    const QByteArray sound = soundingMp3({44100, 2, 1, {u"-V"_s, u"4"_s}});
    quint32 state = 1;
    const auto next = [&state] { return state = state * 1664525 + 1013904223; };
    for (int round = 0; round < 150; ++round) {
        QByteArray bytes = sound.left(static_cast<qsizetype>(next() % 16000));
        for (quint32 hits = next() % 40; hits > 0 && !bytes.isEmpty(); --hits) {
            bytes[static_cast<qsizetype>(next() % static_cast<quint32>(bytes.size()))] =
                static_cast<char>(next() >> 24);
        }
        if (loadBytes(bytes) == PlayFault::None) {
            m_player.seek(m_player.lengthMs() * 0.7);
            m_player.play();
            playToTheEnd();
        }
    }
}

TEST_F(Mp3PlayerFiles, ATrackWhoseFileIsRemovedPlaysToItsEnd)
{
    const QString file = load();
    const auto all = wholeSound(file);
    m_player.play();
    m_output.pull(1000);
    ASSERT_TRUE(QFile::remove(file));
    playToTheEnd();
    expectHeard(all);
}

TEST_F(Mp3PlayerFiles, ATrackThatIsCutWhilePlayingEndsWithoutNoise)
{
    const QString file = load({44100, 2, 12, {u"-b"_s, u"128"_s}});
    const auto all = wholeSound(file);
    m_player.play();
    ASSERT_TRUE(QFile::resize(file, 60000));
    playToTheEnd();
    EXPECT_TRUE(m_ended);
    EXPECT_LT(m_player.positionMs(), 6000);
    const auto moments = static_cast<qint64>(m_player.positionMs() * 44.1) - 2400;
    m_output.heard.resize(static_cast<size_t>(moments) * 2);
    expectHeard(part(all, 0, moments));
    m_player.seek(11000);
    m_player.play();
    playToTheEnd();
}

} // namespace
