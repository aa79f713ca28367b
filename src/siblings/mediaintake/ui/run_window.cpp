#include "siblings/mediaintake/ui/run_window.h"

#include "config/retold_texts.h"
#include "help/ui/help_desk.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/retell.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "siblings/mediaintake/command_line.h"
#include "siblings/mediaintake/intake_program.h"
#include "siblings/mediaintake/ui/intake_window.h"
#include "siblings/mediaintake/ui/welcome_panel.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace melovane {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Everything that stands on the screen speaks the chosen language.
void speak(QApplication& application, IntakeProgram& program, const QString& file)
{
    RetoldTexts spoken(program.texts());
    program.chooseLanguage(file);
    spoken.become(program.texts());
    retellAll([&spoken](const QString& text) { return spoken.retold(text); });
    setLanguageOfDesktopTexts(application, program.texts().text(u"Sprach.Code"));
    announceLanguage();
}

void dress(IntakeProgram& program, Skin& skin, const QString& file)
{
    program.chooseTheme(file);
    if (file.isEmpty() || !skin.load(program.themeText())) {
        skin.clear();
    }
}

WelcomePanel::Choices languagesOf(QApplication& application, IntakeProgram& program)
{
    WelcomePanel::Choices result;
    for (const LanguageEntry& entry : program.languages()) {
        result.entries.emplace_back(entry.fileName, entry.title);
        result.present = entry.active ? entry.fileName : result.present;
    }
    // Behind the click: texts of the box itself change.
    result.choose = [&application, &program](const QString& file) {
        QMetaObject::invokeMethod(
            &application, [&application, &program, file] { speak(application, program, file); },
            Qt::QueuedConnection);
    };
    return result;
}

WelcomePanel::Choices themesOf(IntakeProgram& program, Skin& skin)
{
    const ConfigObjects& texts = program.texts();
    WelcomePanel::Choices result;
    result.entries.emplace_back(QString(), texts.text(u"skin.desktop"));
    for (const QString& file : program.themes()) {
        const QString known = texts.text(u"skin."_s + file.toLower());
        result.entries.emplace_back(file, known.isEmpty() ? path::baseName(file) : known);
    }
    result.present = program.theme();
    result.choose = [&program, &skin](const QString& file) { dress(program, skin, file); };
    return result;
}

} // namespace

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
    if (command.mode == IntakeMode::NewFiles && program.isLibraryEmpty()) {
        window.greet(new WelcomePanel(program.texts(), languagesOf(application, program),
                                      themesOf(program, skin)));
    }
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
