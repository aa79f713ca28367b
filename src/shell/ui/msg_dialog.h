#pragma once

#include "platform/controls/message_form.h"

namespace melovane {

class IconSet;

/// The dialog for messages.
class MsgDialog : public MessageForm
{
public:
    explicit MsgDialog(const IconSet& icons);

    [[nodiscard]] WarningAnswer ask(const MessageView& view) override;

private:
    const IconSet& m_icons;
};

} // namespace melovane
