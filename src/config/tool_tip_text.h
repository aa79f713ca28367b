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

/// What a button without words tells under the pointer: the tool tip that the language file has for
/// the text of that name, else the text.
[[nodiscard]] inline QString buttonTip(const ConfigObjects& texts, QStringView name)
{
    const QString tip = toolTipText(texts, name);
    return tip.isEmpty() ? texts.text(name) : tip;
}

} // namespace melovane
