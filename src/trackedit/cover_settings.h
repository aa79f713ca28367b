#pragma once

#include <QString>

namespace melovane {

class GlobalSettings;

/// How pictures become covers, as the settings say.
struct CoverSettings
{
    int mostWidth = 0; ///< in pixels
    int quality = 0;   ///< 0 to 100
    QString folder;    ///< where the last picture was found; may be empty

    [[nodiscard]] static CoverSettings of(const GlobalSettings& settings);

    /// Keeps the folder of a picture that was chosen.
    static void keepFolderOf(GlobalSettings& settings, const QString& picture);
};

} // namespace melovane
