#include "platform/linux/beat_thread.h"
#include "platform/linux/mp3_stream.h"
#include "platform/linux/sdl_output.h"
#include "player/mix_engine.h"
#include "support/capture_output.h"
#include "support/sounding_mp3.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

SoundStreamMaker mp3Streams()
{
    return [] { return std::make_unique<linux_media::Mp3Stream>(); };
}

class AirFiles : public testing::Test
{
protected:
    AirFiles()
    {
        QFile out(file);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(soundingMp3());
    }

    TempFolder folder;
    QString file = folder.path() + u"/song.mp3"_s;
};

TEST_F(AirFiles, FromFrame40ToFrame100EachSampleIsTheDecodersOwn)
{
    CaptureOutput first;
    CaptureOutput second;
    MixEngine engine(mp3Streams(), first, second);
    engine.openCards({}, {});
    EntrySound entry;
    entry.file = file;
    entry.frameStart = 40;
    entry.frameStop = 100;
    entry.exactEdges = true;
    engine.load(AirDeck::A, entry);
    engine.startAt(AirDeck::A, 1000);
    for (int i = 0; i < 100; ++i) {
        engine.beat();
        first.pull(1024);
    }
    const auto all = wholeSound(file);
    for (size_t i = 0; i < size_t{60} * 1152 * 2; ++i) {
        ASSERT_EQ(all[size_t{40} * 1152 * 2 + i], first.heard[size_t{1000} * 2 + i]) << i;
    }
    EXPECT_EQ(DeckState::Ended, engine.report(AirDeck::A).state);
}

TEST_F(AirFiles, AFileThatIsNoMusicFailsAtItsLoad)
{
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(100'000, 'x'));
    text.close();
    CaptureOutput first;
    CaptureOutput second;
    MixEngine engine(mp3Streams(), first, second);
    engine.openCards({}, {});
    EntrySound entry;
    entry.file = file;
    engine.load(AirDeck::B, entry);
    engine.beat();
    EXPECT_EQ(DeckState::Failed, engine.report(AirDeck::B).state);
    EXPECT_EQ(PlayFault::NoAudio, engine.report(AirDeck::B).fault);
}

TEST_F(AirFiles, AFileThatIsCutWhileItPlaysEndsEarlyAndIsTold)
{
    CaptureOutput first;
    CaptureOutput second;
    QFile long4(file);
    ASSERT_TRUE(long4.open(QIODevice::WriteOnly));
    long4.write(soundingMp3({.seconds = 20}));
    long4.close();
    MixEngine engine(mp3Streams(), first, second);
    engine.openCards({}, {});
    EntrySound entry;
    entry.file = file;
    engine.load(AirDeck::A, entry);
    engine.startNow(AirDeck::A);
    engine.beat();
    first.pull(1024);
    ASSERT_TRUE(QFile::resize(file, QFile(file).size() / 2));
    for (int i = 0; i < 25 * 44; ++i) {
        engine.beat();
        first.pull(1024);
    }
    EXPECT_EQ(DeckState::Ended, engine.report(AirDeck::A).state);
    EXPECT_EQ(PlayFault::Broken, engine.report(AirDeck::A).fault);
    EXPECT_NEAR(10'000, engine.report(AirDeck::A).toMs, 200);
}

TEST_F(AirFiles, OnARealCardAndADecodingThreadAnEntryPlaysToItsEnd)
{
    linux_media::SdlOutput first;
    linux_media::SdlOutput second;
    linux_media::BeatThread thread;
    MixEngine engine(mp3Streams(), first, second, [&thread] { thread.hurry(); });
    thread.start(std::chrono::milliseconds(MixEngine::kBeatMs), [&engine] { engine.beat(); });
    engine.openCards({}, {});
    EntrySound entry;
    entry.file = file;
    entry.frameStart = 10;
    entry.frameStop = 30;
    engine.load(AirDeck::A, entry);
    engine.startNow(AirDeck::A);
    EXPECT_TRUE(waitFor([&] { return engine.report(AirDeck::A).state == DeckState::Ended; }));
    EXPECT_EQ(0, engine.report(AirDeck::A).underruns);
    thread.stop();
}

} // namespace
