#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace melovane {

/// What the program is asked to do.
struct MessageCommand
{
    enum class Action
    {
        List,
        Alive,
        Send,
        Post,
        Listen,
        Health
    };

    Action action = Action::List;
    QString target; ///< handle or name
    qint32 id = 0;
    qint32 wParam = 0; ///< of a text message its number
    qint32 lParam = 0;
    std::optional<QString> text;
    std::chrono::milliseconds wait{10'000}; ///< for the answer to a send

    // Of Action::Listen.
    QString name;      ///< under which the control is published; empty for not at all
    qint32 answer = 0; ///< to everything that arrives
    int count = 0;     ///< messages after which it ends; 0 for no limit
    std::chrono::milliseconds duration{0}; ///< after which it ends; 0 for never
};

/// Reads the arguments, without the program's name. Nothing when they make no sense: an unknown
/// word, a number that is none of 32 bits, an option of another action, something missing.
[[nodiscard]] std::optional<MessageCommand> parseCommandLine(const QStringList& arguments);

} // namespace melovane
