#include "store/make_fid.h"
#include "support/fake_clock.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;
using Mod_Make_FID::FidMaker;
using Mod_Make_FID::FidToDate;

namespace {

/// The identifier that tells a moment, counter 0.
QString fidOf(const QDateTime& moment)
{
    test::FakeClock clock(moment);
    return FidMaker(clock).MakeFID();
}

class MakeFid : public testing::Test
{
protected:
    [[nodiscard]] bool keeps(const QString& candidate)
    {
        return m_maker.MakeFID(candidate) == candidate;
    }

    test::FakeClock m_clock;
    FidMaker m_maker{m_clock};
};

} // namespace

TEST_F(MakeFid, ANewIdentifierIsTheSecondsSinceTheYear2000TimesAThousandPlusTheCounter)
{
    // 2026-03-14 15:09:26 is 9569 days and 54566 seconds after the epoch.
    EXPECT_EQ(m_maker.MakeFID(), u"826816166000"_s);
    EXPECT_EQ(m_maker.MakeFID(u""_s), u"826816166001"_s);
    EXPECT_EQ(m_maker.MakeFID(u"   "_s), u"826816166002"_s);
}

TEST_F(MakeFid, TheCounterGoesOnInTheNextSecond)
{
    EXPECT_EQ(m_maker.MakeFID(), u"826816166000"_s);
    m_clock.addSeconds(1);
    EXPECT_EQ(m_maker.MakeFID(), u"826816167001"_s);
}

TEST_F(MakeFid, TheThousandAndFirstIdentifierInASecondRepeatsTheFirst)
{
    QSet<QString> made;
    const QString first = m_maker.MakeFID();
    made.insert(first);
    for (int i = 1; i < 1000; ++i) {
        made.insert(m_maker.MakeFID());
    }
    EXPECT_EQ(made.size(), 1000);
    EXPECT_EQ(m_maker.MakeFID(), first);
}

TEST_F(MakeFid, AWellFormedCandidateOfTheYear2000IsReplaced)
{
    EXPECT_FALSE(keeps(u"000086400000"_s));
    EXPECT_FALSE(keeps(u"31622399999"_s));
}

TEST_F(MakeFid, ACandidateOfTheFirstSecondOf2001IsKept)
{
    EXPECT_TRUE(keeps(u"31622400000"_s));
    EXPECT_TRUE(keeps(u"031622400000"_s));
}

TEST_F(MakeFid, ACandidate31DaysAheadIsReplacedAndOne29DaysAheadIsKept)
{
    EXPECT_FALSE(keeps(fidOf(m_clock.now().addDays(31))));
    EXPECT_TRUE(keeps(fidOf(m_clock.now().addDays(29))));
    EXPECT_TRUE(keeps(fidOf(m_clock.now().addDays(30))));
    EXPECT_FALSE(keeps(fidOf(m_clock.now().addDays(30).addSecs(1))));
}

TEST_F(MakeFid, ATextThatBeginsWithASmallNumberTellsTheEpochAndIsReplaced)
{
    EXPECT_EQ(FidToDate(u"12abc"), QDateTime(QDate(2000, 1, 1), QTime(0, 0)));
    EXPECT_EQ(m_maker.MakeFID(u"12abc"_s), u"826816166000"_s);
}

TEST_F(MakeFid, BlanksAroundATrustedCandidateAreCut)
{
    EXPECT_EQ(m_maker.MakeFID(u"  826816166123 "_s), u"826816166123"_s);
}

TEST_F(MakeFid, ATrustedCandidateDoesNotUseUpTheCounter)
{
    EXPECT_TRUE(keeps(u"826816166123"_s));
    EXPECT_EQ(m_maker.MakeFID(), u"826816166000"_s);
}

TEST_F(MakeFid, ACandidateThatIsNoPlainNumberOfTwelveDigitsIsReplacedThoughItsMomentIsFine)
{
    for (const QString& hostile :
         {u"826816166000abc"_s, u"826816166000' or '1'='1"_s, u"826816166000/../x"_s,
          u"826816166000,1"_s, u"82681616600.5"_s, u"0000826816166000"_s,
          u"\u0668\u0662\u0666816166000"_s, u"-31622400000"_s}) {
        const QString made = m_maker.MakeFID(hostile);
        EXPECT_NE(made, hostile) << hostile.toStdString();
        EXPECT_EQ(made.size(), Mod_Make_FID::kFidLength);
    }
}

TEST_F(MakeFid, NumbersBeyondEveryDateAreReplaced)
{
    EXPECT_FALSE(keeps(u"999999999999"_s));
    EXPECT_FALSE(keeps(QString(400, u'9')));
    EXPECT_FALSE(FidToDate(QString(400, u'9')).isValid());
}

TEST_F(MakeFid, AClockBefore2001StillMakesANumber)
{
    m_clock.set(QDateTime(QDate(2000, 1, 1), QTime(0, 0, 7)));
    EXPECT_EQ(m_maker.MakeFID(), u"7000"_s);
}

TEST(FidToDate, TheMomentIsCutToWholeSeconds)
{
    EXPECT_EQ(FidToDate(u"826816166999"), QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)));
}

TEST(FidToDate, ATextWithoutANumberTellsTheEpoch)
{
    EXPECT_EQ(FidToDate(u"abc"), QDateTime(QDate(2000, 1, 1), QTime(0, 0)));
    EXPECT_EQ(FidToDate(u""), QDateTime(QDate(2000, 1, 1), QTime(0, 0)));
}

TEST(FidToDate, TurnsBackWhatTheMakerMade)
{
    const QDateTime summer(QDate(2025, 7, 1), QTime(3, 30));
    EXPECT_EQ(FidToDate(fidOf(summer)), summer);
    // The hour that summer time takes out of the night in many places.
    const QDateTime march(QDate(2025, 3, 30), QTime(1, 59, 59));
    EXPECT_EQ(FidToDate(fidOf(march)), march);
}
