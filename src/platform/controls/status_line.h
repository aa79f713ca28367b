#pragma once

#include <QString>

namespace melovane {

/// Panels of the status line, from left to right.
enum class StatusPanel
{
    Message, ///< "MSG"
    Node,    ///< caption and value of a tree node
    Elapsed,
    Remaining,
    Progress,
};

class StatusLine
{
public:
    virtual ~StatusLine() = default;

    virtual void setPanel(StatusPanel panel, const QString& text) = 0;
    [[nodiscard]] virtual QString panel(StatusPanel panel) const = 0;
};

} // namespace melovane
