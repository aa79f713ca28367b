#include "siblings/mlvmessage/command_line.h"

#include <QHash>

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using Action = MessageCommand::Action;
using Milliseconds = std::chrono::milliseconds;

/// A day; longer waits are typing errors.
constexpr double kMaxSeconds = 86'400;

struct ActionRow
{
    QStringView name;
    Action action;
    qsizetype min; ///< words behind the name
    qsizetype max;
};

constexpr std::array kActions = {
    ActionRow{u"list", Action::List, 0, 0},     ActionRow{u"alive", Action::Alive, 1, 1},
    ActionRow{u"send", Action::Send, 2, 4},     ActionRow{u"post", Action::Post, 2, 4},
    ActionRow{u"listen", Action::Listen, 0, 0}, ActionRow{u"health", Action::Health, 0, 0},
};

bool readNumber(const QString& word, qint32& number)
{
    bool isNumber = false;
    const qint32 value = word.toInt(&isNumber);
    number = isNumber ? value : number;
    return isNumber;
}

bool readSeconds(const QString& word, Milliseconds& time)
{
    bool isNumber = false;
    const double seconds = word.toDouble(&isNumber);
    if (!isNumber || !(seconds > 0) || seconds > kMaxSeconds) {
        return false;
    }
    time = Milliseconds(qint64(seconds * 1000) + 1);
    return true;
}

/// An option with its value; false when the action has none of that name or the value is wrong.
bool readOption(const QString& option, const QString& value, MessageCommand& command)
{
    const bool listens = command.action == Action::Listen;
    const bool sends = command.action == Action::Send;
    if (option == "--text"_L1 && (sends || command.action == Action::Post)) {
        command.text = value;
        return true;
    }
    if (option == "--wait"_L1 && sends) {
        return readSeconds(value, command.wait);
    }
    if (option == "--as"_L1 && listens) {
        command.name = value;
        return !value.isEmpty() && !value.contains(u'=') && !value.contains(u'\n');
    }
    if (option == "--answer"_L1 && listens) {
        return readNumber(value, command.answer);
    }
    if (option == "--count"_L1 && listens) {
        return readNumber(value, command.count) && command.count > 0;
    }
    return option == "--seconds"_L1 && listens && readSeconds(value, command.duration);
}

bool readWords(const QStringList& words, MessageCommand& command)
{
    command.target = words.value(0);
    const qsizetype max = command.text ? 3 : 4;
    return words.size() <= max && (words.size() < 2 || readNumber(words[1], command.id)) &&
           (words.size() < 3 || readNumber(words[2], command.wParam)) &&
           (words.size() < 4 || readNumber(words[3], command.lParam));
}

} // namespace

std::optional<MessageCommand> parseCommandLine(const QStringList& arguments)
{
    const QString name = arguments.value(0);
    const auto* const row =
        std::find_if(kActions.begin(), kActions.end(),
                     [&](const ActionRow& entry) { return entry.name == name; });
    if (row == kActions.end()) {
        return {};
    }
    MessageCommand command;
    command.action = row->action;
    QStringList words;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (!arguments[i].startsWith("--"_L1)) {
            words.append(arguments[i]);
        } else if (++i >= arguments.size() ||
                   !readOption(arguments[i - 1], arguments[i], command)) {
            return {};
        }
    }
    const bool fits = words.size() >= row->min && words.size() <= row->max;
    return fits && readWords(words, command) ? std::optional(command) : std::nullopt;
}

} // namespace melovane
