#pragma once

#include <QString>

namespace melovane {

class ConfigObjects;

/// The filling of the text catalogue.
namespace MelovaneConfiguration {

/// Adds all built-in texts and settings in their fixed order, reads the user's values, then the
/// language file that the setting `Sprach.Datei` names. Needs no file at all.
void fill(ConfigObjects& catalogue);

/// Gives all items of a filled catalogue the texts of a language: the built-in ones, then those of
/// the language file. The user's values stay.
/// \param language file name below the configuration path; empty, or of no file, for German
void speak(ConfigObjects& catalogue, const QString& language);

} // namespace MelovaneConfiguration
} // namespace melovane
