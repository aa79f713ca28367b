#pragma once

#include "platform/controls/warnings.h"

#include <QString>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class Mod_API;

/// What a message is shown with.
struct FailureMessageParts
{
    GlobalSettings& settings;
    const ConfigObjects& texts;
    Mod_API& paths;
    QString theme; ///< that of the console; empty follows the desktop
};

/// Shows what failed, or was left out, in a window and waits until the user has read it. The
/// program needs no window before, so this makes its application object.
void showFailure(int argc,
                 char** argv,
                 const FailureMessageParts& parts,
                 const QString& text,
                 WarningType type);

} // namespace melovane
