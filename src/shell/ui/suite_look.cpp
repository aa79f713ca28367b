#include "shell/ui/suite_look.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/retold_texts.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/retell.h"
#include "platform/qt/skin.h"
#include "shell/skin_files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kLanguageKey = u"Sprach.Datei"_s;

} // namespace

SuiteLook::SuiteLook(Parts parts)
    : m_parts(parts)
    , m_language(parts.texts.value(kLanguageKey))
{
    dress();
}

void SuiteLook::follow()
{
    m_parts.settings.Refresh();
    m_parts.texts.LoadAllValue();
    const QString language = m_parts.texts.value(kLanguageKey);
    if (language != m_language) {
        m_language = language;
        RetoldTexts spoken(m_parts.texts);
        MelovaneConfiguration::speak(m_parts.texts, language);
        spoken.become(m_parts.texts);
        retellAll([&spoken](const QString& text) { return spoken.retold(text); });
    }
    dress();
    announceLanguage();
}

void SuiteLook::dress()
{
    setLanguageOfDesktopTexts(m_parts.application, m_parts.texts.text(u"Sprach.Code"));
    const QString theme =
        SkinFiles(m_parts.paths, m_parts.files).text(m_parts.settings.SkinFileName());
    if (theme.isEmpty() || !m_parts.skin.load(theme)) {
        m_parts.skin.clear();
    }
}

} // namespace melovane
