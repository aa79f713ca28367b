#pragma once

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "support/temp_folder.h"

#include <memory>

namespace melovane::test {

/// An engine without any database: whoever opens one gets kFileNotFound.
class NoEngine : public DBEngine
{
public:
    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(const QString& name) override;

    void Idle(int) override {}

    [[nodiscard]] Workspace& Workspaces(int) override;
    void BackupDatabase(const QString& source, const QString& target) override;

    void Release(const QString&) override {}

    void GiveAway(const QString&) override {}

    void TakeBack(const QString&) override {}
};

/// An installation of the suite in a folder of its own: program folder, user's and common folders,
/// kept values, runtime folder. Nothing of the machine's is touched.
///
/// The program folder is empty at first; fill it with `install` before the first call that asks for
/// the configuration path.
class SuiteFolders
{
public:
    enum class Layout
    {
        Local,     ///< everything in the program folder
        UserNormal ///< configuration and playlists in the user's folders
    };

    /// \param programName of the running program; some rules ask for it
    explicit SuiteFolders(Layout layout = Layout::Local,
                          const QString& programName = QStringLiteral("MelovaneDB"));

    /// Writes a file into the program folder and returns its path.
    QString install(const QString& name, const QByteArray& bytes) const;

    [[nodiscard]] QString programFolder() const { return m_places.programFolder; }

    /// Full path of a file in the configuration path.
    [[nodiscard]] QString configFile(const QString& name);

    /// The places that the environment was made of, for making a second one.
    [[nodiscard]] const EnvironmentPlaces& places() const { return m_places; }

    [[nodiscard]] TempFolder& folder() { return m_folder; }

    [[nodiscard]] LinuxFiles& files() { return m_files; }

    [[nodiscard]] LinuxEnvironment& environment() { return m_environment; }

    [[nodiscard]] IniProfile& profile() { return m_profile; }

    [[nodiscard]] Mod_API& paths() { return m_paths; }

    /// Settings as a program makes them at its start; each call makes an object of its own.
    [[nodiscard]] std::unique_ptr<GlobalSettings> makeSettings(DBEngine& engine);
    /// The same without a database.
    [[nodiscard]] std::unique_ptr<GlobalSettings> makeSettings();

private:
    TempFolder m_folder;
    EnvironmentPlaces m_places;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile;
    Mod_API m_paths;
    NoEngine m_noEngine;
};

} // namespace melovane::test
