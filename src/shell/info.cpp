#include "shell/info.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/controls/info_form.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

frmInfo::frmInfo(const GlobalSettings& settings,
                 const ConfigObjects& texts,
                 Mod_API& paths,
                 InfoForm& form)
    : m_settings(settings)
    , m_texts(texts)
    , m_paths(paths)
    , m_form(form)
{}

void frmInfo::Show()
{
    const QString settings = path::join(m_paths.GetConfigPath(), m_settings.SetIniFilename());
    m_form.show({m_texts.text(u"info.title", u"Melovane DB"_s),
                 mainWindowCaption(),
                 m_texts.text(u"program.purpose"),
                 {m_texts.text(u"info.database", m_settings.DbName()),
                  m_texts.text(u"info.settings", settings)},
                 m_texts.text(u"ok")});
}

} // namespace melovane
