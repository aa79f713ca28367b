#include "siblings/mediaintake/command_line.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::optional<IntakeCommand> parseCommandLine(const QStringList& arguments)
{
    IntakeCommand command;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (i == 0 && (argument == "1"_L1 || argument == "2"_L1)) {
            command.mode = argument == "1"_L1 ? IntakeMode::NewFiles : IntakeMode::ChangedFiles;
        } else if (argument == "--folder"_L1 && i + 1 < arguments.size()) {
            command.folders.append(arguments.at(++i));
        } else if (argument == "--quiet"_L1) {
            command.quiet = true;
        } else {
            return std::nullopt;
        }
    }
    if (command.quiet && command.mode == IntakeMode::NewFiles && command.folders.isEmpty()) {
        return std::nullopt;
    }
    return command;
}

} // namespace melovane
