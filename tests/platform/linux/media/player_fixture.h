#pragma once

#include "platform/linux/mp3_player.h"
#include "shell/fakes.h"
#include "support/capture_output.h"
#include "support/sounding_mp3.h"
#include "support/temp_folder.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <span>

namespace melovane::test {

/// The sample that a frame of 26.12245 ms begins with.
inline qint64 sampleOf(double frame, int sampleRate)
{
    return std::lround(frame * kFrameMs * sampleRate / 1000.0);
}

/// Samples `from` up to `to` of each channel.
inline std::vector<qint16>
part(const std::vector<qint16>& all, qint64 from, qint64 to, int channels = 2)
{
    return {all.begin() + from * channels, all.begin() + to * channels};
}

/// In mono and at low sample rates the decoder's rounding depends on where decoding began: then one
/// sample in some thousands differs in its last bit. A place missed by one sample would differ by
/// thousands, everywhere.
enum class LastBit
{
    Exact,
    MayDiffer
};

/// That `heard` begins with `wanted`, and holds nothing but silence behind it.
inline void expectSamples(std::span<const qint16> heard,
                          const std::vector<qint16>& wanted,
                          LastBit lastBit = LastBit::Exact)
{
    ASSERT_GE(heard.size(), wanted.size());
    size_t differing = 0;
    for (size_t i = 0; i < wanted.size(); ++i) {
        const int difference = std::abs(heard[i] - wanted[i]);
        ASSERT_LE(difference, lastBit == LastBit::Exact ? 0 : 1) << "at sample " << i;
        differing += difference == 0 ? 0 : 1;
    }
    EXPECT_LE(differing, wanted.size() / 1000);
    EXPECT_TRUE(std::ranges::all_of(heard.subspan(wanted.size()), [](qint16 s) { return s == 0; }));
}

/// A player whose card has no clock and whose timers run when the test says so.
class PlayerFixture : public testing::Test
{
protected:
    PlayerFixture()
    {
        m_player.setOnLoaded([this] { m_events.append(QStringLiteral("loaded")); });
        m_player.setOnPosition([this](double ms) {
            m_events.append(QStringLiteral("position"));
            m_lastPosition = ms;
        });
        m_player.setOnEnded([this](PlayFault fault) {
            m_events.append(QStringLiteral("ended"));
            m_ended = fault;
        });
    }

    /// A file of that sound, loaded.
    QString load(const Sound& sound = {})
    {
        const QString file = m_folder.write(QStringLiteral("sound.mp3"), soundingMp3(sound));
        EXPECT_EQ(m_player.load(file), PlayFault::None);
        return file;
    }

    void tick() { m_loop.fire(100); }

    /// Lets the card run until the player has ended, a tick each 100 ms.
    void playToTheEnd()
    {
        for (int ticks = 0; m_player.isPlaying() && ticks < 1000; ++ticks) {
            m_output.pull(m_output.format.sampleRate / 10);
            tick();
        }
        EXPECT_FALSE(m_player.isPlaying());
    }

    /// That these samples were heard, and nothing but silence behind them.
    void expectHeard(const std::vector<qint16>& wanted, LastBit lastBit = LastBit::Exact)
    {
        expectSamples(m_output.heard, wanted, lastBit);
    }

    TempFolder m_folder;
    SteppedLoop m_loop;
    CaptureOutput m_output;
    linux_media::Mp3Player m_player{m_output, m_loop};
    QStringList m_events;
    double m_lastPosition = -1;
    std::optional<PlayFault> m_ended;
};

} // namespace melovane::test
