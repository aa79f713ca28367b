#include "siblings/writetags/ui/run_window.h"

#include "help/ui/help_desk.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "siblings/writetags/ui/write_tags_window.h"
#include "siblings/writetags/write_tags_program.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace melovane {

namespace {

int refuse(const WriteTagsProgram& program, const QString& text)
{
    QTextStream(stderr) << text << Qt::endl;
    QMessageBox::warning(nullptr, program.texts().text(u"writetags.title"), text);
    return 1;
}

} // namespace

int runWindow(int argc, char** argv, MessageHandle console)
{
    QApplication application(argc, argv);
    WriteTagsProgram program;
    setLanguageOfDesktopTexts(application, program.texts().text(u"Sprach.Code"));
    Skin skin(application);
    if (const QString text = program.themeText(); !text.isEmpty()) {
        skin.load(text);
    }
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        return refuse(program, obstacle);
    }
    if (!program.claim()) {
        QTextStream(stderr) << program.texts().text(u"writetags.running") << Qt::endl;
        return 1;
    }
    const IconSet icons(skin);
    const HelpDesk help(application, program.help(), icons);
    WriteTagsWindow window(program.work(), program.texts(), program.database());
    window.whenOver = [&] {
        program.tellConsole(console);
        if (window.isHidden()) {
            QApplication::quit(); // no window closes by which it would end
        }
    };
    showAsStarted(window);
    window.start();
    const int code = QApplication::exec();
    return code != 0 || !program.work().report().isComplete() ? 1 : 0;
}

} // namespace melovane
