#pragma once

#include <QtGlobal>

namespace melovane {

// First value of the messages that a context menu sends to both grids, "fill.temp.edit.table" and
// "show.melovane.kiv": whose menu it was. Without a number each view takes it as its own.

inline constexpr qint32 kViewIsPlaylist = 1;
inline constexpr qint32 kViewIsLibrary = 2;

} // namespace melovane
