#pragma once

#include "bus/mlv_message_bus.h"
#include "bus/suite_messages.h"
#include "shell/jobs_link.h"
#include "shell/sample_tool.h"
#include "shell/sibling_commands.h"
#include "shell/sibling_control.h"
#include "shell/viewer_link.h"
#include "views/command_gate.h"

#include <memory>

namespace melovane {

struct Machine;

/// How the parts of the console talk: among themselves, and with the suite's other programs.
struct SuiteWing
{
    explicit SuiteWing(Machine& machine);

    /// Puts a line before the user.
    void showStatusText(const QString& text);

    /// Where operations that stay quiet tell their failures when a user waits for what they do: the
    /// log and the status line.
    [[nodiscard]] ErrorSink toUser(Machine& machine);

    /// What commands find around the views: programs, the player, the library.
    [[nodiscard]] CommandWorld world(const Machine& machine);

    MLVMessageBus bus;
    BusSender sender;                           ///< in the name of the main window
    std::unique_ptr<KSMessage> message;         ///< `KSMessage1` of the main window
    std::unique_ptr<KSMessage> playlistMessage; ///< `KSMessage1` of the playlist view
    SuiteMessages suite;
    SiblingControl siblings;
    SiblingCommands commands;
    SampleTool sampleTool;
    JobsLink jobs;
    ViewerLink viewer;
};

} // namespace melovane
