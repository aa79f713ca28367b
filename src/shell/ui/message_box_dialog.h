#pragma once

#include "platform/controls/warning_dialog.h"

namespace melovane {

/// Warnings as a message box in front of everything.
class MessageBoxDialog : public WarningDialog
{
public:
    void show(const QString& title, const QString& text) override;
};

} // namespace melovane
