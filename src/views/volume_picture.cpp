#include "views/volume_picture.h"

#include <algorithm>
#include <array>

namespace melovane {

namespace {

/// Volume of the monitor at its loudest, as messages tell it: keep.
constexpr int kLoudest = 10'000;

/// A fifth of the volume each, behind the one for silence.
constexpr std::array<QStringView, 6> kPictures = {u"volume0", u"volume1", u"volume1",
                                                  u"volume2", u"volume",  u"volume"};

} // namespace

QString volumePicture(int volume)
{
    constexpr int kFifth = kLoudest / 5;
    const int step = (std::clamp(volume, 0, kLoudest) + kFifth - 1) / kFifth;
    return kPictures[static_cast<std::size_t>(step)].toString();
}

} // namespace melovane
