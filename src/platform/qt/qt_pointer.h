#pragma once

#include "platform/controls/pointer_control.h"

namespace melovane {

/// The pointer of the running application.
class QtPointer : public PointerControl
{
public:
    void push(PointerShape shape) override;
    void pop() override;
};

} // namespace melovane
