#include "player/deck_pair.h"

namespace melovane {

FadeStyle mixFade(const MLVMixStyle& style, int ms)
{
    FadeStyle fade;
    fade.style = style;
    fade.ms = ms;
    return fade;
}

DeckPair::DeckPair(AirEngine& engine, std::function<AirSettings()> settings)
    : m_engine(engine)
    , m_settings(std::move(settings))
{}

AirDeck DeckPair::other() const
{
    return m_present == AirDeck::A ? AirDeck::B : AirDeck::A;
}

EntrySound DeckPair::soundOf(const AirEntry& entry, const FadeStyle& fadeOut) const
{
    EntrySound sound = entryToSound(entry.entry, m_settings());
    sound.pitch = entry.pitch.value_or(sound.pitch);
    sound.fadeOut = fadeOut;
    return sound;
}

void DeckPair::load(AirEntry& entry, const FadeStyle& fadeIn)
{
    EntrySound sound = soundOf(entry, plainFade(0));
    sound.fadeIn = fadeIn;
    entry.load = m_engine.load(other(), sound);
    if (entry.fromMs) {
        m_engine.seek(other(), *entry.fromMs);
    }
}

void DeckPair::emptyOther()
{
    m_engine.unload(other());
}

void DeckPair::stopOther()
{
    m_engine.stop(other());
}

void DeckPair::startOther()
{
    m_engine.startNow(other());
}

void DeckPair::fadeOut(int ms)
{
    m_engine.cancelStart(other());
    for (const AirDeck deck : {AirDeck::A, AirDeck::B}) {
        if (m_engine.report(deck).state == DeckState::Playing) {
            m_engine.fadeOut(deck, ms);
        }
    }
}

void DeckPair::setPitch(int pitch, int glideMs)
{
    m_engine.setPitch(m_present, pitch, glideMs);
}

void DeckPair::goOver(const AirEntry& present, const FadeStyle& fade)
{
    const DeckReport report = presentReport();
    EntrySound ending = soundOf(present, fade);
    const int end = int((report.positionMs + fade.ms) / kFrameMs) + 1;
    if (report.remainingMs > fade.ms && end > ending.frameStart) {
        ending.frameStop = end;
    }
    m_engine.update(m_present, ending);
    startOther();
}

void DeckPair::planMix(const AirEntry& present, const FadeStyle& fade)
{
    m_engine.update(m_present, soundOf(present, fade));
    m_engine.startBeforeEnd(other(), m_present, fade.ms);
}

void DeckPair::planNone(const AirEntry& present)
{
    m_engine.cancelStart(other());
    m_engine.update(m_present, soundOf(present, plainFade(0)));
}

} // namespace melovane
