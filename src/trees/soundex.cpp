#include "trees/soundex.h"

#include "platform/system/letter_case.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kCodeLength = 4;
constexpr int kSeparator = -1;
constexpr int kIgnored = -2;

/// Classes of "A" to "Z".
constexpr std::array<int, 26> kClasses{
    kSeparator, 1, 2, 3, kSeparator, 1, 2,          kSeparator, kSeparator, 2, 2,          4, 5, 5,
    kSeparator, 1, 2, 6, 2,          3, kSeparator, 1,          kSeparator, 2, kSeparator, 2};

int classOf(QChar letter)
{
    return letter >= u'A' && letter <= u'Z' ? kClasses[std::size_t(letter.unicode() - u'A')]
                                            : kIgnored;
}

} // namespace

QString soundexOf(QStringView word)
{
    QString code;
    int previous = kSeparator;
    bool isParted = false;
    for (const QChar sign : upperCase(word.toString())) {
        const int letterClass = classOf(sign);
        if (letterClass == kIgnored) {
            continue;
        }
        if (code.isEmpty()) {
            code = sign;
            previous = letterClass;
        } else if (letterClass == kSeparator) {
            isParted = true;
        } else {
            if (letterClass != previous || isParted) {
                code += QString::number(letterClass);
            }
            previous = letterClass;
            isParted = false;
        }
        if (code.size() == kCodeLength) {
            break;
        }
    }
    return code.leftJustified(kCodeLength, u'0');
}

} // namespace melovane
