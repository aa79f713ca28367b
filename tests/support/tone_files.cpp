#include "support/tone_files.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace melovane::test {

namespace {

class ToneStream : public SoundStream
{
public:
    explicit ToneStream(const QHash<QString, ToneFile>& files)
        : m_files(files)
    {}

    PlayFault open(const QString& file) override
    {
        if (!m_files.contains(file)) {
            return PlayFault::Missing;
        }
        m_path = file;
        m_next = 0;
        return length() > 0 ? PlayFault::None : PlayFault::NoAudio;
    }

    [[nodiscard]] const AudioFormat& format() const override
    {
        return m_files.find(m_path)->format;
    }

    [[nodiscard]] qint64 length() const override
    {
        return qint64(m_files.find(m_path)->samples.size()) / format().channels;
    }

    bool seek(qint64 sample) override
    {
        m_next = sample;
        return sample <= readable();
    }

    size_t read(std::span<qint16> samples) override
    {
        const auto channels = size_t(format().channels);
        const auto rest = size_t(std::max<qint64>(0, readable() - m_next)) * channels;
        const size_t count = std::min(samples.size(), rest);
        const auto& all = m_files.find(m_path)->samples;
        std::copy_n(all.begin() + m_next * format().channels, count, samples.begin());
        m_next += qint64(count / channels);
        return count;
    }

    [[nodiscard]] bool isBroken() const override
    {
        return readable() < length() && m_next >= readable();
    }

private:
    [[nodiscard]] qint64 readable() const
    {
        const qint64 breaks = m_files.find(m_path)->breaksOffAt;
        return breaks < 0 ? length() : std::min(breaks, length());
    }

    const QHash<QString, ToneFile>& m_files;
    QString m_path;
    qint64 m_next = 0;
};

} // namespace

void ToneFiles::addTone(const QString& path, double hertz, double seconds, double loudness)
{
    ToneFile& file = m_files[path];
    const auto count = qint64(seconds * file.format.sampleRate);
    file.samples.clear();
    for (qint64 i = 0; i < count; ++i) {
        const double turn = 2 * std::numbers::pi * hertz * double(i) / file.format.sampleRate;
        const auto sample = qint16(std::lround(32768 * loudness * std::sin(turn)));
        file.samples.push_back(sample);
        if (file.format.channels == 2) {
            file.samples.push_back(qint16(-sample));
        }
    }
}

SoundStreamMaker ToneFiles::maker()
{
    return [this] { return std::make_unique<ToneStream>(m_files); };
}

} // namespace melovane::test
