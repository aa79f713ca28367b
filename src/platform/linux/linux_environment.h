#pragma once

#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_files.h"
#include "platform/system/files.h"

#include <QByteArray>

namespace melovane {

/// Places that tests put in the stead of the machine's; null texts mean the machine's own.
struct EnvironmentPlaces
{
    QString programFolder;
    QString programName;
    QString userData;        ///< shell folder 26; $XDG_DATA_HOME
    QString commonData;      ///< 35; /var/lib
    QString userDocuments;   ///< 5; the desktop's documents folder
    QString commonDocuments; ///< 46; /var/lib
    QString programFiles;    ///< 38; the install prefix
    QString machineFile;     ///< /etc/melovane/machine.conf
    QString userFile;        ///< $XDG_CONFIG_HOME/Melovane/user.conf
    QString cacheBase;       ///< $XDG_CACHE_HOME
    QString runtimeBase;     ///< $XDG_RUNTIME_DIR
    QString temporaryBase;   ///< /tmp
};

/// Places and kept values on Linux.
///
/// Machine-wide values are lines "name=value" in front of any section of machine.conf, which only
/// an administrator writes. Values per user and program stand in user.conf, one section a program.
/// Variables of the desktop that are not absolute paths are ignored, as its rules ask.
class LinuxEnvironment : public Environment
{
public:
    explicit LinuxEnvironment(EnvironmentPlaces places = {});

    [[nodiscard]] QString programFolder() const override;

    /// Programs have no extension here, so only ".exe" is cut: "Task.WriteTags" is a whole name.
    [[nodiscard]] QString programName() const override;

    /// 38 is PREFIX for a program in PREFIX/lib/melovane, "/usr" for any other.
    [[nodiscard]] QString specialFolder(int csidl) const override;
    [[nodiscard]] QString machineValue(const QString& name) const override;
    [[nodiscard]] QString userValue(const QString& program, const QString& name) const override;
    void setUserValue(const QString& program, const QString& name, const QString& value) override;

    /// "melovane" below $XDG_RUNTIME_DIR, else /tmp/melovane-<user number>. A folder that somebody
    /// else owns, or a link in its place, is refused. Empty when no place will do.
    [[nodiscard]] QString runtimeFolder() const override;

    /// "Melovane" below $XDG_CACHE_HOME: for what can be made again. Whoever writes there makes it.
    [[nodiscard]] QString cacheFolder() const;

private:
    EnvironmentPlaces m_places;
    LinuxFiles m_files;
    IniProfile m_values;
};

} // namespace melovane
