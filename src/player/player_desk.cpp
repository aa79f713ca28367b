#include "player/player_desk.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "player/playing_list.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Command
{
    QStringView binding;
    void (*run)(PlayerDesk& desk);
};

template <int Pad> void playPad(PlayerDesk& desk)
{
    desk.jingles().play(Pad);
}

template <AirDeck Deck> void stopDeck(PlayerDesk& desk)
{
    if (desk.sequence().deck() == Deck) {
        desk.sequence().stop();
    }
}

template <AirDeck Deck> void pauseDeck(PlayerDesk& desk)
{
    // A deck that is on pause is the one that plays next.
    const bool isPresent = desk.sequence().deck() == Deck;
    if (isPresent != desk.sequence().isPaused()) {
        desk.playOrPause();
    }
}

void play(PlayerDesk& desk)
{
    desk.sequence().play();
}

/// In the order of trial: of two bindings with the same keys the first acts.
constexpr std::array kCommands = std::to_array<Command>({
    {u"PLPlay1", play},
    {u"PLPlay2", play},
    {u"PLStop1", stopDeck<AirDeck::A>},
    {u"PLStop2", stopDeck<AirDeck::B>},
    {u"PLPause1", pauseDeck<AirDeck::A>},
    {u"PLPause2", pauseDeck<AirDeck::B>},
    {u"PLLOOP", [](PlayerDesk& desk) { desk.sequence().setLoop(!desk.sequence().isLoop()); }},
    {u"PLStop", [](PlayerDesk& desk) { desk.sequence().stop(); }},
    {u"PLPlay", play},
    {u"PLMix", [](PlayerDesk& desk) { desk.sequence().mixNow(); }},
    {u"PLTaloverON", [](PlayerDesk& desk) { desk.setTalkover(!desk.isTalkover()); }},
    {u"mixer.jingle.1", playPad<0>},
    {u"mixer.jingle.2", playPad<1>},
    {u"mixer.jingle.3", playPad<2>},
    {u"mixer.jingle.4", playPad<3>},
    {u"mixer.jingle.5", playPad<4>},
    {u"mixer.jingle.6", playPad<5>},
    {u"mixer.jingle.stop", [](PlayerDesk& desk) { desk.jingles().stop(); }},
    {u"tast.player.activate.tree", [](PlayerDesk& desk) { desk.showConsole(); }},
    {u"tast.player.activate.table", [](PlayerDesk& desk) { desk.showConsole(); }},
    {u"DBTOP", [](PlayerDesk& desk) { desk.showConsole(); }},
});

QString nameOf(const MlvPlaylistDetail& entry)
{
    const QString title = entry.Titel.isEmpty() ? entry.DName : entry.Titel;
    return entry.Interpret.isEmpty() ? title : entry.Interpret + u" - "_s + title;
}

/// \param isHeard at the speed of the entry, not of its file
double bpmOf(const MlvPlaylistDetail& entry, bool isHeard)
{
    const double bpm = QString(entry.BPM).replace(u',', u'.').toDouble();
    return isHeard ? bpm * (1 + entry.Pitch / 10'000.0) : bpm;
}

} // namespace

AirSettings airSettings(const GlobalSettings& settings, const ConfigObjects& texts)
{
    AirSettings air;
    air.fadeIn = std::max(0, settings.FadeIn());
    air.fadeOut = std::max(0, settings.FadeOut());
    air.maxMix = std::max(0, settings.MaxBlendTime());
    air.jinglePlayers =
        settings.GetKeyValueLong(u"Global"_s, u"Jingle.Players"_s, air.jinglePlayers);
    air.mixPause = std::max(0, texts.value(u"player.WaitForMixTime").toInt());
    air.volume = settings.DefaultVolume();
    air.maxPitch = std::max(0, settings.MinMaxPitch());
    air.isNormalizing = settings.NormalizeOn() != 0;
    air.normalizeTuning = settings.NormalizeTuning();
    return air;
}

PlayerDesk::PlayerDesk(AirSequence& sequence,
                       AirEngine& engine,
                       PlayingList& list,
                       JinglePads& jingles,
                       GlobalSettings& settings,
                       const ConfigObjects& texts,
                       std::function<void()> showConsole)
    : m_sequence(sequence)
    , m_engine(engine)
    , m_list(list)
    , m_jingles(jingles)
    , m_settings(settings)
    , m_texts(texts)
    , m_showConsole(std::move(showConsole))
{}

void PlayerDesk::showConsole()
{
    if (m_showConsole) {
        m_showConsole();
    }
}

void PlayerDesk::playOrPause()
{
    if (m_sequence.isPlaying()) {
        m_sequence.pause();
    } else {
        m_sequence.play();
    }
}

void PlayerDesk::playOrStop()
{
    if (m_sequence.isPlaying()) {
        m_sequence.stop();
    } else {
        m_sequence.play();
    }
}

void PlayerDesk::setTalkover(bool isOn)
{
    m_isTalkover = isOn;
    if (isOn) {
        m_engine.setTalkover(std::clamp(m_settings.TalkoverVolume(), 0, kUnchangedVolume),
                             std::max(0, m_settings.TalkoverBlendOut()));
    } else {
        m_engine.setTalkover(kUnchangedVolume, std::max(0, m_settings.TalkoverBlendIn()));
    }
}

int PlayerDesk::maxPitch() const
{
    return std::max(0, m_settings.MinMaxPitch());
}

bool PlayerDesk::isPitchReversed() const
{
    return m_texts.value(u"Player.PitchDirection").toInt() != 0;
}

void PlayerDesk::setPitch(int pitch)
{
    m_sequence.setPitch(std::clamp(pitch, -maxPitch(), maxPitch()), 0);
}

void PlayerDesk::easePitch()
{
    m_sequence.setPitch(0, std::max(0, m_settings.RePitchTime()));
}

bool PlayerDesk::run(const QString& id)
{
    const auto command = std::find_if(kCommands.begin(), kCommands.end(),
                                      [&](const Command& one) { return one.binding == id; });
    if (command == kCommands.end()) {
        return false;
    }
    command->run(*this);
    return true;
}

bool PlayerDesk::keyPressed()
{
    const QString keys = m_settings.GetKeyStatusString();
    if (!keys.isEmpty() && keys == m_keys) {
        return true;
    }
    const auto command = std::find_if(kCommands.begin(), kCommands.end(), [&](const Command& one) {
        return m_settings.Tasten(one.binding.toString()).matches(keys);
    });
    if (command == kCommands.end()) {
        return false;
    }
    m_keys = keys;
    command->run(*this);
    return true;
}

void PlayerDesk::turn()
{
    if (!m_keys.isEmpty() && m_settings.GetKeyStatusString() != m_keys) {
        m_keys.clear();
    }
}

void PlayerDesk::leftOut(const MlvPlaylistDetail& entry, AirFault fault)
{
    const QString name = entry.Titel.isEmpty() && entry.DName.isEmpty() ? entry.FID : nameOf(entry);
    m_notice = m_texts.text(fault == AirFault::Missing ? u"air.missing" : u"air.damaged", name);
}

DeckFace PlayerDesk::deck(AirDeck deck) const
{
    const DeckReport report = m_engine.report(deck);
    DeckFace face;
    face.isOnAir = m_sequence.deck() == deck && !m_sequence.playing().FID.isEmpty();
    const MlvPlaylistDetail entry =
        m_sequence.deck() == deck ? m_sequence.playing() : m_sequence.ready();
    if (entry.FID.isEmpty()) {
        return face;
    }
    face.isLoaded = true;
    face.isPaused = !face.isOnAir && m_sequence.isPaused();
    face.title = entry.Titel.isEmpty() ? entry.DName : entry.Titel;
    face.artist = entry.Interpret;
    face.file = entry.file;
    // A deck that goes on behind a pause began somewhere in the middle.
    face.fromMs = std::min(report.fromMs, startMs(entry));
    face.pitch = entry.Pitch;
    face.bpm = bpmOf(entry, m_texts.value(u"Player.BPM.Anzeige").toInt() != 0);
    face.lengthMs = std::max(0.0, report.toMs - face.fromMs);
    face.elapsedMs = std::clamp(report.positionMs - face.fromMs, 0.0, face.lengthMs);
    face.remainingMs = report.remainingMs;
    face.level = report.state == DeckState::Playing ? report.level : 0;
    return face;
}

MixFace PlayerDesk::mix() const
{
    MixFace face;
    face.remainingMs = m_engine.report(m_sequence.deck()).remainingMs;
    face.mixMs = m_sequence.mixMs();
    face.isPlanned = m_sequence.isMixPlanned();
    return face;
}

QStringList PlayerDesk::upcoming(int count)
{
    QStringList names;
    const MlvPlaylistDetail ready = m_sequence.upcoming();
    if (!ready.FID.isEmpty()) {
        names.append(nameOf(ready));
    }
    for (int places = 1; names.size() < count && places < m_list.count(); ++places) {
        const auto field = m_list.ahead(places);
        if (field && field->PLID != ready.PLID) {
            names.append(nameOf(m_list.detail(field->PLID)));
        }
    }
    return names;
}

QString PlayerDesk::notice() const
{
    return m_sequence.isStarved() ? m_texts.text(u"air.starved") : m_notice;
}

} // namespace melovane
