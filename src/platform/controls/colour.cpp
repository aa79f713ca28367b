#include "platform/controls/colour.h"

#include <QString>

#include <cmath>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A channel with its display curve removed, 0 to 1.
double linear(quint8 channel)
{
    const double part = channel / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(Colour colour)
{
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

quint8 mixedChannel(quint8 base, quint8 over, double part)
{
    return static_cast<quint8>(std::lround(base + (over - base) * part));
}

} // namespace

Colour Colour::fromBgr(int number)
{
    const auto channel = [number](int shift) {
        return static_cast<quint8>((number >> shift) & 0xFF);
    };
    return {channel(0), channel(8), channel(16)};
}

std::optional<Colour> Colour::fromText(QStringView text)
{
    if (text.size() != 7 || text.front() != u'#') {
        return std::nullopt;
    }
    int number = 0;
    for (const QChar sign : text.sliced(1)) {
        const char16_t low = sign.toLower().unicode();
        if ((low < u'0' || low > u'9') && (low < u'a' || low > u'f')) {
            return std::nullopt;
        }
        number = number * 16 + (low <= u'9' ? low - u'0' : low - u'a' + 10);
    }
    return fromBgr((number & 0xFF) << 16 | (number & 0xFF00) | number >> 16);
}

QString Colour::toText() const
{
    const int number = red << 16 | green << 8 | blue;
    return u'#' + QString::number(number, 16).rightJustified(6, u'0');
}

double contrast(Colour first, Colour second)
{
    const double one = luminance(first);
    const double two = luminance(second);
    return (std::max(one, two) + 0.05) / (std::min(one, two) + 0.05);
}

Colour mixed(Colour base, Colour over, double part)
{
    return {mixedChannel(base.red, over.red, part), mixedChannel(base.green, over.green, part),
            mixedChannel(base.blue, over.blue, part)};
}

Colour readableOn(Colour text, Colour ground, double leastContrast)
{
    if (contrast(text, ground) >= leastContrast) {
        return text;
    }
    constexpr Colour kBlack{0, 0, 0};
    constexpr Colour kWhite{255, 255, 255};
    const Colour end = contrast(kWhite, ground) >= contrast(kBlack, ground) ? kWhite : kBlack;
    constexpr int kSteps = 32;
    for (int step = 1; step < kSteps; ++step) {
        const Colour candidate = mixed(text, end, double(step) / kSteps);
        if (contrast(candidate, ground) >= leastContrast) {
            return candidate;
        }
    }
    return end;
}

} // namespace melovane
