#include "siblings/storeplaylists/ui/failure_message.h"

#include "config/config_objects.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "shell/show_warning.h"
#include "shell/ui/msg_dialog.h"

#include <QApplication>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void showFailure(int argc,
                 char** argv,
                 const FailureMessageParts& parts,
                 const QString& text,
                 WarningType type)
{
    QApplication application(argc, argv);
    setLanguageOfDesktopTexts(application, parts.texts.text(u"Sprach.Code"));
    Skin skin(application);
    if (!parts.theme.isEmpty()) {
        skin.load(parts.theme);
    }
    const IconSet icons(skin);
    MsgDialog form(icons);
    frmMsg(parts.settings, parts.texts, parts.paths, form)
        .ShowWarning(text, type, parts.texts.text(u"store.title"_s), u"store.title"_s);
}

} // namespace melovane
