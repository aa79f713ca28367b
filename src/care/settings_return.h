#pragma once

#include <QStringList>
#include <QStringView>

namespace melovane {

class Files;
class PrivateProfile;

/// The folder, in the data folder, of settings that come back at the next start: while the program
/// runs it would write its present ones over them.
inline constexpr QStringView kReturningSettings = u"Melovane.Restore";

/// Names, below the data folder, of the files that hold settings, layouts and what the user has
/// searched.
[[nodiscard]] QStringList settingsFiles(const Files& files, const QString& dataFolder);

/// Gives the settings back that a restoring has left, before any is read. Numbers of running
/// programs and the choice of the library stay as they are. Quiet: what cannot be written is tried
/// again at the next start. True when there were any.
bool takeReturningSettings(Files& files, PrivateProfile& profile, const QString& dataFolder);

} // namespace melovane
