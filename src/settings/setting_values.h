#pragma once

#include "settings/setting_pages.h"

#include <QString>

#include <utility>
#include <vector>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class SettingDraft;

/// The settings of the pages as they will be when the draft is written.
class SettingValues
{
public:
    /// A value of a setting and its words.
    using Choice = std::pair<QString, QString>;

    /// The references outlive the object.
    SettingValues(SettingDraft& draft, GlobalSettings& settings, const ConfigObjects& texts);

    /// What the programs will find. A number is one of its range, whatever stands in the file; a
    /// choice that the file makes up is the default; a tick is "1" or empty.
    [[nodiscard]] QString value(const SettingEntry& entry) const;
    [[nodiscard]] QString defaultValue(const SettingEntry& entry) const;

    [[nodiscard]] bool isDefault(const SettingEntry& entry) const
    {
        return value(entry) == defaultValue(entry);
    }

    /// A default is not written: its key goes, so that a later release may have a better one. An
    /// empty text is the default, as every reader of the file takes it.
    void set(const SettingEntry& entry, const QString& value);
    void reset(const SettingEntry& entry);

    /// Number of settings of a page that are not at their default.
    [[nodiscard]] int changed(SettingPage page) const;
    void resetPage(SettingPage page);

    /// The values of a choice in the order of its text.
    [[nodiscard]] std::vector<Choice> choices(const SettingEntry& entry) const;

    /// The default in the user's words.
    [[nodiscard]] QString defaultWords(const SettingEntry& entry) const;

private:
    [[nodiscard]] QString storedDefault(const SettingEntry& entry) const;
    [[nodiscard]] QString readable(const SettingEntry& entry, const QString& stored) const;

    SettingDraft& m_draft;
    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
};

/// "value#;label|value#;label" as the catalogue keeps choices; parts without the mark are left out.
[[nodiscard]] std::vector<SettingValues::Choice> choicesOf(const QString& text);

} // namespace melovane
