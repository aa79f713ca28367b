#include "platform/system/leading_number.h"

#include <cmath>
#include <limits>

namespace melovane {

namespace {

bool isDigit(QChar sign)
{
    return sign >= u'0' && sign <= u'9';
}

} // namespace

double leadingNumber(QStringView text)
{
    qsizetype at = 0;
    while (at < text.size() && text[at] == u' ') {
        ++at;
    }
    const qsizetype start = at;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        ++at;
    }
    bool point = false;
    bool digits = false;
    for (; at < text.size(); ++at) {
        if (isDigit(text[at])) {
            digits = true;
        } else if (text[at] == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    return digits ? text.sliced(start, at - start).toDouble() : 0;
}

int leadingLong(QStringView text)
{
    return toLongHalfEven(leadingNumber(text));
}

int toLongHalfEven(double number)
{
    if (std::isnan(number)) {
        return 0;
    }
    if (number >= double(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    if (number <= double(std::numeric_limits<int>::min())) {
        return std::numeric_limits<int>::min();
    }
    return int(std::nearbyint(number));
}

} // namespace melovane
