#include "player/deck_feeder.h"

#include "player/loudness.h"
#include "player/sinc_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace melovane {

namespace {

/// Samples of one channel to an MPEG frame of a list, at kAirRate.
constexpr qint64 kFrameSamples = 1152;

/// Beyond it nothing is music any more, and the tables of the resampler end.
constexpr int kMaxPitch = 5000;

/// Read behind the end, so that the last sample can be read between.
constexpr qint64 kBehind = SincTable::kAhead + 1;

/// Decoded a beat: five milliseconds of work, and a hundred times what is heard meanwhile.
constexpr qint64 kBeatFrames = qint64{2} * kAirRate;

constexpr size_t kChunk = 4096;

qint64 sampleOfFrame(int frame, int rate)
{
    return qint64{frame} * kFrameSamples * rate / kAirRate;
}

} // namespace

VoiceShape shapeOf(const EntrySound& sound)
{
    VoiceShape shape;
    shape.gain = std::clamp(sound.volume, 0, kUnchangedVolume) / double(kUnchangedVolume) *
                 loudnessGain(sound.normalize, sound.normalizeTuning);
    shape.pitch = 1 + std::clamp(sound.pitch, -kMaxPitch, kMaxPitch) / 10000.0;
    shape.fadeOut = FadeCurve::out(sound.fadeOut, sound.exactEdges);
    shape.bands = bandGains(sound.eq);
    return shape;
}

DeckFeeder::DeckFeeder(VoiceLink& link, SoundStreamMaker makeStream)
    : m_link(link)
    , m_makeStream(std::move(makeStream))
{}

void DeckFeeder::load(quint32 number, const EntrySound& sound)
{
    const std::scoped_lock lock(m_mutex);
    m_wish = {};
    m_wish.load.emplace(number, sound);
}

void DeckFeeder::unload()
{
    const std::scoped_lock lock(m_mutex);
    m_wish = {};
    m_wish.unload = true;
}

void DeckFeeder::seek(double ms, const EntrySound& now)
{
    const std::scoped_lock lock(m_mutex);
    m_wish.seek.emplace(ms, now);
}

void DeckFeeder::changeEnd(int frameStop)
{
    const std::scoped_lock lock(m_mutex);
    m_wish.frameStop = frameStop;
}

DeckFeeder::Result DeckFeeder::result() const
{
    const std::scoped_lock lock(m_mutex);
    return m_result;
}

void DeckFeeder::beat()
{
    Wish wish;
    {
        const std::scoped_lock lock(m_mutex);
        wish = std::exchange(m_wish, {});
    }
    if (wish.unload) {
        m_isWaiting = false;
        m_feeds = false;
        m_stream.reset();
        m_plan = {};
    }
    if (wish.load) {
        open(wish.load->first, wish.load->second);
    }
    if (wish.frameStop && m_stream) {
        setEnd(*wish.frameStop);
    }
    if (wish.seek && m_stream) {
        prepareSeek(wish.seek->first, wish.seek->second);
    }
    // An emptied deck wants its ring back, too, so that it falls silent.
    const bool isEmptied = !m_stream && m_link.owner.load() == VoiceLink::Owner::Mix;
    if (isEmptied) {
        (void)takesRing(VoiceLink::Recall::Reload);
    } else if (m_isWaiting &&
               takesRing(m_seeks ? VoiceLink::Recall::Seek : VoiceLink::Recall::Reload)) {
        prepare();
    } else if (m_feeds) {
        decode(m_next + kBeatFrames);
    }
}

void DeckFeeder::open(quint32 number, const EntrySound& sound)
{
    m_feeds = false;
    m_isWaiting = false;
    m_seeks = false;
    m_fault = PlayFault::None;
    m_sound = sound;
    m_plan = {};
    m_plan.load = number;
    m_stream = m_makeStream();
    const PlayFault fault = m_stream->open(sound.file);
    if (fault != PlayFault::None) {
        fail(fault);
        return;
    }
    m_plan.sampleRate = m_stream->format().sampleRate;
    m_plan.from = std::clamp<qint64>(sampleOfFrame(sound.frameStart, m_plan.sampleRate), 0,
                                     m_stream->length());
    m_plan.fadeIn = FadeCurve::in(sound.fadeIn, sound.exactEdges);
    m_plan.shape = shapeOf(sound);
    m_readable = m_stream->length();
    setEnd(sound.frameStop);
    m_isWaiting = true;
}

void DeckFeeder::setEnd(int frameStop)
{
    m_sound.frameStop = frameStop;
    const qint64 stop = sampleOfFrame(frameStop, m_plan.sampleRate);
    const qint64 start = sampleOfFrame(m_sound.frameStart, m_plan.sampleRate);
    m_end = stop > start ? std::min(stop, m_readable) : m_readable;
    if (m_feeds) {
        m_link.end.store(m_end, std::memory_order_release);
        publish(true);
    }
}

void DeckFeeder::prepareSeek(double ms, const EntrySound& now)
{
    const qint64 first = std::clamp<qint64>(sampleOfFrame(m_sound.frameStart, m_plan.sampleRate), 0,
                                            m_stream->length());
    m_seeks = m_seeks || !m_isWaiting;
    m_isWaiting = true;
    m_plan.from = std::clamp(sampleAt(ms), std::min(first, m_end), m_end);
    m_plan.shape = shapeOf(now);
    m_plan.fadeIn = FadeCurve::in({}, false);
}

/// True when the ring may be filled anew. Else the mix was asked for it.
bool DeckFeeder::takesRing(VoiceLink::Recall why)
{
    if (m_link.owner.load(std::memory_order_acquire) == VoiceLink::Owner::Feeder) {
        m_link.recall.store(VoiceLink::Recall::None, std::memory_order_release);
        return true;
    }
    m_link.recall.store(why, std::memory_order_release);
    return false;
}

void DeckFeeder::prepare()
{
    m_isWaiting = false;
    m_feeds = false;
    m_isOver = false;
    m_link.ring.reset(m_plan.from);
    m_next = m_plan.from;
    m_readable = m_stream->length();
    setEnd(m_sound.frameStop);
    if (!m_stream->seek(m_plan.from)) {
        m_fault = PlayFault::Broken;
        endHere();
    } else {
        decode(m_next + qint64{m_plan.sampleRate} * kReadyMs / 1000);
    }
    if (m_end <= m_plan.from && !m_seeks) {
        fail(m_fault == PlayFault::None ? PlayFault::NoAudio : m_fault);
        return;
    }
    m_feeds = true;
    m_seeks = false;
    m_link.end.store(m_end, std::memory_order_relaxed);
    m_link.plan = m_plan;
    m_link.owner.store(VoiceLink::Owner::Mix, std::memory_order_release);
    publish(true);
}

/// \param upTo sample before which it stops even when there is room for more
void DeckFeeder::decode(qint64 upTo)
{
    const auto channels = static_cast<size_t>(m_stream->format().channels);
    const qint64 ahead = qint64{m_plan.sampleRate} * kAheadMs / 1000;
    std::array<qint16, kChunk> samples; // NOLINT(cppcoreguidelines-pro-type-member-init): filled
    std::array<StereoFrame, kChunk> frames;
    while (!m_isOver && m_next < std::min(upTo, m_end + kBehind)) {
        const qint64 room = m_link.ring.space() - (FrameRing::kCapacity - ahead);
        if (room <= 0) {
            return;
        }
        const auto wanted = static_cast<size_t>(std::min<qint64>(
            {room, m_end + kBehind - m_next, upTo - m_next, qint64(kChunk / channels)}));
        const size_t got = m_stream->read(std::span(samples).first(wanted * channels)) / channels;
        for (size_t i = 0; i < got; ++i) {
            frames[i] = {samples[i * channels], samples[i * channels + channels - 1]};
        }
        m_link.ring.write(std::span(frames).first(got));
        m_next += static_cast<qint64>(got);
        if (got < wanted) {
            m_fault = m_stream->isBroken() || m_next < m_end ? PlayFault::Broken : m_fault;
            endHere();
        }
    }
}

/// The file holds no more.
void DeckFeeder::endHere()
{
    m_isOver = true;
    const std::array<StereoFrame, kBehind> silence = {};
    m_link.ring.write(silence);
    m_readable = m_next;
    m_end = std::min(m_end, m_readable);
    if (m_feeds) {
        m_link.end.store(m_end, std::memory_order_release);
        publish(true);
    }
}

void DeckFeeder::fail(PlayFault fault)
{
    m_fault = fault;
    m_stream.reset();
    m_feeds = false;
    m_isWaiting = false;
    publish(false);
    m_link.failed.store(m_plan.load, std::memory_order_release);
}

qint64 DeckFeeder::sampleAt(double ms) const
{
    const double sample = ms * m_plan.sampleRate / 1000.0;
    // Written so that a number that is none gives the beginning.
    return sample > 0 ? std::lround(std::min(sample, static_cast<double>(m_stream->length()))) : 0;
}

double DeckFeeder::msAt(qint64 sample) const
{
    return static_cast<double>(sample) * 1000.0 / m_plan.sampleRate;
}

void DeckFeeder::publish(bool isDecoded)
{
    const std::scoped_lock lock(m_mutex);
    m_result = {m_plan.load, m_fault, isDecoded, msAt(m_plan.from), msAt(m_end), m_plan.sampleRate};
}

} // namespace melovane
