#pragma once

#include <QStringList>
#include <QStringView>

#include <array>
#include <span>

namespace melovane {

/// The pages of the help in the order of their contents. A page lies in a file of its name with
/// ".html" behind it, in the folder of each language.
inline constexpr std::array<QStringView, 11> kHelpPages = {
    u"start", u"search", u"trees",    u"lists", u"night",   u"player",
    u"tags",  u"care",   u"computer", u"keys",  u"settings"};

/// Where a part of a window is explained.
struct HelpPlace
{
    QStringView control; ///< object name of a window, or of a part of one
    QStringView place;   ///< "page", or "page#section"
};

[[nodiscard]] std::span<const HelpPlace> helpPlaces();

/// The place for a control.
///
/// \param names object names of the control and of what it stands in, from the inside out
[[nodiscard]] QString helpPlaceOf(const QStringList& names);

} // namespace melovane
