#include "store/make_fid.h"

#include "platform/db/value.h"
#include "platform/system/clock.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>
#include <cmath>

namespace melovane::Mod_Make_FID {

namespace {

constexpr int kHighestCounter = 999;
constexpr qint64 kSecondsPerDay = 86400;

/// Seconds as the wall clock shows them; a change to summer time makes no gap.
qint64 wallSecondsSinceEpoch(const QDateTime& moment)
{
    const qint64 days = QDate(2000, 1, 1).daysTo(moment.date());
    return days * kSecondsPerDay + moment.time().msecsSinceStartOfDay() / 1000;
}

bool isDigit(QChar sign)
{
    return sign >= u'0' && sign <= u'9';
}

} // namespace

QDateTime FidToDate(QStringView fid)
{
    const double seconds = std::floor(leadingNumber(fid) / 1000);
    return fromDayNumber(kEpochDay + seconds / kSecondsPerDay);
}

FidMaker::FidMaker(const Clock& clock)
    : m_clock(clock)
{}

bool FidMaker::isTrusted(const QString& candidate) const
{
    if (candidate.isEmpty() || candidate.size() > kFidLength ||
        !std::all_of(candidate.begin(), candidate.end(), isDigit)) {
        return false;
    }
    const double day = dayNumber(FidToDate(candidate));
    return day >= kEarliestDay && day <= dayNumber(m_clock.now().addDays(kDaysAhead));
}

QString FidMaker::MakeFID(const QString& candidate)
{
    QString known = trimBlanks(candidate);
    if (isTrusted(known)) {
        return known;
    }
    if (m_counter > kHighestCounter) {
        m_counter = 0;
    }
    const qint64 number = wallSecondsSinceEpoch(m_clock.now()) * 1000 + m_counter;
    ++m_counter;
    return QString::number(number);
}

} // namespace melovane::Mod_Make_FID
