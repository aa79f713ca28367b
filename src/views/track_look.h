#pragma once

#include "platform/controls/grid_control.h"

#include <QDateTime>

#include <array>

namespace melovane {

class UpdateColors;

/// Colours of ratings, section "Color" of the settings.
struct NoteColours
{
    std::array<Colour, 5> note{}; ///< grounds of the ratings 1 to 5: `Note1Color` to `Note5Color`
    Colour noteText;
    bool noteTextBold = true;

    [[nodiscard]] static NoteColours from(const UpdateColors& colours);

    /// Makes a cell the badge of a rating; anything but 1 to 5 changes nothing.
    void addTo(CellStyle& style, const Value& note) const;
};

/// A play as time of day for the last twelve hours and as the day before that; what is no date as
/// it stands.
[[nodiscard]] QString playText(const Value& play, const QDateTime& now);

/// "VBR" for the bit rate -99, else the value.
[[nodiscard]] QString bitRateText(const Value& rate);

/// What `Note` holds for a digit that the user pressed: the text is the other way round, 0 is null.
/// Only for 0 to 5.
[[nodiscard]] Value storedRating(int digit);

} // namespace melovane
