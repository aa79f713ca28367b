#pragma once

#include "platform/media/sound_stream.h"

#include <QString>

#include <sys/types.h>

#include <memory>
#include <span>
#include <vector>

struct mpg123_handle_struct;

namespace melovane::linux_media {

/// The sound of one MPEG audio file as samples, exact to the sample.
///
/// Sample n is the n-th that the frames stand for, the encoder's delay included: so a frame number
/// of the library is a place that every player finds again. A place sounds the same however it was
/// reached; only in mono and at low sample rates may the last bit of a sample differ from what one
/// long read gives.
class Mp3Stream final : public SoundStream
{
public:
    Mp3Stream() = default;
    ~Mp3Stream() override;
    Mp3Stream(const Mp3Stream&) = delete;
    Mp3Stream& operator=(const Mp3Stream&) = delete;

    /// Opens a file and walks through it once for its true length, whatever its header says. What
    /// was open is closed.
    /// \return None, Missing or NoAudio
    PlayFault open(const QString& file) override;
    void close();

    [[nodiscard]] bool isOpen() const { return m_length > 0; }

    [[nodiscard]] const AudioFormat& format() const override { return m_format; }

    /// In samples of one channel, as the headers of the frames tell it. Where a frame is damaged
    /// the end comes earlier than this, never later.
    [[nodiscard]] qint64 length() const override { return m_length; }

    /// The next read gives this sample and those behind it. False for a place that cannot be read.
    [[nodiscard]] bool seek(qint64 sample) override;

    /// Reads interleaved samples. Fewer than asked for at the end of the file, and where it cannot
    /// be read: isBroken() then tells the difference.
    [[nodiscard]] size_t read(std::span<qint16> samples) override;

    [[nodiscard]] bool isBroken() const override { return m_broken; }

private:
    struct HandleEnd
    {
        void operator()(mpg123_handle_struct* handle) const;
    };

    [[nodiscard]] bool startDecoder();
    void keepIndex();
    void skip(size_t samples);

    int m_descriptor = -1;
    std::unique_ptr<mpg123_handle_struct, HandleEnd> m_handle;
    std::vector<off_t> m_index; ///< where every m_indexStep-th frame stands in the file
    off_t m_indexStep = 0;
    AudioFormat m_format;
    qint64 m_length = 0;
    bool m_broken = false;
};

} // namespace melovane::linux_media
