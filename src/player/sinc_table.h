#pragma once

#include "player/frame_ring.h"
#include "player/stereo.h"

#include <vector>

namespace melovane {

/// Reads between the samples of a file: 32 taps of a windowed sine over its argument, 97 dB and
/// more between the wanted sound and what it adds.
///
/// Made once before anything plays; reading takes no memory.
class SincTable
{
public:
    /// Frames that are read behind a place. As many less one before it.
    static constexpr int kAhead = 16;

    /// \param cutOff highest frequency that passes, 1 is half the rate of the file
    explicit SincTable(double cutOff);

    /// \param place in the file; kAhead frames behind it are there
    [[nodiscard]] Stereo at(const FrameRing& ring, double place) const;

private:
    /// Each tap twice, for left and right. Single precision keeps the distance and halves the work.
    std::vector<float> m_taps;
};

/// The tables for all speeds.
class SincTables
{
public:
    SincTables();

    /// The one that lets nothing through which would come back mirrored.
    /// \param step places of the file for each frame of the card
    [[nodiscard]] const SincTable& forStep(double step) const;

private:
    std::vector<SincTable> m_tables;
};

} // namespace melovane
