#include "player/sound_shape.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace melovane {

namespace {

/// In front of what is kept; another number is another form: keep.
constexpr char kMark[] = "MLVSHAPE1";
constexpr qsizetype kMarkSize = sizeof(kMark) - 1;
constexpr qsizetype kBinSize = 3;

constexpr size_t kChunk = 8192;

/// Gathers the samples of one bin.
class Gatherer
{
public:
    void add(int sample)
    {
        m_low = std::min(m_low, sample);
        m_high = std::max(m_high, sample);
        m_power += double(sample) * sample;
        ++m_count;
    }

    [[nodiscard]] ShapeBin take()
    {
        const double mean = m_count > 0 ? std::sqrt(m_power / m_count) : 0;
        const ShapeBin bin = {static_cast<qint8>(std::max(-127, m_low / 256)),
                              static_cast<qint8>(m_high / 256),
                              static_cast<quint8>(std::min(255.0, mean / 128))};
        *this = {};
        return bin;
    }

private:
    int m_low = 0;
    int m_high = 0;
    double m_power = 0;
    int m_count = 0;
};

} // namespace

SoundShape measureShape(SoundStream& stream)
{
    SoundShape shape;
    const auto channels = static_cast<size_t>(stream.format().channels);
    const qint64 rate = stream.format().sampleRate;
    std::array<qint16, kChunk> samples; // NOLINT(cppcoreguidelines-pro-type-member-init): filled
    const auto readable = std::span(samples).first(kChunk / channels * channels);
    Gatherer bin;
    qint64 place = 0;
    bool isOpen = stream.seek(0);
    while (isOpen) {
        const size_t got = stream.read(readable);
        isOpen = got == readable.size();
        for (size_t i = 0; i + channels <= got; i += channels) {
            for (size_t side = 0; side < channels; ++side) {
                bin.add(samples[i + side]);
            }
            ++place;
            if (place * SoundShape::kPerSecond >= qint64(shape.bins.size() + 1) * rate) {
                shape.bins.push_back(bin.take());
            }
        }
    }
    if (place * SoundShape::kPerSecond > qint64(shape.bins.size()) * rate) {
        shape.bins.push_back(bin.take());
    }
    return shape;
}

std::vector<ShapeBin> reduceShape(const SoundShape& shape, double from, double to, int columns)
{
    std::vector<ShapeBin> out(static_cast<size_t>(std::max(1, columns)));
    const double width = (to - from) / static_cast<double>(out.size());
    const auto count = static_cast<double>(shape.bins.size());
    for (size_t i = 0; i < out.size(); ++i) {
        const double begin = std::floor(from + width * double(i));
        const double end = std::max(begin + 1, std::ceil(from + width * double(i + 1)));
        double power = 0;
        const auto first = static_cast<size_t>(std::clamp(begin, 0.0, count));
        const auto last = static_cast<size_t>(std::clamp(end, 0.0, count));
        for (size_t k = first; k < last; ++k) {
            out[i].low = std::min(out[i].low, shape.bins[k].low);
            out[i].high = std::max(out[i].high, shape.bins[k].high);
            power += double(shape.bins[k].power) * shape.bins[k].power;
        }
        const double bins = double(std::max<size_t>(1, last - std::min(first, last)));
        out[i].power = static_cast<quint8>(std::sqrt(power / bins));
    }
    return out;
}

QByteArray shapeToBytes(const SoundShape& shape)
{
    QByteArray bytes(kMark, kMarkSize);
    bytes.reserve(kMarkSize + qsizetype(shape.bins.size()) * kBinSize);
    for (const ShapeBin& bin : shape.bins) {
        bytes.append(static_cast<char>(bin.low));
        bytes.append(static_cast<char>(bin.high));
        bytes.append(static_cast<char>(bin.power));
    }
    return bytes;
}

std::optional<SoundShape> shapeOfBytes(const QByteArray& bytes)
{
    if (!bytes.startsWith(kMark) || (bytes.size() - kMarkSize) % kBinSize != 0) {
        return {};
    }
    SoundShape shape;
    for (qsizetype i = kMarkSize; i < bytes.size(); i += kBinSize) {
        shape.bins.push_back({static_cast<qint8>(bytes[i]), static_cast<qint8>(bytes[i + 1]),
                              static_cast<quint8>(bytes[i + 2])});
    }
    return shape;
}

} // namespace melovane
