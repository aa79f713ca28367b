#include "player/air_sequence.h"

#include "player/playing_list.h"

#include <algorithm>

namespace melovane {

namespace {

/// Entries that are looked at in one turn: the whole list of a night within two seconds.
constexpr int kTriesPerTurn = 20;
/// About a second.
constexpr int kRestTurns = 20;
/// What is left of the present entry in front of its mix when an edit comes too late for the next.
constexpr int kSettledMs = 1500;
/// Entries whose values stay known while the database is away.
constexpr int kKeptAhead = 8;

constexpr std::array kJingleDecks = {AirDeck::Jingle1, AirDeck::Jingle2, AirDeck::Jingle3,
                                     AirDeck::Jingle4, AirDeck::Jingle5};

bool isJingle(const MlvPlaylistDetail& entry)
{
    return entry.Aktion == kAktionJinglePlay || entry.Aktion == kAktionJingle1 ||
           entry.Aktion == kAktionJingle2;
}

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

FadeStyle mixFade(const MLVMixStyle& style, int ms)
{
    FadeStyle fade;
    fade.style = style;
    fade.ms = ms;
    return fade;
}

} // namespace

AirSequence::AirSequence(Parts parts)
    : m_parts(std::move(parts))
{}

AirDeck AirSequence::otherDeck() const
{
    return m_deck == AirDeck::A ? AirDeck::B : AirDeck::A;
}

bool AirSequence::isLoop() const
{
    return m_onAir && m_onAir->entry.Aktion == kAktionLoop;
}

/// Something follows the present entry by itself.
bool AirSequence::goesOn() const
{
    return m_onAir && m_isMixMode && m_onAir->entry.Aktion != kAktionStop;
}

EntrySound AirSequence::soundOf(const Loaded& loaded, const FadeStyle& fadeOut) const
{
    EntrySound sound = entryToSound(loaded.entry, m_parts.settings());
    const bool isPlain = !m_onAir || m_go;
    sound.fadeIn =
        isPlain ? plainFade(loaded.fadeInMs) : mixFade(loaded.entry.mixInStyle, loaded.fadeInMs);
    sound.fadeOut = fadeOut;
    return sound;
}

// -- Asked for --

void AirSequence::play()
{
    if (m_wantsSound) {
        return;
    }
    m_wantsSound = true;
    m_restTurns = 0;
    m_go = Go();
    if (m_ready) {
        // It was loaded for a mix.
        want(*m_ready, 0);
    }
    advance();
}

void AirSequence::stop()
{
    advance();
    const AirSettings settings = m_parts.settings();
    m_wantsSound = false;
    m_go.reset();
    m_planned.reset();
    m_parts.engine.cancelStart(otherDeck());
    for (const AirDeck deck : {AirDeck::A, AirDeck::B}) {
        if (m_parts.engine.report(deck).state == DeckState::Playing) {
            m_parts.engine.fadeOut(deck, settings.fadeOut);
        }
    }
    m_onAir.reset();
    tell();
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
        m_parts.engine.stop(otherDeck());
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

std::optional<AirSequence::Loaded> AirSequence::loadedOf(const QString& fid)
{
    Loaded loaded;
    if (const auto entry = m_parts.list.entryOf(fid)) {
        loaded.entry = m_parts.list.detail(entry->PLID);
    } else {
        loaded.entry = m_parts.list.track(fid);
        loaded.isFromList = false;
    }
    if (loaded.entry.FID.isEmpty() || loaded.entry.file.isEmpty()) {
        loaded.entry.FID = fid;
        m_parts.leftOut(loaded.entry, AirFault::Missing);
        return std::nullopt;
    }
    return loaded;
}

void AirSequence::playNow(const QString& fid)
{
    if (const auto loaded = loadedOf(fid)) {
        m_wantsSound = true;
        want(*loaded, m_parts.settings().fadeOut);
        advance();
    }
}

void AirSequence::playEntry(Plid entry)
{
    Loaded loaded;
    loaded.entry = m_parts.list.detail(entry);
    if (loaded.entry.file.isEmpty()) {
        m_parts.leftOut(loaded.entry, AirFault::Missing);
        return;
    }
    m_wantsSound = true;
    want(loaded, m_parts.settings().fadeOut);
    advance();
}

void AirSequence::playNext(const QString& fid)
{
    auto loaded = loadedOf(fid);
    if (!loaded || m_go) {
        return;
    }
    loaded->isFromList = false;
    dropReady();
    m_wanted = loaded;
    advance();
}

void AirSequence::setMixMode(bool isOn)
{
    m_isMixMode = isOn;
    advance();
}

bool AirSequence::resume(Plid entry, const QString& fid, double positionMs)
{
    Loaded loaded;
    m_parts.list.goTo(entry);
    loaded.entry = m_parts.list.detail(entry);
    if (loaded.entry.FID.isEmpty()) {
        loaded.entry = m_parts.list.track(fid);
        loaded.isFromList = false;
    }
    if (loaded.entry.file.isEmpty()) {
        return false;
    }
    // Heard so far ahead, it is as good as played: a crash counts no play twice.
    loaded.isCounted =
        lengthOf(loaded.entry) > 0 &&
        positionMs - loaded.entry.FrameStart * kFrameMs >= lengthOf(loaded.entry) / 2;
    m_wantsSound = true;
    want(loaded, 0);
    m_from = positionMs;
    advance();
    return true;
}

void AirSequence::standAt(Plid entry)
{
    if (m_parts.list.holds(entry)) {
        dropReady();
        m_parts.list.goTo(entry);
        m_isFresh = true;
        advance();
    }
}

void AirSequence::standBehind(Plid entry)
{
    if (m_parts.list.holds(entry)) {
        dropReady();
        m_parts.list.goTo(entry);
        m_isFresh = false;
        advance();
    }
}

/// The next one is this, and it begins as soon as it can.
void AirSequence::want(Loaded wanted, int fadeMs)
{
    wanted.isRepeat = false;
    dropReady();
    m_wanted = std::move(wanted);
    m_go = Go{m_onAir ? fadeMs : 0};
    m_from.reset();
}

void AirSequence::dropReady()
{
    if (m_ready) {
        m_parts.engine.unload(otherDeck());
        if (!m_wanted && !m_ready->isFromList && !m_ready->isRepeat) {
            m_wanted = m_ready;
        }
    }
    m_ready.reset();
    m_planned.reset();
    m_jingles.clear();
    m_places = 0;
    m_restTurns = 0;
    m_takesJingles = false;
}

void AirSequence::listChanged()
{
    if (!m_parts.list.refresh()) {
        return;
    }
    m_parts.list.keepAhead(kKeptAhead);
    m_failed.clear();
    m_restTurns = 0;
    const double left = m_onAir ? m_parts.engine.report(m_deck).remainingMs - mixMs() : kSettledMs;
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
    const DeckReport report = m_parts.engine.report(otherDeck());
    if (report.load != m_ready->load || !hasBegun(report)) {
        return;
    }
    if (m_wantsSound) {
        changeOver();
    } else {
        // It began while it was being stopped.
        m_parts.engine.stop(otherDeck());
        m_ready.reset();
    }
}

void AirSequence::changeOver()
{
    const bool hadFormer = m_onAir.has_value();
    const bool wasCounted = hadFormer && m_onAir->isCounted;
    tellBroken();
    m_deck = otherDeck();
    m_onAir = std::move(m_ready);
    m_ready.reset();
    m_planned.reset();
    m_go.reset();
    m_failed.clear();
    m_places = 0;
    m_restTurns = 0;
    m_takesJingles = false;
    if (m_onAir->isFromList) {
        m_parts.list.goTo(m_onAir->entry.PLID);
        m_isFresh = false;
    }
    if (hadFormer) {
        soundJingles(m_onAir->jingles);
    }
    m_onAir->jingles.clear();
    m_onAir->isCounted = m_onAir->isCounted || (m_onAir->isRepeat && wasCounted);
    m_parts.list.keepAhead(kKeptAhead);
}

void AirSequence::tellBroken()
{
    if (m_onAir) {
        const DeckReport report = m_parts.engine.report(m_deck);
        if (report.load == m_onAir->load && report.fault != PlayFault::None) {
            m_parts.leftOut(m_onAir->entry, AirFault::Damaged);
        }
    }
}

void AirSequence::soundJingles(const std::vector<MlvPlaylistDetail>& jingles)
{
    for (const MlvPlaylistDetail& jingle : jingles) {
        const AirDeck deck = kJingleDecks[size_t(m_nextJingle)];
        m_nextJingle = (m_nextJingle + 1) % int(kJingleDecks.size());
        m_parts.engine.load(deck, entryToSound(jingle, m_parts.settings()));
        m_parts.engine.startNow(deck);
    }
}

void AirSequence::followEnd()
{
    if (!m_onAir) {
        return;
    }
    const DeckReport report = m_parts.engine.report(m_deck);
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
    const DeckReport report = m_parts.engine.report(m_deck);
    const double half = (report.toMs - report.fromMs) / 2;
    if (report.load == m_onAir->load && half > 0 && report.positionMs - report.fromMs >= half) {
        m_onAir->isCounted = true;
        m_parts.played(m_onAir->entry);
    }
}

void AirSequence::followReady()
{
    if (!m_ready) {
        return;
    }
    const DeckReport report = m_parts.engine.report(otherDeck());
    if (report.load == m_ready->load && report.state == DeckState::Failed) {
        const Loaded failed = std::move(*m_ready);
        m_ready.reset();
        m_planned.reset();
        giveUp(failed, AirFault::Damaged);
    }
}

/// The search goes on behind it; its jingles sound with the one that is found.
void AirSequence::giveUp(const Loaded& loaded, AirFault fault)
{
    m_jingles = loaded.jingles;
    if (loaded.isFromList && !loaded.isRepeat) {
        ++m_places;
    }
    if (m_failed.insert(loaded.entry.PLID).second || !loaded.isFromList) {
        m_parts.leftOut(loaded.entry, fault);
    }
    if (loaded.isRepeat && m_onAir) {
        // It cannot be repeated any more: the list goes on.
        m_onAir->entry.Aktion = kAktionMix;
    }
}

void AirSequence::prepare()
{
    const bool isDeckBusy = m_parts.engine.report(otherDeck()).state == DeckState::Playing;
    if (isDeckBusy && !(m_wanted && m_go)) {
        return; // it fades away with the mix before
    }
    if (m_wanted) {
        Loaded wanted = std::move(*m_wanted);
        m_wanted.reset();
        put(std::move(wanted));
        return;
    }
    if (m_restTurns > 0) {
        --m_restTurns;
        return;
    }
    for (int tries = 0; !m_ready && m_restTurns == 0 && tries < kTriesPerTurn; ++tries) {
        if (!prepareFromList()) {
            return;
        }
    }
}

/// Looks at one entry. False when there is none.
bool AirSequence::prepareFromList()
{
    if (isLoop() && !m_go) {
        Loaded repeat = *m_onAir;
        repeat.isRepeat = true;
        put(std::move(repeat));
        return true;
    }
    const int count = m_parts.list.count();
    if (m_places >= count) {
        lookedThrough();
        return false;
    }
    const auto field = m_parts.list.ahead((m_isFresh ? 0 : 1) + m_places);
    Loaded candidate;
    candidate.entry = m_parts.list.detail(field->PLID);
    candidate.jingles = m_jingles;
    if (candidate.entry.FID.isEmpty() || candidate.entry.file.isEmpty()) {
        candidate.entry.PLID = field->PLID;
        candidate.entry.FID = field->FID;
        giveUp(candidate, AirFault::Missing);
    } else if (isJingle(candidate.entry) && !m_takesJingles) {
        m_jingles.push_back(candidate.entry);
        ++m_places;
    } else {
        put(std::move(candidate));
    }
    return true;
}

/// Nothing but jingles are better than silence; with nothing at all the list is looked through
/// again a little later, for a drive may have come back.
void AirSequence::lookedThrough()
{
    m_places = 0;
    if (!m_jingles.empty() && !m_takesJingles) {
        m_takesJingles = true;
    } else {
        m_takesJingles = false;
        m_restTurns = kRestTurns;
    }
    m_jingles.clear();
}

void AirSequence::put(Loaded candidate)
{
    const AirSettings settings = m_parts.settings();
    if (m_go && !m_go->isMix) {
        candidate.fadeInMs = m_onAir ? settings.fadeIn : 0;
    } else if (m_onAir && !candidate.isRepeat) {
        candidate.fadeInMs = mixLength(m_onAir->entry, candidate.entry, settings);
    } else {
        candidate.fadeInMs = 0;
    }
    EntrySound sound = soundOf(candidate, plainFade(0));
    if (m_from) {
        sound.frameStart = std::max(0, int(*m_from / kFrameMs));
        m_from.reset();
    }
    candidate.load = m_parts.engine.load(otherDeck(), sound);
    m_jingles.clear();
    m_planned.reset();
    m_ready = std::move(candidate);
}

/// Begins what shall begin now, as soon as it is ready: until then the present one plays.
void AirSequence::go()
{
    if (!m_ready || !m_wantsSound) {
        return;
    }
    const AirDeck deck = otherDeck();
    const DeckReport report = m_parts.engine.report(deck);
    if (report.load != m_ready->load || report.state != DeckState::Ready) {
        return;
    }
    if (!m_onAir) {
        m_parts.engine.startNow(deck);
        return;
    }
    if (!m_go || m_go->isTaken) {
        return;
    }
    m_go->isTaken = true;
    const DeckReport former = m_parts.engine.report(m_deck);
    const FadeStyle fade =
        m_go->isMix ? mixFade(m_onAir->entry.mixOutStyle, m_go->ms) : plainFade(m_go->ms);
    EntrySound ending = soundOf(*m_onAir, fade);
    const int end = int((former.positionMs + m_go->ms) / kFrameMs) + 1;
    if (former.remainingMs > m_go->ms && end > ending.frameStart) {
        ending.frameStop = end;
    }
    m_parts.engine.update(m_deck, ending);
    m_parts.engine.startNow(deck);
}

/// Has the engine know where the next one begins.
void AirSequence::plan()
{
    if (!m_onAir || !m_ready || m_go) {
        return;
    }
    if (!goesOn()) {
        if (m_planned || m_parts.engine.report(otherDeck()).startsLater) {
            m_parts.engine.cancelStart(otherDeck());
            m_parts.engine.update(m_deck, soundOf(*m_onAir, plainFade(0)));
            m_planned.reset();
        }
        return;
    }
    const int ms =
        m_ready->isRepeat ? 0 : mixLength(m_onAir->entry, m_ready->entry, m_parts.settings());
    if (m_planned == ms) {
        return;
    }
    m_planned = ms;
    m_parts.engine.update(m_deck, soundOf(*m_onAir, mixFade(m_onAir->entry.mixOutStyle, ms)));
    m_parts.engine.startBeforeEnd(otherDeck(), m_deck, ms);
}

// -- To be seen --

MlvPlaylistDetail AirSequence::playing() const
{
    return m_onAir ? m_onAir->entry : MlvPlaylistDetail();
}

MlvPlaylistDetail AirSequence::ready() const
{
    return m_ready ? m_ready->entry : MlvPlaylistDetail();
}

MlvPlaylistDetail AirSequence::upcoming() const
{
    if (m_ready || m_wanted) {
        return m_ready ? m_ready->entry : m_wanted->entry;
    }
    const Plid number = nextNumber();
    return number == Plid{} ? MlvPlaylistDetail() : m_parts.list.detail(number);
}

Plid AirSequence::nextNumber() const
{
    if (m_ready || m_wanted) {
        return m_ready ? m_ready->entry.PLID : m_wanted->entry.PLID;
    }
    if (isLoop()) {
        return m_onAir->entry.PLID;
    }
    const auto field = m_parts.list.ahead(m_isFresh ? 0 : 1);
    return field ? field->PLID : Plid{};
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
