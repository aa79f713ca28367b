#pragma once

#include <QString>

namespace melovane {

class Files;

/// The picture file of a track: its image name with ".jpg" in the folder "Image" of the data
/// folder, which is made when it is missing. Empty when there is no such file, and for a name that
/// leads out of the folder.
[[nodiscard]] QString coverFile(Files& files, const QString& dataFolder, const QString& image);

} // namespace melovane
