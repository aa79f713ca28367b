#pragma once

#include "platform/message/message_control.h"

namespace melovane {

/// Writes all that waits and shows how far it is. The window goes by itself when nothing failed.
/// \param console the control that is told the result; 0 for the one that the settings name
/// \return what the program ends with
[[nodiscard]] int runWindow(int argc, char** argv, MessageHandle console);

} // namespace melovane
