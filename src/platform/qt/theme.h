#pragma once

#include "platform/controls/colour.h"

#include <QColor>
#include <QPalette>
#include <QString>
#include <QStringList>

#include <array>

namespace melovane {

/// What a colour is for. The first rows are the names that skins of the suite answer.
enum class ThemeRole
{
    GridHeadColor, ///< also tool bars, menus and status line
    GridColor,
    GridColorAlternating,
    GridColorSelGotFocus,
    GridColorSelLostFocus,
    GridColorFavorit,
    GridColorAktivePlay,
    GridColorNextPlay,
    GridColorAktiveFid,
    BackColorSizer, ///< the gaps between panels
    VuMeterColor,
    VuMeterColorPeek,
    VuMeterColorClip,
    Panel,
    Hairline,
    Text,
    TextSecond,
    TextDisabled,
    Accent, ///< focus ring, ticks, active tool
    TextField,
    TextSecondSelected, ///< second text on a selection
};

/// Number of roles.
inline constexpr int kThemeRoles = static_cast<int>(ThemeRole::TextSecondSelected) + 1;

/// The colours of everything that is drawn.
class Theme
{
public:
    /// Colours that go with a desktop palette.
    [[nodiscard]] static Theme fromPalette(const QPalette& palette);

    /// The name of a role in theme files.
    [[nodiscard]] static QString nameOf(ThemeRole role);

    [[nodiscard]] Colour colour(ThemeRole role) const;
    [[nodiscard]] QColor qcolor(ThemeRole role) const;
    void setColour(ThemeRole role, Colour colour);

    /// True for light text on a dark ground.
    [[nodiscard]] bool isDark() const;

    /// The palette for the standard controls.
    [[nodiscard]] QPalette palette() const;

    bool operator==(const Theme&) const = default;

private:
    std::array<Colour, kThemeRoles> m_colours{};
};

/// What a theme file held.
struct ThemeFile
{
    QString name; ///< as the user reads it; empty when the file has none
    Theme theme;
    int colours = 0;     ///< number of colours taken from the file
    QStringList skipped; ///< lines that are no comment, no known name or no colour
};

/// Reads the text of a `.skn` file.
///
/// One "name=#rrggbb" a line, names without regard to case, blanks around both cut; "Name=" is the
/// title in menus; a line that begins with ";" is a comment. A colour that the file does not give
/// is the one of `builtIn`. Any text is read without failing.
[[nodiscard]] ThemeFile readTheme(const QString& text, const Theme& builtIn);

[[nodiscard]] QColor toQColor(Colour colour);
[[nodiscard]] Colour fromQColor(const QColor& colour);

} // namespace melovane
