#pragma once

#include "platform/controls/warnings.h"

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class MessageForm;
class Mod_API;

/// The one dialog for warnings and questions.
///
/// Section "WarnMeldung" of the settings remembers under the program's and the message's name which
/// messages the user does not want to see again. Sections "Meldung_Text" and "Meldung_Title" reword
/// a message; "<BR>" in a text is a line end.
class frmMsg : public Warnings
{
public:
    frmMsg(GlobalSettings& settings,
           const ConfigObjects& texts,
           const Mod_API& paths,
           MessageForm& form);

    WarningAnswer ShowWarning(const QString& text,
                              WarningType type,
                              const QString& title,
                              const QString& messageKey = {},
                              const QString& suppressName = {}) override;

private:
    [[nodiscard]] QString suppressKey(const QString& name) const;
    [[nodiscard]] QString
    reworded(const QString& text, const QString& section, const QString& messageKey) const;

    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    const Mod_API& m_paths;
    MessageForm& m_form;
};

} // namespace melovane
