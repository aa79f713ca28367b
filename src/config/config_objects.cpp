#include "config/config_objects.h"

#include "platform/system/files.h"
#include "platform/system/letter_case.h"

#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Names in the files: keep.
const QString kValueSection = u"Value"_s;

/// A text of an item and the section of a language file that holds it.
struct LanguageText
{
    QStringView section;
    QString ConfigObject::*text;
};

constexpr std::array kLanguageTexts{
    LanguageText{u"Description", &ConfigObject::Description},
    LanguageText{u"DescriptionEx", &ConfigObject::DescriptionEx},
    LanguageText{u"ToolTip", &ConfigObject::ToolTip},
};

QString emptyForNull(const QString& text)
{
    return text == "Null"_L1 ? QString() : text;
}

std::optional<QString> entryOf(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

/// The number of the placeholder at a place of a text, 1 to 4; 0 when there is none.
int placeholderAt(const QString& text, qsizetype place)
{
    if (text.at(place) != u'$' || place + 1 >= text.size()) {
        return 0;
    }
    const int number = text.at(place + 1).unicode() - u'0';
    return number >= 1 && number <= 4 ? number : 0;
}

QString filled(const QString& form, const std::array<const Value*, 4>& values)
{
    QString result;
    for (qsizetype place = 0; place < form.size(); ++place) {
        const int number = placeholderAt(form, place);
        if (number == 0) {
            result.append(form.at(place));
            continue;
        }
        result.append(values[static_cast<size_t>(number - 1)]->toText());
        ++place;
    }
    return result;
}

} // namespace

ConfigObjects::ConfigObjects(Mod_API& paths, PrivateProfile& profile, const Files& files)
    : m_files(files)
    , m_values(paths, profile)
    , m_language(paths, profile)
{}

ConfigObjects::~ConfigObjects() = default;

void ConfigObjects::SetFileName(const QString& name)
{
    m_values.INI_SetFilename(name, true);
}

void ConfigObjects::Add(ConfigObject item)
{
    const QString name = upperCase(item.Name);
    if (m_byName.contains(name)) {
        return;
    }
    m_items.push_back(std::make_unique<ConfigObject>(std::move(item)));
    m_byName.insert(name, m_items.back().get());
}

void ConfigObjects::NewItem(const QString& name,
                            const QString& value,
                            const QString& description,
                            const QString& descriptionEx)
{
    ConfigObject item;
    item.Name = emptyForNull(name);
    item.Description = emptyForNull(description);
    item.DescriptionEx = emptyForNull(descriptionEx);
    const QString given = emptyForNull(value);
    item.HasValue = !given.isEmpty();
    item.Value = item.ValueLoaded = item.DefaultValue = given;
    Add(std::move(item));
}

ConfigObject* ConfigObjects::FindObject(QStringView name) const
{
    return m_byName.value(upperCase(name.toString()), nullptr);
}

QString ConfigObjects::text(QStringView name,
                            const Value& p1,
                            const Value& p2,
                            const Value& p3,
                            const Value& p4) const
{
    const ConfigObject* item = FindObject(name);
    return item ? filled(item->GetDescription(u"$1"_s, u"$2"_s, u"$3"_s, u"$4"_s),
                         {&p1, &p2, &p3, &p4})
                : QString();
}

QString ConfigObjects::textEx(QStringView name, const Value& p1) const
{
    static const Value none;
    const ConfigObject* item = FindObject(name);
    return item ? filled(item->GetDescriptionEx(u"$1"_s, u"$2"_s, u"$3"_s, u"$4"_s),
                         {&p1, &none, &none, &none})
                : QString();
}

QString ConfigObjects::value(QStringView name) const
{
    const ConfigObject* item = FindObject(name);
    return item ? item->Value.toText() : QString();
}

ConfigObjects::Items ConfigObjects::AllObjects() const
{
    Items result;
    for (const auto& item : m_items) {
        result.push_back(item.get());
    }
    return result;
}

void ConfigObjects::SaveValue(const ConfigObject& item)
{
    if (item.HasValue) {
        m_values.INI_WriteKeyValue(kValueSection, item.Name, item.Value.toText());
    }
}

void ConfigObjects::SaveValueByName(const QString& name)
{
    if (const ConfigObject* item = FindObject(name)) {
        SaveValue(*item);
    }
}

void ConfigObjects::readValue(ConfigObject& item) const
{
    item.Value = m_values.INI_GetKeyValue(kValueSection, item.Name, item.DefaultValue.toText());
    item.ValueLoaded = item.Value;
}

ConfigObject* ConfigObjects::LoadValue(const QString& name)
{
    ConfigObject* item = FindObject(name);
    if (item) {
        readValue(*item);
    }
    return item;
}

void ConfigObjects::LoadAllValue()
{
    for (const auto& item : m_items) {
        if (item->HasValue) {
            readValue(*item);
        }
    }
}

void ConfigObjects::SaveAllValue()
{
    std::vector<ProfileEntry> entries;
    for (const auto& item : m_items) {
        entries.push_back({kValueSection, item->Name, entryOf(item->Value.toText())});
    }
    m_values.INI_WriteAll(std::move(entries));
}

void ConfigObjects::SaveAllLang(const QString& fileName)
{
    std::vector<ProfileEntry> entries;
    for (const LanguageText& kind : kLanguageTexts) {
        for (const auto& item : m_items) {
            entries.push_back({kind.section.toString(), item->Name, entryOf((*item).*kind.text)});
        }
    }
    m_language.INI_SetFilename(fileName, true);
    m_language.INI_WriteAll(std::move(entries));
}

void ConfigObjects::LoadAllLang(const QString& fileName)
{
    m_language.INI_SetFilename(fileName, true);
    if (!m_files.fileExists(fileName)) {
        return;
    }
    for (const LanguageText& kind : kLanguageTexts) {
        const QString section = kind.section.toString();
        for (const auto& item : m_items) {
            QString& text = (*item).*kind.text;
            text = m_language.INI_GetKeyValue(section, item->Name, text);
        }
    }
}

const ConfigObjects::Items& ConfigObjects::GetKeys()
{
    if (!m_keysKnown) {
        m_keys = GetCollection(u"Keys"_s);
        m_keysKnown = true;
    }
    return m_keys;
}

ConfigObjects::Items ConfigObjects::GetCollection(const QString& group) const
{
    const QString wanted = upperCase(group);
    Items result;
    for (const auto& item : m_items) {
        if (upperCase(item->Group) == wanted) {
            result.push_back(item.get());
        }
    }
    return result;
}

} // namespace melovane
