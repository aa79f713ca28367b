#include "platform/db/row_walk.h"
#include "trees/counting_thread.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <string>

namespace melovane {
namespace {

/// A track of one column.
class Row : public WalkedRow
{
public:
    explicit Row(std::size_t number)
        : m_text(std::to_string(number))
    {}

    [[nodiscard]] bool isNull(int /*column*/) const override { return false; }

    [[nodiscard]] bool isNumber(int /*column*/) const override { return false; }

    [[nodiscard]] qint64 number(int /*column*/) const override { return 0; }

    [[nodiscard]] double real(int /*column*/) const override { return 0; }

    [[nodiscard]] std::string_view bytes(int /*column*/) const override { return m_text; }

    [[nodiscard]] QString text(int /*column*/) const override
    {
        return QString::fromStdString(m_text);
    }

private:
    std::string m_text;
};

const std::vector<TrackBlock::Kind> kKinds{TrackBlock::Kind::Text};

/// More than can wait at once.
constexpr std::size_t kPassed = 100;

/// Passes blocks of one row, which tells its number.
void passBlocks(CountingThread& counting)
{
    for (std::size_t number = 0; number < kPassed; ++number) {
        EXPECT_EQ(counting.block().size(), 0U);
        counting.block().add(Row(number), true);
        counting.pass();
    }
}

TEST(CountingThreadTest, EachBlockIsCountedOnceInItsOrderBesideTheReader)
{
    std::vector<std::string> seen;
    std::thread::id counter;
    CountingThread counting(kKinds, [&](const TrackBlock& block) {
        ASSERT_EQ(block.size(), 1U);
        seen.emplace_back(block.text(0, 0));
        counter = std::this_thread::get_id();
    });
    passBlocks(counting);
    counting.finish();
    std::vector<std::string> expected;
    for (std::size_t number = 0; number < kPassed; ++number) {
        expected.push_back(std::to_string(number));
    }
    EXPECT_EQ(seen, expected);
    EXPECT_NE(counter, std::this_thread::get_id());
}

TEST(CountingThreadTest, WhatCountingThrowsReachesTheReaderAndNothingBehindItIsCounted)
{
    std::size_t counted = 0;
    CountingThread counting(kKinds, [&](const TrackBlock&) {
        if (++counted == 3) {
            throw std::runtime_error("no room");
        }
    });
    passBlocks(counting);
    EXPECT_THROW(counting.finish(), std::runtime_error);
    EXPECT_EQ(counted, 3U);
}

TEST(CountingThreadTest, BlocksThatWaitAreNotCountedWhenTheReaderGivesUp)
{
    std::promise<void> mayGoOn;
    std::promise<void> isAtWork;
    std::size_t counted = 0;
    {
        CountingThread counting(kKinds, [&](const TrackBlock&) {
            if (++counted == 1) {
                isAtWork.set_value();
                mayGoOn.get_future().wait();
            }
        });
        counting.block().add(Row(0), true);
        counting.pass();
        isAtWork.get_future().wait();
        counting.block().add(Row(1), true);
        counting.pass();
        counting.forsake();
        mayGoOn.set_value();
    }
    EXPECT_EQ(counted, 1U);
}

} // namespace
} // namespace melovane
