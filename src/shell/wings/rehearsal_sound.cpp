#include "shell/wings/rehearsal_sound.h"

#include "platform/linux/mp3_stream.h"
#include "player/player_desk.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

RehearsalSound::RehearsalSound(Machine& machine, SuiteWing& suite)
    : m_machine(machine)
    , m_suite(suite)
    , m_engine([] { return std::make_unique<linux_media::Mp3Stream>(); }, m_output, m_unused)
    , m_rehearsal({.engine = m_engine,
                   .beat = [this] { m_engine.beat(); },
                   .loop = machine.loop,
                   .settings = [this] { return airSettings(m_machine.settings, m_machine.texts); },
                   .ended = [this](PlayFault fault, const QString& file) { tell(fault, file); }})
{
    m_engine.forbidStandIn();
}

bool RehearsalSound::isThere(const QString& card)
{
    const auto cards = m_output.cards();
    return card.isEmpty() || std::ranges::find(cards, card, &SoundCard::name) != cards.end();
}

void RehearsalSound::play(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to, int volume)
{
    const QString card = m_machine.settings.SCardNameMonitor();
    if (!isThere(card)) {
        m_suite.showStatusText(m_machine.texts.text(u"status.card.missing", card));
        return;
    }
    const bool othersAreSilent = m_suite.suite.StopOtherMonitors();
    m_rehearsal.play(from, to, card, volume);
    if (!othersAreSilent) {
        m_suite.showStatusText(m_machine.texts.text(u"status.monitor.silent"));
    }
}

void RehearsalSound::tell(PlayFault fault, const QString& file)
{
    static constexpr std::pair<PlayFault, QStringView> kTexts[] = {
        {PlayFault::NoCard, u"status.card.none"},
        {PlayFault::Missing, u"status.file.missing"},
        {PlayFault::NoAudio, u"status.file.noaudio"},
        {PlayFault::Broken, u"status.file.broken"},
    };
    for (const auto& [known, text] : kTexts) {
        if (known == fault) {
            m_suite.showStatusText(m_machine.texts.text(text, file));
        }
    }
}

} // namespace melovane
