#include "siblings/tagbench/ui/run_bench.h"

#include "help/ui/help_desk.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "siblings/tagbench/bench_program.h"
#include "tagbench/ui/bench_window.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace melovane {

int runBench(int argc, char** argv, BenchMode mode)
{
    QApplication application(argc, argv);
    QtMessageLoop loop;
    BenchProgram program(mode);
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
    const IconSet icons(skin);
    const HelpDesk help(application, program.help(), icons);
    program.addPlayer(loop);
    BenchWindow window(skin, icons, program.session(), loop, program.noteColours());
    showAsStarted(window);
    window.load();
    return QApplication::exec();
}

} // namespace melovane
