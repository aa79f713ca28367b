#include "platform/linux/media/player_fixture.h"
#include "platform/linux/sdl_output.h"
#include "support/wait_for.h"

#include <SDL.h>

#include <csignal>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;
using linux_media::Mp3Player;
using linux_media::SdlOutput;

/// SDL with a driver of the test's choice; the environment is put back.
class SdlOutputTest : public testing::Test
{
protected:
    void TearDown() override
    {
        qputenv("SDL_AUDIODRIVER", m_driver);
        qunsetenv("SDL_DISKAUDIOFILE");
        qunsetenv("SDL_DISKAUDIODELAY");
    }

    static void useDriver(const char* name) { qputenv("SDL_AUDIODRIVER", name); }

    TempFolder m_folder;

private:
    QByteArray m_driver = qgetenv("SDL_AUDIODRIVER");
};

class Silence : public SampleSource
{
public:
    void fill(std::span<qint16> samples) noexcept override
    {
        std::ranges::fill(samples, qint16{0});
        ++asked;
    }

    std::atomic<int> asked = 0;
};

/// While it lives, a signal does what the system does with it, whatever the program that started
/// the test had said: a test that runs in the background is born with SIGINT ignored.
class DefaultSignal
{
public:
    explicit DefaultSignal(int signal)
        : m_signal(signal)
    {
        struct sigaction action = {};
        action.sa_handler = SIG_DFL;
        EXPECT_EQ(sigaction(m_signal, &action, &m_before), 0);
    }

    ~DefaultSignal() { sigaction(m_signal, &m_before, nullptr); }

    DefaultSignal(const DefaultSignal&) = delete;
    DefaultSignal& operator=(const DefaultSignal&) = delete;

private:
    int m_signal;
    struct sigaction m_before = {};
};

TEST_F(SdlOutputTest, TheSoundSystemRunsOnlyWhileACardIsOpenAndTakesNoSignalsOver)
{
    const DefaultSignal interrupt(SIGINT);
    const DefaultSignal end(SIGTERM);
    useDriver("dummy");
    {
        SdlOutput output;
        output.close();
        EXPECT_FALSE(output.isOpen());
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U);
        EXPECT_FALSE(output.cards().empty());
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U) << "it would wake up ten times a second";
        Silence silence;
        ASSERT_TRUE(output.open(1, {44100, 2}, silence));
        EXPECT_NE(SDL_WasInit(SDL_INIT_AUDIO), 0U);
        for (const int signal : {SIGINT, SIGTERM}) {
            struct sigaction action = {};
            ASSERT_EQ(sigaction(signal, nullptr, &action), 0);
            EXPECT_EQ(action.sa_handler, SIG_DFL);
        }
        EXPECT_FALSE(output.open(99, {44100, 2}, silence));
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U);
        ASSERT_TRUE(output.open(kSystemCard, {44100, 2}, silence));
        output.close();
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U);
        ASSERT_TRUE(output.open(1, {44100, 2}, silence));
    }
    EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U);
}

TEST_F(SdlOutputTest, CardsAreCountedFromOneAndOpenedByNumberOrBySystemsChoice)
{
    useDriver("dummy");
    SdlOutput output;
    Silence silence;
    const auto cards = output.cards();
    ASSERT_FALSE(cards.empty());
    EXPECT_EQ(cards.front().number, 1);
    EXPECT_FALSE(cards.front().name.isEmpty());
    for (const int card : {kSystemCard, 1}) {
        ASSERT_TRUE(output.open(card, {44100, 2}, silence));
        EXPECT_TRUE(output.isOpen());
        const int before = silence.asked;
        EXPECT_TRUE(test::waitFor([&] { return silence.asked > before; }));
    }
    output.close();
    EXPECT_FALSE(output.isOpen());
    for (const int card : {-1, 99}) {
        EXPECT_FALSE(output.open(card, {44100, 2}, silence));
        EXPECT_FALSE(output.isOpen());
    }
}

TEST_F(SdlOutputTest, WithoutASoundSystemThereIsNoCardAndNothingBreaks)
{
    useDriver("nonsense");
    SdlOutput output;
    Silence silence;
    EXPECT_TRUE(output.cards().empty());
    EXPECT_FALSE(output.open(kSystemCard, {44100, 2}, silence));
    EXPECT_FALSE(output.open(1, {44100, 2}, silence));
    SteppedLoop loop;
    Mp3Player player(output, loop);
    ASSERT_EQ(player.load(m_folder.write(u"a.mp3"_s, soundingMp3())), PlayFault::None);
    EXPECT_EQ(player.play(), PlayFault::NoCard);
    useDriver("dummy");
    EXPECT_EQ(player.play(), PlayFault::None);
}

/// A card that takes no samples is given up by the sound system as one that was pulled out is.
TEST_F(SdlOutputTest, ACardThatWentAwayIsNoLongerOpenAndEndsWhatPlaysWithItsReason)
{
    useDriver("disk");
    qputenv("SDL_DISKAUDIOFILE", "/dev/full");
    qputenv("SDL_DISKAUDIODELAY", "0");
    SdlOutput output;
    SteppedLoop loop;
    Mp3Player player(output, loop);
    std::optional<PlayFault> ended;
    player.setOnEnded([&](PlayFault fault) { ended = fault; });
    ASSERT_EQ(player.load(m_folder.write(u"a.mp3"_s, soundingMp3())), PlayFault::None);
    ASSERT_EQ(player.play(), PlayFault::None);
    ASSERT_TRUE(test::waitFor([&] { return !output.isOpen(); }));
    loop.fire(100);
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(ended, PlayFault::NoCard);

    qputenv("SDL_DISKAUDIOFILE", m_folder.file(u"card.raw"_s).toUtf8());
    EXPECT_EQ(player.play(), PlayFault::None);
    EXPECT_TRUE(output.isOpen());
}

struct DiskCase
{
    const char* name;
    Sound sound;
    LastBit lastBit = LastBit::Exact;
};

class SdlDisk : public SdlOutputTest, public testing::WithParamInterface<DiskCase>
{};

TEST_P(SdlDisk, FromFrame40ToFrame100ItsVerySamplesReachTheCard)
{
    const Sound& sound = GetParam().sound;
    const QString file = m_folder.write(u"a.mp3"_s, soundingMp3(sound));
    useDriver("disk");
    qputenv("SDL_DISKAUDIOFILE", m_folder.file(u"card.raw"_s).toUtf8());
    qputenv("SDL_DISKAUDIODELAY", "0");
    const qint64 from = sampleOf(40, sound.sampleRate);
    const qint64 to = sampleOf(100, sound.sampleRate);
    {
        SdlOutput output;
        SteppedLoop loop;
        Mp3Player player(output, loop);
        ASSERT_EQ(player.load(file), PlayFault::None);
        ASSERT_EQ(player.playRange(40 * kFrameMs, 100 * kFrameMs), PlayFault::None);
        ASSERT_TRUE(test::waitFor([&] { return player.positionMs() >= 100 * kFrameMs - 0.1; }));
        loop.fire(100);
        EXPECT_FALSE(player.isPlaying());
    }
    const QByteArray raw = m_folder.read(u"card.raw"_s);
    std::vector<qint16> heard(static_cast<size_t>(raw.size()) / 2);
    std::copy_n(raw.constData(), heard.size() * 2, reinterpret_cast<char*>(heard.data()));
    const auto wanted = part(wholeSound(file), from, to, sound.channels);
    // The card may have run before the first sample.
    const auto silence = std::ranges::find_if(heard, [](qint16 s) { return s != 0; });
    expectSamples(std::span(heard).subspan(static_cast<size_t>(silence - heard.begin())), wanted,
                  GetParam().lastBit);
}

INSTANTIATE_TEST_SUITE_P(
    SdlOutput,
    SdlDisk,
    testing::Values(DiskCase{"stereo", {44100, 2, 5, {u"-b"_s, u"128"_s}}},
                    DiskCase{"khz48", {48000, 2, 5, {u"-V"_s, u"2"_s}}},
                    DiskCase{"mono", {22050, 1, 5, {u"-b"_s, u"32"_s}}, LastBit::MayDiffer}),
    [](const auto& kind) { return std::string(kind.param.name); });

TEST_F(SdlOutputTest, AStockAtTheSoundServerIsAskedForUnlessTheUserSaysAnother)
{
    qunsetenv("PULSE_LATENCY_MSEC");
    const SdlOutput monitor;
    EXPECT_FALSE(qEnvironmentVariableIsSet("PULSE_LATENCY_MSEC"));
    const SdlOutput player({"Melovane DJ", "Player", 100});
    EXPECT_EQ(qgetenv("PULSE_LATENCY_MSEC"), "100");
    const SdlOutput other({"Melovane DJ", "Player", 300});
    EXPECT_EQ(qgetenv("PULSE_LATENCY_MSEC"), "100");
    qunsetenv("PULSE_LATENCY_MSEC");
}

} // namespace
