#pragma once

#include "platform/controls/clipboard.h"

namespace melovane {

class QtClipboard : public Clipboard
{
public:
    [[nodiscard]] QString text() const override;
    void setText(const QString& text) override;
};

} // namespace melovane
