#include "platform/linux/mp3_player.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace melovane::linux_media {

namespace {

/// How often is decoded ahead and told where it plays.
constexpr std::chrono::milliseconds kTick{100};

/// Sound decoded ahead: so long the message loop may stand still. Each start and each seek waits
/// until it is decoded, some four milliseconds.
constexpr int kAheadMs = 2500;

/// A card nobody needs is given back after this: soon enough for other programs, late enough that
/// going from track to track does not open it each time.
constexpr int kIdleTicks = std::chrono::seconds(10) / kTick;

constexpr size_t kChunk = 8192;

} // namespace

Mp3Player::Mp3Player(AudioOutput& output, MessageLoop& loop)
    : m_output(output)
    , m_timerPlay(loop.makeTimer(kTick, [this] { tick(); }))
{}

Mp3Player::~Mp3Player()
{
    m_output.close();
}

void Mp3Player::open(int card)
{
    close();
    m_card = card;
}

void Mp3Player::close()
{
    stop();
    m_output.close();
}

PlayFault Mp3Player::load(const QString& file)
{
    unload();
    const PlayFault fault = m_stream.open(file);
    if (fault == PlayFault::None && m_onLoaded) {
        const auto handler = m_onLoaded;
        handler();
    }
    return fault;
}

void Mp3Player::unload()
{
    halt();
    m_stream.close();
    m_start = 0;
    m_end = 0;
}

PlayFault Mp3Player::play()
{
    return begin(position(), m_stream.length());
}

PlayFault Mp3Player::playRange(double fromMs, double toMs)
{
    return begin(sampleAt(fromMs), sampleAt(toMs));
}

void Mp3Player::stop()
{
    if (m_playing) {
        halt();
        announcePosition();
    }
}

void Mp3Player::seek(double ms)
{
    const qint64 place = sampleAt(ms);
    if (!m_playing) {
        m_start = place;
        announcePosition();
        return;
    }
    const PlayFault fault = begin(place, place < m_end ? m_end : m_stream.length());
    if (fault != PlayFault::None) {
        // Told by the next tick: it was playing, and nobody asked for an end.
        m_end = m_start;
        m_fault = fault;
        m_playing = true;
        keepTicking();
    }
}

PlayFault Mp3Player::begin(qint64 from, qint64 to)
{
    halt();
    m_start = from;
    m_next = from;
    m_end = std::max(from, to);
    m_fault = PlayFault::None;
    if (!isLoaded()) {
        return PlayFault::Missing;
    }
    if (from < m_end) {
        if (!m_stream.seek(from)) {
            return PlayFault::Broken;
        }
        if (!takeCard()) {
            return PlayFault::NoCard;
        }
    }
    m_playing = true;
    keepTicking();
    return PlayFault::None;
}

/// Decodes the beginning and has a card play it. A card that runs with another format would take
/// the samples at its own rate, so it is closed before there are any.
bool Mp3Player::takeCard()
{
    if (!m_output.isOpen() || m_cardFormat != m_stream.format()) {
        m_output.close();
    }
    decodeAhead();
    if (m_output.isOpen() || m_output.open(m_card, m_stream.format(), m_buffer)) {
        m_cardFormat = m_stream.format();
        return true;
    }
    halt();
    return false;
}

/// Silence from now on; the place stays.
void Mp3Player::halt()
{
    const quint64 heard = m_buffer.discard();
    if (m_playing) {
        m_start = position(heard);
        m_playing = false;
    }
    m_startCount = m_buffer.handedOver();
    m_next = m_start;
    m_idleTicks = 0;
}

void Mp3Player::decodeAhead()
{
    const auto channels = static_cast<quint64>(m_stream.format().channels);
    const auto rate = static_cast<quint64>(m_stream.format().sampleRate);
    const quint64 ahead = std::min(SampleBuffer::kCapacity, rate * kAheadMs / 1000 * channels);
    std::array<qint16, kChunk> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): filled
    while (m_next < m_end) {
        const quint64 waiting = m_buffer.written() - m_buffer.handedOver();
        const quint64 places = waiting < ahead ? (ahead - waiting) / channels : 0;
        const quint64 wanted =
            std::min({places, static_cast<quint64>(m_end - m_next), kChunk / channels});
        if (wanted == 0) {
            break;
        }
        const size_t got = m_stream.read(std::span(chunk).first(wanted * channels));
        m_buffer.write(std::span(chunk).first(got));
        m_next += static_cast<qint64>(got / channels);
        if (got < wanted * channels) {
            // The file holds less than it did when it was loaded.
            m_end = m_next;
            m_fault = m_stream.isBroken() ? PlayFault::Broken : PlayFault::None;
        }
    }
    m_buffer.publish();
}

std::optional<PlayFault> Mp3Player::reasonToEnd() const
{
    if (m_start < m_end && !m_output.isOpen()) {
        return PlayFault::NoCard;
    }
    if (position() < m_end) {
        return {};
    }
    return m_fault;
}

void Mp3Player::announcePosition()
{
    m_announce = true;
    keepTicking();
}

void Mp3Player::keepTicking()
{
    // Starting it anew would keep it from ever firing while a seek follows a seek.
    if (!m_timerPlay->isActive()) {
        m_timerPlay->start();
    }
}

void Mp3Player::tick()
{
    if (!m_playing && !m_announce) {
        waitIdle();
        return;
    }
    std::optional<PlayFault> ended;
    if (m_playing) {
        decodeAhead();
        ended = reasonToEnd();
    }
    if (ended) {
        halt();
    }
    if (ended == PlayFault::NoCard) {
        m_output.close();
    }
    m_announce = false;
    const auto onPosition = m_onPosition;
    const auto onEnded = ended ? m_onEnded : nullptr;
    if (onPosition) {
        onPosition(positionMs());
    }
    if (onEnded) {
        onEnded(*ended);
    }
}

void Mp3Player::waitIdle()
{
    if (++m_idleTicks >= kIdleTicks || !m_output.isOpen()) {
        m_output.close();
        m_timerPlay->stop();
    }
}

qint64 Mp3Player::sampleAt(double ms) const
{
    const double sample = ms * m_stream.format().sampleRate / 1000.0;
    // Written so that a number that is none gives the beginning.
    return sample > 0 ? std::lround(std::min(sample, static_cast<double>(m_stream.length()))) : 0;
}

double Mp3Player::msAt(qint64 sample) const
{
    return isLoaded() ? static_cast<double>(sample) * 1000.0 / m_stream.format().sampleRate : 0;
}

qint64 Mp3Player::position(quint64 handedOver) const
{
    const quint64 samples = handedOver - m_startCount;
    return m_start + static_cast<qint64>(samples) / m_stream.format().channels;
}

qint64 Mp3Player::position() const
{
    return m_playing ? position(m_buffer.handedOver()) : m_start;
}

double Mp3Player::positionMs() const
{
    return msAt(position());
}

double Mp3Player::lengthMs() const
{
    return msAt(m_stream.length());
}

int Mp3Player::lengthFrames() const
{
    return static_cast<int>(std::lround(lengthMs() / kFrameMs));
}

} // namespace melovane::linux_media
