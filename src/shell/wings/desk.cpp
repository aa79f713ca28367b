#include "shell/wings/desk.h"

#include "platform/qt/data_grid.h"
#include "platform/qt/desktop_texts.h"
#include "shell/skin_files.h"
#include "shell/wings/machine.h"
#include "views/edit_grid.h"
#include "views/ui/edit_grid_dialog.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

Desk::Desk(QApplication& host, Machine& base)
    : application(host)
    , machine(base)
    , skin(host)
    , icons(skin)
    , messageForm(icons)
    , warnings(base.settings, base.texts, base.paths, messageForm)
    , popup(icons)
    , window(skin, icons)
    , fileChooser(&window)
    , help(host, helpOf(base.files, base.paths, base.texts, base.settings), icons)
{}

void Desk::dress()
{
    setLanguageOfDesktopTexts(application, machine.texts.text(u"Sprach.Code"));
    const QString theme =
        SkinFiles(machine.paths, machine.files).text(machine.settings.SkinFileName());
    if (!theme.isEmpty()) {
        skin.load(theme);
    }
}

bool Desk::editLayout(LayoutFiles& layouts,
                      const QString& caption,
                      QStringView file,
                      const DataControl& rows,
                      const GridLook& look,
                      const GridControl& present)
{
    EditGridDialog dialog(skin, icons, machine.texts, caption);
    DataGrid& grid = dialog.setRows(rows, look, present.columns());
    frmEditGrid logic(layouts, file.toString(), grid, present.columns());
    return dialog.choose(logic);
}

} // namespace melovane
