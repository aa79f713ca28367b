#include "settings/setting_search.h"

#include "config/config_objects.h"
#include "config/tasten.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a catalogue says under a name.
QString said(const ConfigObjects& texts, QStringView name)
{
    const ConfigObject* const item = texts.FindObject(name);
    return item == nullptr
               ? QString()
               : item->Description + u' ' + item->DescriptionEx + u' ' + item->ToolTip + u' ';
}

bool holdsAll(const QString& words, const QString& text)
{
    const QStringList parts = text.simplified().split(u' ', Qt::SkipEmptyParts);
    return std::all_of(parts.begin(), parts.end(), [&words](const QString& part) {
        return words.contains(part, Qt::CaseInsensitive);
    });
}

/// The commands of the key table stand on a page without rows.
QString saidAboutKeys(const ConfigObjects& texts)
{
    QString words;
    for (const Tasten& binding : defaultTasten()) {
        words += said(texts, binding.TextKey);
    }
    return words;
}

} // namespace

SettingSearch::SettingSearch(std::span<const ConfigObjects* const> languages)
{
    for (const ConfigObjects* const texts : languages) {
        for (int page = 0; page < kSettingPages; ++page) {
            m_pages[SettingPage(page)] += said(*texts, pageText(SettingPage(page)));
        }
        m_pages[SettingPage::Keys] += saidAboutKeys(*texts);
        for (const SettingEntry& entry : settingEntries()) {
            m_entries[&entry] += said(*texts, entry.text) + said(*texts, entry.group);
        }
    }
    for (const SettingEntry& entry : settingEntries()) {
        m_entries[&entry] += m_pages[entry.page] + entry.key.toString();
    }
}

bool SettingSearch::finds(const QString& text, const SettingEntry& entry) const
{
    return holdsAll(m_entries.value(&entry), text);
}

bool SettingSearch::findsPage(const QString& text, SettingPage page) const
{
    return holdsAll(m_pages.value(page), text);
}

} // namespace melovane
