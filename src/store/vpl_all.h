#pragma once

#include <QString>

namespace melovane {

/// Name of the stored query that the playlist view shows.
inline constexpr QStringView kVplAllName = u"VPL_ALL";

/// The statement of `VPL_ALL`. Other programs compare it as a text: keep every blank.
[[nodiscard]] QString vplAllStatement();

} // namespace melovane
