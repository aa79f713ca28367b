#pragma once

#include <QtGlobal>

namespace melovane {

// First value of the messages that a context menu sends to both grids, "fill.temp.edit.table" and
// "show.melovane.kiv": whose menu it was. Without a number each view takes the first message as its
// own, and the playlist alone the second one.

inline constexpr qint32 kViewIsPlaylist = 1;
inline constexpr qint32 kViewIsLibrary = 2;

} // namespace melovane
