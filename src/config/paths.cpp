#include "config/paths.h"

#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"

#include <QCryptographicHash>

#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Shell folder numbers: keep.
constexpr int kUserDocuments = 5;
constexpr int kUserData = 26;
constexpr int kCommonData = 35;
constexpr int kProgramFiles = 38;
constexpr int kCommonDocuments = 46;

/// Version of the skins that this release ships. Skins of another version are copied again.
constexpr QStringView kSkinVersion = u"3.8";

// Values below the program's user key: which skins and language files were copied last.
const QString kSkinVersionName = u"SkinVersion"_s;
const QString kLanguageMarkName = u"LanguageMark"_s;

const QString kLocal = u"local"_s;
const QString kUserNormal = u"user.normal"_s;
const QString kUserGlobal = u"user.global"_s;

/// The suite's folder in a shell folder. A shell folder that cannot be told leaves its folder at
/// the root.
QString suiteFolder(const QString& shellFolder)
{
    return path::withoutSeparator(shellFolder) + path::kSeparator + u"Melovane"_s;
}

/// Whether a folder is the other one or lies below it, without regard to letter case. The names
/// must be whole: "/usr" is short enough to stand inside other folders' names.
bool liesBelow(const QString& folder, const QString& above)
{
    return path::withSeparator(lowerCase(folder)).startsWith(path::withSeparator(lowerCase(above)));
}

void copyQuietly(Files& files, const QString& source, const QString& target)
{
    // The content, not the file: one from a read-only disc must not become read only.
    try {
        files.writeWhole(target, files.read(source));
    } catch (const IoError&) {
        return; // Nothing to copy, or nowhere to: the start tells the user what is missing.
    }
}

void copySkins(Files& files, const QString& programFolder, const QString& skinFolder)
{
    const QString source = path::join(programFolder, u"Skin");
    for (const QString& name : files.names(source)) {
        if (path::extension(name).compare("skn"_L1, Qt::CaseInsensitive) == 0) {
            copyQuietly(files, path::join(source, name), path::join(skinFolder, name));
        }
    }
}

/// A file that lies in the program folder and is to be copied.
struct ShippedFile
{
    QString name;
    QByteArray bytes;
};

std::vector<ShippedFile> shippedLanguages(const Files& files, const QString& folder)
{
    std::vector<ShippedFile> result;
    for (const QString& name : files.names(folder)) {
        if (name.startsWith("lang_"_L1, Qt::CaseInsensitive) &&
            path::extension(name).compare("ini"_L1, Qt::CaseInsensitive) == 0) {
            try {
                result.push_back({name, files.read(path::join(folder, name))});
            } catch (const IoError&) {
                continue; // Nothing to copy.
            }
        }
    }
    return result;
}

/// Tells one set of shipped files from another.
QString markOf(const std::vector<ShippedFile>& shipped)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const ShippedFile& file : shipped) {
        hash.addData(file.name.toUtf8() + '\0' + file.bytes);
    }
    return QString::fromLatin1(hash.result().toHex().first(16));
}

} // namespace

Mod_API::Mod_API(Environment& environment, Files& files)
    : m_environment(environment)
    , m_files(files)
{}

QString Mod_API::GetPathMode()
{
    if (!m_mode.isEmpty()) {
        return m_mode;
    }
    m_mode = lowerCase(m_environment.machineValue(u"AppPathConfig"_s));
    if (m_mode != kLocal && m_mode != kUserNormal && m_mode != kUserGlobal) {
        m_mode = liesBelow(programFolder(), GetSpecialFolder(kProgramFiles)) ? kUserNormal : kLocal;
    }
    return m_mode;
}

QString Mod_API::GetConfigPath()
{
    QString folder = programFolder();
    if (GetPathMode() == kUserNormal) {
        folder = suiteFolder(GetSpecialFolder(kUserData));
    } else if (GetPathMode() == kUserGlobal) {
        folder = suiteFolder(GetSpecialFolder(kCommonData));
    }
    if (!m_copied) {
        copyFirstFiles(folder);
        m_copied = true;
    }
    return folder;
}

QString Mod_API::GetPlaylistRoot()
{
    QString folder = programFolder();
    if (GetPathMode() == kUserNormal) {
        folder = suiteFolder(GetSpecialFolder(kUserDocuments));
    } else if (GetPathMode() == kUserGlobal) {
        folder = suiteFolder(GetSpecialFolder(kCommonDocuments));
    }
    // A fresh account may have no documents folder yet.
    m_files.makeFolders(folder);
    return folder;
}

void Mod_API::copyFirstFiles(const QString& configPath)
{
    const QString program = programFolder();
    if (!m_files.folderExists(configPath)) {
        m_files.makeFolders(configPath);
        for (const QString& name : {u"melovane.mdb"_s, u"melovane.ini"_s, u"MelovaneJob.ini"_s}) {
            copyQuietly(m_files, path::join(program, name), path::join(configPath, name));
        }
    }
    const QString skins = path::join(configPath, u"Skin");
    if (!m_files.folderExists(skins)) {
        m_files.makeFolder(skins);
        copySkins(m_files, program, skins);
        SetUserRegistryValue(kSkinVersionName, kSkinVersion.toString());
    }
    if (GetUserRegistryValue(kSkinVersionName, u"null"_s) != kSkinVersion &&
        program != configPath) {
        copySkins(m_files, program, skins);
        SetUserRegistryValue(kSkinVersionName, kSkinVersion.toString());
    }
    const QString layouts = path::join(configPath, u"Layout");
    if (!m_files.folderExists(layouts)) {
        m_files.makeFolder(layouts);
        copyQuietly(m_files, path::join(program, u"Layout/default.grx"),
                    path::join(layouts, u"default.grx"));
    }
    m_files.makeFolder(path::join(configPath, u"Image"));
    if (program != configPath) {
        copyLanguages(configPath);
    }
}

void Mod_API::copyLanguages(const QString& configPath)
{
    const auto shipped = shippedLanguages(m_files, programFolder());
    // Texts come with almost every build; a user's own changes last until then.
    const QString mark = markOf(shipped);
    const bool isNew = GetUserRegistryValue(kLanguageMarkName, u"null"_s) != mark;
    for (const ShippedFile& file : shipped) {
        const QString target = path::join(configPath, file.name);
        if (isNew || !m_files.fileExists(target)) {
            copyQuietly(m_files, path::join(programFolder(), file.name), target);
        }
    }
    if (isNew) {
        SetUserRegistryValue(kLanguageMarkName, mark);
    }
}

QString Mod_API::programFolder() const
{
    return m_environment.programFolder();
}

QString Mod_API::programName() const
{
    return m_environment.programName();
}

QString Mod_API::GetUserRegistryValue(const QString& name, const QString& fallback) const
{
    const QString value = m_environment.userValue(programName(), name);
    return value.isEmpty() ? fallback : value;
}

void Mod_API::SetUserRegistryValue(const QString& name, const QString& value)
{
    m_environment.setUserValue(programName(), name, value.isEmpty() ? u" "_s : value);
}

QString Mod_API::GetSpecialFolder(int csidl) const
{
    return m_environment.specialFolder(csidl);
}

QString GetVersionString()
{
    return u"%1.%2 build(%3)"_s.arg(MLV_VERSION_MAJOR)
        .arg(MLV_VERSION_MINOR)
        .arg(MLV_VERSION_REVISION);
}

QString mainWindowCaption()
{
    return u"Melovane DB "_s + GetVersionString();
}

QString dialogCaption()
{
    return u"Melovane "_s + GetVersionString();
}

int databaseLevelOfThisRelease()
{
    return u"%1%2%3"_s.arg(MLV_VERSION_MAJOR)
        .arg(MLV_VERSION_MINOR)
        .arg(MLV_VERSION_REVISION)
        .toInt();
}

} // namespace melovane
