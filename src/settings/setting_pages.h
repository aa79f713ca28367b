#pragma once

#include "config/setting_table.h"

#include <QString>
#include <QStringView>

#include <span>

namespace melovane {

/// Pages of the settings window, in their order.
enum class SettingPage
{
    Library,
    Search,
    Lists,
    Monitor,
    Files,
    Keys,
    Look,
    Hints,
    Suite ///< what only the player reads
};

inline constexpr int kSettingPages = int(SettingPage::Suite) + 1;

/// How a setting is chosen. The first kinds are ticks, which differ by what stands in the file.
enum class SettingKind
{
    Check,  ///< "1" and "0"
    Switch, ///< "on" and "off"
    Flag,   ///< "-1" and "0"; any number but 0 is on
    Number,
    Volume, ///< a number that is chosen by a slider
    Text,
    NameFormat, ///< a text with a date between two "#"
    Choice,     ///< one of the values of the second text: "value#;label|value#;label"
    Folder,
    Library, ///< a database file
    Colour,  ///< a number whose highest byte is blue
    Font,
    Card, ///< the name of a sound card, empty for the system's own choice
    Theme,
    Language
};

/// One setting as the user meets it. What it is when the file does not hold it says its row of
/// setting_table.h, the catalogue, or the table of colours.
struct SettingEntry
{
    SettingPage page;
    QStringView group; ///< name of the text of its heading
    QStringView section;
    QStringView key;
    SettingKind kind;
    QStringView text; ///< name of its words; the second text is a note or the choices
    int least = 0;    ///< of a number
    int most = 0;
};

/// All settings, by page and in their order on it. A new one is a new row here, in the table that
/// holds its default, and a text.
[[nodiscard]] std::span<const SettingEntry> settingEntries();

/// The row of a key, without regard to case, or null.
[[nodiscard]] const SettingEntry* findEntry(QStringView section, QStringView key);

/// Name of the text of a page: its title, and as second text the sentence below it.
[[nodiscard]] QString pageText(SettingPage page);

/// Name of the picture of a page.
[[nodiscard]] QString pageIcon(SettingPage page);

/// Sections that only the settings window and the class behind them name: keep.
inline constexpr QStringView kColourSection = u"Color";
inline constexpr QStringView kValueSection = u"Value";

[[nodiscard]] constexpr bool isTick(SettingKind kind)
{
    return kind == SettingKind::Check || kind == SettingKind::Switch || kind == SettingKind::Flag;
}

[[nodiscard]] constexpr bool isNumber(SettingKind kind)
{
    return kind == SettingKind::Number || kind == SettingKind::Volume;
}

} // namespace melovane
