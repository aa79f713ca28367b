#pragma once

#include <QString>

#include <optional>

namespace melovane {

/// Where the sound of a file begins and ends, in units of kFrameMs.
struct CueRange
{
    int start = 0;
    int stop = 0; ///< the first frame behind the sound

    bool operator==(const CueRange&) const = default;
};

/// Finds the sound of a file between the silence at its ends.
class CueFinder
{
public:
    virtual ~CueFinder() = default;

    /// \param withinMs how far from either end is looked; an end without sound so far keeps all
    /// \param loudness samples of more than this, of 32768, are sound
    /// Nothing for a file that cannot be read or holds no audio.
    [[nodiscard]] virtual std::optional<CueRange>
    find(const QString& file, int withinMs, int loudness) = 0;
};

} // namespace melovane
