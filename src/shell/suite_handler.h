#pragma once

#include "bus/mlv_message_bus.h"

#include <functional>
#include <memory>
#include <set>

namespace melovane {

class ConfigObjects;
class Docking;
class GlobalSettings;
class MessageLoop;
class MonitorControl;
class SuiteMessages;
class Timer;
class Warnings;
class WindowData;

/// The parts of the program that messages from other programs reach; they outlive the handler.
struct SuiteHandlerParts
{
    GlobalSettings& settings;
    const ConfigObjects& texts;
    Warnings& warnings;
    MessageLoop& loop;
    WindowData& data;
    MonitorControl& monitor;
    Docking& docking;
    SuiteMessages& suite;
    std::function<void()> reloadLibrary;
    std::function<void()> rebuildTrees;
    /// Another library is open now.
    std::function<void()> libraryOpened = [] {};
    std::function<void(const QString& text)> showStatusText;
    /// The settings were read anew, before the views hear of it.
    std::function<void()> settingsChanged = [] {};
};

/// What the main window does when another program of the suite sends it something.
///
/// Most of it goes on to the views over the bus, in the name of the main window, so that the echo
/// guard knows it.
class SuiteHandler
{
public:
    SuiteHandler(SuiteHandlerParts parts, MLVMessageBus& bus, const QString& windowName);
    ~SuiteHandler();

    /// Ids 1036 to 1079; all others are ignored.
    void MessageNumber(qint32 id, qint32 wParam, qint32 lParam);
    /// Ids 3075, 3077 and 3078.
    void MessageText(qint32 id, qint32 number, const QString& text);

    /// Reads the settings anew. When they name another library by now, that is opened and every
    /// view works in it; one that cannot be opened is told once, and the present one stays. Waits
    /// while a dialog is open or a work goes on, whose steps are meant for the present one, and
    /// while another program has that.
    /// \return true when there is another library now
    bool refreshSettings();

private:
    /// The two numbers of a message.
    struct Numbers
    {
        qint32 wParam;
        qint32 lParam;
    };

    using Handler = void (SuiteHandler::*)(Numbers);

    void soundCardChanged(Numbers numbers);
    void releaseDatabase(Numbers numbers);
    void databaseIsFree(Numbers numbers);
    void settingsChanged(Numbers numbers);
    void playlistChanged(Numbers numbers);
    void entryChanged(Numbers numbers);
    void libraryImported(Numbers numbers);
    void dock(Numbers numbers);
    void reloadLibrary(Numbers numbers);
    void undock(Numbers numbers);
    void favouritesChanged(Numbers numbers);
    void jobsDone(Numbers numbers);
    void tempoFound(Numbers numbers);
    void monitorVolume(Numbers numbers);
    void stopMonitor(Numbers numbers);
    void playlistTreeChanged(Numbers numbers);

    bool followLibrary();
    bool openOther(const QString& name);
    void refuseLibrary(const QString& name, const QString& text, const QString& reason);
    void showOther();
    void showContent();
    void reopenDatabase();
    bool takeOtherInstead();
    void watchAskers();
    void askForDatabase();

    void fieldClicked(qint32 number, const QString& text);
    void showJobsResult();

    SuiteHandlerParts m_parts;
    BusSender m_bus;
    qint32 m_changedTracks = 0; ///< of the jobs' last report
    std::unique_ptr<Timer> m_resultTimer;
    QString m_reopenFault;    ///< why the database could not be taken back
    bool m_isAsking = false;  ///< about it, in a dialog
    bool m_isLent = false;    ///< another program has the database
    QString m_refusedLibrary; ///< named by the settings, told to the user once
    std::unique_ptr<Timer> m_reopenTimer;
    std::unique_ptr<Timer> m_libraryTimer; ///< while a change of library has to wait
    std::set<qint32> m_askers;             ///< handles of those who have the database
    std::unique_ptr<Timer> m_askerTimer;
};

} // namespace melovane
