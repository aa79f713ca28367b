#pragma once

#include "siblings/melovanedj/night_watch.h"

#include <QString>

namespace melovane {

/// The player with its window, until that is closed.
/// \param order "next" or "now": what the console has put down is played; empty for none
int runPlayer(int argc, char** argv, const QString& order, const NightStart& start);

} // namespace melovane
