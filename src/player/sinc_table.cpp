#include "player/sinc_table.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace melovane {

namespace {

constexpr int kTaps = 2 * SincTable::kAhead;
constexpr int kPhases = 512;
/// Left and right of all taps, and sums that grow side by side.
constexpr size_t kRow = size_t{2} * kTaps;
constexpr size_t kLanes = 8;

/// Of the window: 97 dB and a transition of a tenth of the band.
constexpr double kBeta = 9;

/// Cut-off, and the fastest step that it is good for.
struct Table
{
    double cutOff;
    double fastest;
};

constexpr std::array kTables = {Table{0.93, 1.0}, Table{0.85, 1.09}, Table{0.76, 1.22},
                                Table{0.70, 1.33}, Table{0.55, 1e9}};

double bessel(double x)
{
    double sum = 1;
    double term = 1;
    for (int k = 1; term > sum * 1e-17; ++k) {
        term *= (x / (2 * k)) * (x / (2 * k));
        sum += term;
    }
    return sum;
}

/// The window of all taps of all phases: the same for every cut-off, and by far the longest to
/// make.
class Window
{
public:
    Window()
    {
        const double whole = bessel(kBeta);
        for (size_t i = 0; i < m_values.size(); ++i) {
            const double part = double(i) / double(m_values.size());
            m_values[i] = bessel(kBeta * std::sqrt(1 - part * part)) / whole;
        }
    }

    /// \param steps distance from the wanted place, in phases
    [[nodiscard]] double at(int steps) const
    {
        const auto place = static_cast<size_t>(std::abs(steps));
        return place < m_values.size() ? m_values[place] : 0;
    }

private:
    std::array<double, size_t{SincTable::kAhead}* kPhases> m_values = {};
};

/// \param steps distance from the wanted place, in phases
double tap(int steps, double cutOff)
{
    static const Window window;
    const double angle = std::numbers::pi * cutOff * steps / kPhases;
    const double sine = steps == 0 ? 1 : std::sin(angle) / angle;
    return cutOff * sine * window.at(steps);
}

} // namespace

SincTable::SincTable(double cutOff)
    : m_taps(size_t{kPhases + 1} * kRow)
{
    for (int phase = 0; phase <= kPhases; ++phase) {
        std::array<double, kTaps> taps = {};
        double sum = 0;
        for (int k = 0; k < kTaps; ++k) {
            taps[size_t(k)] = tap((k - (kAhead - 1)) * kPhases - phase, cutOff);
            sum += taps[size_t(k)];
        }
        float* row = &m_taps[size_t(phase) * kRow];
        for (size_t i = 0; i < kRow; ++i) {
            row[i] = static_cast<float>(taps[i / 2] / (sum * kSampleScale));
        }
    }
}

/// Loops of fixed lengths over numbers that lie side by side: the compiler takes several at a time.
Stereo SincTable::at(const FrameRing& ring, double place) const
{
    const double whole = std::floor(place);
    const double phase = (place - whole) * kPhases;
    const double before = std::floor(phase);
    const auto part = static_cast<float>(phase - before);
    const float* row = &m_taps[static_cast<size_t>(before) * kRow];
    const float* next = row + kRow;
    std::array<StereoFrame, kTaps> spare;
    const StereoFrame* frames = ring.stretch(static_cast<qint64>(whole) - (kAhead - 1), spare);
    std::array<float, kRow> heard;
    for (size_t k = 0; k < kTaps; ++k) {
        heard[2 * k] = frames[k].left;
        heard[2 * k + 1] = frames[k].right;
    }
    std::array<float, kLanes> sums = {};
    for (size_t i = 0; i < kRow; i += kLanes) {
        for (size_t lane = 0; lane < kLanes; ++lane) {
            const float weight = row[i + lane] + (next[i + lane] - row[i + lane]) * part;
            sums[lane] += weight * heard[i + lane];
        }
    }
    Stereo sum;
    for (size_t lane = 0; lane < kLanes; lane += 2) {
        sum.left += sums[lane];
        sum.right += sums[lane + 1];
    }
    return sum;
}

SincTables::SincTables()
{
    for (const Table& table : kTables) {
        m_tables.emplace_back(table.cutOff);
    }
}

const SincTable& SincTables::forStep(double step) const
{
    size_t i = 0;
    while (step > kTables[i].fastest && i + 1 < kTables.size()) {
        ++i;
    }
    return m_tables[i];
}

} // namespace melovane
