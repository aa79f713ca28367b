#pragma once

#include <QString>

class QApplication;

namespace melovane {

class ConfigObjects;
class Files;
class GlobalSettings;
class Mod_API;
class Skin;

/// The language and the theme of one of the suite's smaller programs, as the settings choose them.
class SuiteLook
{
public:
    /// What it works on; all of it outlives this. The texts are filled.
    struct Parts
    {
        QApplication& application;
        Mod_API& paths;
        const Files& files;
        GlobalSettings& settings;
        ConfigObjects& texts;
        Skin& skin;
    };

    /// Dresses the program. A theme that is missing or broken leaves that of the desktop.
    explicit SuiteLook(Parts parts);

    /// Reads the settings anew, and every window speaks their language and wears their theme.
    /// Windows that make texts of their own hear of it by QEvent::LanguageChange.
    void follow();

private:
    void dress();

    Parts m_parts;
    QString m_language; ///< file that the texts are from
};

} // namespace melovane
