#pragma once

#include <QString>

#include <vector>

namespace melovane {

class ConfigObjects;
class Files;
class Mod_API;

/// A language that can be chosen.
struct LanguageEntry
{
    QString fileName; ///< what `Sprach.Datei` holds for it
    QString title;    ///< the language in its own words
    bool active = false;
};

/// The languages of an installation: the built-in one and the files "lang_*.ini" of the
/// configuration path.
class LanguageFiles
{
public:
    LanguageFiles(Mod_API& paths, const Files& files, ConfigObjects& texts);

    /// By title. The active one is the one of the setting; the built-in one when its file is gone.
    [[nodiscard]] std::vector<LanguageEntry> entries() const;

    /// Keeps a language for the next start of any program of the suite. False when it was the
    /// chosen one already.
    bool choose(const QString& fileName);

private:
    [[nodiscard]] QString titleOf(const QString& fileName) const;

    Mod_API& m_paths;
    const Files& m_files;
    ConfigObjects& m_texts;
};

} // namespace melovane
