#pragma once

#include "monitor/monitor_control.h"
#include "platform/media/player.h"
#include "store/all_data.h"

#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace melovane {

class ConfigObjects;
class FileLocator;
class Files;
class GlobalSettings;
class MessageLoop;
class MonitorPanel;
class StatusLine;
class Timer;
class Warnings;

/// What the monitor speaks to; all of it outlives the monitor.
struct MonitorParts
{
    Player& player; ///< its events are the monitor's
    StatusLine& status;
    MonitorPanel& panel;
    Warnings& warnings;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    const Files& files;
    FileLocator& locator;
    MessageLoop& loop;
    std::function<MlvAllData(const QString& fid)> GetAllDataByFid;
    /// Has all other programs of the suite fall silent on the monitor, and waits for them. False
    /// when one does not answer.
    std::function<bool()> StopOtherMonitors;
    std::function<void(const QString& text)> showStatusText;
    /// The user has chosen another volume, 0 to 10000.
    std::function<void(int volume)> volumeChanged = [](int) {};
    /// What else sounds on the monitor's card falls silent: called when the monitor is to play, and
    /// when there shall be silence.
    std::function<void()> silenceRehearsal = [] {};
};

/// What the monitor player lets hear; empty texts while it is silent.
struct HeardTrack
{
    QString fid;
    QString title;

    bool operator==(const HeardTrack&) const = default;
};

/// A command of the monitor as a tool button shows it.
struct MonitorCommand
{
    QStringView key;     ///< of the button: keep, key bindings name them too
    QStringView toolTip; ///< name of its text
    QStringView icon;
};

/// In the order of the buttons.
inline constexpr std::array kMonitorCommands = {
    MonitorCommand{u"play.stop", u"ToolTipPlayerStop", u"stop"},
    MonitorCommand{u"play.start", u"ToolTipPlayerPlay", u"play"},
    MonitorCommand{u"play.center", u"ToolTipPlayerPlayCenter", u"playcenter"},
    MonitorCommand{u"play.zur", u"ToolTipPlayerRemain", u"rewind"},
    MonitorCommand{u"play.vor", u"ToolTipPlayerForward", u"fastforward"},
};

/// The monitor player: lets the user listen to a track without the main player.
///
/// A track is loaded when it is wanted first. Elapsed and remaining time of the file stand in the
/// status line as long as it plays. A file that cannot be played is told there, a file on a disc
/// that is not inserted in a dialog; nothing is thrown.
class Monitor : public MonitorControl
{
public:
    explicit Monitor(MonitorParts parts);
    ~Monitor() override;
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    /// Plays a track from its start position (with `db.monitor.play.by.pos` "on" up to its stop
    /// position), plays it from its middle, goes to a place of it, or stops. "SEEK" plays on where
    /// it played and stays silent where it did not. Unknown actions do nothing.
    void MonitorPlayer(const QString& action, const QString& fid, int position) override;

    /// A key of kMonitorCommands; the two seeks go five seconds from where it plays or stands.
    /// False for another key.
    bool run(QStringView key, const QString& fid);

    [[nodiscard]] int positionFrames() const override;

    /// Goes to a place of what plays, in milliseconds. Nothing while it is silent.
    void seekTo(double ms);
    /// The same from where it plays.
    void seekBy(double ms);

    /// The times show this place, where the user may want to go, instead of the one that plays;
    /// not any longer with a negative one. In milliseconds.
    void offerPlace(double ms);

    /// The handler hears what plays: at each change, and behind each request to play, so that a
    /// mark set beforehand goes when nothing came of it.
    void setOnHeard(std::function<void(const HeardTrack& track)> handler)
    {
        m_onHeard = std::move(handler);
    }

    void stop() override;
    /// Heard until the next track is loaded: a setting it is for chooseVolume alone.
    void setVolume(int volume) override;

    /// The volume that the user wants from now on, 0 to 10000: heard at once, and in the settings
    /// (section "Global", key `Volume.Monitor`) when the hand rests, or at the end.
    void chooseVolume(int volume);
    /// The same by twentieths of the loudest.
    void changeVolume(int steps);

    /// That volume, 0 to 10000.
    [[nodiscard]] int volumeOfSettings() const;

    /// Lists the sound cards to the settings and takes the one of the settings: before the next
    /// track, or in a second. Asking the sound system takes time that a start has not got.
    void reopen() override;

private:
    static constexpr double kNotOffered = -1;

    enum class Action
    {
        Play,
        PlayCenter,
        Seek
    };

    void step(double ms);
    void keepVolume();
    void listCards();
    [[nodiscard]] bool takeCard();
    void load();
    void refreshRange();
    void onLoaded();
    void act();
    [[nodiscard]] PlayFault playFromStart();
    void playFromCenter();
    [[nodiscard]] HeardTrack heard() const;
    void tellHeard();
    void showPosition(double ms);
    void showTimes(double ms);
    void tell(PlayFault fault);
    void tellMissing(const MlvAllData& track);

    MonitorParts m_parts;
    std::unique_ptr<Timer> m_timerCards;
    std::unique_ptr<Timer> m_timerVolume;
    std::optional<int> m_volumeToKeep; ///< chosen, not in the settings yet
    QString m_fid;                     ///< that was asked for last
    QString m_loadedFid;               ///< empty when nothing is loaded
    MlvAllData m_track;                ///< of m_loadedFid
    Action m_action = Action::Play;
    int m_position = 0; ///< frames
    int m_requests = 0; ///< counted, so that one overtaken while the loop turned is known
    bool m_cardTaken = false;
    HeardTrack m_heard;             ///< told last
    double m_offered = kNotOffered; ///< milliseconds
    std::function<void(const HeardTrack& track)> m_onHeard;
};

} // namespace melovane
