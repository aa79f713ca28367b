#include "player/sinc_table.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace melovane {

namespace {

constexpr int kTaps = 2 * SincTable::kAhead;
constexpr int kPhases = 512;

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

/// \param x distance from the wanted place, in frames
double tap(double x, double cutOff)
{
    const double part = x / SincTable::kAhead;
    if (std::abs(part) >= 1) {
        return 0;
    }
    const double angle = std::numbers::pi * cutOff * x;
    const double sine = x == 0 ? 1 : std::sin(angle) / angle;
    return cutOff * sine * bessel(kBeta * std::sqrt(1 - part * part)) / bessel(kBeta);
}

} // namespace

SincTable::SincTable(double cutOff)
    : m_taps(size_t{kPhases + 1} * kTaps)
{
    for (int phase = 0; phase <= kPhases; ++phase) {
        double* row = &m_taps[size_t(phase) * kTaps];
        double sum = 0;
        for (int k = 0; k < kTaps; ++k) {
            row[k] = tap(k - (kAhead - 1) - double(phase) / kPhases, cutOff);
            sum += row[k];
        }
        for (int k = 0; k < kTaps; ++k) {
            row[k] /= sum * kSampleScale;
        }
    }
}

Stereo SincTable::at(const FrameRing& ring, double place) const
{
    const double whole = std::floor(place);
    const double phase = (place - whole) * kPhases;
    const double before = std::floor(phase);
    const double part = phase - before;
    const double* row = &m_taps[static_cast<size_t>(before) * kTaps];
    const double* next = row + kTaps;
    const qint64 first = static_cast<qint64>(whole) - (kAhead - 1);
    Stereo sum;
    for (int k = 0; k < kTaps; ++k) {
        const StereoFrame frame = ring.at(first + k);
        const double weight = row[k] + (next[k] - row[k]) * part;
        sum.left += weight * frame.left;
        sum.right += weight * frame.right;
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
