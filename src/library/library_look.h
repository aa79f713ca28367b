#pragma once

#include "platform/controls/grid_control.h"

#include <array>

namespace melovane {

class Clock;
class GlobalSettings;

/// Colours of track rows, section "Color" of the settings.
struct GridColours
{
    std::array<Colour, 5> note{}; ///< grounds of the ratings 1 to 5: `Note1Color` to `Note5Color`
    Colour noteText;
    bool noteTextBold = true;
    Colour playNow;    ///< a track played within the last day
    Colour rowShowDel; ///< a row out of use

    /// What the settings say now; keys that are absent give the built-in colours.
    [[nodiscard]] static GridColours fromSettings(const GlobalSettings& settings);
};

/// How the library grid shows a track.
class LibraryLook : public GridLook
{
public:
    explicit LibraryLook(const Clock& clock);

    void setColours(const GridColours& colours) { m_colours = colours; }

    /// `Play` is the time of day for the last twelve hours and the day before that; a `DBit` of -99
    /// is "VBR"; null is empty; all else as Value::toText writes it.
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;

    /// A row whose `DEL` is not 0 is struck out in its colour; `Note` 1 to 5 is a badge; a `Play`
    /// within the last day is tinted.
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

private:
    void addNote(CellStyle& style, const Value& note) const;
    [[nodiscard]] bool playedWithin(const Value& play, qint64 seconds) const;

    const Clock& m_clock;
    GridColours m_colours;
};

} // namespace melovane
