#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;

/// Why the system refused a file operation, in the user's language. Words that are unknown, or that
/// are no reason of the system, stay as they are.
///
/// \param reason the C library's own words, "Permission denied"
[[nodiscard]] QString systemReasonText(const ConfigObjects& texts, const QString& reason);

/// For a program that works in the library without showing it: the sentence with which it ends when
/// the settings name a library that is not there, and that it would work in the default one
/// instead, or one that the console has lent. Empty when all is well.
/// \param isLent whether the library of that path is lent; asked for one that is there
[[nodiscard]] QString refusedLibraryText(const ConfigObjects& texts,
                                         const GlobalSettings& settings,
                                         const std::function<bool(const QString& library)>& isLent);

} // namespace melovane
