#include "player/mix_engine.h"

#include <algorithm>

namespace melovane {

namespace {

int framesOf(int ms)
{
    constexpr int kLongestMs = 600'000;
    return static_cast<int>(qint64{std::clamp(ms, 0, kLongestMs)} * kAirRate / 1000);
}

constexpr size_t number(AirDeck deck)
{
    return static_cast<size_t>(deck);
}

} // namespace

MixEngine::MixEngine(const SoundStreamMaker& makeStream,
                     AudioOutput& first,
                     AudioOutput& second,
                     std::function<void()> hurry)
    : m_mixers{CardMixer(m_links), CardMixer(m_links)}
    , m_keepers{CardKeeper(first, m_mixers[0]), CardKeeper(second, m_mixers[1])}
    , m_hurry(std::move(hurry))
{
    for (size_t i = 0; i < m_decks.size(); ++i) {
        m_decks[i].feeder = std::make_unique<DeckFeeder>(m_links[i], makeStream);
        m_decks[i].voice = std::make_unique<AirVoice>(m_links[i], m_tables);
    }
    shareVoices(false);
}

MixEngine::~MixEngine()
{
    for (CardKeeper& keeper : m_keepers) {
        keeper.close();
    }
}

MixEngine::Deck& MixEngine::at(AirDeck deck)
{
    return m_decks[number(deck)];
}

void MixEngine::hurry()
{
    if (m_hurry) {
        m_hurry();
    }
}

void MixEngine::forbidStandIn()
{
    for (CardKeeper& keeper : m_keepers) {
        keeper.forbidStandIn();
    }
}

void MixEngine::openCards(const QString& player1, const QString& player2)
{
    const bool isTwo = !player2.isEmpty() && player2 != player1;
    m_isTwo = isTwo;
    m_keepers[0].want(player1);
    if (isTwo) {
        m_keepers[1].want(player2);
    } else {
        m_keepers[1].wantNone();
    }
    hurry();
}

void MixEngine::closeCards()
{
    for (CardKeeper& keeper : m_keepers) {
        keeper.wantNone();
    }
    hurry();
}

CardReport MixEngine::card(int output) const
{
    const auto index = static_cast<size_t>(output);
    const CardKeeper::State state = m_keepers[index].state();
    return {state.name, state.isOpen, state.isLost, m_mixers[index].frames()};
}

quint32 MixEngine::load(AirDeck deck, const EntrySound& sound)
{
    Deck& target = at(deck);
    target.load = ++m_lastLoad;
    target.sound = sound;
    target.feeder->load(target.load, sound);
    hurry();
    return target.load;
}

void MixEngine::unload(AirDeck deck)
{
    at(deck).load = 0;
    at(deck).feeder->unload();
    hurry();
}

void MixEngine::send(AirDeck deck, VoiceCommand command)
{
    command.load = at(deck).load;
    if (command.load != 0) {
        m_links[number(deck)].commands.push(command);
    }
}

void MixEngine::start(AirDeck deck, const StartRule& rule)
{
    VoiceCommand command;
    command.kind = VoiceCommand::Kind::Start;
    command.start = rule;
    send(deck, command);
}

void MixEngine::startNow(AirDeck deck)
{
    start(deck, {StartRule::When::Now, 0, deck});
}

void MixEngine::startAt(AirDeck deck, qint64 cardFrame)
{
    start(deck, {StartRule::When::AtFrame, cardFrame, deck});
}

void MixEngine::startBeforeEnd(AirDeck deck, AirDeck of, int ms)
{
    // A deck that waited for itself would wait for ever.
    start(deck, {deck == of ? StartRule::When::Now : StartRule::When::BeforeEnd, framesOf(ms), of});
}

void MixEngine::cancelStart(AirDeck deck)
{
    start(deck, {});
}

void MixEngine::fadeOut(AirDeck deck, int ms)
{
    VoiceCommand command;
    command.kind = VoiceCommand::Kind::Fade;
    command.frames = framesOf(ms);
    send(deck, command);
}

void MixEngine::seek(AirDeck deck, double ms)
{
    if (at(deck).load != 0) {
        at(deck).feeder->seek(ms, at(deck).sound);
        hurry();
    }
}

void MixEngine::reshape(AirDeck deck, int pitchMs)
{
    VoiceCommand command;
    command.kind = VoiceCommand::Kind::Shape;
    command.shape = shapeOf(at(deck).sound);
    command.frames = framesOf(pitchMs);
    send(deck, command);
}

void MixEngine::update(AirDeck deck, const EntrySound& sound)
{
    Deck& target = at(deck);
    if (sound.frameStop != target.sound.frameStop) {
        target.feeder->changeEnd(sound.frameStop);
    }
    target.sound = sound;
    reshape(deck, 0);
}

void MixEngine::setPitch(AirDeck deck, int pitch, int glideMs)
{
    at(deck).sound.pitch = pitch;
    reshape(deck, glideMs);
}

void MixEngine::setVolume(AirDeck deck, int volume)
{
    at(deck).sound.volume = volume;
    reshape(deck, 0);
}

void MixEngine::setTalkover(int volume, int glideMs)
{
    for (CardMixer& mixer : m_mixers) {
        mixer.setTalkover(volume, glideMs);
    }
}

DeckReport MixEngine::report(AirDeck deck) const
{
    const Deck& asked = m_decks[number(deck)];
    const VoiceLink& link = m_links[number(deck)];
    const DeckFeeder::Result result = asked.feeder->result();
    DeckReport report;
    report.load = asked.load;
    if (asked.load == 0) {
        return report;
    }
    report.state = DeckState::Loading;
    if (result.load != asked.load) {
        return report;
    }
    report.fault = result.fault;
    report.fromMs = result.fromMs;
    report.toMs = result.toMs;
    report.positionMs = result.fromMs;
    report.remainingMs = result.toMs - result.fromMs;
    if (!result.isDecoded) {
        report.state = DeckState::Failed;
        return report;
    }
    report.state = DeckState::Ready;
    if (link.load.load(std::memory_order_acquire) != asked.load) {
        return report;
    }
    report.state = link.state.load(std::memory_order_relaxed);
    report.startsLater = link.startsLater.load(std::memory_order_relaxed);
    report.fadesAway = link.fadesAway.load(std::memory_order_relaxed);
    report.startedAt = link.startedAt.load(std::memory_order_relaxed);
    report.positionMs = link.position.load(std::memory_order_relaxed) * 1000 / result.sampleRate;
    report.remainingMs = link.remaining.load(std::memory_order_relaxed) * 1000 / kAirRate;
    report.level = link.level.load(std::memory_order_relaxed);
    report.underruns = link.underruns.load(std::memory_order_relaxed);
    return report;
}

void MixEngine::beat()
{
    keepCards();
    for (Deck& deck : m_decks) {
        deck.feeder->beat();
    }
    // Without a card decks obey all the same; they only move not on.
    for (size_t i = 0; i < kOutputs; ++i) {
        if (!m_keepers[i].state().isOpen) {
            m_mixers[i].fill({});
        }
    }
}

bool MixEngine::isSilent() const
{
    return std::ranges::none_of(m_links, [](const VoiceLink& link) {
        return link.state.load(std::memory_order_relaxed) == DeckState::Playing;
    });
}

void MixEngine::keepCards()
{
    // Taken before the cards are opened: what is wanted meanwhile is for the next beat.
    const std::array changed{m_keepers[0].takeChange(), m_keepers[1].takeChange()};
    const bool isTwo = m_isTwo;
    if (isTwo != m_sharesTwo || changed[0] || changed[1]) {
        for (CardKeeper& keeper : m_keepers) {
            keeper.close();
        }
        shareVoices(isTwo);
    }
    for (CardKeeper& keeper : m_keepers) {
        keeper.beat(isSilent());
    }
}

/// While no card asks: a deck is mixed into one of them only.
void MixEngine::shareVoices(bool isTwo)
{
    m_sharesTwo = isTwo;
    for (size_t output = 0; output < kOutputs; ++output) {
        std::vector<AirVoice*> voices(m_decks.size(), nullptr);
        for (size_t i = 0; i < m_decks.size(); ++i) {
            const size_t own = isTwo && i == number(AirDeck::B) ? 1 : 0;
            voices[i] = own == output ? m_decks[i].voice.get() : nullptr;
        }
        m_mixers[output].setVoices(std::move(voices));
    }
}

} // namespace melovane
