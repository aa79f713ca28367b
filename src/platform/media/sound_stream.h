#pragma once

#include "platform/media/player.h"

#include <QString>

#include <functional>
#include <memory>
#include <span>

namespace melovane {

/// The sound of one file as samples, each found under its number in the file.
class SoundStream
{
public:
    virtual ~SoundStream() = default;

    /// Opens a file and measures it. What was open is closed.
    /// \return None, Missing or NoAudio
    virtual PlayFault open(const QString& file) = 0;

    [[nodiscard]] virtual const AudioFormat& format() const = 0;

    /// In samples of one channel; what can be read may be less, never more.
    [[nodiscard]] virtual qint64 length() const = 0;

    /// The next read gives this sample and those behind it. False for a place that cannot be read.
    [[nodiscard]] virtual bool seek(qint64 sample) = 0;

    /// Reads interleaved samples. Fewer than asked for at the end of the file, and where it cannot
    /// be read: isBroken() then tells the difference.
    [[nodiscard]] virtual size_t read(std::span<qint16> samples) = 0;

    [[nodiscard]] virtual bool isBroken() const = 0;
};

/// Makes a stream that has nothing open.
using SoundStreamMaker = std::function<std::unique_ptr<SoundStream>()>;

} // namespace melovane
