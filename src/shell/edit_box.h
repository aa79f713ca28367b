#pragma once

#include "bus/mlv_message_bus.h"

namespace melovane {

class ConfigObjects;
class InputBox;

/// Asks for the name of a new genre and tells the bus: `frmEditBox`.
class frmEditBox
{
public:
    frmEditBox(const ConfigObjects& texts, MLVMessageBus& bus, InputBox& box);

    /// Sends "editbox.add.new.genre" with the name as Value1, unless the user cancels.
    void Show();

private:
    const ConfigObjects& m_texts;
    BusSender m_sender;
    InputBox& m_box;
};

} // namespace melovane
