#pragma once

#include "player/entry_sound.h"

#include <array>

namespace melovane {

/// Samples of one channel in which what was not prepared comes and goes: six milliseconds, short
/// enough to be no fade, long enough to be no click.
inline constexpr int kEdge = 264;

/// Rises from 0 to 1 between 0 and 1, at either end with neither a corner nor a bend: what is left
/// of a tone that ends so is 10 dB less click than of half a cosine.
[[nodiscard]] constexpr double smoothRise(double part)
{
    return part * part * part * (part * (part * 6 - 15) + 10);
}

/// The gain of an entry at its beginning or end, over card frames.
///
/// Of the five values of a style four are lengths, as shares of the whole, and one is a level. In:
/// rise to the level, hold it, rise to full, hold. Out: hold full, fall to the level, hold it, fall
/// to nothing. Every garbage gives a curve without a jump.
class FadeCurve
{
public:
    /// Full all the way.
    FadeCurve() = default;

    [[nodiscard]] static FadeCurve in(const FadeStyle& style, bool exactEdge);
    [[nodiscard]] static FadeCurve out(const FadeStyle& style, bool exactEdge);

    /// In card frames; beyond it the entry is full.
    [[nodiscard]] double length() const { return m_length; }

    /// \param distance card frames from the first sample, or up to the end
    /// \return 0 to 1; what is negative counts as 0, the silent end
    [[nodiscard]] double gain(double distance) const;

private:
    FadeCurve(const std::array<int, 4>& shares, int level, double length);

    /// Ends of the two rises and the hold between them, from the silent end on.
    double m_risen = 0;
    double m_held = 0;
    double m_full = 0;
    double m_length = 0;
    double m_level = 1;
};

} // namespace melovane
