#include "store/milli_sec_to_min.h"

#include "platform/system/leading_number.h"

namespace melovane::Mod_MilliSecToMin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kHourMs = 3'600'000;
constexpr int kMinuteMs = 60'000;
constexpr int kSecondMs = 1'000;

} // namespace

QString PadNumber(int number, int width)
{
    return (u"000"_s + QString::number(number)).right(width);
}

QString MilliSecToMin(int milliseconds, int format)
{
    const int position = qMax(milliseconds, 0);
    const int hours = position / kHourMs;
    const int minutes = position % kHourMs / kMinuteMs;
    const int seconds = position % kMinuteMs / kSecondMs;
    const int rest = position % kSecondMs;

    const QString total = PadNumber(hours * 60 + minutes, 2) + u':' + PadNumber(seconds, 2);
    switch (format) {
    case 3:
        return total + u':' + PadNumber(toLongHalfEven(rest / 10.0), 2);
    case 4: {
        const QString inHour = PadNumber(minutes, 2) + u':' + PadNumber(seconds, 2);
        return hours > 0 ? QString::number(hours) + u"h  "_s + inHour : inHour;
    }
    case 7:
        return total + u':' + PadNumber(rest, 3);
    default:
        return total;
    }
}

} // namespace melovane::Mod_MilliSecToMin
