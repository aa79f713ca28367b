#include "monitor/monitor_player.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/monitor_panel.h"
#include "platform/controls/status_line.h"
#include "platform/controls/warnings.h"
#include "platform/system/files.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "store/file_locator.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kCardsDelay{1000};

/// So long a chosen volume waits for the next one before it is written.
constexpr std::chrono::milliseconds kVolumeDelay{500};

/// Section and key of the settings, with the volume at the next load: keep, the volume monitor
/// writes it, too.
const QString kVolumeSection = u"Global"_s;
const QString kVolumeKey = u"Volume.Monitor"_s;

/// How far a seek button goes.
constexpr double kStepMs = 5000;

/// In front of a time that is still to come.
constexpr QChar kMinus{0x2212};

/// Volume without a setting.
constexpr int kDefaultVolume = 7500;

constexpr int kLoudest = 10'000;
constexpr int kVolumeStep = kLoudest / 20;

} // namespace

Monitor::Monitor(MonitorParts parts)
    : m_parts(std::move(parts))
    , m_timerCards(m_parts.loop.makeTimer(kCardsDelay, [this] { listCards(); }))
    , m_timerVolume(m_parts.loop.makeTimer(kVolumeDelay, [this] { keepVolume(); }))
{
    m_parts.player.setOnLoaded([this] { onLoaded(); });
    m_parts.player.setOnPosition([this](double ms) { showPosition(ms); });
    m_parts.player.setOnEnded([this](PlayFault fault) {
        tell(fault);
        showPosition(m_parts.player.positionMs());
    });
}

Monitor::~Monitor()
{
    keepVolume();
    m_parts.player.setOnLoaded({});
    m_parts.player.setOnPosition({});
    m_parts.player.setOnEnded({});
}

void Monitor::MonitorPlayer(const QString& action, const QString& fid, int position)
{
    static const std::map<QString, Action> kActions = {
        {u"PLAY"_s, Action::Play},
        {u"PLAYCENTER"_s, Action::PlayCenter},
        {u"SEEK"_s, Action::Seek},
    };
    const QString name = upperCase(action);
    if (name == "STOP"_L1) {
        stop();
        return;
    }
    const auto known = kActions.find(name);
    const QString wanted = fid.isEmpty() ? m_fid : fid;
    if (known == kActions.end() || wanted.isEmpty()) {
        return;
    }
    m_parts.silenceRehearsal();
    const bool othersAreSilent =
        known->second == Action::Seek || !m_parts.StopOtherMonitors || m_parts.StopOtherMonitors();
    ++m_requests;
    m_fid = wanted;
    m_action = known->second;
    m_position = position;
    if (m_parts.player.isLoaded() && m_loadedFid == m_fid) {
        refreshRange();
        act();
    } else {
        load();
    }
    showPosition(m_parts.player.positionMs());
    tellHeard();
    if (!othersAreSilent) {
        m_parts.showStatusText(m_parts.texts.text(u"status.monitor.silent"));
    }
}

bool Monitor::run(QStringView key, const QString& fid)
{
    if (key == u"play.start") {
        MonitorPlayer(u"PLAY"_s, fid, 0);
    } else if (key == u"play.center") {
        MonitorPlayer(u"PLAYCENTER"_s, fid, 0);
    } else if (key == u"play.stop") {
        stop();
    } else if (key == u"play.zur" || key == u"play.vor") {
        step(key == u"play.zur" ? -kStepMs : kStepMs);
    } else {
        return false;
    }
    return true;
}

void Monitor::step(double ms)
{
    if (m_parts.player.isLoaded()) {
        m_parts.player.seek(m_parts.player.positionMs() + ms);
    }
}

int Monitor::positionFrames() const
{
    return toLongHalfEven(m_parts.player.positionMs() / kFrameMs);
}

void Monitor::seekTo(double ms)
{
    m_offered = kNotOffered;
    if (m_parts.player.isPlaying()) {
        m_parts.player.seek(ms);
        showPosition(m_parts.player.positionMs());
    }
}

void Monitor::seekBy(double ms)
{
    seekTo(m_parts.player.positionMs() + ms);
}

void Monitor::offerPlace(double ms)
{
    m_offered = ms;
    showPosition(m_parts.player.positionMs());
}

void Monitor::stop()
{
    m_parts.silenceRehearsal();
    // What waits for the message loop to turn does not start any more.
    ++m_requests;
    m_parts.player.stop();
    showPosition(0);
}

void Monitor::setVolume(int volume)
{
    const int valid = std::clamp(volume, 0, kLoudest);
    m_parts.player.setVolume(valid);
    m_parts.panel.showVolume(valid);
}

int Monitor::volumeOfSettings() const
{
    return m_volumeToKeep.value_or(
        m_parts.settings.GetKeyValueLong(kVolumeSection, kVolumeKey, kDefaultVolume));
}

void Monitor::chooseVolume(int volume)
{
    const int valid = std::clamp(volume, 0, kLoudest);
    setVolume(valid);
    m_volumeToKeep = valid;
    m_timerVolume->start();
    m_parts.volumeChanged(valid);
}

void Monitor::changeVolume(int steps)
{
    const int present = m_parts.player.isLoaded() ? m_parts.player.volume() : volumeOfSettings();
    chooseVolume(std::clamp(steps, -kLoudest / kVolumeStep, kLoudest / kVolumeStep) * kVolumeStep +
                 present);
}

void Monitor::keepVolume()
{
    m_timerVolume->stop();
    if (m_volumeToKeep) {
        m_parts.settings.WriteKeyValue(kVolumeSection, kVolumeKey,
                                       QString::number(*m_volumeToKeep));
        m_volumeToKeep.reset();
    }
}

void Monitor::reopen()
{
    m_parts.silenceRehearsal();
    m_parts.player.close();
    showPosition(0);
    m_parts.panel.showVolume(volumeOfSettings());
    m_cardTaken = false;
    m_timerCards->start();
}

void Monitor::listCards()
{
    m_timerCards->stop();
    // Nothing else keeps a card's number: one that is gone must not keep the number that it had.
    m_parts.settings.SetSCardNameMonitorID(kSystemCard);
    for (const SoundCard& card : m_parts.player.cards()) {
        m_parts.settings.SetSoundCardID(card.name, card.number);
    }
}

bool Monitor::takeCard()
{
    if (m_cardTaken) {
        return true;
    }
    listCards();
    const QString name = m_parts.settings.SCardNameMonitor();
    const int card = m_parts.settings.SCardNameMonitorID();
    if (!name.isEmpty() && card == kSystemCard) {
        // The system's own choice may be the card that the audience hears.
        m_parts.showStatusText(m_parts.texts.text(u"status.card.missing", name));
        return false;
    }
    m_parts.player.open(card);
    m_cardTaken = true;
    return true;
}

void Monitor::load()
{
    const MlvAllData track = m_parts.GetAllDataByFid(m_fid);
    QString folder = track.Path;
    const QString file = m_parts.locator.ExistFile(folder, track.DName);
    if (!m_parts.files.fileExists(file)) {
        m_parts.player.unload();
        m_loadedFid.clear();
        tellMissing(track);
        return;
    }
    m_track = track;
    m_loadedFid = m_fid;
    const PlayFault fault = m_parts.player.load(file);
    if (fault != PlayFault::None) {
        m_loadedFid.clear();
        tell(fault);
    }
}

/// Start and stop may have been set anew since the track was loaded.
void Monitor::refreshRange()
{
    if (m_action != Action::Play) {
        return;
    }
    const MlvAllData track = m_parts.GetAllDataByFid(m_fid);
    if (!track.FID.isEmpty()) {
        m_track = track;
    }
}

void Monitor::onLoaded()
{
    setVolume(volumeOfSettings());
    m_parts.showStatusText(u" :: "_s + m_track.Titel);
    act();
}

void Monitor::act()
{
    switch (m_action) {
    case Action::Seek:
        m_parts.player.seek(m_position * kFrameMs);
        break;
    case Action::Play:
        if (takeCard()) {
            tell(playFromStart());
        }
        break;
    case Action::PlayCenter:
        playFromCenter();
        break;
    }
}

PlayFault Monitor::playFromStart()
{
    const bool byPosition = lowerCase(m_parts.texts.value(u"db.monitor.play.by.pos")) == "on"_L1;
    const double start = m_track.FrameStart * kFrameMs;
    if (byPosition && m_track.FrameStop > m_track.FrameStart) {
        return m_parts.player.playRange(start, m_track.FrameStop * kFrameMs);
    }
    m_parts.player.stop();
    m_parts.player.seek(start);
    return m_parts.player.play();
}

void Monitor::playFromCenter()
{
    const int request = m_requests;
    m_parts.loop.turn();
    if (request != m_requests || !m_parts.player.isLoaded() || !takeCard()) {
        return;
    }
    // Half a frame is a place, too: the player finds its sample.
    m_parts.player.stop();
    m_parts.player.seek(m_parts.player.lengthFrames() / 2.0 * kFrameMs);
    tell(m_parts.player.play());
}

HeardTrack Monitor::heard() const
{
    return m_parts.player.isPlaying() ? HeardTrack{m_loadedFid, m_track.Titel} : HeardTrack{};
}

void Monitor::tellHeard()
{
    m_heard = heard();
    if (m_onHeard) {
        m_onHeard(m_heard);
    }
}

void Monitor::showTimes(double ms)
{
    const auto text = [](double time) {
        return Mod_MilliSecToMin::MilliSecToMin(toLongHalfEven(time));
    };
    m_parts.status.setPanel(StatusPanel::Elapsed, text(ms));
    m_parts.status.setPanel(StatusPanel::Remaining, kMinus + text(m_parts.player.lengthMs() - ms));
}

/// Where it plays, and nothing any longer when it does not.
void Monitor::showPosition(double ms)
{
    if (m_parts.player.isPlaying()) {
        showTimes(m_offered < 0 ? ms : m_offered);
        m_parts.panel.showPlace(ms, m_parts.player.lengthMs());
    } else {
        m_offered = kNotOffered;
        m_parts.status.setPanel(StatusPanel::Elapsed, {});
        m_parts.status.setPanel(StatusPanel::Remaining, {});
        m_parts.panel.hidePlace();
    }
    if (heard() != m_heard) {
        tellHeard();
    }
}

void Monitor::tell(PlayFault fault)
{
    const auto show = [this](QStringView text) {
        m_parts.showStatusText(m_parts.texts.text(text, m_track.DName));
    };
    switch (fault) {
    case PlayFault::None:
        break;
    case PlayFault::NoCard:
        // Cards are listed anew for the next try: it may be back then, under another number.
        m_cardTaken = false;
        show(u"status.card.none");
        break;
    case PlayFault::Missing:
        show(u"status.file.missing");
        break;
    case PlayFault::NoAudio:
        show(u"status.file.noaudio");
        break;
    case PlayFault::Broken:
        show(u"status.file.broken");
        break;
    }
}

void Monitor::tellMissing(const MlvAllData& track)
{
    if (track.DriveTyp == static_cast<int>(VolumeKind::Optical)) {
        m_parts.warnings.ShowWarning(m_parts.texts.text(u"cd.text", track.DName, track.DriveName),
                                     WarningType::Note, m_parts.texts.text(u"cd.title"),
                                     u"cd.text"_s);
        return;
    }
    m_parts.showStatusText(m_parts.texts.text(u"status.file.missing", track.DName));
}

} // namespace melovane
