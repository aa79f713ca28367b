#pragma once

#include "player/stereo.h"
#include "store/mix_style.h"

#include <array>
#include <cstddef>

namespace melovane {

/// Gains of the four bands, deep to high; 1 leaves a band as it is.
using BandGains = std::array<double, 4>;

/// The bands of an entry: percent as gain, from a twentieth to double. Neutral when unset.
[[nodiscard]] BandGains bandGains(const MlvEQStyle& style);

/// Four bands: a shelf up to 100 Hz, bells around 400 and 2500 Hz, a shelf from 9 kHz on.
///
/// Neutral it changes no bit. A band that is changed goes there within some tenths of a second.
class Equaliser
{
public:
    Equaliser();

    /// Begins anew with these bands.
    void reset(const BandGains& gains);

    /// The bands glide there.
    void setTarget(const BandGains& gains) { m_target = gains; }

    [[nodiscard]] Stereo process(Stereo in);

private:
    struct Band
    {
        double sine = 0; ///< of the band's angle
        double cosine = 0;
        double gain = 1;
        std::array<double, 3> b = {1, 0, 0};
        std::array<double, 2> a = {0, 0};
        std::array<Stereo, 2> kept; ///< what the filter remembers
    };

    void shapeBand(size_t i);
    void glide();
    [[nodiscard]] bool isNeutral() const;

    std::array<Band, 4> m_bands;
    BandGains m_target = {1, 1, 1, 1};
    int m_untilGlide = 0;
    bool m_passesBy = true; ///< neutral, and the filters remember nothing
};

} // namespace melovane
