#pragma once

#include "platform/message/message_control.h"
#include "shell/last_run.h"
#include "shell/start_up_db.h"
#include "shell/sub_main.h"
#include "shell/ui/splash_window.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

struct Desk;
class KSMessage;
struct Machine;

/// The start of the program up to its main window, and what later copies of it find.
struct StartWing
{
    StartWing(Machine& machine, Desk& desk);
    ~StartWing();

    StartWing(const StartWing&) = delete;
    StartWing& operator=(const StartWing&) = delete;

    /// \param showMainWindow loads the main window and shows it
    [[nodiscard]] StartResult run(const std::function<void()>& showMainWindow);

    /// Where the report of a crash belongs.
    [[nodiscard]] QString crashFile() const;

    /// The program has come to its end: what of settings, layouts and the like could not be kept
    /// is logged and told.
    /// \param mayAsk false when the end was asked for from outside, where nobody reads a dialog
    void end(bool mayAsk);

    Machine& machine;
    Desk& desk;
    SplashWindow splashForm;
    frmStartUpDB splash;
    LastRun lastRun;
    bool lastRunDied = false; ///< known when the window stands
    /// Offers a way out of a library that cannot be opened; see StartSteps. Set from above.
    std::function<bool(const OpenFault& fault, const QString& reason)> rescue;
    /// Opens files that a copy was called with. Set from above.
    std::function<void(const QStringList& files)> openFiles;
    QStringList called; ///< the files that this copy was called with; set from above
    std::unique_ptr<KSMessage> nextCopy; ///< hears of later copies; null before the window is up

private:
    [[nodiscard]] OpenFault openTest();
    [[nodiscard]] bool anotherCopyRuns();
    [[nodiscard]] MessageHandle runningCopy() const;
    void takeRestoredSettings();
    void listenForNextCopy();
    /// Says that no other program of the suite is reached.
    void tellWithoutMessages();
    void tellOtherLibrary();
    /// Says, and logs, that the program died the last time.
    void tellLastRun();
    /// Shows the report of that, if there is one and the user wants to see it.
    void offerCrashReport();
    void openMakersPage() const;
};

} // namespace melovane
