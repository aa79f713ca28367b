#pragma once

namespace melovane {

class ConfigObjects;

/// The filling of the text catalogue.
namespace MelovaneConfiguration {

/// Adds all built-in texts and settings in their fixed order, reads the user's values, then the
/// language file that the setting `Sprach.Datei` names. Needs no file at all.
void fill(ConfigObjects& catalogue);

} // namespace MelovaneConfiguration
} // namespace melovane
