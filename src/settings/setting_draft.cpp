#include "settings/setting_draft.h"

namespace melovane {

namespace {

bool isSame(const ProfileEntry& entry, const QString& section, const QString& key)
{
    return entry.section.compare(section, Qt::CaseInsensitive) == 0 &&
           entry.key.compare(key, Qt::CaseInsensitive) == 0;
}

} // namespace

SettingDraft::SettingDraft(PrivateProfile& profile, QString file)
    : m_profile(profile)
    , m_file(std::move(file))
{}

const ProfileEntry* SettingDraft::find(const QString& section, const QString& key) const
{
    for (const ProfileEntry& entry : m_entries) {
        if (isSame(entry, section, key)) {
            return &entry;
        }
    }
    return nullptr;
}

QString SettingDraft::text(const QString& section, const QString& key) const
{
    const ProfileEntry* const chosen = find(section, key);
    return (chosen != nullptr ? chosen->value : m_profile.value(m_file, section, key))
        .value_or(QString());
}

QStringList SettingDraft::section(const QString& section) const
{
    QStringList lines = m_profile.section(m_file, section);
    lines.removeIf([&](const QString& line) {
        const ProfileEntry* const chosen = find(section, line.section(u'=', 0, 0));
        return chosen != nullptr && !chosen->value;
    });
    return lines;
}

void SettingDraft::set(const QString& section,
                       const QString& key,
                       const std::optional<QString>& value)
{
    std::erase_if(m_entries,
                  [&](const ProfileEntry& entry) { return isSame(entry, section, key); });
    if (m_profile.value(m_file, section, key) != value) {
        m_entries.push_back({section, key, value});
    }
}

bool SettingDraft::holds(const QString& section, const QString& key) const
{
    return find(section, key) != nullptr;
}

bool SettingDraft::write()
{
    if (!m_entries.empty() && !m_profile.writeAll(m_file, m_entries)) {
        return false;
    }
    m_entries.clear();
    return true;
}

} // namespace melovane
