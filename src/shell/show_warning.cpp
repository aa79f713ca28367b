#include "shell/show_warning.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/controls/message_form.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Sections of the settings: keep.
const QString kSuppressSection = u"WarnMeldung"_s;
const QString kTextSection = u"Meldung_Text"_s;
const QString kTitleSection = u"Meldung_Title"_s;

} // namespace

frmMsg::frmMsg(GlobalSettings& settings,
               const ConfigObjects& texts,
               const Mod_API& paths,
               MessageForm& form)
    : m_settings(settings)
    , m_texts(texts)
    , m_paths(paths)
    , m_form(form)
{}

WarningAnswer frmMsg::ShowWarning(const QString& text,
                                  WarningType type,
                                  const QString& title,
                                  const QString& messageKey,
                                  const QString& suppressName)
{
    const bool question = type == WarningType::Question;
    const bool canSuppress = !suppressName.isEmpty();
    const QString key = suppressKey(suppressName);
    if (canSuppress && m_settings.GetKeyValueLong(kSuppressSection, key, 0) > 0) {
        // Also when the user said no while he chose not to be asked again: this is wanted.
        return question ? WarningAnswer::Yes : WarningAnswer::Ok;
    }
    MessageView view;
    view.caption = dialogCaption();
    view.title = reworded(title, kTitleSection, messageKey);
    view.text = reworded(text, kTextSection, messageKey);
    view.question = question;
    view.okCaption = m_texts.text(u"ok");
    view.yesCaption = m_texts.text(u"ja");
    view.noCaption = m_texts.text(u"nein");
    if (canSuppress) {
        view.suppressCaption = m_texts.text(u"noWarn");
        view.suppressClicked = [this, key](bool on) {
            m_settings.WriteKeyValue(kSuppressSection, key, on ? u"1"_s : u"0"_s);
        };
    }
    return m_form.ask(view);
}

QString frmMsg::suppressKey(const QString& name) const
{
    return m_paths.programName() + u'.' + name;
}

QString
frmMsg::reworded(const QString& text, const QString& section, const QString& messageKey) const
{
    const QString found =
        messageKey.isEmpty() ? QString() : m_settings.GetKeyValue(section, messageKey, {});
    if (found.isEmpty()) {
        return text;
    }
    return section == kTextSection ? QString(found).replace("<BR>"_L1, "\n"_L1) : found;
}

} // namespace melovane
