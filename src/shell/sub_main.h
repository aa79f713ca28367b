#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class MessageLoop;
class Messages;
class Warnings;
class frmStartUpDB;

/// Why the database cannot be used.
struct OpenFault
{
    QString text;   ///< in the engine's own words; empty when all is well
    int number = 0; ///< of the engine's error
};

/// The steps of the start that lie elsewhere.
struct StartSteps
{
    /// Opens the database and every plain table in it; the first error.
    std::function<OpenFault()> openTest;
    /// Fills the texts, makes the log, reads keys and settings, in this order.
    std::function<void()> loadConfig;
    /// True when another copy of this program runs; its window is then in front.
    std::function<bool()> anotherCopyRuns;
    std::function<bool()> databaseExists;
    /// True when the database has the version of this release.
    std::function<bool()> versionFits;
    /// Loads the main window and shows it.
    std::function<void()> showMainWindow;
    /// Asked for a database that cannot be used, with the reason in the user's language: true when
    /// there is one now, which is tested again. May be empty.
    std::function<bool(const OpenFault& fault, const QString& reason)> rescue = {};
};

/// What the start asks and speaks to.
struct StartParts
{
    const GlobalSettings& settings;
    const ConfigObjects& texts;
    Warnings& warnings;
    const Messages& messages;
    MessageLoop& loop;
    frmStartUpDB& splash;
};

enum class StartResult
{
    Run,        ///< the main window is shown
    SecondCopy, ///< another copy runs; nothing was shown
    Refused,    ///< a dialog has told why
};

/// The entry of the program up to its main window.
class SubMain
{
public:
    SubMain(StartSteps steps, const StartParts& parts);

    /// Takes the steps in their order; none is taken behind one that ends the start.
    [[nodiscard]] StartResult run();

private:
    [[nodiscard]] QString reasonOf(const OpenFault& fault) const;
    [[nodiscard]] StartResult
    refuse(const QString& title, const QString& text, const QString& messageKey);
    void showWithSplash();

    StartSteps m_steps;
    StartParts m_parts;
};

} // namespace melovane
