#include "player/air_sequence.h"

#include "player/jingle_decks.h"
#include "player/playing_list.h"

#include <algorithm>

namespace melovane {

namespace {

/// What is left of the present entry in front of its mix when an edit comes too late for the next.
constexpr int kSettledMs = 1500;
/// Entries whose values stay known while the database is away.
constexpr int kKeptAhead = 8;

bool isOver(const DeckReport& report)
{
    return report.state == DeckState::Ended || report.state == DeckState::Failed;
}

/// Something of it was heard.
bool hasBegun(const DeckReport& report)
{
    return report.startedAt >= 0 && !report.startsLater &&
           (report.state == DeckState::Playing || report.state == DeckState::Ended);
}

} // namespace

AirSequence::AirSequence(Parts parts)
    : m_parts(std::move(parts))
    , m_search(m_parts.list, m_parts.leftOut)
    , m_decks(m_parts.engine, m_parts.settings)
{}

bool AirSequence::isLoop() const
{
    return m_onAir && m_onAir->loops.value_or(m_onAir->entry.Aktion == kAktionLoop);
}

/// Something follows the present entry by itself.
bool AirSequence::goesOn() const
{
    if (!m_onAir) {
        return false;
    }
    const bool isTold = m_onAir->loops.value_or(false);
    return isTold || (m_isMixMode && m_onAir->entry.Aktion != kAktionStop);
}

// -- Asked for --

void AirSequence::play()
{
    if (m_wantsSound) {
        return;
    }
    m_wantsSound = true;
    m_search.wake();
    m_go = Go();
    if (m_ready && !m_paused) {
        // It was loaded for a mix.
        want(*m_ready, 0);
    }
    advance();
}

void AirSequence::stop()
{
    advance();
    m_wantsSound = false;
    m_go.reset();
    m_planned.reset();
    m_decks.fadeOut(m_parts.settings().fadeOut);
    m_onAir.reset();
    if (std::exchange(m_paused, std::nullopt)) {
        dropReady();
    }
    tell();
}

void AirSequence::pause()
{
    advance();
    if (!m_wantsSound || !m_onAir) {
        return;
    }
    AirEntry left = *m_onAir;
    left.fromMs = m_decks.presentReport().positionMs;
    stop();
    standOnPause(std::move(left));
}

/// The deck that it was left on takes it again, as soon as it is silent.
void AirSequence::standOnPause(AirEntry left)
{
    dropReady();
    m_decks.stopOther();
    m_decks.swap();
    left.isRepeat = false;
    m_paused = std::move(left);
    advance();
}

void AirSequence::setLoop(bool isOn)
{
    if (m_onAir && isLoop() != isOn) {
        m_onAir->loops = isOn;
        dropReady();
        advance();
    }
}

void AirSequence::setPitch(int pitch, int glideMs)
{
    if (m_onAir) {
        m_onAir->pitch = pitch;
        m_decks.setPitch(pitch, glideMs);
    }
}

void AirSequence::next()
{
    const int ms = m_parts.settings().fadeOut;
    if (!m_wantsSound) {
        return;
    }
    if (m_ready && !m_ready->isRepeat) {
        want(*m_ready, ms);
    } else {
        dropReady();
        m_decks.stopOther();
        m_go = Go{ms};
    }
    advance();
}

void AirSequence::mixNow()
{
    if (!m_wantsSound || !m_onAir || !m_ready || m_ready->isRepeat) {
        next();
        return;
    }
    if (!m_go) {
        m_go = Go{mixLength(m_onAir->entry, m_ready->entry, m_parts.settings()), true};
        advance();
    }
}

/// What has no file is told.
bool AirSequence::isPlayable(const AirEntry& entry) const
{
    if (!entry.entry.file.isEmpty()) {
        return true;
    }
    m_parts.leftOut(entry.entry, AirFault::Missing);
    return false;
}

void AirSequence::playAtOnce(const AirEntry& wanted)
{
    if (isPlayable(wanted)) {
        m_wantsSound = true;
        want(wanted, m_parts.settings().fadeOut);
        advance();
    }
}

void AirSequence::playNow(const QString& fid)
{
    playAtOnce(airEntryOfTrack(m_parts.list, fid));
}

void AirSequence::playEntry(Plid entry)
{
    AirEntry wanted;
    wanted.entry = m_parts.list.detail(entry);
    playAtOnce(wanted);
}

void AirSequence::playNext(const QString& fid)
{
    AirEntry wanted = airEntryOfTrack(m_parts.list, fid);
    if (!isPlayable(wanted) || m_go) {
        return;
    }
    wanted.isFromList = false;
    dropReady();
    m_wanted = std::move(wanted);
    advance();
}

void AirSequence::setMixMode(bool isOn)
{
    m_isMixMode = isOn;
    advance();
}

bool AirSequence::resume(Plid entry, const QString& fid, double positionMs)
{
    const AirEntry left = airEntryLeftAt(m_parts.list, entry, fid, positionMs);
    if (left.entry.file.isEmpty()) {
        return false;
    }
    m_wantsSound = true;
    want(left, 0);
    advance();
    return true;
}

bool AirSequence::waitAt(Plid entry, const QString& fid, double positionMs)
{
    AirEntry left = airEntryLeftAt(m_parts.list, entry, fid, positionMs);
    if (m_wantsSound || left.entry.file.isEmpty()) {
        return false;
    }
    standOnPause(std::move(left));
    return true;
}

void AirSequence::standAt(Plid entry)
{
    if (m_parts.list.holds(entry)) {
        m_paused.reset();
        dropReady();
        m_search.standAt(entry);
        advance();
    }
}

void AirSequence::standBehind(Plid entry)
{
    if (m_parts.list.holds(entry)) {
        m_paused.reset();
        dropReady();
        m_search.standBehind(entry);
        advance();
    }
}

/// The next one is this, and it begins as soon as it can.
void AirSequence::want(AirEntry wanted, int fadeMs)
{
    wanted.isRepeat = false;
    m_paused.reset();
    dropReady();
    m_wanted = std::move(wanted);
    m_go = Go{m_onAir ? fadeMs : 0};
}

void AirSequence::dropReady()
{
    if (m_ready) {
        m_decks.emptyOther();
        const bool isAskedFor = !m_ready->isFromList && !m_ready->isRepeat && !m_ready->fromMs;
        if (!m_wanted && isAskedFor) {
            m_wanted = m_ready;
        }
    }
    m_ready.reset();
    m_planned.reset();
    m_search.startOver();
}

void AirSequence::listChanged()
{
    if (!m_parts.list.refresh()) {
        return;
    }
    m_parts.list.keepAhead(kKeptAhead);
    m_search.forgetFaults();
    m_search.wake();
    const double left = m_onAir ? m_decks.presentReport().remainingMs - mixMs() : kSettledMs;
    if (m_onAir && m_parts.list.holds(m_onAir->entry.PLID)) {
        const MlvPlaylistDetail fresh = m_parts.list.detail(m_onAir->entry.PLID);
        if (!fresh.FID.isEmpty()) {
            m_onAir->entry = fresh;
            m_planned.reset();
        }
    } else if (m_onAir) {
        // What is not in the list any more decides nothing there.
        m_onAir->entry.Aktion = kAktionMix;
    }
    if (!m_go && left >= kSettledMs) {
        dropReady();
    }
    advance();
}

// -- Turn by turn --

void AirSequence::advance()
{
    followMix();
    followEnd();
    countPlay();
    followReady();
    prepare();
    go();
    plan();
    tell();
}

void AirSequence::followMix()
{
    if (!m_ready) {
        return;
    }
    const DeckReport report = m_decks.otherReport();
    if (report.load != m_ready->load || !hasBegun(report)) {
        return;
    }
    if (m_wantsSound) {
        changeOver();
    } else {
        // It began while it was being stopped.
        m_decks.stopOther();
        m_ready.reset();
    }
}

void AirSequence::changeOver()
{
    const bool hadFormer = m_onAir.has_value();
    const bool wasCounted = hadFormer && m_onAir->isCounted;
    tellBroken();
    m_decks.swap();
    m_onAir = std::move(m_ready);
    m_ready.reset();
    m_planned.reset();
    m_go.reset();
    m_paused.reset();
    m_search.forgetFaults();
    m_search.startOver();
    if (m_onAir->isFromList) {
        m_search.standBehind(m_onAir->entry.PLID);
    }
    if (hadFormer) {
        for (const MlvPlaylistDetail& jingle : m_onAir->jingles) {
            (void)m_parts.jingles.play(jingle);
        }
    }
    m_onAir->jingles.clear();
    m_onAir->fromMs.reset();
    m_onAir->isCounted = m_onAir->isCounted || (m_onAir->isRepeat && wasCounted);
    m_parts.list.keepAhead(kKeptAhead);
}

void AirSequence::tellBroken()
{
    if (m_onAir) {
        const DeckReport report = m_decks.presentReport();
        if (report.load == m_onAir->load && report.fault != PlayFault::None) {
            m_parts.leftOut(m_onAir->entry, AirFault::Damaged);
        }
    }
}

void AirSequence::followEnd()
{
    if (!m_onAir) {
        return;
    }
    const DeckReport report = m_decks.presentReport();
    if (report.load != m_onAir->load || !isOver(report)) {
        return;
    }
    tellBroken();
    m_wantsSound = goesOn() || m_go;
    m_onAir.reset();
    m_planned.reset();
}

void AirSequence::countPlay()
{
    if (!m_onAir || m_onAir->isCounted) {
        return;
    }
    const DeckReport report = m_decks.presentReport();
    const double from = startMs(m_onAir->entry);
    const double half = (report.toMs - from) / 2;
    if (report.load == m_onAir->load && half > 0 && report.positionMs - from >= half) {
        m_onAir->isCounted = true;
        m_parts.played(playing());
    }
}

void AirSequence::followReady()
{
    if (!m_ready) {
        return;
    }
    const DeckReport report = m_decks.otherReport();
    if (report.load == m_ready->load && report.state == DeckState::Failed) {
        const AirEntry failed = std::move(*m_ready);
        m_ready.reset();
        m_planned.reset();
        giveUp(failed, AirFault::Damaged);
    }
}

void AirSequence::giveUp(const AirEntry& failed, AirFault fault)
{
    if (failed.fromMs) {
        m_paused.reset();
    }
    if (failed.isRepeat) {
        m_search.tellFault(failed.entry, fault);
        if (m_onAir) {
            // It cannot be repeated any more: the list goes on.
            m_onAir->entry.Aktion = kAktionMix;
            m_onAir->loops.reset();
        }
    } else if (failed.isFound) {
        m_search.passOver(failed, fault);
    } else {
        m_parts.leftOut(failed.entry, fault);
        if (m_onAir) {
            m_go.reset(); // what plays is better than a hasty leap to something else
        }
    }
}

void AirSequence::prepare()
{
    const bool isDeckBusy = m_decks.otherReport().state == DeckState::Playing;
    if (isDeckBusy && !(m_go && (m_paused || m_wanted))) {
        return; // it fades away with the mix before
    }
    if (m_ready) {
        return;
    }
    if (m_paused) {
        put(*m_paused);
    } else if (m_wanted) {
        put(*std::exchange(m_wanted, std::nullopt));
    } else {
        prepareFromList();
    }
}

void AirSequence::prepareFromList()
{
    if (isLoop() && !m_go) {
        AirEntry repeat = *m_onAir;
        repeat.isRepeat = true;
        put(std::move(repeat));
    } else if (auto found = m_search.turn()) {
        put(std::move(*found));
    }
}

void AirSequence::put(AirEntry candidate)
{
    m_decks.load(candidate, fadeInOf(candidate));
    if (m_wantsSound && !m_onAir) {
        m_decks.startOther(); // without waiting for the next turn
    }
    m_planned.reset();
    m_ready = std::move(candidate);
}

FadeStyle AirSequence::fadeInOf(const AirEntry& candidate) const
{
    if (!m_onAir || candidate.isRepeat) {
        return plainFade(0);
    }
    const AirSettings settings = m_parts.settings();
    if (m_go && !m_go->isMix) {
        return plainFade(settings.fadeIn);
    }
    const int ms = mixLength(m_onAir->entry, candidate.entry, settings);
    return m_go ? plainFade(ms) : mixFade(candidate.entry.mixInStyle, ms);
}

/// Begins what shall begin now, as soon as it is ready: until then the present one plays.
void AirSequence::go()
{
    if (!m_ready || !m_wantsSound) {
        return;
    }
    const DeckReport report = m_decks.otherReport();
    if (report.load != m_ready->load || report.state != DeckState::Ready) {
        return;
    }
    if (!m_onAir) {
        m_decks.startOther();
    } else if (m_go && !m_go->isTaken) {
        m_go->isTaken = true;
        m_decks.goOver(*m_onAir, m_go->isMix ? mixFade(m_onAir->entry.mixOutStyle, m_go->ms)
                                             : plainFade(m_go->ms));
    }
}

/// Has the engine know where the next one begins.
void AirSequence::plan()
{
    if (!m_onAir || !m_ready || m_go) {
        return;
    }
    if (!goesOn()) {
        if (m_planned || m_decks.otherReport().startsLater) {
            m_decks.planNone(*m_onAir);
            m_planned.reset();
        }
        return;
    }
    const int ms =
        m_ready->isRepeat ? 0 : mixLength(m_onAir->entry, m_ready->entry, m_parts.settings());
    if (m_planned != ms) {
        m_planned = ms;
        m_decks.planMix(*m_onAir, mixFade(m_onAir->entry.mixOutStyle, ms));
    }
}

// -- To be seen --

MlvPlaylistDetail AirSequence::playing() const
{
    MlvPlaylistDetail entry = m_onAir ? m_onAir->entry : MlvPlaylistDetail();
    entry.Pitch = m_onAir ? m_onAir->pitch.value_or(entry.Pitch) : entry.Pitch;
    return entry;
}

double AirSequence::positionMs() const
{
    if (m_paused) {
        return m_paused->fromMs.value_or(0);
    }
    return m_onAir ? m_decks.presentReport().positionMs : 0;
}

MlvPlaylistDetail AirSequence::ready() const
{
    return m_ready ? m_ready->entry : MlvPlaylistDetail();
}

/// What comes before all that the list says; nothing for none.
const AirEntry* AirSequence::waiting() const
{
    for (const auto* const one : {&m_paused, &m_ready, &m_wanted}) {
        if (*one) {
            return &**one;
        }
    }
    return nullptr;
}

MlvPlaylistDetail AirSequence::upcoming() const
{
    if (const AirEntry* const one = waiting()) {
        return one->entry;
    }
    const Plid number = nextNumber();
    return number == Plid{} ? MlvPlaylistDetail() : m_parts.list.detail(number);
}

Plid AirSequence::nextNumber() const
{
    if (const AirEntry* const one = waiting()) {
        return one->entry.PLID;
    }
    return isLoop() ? m_onAir->entry.PLID : m_search.first();
}

void AirSequence::tell()
{
    const std::pair now(m_onAir ? m_onAir->entry.PLID : Plid{}, nextNumber());
    if (now != m_told) {
        m_told = now;
        m_parts.told(now.first, now.second);
    }
}

} // namespace melovane
