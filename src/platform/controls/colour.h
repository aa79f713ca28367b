#pragma once

#include <QStringView>

#include <optional>

namespace melovane {

/// An opaque colour.
struct Colour
{
    quint8 red = 0;
    quint8 green = 0;
    quint8 blue = 0;

    bool operator==(const Colour&) const = default;

    /// From a number of the settings file, where blue is the highest of the three bytes: 255 is
    /// red. Bits above them are dropped.
    [[nodiscard]] static Colour fromBgr(int number);

    /// From "#rrggbb"; nothing for any other form.
    [[nodiscard]] static std::optional<Colour> fromText(QStringView text);

    /// As "#rrggbb".
    [[nodiscard]] QString toText() const;
};

/// Least contrast of a text against its ground that everybody can read at normal size.
inline constexpr double kReadableContrast = 4.5;

/// The ratio of the relative luminances of two colours: 1 for equal ones, 21 for black on white.
[[nodiscard]] double contrast(Colour first, Colour second);

/// `part` of `over` laid on `base`: 0 gives base, 1 gives over.
[[nodiscard]] Colour mixed(Colour base, Colour over, double part);

/// The colour itself when it can be read on the ground, otherwise the nearest lighter or darker one
/// of its hue that can.
[[nodiscard]] Colour
readableOn(Colour text, Colour ground, double leastContrast = kReadableContrast);

} // namespace melovane
