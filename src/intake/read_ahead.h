#pragma once

#include "intake/folder_walk.h"
#include "platform/media/audio_identity.h"
#include "platform/media/track_tags.h"

#include <atomic>
#include <chrono>
#include <future>
#include <optional>
#include <vector>

namespace melovane {

/// A file to be read, for a new row or for the row that has it.
struct PendingFile
{
    FoundFile file;
    QString FID; ///< of the row; empty for a new file
};

struct ReadFile
{
    PendingFile pending;
    MediaReading reading;
    std::optional<AudioPrint> sound; ///< when it is to be kept
};

/// Reads the tags of a batch of files on a thread of its own, while the rows of the batch before
/// are written. Only the reader runs there.
class ReadAhead
{
public:
    /// \param audio makes prints of the sound; null makes none
    explicit ReadAhead(const TagReader& reader, const AudioIdentity* audio = nullptr);

    /// Waits for the thread, which stops at the next file.
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    [[nodiscard]] bool isBusy() const { return m_batch.valid(); }

    /// Only when not busy.
    void start(std::vector<PendingFile> files);

    /// The batch when it is read before the moment; nothing otherwise.
    [[nodiscard]] std::optional<std::vector<ReadFile>>
    take(std::chrono::steady_clock::time_point deadline);

private:
    const TagReader& m_reader;
    const AudioIdentity* m_audio;
    std::atomic<bool> m_stop = false;
    std::future<std::vector<ReadFile>> m_batch;
};

} // namespace melovane
