#include "settings/setting_values.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/system/leading_number.h"
#include "settings/setting_draft.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A tick that is set, as this class gives it.
const QString kOn = u"1"_s;

bool isOn(SettingKind kind, const QString& stored)
{
    return kind == SettingKind::Switch ? stored.compare("on"_L1, Qt::CaseInsensitive) == 0
                                       : leadingLong(stored) != 0;
}

QString tickText(SettingKind kind, bool on)
{
    switch (kind) {
    case SettingKind::Switch:
        return on ? u"on"_s : u"off"_s;
    case SettingKind::Flag:
        return on ? u"-1"_s : u"0"_s;
    default:
        return on ? u"1"_s : u"0"_s;
    }
}

} // namespace

std::vector<SettingValues::Choice> choicesOf(const QString& text)
{
    std::vector<SettingValues::Choice> result;
    for (const QString& part : text.split(u'|', Qt::SkipEmptyParts)) {
        const qsizetype mark = part.indexOf("#;"_L1);
        if (mark >= 0) {
            result.emplace_back(part.first(mark), part.sliced(mark + 2));
        }
    }
    return result;
}

SettingValues::SettingValues(SettingDraft& draft,
                             GlobalSettings& settings,
                             const ConfigObjects& texts)
    : m_draft(draft)
    , m_settings(settings)
    , m_texts(texts)
{}

QString SettingValues::storedDefault(const SettingEntry& entry) const
{
    if (entry.section == kValueSection) {
        const ConfigObject* const item = m_texts.FindObject(entry.key);
        return item == nullptr ? QString() : item->DefaultValue.toText();
    }
    if (entry.section == kColourSection) {
        return UpdateColors::builtIn(entry.key);
    }
    return m_settings.defaultOf(entry.section, entry.key).value_or(QString());
}

QString SettingValues::readable(const SettingEntry& entry, const QString& stored) const
{
    if (isTick(entry.kind)) {
        return isOn(entry.kind, stored) ? kOn : QString();
    }
    if (isNumber(entry.kind)) {
        return QString::number(std::clamp(leadingLong(stored), entry.least, entry.most));
    }
    if (entry.kind == SettingKind::Colour) {
        return QString::number(std::clamp(leadingLong(stored), 0, 0xFFFFFF));
    }
    return stored;
}

QString SettingValues::defaultValue(const SettingEntry& entry) const
{
    return readable(entry, storedDefault(entry));
}

QString SettingValues::value(const SettingEntry& entry) const
{
    const QString stored = m_draft.text(entry.section.toString(), entry.key.toString());
    if (stored.isEmpty()) {
        return defaultValue(entry);
    }
    const QString value = readable(entry, stored);
    if (entry.kind != SettingKind::Choice) {
        return value;
    }
    const std::vector<Choice> known = choices(entry);
    const bool isKnown = std::any_of(known.begin(), known.end(), [&value](const Choice& choice) {
        return choice.first.compare(value, Qt::CaseInsensitive) == 0;
    });
    return isKnown ? value : defaultValue(entry);
}

void SettingValues::set(const SettingEntry& entry, const QString& value)
{
    const bool on = isTick(entry.kind) && !value.isEmpty();
    const QString stored = isTick(entry.kind) ? tickText(entry.kind, on) : readable(entry, value);
    if (stored.isEmpty() || readable(entry, stored) == defaultValue(entry)) {
        reset(entry);
    } else {
        m_draft.set(entry.section.toString(), entry.key.toString(), stored);
    }
}

void SettingValues::reset(const SettingEntry& entry)
{
    m_draft.set(entry.section.toString(), entry.key.toString(), std::nullopt);
}

int SettingValues::changed(SettingPage page) const
{
    const auto entries = settingEntries();
    return int(std::count_if(entries.begin(), entries.end(), [&](const SettingEntry& entry) {
        return entry.page == page && !isDefault(entry);
    }));
}

void SettingValues::resetPage(SettingPage page)
{
    for (const SettingEntry& entry : settingEntries()) {
        if (entry.page == page) {
            reset(entry);
        }
    }
}

std::vector<SettingValues::Choice> SettingValues::choices(const SettingEntry& entry) const
{
    return choicesOf(m_texts.textEx(entry.text));
}

QString SettingValues::defaultWords(const SettingEntry& entry) const
{
    const QString value = defaultValue(entry);
    if (isTick(entry.kind)) {
        return m_texts.text(value.isEmpty() ? u"settings.default.off"_s : u"settings.default.on"_s);
    }
    for (const auto& [known, label] : choices(entry)) {
        if (known == value) {
            return label;
        }
    }
    if (entry.kind == SettingKind::Theme) {
        return m_texts.text(u"skin.desktop");
    }
    if (entry.kind == SettingKind::Colour) {
        return Colour::fromBgr(value.toInt()).toText();
    }
    return value.isEmpty() ? m_texts.text(u"settings.default.empty") : value;
}

} // namespace melovane
