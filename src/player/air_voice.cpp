#include "player/air_voice.h"

#include <algorithm>
#include <cmath>

namespace melovane {

namespace {

/// Frames over which a volume goes to another one.
constexpr int kGainFrames = kAirRate / 50;

/// Part of a sample by which a deck that comes back to its own speed moves on, frame by frame,
/// until it stands on a sample again.
constexpr double kSettle = 1e-3;

/// A deck that ran dry goes on with so many samples in stock, or it would stutter.
constexpr double kStock = kAirRate / 10.0;

double loudest(Stereo frame)
{
    return std::max(std::abs(frame.left), std::abs(frame.right));
}

} // namespace

AirVoice::AirVoice(VoiceLink& link, const SincTables& tables)
    : m_link(link)
    , m_tables(tables)
    , m_patch(0)
{}

void AirVoice::begin(bool isSilent)
{
    while (const auto command = m_link.commands.take()) {
        obey(*command);
    }
    if (!m_owns && m_link.owner.load(std::memory_order_acquire) == VoiceLink::Owner::Mix) {
        adopt();
    }
    m_loudest = 0;
    if (m_owns) {
        answerRecall(isSilent);
    }
    if (m_owns) {
        takeEnd();
        const qint64 decoded = m_link.ring.end() - SincTable::kAhead - 1;
        m_there = static_cast<double>(std::min(decoded, m_end));
    }
}

void AirVoice::obey(const VoiceCommand& command)
{
    if (command.kind == VoiceCommand::Kind::Start) {
        m_rule = command.start;
        m_ruleLoad = command.load;
        return;
    }
    const bool isShape = command.kind == VoiceCommand::Kind::Shape;
    if (isShape && (command.load != m_load || m_state == State::Seeking)) {
        m_early = command;
    } else if (command.load != m_load) {
        m_rule = {};
    } else if (isShape) {
        reshape(command.shape, command.frames);
    } else {
        fade(command.frames);
    }
}

void AirVoice::adopt()
{
    const VoicePlan& plan = m_link.plan;
    const bool goesOn = m_state == State::Seeking && plan.load == m_load && !m_closing;
    if (plan.load != m_load) {
        m_startedAt = -1;
        m_underruns = 0;
    }
    m_owns = true;
    m_load = plan.load;
    const VoiceShape& shape = m_early.load == m_load ? m_early.shape : plan.shape;
    m_place = static_cast<double>(plan.from);
    m_end = m_link.end.load(std::memory_order_acquire);
    m_rate = static_cast<double>(plan.sampleRate) / kAirRate;
    m_fadeIn = plan.fadeIn;
    m_fadeOut = shape.fadeOut;
    m_gain = Glide(shape.gain);
    m_pitch = Glide(shape.pitch);
    m_gate = Glide(1);
    m_patch = Glide(0);
    m_equaliser.reset(shape.bands);
    m_played = 0;
    m_closing = false;
    m_recalled = false;
    m_early.load = 0;
    m_enough = 1;
    m_starves = false;
    m_between = step() == 1 ? 0 : kEdge;
    m_state = goesOn ? State::Playing : State::Ready;
}

/// The ring is the feeder's again.
void AirVoice::giveBack(State state)
{
    m_state = state;
    m_owns = false;
    m_link.owner.store(VoiceLink::Owner::Feeder, std::memory_order_release);
}

void AirVoice::answerRecall(bool isSilent)
{
    const VoiceLink::Recall recall = m_link.recall.load(std::memory_order_acquire);
    if (recall == VoiceLink::Recall::None) {
        return;
    }
    const bool seeks = recall == VoiceLink::Recall::Seek;
    // One that ran dry is silent already, and gets nothing more until it lets go.
    if (m_state == State::Playing && !isSilent && !m_starves) {
        if (!m_recalled) {
            m_gate.to(0, kEdge);
            m_recalled = true;
        }
        if (!m_gate.arrived()) {
            return;
        }
    }
    if (seeks && m_state == State::Playing && !m_closing) {
        giveBack(State::Seeking);
    } else {
        giveBack(seeks ? State::Ended : State::Idle);
    }
}

/// The end may have come nearer because the entry was edited or the file breaks off. What is heard
/// right now is not cut.
void AirVoice::takeEnd()
{
    const qint64 end = m_link.end.load(std::memory_order_acquire);
    if (end == m_end) {
        return;
    }
    if (m_state != State::Playing) {
        m_end = end;
        return;
    }
    const double before = m_fadeOut.gain(remaining());
    const auto soonest = static_cast<qint64>(m_place + (kEdge + 4) * step());
    if (end < soonest && m_end > end) {
        m_end = std::min(m_end, soonest);
        m_fadeOut = {};
        fade(kEdge);
    } else {
        m_end = end;
    }
    m_patch = Glide(m_patch.value() + before - m_fadeOut.gain(remaining()));
    m_patch.to(0, kEdge);
}

void AirVoice::reshape(const VoiceShape& shape, int pitchFrames)
{
    const double before = m_fadeOut.gain(remaining());
    m_fadeOut = shape.fadeOut;
    m_equaliser.setTarget(shape.bands);
    if (m_state != State::Playing) {
        m_equaliser.reset(shape.bands);
        m_gain = Glide(shape.gain);
        m_pitch = Glide(shape.pitch);
        m_between = step() == 1 ? 0 : kEdge;
        return;
    }
    m_gain.to(shape.gain, kGainFrames);
    if (shape.pitch != m_pitch.target()) {
        // A speed that leaps bends the sound, and a bend is heard.
        m_pitch.to(shape.pitch, std::max(pitchFrames, kEdge));
    }
    m_patch = Glide(m_patch.value() + before - m_fadeOut.gain(remaining()));
    m_patch.to(0, kEdge);
}

void AirVoice::fade(int frames)
{
    if (m_state == State::Ready) {
        m_rule = {};
    } else if (m_state == State::Playing || m_state == State::Seeking) {
        m_gate.to(0, std::max(frames, kEdge));
        m_closing = true;
    }
}

bool AirVoice::waits() const
{
    return m_state == State::Ready && m_ruleLoad == m_load && m_rule.when != StartRule::When::Never;
}

bool AirVoice::isComing() const
{
    const bool willBeLoaded = m_ruleLoad > m_load && m_rule.when != StartRule::When::Never &&
                              m_link.failed.load(std::memory_order_acquire) != m_ruleLoad;
    return m_state == State::Seeking || waits() || willBeLoaded;
}

void AirVoice::start(qint64 frame)
{
    m_rule = {};
    m_startedAt = frame;
    m_state = State::Playing;
}

double AirVoice::step() const
{
    return m_rate * m_pitch.value();
}

double AirVoice::remaining() const
{
    return std::max(0.0, (static_cast<double>(m_end) - m_place) / step());
}

Stereo AirVoice::next()
{
    if (m_state != State::Playing) {
        return {};
    }
    if (m_place >= static_cast<double>(m_end)) {
        giveBack(State::Ended);
        return {};
    }
    if (m_gate.target() == 0 && m_gate.arrived()) {
        if (m_closing) {
            giveBack(State::Ended);
        }
        return {};
    }
    if (isStarving()) {
        return {};
    }
    const Stereo heard = m_equaliser.process(read());
    const double curves = m_fadeIn.gain(m_played) *
                          std::clamp(m_fadeOut.gain(remaining()) + m_patch.next(), 0.0, 1.0);
    const double gain = m_gain.next() * m_gate.next() * curves * enough();
    const Stereo out = {heard.left * gain, heard.right * gain};
    m_loudest = std::max(m_loudest, loudest(out));
    m_played += 1;
    advance();
    return out;
}

bool AirVoice::isStarving()
{
    const double stock = m_there - m_place;
    const bool isWhole = m_there >= static_cast<double>(m_end);
    if (stock > 0 && (!m_starves || isWhole || stock > kStock)) {
        m_starves = false;
        return false;
    }
    m_underruns += m_starves ? 0 : 1;
    m_starves = true;
    m_enough = 0;
    return true;
}

/// Falls where the stock runs out, rises where it is back: neither clicks.
double AirVoice::enough()
{
    const double left = (m_there - m_place) / (step() * kEdge);
    const bool isWhole = m_there >= static_cast<double>(m_end);
    m_enough = std::min(isWhole ? 1.0 : std::min(left, 1.0), m_enough + 1.0 / kEdge);
    return m_enough == 1 ? 1 : smoothRise(m_enough);
}

Stereo AirVoice::read() const
{
    const auto whole = static_cast<qint64>(m_place);
    const double between = double(m_between) / kEdge;
    Stereo sum;
    if (m_between < kEdge) {
        const StereoFrame frame = m_link.ring.at(whole);
        sum = {(1 - between) * (frame.left / kSampleScale),
               (1 - between) * (frame.right / kSampleScale)};
    }
    if (m_between > 0) {
        const Stereo sound = m_tables.forStep(step()).at(m_link.ring, m_place);
        sum.left += between * sound.left;
        sum.right += between * sound.right;
    }
    return sum;
}

/// At the file's own speed samples are copied. So a deck that leaves it goes over to reading
/// between them first, and one that comes back stands on a sample before it goes over.
void AirVoice::advance()
{
    const double wanted = step();
    const double whole = std::floor(m_place);
    if (wanted != 1 && m_between < kEdge) {
        ++m_between;
        m_place += 1;
        return;
    }
    (void)m_pitch.next();
    if (wanted != 1) {
        m_place += wanted;
    } else if (m_place != whole) {
        const double rest = whole + 1 - m_place;
        m_place = rest <= kSettle ? whole + 2 : m_place + 1 + kSettle;
    } else {
        m_between -= m_between > 0 ? 1 : 0;
        m_place += 1;
    }
}

DeckState AirVoice::told() const
{
    switch (m_state) {
    case State::Idle:
        return DeckState::Empty;
    case State::Ready:
        return DeckState::Ready;
    case State::Playing:
    case State::Seeking:
        return DeckState::Playing;
    case State::Ended:
        return DeckState::Ended;
    }
    return DeckState::Empty;
}

void AirVoice::end()
{
    if (m_owns) {
        m_link.ring.release(static_cast<qint64>(m_place) - SincTable::kAhead);
    }
    m_link.position.store(m_place, std::memory_order_relaxed);
    m_link.remaining.store(m_owns ? remaining() : 0, std::memory_order_relaxed);
    m_link.startsLater.store(isComing(), std::memory_order_relaxed);
    m_link.fadesAway.store(m_state == State::Playing && m_closing, std::memory_order_relaxed);
    m_link.startedAt.store(m_startedAt, std::memory_order_relaxed);
    m_link.level.store(static_cast<int>(std::min(m_loudest * kSampleScale, kSampleScale - 1)),
                       std::memory_order_relaxed);
    m_link.underruns.store(m_underruns, std::memory_order_relaxed);
    m_link.state.store(told(), std::memory_order_relaxed);
    m_link.load.store(m_load, std::memory_order_release);
}

} // namespace melovane
