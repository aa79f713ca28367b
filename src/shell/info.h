#pragma once

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class InfoForm;
class Mod_API;

/// Says what this program is and where its files lie: `frmInfo`.
class frmInfo
{
public:
    frmInfo(const GlobalSettings& settings,
            const ConfigObjects& texts,
            Mod_API& paths,
            InfoForm& form);

    /// Returns when the window was closed.
    void Show();

private:
    const GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    Mod_API& m_paths;
    InfoForm& m_form;
};

} // namespace melovane
