#include "shell/suite_handler.h"

#include "bus/event_guard.h"
#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "monitor/monitor_control.h"
#include "platform/controls/warnings.h"
#include "platform/system/timers.h"
#include "shell/docking.h"
#include "shell/window_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How often it is asked whether the program that has the database still runs.
constexpr std::chrono::milliseconds kAskerInterval{1000};

/// How often it is asked whether the work is done that a change of library waits for.
constexpr std::chrono::milliseconds kLibraryInterval{500};

} // namespace

SuiteHandler::SuiteHandler(SuiteHandlerParts parts, MLVMessageBus& bus, const QString& windowName)
    : m_parts(std::move(parts))
    , m_bus(bus, windowName)
    , m_resultTimer(
          m_parts.loop.makeTimer(std::chrono::milliseconds::zero(), [this] { showJobsResult(); }))
    , m_reopenTimer(
          m_parts.loop.makeTimer(std::chrono::milliseconds::zero(), [this] { askForDatabase(); }))
    , m_libraryTimer(m_parts.loop.makeTimer(kLibraryInterval, [this] { followLibrary(); }))
    , m_askerTimer(m_parts.loop.makeTimer(kAskerInterval, [this] { watchAskers(); }))
{}

SuiteHandler::~SuiteHandler() = default;

void SuiteHandler::MessageNumber(qint32 id, qint32 wParam, qint32 lParam)
{
    static constexpr std::pair<qint32, Handler> kHandlers[] = {
        {message::kSoundCardChanged, &SuiteHandler::soundCardChanged},
        {message::kReleaseDatabase, &SuiteHandler::releaseDatabase},
        {message::kReconnectDatabase, &SuiteHandler::databaseIsFree},
        {message::kConfigChanged, &SuiteHandler::settingsChanged},
        {message::kRefreshPlaylist, &SuiteHandler::playlistChanged},
        {message::kRefreshPlaylistEntry, &SuiteHandler::entryChanged},
        {message::kDatabaseChanged, &SuiteHandler::libraryImported},
        {message::kDock, &SuiteHandler::dock},
        {message::kReloadLibrary, &SuiteHandler::reloadLibrary},
        {message::kUndock, &SuiteHandler::undock},
        {message::kRefreshFavourites, &SuiteHandler::favouritesChanged},
        {message::kJobResult, &SuiteHandler::jobsDone},
        {message::kBpmFound, &SuiteHandler::tempoFound},
        {message::kMonitorVolume, &SuiteHandler::monitorVolume},
        {message::kStopMonitor, &SuiteHandler::stopMonitor},
        {message::kRefreshPlaylistTree, &SuiteHandler::playlistTreeChanged},
    };
    for (const auto& [number, handler] : kHandlers) {
        if (number == id) {
            (this->*handler)({wParam, lParam});
            return;
        }
    }
}

bool SuiteHandler::refreshSettings()
{
    m_parts.settings.Refresh();
    return followLibrary();
}

bool SuiteHandler::followLibrary()
{
    using Named = GlobalSettings::NamedLibrary;
    m_libraryTimer->stop();
    if (m_isLent) {
        return false;
    }
    const QString name = m_parts.settings.namedDbName();
    switch (m_parts.settings.namedLibrary()) {
    case Named::Held:
        m_refusedLibrary.clear();
        return false;
    case Named::Missing:
        refuseLibrary(name, u"library.gone"_s, m_parts.settings.DbName());
        return false;
    case Named::Other:
        break;
    }
    if (m_parts.loop.isNested()) {
        m_libraryTimer->start();
        return false;
    }
    // Whoever has something to write writes it into the library that it belongs to.
    m_bus.SendMessage(bus::kDbDisconnect);
    const bool changed = openOther(name);
    m_bus.SendMessage(bus::kDbReconnect);
    if (changed) {
        showOther();
    }
    return changed;
}

bool SuiteHandler::openOther(const QString& name)
{
    try {
        m_parts.data.openOther(name);
    } catch (const DbError& error) {
        refuseLibrary(name, u"library.refused"_s,
                      databaseFaultText(m_parts.texts, error.number(), error.text(), name));
        return false;
    }
    m_refusedLibrary.clear();
    return true;
}

void SuiteHandler::refuseLibrary(const QString& name, const QString& text, const QString& reason)
{
    if (m_refusedLibrary != name) {
        m_refusedLibrary = name;
        m_parts.showStatusText(m_parts.texts.text(text, name, reason).replace(u'\n', u' '));
    }
}

void SuiteHandler::showOther()
{
    m_parts.settings.UpdateLastPlayDayCount();
    showContent();
    m_parts.showStatusText(m_parts.texts.text(u"library.changed"_s, m_parts.settings.DbName()));
    m_parts.libraryOpened();
}

/// The library holds other rows than before, or is another one.
void SuiteHandler::showContent()
{
    m_bus.SendMessage(bus::kDbChange);
    if (m_parts.data.sideFilesWereStale()) {
        m_parts.rebuildTrees();
    }
    m_bus.SendMessage(bus::kRefreshAll);
}

void SuiteHandler::soundCardChanged(Numbers)
{
    refreshSettings();
    m_parts.monitor.reopen();
}

void SuiteHandler::releaseDatabase(Numbers numbers)
{
    refreshSettings();
    m_isLent = true;
    m_bus.SendMessage(bus::kDbDisconnect);
    m_parts.data.release();
    if (numbers.lParam != 0) {
        m_askers.insert(numbers.lParam);
        m_askerTimer->start();
    }
    m_parts.suite.answerDatabaseRelease(numbers.lParam);
}

void SuiteHandler::databaseIsFree(Numbers)
{
    m_parts.settings.Refresh();
    reopenDatabase();
}

/// A program that ended without giving the database back gives it back by that.
void SuiteHandler::watchAskers()
{
    std::erase_if(m_askers, [this](qint32 asker) { return !m_parts.suite.isAlive(asker); });
    if (m_askers.empty()) {
        m_parts.settings.Refresh();
        reopenDatabase();
    }
}

void SuiteHandler::reopenDatabase()
{
    m_askers.clear();
    m_askerTimer->stop();
    try {
        m_parts.data.open();
    } catch (const DbError& error) {
        if (takeOtherInstead()) {
            return;
        }
        // Who has sent the number waits for this handler and must not wait for the user's answer.
        m_reopenFault = databaseFaultText(m_parts.texts, error.number(), error.text(),
                                          m_parts.settings.DbName());
        m_reopenTimer->start();
        return;
    }
    m_reopenTimer->stop();
    m_isLent = false;
    m_bus.SendMessage(bus::kDbReconnect);
    followLibrary();
}

/// The library that was lent is gone, and the settings name another one by now.
bool SuiteHandler::takeOtherInstead()
{
    if (m_parts.settings.namedLibrary() != GlobalSettings::NamedLibrary::Other ||
        !openOther(m_parts.settings.namedDbName())) {
        return false;
    }
    m_reopenTimer->stop();
    m_isLent = false;
    m_bus.SendMessage(bus::kDbReconnect);
    showOther();
    return true;
}

void SuiteHandler::askForDatabase()
{
    m_reopenTimer->stop();
    if (m_isAsking) {
        return;
    }
    m_isAsking = true;
    const WarningAnswer answer = m_parts.warnings.ShowWarning(
        m_parts.texts.text(u"db.reconnect.failed"_s, m_reopenFault), WarningType::Question,
        m_parts.texts.text(u"glob_warn"_s), u"db.reconnect.failed"_s);
    m_isAsking = false;
    if (answer == WarningAnswer::Yes) {
        reopenDatabase();
    }
}

void SuiteHandler::settingsChanged(Numbers)
{
    refreshSettings();
    m_parts.settingsChanged();
    m_bus.SendMessage(bus::kChangeConfig);
}

void SuiteHandler::playlistChanged(Numbers numbers)
{
    m_parts.data.idle();
    m_bus.SendMessage(bus::kRefreshPlaylist, numbers.wParam);
}

void SuiteHandler::entryChanged(Numbers numbers)
{
    m_parts.data.idle();
    m_bus.SendMessage(bus::kRefreshPlaylistPlid, numbers.lParam, numbers.wParam);
}

void SuiteHandler::libraryImported(Numbers)
{
    m_parts.data.idle();
    if (!refreshSettings()) {
        showContent();
    }
}

void SuiteHandler::dock(Numbers)
{
    m_parts.docking.dock();
}

void SuiteHandler::reloadLibrary(Numbers)
{
    m_parts.reloadLibrary();
}

void SuiteHandler::undock(Numbers)
{
    m_parts.docking.undock();
}

void SuiteHandler::favouritesChanged(Numbers)
{
    m_bus.SendMessage(bus::kFavoritRefresh);
}

void SuiteHandler::jobsDone(Numbers numbers)
{
    if (numbers.wParam == message::kJobChanges) {
        // The jobs wait for this handler; they must not wait for the user's answer.
        m_changedTracks = numbers.lParam;
        m_resultTimer->start();
    } else if (numbers.wParam == message::kJobTree) {
        m_bus.SendMessage(bus::kRefreshTree, QString::number(numbers.lParam));
    }
}

void SuiteHandler::showJobsResult()
{
    m_resultTimer->stop();
    const QString key = m_changedTracks > 0 ? u"msg-001"_s : u"msg-002"_s;
    m_parts.warnings.ShowWarning(m_parts.texts.text(key, m_changedTracks), WarningType::Note,
                                 u"Melovane"_s, key, key);
}

void SuiteHandler::tempoFound(Numbers numbers)
{
    m_parts.data.idle();
    m_bus.SendMessage(bus::kBeatGaugeBpm, numbers.lParam, numbers.wParam);
}

void SuiteHandler::monitorVolume(Numbers numbers)
{
    m_parts.monitor.setVolume(numbers.lParam);
    if (numbers.wParam == message::kMonitorVolumeIcon) {
        m_bus.SendMessage(bus::kVolumeMonitorChangeIcon, numbers.lParam);
    }
}

void SuiteHandler::stopMonitor(Numbers)
{
    m_parts.monitor.stop();
}

void SuiteHandler::playlistTreeChanged(Numbers numbers)
{
    m_parts.data.idle();
    m_bus.SendMessage(bus::kRefreshPlaylistTree, numbers.wParam);
}

void SuiteHandler::MessageText(qint32 id, qint32 number, const QString& text)
{
    switch (id) {
    case message::kFieldClicked:
        fieldClicked(number, text);
        break;
    case message::kImageChosen:
        m_bus.SendMessage(bus::kSleeveViewerClickImage, text);
        break;
    case message::kBpmWantsTrack:
        m_bus.SendMessage(bus::kBpmFindFid, number, text);
        break;
    default:
        break;
    }
}

void SuiteHandler::fieldClicked(qint32 number, const QString& text)
{
    if (number == message::kFieldIsArtist) {
        m_bus.SendMessage(bus::kTreeClickRow, text, u"Interpret"_s);
    } else if (number == message::kFieldIsTitle) {
        m_bus.SendMessage(bus::kTreeClickRow, text, u"Titel"_s);
    }
}

} // namespace melovane
