// What mixing costs: one block of 1024 frames of the player, in nanoseconds a frame.
//
//   mix_bench [seconds = 60]

#include "bench/measure.h"
#include "player/mix_engine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

using namespace melovane;

constexpr int kBlock = 1024;

/// Bar of three decks with everything, in nanoseconds a frame: a twentieth of a core.
constexpr double kBar = 1130;

/// Noise without end, so that no filter is spared anything.
class Noise : public SoundStream
{
public:
    explicit Noise(const std::vector<qint16>& samples)
        : m_samples(samples)
    {}

    PlayFault open(const QString&) override { return PlayFault::None; }

    [[nodiscard]] const AudioFormat& format() const override { return m_format; }

    [[nodiscard]] qint64 length() const override { return qint64{1} << 40; }

    bool seek(qint64) override { return true; }

    size_t read(std::span<qint16> samples) override
    {
        const size_t count = std::min(samples.size(), m_samples.size());
        std::copy_n(m_samples.begin(), count, samples.begin());
        return samples.size();
    }

    [[nodiscard]] bool isBroken() const override { return false; }

private:
    const std::vector<qint16>& m_samples;
    AudioFormat m_format{kAirRate, 2};
};

/// Takes blocks as fast as it is told to.
class Taker : public AudioOutput
{
public:
    [[nodiscard]] std::vector<SoundCard> cards() override { return {}; }

    bool open(int, const AudioFormat&, SampleSource& source) override
    {
        m_source = &source;
        return true;
    }

    void close() override { m_source = nullptr; }

    [[nodiscard]] bool isOpen() const override { return m_source != nullptr; }

    void take(std::span<qint16> block) { m_source->fill(block); }

private:
    SampleSource* m_source = nullptr;
};

/// \return nanoseconds of the processor a frame, without decoding
double
mixingCost(const std::vector<qint16>& noise, int decks, int pitch, int eqPercent, int seconds)
{
    Taker first;
    Taker second;
    MixEngine engine([&noise] { return std::make_unique<Noise>(noise); }, first, second);
    engine.openCards({}, {});
    EntrySound sound;
    sound.volume = 3000;
    sound.pitch = pitch;
    sound.eq.EQValue1 = sound.eq.EQValue2 = sound.eq.EQValue3 = sound.eq.EQValue4 = eqPercent;
    sound.eq.IsSet = true;
    for (int i = 0; i < decks; ++i) {
        engine.load(kAirDecks[size_t(i)], sound);
        engine.startNow(kAirDecks[size_t(i)]);
    }
    std::vector<qint16> block(size_t{kBlock} * 2);
    double spent = 0;
    const int blocks = seconds * kAirRate / kBlock;
    for (int i = 0; i < blocks; ++i) {
        engine.beat();
        spent += bench::measured([&] { first.take(block); }).cpu;
    }
    return spent * 1e6 / (double(blocks) * kBlock);
}

} // namespace

int main(int count, char** words)
{
    const int seconds = count > 1 ? std::max(1, std::atoi(words[1])) : 60;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> value(-32768, 32767);
    std::vector<qint16> noise(8192);
    std::ranges::generate(noise, [&] { return static_cast<qint16>(value(random)); });
    std::printf("no deck                      %6.1f ns\n", mixingCost(noise, 0, 0, 100, seconds));
    std::printf("one deck                     %6.1f ns\n", mixingCost(noise, 1, 0, 100, seconds));
    std::printf("three decks                  %6.1f ns\n", mixingCost(noise, 3, 0, 100, seconds));
    std::printf("three decks, pitched         %6.1f ns\n", mixingCost(noise, 3, 123, 100, seconds));
    const double all = mixingCost(noise, 3, 123, 80, seconds);
    std::printf("three decks, pitched, bands  %6.1f ns (bar %.0f)\n", all, kBar);
    return all <= kBar ? 0 : 1;
}
