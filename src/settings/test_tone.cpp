#include "settings/test_tone.h"

#include "platform/system/timers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace melovane {

namespace {

constexpr AudioFormat kFormat{44100, 2};
/// Half a second.
constexpr int kLength = kFormat.sampleRate / 2;
/// The standard pitch, in Hz.
constexpr double kPitch = 440.0;
/// Of the loudest sample: a tone without overtones sounds louder than music.
constexpr double kHeight = 0.5 * 32767;
/// So many frames at both ends rise and fall, so that the card does not click.
constexpr int kEdge = 441;
/// The loudest volume of the suite.
constexpr double kLoudest = 10000;

/// How often it is asked whether the tone is through.
constexpr std::chrono::milliseconds kInterval{200};

double heightAt(int frame)
{
    return std::min({1.0, double(frame) / kEdge, double(kLength - frame) / kEdge});
}

} // namespace

TestTone::TestTone(AudioOutput& output, MessageLoop& loop)
    : m_output(output)
    , m_timer(loop.makeTimer(kInterval, [this] { closeWhenDone(); }))
{}

TestTone::~TestTone()
{
    m_output.close();
}

const std::vector<SoundCard>& TestTone::cards()
{
    if (!m_areKnown) {
        m_cards = m_output.cards();
        m_areKnown = true;
    }
    return m_cards;
}

bool TestTone::play(const QString& card, int volume)
{
    m_output.close();
    m_volume = volume;
    m_left = kLength;
    int number = kSystemCard;
    for (const SoundCard& known : cards()) {
        if (known.name == card) {
            number = known.number;
        }
    }
    if (!m_output.open(number, kFormat, *this)) {
        return false;
    }
    m_timer->start();
    return true;
}

void TestTone::fill(std::span<qint16> samples) noexcept
{
    int left = m_left;
    const double loudness = kHeight * m_volume / kLoudest;
    for (size_t i = 0; i + 1 < samples.size(); i += size_t(kFormat.channels)) {
        qint16 sample = 0;
        if (left > 0) {
            const int frame = kLength - left--;
            const double turn = 2 * std::numbers::pi * kPitch * frame / kFormat.sampleRate;
            sample = qint16(std::lround(loudness * heightAt(frame) * std::sin(turn)));
        }
        samples[i] = samples[i + 1] = sample;
    }
    m_left = left;
}

void TestTone::closeWhenDone()
{
    if (m_left <= 0) {
        m_timer->stop();
        m_output.close();
    }
}

} // namespace melovane
