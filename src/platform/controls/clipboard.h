#pragma once

#include <QString>

namespace melovane {

/// The desktop's clipboard.
class Clipboard
{
public:
    virtual ~Clipboard() = default;

    [[nodiscard]] virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
};

} // namespace melovane
