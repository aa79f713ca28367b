#pragma once

#include <QStringView>

#include <span>

namespace melovane {

/// One text that the program holds itself, German.
struct BuiltInText
{
    QStringView name;
    QStringView description;        ///< with "\n" as two signs and placeholders $1 to $4
    QStringView descriptionEx = {}; ///< a note, or choices "value#;label|value#;label"
    QStringView value = {};         ///< of a setting
    QStringView group = {};         ///< of a setting
    QStringView typ = {};           ///< of a setting: which control edits it
};

/// Texts of the whole suite. Its programs share names and order: keep both, add nothing.
namespace suitetexts {
[[nodiscard]] std::span<const BuiltInText> toolTips();
[[nodiscard]] std::span<const BuiltInText> messages();
[[nodiscard]] std::span<const BuiltInText> settingsWindow();
[[nodiscard]] std::span<const BuiltInText> menus();
[[nodiscard]] std::span<const BuiltInText> controls();
[[nodiscard]] std::span<const BuiltInText> settings();
} // namespace suitetexts

/// Texts that only the programs built here use; they stand behind those of the suite.
namespace owntexts {
[[nodiscard]] std::span<const BuiltInText> windows();
[[nodiscard]] std::span<const BuiltInText> columns();
[[nodiscard]] std::span<const BuiltInText> views();
[[nodiscard]] std::span<const BuiltInText> importer();
[[nodiscard]] std::span<const BuiltInText> exporting();
[[nodiscard]] std::span<const BuiltInText> lists();
[[nodiscard]] std::span<const BuiltInText> tagWriting();
[[nodiscard]] std::span<const BuiltInText> viewer();
[[nodiscard]] std::span<const BuiltInText> player();
[[nodiscard]] std::span<const BuiltInText> bench();
[[nodiscard]] std::span<const BuiltInText> care();
[[nodiscard]] std::span<const BuiltInText> safety();
[[nodiscard]] std::span<const BuiltInText> found();
[[nodiscard]] std::span<const BuiltInText> settingsPages();
[[nodiscard]] std::span<const BuiltInText> help();
} // namespace owntexts

} // namespace melovane
