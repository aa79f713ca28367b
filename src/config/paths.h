#pragma once

#include <QString>

namespace melovane {

class Environment;
class Files;

/// Where the installation keeps its files: program folder, configuration path and playlist root.
///
/// One value for the whole machine, `AppPathConfig`, tells which of three layouts is in use;
/// without it the place of the program decides. Folders are returned without a separator at their
/// end.
class Mod_API
{
public:
    Mod_API(Environment& environment, Files& files);

    /// "local", "user.normal" or "user.global"; read once.
    [[nodiscard]] QString GetPathMode();

    /// The folder of settings, database, layouts, skins and images. The first call makes it and
    /// copies the first set of files into it; failures in that are ignored.
    [[nodiscard]] QString GetConfigPath();

    /// The folder that playlists lie below; made when missing.
    [[nodiscard]] QString GetPlaylistRoot();

    [[nodiscard]] QString programFolder() const;
    /// "MelovaneDB" for the console.
    [[nodiscard]] QString programName() const;

    /// A per-user value of this program; `fallback` when it is absent or empty.
    [[nodiscard]] QString GetUserRegistryValue(const QString& name, const QString& fallback) const;
    /// An empty value is stored as one blank.
    void SetUserRegistryValue(const QString& name, const QString& value);

    /// The folder of a shell folder number (26, 35, 5, 46, 38), or an empty text.
    [[nodiscard]] QString GetSpecialFolder(int csidl) const;

private:
    void copyFirstFiles(const QString& configPath);
    void copyLanguages(const QString& configPath);

    Environment& m_environment;
    Files& m_files;
    QString m_mode;
    bool m_copied = false;
};

/// "3.4 build(150)": the version as captions show it.
[[nodiscard]] QString GetVersionString();

/// The title of the main window, also the sign by which a second copy is recognised.
[[nodiscard]] QString mainWindowCaption();

/// "Melovane 3.4 build(150)": the title of the program's dialogs.
[[nodiscard]] QString dialogCaption();

/// Major, minor and revision written one after the other and read as one number: 34150.
[[nodiscard]] int databaseLevelOfThisRelease();

} // namespace melovane
