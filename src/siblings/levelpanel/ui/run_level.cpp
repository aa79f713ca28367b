#include "siblings/levelpanel/ui/run_level.h"

#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "help/ui/help_desk.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "shell/ui/suite_look.h"
#include "siblings/levelpanel/monitor_level.h"
#include "siblings/levelpanel/ui/level_window.h"

#include <QApplication>
#include <QDir>

#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Names under which others find the control: keep.
const QString kHandleKey = u"Message.Handle.Volume.Monitor"_s;
const QString kProgramKey = u"LevelPanel.exe"_s;

/// Everything that lives as long as the program, bottom to top.
struct LevelProgram
{
    explicit LevelProgram(QApplication& application)
        : paths(environment, files)
        , engine(sqlite::makeEngine(clock))
        , settings(paths, profile, files, *engine)
        , messages(MessagePlace(environment.runtimeFolder()))
        , control(messages.makeControl())
        , onlyCopy({environment.runtimeFolder(), paths.GetConfigPath()}, u"LevelPanel"_s)
        , texts(paths, profile, files)
        , skin(application)
        , icons(skin)
        , level(settings, *control, loop)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(paths.GetConfigPath());
        MelovaneConfiguration::fill(texts);
        look.emplace(SuiteLook::Parts{application, paths, files, settings, texts, skin});
    }

    /// From now on the console shows the window, and a second copy, too, and it follows the
    /// settings.
    void listen(LevelWindow& window)
    {
        control->setMessageNumber([this, &window](qint32 id, qint32, qint32) {
            if (id == message::kShowVolumeMonitor || id == message::kBringToFront) {
                window.bringToFront();
            } else if (id == message::kConfigChanged) {
                look->follow();
            }
            return 0;
        });
        onlyCopy.publish(control->handle());
        const QString handle = QString::number(control->handle());
        settings.WriteKeyValue(section::kGlobal.toString(), kHandleKey, handle);
        settings.WriteKeyValue(section::kMessageHandle.toString(), kProgramKey, handle);
    }

    SystemClock clock;
    LinuxFiles files;
    LinuxEnvironment environment;
    IniProfile profile{files};
    Mod_API paths;
    std::unique_ptr<DBEngine> engine;
    GlobalSettings settings;
    LinuxMessages messages;
    std::unique_ptr<KSMessage> control;
    OnlyCopy onlyCopy;
    ConfigObjects texts;
    Skin skin;
    IconSet icons;
    QtMessageLoop loop;
    MonitorLevel level;
    std::optional<SuiteLook> look; ///< of filled texts
};

} // namespace

int runLevel(int argc, char** argv)
{
    QApplication application(argc, argv);
    LevelProgram program(application);
    if (!program.onlyCopy.claim()) {
        program.control->setTarget(program.onlyCopy.runningCopy());
        program.control->Send(message::kBringToFront, 0, 0);
        return 0;
    }
    const HelpDesk help(application,
                        helpOf(program.files, program.paths, program.texts, program.settings),
                        program.icons);
    LevelWindow window(program.level, program.texts, program.icons);
    program.listen(window);
    showAsStarted(window);
    return QApplication::exec();
}

} // namespace melovane
