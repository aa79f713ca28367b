#pragma once

#include "platform/controls/warnings.h"

#include <QString>

#include <functional>

namespace melovane {

/// What the dialog for messages shows.
struct MessageView
{
    QString caption; ///< of the window
    QString title;
    QString text;
    bool question = false; ///< yes and no instead of OK
    QString okCaption;
    QString yesCaption;
    QString noCaption;
    QString suppressCaption; ///< of the check box; empty for none

    /// Called with the new state at each click on the check box.
    std::function<void(bool)> suppressClicked;
};

/// The dialog for messages, `frmMsg`.
class MessageForm
{
public:
    virtual ~MessageForm() = default;

    /// Shows a message in front of the program's windows and waits for its answer.
    [[nodiscard]] virtual WarningAnswer ask(const MessageView& view) = 0;
};

} // namespace melovane
