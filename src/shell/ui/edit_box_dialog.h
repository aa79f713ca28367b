#pragma once

#include "platform/controls/input_box.h"

namespace melovane {

/// The dialog `frmEditBox`. OK waits until there is something to take.
class EditBoxDialog : public InputBox
{
public:
    [[nodiscard]] std::optional<QString> ask(const InputView& view) override;
};

} // namespace melovane
