#pragma once

#include "platform/media/audio_output.h"

#include <QByteArray>

namespace melovane::linux_media {

/// Sound cards through SDL.
///
/// The sound system runs while cards are listed and while one is open, never else: it wakes up ten
/// times a second. It takes no signals over: Ctrl-C still ends the program.
class SdlOutput final : public AudioOutput
{
public:
    SdlOutput() = default;
    ~SdlOutput() override;
    SdlOutput(const SdlOutput&) = delete;
    SdlOutput& operator=(const SdlOutput&) = delete;

    [[nodiscard]] std::vector<SoundCard> cards() override;
    bool open(int card, const AudioFormat& format, SampleSource& source) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;

private:
    [[nodiscard]] bool start();
    void stop();
    void closeCard();

    bool m_started = false;
    /// What cards() has given, by its numbers. A card plugged in since must not make a number mean
    /// another one: what is only for the monitor would be heard in the hall.
    std::vector<QByteArray> m_names;
    quint32 m_device = 0;
};

} // namespace melovane::linux_media
