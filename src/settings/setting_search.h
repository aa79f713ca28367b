#pragma once

#include "settings/setting_pages.h"

#include <QHash>
#include <QString>

#include <span>

namespace melovane {

class ConfigObjects;

/// Finds settings by the words of their rows, their notes, headings and pages, in every language
/// that it was given.
class SettingSearch
{
public:
    /// Reads the texts once; the catalogues need not stay.
    explicit SettingSearch(std::span<const ConfigObjects* const> languages);

    /// Whether each word of a text occurs in what is said about the setting, also within a longer
    /// word, without regard to case. An empty text finds everything.
    [[nodiscard]] bool finds(const QString& text, const SettingEntry& entry) const;

    /// The same for a page by itself: keys and hints are no rows.
    [[nodiscard]] bool findsPage(const QString& text, SettingPage page) const;

private:
    QHash<const SettingEntry*, QString> m_entries;
    QHash<SettingPage, QString> m_pages;
};

} // namespace melovane
