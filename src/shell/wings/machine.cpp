#include "shell/wings/machine.h"

#include "bus/message_numbers.h"
#include "config/melovane_configuration.h"
#include "platform/system/path_text.h"

#include <QDir>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

MessagePlace messagePlace(const LinuxEnvironment& environment)
{
    MessagePlace place(environment.runtimeFolder());
    place.refreshes = {std::begin(message::kRefreshes), std::end(message::kRefreshes)};
    return place;
}

} // namespace

Machine::Machine(EnvironmentPlaces places)
    : environment(std::move(places))
    , profile(files)
    , paths(environment, files)
    , messages(messagePlace(environment))
    , onlyCopy({environment.runtimeFolder(), paths.GetConfigPath()}, paths.programName())
    , loan(files, {environment.runtimeFolder(), paths.GetConfigPath()})
    , searchFigures(std::make_shared<sqlite::IndexFigures>())
    , engine(sqlite::makeEngine(
          clock,
          {.searchIndex = searchFigures,
           .whenIdle = [this](std::function<bool()> work) { idle.add(std::move(work)); },
           .snapshotFolder = path::join(environment.cacheFolder(), u"index")}))
    , settings(paths, profile, files, *engine)
    , texts(paths, profile, files)
    , idle(loop)
    , data(*engine, settings, paths, files, clock, log())
    , locator(files, paths.GetConfigPath())
{
    data.whenLent = [this](const QString& library) {
        if (library.isEmpty()) {
            loan.end();
        } else {
            loan.begin(library);
        }
    };
}

void Machine::loadConfig()
{
    // Language files are looked for in the current folder.
    QDir::setCurrent(paths.GetConfigPath());
    MelovaneConfiguration::fill(texts);
    logFile = std::make_unique<Log4Mlv>(paths, files, clock);
    logFile->SetClassName(u"MLVDB"_s);
    logFile->SetAreaName(u"LoadConfig"_s);
    settings.InitTasten();
    settings.Refresh();
}

ErrorSink Machine::log()
{
    return [this](const QString& where, const QString& what) {
        if (logFile) {
            logFile->DebugOut(where + u": "_s + what);
        }
    };
}

} // namespace melovane
