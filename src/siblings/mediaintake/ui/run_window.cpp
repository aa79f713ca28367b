#include "siblings/mediaintake/ui/run_window.h"

#include "help/ui/help_desk.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "siblings/mediaintake/command_line.h"
#include "siblings/mediaintake/intake_program.h"
#include "siblings/mediaintake/ui/intake_window.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace melovane {

int runWindow(int argc, char** argv, const IntakeCommand& command)
{
    QApplication application(argc, argv);
    IntakeProgram program(command.mode);
    setLanguageOfDesktopTexts(application, program.texts().text(u"Sprach.Code"));
    Skin skin(application);
    if (const QString text = program.themeText(); !text.isEmpty()) {
        skin.load(text);
    }
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        QTextStream(stderr) << obstacle << '\n';
        QMessageBox::warning(nullptr, program.session().title(), obstacle);
        return 1;
    }
    if (!program.claim()) {
        const QString text = program.texts().text(u"intake.running");
        QTextStream(stderr) << text << '\n';
        if (!program.bringOtherToFront()) {
            QMessageBox::information(nullptr, program.session().title(), text);
        }
        return 1;
    }
    if (!command.folders.isEmpty()) {
        program.session().setFolders(command.folders);
    }
    const IconSet icons(skin);
    const HelpDesk help(application, program.help(), icons);
    IntakeWindow window(program.session());
    program.listen([&window] {
        window.show();
        window.raise();
        window.activateWindow();
    });
    showAsStarted(window);
    if (!command.folders.isEmpty()) {
        window.start();
    }
    return QApplication::exec();
}

} // namespace melovane
