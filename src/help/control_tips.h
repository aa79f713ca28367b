#pragma once

#include <QStringList>
#include <QStringView>

#include <span>

namespace melovane {

/// What a control says under the pointer that has nothing of its own to say.
struct ControlTip
{
    QStringView window;  ///< object name of what it stands in; empty for any
    QStringView control; ///< its own
    QStringView textKey;
};

[[nodiscard]] std::span<const ControlTip> controlTips();

/// The key of the text for a control; empty for none.
///
/// \param names object names of the control and of what it stands in, from the inside out
[[nodiscard]] QString controlTipOf(const QStringList& names);

} // namespace melovane
