#include "shell/language_files.h"

#include "config/config_objects.h"
#include "config/paths.h"
#include "platform/system/files.h"
#include "platform/system/ini_text.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Setting with the name of the language file: keep.
const QString kSetting = u"Sprach.Datei"_s;

/// The language that needs no file.
const QString kBuiltIn = u"lang_Deutsch.ini"_s;
const QString kBuiltInTitle = u"Deutsch"_s;

/// A language file holds some hundred lines.
constexpr qint64 kLargestFile = qint64{4} * 1024 * 1024;

bool isSameFile(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

bool isLanguageFile(const QString& name)
{
    return name.startsWith("lang_"_L1, Qt::CaseInsensitive) &&
           path::extension(name).compare("ini"_L1, Qt::CaseInsensitive) == 0;
}

} // namespace

LanguageFiles::LanguageFiles(Mod_API& paths, const Files& files, ConfigObjects& texts)
    : m_paths(paths)
    , m_files(files)
    , m_texts(texts)
{}

QString LanguageFiles::titleOf(const QString& fileName) const
{
    // The file's own words first, then those of its name: "lang_Polski.ini" speaks Polski.
    const QString fromName = path::baseName(fileName).mid(5);
    try {
        const QByteArray bytes =
            m_files.read(path::join(m_paths.GetConfigPath(), fileName), kLargestFile);
        const QString own = IniText(textfile::decode(bytes))
                                .value(u"Description"_s, u"Sprach.Name"_s)
                                .value_or(QString());
        return own.isEmpty() ? fromName : own;
    } catch (const IoError&) {
        return fromName;
    }
}

std::vector<LanguageEntry> LanguageFiles::entries() const
{
    const QString chosen = m_texts.value(kSetting);
    std::vector<LanguageEntry> result;
    for (const QString& name : m_files.names(m_paths.GetConfigPath())) {
        if (isLanguageFile(name) && !isSameFile(name, kBuiltIn)) {
            result.push_back({name, titleOf(name), isSameFile(name, chosen)});
        }
    }
    const bool another = std::any_of(result.begin(), result.end(),
                                     [](const LanguageEntry& entry) { return entry.active; });
    result.push_back({kBuiltIn, kBuiltInTitle, !another});
    std::sort(result.begin(), result.end(), [](const LanguageEntry& one, const LanguageEntry& two) {
        return one.title.localeAwareCompare(two.title) < 0;
    });
    return result;
}

bool LanguageFiles::choose(const QString& fileName)
{
    ConfigObject* setting = m_texts.FindObject(kSetting);
    if (setting == nullptr || isSameFile(setting->Value.toText(), fileName)) {
        return false;
    }
    setting->Value = fileName;
    m_texts.SaveValueByName(kSetting);
    return true;
}

} // namespace melovane
