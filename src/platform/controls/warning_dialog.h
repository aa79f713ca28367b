#pragma once

#include <QString>

namespace melovane {

/// Tells the user something that stops the program or an action of it; one OK button.
class WarningDialog
{
public:
    virtual ~WarningDialog() = default;

    /// Returns when the user has answered.
    virtual void show(const QString& title, const QString& text) = 0;
};

} // namespace melovane
