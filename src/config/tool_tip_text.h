#pragma once

#include "config/config_objects.h"

namespace melovane {

/// What an entry of a menu tells under the pointer: why it is grey, else the tool tip that the
/// language file has for the text of that name. Empty when there is neither.
[[nodiscard]] inline QString
toolTipText(const ConfigObjects& texts, QStringView name, const QString& whyNot = {})
{
    const ConfigObject* const item = whyNot.isEmpty() ? texts.FindObject(name) : nullptr;
    return item != nullptr ? item->ToolTip : whyNot;
}

} // namespace melovane
