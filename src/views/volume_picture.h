#pragma once

#include <QString>

namespace melovane {

/// The name of the picture that tells how loud the monitor player is: the loudspeaker with none to
/// two waves.
/// \param volume 0 to 10000; beyond is taken as the nearest
[[nodiscard]] QString volumePicture(int volume);

} // namespace melovane
