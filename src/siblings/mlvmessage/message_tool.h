#pragma once

#include "platform/message/message_control.h"
#include "siblings/mlvmessage/command_line.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace melovane {

class Clock;
class LinuxMessages;
class ToolBox;

/// What the process ends with: keep, scripts ask for them.
enum class MessageResult
{
    Done = 0,
    NotAlive = 1, // 2 is a wrong call
    NoAnswer = 3,
};

/// Carries out one command and prints what a person or a script wants to know.
class MessageTool
{
public:
    using Print = std::function<void(const QString& line)>;

    /// \param settings melovane.ini
    /// \param print    gets every line of the output
    /// \param health   the state of the suite, in lines
    MessageTool(LinuxMessages& messages,
                ToolBox& settings,
                const Clock& clock,
                Print print,
                std::function<QString()> health);

    /// Nothing for Listen, which goes on in the message loop.
    ///
    /// \param end called when a Listen has got all its messages
    [[nodiscard]] std::optional<MessageResult> run(const MessageCommand& command,
                                                   std::function<void(MessageResult)> end);

    /// What a Listen has come to when its time is over.
    [[nodiscard]] MessageResult timeIsOver() const;

private:
    [[nodiscard]] MessageHandle targetOf(const QString& word) const;
    MessageResult list();
    MessageResult alive(MessageHandle target);
    MessageResult send(const MessageCommand& command, MessageHandle target);
    MessageResult post(const MessageCommand& command, MessageHandle target);
    [[nodiscard]] bool listen(const MessageCommand& command);
    qint32 arrived(const QString& what);

    LinuxMessages& m_messages;
    ToolBox& m_settings;
    const Clock& m_clock;
    Print m_print;
    std::function<QString()> m_health;
    std::unique_ptr<KSMessage> m_control;
    std::function<void(MessageResult)> m_end;
    qint32 m_answer = 0;
    int m_left = 0; ///< messages until the end; 0 for no limit
};

/// A text as one line of a terminal: line ends and other control letters as \\n or \\x1b, a
/// backslash doubled.
[[nodiscard]] QString shownText(const QString& text);

} // namespace melovane
