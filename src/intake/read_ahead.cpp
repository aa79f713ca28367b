#include "intake/read_ahead.h"

#include <utility>

namespace melovane {

ReadAhead::ReadAhead(const TagReader& reader, const AudioIdentity* audio)
    : m_reader(reader)
    , m_audio(audio)
{}

ReadAhead::~ReadAhead()
{
    m_stop = true;
    if (m_batch.valid()) {
        m_batch.wait();
    }
}

void ReadAhead::start(std::vector<PendingFile> files)
{
    m_batch = std::async(std::launch::async, [this, pending = std::move(files)]() mutable {
        std::vector<ReadFile> result;
        result.reserve(pending.size());
        for (PendingFile& file : pending) {
            if (m_stop) {
                break;
            }
            MediaReading reading = m_reader.read(file.file.path());
            std::optional<AudioPrint> sound;
            if (m_audio && reading.fault == MediaFault::None) {
                sound = m_audio->sampled(file.file.path());
            }
            result.push_back({std::move(file), std::move(reading), std::move(sound)});
        }
        return result;
    });
}

std::optional<std::vector<ReadFile>> ReadAhead::take(std::chrono::steady_clock::time_point deadline)
{
    if (!m_batch.valid() || m_batch.wait_until(deadline) != std::future_status::ready) {
        return std::nullopt;
    }
    return m_batch.get();
}

} // namespace melovane
