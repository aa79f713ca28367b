#pragma once

#include "care/desk_tools.h"
#include "care/library_check.h"

#include <atomic>
#include <memory>

namespace melovane {

/// The parts of the program that the check uses; they outlive the desk.
struct CheckDeskParts
{
    DeskTools tools;
    /// A check of the present library with all that it uses; it shares nothing with the window and
    /// may be used on another thread. Of the window's thread.
    std::function<std::shared_ptr<LibraryCheck>()> makeCheck;
    std::function<void()> rebuildTrees = [] {};
    /// Hears of each check that was not given up.
    std::function<void(qint64 findings)> checked = [](qint64) {};
};

/// "Datenbank prüfen": checks the library while the window lives, tells what was found, and mends
/// what the user wants to have mended.
class CheckDesk
{
public:
    explicit CheckDesk(CheckDeskParts parts);
    /// A check that goes on in the background is given up.
    ~CheckDesk();

    CheckDesk(const CheckDesk&) = delete;
    CheckDesk& operator=(const CheckDesk&) = delete;

    void check();

    /// After an end that was not clean: the status line tells of a whole library, a message of one
    /// that is not.
    void checkBehind();

private:
    using Findings = std::optional<std::vector<Finding>>;
    struct Running;

    [[nodiscard]] Findings run(const std::shared_ptr<LibraryCheck>& check);
    void repair(const std::vector<Finding>& findings);
    void behindDone(const Findings& findings);
    void tellFound(const std::vector<Finding>& findings, const QString& heading);
    [[nodiscard]] QString toldText(const std::vector<Finding>& findings) const;
    void log(const std::vector<Finding>& findings) const;

    CheckDeskParts m_parts;
    std::shared_ptr<Running> m_behind; ///< null when nothing is checked behind the window
};

} // namespace melovane
