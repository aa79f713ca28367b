#pragma once

#include "platform/media/audio_output.h"

#include <QByteArray>

#include <vector>

namespace melovane::linux_media {

/// What an output is for, as the sound server shows it to the user.
struct SoundUse
{
    QByteArray program = "Melovane DB";
    QByteArray stream = "Monitor";
    /// Milliseconds that the server keeps in stock; 0 leaves it to the server, which keeps a single
    /// block. More lets a busy machine be late without a gap, and makes each reaction that much
    /// later. Holds for all outputs of the process; what the user's environment says is kept.
    int stockMs = 0;
};

/// Sound cards through SDL.
///
/// The sound system runs while cards are listed and while one is open, never else: it wakes up ten
/// times a second. It takes no signals over: Ctrl-C still ends the program.
class SdlOutput final : public AudioOutput
{
public:
    SdlOutput()
        : SdlOutput(SoundUse())
    {}

    /// Made before other threads read the environment.
    explicit SdlOutput(const SoundUse& use);
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

    SoundUse m_use;
    bool m_started = false;
    /// What cards() has given, by its numbers. A card plugged in since must not make a number mean
    /// another one: what is only for the monitor would be heard in the hall.
    std::vector<QByteArray> m_names;
    quint32 m_device = 0;
};

} // namespace melovane::linux_media
