#include "siblings/melovanedj/night_state.h"
#include "support/temp_folder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class NightStateTest : public testing::Test
{
protected:
    void damage(qint64 from, qint64 count) const
    {
        QFile bytes(path);
        ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
        ASSERT_TRUE(bytes.seek(from));
        bytes.write(QByteArray(count, '\x5a'));
    }

    test::TempFolder folder;
    QString path = folder.path() + u"/player.state"_s;
    NightState first{Plid(7), u"800000000001"_s, 1234.5, true, false};
    NightState second{Plid(8), u"800000000002"_s, 9.25, true, true};
};

TEST_F(NightStateTest, AnotherProcessReadsTheLastOneWritten)
{
    NightStateFile file(path);
    EXPECT_EQ(file.read(), std::nullopt);
    file.write(first);
    EXPECT_EQ(NightStateFile(path).read(), first);
    file.write(second);
    EXPECT_EQ(NightStateFile(path).read(), second);
}

TEST_F(NightStateTest, AWritingThatWasCutOffLeavesTheOneBefore)
{
    {
        NightStateFile file(path);
        file.write(first);
        file.write(second);
    }
    const qint64 half = QFile(path).size() / 2;
    damage(half + 20, 4);
    EXPECT_EQ(NightStateFile(path).read(), first);
    damage(20, 4);
    EXPECT_EQ(NightStateFile(path).read(), std::nullopt);
}

TEST_F(NightStateTest, AForeignFileHoldsNothingAndIsWrittenOver)
{
    QFile foreign(path);
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write(QByteArray(5000, 'x'));
    foreign.close();
    NightStateFile file(path);
    EXPECT_EQ(file.read(), std::nullopt);
    file.write(first);
    EXPECT_EQ(file.read(), first);
}

TEST_F(NightStateTest, WhereNoFileCanBeMadeNothingIsKept)
{
    NightStateFile file(folder.path() + u"/none/player.state"_s);
    file.write(first);
    EXPECT_EQ(file.read(), std::nullopt);
}

} // namespace
} // namespace melovane
