#pragma once

#include <QString>

#include <functional>

namespace melovane {

class GlobalSettings;
class WarningDialog;

/// The steps of the start that lie in other folders.
struct StartSteps
{
    /// Opens the database and every plain table in it; empty, or the text of the first error.
    std::function<QString()> openTest;
    /// Reads texts and settings.
    std::function<void()> loadConfig;
    /// True when another copy of this program runs.
    std::function<bool()> anotherCopyRuns;
    std::function<bool()> databaseExists;
    /// True when the database has the version of this release.
    std::function<bool()> versionFits;
};

enum class StartResult
{
    Run,        ///< the main window may be loaded
    SecondCopy, ///< another copy runs; nothing was shown
    Refused,    ///< a dialog has told why
};

/// The entry of the program up to its main window.
class SubMain
{
public:
    SubMain(StartSteps steps, const GlobalSettings& settings, WarningDialog& dialog);

    /// Takes the steps in their order; none is taken behind one that ends the start.
    [[nodiscard]] StartResult run();

private:
    [[nodiscard]] StartResult refuse(const QString& title, const QString& text);

    StartSteps m_steps;
    const GlobalSettings& m_settings;
    WarningDialog& m_dialog;
};

} // namespace melovane
