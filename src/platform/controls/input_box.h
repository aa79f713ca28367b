#pragma once

#include <QString>

#include <optional>

namespace melovane {

/// What a small dialog with one line to type in shows.
struct InputView
{
    QString caption;
    QString label;
    QString text; ///< stands in the line at first, selected
    QString okCaption;
    QString cancelCaption;
};

/// A small dialog with one line to type in.
class InputBox
{
public:
    virtual ~InputBox() = default;

    /// What was typed, without blanks at its ends and never empty; nothing when it was cancelled.
    [[nodiscard]] virtual std::optional<QString> ask(const InputView& view) = 0;
};

} // namespace melovane
