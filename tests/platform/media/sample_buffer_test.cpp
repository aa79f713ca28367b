#include "platform/media/sample_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <numeric>
#include <thread>

namespace {

using namespace melovane;

std::vector<qint16> rising(int from, int count)
{
    std::vector<qint16> samples(static_cast<size_t>(count));
    std::iota(samples.begin(), samples.end(), static_cast<qint16>(from));
    return samples;
}

class SampleBufferTest : public testing::Test
{
protected:
    void put(const std::vector<qint16>& samples)
    {
        m_buffer.write(samples);
        m_buffer.publish();
    }

    std::vector<qint16> take(int count)
    {
        std::vector<qint16> samples(static_cast<size_t>(count), qint16{-99});
        m_buffer.fill(samples);
        return samples;
    }

    SampleBuffer m_buffer;
};

TEST_F(SampleBufferTest, GivesWhatWasWrittenAndThenSilence)
{
    put({1, 2, 3});
    EXPECT_EQ(take(5), (std::vector<qint16>{1, 2, 3, 0, 0}));
    EXPECT_EQ(m_buffer.handedOver(), 3U);
    EXPECT_EQ(take(2), (std::vector<qint16>{0, 0}));
}

TEST_F(SampleBufferTest, NothingIsHeardBeforeItIsPublished)
{
    m_buffer.write(rising(1, 4));
    EXPECT_EQ(take(2), (std::vector<qint16>{0, 0}));
    m_buffer.publish();
    EXPECT_EQ(take(2), (std::vector<qint16>{1, 2}));
}

TEST_F(SampleBufferTest, DiscardTellsWhatWasHeardAndDropsTheRest)
{
    put(rising(1, 10));
    take(4);
    EXPECT_EQ(m_buffer.discard(), 4U);
    EXPECT_EQ(m_buffer.handedOver(), 10U);
    EXPECT_EQ(take(3), (std::vector<qint16>{0, 0, 0}));
    put({77});
    EXPECT_EQ(take(2), (std::vector<qint16>{77, 0}));
}

TEST_F(SampleBufferTest, DiscardDropsWhatIsNotPublishedToo)
{
    m_buffer.write(rising(1, 4));
    m_buffer.discard();
    m_buffer.publish();
    EXPECT_EQ(take(2), (std::vector<qint16>{0, 0}));
}

TEST_F(SampleBufferTest, KeepsOrderOverItsEndAndTellsItsSpace)
{
    const auto most = static_cast<int>(SampleBuffer::kCapacity);
    put(rising(0, most - 100));
    EXPECT_EQ(m_buffer.space(), 100U);
    take(most - 200);
    EXPECT_EQ(m_buffer.space(), static_cast<quint64>(most) - 100);
    put(rising(most - 100, 5000));
    EXPECT_EQ(take(5100), rising(most - 200, 5100));
}

TEST_F(SampleBufferTest, TheVolumeScalesAndIsKeptWithinItsBounds)
{
    m_buffer.setVolume(7500);
    put({10000, -10000, 32767, -32768, 1, -1});
    EXPECT_EQ(take(6), (std::vector<qint16>{7500, -7500, 24575, -24576, 1, -1}));
    take(1);
    m_buffer.setVolume(-5);
    EXPECT_EQ(m_buffer.volume(), 0);
    put({10000});
    EXPECT_EQ(take(1), (std::vector<qint16>{0}));
    take(1);
    m_buffer.setVolume(1000000);
    EXPECT_EQ(m_buffer.volume(), kFullVolume);
    put({-32768});
    EXPECT_EQ(take(1), (std::vector<qint16>{-32768}));
}

TEST_F(SampleBufferTest, AVolumeChangedWhilePlayingGlidesOverOneBlock)
{
    put(std::vector<qint16>(300, 10000));
    take(100);
    m_buffer.setVolume(5000);
    const std::vector<qint16> glide = take(100);
    for (size_t i = 1; i < glide.size(); ++i) {
        EXPECT_LT(glide[i], glide[i - 1]);
        EXPECT_GE(glide[i], glide[i - 1] - 51);
    }
    EXPECT_EQ(take(100), std::vector<qint16>(100, 5000));
}

// Run under the thread sanitizer, too. Every written sample is its own number, so that a lost,
// doubled or torn one is seen.
TEST_F(SampleBufferTest, TwoThreadsNeverLoseOrDoubleASample)
{
    constexpr int kSamples = 4'000'000;
    std::vector<qint16> heard;
    heard.reserve(kSamples);
    std::thread audio([&] {
        std::vector<qint16> block(512);
        quint64 before = 0;
        while (before < kSamples) {
            m_buffer.fill(block);
            const quint64 now = m_buffer.handedOver();
            heard.insert(heard.end(), block.begin(),
                         block.begin() + static_cast<std::ptrdiff_t>(now - before));
            before = now;
        }
    });
    for (int written = 0; written < kSamples;) {
        const int count = std::min(kSamples - written, static_cast<int>(m_buffer.space()));
        if (count == 0) {
            std::this_thread::yield();
        }
        put(rising(written, count));
        written += count;
    }
    audio.join();
    ASSERT_EQ(heard.size(), static_cast<size_t>(kSamples));
    for (int i = 0; i < kSamples; ++i) {
        ASSERT_EQ(heard[static_cast<size_t>(i)], static_cast<qint16>(i)) << i;
    }
}

// Each run has its own number: once a run began, no sample of an earlier one may follow.
TEST_F(SampleBufferTest, ADiscardAtAnyMomentLetsNoOldSampleBeHeard)
{
    constexpr qint16 kRuns = 3000;
    std::atomic<bool> done = false;
    std::vector<qint16> heard; // without the silence, of which a waiting thread hears any amount
    const auto listen = [&] {
        std::vector<qint16> block(256);
        m_buffer.fill(block);
        std::copy_if(block.begin(), block.end(), std::back_inserter(heard),
                     [](qint16 sample) { return sample != 0; });
    };
    std::thread audio([&] {
        while (!done) {
            listen();
        }
        listen();
    });
    for (qint16 run = 1; run <= kRuns; ++run) {
        m_buffer.discard();
        put(std::vector<qint16>(static_cast<size_t>(300 + run % 700), run));
    }
    while (m_buffer.handedOver() < m_buffer.written()) {
        std::this_thread::yield();
    }
    done = true;
    audio.join();
    qint16 last = 0;
    for (const qint16 sample : heard) {
        ASSERT_GE(sample, last);
        last = sample;
    }
    EXPECT_EQ(last, kRuns);
}

} // namespace
