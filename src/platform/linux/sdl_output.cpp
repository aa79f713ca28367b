#include "platform/linux/sdl_output.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <cstdlib>

namespace melovane::linux_media {

namespace {

/// Samples of one channel that a card asks for at a time: 23 ms at 44100 Hz.
constexpr Uint16 kBlock = 1024;

void SDLCALL fillBlock(void* source, Uint8* bytes, int size)
{
    const std::span samples(reinterpret_cast<qint16*>(bytes),
                            static_cast<size_t>(size) / sizeof(qint16));
    static_cast<SampleSource*>(source)->fill(samples);
}

} // namespace

SdlOutput::SdlOutput(const SoundUse& use)
    : m_use(use)
{
    if (use.stockMs > 0) {
        ::setenv("PULSE_LATENCY_MSEC", QByteArray::number(use.stockMs).constData(), 0);
    }
}

SdlOutput::~SdlOutput()
{
    close();
}

bool SdlOutput::start()
{
    if (m_started) {
        return true;
    }
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, m_use.program.constData());
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, m_use.stream.constData());
    m_started = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    if (m_started) {
        // Nobody reads the library's own event queue.
        SDL_EventState(SDL_AUDIODEVICEADDED, SDL_IGNORE);
        SDL_EventState(SDL_AUDIODEVICEREMOVED, SDL_IGNORE);
    }
    return m_started;
}

/// Its thread looks for new cards ten times a second for as long as it runs.
void SdlOutput::stop()
{
    if (m_started && m_device == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        m_started = false;
    }
}

void SdlOutput::closeCard()
{
    if (m_device != 0) {
        SDL_CloseAudioDevice(m_device);
        m_device = 0;
    }
}

std::vector<SoundCard> SdlOutput::cards()
{
    std::vector<SoundCard> cards;
    m_names.clear();
    const int count = start() ? SDL_GetNumAudioDevices(0) : 0;
    for (int i = 0; i < count; ++i) {
        m_names.emplace_back(SDL_GetAudioDeviceName(i, 0));
        cards.push_back({QString::fromUtf8(m_names.back()), i + 1});
    }
    stop();
    return cards;
}

bool SdlOutput::open(int card, const AudioFormat& format, SampleSource& source)
{
    closeCard();
    if (!start() || card < kSystemCard || static_cast<size_t>(card) > m_names.size()) {
        stop();
        return false;
    }
    // A sound system that was just started knows no card before it is asked.
    SDL_GetNumAudioDevices(0);
    const char* name =
        card == kSystemCard ? nullptr : m_names[static_cast<size_t>(card) - 1].constData();
    SDL_AudioSpec wanted = {};
    wanted.freq = format.sampleRate;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = static_cast<Uint8>(format.channels);
    wanted.samples = kBlock;
    wanted.callback = fillBlock;
    wanted.userdata = &source;
    m_device = SDL_OpenAudioDevice(name, 0, &wanted, nullptr, 0);
    if (m_device == 0) {
        stop();
        return false;
    }
    SDL_PauseAudioDevice(m_device, 0);
    return true;
}

void SdlOutput::close()
{
    closeCard();
    stop();
}

bool SdlOutput::isOpen() const
{
    return m_device != 0 && SDL_GetAudioDeviceStatus(m_device) != SDL_AUDIO_STOPPED;
}

} // namespace melovane::linux_media
