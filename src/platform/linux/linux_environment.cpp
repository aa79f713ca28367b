#include "platform/linux/linux_environment.h"

#include "platform/linux/system_names.h"
#include "platform/system/path_text.h"

#include <QCryptographicHash>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where an installed copy lies below its prefix.
constexpr QStringView kInstalledPlace = u"/lib/melovane";
constexpr QStringView kExecutableSuffix = u".exe";

/// Programs hand it on to those that they start: keep.
constexpr const char* kDataFolderVariable = "MELOVANE_DATA_DIR";

QString runningProgram()
{
    QByteArray path(PATH_MAX, '\0');
    const ssize_t size = ::readlink("/proc/self/exe", path.data(), size_t(path.size()));
    path.truncate(qMax<ssize_t>(size, 0));
    return linuxnames::decode(path);
}

QString withoutSuffix(const QString& name)
{
    return name.endsWith(kExecutableSuffix, Qt::CaseInsensitive)
               ? name.chopped(kExecutableSuffix.size())
               : name;
}

/// An absolute path of a variable, else the fallback.
QString folderVariable(const char* name, const QString& fallback)
{
    const QString value = linuxnames::decode(qgetenv(name));
    return value.startsWith(u'/') ? path::withoutSeparator(value) : fallback;
}

QString home()
{
    return folderVariable("HOME", u"/"_s);
}

/// A number among the values: this word and up to eight hexadecimal digits, "number:1f". Keep, the
/// programs of the suite share the files.
constexpr QStringView kNumberMark = u"number:";
constexpr qsizetype kNumberDigits = 8;

/// A value as its reader gets it: a text as it stands, a number of 32 bits in decimal digits.
QString readable(const QString& stored)
{
    const QStringView digits = QStringView(stored).sliced(qMin(kNumberMark.size(), stored.size()));
    bool isNumber = stored.startsWith(kNumberMark) && digits.size() <= kNumberDigits;
    const uint number = isNumber ? digits.toUInt(&isNumber, 16) : 0;
    return isNumber ? QString::number(qint32(number)) : stored;
}

void fill(QString& place, const std::function<QString()>& ofTheMachine)
{
    if (place.isNull()) {
        place = ofTheMachine();
    }
}

QString prefixOf(const QString& programFolder)
{
    const bool installed =
        programFolder.endsWith(kInstalledPlace) && programFolder.size() > kInstalledPlace.size();
    return installed ? programFolder.chopped(kInstalledPlace.size()) : u"/usr"_s;
}

/// The folder that stands for all places of the user, see `--data-dir`; empty for the desktop's.
QString dataFolder()
{
    return folderVariable(kDataFolderVariable, {});
}

/// Tells the programs of one data folder from those of another.
QString runtimeName()
{
    const QString folder = dataFolder();
    const QByteArray mark =
        QCryptographicHash::hash(linuxnames::encode(folder), QCryptographicHash::Sha256)
            .toHex()
            .first(8);
    return u"melovane"_s + (folder.isEmpty() ? QString() : u'-' + QString::fromLatin1(mark));
}

void fillFromDataFolder(EnvironmentPlaces& places)
{
    const QString folder = dataFolder();
    if (folder.isEmpty()) {
        return;
    }
    fill(places.userData, [&] { return folder; });
    fill(places.cacheBase, [&] { return path::join(folder, u"cache"); });
    fill(places.userDocuments, [&] { return path::join(folder, u"lists"); });
    fill(places.userFile, [&] { return path::join(folder, u"user.conf"); });
    // What an administrator says holds for the desktop's folders.
    fill(places.machineFile, [] { return u""_s; });
}

EnvironmentPlaces filled(EnvironmentPlaces places)
{
    fillFromDataFolder(places);
    fill(places.programFolder, [] { return path::parent(runningProgram()); });
    fill(places.programName, [] { return withoutSuffix(path::fileName(runningProgram())); });
    fill(places.userData,
         [] { return folderVariable("XDG_DATA_HOME", path::join(home(), u".local/share")); });
    fill(places.cacheBase,
         [] { return folderVariable("XDG_CACHE_HOME", path::join(home(), u".cache")); });
    fill(places.commonData, [] { return u"/var/lib"_s; });
    fill(places.userDocuments,
         [] { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); });
    fill(places.commonDocuments, [] { return u"/var/lib"_s; });
    fill(places.programFiles, [&] { return prefixOf(places.programFolder); });
    fill(places.machineFile, [] { return u"/etc/melovane/machine.conf"_s; });
    fill(places.userFile, [] {
        const QString config = folderVariable("XDG_CONFIG_HOME", path::join(home(), u".config"));
        return path::join(config, u"Melovane/user.conf");
    });
    fill(places.runtimeBase, [] { return folderVariable("XDG_RUNTIME_DIR", QString()); });
    fill(places.temporaryBase, [] { return u"/tmp"_s; });
    return places;
}

/// Makes or accepts a folder that is ours alone.
bool isPrivateFolder(const QString& folder)
{
    const QByteArray name = linuxnames::encode(folder);
    if (::mkdir(name.constData(), 0700) != 0 && errno != EEXIST) {
        return false;
    }
    struct stat facts = {};
    if (::lstat(name.constData(), &facts) != 0 || !S_ISDIR(facts.st_mode) ||
        facts.st_uid != ::geteuid()) {
        return false;
    }
    return (facts.st_mode & 0777U) == 0700U || ::chmod(name.constData(), 0700) == 0;
}

} // namespace

LinuxEnvironment::LinuxEnvironment(EnvironmentPlaces places)
    : m_places(filled(std::move(places)))
    , m_values(m_files)
{}

QString LinuxEnvironment::programFolder() const
{
    return m_places.programFolder;
}

QString LinuxEnvironment::programName() const
{
    return m_places.programName;
}

QString LinuxEnvironment::specialFolder(int csidl) const
{
    switch (csidl) {
    case 26:
        return m_places.userData;
    case 35:
        return m_places.commonData;
    case 5:
        return m_places.userDocuments;
    case 46:
        return m_places.commonDocuments;
    case 38:
        return m_places.programFiles;
    }
    return {};
}

QString LinuxEnvironment::machineValue(const QString& name) const
{
    if (m_places.machineFile.isEmpty()) {
        return name == "AppPathConfig"_L1 ? u"user.normal"_s : QString();
    }
    return readable(m_values.value(m_places.machineFile, QString(), name).value_or(QString()));
}

QString LinuxEnvironment::userValue(const QString& program, const QString& name) const
{
    return readable(m_values.value(m_places.userFile, program, name).value_or(QString()));
}

void LinuxEnvironment::setUserValue(const QString& program,
                                    const QString& name,
                                    const QString& value)
{
    m_files.makeFolders(path::parent(m_places.userFile));
    m_values.write(m_places.userFile, program, name, value);
}

QString LinuxEnvironment::cacheFolder() const
{
    return path::join(m_places.cacheBase, u"Melovane");
}

QString LinuxEnvironment::runtimeFolder() const
{
    QStringList places;
    if (!m_places.runtimeBase.isEmpty()) {
        places.append(path::join(m_places.runtimeBase, runtimeName()));
    }
    places.append(path::join(m_places.temporaryBase, runtimeName() + u"-%1"_s.arg(::geteuid())));
    for (const QString& place : places) {
        if (isPrivateFolder(place)) {
            return place;
        }
    }
    return {};
}

} // namespace melovane
