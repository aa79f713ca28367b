#pragma once

#include <QString>

namespace melovane {

/// Shows how far a long work is, and lets the user end it. Appears when the work takes longer than
/// a moment, goes away when it is destroyed; meanwhile the rest of the program takes no orders.
class ProgressWindow
{
public:
    virtual ~ProgressWindow() = default;

    /// Gives the window its turn, so call it some ten times a second.
    /// \param text what is being done \param done of `whole`, in whatever unit
    /// False when the user wants it to end.
    [[nodiscard]] virtual bool show(const QString& text, qint64 done, qint64 whole) = 0;
};

} // namespace melovane
