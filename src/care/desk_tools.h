#pragma once

#include "store/error_sink.h"

#include <QString>

#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;
class LiveWait;
class ProgressWindow;
class Warnings;
class Worker;

/// The parts of the program that the desks of backups and of the check use; they outlive both.
struct DeskTools
{
    const ConfigObjects& texts;
    Warnings& warnings;
    LiveWait& wait; ///< for works that the user waits for
    Worker& worker; ///< for those behind the window
    std::function<std::unique_ptr<ProgressWindow>(const QString& title)> openProgress;
    std::function<void(const QString& text)> tell; ///< for the status line
    ErrorSink log;
    /// Takes the library away from every program, this one included.
    std::function<void()> takeLibrary = [] {};
    /// Gives it back; all views show what stands in it.
    std::function<void()> giveLibrary = [] {};
};

/// Does a work on another thread while the window lives. It may outlive the call, and owns what it
/// uses.
/// \param show shows how far the work is, again and again; false ends the wait
/// True when the work has come to its end.
[[nodiscard]] bool runWatched(const DeskTools& tools,
                              const QString& title,
                              const std::function<void()>& work,
                              const std::function<bool(ProgressWindow& window)>& show);

} // namespace melovane
