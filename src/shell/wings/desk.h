#pragma once

#include "help/ui/help_desk.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_file_chooser.h"
#include "platform/qt/qt_keyboard.h"
#include "platform/qt/qt_pointer.h"
#include "platform/qt/qt_popup.h"
#include "platform/qt/skin.h"
#include "shell/show_warning.h"
#include "shell/ui/mlvdb_window.h"
#include "shell/ui/msg_dialog.h"

class QApplication;

namespace melovane {

class DataControl;
class GridControl;
class GridLook;
class LayoutFiles;
struct Machine;

/// What the user sees and touches, without knowing what it is about: the window with its forms,
/// theme, pointer, keyboard and warnings.
struct Desk
{
    Desk(QApplication& application, Machine& machine);

    /// Language of the desktop's own texts, theme of the settings.
    void dress();

    /// `frmEditGrid` for the grid of a view. True when another layout was written.
    [[nodiscard]] bool editLayout(LayoutFiles& layouts,
                                  const QString& caption,
                                  QStringView file,
                                  const DataControl& rows,
                                  const GridLook& look,
                                  const GridControl& present);

    QApplication& application;
    Machine& machine;
    Skin skin;
    IconSet icons;
    MsgDialog messageForm;
    frmMsg warnings;
    QtPopup popup;
    QtPointer pointer;
    QtKeyboard keyboard;
    MlvdbWindow window;
    QtFileChooser fileChooser;
    HelpDesk help;
};

} // namespace melovane
