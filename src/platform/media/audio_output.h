#pragma once

#include <QString>

#include <span>
#include <vector>

namespace melovane {

/// Number of the output that the system chooses itself; cards are counted from 1.
inline constexpr int kSystemCard = 0;

/// An output of the machine.
struct SoundCard
{
    QString name; ///< as the settings keep it
    int number = kSystemCard;
};

/// Form of samples: 16 bits, the channels of a moment side by side.
struct AudioFormat
{
    int sampleRate = 0; ///< Hz
    int channels = 0;

    bool operator==(const AudioFormat&) const = default;
};

/// Where an output gets its samples from.
class SampleSource
{
public:
    virtual ~SampleSource() = default;

    /// Fills the whole span. Called on the output's own thread, which may neither wait nor ask the
    /// system for anything: what is late here is heard.
    virtual void fill(std::span<qint16> samples) noexcept = 0;
};

/// A sound card that samples are sent to.
class AudioOutput
{
public:
    virtual ~AudioOutput() = default;

    /// What can be opened now; empty without any. A number means the same card until the next call,
    /// whatever is plugged in or out.
    [[nodiscard]] virtual std::vector<SoundCard> cards() = 0;

    /// Opens a card and has it ask the source from now on, silence included. The card takes the
    /// format or converts from it. A card open before is closed.
    ///
    /// \param card kSystemCard or a number of cards()
    /// False, with nothing open, when that card does not exist or refuses.
    virtual bool open(int card, const AudioFormat& format, SampleSource& source) = 0;

    /// Returns when the source is no longer asked.
    virtual void close() = 0;

    /// False also when the card has been pulled out since.
    [[nodiscard]] virtual bool isOpen() const = 0;
};

} // namespace melovane
