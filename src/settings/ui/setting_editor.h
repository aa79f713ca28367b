#pragma once

#include "settings/ui/settings_desk.h"

class QWidget;

namespace melovane {

/// The control of one setting.
struct SettingEditor
{
    QWidget* widget;            ///< named as the key; a row of controls has it as its first one
    std::function<void()> show; ///< shows the present value, without telling it as chosen
};

/// Makes the control for the kind of a setting.
///
/// \param edited called with each value that the user chooses
[[nodiscard]] SettingEditor makeSettingEditor(const SettingsDesk& desk,
                                              const SettingEntry& entry,
                                              QWidget* parent,
                                              std::function<void(const QString& value)> edited);

} // namespace melovane
